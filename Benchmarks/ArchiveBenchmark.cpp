// Packing and unpacking at each level beside raw zlib on the same bytes, opening an archive of many entries beside reading
// their heads by hand, and the parser of text files. The sizes are those of the arguments: megabytes, or entries.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Paths.h"
#include "VarnholtLib/Files/vrnCompress.h"
#include "VarnholtLib/Files/vrnTextFileParser.h"

namespace Varnholt {
namespace {

constexpr int kZlibLevels[] = {0, 1, -1, 9};
constexpr std::size_t kMegabyte = 1'000'000;

/// A folder that is removed at the end of the program.
struct TFolder {
    TFolder() { std::filesystem::create_directory(Native); }
    ~TFolder() { std::filesystem::remove_all(Native); }
    [[nodiscard]] String Path(const std::string& name) const { return FromNativePath(Native + "/" + name); }
    const std::string Native =
        std::filesystem::temp_directory_path() / ("varnholt-archive-" + std::to_string(getpid()));
};

const TFolder& Folder() {
    static const TFolder folder;
    return folder;
}

/// Rows of daily weather, or random bytes.
std::string Content(bool isText, std::size_t size) {
    std::mt19937 random(1);
    std::string content;
    content.reserve(size + 100);
    while (content.size() < size) {
        if (!isText) {
            content.push_back(static_cast<char>(random()));
            continue;
        }
        content += "2012-01-" + std::to_string(random() % 28 + 1) + ",\"Station " +
                   std::to_string(random() % 50) + "\"";
        for (int i = 0; i < 4; ++i)
            content += "," + std::to_string(random() % 400) + "." + std::to_string(random() % 10);
        content += "\r\n";
    }
    content.resize(size);
    return content;
}

std::string Source(bool isText, std::size_t megabytes) {
    const std::string name = (isText ? "text" : "random") + std::to_string(megabytes);
    if (!FileExists(Folder().Path(name)))
        WriteFileInOneGo(Folder().Path(name), Content(isText, megabytes * kMegabyte));
    return name;
}

void Pack(benchmark::State& state, bool isText) {
    const String source = Folder().Path(Source(isText, static_cast<std::size_t>(state.range(1))));
    for (auto _ : state) {
        TVarnCompressor compressor;
        compressor.SetCompressionLevel(static_cast<std::uint8_t>(state.range(0)));
        compressor.AddFile(source);
        compressor.SaveToFile(Folder().Path("a.vrn"));
    }
}

/// Reads the file into memory, compresses it into memory, and writes the result.
void PackZlib(benchmark::State& state, bool isText) {
    const String source = Folder().Path(Source(isText, static_cast<std::size_t>(state.range(1))));
    for (auto _ : state) {
        const std::string bytes = ReadWholeFile(source);
        std::string packed(compressBound(bytes.size()), '\0');
        uLongf size = packed.size();
        compress2(reinterpret_cast<Bytef*>(packed.data()), &size,
                  reinterpret_cast<const Bytef*>(bytes.data()), bytes.size(), kZlibLevels[state.range(0)]);
        packed.resize(size);
        WriteFileInOneGo(Folder().Path("a.z"), packed);
    }
}

void Unpack(benchmark::State& state, bool isText) {
    TVarnCompressor compressor;
    compressor.SetCompressionLevel(static_cast<std::uint8_t>(state.range(0)));
    compressor.AddFile(Folder().Path(Source(isText, static_cast<std::size_t>(state.range(1)))));
    compressor.SaveToFile(Folder().Path("a.vrn"));
    TVarnDecompressor archive(Folder().Path("a.vrn"));
    archive.SetOnOverwriteRequest([](auto&, auto&, auto&, bool&, bool&) {});
    for (auto _ : state) archive.Extract(0, Folder().Path("out"));
}

void UnpackZlib(benchmark::State& state, bool isText) {
    const std::string bytes =
        ReadWholeFile(Folder().Path(Source(isText, static_cast<std::size_t>(state.range(1)))));
    std::string packed(compressBound(bytes.size()), '\0');
    uLongf size = packed.size();
    compress2(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()),
              bytes.size(), kZlibLevels[state.range(0)]);
    packed.resize(size);
    WriteFileInOneGo(Folder().Path("a.z"), packed);
    for (auto _ : state) {
        const std::string read = ReadWholeFile(Folder().Path("a.z"));
        std::string unpacked(bytes.size(), '\0');
        uLongf unpackedSize = unpacked.size();
        uncompress(reinterpret_cast<Bytef*>(unpacked.data()), &unpackedSize,
                   reinterpret_cast<const Bytef*>(read.data()), read.size());
        TFileStream out(Folder().Path("out.z"), fmCreate);
        out.WriteBuffer(BytesOf(unpacked));
    }
}

/// An archive of so many empty files.
String ManyEntries(std::int64_t count) {
    const String path = Folder().Path("many.vrn");
    WriteFileInOneGo(Folder().Path("empty"), "");
    TVarnCompressor compressor;
    for (std::int64_t i = 0; i < count; ++i)
        compressor.AddFile(Folder().Path("empty"), FromUtf8("file" + std::to_string(i) + ".txt"));
    compressor.SaveToFile(path);
    return path;
}

void Open(benchmark::State& state) {
    const String path = ManyEntries(state.range(0));
    for (auto _ : state) benchmark::DoNotOptimize(TVarnDecompressor(path).GetFileEntryCount());
}

/// The heads of the entries into a vector, with the system's calls.
void OpenByHand(benchmark::State& state) {
    const std::string path = ToNativePath(ManyEntries(state.range(0)));
    for (auto _ : state) {
        std::vector<char> heads(static_cast<std::size_t>(state.range(0)) * 225);
        const int file = open(path.c_str(), O_RDONLY);
        off_t at = 17;
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            char* const head = heads.data() + i * 225;
            if (pread(file, head, 225, at) != 225) state.SkipWithError("too short");
            std::int32_t size = 0;
            std::copy_n(head + 205, 4, reinterpret_cast<char*>(&size));
            at += 225 + size;
        }
        close(file);
        benchmark::DoNotOptimize(heads.data());
    }
}

