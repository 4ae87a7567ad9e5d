#include "VarnholtLib/UI/vrnClimateDiagram.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "Platform/Runtime/FloatMath.h"
#include "Platform/Runtime/Numbers.h"
#include "VarnholtLib/UI/vrnChart.h"
#include "VarnholtLib/UI/vrnChartLookPrivate.h"
#include "VarnholtLib/UI/vrnGraphics.h"

namespace Varnholt {
namespace {

constexpr double kLimit = 100'000;
constexpr double kBreak =
    50;  // the height, in degrees, from which on precipitation is drawn at a tenth of its scale
constexpr std::int32_t kGap = 8;
constexpr std::int32_t kDotStep = 5;

using TMonths = std::array<std::optional<double>, 12>;

/// The values by the months of the diagram, which begins in January or July. What is not finite is left out.
TMonths Arranged(const TMonths& values, bool beginsInJuly) {
    TMonths arranged = values;
    if (beginsInJuly) std::rotate(arranged.begin(), arranged.begin() + 6, arranged.end());
    for (std::optional<double>& value : arranged)
        if (value)
            value = std::isfinite(*value) ? std::optional(std::clamp(*value, -kLimit, kLimit)) : std::nullopt;
    return arranged;
}

/// The height of an amount of precipitation in degrees of the temperature scale.
double HeightOf(double precipitation) noexcept {
    const double height = precipitation / 2;
    return height <= kBreak ? height : kBreak + (height - kBreak) / 10;
}

double PrecipitationAt(double height) noexcept {
    return 2 * (height <= kBreak ? height : kBreak + (height - kBreak) * 10);
}

/// The value rounded to parts of so many, with its unit.
String Rounded(double value, double scale, StringView unit) {
    return FloatToStr(std::round(value * scale) / scale, TFormatSettings::Invariant()) + String(unit);
}

String LatitudeText(double latitude) {
    return Rounded(std::fabs(latitude), 100, latitude < 0 ? u"\xB0 S" : u"\xB0 N");
}

/// Fills an area that is built up column by column, with a gap where there is none.
class TSpan {
public:
    TSpan(TCanvas& canvas, const TPen& pen, const TBrush& brush)
        : FCanvas(canvas), FPen(pen), FBrush(brush) {}

    void Add(std::int32_t x, std::int32_t from, std::int32_t to, bool isInside) {
        if (!isInside) return Draw();
        FFrom.push_back({x, from});
        FTo.push_back({x, to});
    }
    /// Fills what was added since the last gap.
    void Draw() {
        FFrom.insert(FFrom.end(), FTo.rbegin(), FTo.rend());
        FCanvas.SetPen(FPen);
        FCanvas.SetBrush(FBrush);
        FCanvas.Polygon(FFrom);
        FFrom.clear();
        FTo.clear();
    }

private:
    TCanvas& FCanvas;
    TPen FPen;
    TBrush FBrush;
    std::vector<TPoint> FFrom, FTo;
};

class TDiagramPainter {
public:
    TDiagramPainter(TCanvas& canvas, const TRect& rect, const TClimateDiagram& diagram)
        : FCanvas(canvas),
          FPlot(rect),
          FDiagram(diagram),
          FTemperature(Arranged(diagram.Temperature, diagram.Latitude < 0)),
          FHeights(Arranged(diagram.Precipitation, diagram.Latitude < 0)) {
        for (std::optional<double>& height : FHeights)
            if (height) height = HeightOf(*height);
    }

    void Run() {
        PutHeader();
        PutScales();
        DrawSpans();
        DrawCurve(FHeights, kBlue);
        DrawCurve(FTemperature, kRed);
        DrawScales();
    }

private:
    static constexpr TColor kRed = 0x005ED5, kBlue = 0xB27200;

