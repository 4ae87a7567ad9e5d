// The start of the desktop application beside that of an empty window of Qt, and opening a long file.
//
//     build/release/bin/DesktopBenchmark
//
// A start is a process of its own, from its beginning until its window has been drawn. Without a display the off-screen
// platform of Qt is used.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QWidget>
#include <cstdlib>
#include <string>

#include "Desktop/Qt/Desktop.h"
#include "Desktop/Station/MainForm.h"

namespace Varnholt {
namespace {

std::string program;

void StartEmpty(int argc, char** argv) {
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(1100, 700);
    window.show();
    QCoreApplication::processEvents();
    window.grab();
}

void StartStation(int argc, char** argv) {
    TDesktop desktop(argc, argv);
    Station::TMainForm form;
    form.Show();
    Application().ProcessMessages();
    desktop.SavePicture(form, u"\\dev\\null");
}

void StartProcess(benchmark::State& state, const char* mode) {
    const std::string command = "'" + program + "' " + mode + " 2>/dev/null";
    for (auto _ : state)
        if (std::system(command.c_str()) != 0) return state.SkipWithError("the process has failed");
}

void EmptyWindow(benchmark::State& state) {
    StartProcess(state, "--start-empty");
}

void StationWindow(benchmark::State& state) {
    StartProcess(state, "--start-station");
}

/// 100,000 days of five columns, read and typed.
void LongFile(benchmark::State& state) {
    String text = u"day,tmax,tmin,rain,wind\n";
    for (int i = 0; i < 100'000; ++i) text += FromUtf8(std::to_string(i)) + u",20.5,11.25,0.5,3\n";
    for (auto _ : state)
        if (Station::TStationTable::FromText(text, u"long")->GetRowCount() != 100'000)
            return state.SkipWithError("rows are missing");
}

BENCHMARK(EmptyWindow)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(StationWindow)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(LongFile)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace Varnholt

int main(int argc, char** argv) {
    if (std::getenv("DISPLAY") == nullptr) qputenv("QT_QPA_PLATFORM", "offscreen");
    const std::string mode = argc > 1 ? argv[1] : "";
    if (mode == "--start-empty") return Varnholt::StartEmpty(argc, argv), EXIT_SUCCESS;
    if (mode == "--start-station") return Varnholt::StartStation(argc, argv), EXIT_SUCCESS;
    Varnholt::program = argv[0];
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
