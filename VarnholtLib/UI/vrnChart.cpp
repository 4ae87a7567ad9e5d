#include "VarnholtLib/UI/vrnChart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "VarnholtLib/UI/vrnChartLookPrivate.h"
#include "VarnholtLib/UI/vrnGraphics.h"
#include "VarnholtLib/UI/vrnStringParse.h"

namespace Varnholt {
namespace {

constexpr std::int32_t kGap = 8;
constexpr std::int32_t kTickLength = 4;
constexpr std::int32_t kSampleWidth = 30;  // of a series in the legend
constexpr std::int32_t kFarthest = 100'000;

/// Series of one colour have lines of different styles.
constexpr std::array<TPenStyle, 4> kPenStyles = {psSolid, psDash, psDot, psDashDot};
constexpr std::size_t kColors = 7;

/// Turns the points of a line into pixels, with at most four for each column.
class TColumnMerger {
public:
    void Add(TPoint point) {
        if (!FIsEmpty && point.X != FFirst.X) Flush();
        if (FIsEmpty) {
            FFirst = FLowest = FHighest = point;
            FIsEmpty = false;
        }
        if (point.Y < FLowest.Y) FLowest = point;
        if (point.Y > FHighest.Y) FHighest = point;
        FLast = point;
    }
    /// The pixels of the points added, and begins anew.
    std::vector<TPoint> Take() {
        Flush();
        return std::exchange(FPixels, {});
    }

private:
    void Flush() {
        if (FIsEmpty) return;
        for (const TPoint point : {FFirst, FLowest, FHighest, FLast})
            if (FPixels.empty() || FPixels.back() != point) FPixels.push_back(point);
        FIsEmpty = true;
    }

