// The log beside the basic file logger of spdlog: a million lines from one and from four threads. Both write the same
// text, apart from the identifiers of the threads, through a buffer of 4096 bytes: spdlog's is that of the C library.
#include <benchmark/benchmark.h>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

#include <filesystem>
#include <thread>
#include <vector>

#include "Platform/Runtime/Paths.h"
#include "Platform/System/Platform.h"
#include "VarnholtLib/Services/vrnLog.h"

namespace Varnholt {
namespace {

constexpr int kLines = 1'000'000;

/// The folder of the logs; it is deleted at the end.
class TFolder : public IKnownFolders {
public:
    TFolder() { Clear(); }
    ~TFolder() override { std::filesystem::remove_all(Path); }
    void Clear() {
        std::filesystem::remove_all(Path);
        std::filesystem::create_directories(Path);
    }
    String Find(TKnownFolder) override { return FromNativePath(Path.native()); }

    const std::filesystem::path Path = std::filesystem::temp_directory_path() /
                                       ("varnholt-log-" + std::to_string(Platform().Process->GetProcessId()));
};

TFolder& Folder() {
    static const auto folder = std::make_shared<TFolder>();
    Platform().KnownFolders = folder;
    return *folder;
}

class TMeasuredLog : public TBaseLog {
public:
    [[nodiscard]] String GetLogName() const override { return u"Measured"; }
};

struct TOwn {
    void Write(int) { Log->Log(u"Station 11035 Wien Hohe Warte: 31 rows read from rain.csv"); }
    void WriteFormatted(int line) {
        Log->Log(u"Station %s: %d rows read from %s", {u"11035 Wien", line, u"rain.csv"});
    }

    std::shared_ptr<TMeasuredLog> Log = TBaseLog::Create<TMeasuredLog>();
};

struct TSpdlog {
    TSpdlog() : Log("Measured", MakeSink()) {}

    static std::shared_ptr<spdlog::sinks::basic_file_sink_mt> MakeSink() {
        const std::string path = Folder().Path / "spdlog.log";
        auto sink = std::make_shared<spdlog::sinks::basic_file_sink_mt>(path, true);
        sink->set_formatter(std::make_unique<spdlog::pattern_formatter>(
            "[%t, %Y-%m-%d %H:%M:%S]: %v", spdlog::pattern_time_type::local, "\r\n"));
        return sink;
    }
    void Write(int) { Log.info("Station 11035 Wien Hohe Warte: 31 rows read from rain.csv"); }
    void WriteFormatted(int line) {
        Log.info("Station {}: {} rows read from {}", "11035 Wien", line, "rain.csv");
    }

    spdlog::logger Log;
};

/// From the creation of the file to its closing. The argument is the number of threads.
template <typename TLog>
void Measure(benchmark::State& state, void (TLog::*write)(int)) {
    const auto threads = static_cast<std::size_t>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        Folder().Clear();
        state.ResumeTiming();
        TLog log;
        std::vector<std::thread> writers;
        for (std::size_t i = 0; i < threads; ++i) {
            writers.emplace_back([&log, write, count = kLines / static_cast<int>(threads)] {
                for (int line = 0; line < count; ++line) (log.*write)(line);
            });
        }
        for (std::thread& writer : writers) writer.join();
    }
    state.SetItemsProcessed(state.iterations() * kLines);
}

void Setup(benchmark::internal::Benchmark* measured) {
    measured->Arg(1)->Arg(4)->UseRealTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(Measure, Text, &TOwn::Write)->Apply(Setup);
BENCHMARK_CAPTURE(Measure, TextSpdlog, &TSpdlog::Write)->Apply(Setup);
BENCHMARK_CAPTURE(Measure, Formatted, &TOwn::WriteFormatted)->Apply(Setup);
BENCHMARK_CAPTURE(Measure, FormattedSpdlog, &TSpdlog::WriteFormatted)->Apply(Setup);

}  // namespace
}  // namespace Varnholt