    void PutHeader() {
        FPlot.Left += kGap;
        FPlot.Right -= kGap;
        FPlot.Top += kGap;
        FCanvas.SetFont(kTitleFont);
        TextCentred(FCanvas, kTitleFont, FPlot.Left, FPlot.Right, FPlot.Top, FDiagram.Title);
        if (!FDiagram.Title.empty()) FPlot.Top += FCanvas.TextHeight(u"Xg");
        String facts = LatitudeText(FDiagram.Latitude);
        const auto add = [&](const String& fact) {
            if (!fact.empty()) facts += u"   " + fact;
        };
        add(FDiagram.Period);
        if (FDiagram.AnnualTemperature) add(Rounded(*FDiagram.AnnualTemperature, 10, u" \xB0\x43"));
        if (FDiagram.AnnualPrecipitation) add(Rounded(*FDiagram.AnnualPrecipitation, 1, u" mm"));
        TextCentred(FCanvas, kLabelFont, FPlot.Left, FPlot.Right, FPlot.Top, facts);
        FLine = FCanvas.TextHeight(u"Xg");
        FPlot.Top += 2 * FLine;  // with the row of units
    }

    void PutScales() {
        TChartRange range;
        range.Include(0);
        range.Include(20);
        for (const TMonths* values : {&FTemperature, &FHeights})
            for (const std::optional<double>& value : *values)
                if (value) range.Include(*value);
        FPlot.Bottom -= FLine + kGap;
        FPlot.Bottom = std::max(FPlot.Bottom, FPlot.Top + 20);
        FAxis.emplace(range, asNumber, std::max((FPlot.Bottom - FPlot.Top) / (3 * FLine), 3), true);
        FCanvas.SetFont(kLabelFont);
        std::int32_t left = 0, right = 0;
        for (const TChartTick& tick : FAxis->GetTicks()) {
            left = std::max(left, FCanvas.TextWidth(tick.Label));
            right = std::max(right, FCanvas.TextWidth(PrecipitationLabel(tick)));
        }
        FPlot.Left += left + kGap;
        FPlot.Right = std::max(FPlot.Right - right - kGap, FPlot.Left + 12);
    }

    /// Empty below 0 mm.
    static String PrecipitationLabel(const TChartTick& tick) {
        if (tick.Value < 0) return {};
        return FloatToStr(PrecipitationAt(static_cast<double>(tick.Value)), TFormatSettings::Invariant());
    }

    [[nodiscard]] std::int32_t Y(double height) const {
        return FAxis->Position(height, FPlot.Bottom, FPlot.Top);
    }
    /// The column of a place in the year: month 0 is the middle of the first one.
    [[nodiscard]] std::int32_t X(double month) const {
        return RoundToInt(FPlot.Left + (month + 0.5L) / 12 * (FPlot.Right - FPlot.Left));
    }

    /// The value at a column, between the months beside it; none outside the curve. The curve goes on over the turn of
    /// the year to both edges.
    [[nodiscard]] std::optional<double> At(const TMonths& values, std::int32_t x) const {
        const double month = static_cast<double>(x - FPlot.Left) / (FPlot.Right - FPlot.Left) * 12 - 0.5;
        const double before = std::floor(month);
        const auto& first = values[static_cast<std::size_t>(before + 12) % 12];
        const auto& second = values[static_cast<std::size_t>(before + 13) % 12];
        if (!first || !second) return std::nullopt;
        return *first + (*second - *first) * (month - before);
    }

    /// Fills what is between the curves. Precipitation begins at 0, and so do humid spans in months of frost.
    void DrawSpans() {
        TSpan humid(FCanvas, {.Style = psClear}, {.Color = kBlue, .Style = bsVertical});
        TSpan wet(FCanvas, {.Color = kBlue}, {.Color = kBlue});
        for (std::int32_t x = FPlot.Left; x <= FPlot.Right; ++x) {
            const std::optional<double> temperature = At(FTemperature, x), height = At(FHeights, x);
            const double from = std::clamp(temperature.value_or(0), 0.0, kBreak);
            const bool isHumid = temperature && height && *height >= *temperature && *height > from;
            humid.Add(x, Y(from), Y(std::min(height.value_or(0), kBreak)), isHumid);
            wet.Add(x, Y(kBreak), Y(height.value_or(0)), height && *height > kBreak);
            if (temperature && height && *height < *temperature && x % kDotStep == 0) {
                FCanvas.SetPen({.Color = kRed, .Style = psDot});
                FCanvas.MoveTo(x, Y(*temperature));
                FCanvas.LineTo(x, Y(*height));
            }
        }
        humid.Draw();
        wet.Draw();
    }