    std::vector<TPoint> FPixels;
    TPoint FFirst, FLowest, FHighest, FLast;
    bool FIsEmpty = true;
};

/// The positions of the points with an X, in the order of X.
std::vector<std::size_t> OrderOf(const TChartSeries& series) {
    std::vector<std::size_t> order(series.X.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::erase_if(order, [&](std::size_t i) { return !std::isfinite(series.X[i]); });
    const auto isBefore = [&](std::size_t a, std::size_t b) { return series.X[a] < series.X[b]; };
    if (!std::ranges::is_sorted(order, isBefore)) std::ranges::stable_sort(order, isBefore);
    return order;
}

/// Draws one chart in one rectangle.
class TChartPainter {
public:
    TChartPainter(TCanvas& canvas, const TRect& rect, const std::vector<TChartSeries>& series,
                  std::span<const TColor> colors)
        : FCanvas(canvas), FRect(rect), FPlot(rect), FSeries(series), FColors(colors) {}

    void Run(StringView title, StringView xTitle, StringView yTitle, TAxisScale xScale) {
        PutTitles(title, xTitle, yTitle);
        PutLegend();
        PutAxes(xScale);
        if (!xTitle.empty()) TextCentred(FCanvas, kLabelFont, FPlot.Left, FPlot.Right, FXTitleTop, xTitle);
        PutYTitle(yTitle);
        DrawGrid();
        FCanvas.SetClipRect(TRect{FPlot.Left, FPlot.Top, FPlot.Right + 1, FPlot.Bottom + 1});
        for (std::size_t i = 0; i < FSeries.size(); ++i) DrawSeries(FSeries[i], PenOf(i));
        FCanvas.SetClipRect({});
        DrawFrame();
    }

private:
    [[nodiscard]] TPen PenOf(std::size_t index) const {
        const TChartSeries& series = FSeries[index];
        const TPenStyle style = series.Color ? psSolid : kPenStyles[index / kColors % kPenStyles.size()];
        return {.Color = series.Color.value_or(FColors[index]),
                .Width = 2,
                .Style = series.PenStyle == psSolid ? style : series.PenStyle};
    }
    std::int32_t LineHeight(const TFont& font) {
        FCanvas.SetFont(font);
        return FCanvas.TextHeight(u"Xg");
    }
    [[nodiscard]] std::int32_t X(Extended value) const {
        return FX->Position(value, FPlot.Left, FPlot.Right);
    }
    [[nodiscard]] std::int32_t Y(Extended value) const {
        return FY->Position(value, FPlot.Bottom, FPlot.Top);
    }

    void PutTitles(StringView title, StringView xTitle, StringView yTitle) {
        FPlot.Top += kGap;
        if (!title.empty()) {
            TextCentred(FCanvas, kTitleFont, FPlot.Left + kGap, FPlot.Right - kGap, FPlot.Top, title);
            FPlot.Top += LineHeight(kTitleFont);
        }
        const std::int32_t line = LineHeight(kLabelFont);
        FPlot.Bottom -= kGap;
        if (!xTitle.empty()) {
            FPlot.Bottom -= line;
            FXTitleTop = FPlot.Bottom;
        }
        FPlot.Bottom -= line + kTickLength + 2;
        FYTitleLeft = FPlot.Left + kGap;
        FPlot.Left += kGap + (yTitle.empty() ? 0 : line + kGap / 2);
    }

    /// Puts the names of the series into rows below the title, on at most a third of the height.
    void PutLegend() {
        const std::int32_t height = LineHeight(kLabelFont), width = FPlot.Right - FPlot.Left - 2 * kGap;
        const std::int32_t lowest = FRect.Top + (FRect.Bottom - FRect.Top) / 3;
        std::int32_t left = FPlot.Left + kGap;
        bool isFirst = true;
        for (std::size_t i = 0; i < FSeries.size(); ++i) {
            if (FSeries[i].Name.empty()) continue;
            FCanvas.SetFont(kLabelFont);
            const String name = ShortenedText(FSeries[i].Name, FCanvas, width - kSampleWidth - kGap);
            const std::int32_t needed = kSampleWidth + kGap / 2 + FCanvas.TextWidth(name) + 2 * kGap;
            if (isFirst || left + needed - 2 * kGap > FPlot.Right - kGap) {
                if (!isFirst) FPlot.Top += height;
                left = FPlot.Left + kGap;
                if (!isFirst && FPlot.Top + 2 * height > lowest) {
                    FCanvas.TextOut(left, FPlot.Top, u"...");
                    break;
                }
            }
            isFirst = false;
            DrawSample(FSeries[i].Style, PenOf(i), left, FPlot.Top + height / 2);
            FCanvas.TextOut(left + kSampleWidth + kGap / 2, FPlot.Top, name);
            left += needed;
        }
        FPlot.Top += (isFirst ? 0 : height) + kGap;
    }

    void DrawSample(TSeriesStyle style, const TPen& pen, std::int32_t left, std::int32_t middle) {
        if (style == ssLine) {
            FCanvas.SetPen(pen);
            FCanvas.MoveTo(left, middle);
            FCanvas.LineTo(left + kSampleWidth - 2, middle);
            return;
        }
        FCanvas.SetBrush({.Color = pen.Color});
        FCanvas.FillRect({left + 6, middle - 4, left + 15, middle + 5});
    }

    void PutAxes(TAxisScale xScale) {
        TChartRange x, y;
        for (const TChartSeries& series : FSeries) {
            const double half = series.Style == ssBars ? series.BarWidth / 2 : 0;
            for (std::size_t i = 0; i < series.X.size(); ++i) {
                if (!std::isfinite(series.X[i]) || !std::isfinite(series.Y[i])) continue;
                x.Include(series.X[i] - half);
                x.Include(series.X[i] + half);
                y.Include(series.Y[i]);
                if (series.Style == ssBars) y.Include(0);
            }
        }
        FIsEmpty = y.IsEmpty;
        if (std::ranges::any_of(FSeries,
                                [](const TChartSeries& series) { return series.Style == ssPoints; })) {
            // Points at the ends are whole, unless that would leave the dates.
            const Extended margin = (x.Max - x.Min) / 50;
            const bool leavesDates = !IsDateRange(x.Min - margin, x.Max + margin);
            if (xScale != asDate || !leavesDates) x.Min -= margin, x.Max += margin;
        }
        const std::int32_t line = LineHeight(kLabelFont);
        FPlot.Top = std::min(FPlot.Top, FPlot.Bottom - 10);
        FY.emplace(y, asNumber, (FPlot.Bottom - FPlot.Top) / (2 * line) + 1, true);
        FPlot.Left += WidestLabel(*FY) + kTickLength + 2;
        FPlot.Right -= 2 * kGap;
        FPlot.Left = std::min(FPlot.Left, FPlot.Right - 10);
        // As many ticks as have space for their labels.
        std::int32_t ticks = (FPlot.Right - FPlot.Left) / 40;
        do {
            FX.emplace(x, xScale, ticks, false);
            ticks = ticks * 3 / 4;
        } while (ticks > 1 &&
                 static_cast<std::int32_t>(FX->GetTicks().size()) * (WidestLabel(*FX) + 2 * kGap) >
                     FPlot.Right - FPlot.Left);
    }

    std::int32_t WidestLabel(const TChartAxis& axis) {
        FCanvas.SetFont(kLabelFont);
        std::int32_t widest = 0;
        for (const TChartTick& tick : axis.GetTicks())
            widest = std::max(widest, FCanvas.TextWidth(tick.Label));
        return widest;
    }

    void PutYTitle(StringView yTitle) {
        if (yTitle.empty()) return;
        FCanvas.SetFont(kLabelFont);
        const std::int32_t height = FPlot.Bottom - FPlot.Top;
        const String shown = ShortenedText(yTitle, FCanvas, height);
        AngleTextOut(FCanvas, 90, FYTitleLeft, FPlot.Bottom - (height - FCanvas.TextWidth(shown)) / 2, shown);
    }

    void DrawGrid() {
        const std::int32_t line = LineHeight(kLabelFont);
        TLines grid, marks;
        for (const TChartTick& tick : FX->GetTicks()) {
            const std::int32_t x = X(tick.Value), width = FCanvas.TextWidth(tick.Label);
            grid.Add({x, FPlot.Top}, {x, FPlot.Bottom});
            marks.Add({x, FPlot.Bottom}, {x, FPlot.Bottom + kTickLength});
            FCanvas.TextOut(std::max(std::min(x - width / 2, FPlot.Right + 2 * kGap - width), FRect.Left),
                            FPlot.Bottom + kTickLength + 1, tick.Label);
        }
        for (const TChartTick& tick : FY->GetTicks()) {
            const std::int32_t y = Y(tick.Value);
            grid.Add({FPlot.Left, y}, {FPlot.Right, y});
            marks.Add({FPlot.Left - kTickLength, y}, {FPlot.Left, y});
            FCanvas.TextOut(FPlot.Left - kTickLength - 2 - FCanvas.TextWidth(tick.Label), y - line / 2,
                            tick.Label);
        }
        grid.Draw(FCanvas, kGridColor);
        marks.Draw(FCanvas, kFrameColor);
    }

    void DrawFrame() {
        FCanvas.SetPen({.Color = kFrameColor});
        FCanvas.SetBrush({.Style = bsClear});
        FCanvas.Rectangle({FPlot.Left, FPlot.Top, FPlot.Right + 1, FPlot.Bottom + 1});
        if (FIsEmpty)
            TextCentred(FCanvas, kLabelFont, FPlot.Left, FPlot.Right, (FPlot.Top + FPlot.Bottom) / 2,
                        u"No values");
    }

    void DrawSeries(const TChartSeries& series, const TPen& pen) {
        FCanvas.SetBrush({.Color = pen.Color});
        FCanvas.SetPen(pen);
        switch (series.Style) {
            case ssLine:
                return DrawLines(series);
            case ssPoints:
                return DrawPoints(series);
            case ssBars:
                return DrawBars(series);
        }
    }

    void DrawLines(const TChartSeries& series) {
        const std::vector<std::size_t> order = OrderOf(series);
        // Lines of so many points stay readable if they are thin.
        const TPen pen = FCanvas.GetPen();
        if (order.size() > 2000) FCanvas.SetPen({.Color = pen.Color, .Style = pen.Style});
        TColumnMerger merger;
        const auto draw = [&] {
            const std::vector<TPoint> pixels = merger.Take();
            if (pixels.size() == 1) DrawDot(pixels[0], 2);
            FCanvas.Polyline(pixels);
        };
        for (const std::size_t i : order) {
            if (std::isfinite(series.Y[i]))
                merger.Add({X(series.X[i]), Y(series.Y[i])});
            else
                draw();
        }
        draw();
    }

    void DrawDot(TPoint at, std::int32_t radius) {
        FCanvas.FillRect({at.X - radius, at.Y - radius, at.X + radius + 1, at.Y + radius + 1});
    }

    void DrawPoints(const TChartSeries& series) {
        const std::int32_t radius = series.X.size() > 2000 ? 1 : series.X.size() > 100 ? 2 : 3;
        const std::int32_t width = FPlot.Right - FPlot.Left + 1, height = FPlot.Bottom - FPlot.Top + 1;
        std::vector<bool> isDrawn(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        for (std::size_t i = 0; i < series.X.size(); ++i) {
            if (!std::isfinite(series.X[i]) || !std::isfinite(series.Y[i])) continue;
            const TPoint at{X(series.X[i]), Y(series.Y[i])};
            const std::int32_t column = at.X - FPlot.Left, row = at.Y - FPlot.Top;
            if (column < 0 || column >= width || row < 0 || row >= height) continue;
            const auto known = isDrawn.begin() + std::int64_t{row} * width + column;
            if (*known) continue;
            *known = true;
            DrawDot(at, radius);
        }
    }

    void DrawBars(const TChartSeries& series) {
        FCanvas.SetPen({.Color = DarkenColour(FCanvas.GetBrush().Color, 60)});
        for (std::size_t i = 0; i < series.X.size(); ++i) {
            if (!std::isfinite(series.X[i]) || !std::isfinite(series.Y[i])) continue;
            const auto [top, bottom] = std::minmax({Y(series.Y[i]), Y(0)});
            const Extended half = static_cast<Extended>(series.BarWidth) / 2;
            FCanvas.Rectangle({X(series.X[i] - half), top, X(series.X[i] + half) + 1, bottom + 1});
        }
    }

    TCanvas& FCanvas;
    const TRect FRect;
    TRect FPlot;  // of what is not taken yet; in the end the area of the values
    const std::vector<TChartSeries>& FSeries;
    std::span<const TColor> FColors;
    std::optional<TChartAxis> FX, FY;
    std::int32_t FXTitleTop = 0;
    std::int32_t FYTitleLeft = 0;
    bool FIsEmpty = true;
};

}  // namespace

std::vector<TColor> ChartColors(std::int32_t count) {
    static constexpr std::array<StringView, kColors> kTold = {u"#0072B2", u"#D55E00", u"#009E73", u"#CC79A7",
                                                              u"#E69F00", u"#56B4E9", u"#000000"};
    std::vector<TColor> colors;
    const auto size = static_cast<std::size_t>(std::max(count, 0));
    colors.reserve(size);
    for (std::size_t i = 0; i < size; ++i)
        colors.push_back(THTMLColorString::HTMLToColor(kTold[i % kColors]));
    return colors;
}

void TChart::AddSeries(TChartSeries series) {
    if (series.X.size() != series.Y.size())
        throw EArgumentException(Format(u"Series \"%s\" has %d X values and %d Y values",
                                        {series.Name, series.X.size(), series.Y.size()}));
    FSeries.push_back(std::move(series));
}

void TChart::Draw(TCanvas& canvas, const TRect& rect) const {
    if (std::int64_t{rect.Right} - rect.Left < 80 || std::int64_t{rect.Bottom} - rect.Top < 60) return;
    for (const std::int32_t coordinate : {rect.Left, rect.Top, rect.Right, rect.Bottom})
        if (coordinate < -kFarthest || coordinate > kFarthest) return;
    const std::vector<TColor> colors = ChartColors(static_cast<std::int32_t>(FSeries.size()));
    TChartPainter(canvas, rect, FSeries, colors).Run(FTitle, FXTitle, FYTitle, FXScale);
}

}  // namespace Varnholt
