// Pixels, colours, clipped lines and charts, each beside a loop written by hand or gnuplot.
//
//     build/release/bin/DrawingBenchmark
//
// The chart is measured against gnuplot as a program of its own, so both draw from a file to a file.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

#include "Platform/Drawing/CanvasRecorder.h"
#include "Platform/Drawing/Picture.h"
#include "Platform/Runtime/Paths.h"
#include "VarnholtLib/UI/vrnBitmapPixels.h"
#include "VarnholtLib/UI/vrnChart.h"
#include "VarnholtLib/UI/vrnColorConvert.h"
#include "VarnholtLib/UI/vrnGraphicPrims.h"

namespace Varnholt {
namespace {

// --- Pixels ---

constexpr std::int32_t kSide = 4000;

void PixelsOfRows(benchmark::State& state) {
    TBitmapPixels pixels(kSide, kSide);
    for (auto _ : state)
        for (std::int32_t y = 0; y < kSide; ++y)
            for (std::int32_t x = 0; x < kSide; ++x)
                pixels.Set_Pixel(x, y, pixels.Get_Pixel(x, y) ^ 0x010203);
}

void PixelsOfRowsByHand(benchmark::State& state) {
    TBitmap bitmap(kSide, kSide, pf24bit);
    for (auto _ : state) {
        for (std::int32_t y = 0; y < kSide; ++y) {
            std::uint8_t* pixel = bitmap.ScanLine(y).data();
            for (std::int32_t x = 0; x < kSide; ++x, pixel += 3) {
                const std::uint32_t color =
                    static_cast<std::uint32_t>(pixel[2] | pixel[1] << 8 | pixel[0] << 16) ^ 0x010203;
                pixel[0] = static_cast<std::uint8_t>(color >> 16);
                pixel[1] = static_cast<std::uint8_t>(color >> 8);
                pixel[2] = static_cast<std::uint8_t>(color);
            }
        }
        benchmark::ClobberMemory();
    }
}

BENCHMARK(PixelsOfRows)->Unit(benchmark::kMillisecond);
BENCHMARK(PixelsOfRowsByHand)->Unit(benchmark::kMillisecond);

// --- Colours ---

constexpr int kColors = 10'000'000;

template <typename TConvert>
void EachColor(benchmark::State& state, TConvert&& convert) {
    for (auto _ : state) {
        for (int i = 0; i < kColors; ++i) {
            std::uint8_t r = 0, g = 0, b = 0;
            convert(static_cast<float>(i % 360) / 360, 0.75F, static_cast<float>(i % 101) / 100, r, g, b);
            benchmark::DoNotOptimize(r + g + b);
        }
    }
}

void HslToRgb(benchmark::State& state) {
    EachColor(state, [](auto... arguments) { TColorConvert::HSLtoRGB(arguments...); });
}

/// In doubles, without the roundings to 32 bits.
void HslToRgbByHand(benchmark::State& state) {
    EachColor(state, [](double h, double s, double l, std::uint8_t& r, std::uint8_t& g, std::uint8_t& b) {
        const double v2 = l < 0.5 ? (1 + s) * l : l + s - s * l, v1 = 2 * l - v2;
        const auto channel = [&](double hue) {
            hue -= std::floor(hue);
            const double value = 6 * hue < 1   ? v1 + (v2 - v1) * 6 * hue
                                 : 2 * hue < 1 ? v2
                                 : 3 * hue < 2 ? v1 + (v2 - v1) * (2.0 / 3 - hue) * 6
                                               : v1;
            return static_cast<std::uint8_t>(std::nearbyint(value * 255));
        };
        r = channel(h + 1.0 / 3);
        g = channel(h);
        b = channel(h - 1.0 / 3);
    });
}

BENCHMARK(HslToRgb)->Unit(benchmark::kMillisecond);
BENCHMARK(HslToRgbByHand)->Unit(benchmark::kMillisecond);

// --- Lines ---

struct TEnds {
    std::int32_t X1, Y1, X2, Y2;
};

std::vector<TEnds> RandomLines() {
    std::mt19937 random(7);
    std::uniform_int_distribution<std::int32_t> coordinate(-500, 1500);
    std::vector<TEnds> lines(1'000'000);
    for (TEnds& line : lines)
        line = {coordinate(random), coordinate(random), coordinate(random), coordinate(random)};
    return lines;
}

template <typename TDraw>
void EachLine(benchmark::State& state, TDraw&& draw) {
    const std::vector<TEnds> lines = RandomLines();
    TCanvasRecorder recorder;
    TCanvas canvas(recorder);
    for (auto _ : state) {
        recorder.Clear();
        for (const TEnds& line : lines) draw(canvas, line);
    }
}

void ClippedLines(benchmark::State& state) {
    EachLine(state, [](TCanvas& canvas, const TEnds& line) {
        ClipLine(canvas, line.X1, line.Y1, line.X2, line.Y2, {0, 0, 1000, 1000});
    });
}

/// Clipping by parameters in doubles (Liang and Barsky), without the rule of 98 %.
void ClippedLinesByHand(benchmark::State& state) {
    EachLine(state, [](TCanvas& canvas, const TEnds& line) {
        const double dx = line.X2 - line.X1, dy = line.Y2 - line.Y1;
        double from = 0, to = 1;
        const std::array<std::array<double, 2>, 4> edges = {
            {{-dx, line.X1 - 0.0}, {dx, 1000.0 - line.X1}, {-dy, line.Y1 - 0.0}, {dy, 1000.0 - line.Y1}}};
        for (const auto& [slope, distance] : edges) {
            if (slope == 0 && distance < 0) return;
            if (slope < 0) from = std::max(from, distance / slope);
            if (slope > 0) to = std::min(to, distance / slope);
        }
        if (from > to) return;
        const auto at = [&](double t) {
            return TPoint{static_cast<std::int32_t>(std::lrint(line.X1 + t * dx)),
                          static_cast<std::int32_t>(std::lrint(line.Y1 + t * dy))};
        };
        canvas.Polyline(std::array{at(from), at(to)});
    });
}

BENCHMARK(ClippedLines)->Unit(benchmark::kMillisecond);
BENCHMARK(ClippedLinesByHand)->Unit(benchmark::kMillisecond);

// --- Charts ---

constexpr TSize kChartSize{800, 500};

struct TChartFolder {
    TChartFolder()
        : Path(std::filesystem::temp_directory_path() / ("varnholt-bench-" + std::to_string(getpid()))) {
        std::filesystem::create_directory(Path);
        std::ofstream data(Path / "points.txt");
        for (int i = 0; i < 100'000; ++i) data << i << ' ' << std::sin(i / 5000.0) + i % 97 / 100.0 << '\n';
        std::ofstream(Path / "plot.gp")
            << "set terminal pngcairo size 800,500\nset output '" << (Path / "g.png").string() << "'\nplot '"
            << (Path / "points.txt").string() << "' with lines\n";
    }
    ~TChartFolder() { std::filesystem::remove_all(Path); }
    std::filesystem::path Path;
};

void ChartOfPoints(benchmark::State& state) {
    const TChartFolder folder;
    const String target = FromNativePath((folder.Path / "v.png").string());
    for (auto _ : state) {
        TChartSeries series;
        std::ifstream data(folder.Path / "points.txt");
        for (double x = 0, y = 0; data >> x >> y;) {
            series.X.push_back(x);
            series.Y.push_back(y);
        }
        TChart chart;
        chart.AddSeries(std::move(series));
        DrawToFile(target, kChartSize, [&](TCanvas& canvas) { chart.Draw(canvas, {0, 0, 800, 500}); });
    }
}

void ChartOfPointsByGnuplot(benchmark::State& state) {
    const TChartFolder folder;
    const std::string command = "gnuplot '" + (folder.Path / "plot.gp").string() + "' 2>/dev/null";
    for (auto _ : state) {
        if (std::system(command.c_str()) != 0)
            return state.SkipWithError("gnuplot with pngcairo is not installed");
    }
}

BENCHMARK(ChartOfPoints)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ChartOfPointsByGnuplot)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace Varnholt