    void DrawCurve(const TMonths& values, TColor color) {
        std::vector<TPoint> points;
        FCanvas.SetPen({.Color = color, .Width = 2});
        FCanvas.SetBrush({.Color = color});
        const auto draw = [&] {
            FCanvas.Polyline(points);
            if (points.size() == 1)
                FCanvas.FillRect({points[0].X - 2, points[0].Y - 2, points[0].X + 3, points[0].Y + 3});
            points.clear();
        };
        if (const auto edge = At(values, FPlot.Left)) points.push_back({FPlot.Left, Y(*edge)});
        for (std::size_t month = 0; month < values.size(); ++month) {
            if (values[month])
                points.push_back({X(static_cast<double>(month)), Y(*values[month])});
            else
                draw();
        }
        if (const auto edge = At(values, FPlot.Right)) points.push_back({FPlot.Right, Y(*edge)});
        draw();
    }

    void DrawScales() {
        FCanvas.SetFont(kLabelFont);
        TLines lines;
        for (const TChartTick& tick : FAxis->GetTicks()) {
            const std::int32_t y = Y(static_cast<double>(tick.Value)), top = y - FLine / 2;
            lines.Add({FPlot.Left - 4, y}, {FPlot.Left, y});
            FCanvas.TextOut(FPlot.Left - 6 - FCanvas.TextWidth(tick.Label), top, tick.Label);
            const String amount = PrecipitationLabel(tick);
            if (amount.empty()) continue;
            lines.Add({FPlot.Right, y}, {FPlot.Right + 4, y});
            FCanvas.TextOut(FPlot.Right + 7, top, amount);
        }
        lines.Add({FPlot.Left, Y(0)}, {FPlot.Right, Y(0)});
        lines.Add({FPlot.Left, FPlot.Top}, {FPlot.Left, FPlot.Bottom});
        lines.Add({FPlot.Right, FPlot.Top}, {FPlot.Right, FPlot.Bottom});
        lines.Draw(FCanvas, kFrameColor);
        DrawUnit(u"\xB0\x43", kRed, FPlot.Left);
        DrawUnit(u"mm", kBlue, FPlot.Right);
        constexpr StringView kLetters = u"JFMAMJJASOND";
        FCanvas.SetFont(kLabelFont);
        for (std::size_t month = 0; month < kLetters.size(); ++month) {
            const std::size_t shown = FDiagram.Latitude < 0 ? (month + 6) % 12 : month;
            const StringView letter = kLetters.substr(shown, 1);
            FCanvas.TextOut(X(static_cast<double>(month)) - FCanvas.TextWidth(letter) / 2, FPlot.Bottom + 3,
                            letter);
        }
    }

    void DrawUnit(StringView unit, TColor color, std::int32_t middle) {
        TFont font = kLabelFont;
        font.Color = color;
        font.Style = {fsBold};
        FCanvas.SetFont(font);
        FCanvas.TextOut(middle - FCanvas.TextWidth(unit) / 2, FPlot.Top - FLine - FLine / 4, unit);
    }

    TCanvas& FCanvas;
    TRect FPlot;  // of what is not taken yet; in the end the area of the curves
    const TClimateDiagram& FDiagram;
    TMonths FTemperature;
    TMonths FHeights;  // of the precipitation, in degrees
    std::optional<TChartAxis> FAxis;
    std::int32_t FLine = 0;
};

}  // namespace

void DrawClimateDiagram(TCanvas& canvas, const TRect& rect, const TClimateDiagram& diagram) {
    if (std::int64_t{rect.Right} - rect.Left < 150 || std::int64_t{rect.Bottom} - rect.Top < 120) return;
    TDiagramPainter(canvas, rect, diagram).Run();
}

}  // namespace Varnholt
