// A configuration of 1000 settings in three levels: load, read each, write each, save; beside libxml2 used by hand on
// the same file.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

#include "Benchmarks/ConfigPaths.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Paths.h"
#include "VarnholtLib/Services/vrnConfig.h"

namespace Varnholt {
namespace {

/// A folder with a configuration of integers; removed at the end of the program.
class TConfigFile {
public:
    TConfigFile() {
        std::filesystem::create_directory(FFolder);
        TVarnConfig config(GetPath());
        int i = 0;
        for (const String& path : ConfigPaths()) config.WriteInteger(path, i++);
        config.Save();
    }
    ~TConfigFile() { std::filesystem::remove_all(FFolder); }
    [[nodiscard]] String GetPath() const { return FromNativePath(GetNativePath()); }
    [[nodiscard]] std::string GetNativePath() const { return FFolder + "/a.VrnConfig"; }

private:
    const std::string FFolder =
        std::filesystem::temp_directory_path() / ("varnholt-config-" + std::to_string(getpid()));
};

const TConfigFile& ConfigFile() {
    static const TConfigFile file;
    return file;
}

void Load(benchmark::State& state) {
    const String path = ConfigFile().GetPath();
    for (auto _ : state) benchmark::DoNotOptimize(TVarnConfig(path).GetIsNewDocument());
}
BENCHMARK(Load);

void LoadXml2(benchmark::State& state) {
    const std::string path = ConfigFile().GetNativePath();
    for (auto _ : state) xmlFreeDoc(xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET));
}
BENCHMARK(LoadXml2);

void Read(benchmark::State& state) {
    TVarnConfig config(ConfigFile().GetPath());
    const std::vector<String> paths = ConfigPaths();
    for (auto _ : state)
        for (const String& path : paths) benchmark::DoNotOptimize(config.ReadInteger(path));
    state.SetItemsProcessed(state.iterations() * kSettings);
}
BENCHMARK(Read);

void LoadAndReadOnce(benchmark::State& state) {
    const String file = ConfigFile().GetPath();
    const std::vector<String> paths = ConfigPaths();
    for (auto _ : state) {
        TVarnConfig config(file);
        for (const String& path : paths) benchmark::DoNotOptimize(config.ReadInteger(path));
    }
}
BENCHMARK(LoadAndReadOnce);

void Write(benchmark::State& state) {
    TVarnConfig config(ConfigFile().GetPath());
    const std::vector<String> paths = ConfigPaths();
    std::int32_t value = 0;
    for (auto _ : state)
        for (const String& path : paths) config.WriteInteger(path, ++value);
    state.SetItemsProcessed(state.iterations() * kSettings);
}
BENCHMARK(Write);

void Save(benchmark::State& state) {
    TVarnConfig config(ConfigFile().GetPath());
    for (auto _ : state) config.Save();
}
BENCHMARK(Save);

/// As durable as Save: a temporary file is synchronised and replaces the file, and the folder is synchronised.
void SaveXml2(benchmark::State& state) {
    const std::string path = ConfigFile().GetNativePath(), draft = path + ".draft";
    xmlDoc* const document = xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET);
    for (auto _ : state) {
        const int folder = open(std::filesystem::path(path).parent_path().c_str(), O_RDONLY | O_DIRECTORY);
        xmlSaveFileEnc(draft.c_str(), document, "UTF-8");
        const int file = open(draft.c_str(), O_RDONLY);
        fsync(file);
        close(file);
        std::rename(draft.c_str(), path.c_str());
        fsync(folder);
        close(folder);
    }
    xmlFreeDoc(document);
}
BENCHMARK(SaveXml2);

/// Writes over the file.
void SaveXml2InPlace(benchmark::State& state) {
    const std::string path = ConfigFile().GetNativePath();
    xmlDoc* const document = xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET);
    for (auto _ : state) xmlSaveFileEnc(path.c_str(), document, "UTF-8");
    xmlFreeDoc(document);
}
BENCHMARK(SaveXml2InPlace);

}  // namespace
}  // namespace Varnholt
