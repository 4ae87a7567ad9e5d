// Reading and writing 1000 settings in three levels with Qt's settings class, an INI file, beside a configuration.
#include <benchmark/benchmark.h>

#include <QSettings>
#include <QString>
#include <QTemporaryDir>

#include "Benchmarks/ConfigPaths.h"
#include "VarnholtLib/Services/vrnConfig.h"

namespace Varnholt {
namespace {

/// The settings, as both kinds of file.
class TSettingsFiles {
public:
    TSettingsFiles() {
        QSettings settings(GetIniPath(), QSettings::IniFormat);
        TVarnConfig config(GetConfigPath());
        const std::vector<QString> keys = GetKeys();
        const std::vector<String> paths = ConfigPaths();
        for (int i = 0; i < kSettings; ++i) {
            settings.setValue(keys[static_cast<std::size_t>(i)], i);
            config.WriteInteger(paths[static_cast<std::size_t>(i)], i);
        }
        config.Save();
    }
    [[nodiscard]] QString GetIniPath() const { return FFolder.filePath("a.ini"); }
    [[nodiscard]] String GetConfigPath() const { return FFolder.filePath("a.VrnConfig").toStdU16String(); }
    [[nodiscard]] static std::vector<QString> GetKeys() {
        std::vector<QString> keys;
        for (const String& path : ConfigPaths(u"/")) keys.push_back(QString::fromStdU16String(path));
        return keys;
    }

private:
    const QTemporaryDir FFolder;
};

const TSettingsFiles& Files() {
    static const TSettingsFiles files;
    return files;
}

void Read(benchmark::State& state) {
    TVarnConfig config(Files().GetConfigPath());
    const std::vector<String> paths = ConfigPaths();
    for (auto _ : state)
        for (const String& path : paths) benchmark::DoNotOptimize(config.ReadInteger(path));
    state.SetItemsProcessed(state.iterations() * kSettings);
}
BENCHMARK(Read);

void ReadQt(benchmark::State& state) {
    const QSettings settings(Files().GetIniPath(), QSettings::IniFormat);
    const std::vector<QString> keys = TSettingsFiles::GetKeys();
    for (auto _ : state)
        for (const QString& key : keys) benchmark::DoNotOptimize(settings.value(key).toInt());
    state.SetItemsProcessed(state.iterations() * kSettings);
}
BENCHMARK(ReadQt);

void Write(benchmark::State& state) {
    TVarnConfig config(Files().GetConfigPath());
    const std::vector<String> paths = ConfigPaths();
    std::int32_t value = 0;
    for (auto _ : state)
        for (const String& path : paths) config.WriteInteger(path, ++value);
    state.SetItemsProcessed(state.iterations() * kSettings);
}
BENCHMARK(Write);

void WriteQt(benchmark::State& state) {
    QSettings settings(Files().GetIniPath(), QSettings::IniFormat);
    const std::vector<QString> keys = TSettingsFiles::GetKeys();
    int value = 0;
    for (auto _ : state)
        for (const QString& key : keys) settings.setValue(key, ++value);
    state.SetItemsProcessed(state.iterations() * kSettings);
}
BENCHMARK(WriteQt);

void WriteOneAndSave(benchmark::State& state) {
    TVarnConfig config(Files().GetConfigPath());
    std::int32_t value = 0;
    for (auto _ : state) {
        config.WriteInteger(u"group0.forms0.setting0", ++value);
        config.Save();
    }
}
BENCHMARK(WriteOneAndSave);

void WriteOneAndSaveQt(benchmark::State& state) {
    QSettings settings(Files().GetIniPath(), QSettings::IniFormat);
    int value = 0;
    for (auto _ : state) {
        settings.setValue("group0/forms0/setting0", ++value);
        settings.sync();
    }
}
BENCHMARK(WriteOneAndSaveQt);

}  // namespace
}  // namespace Varnholt