void Parse(benchmark::State& state) {
    const String source = Folder().Path(Source(true, static_cast<std::size_t>(state.range(0))));
    for (auto _ : state) {
        TTextFileParser parser(source, u',');
        std::size_t characters = 0;
        while (true) {
            while (!parser.GetEndOfLine()) characters += parser.GetNextItem().size();
            if (parser.GetEndOfFile()) break;
            parser.Next();
        }
        benchmark::DoNotOptimize(characters);
    }
    state.SetBytesProcessed(state.iterations() * state.range(0) * static_cast<std::int64_t>(kMegabyte));
}

void EachLevel(benchmark::internal::Benchmark* benchmark) {
    for (int level = 0; level <= 3; ++level) benchmark->Args({level, 20});
    benchmark->Unit(benchmark::kMillisecond)->UseRealTime();
}

BENCHMARK_CAPTURE(Pack, Text, true)->Apply(EachLevel);
BENCHMARK_CAPTURE(PackZlib, Text, true)->Apply(EachLevel);
BENCHMARK_CAPTURE(Pack, Random, false)->Apply(EachLevel);
BENCHMARK_CAPTURE(PackZlib, Random, false)->Apply(EachLevel);
BENCHMARK_CAPTURE(Unpack, Text, true)->Apply(EachLevel);
BENCHMARK_CAPTURE(UnpackZlib, Text, true)->Apply(EachLevel);
BENCHMARK_CAPTURE(Unpack, Random, false)->Apply(EachLevel);
BENCHMARK_CAPTURE(UnpackZlib, Random, false)->Apply(EachLevel);
BENCHMARK(Open)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenByHand)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(Parse)->Arg(200)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace Varnholt
