#pragma once

#include <optional>
#include <vector>

#include "Platform/Drawing/Canvas.h"
#include "VarnholtLib/UI/vrnChartAxis.h"

/// Charts of series: lines, points and bars over numbers or dates.
///
///     TChart chart;
///     chart.SetTitle(u"Station 7");
///     chart.SetYTitle(u"Precipitation (mm)");
///     chart.SetXScale(asDate);
///     chart.AddSeries({.Name = u"Rain", .X = days, .Y = rain});
///     DrawToFile(u"rain.svg", {800, 500}, [&](TCanvas& canvas) { chart.Draw(canvas, {0, 0, 800, 500}); });
///
/// A NaN or an infinity in Y is a gap; points whose X is one are left out. The Y axis begins and ends at a tick and
/// holds all values. The same chart looks the same on every target.
///
/// Threads: a chart belongs to one thread at a time.
namespace Varnholt {

enum TSeriesStyle : std::uint8_t { ssLine, ssPoints, ssBars };

struct TChartSeries {
    String Name = {};  ///< in the legend; empty for none
    TSeriesStyle Style = ssLine;
    std::optional<TColor> Color = {};  ///< none: one of ChartColors by the place of the series
    TPenStyle PenStyle =
        psSolid;  ///< of the eighth series without a colour and those after it psDash, and so on
    std::vector<double> X = {};
    std::vector<double> Y = {};
    double BarWidth = 1;  ///< on the X axis; a bar is around its X, and begins at 0
};

/// Colours for series that people with any kind of colour vision can tell apart (Okabe and Ito 2008); after seven they
/// begin anew.
[[nodiscard]] VARNHOLT_EXPORT std::vector<TColor> ChartColors(std::int32_t count);

class VARNHOLT_EXPORT TChart {
public:
    /// Texts that do not fit are shortened; empty ones take no space.
    void SetTitle(StringView title) { FTitle = title; }
    void SetXTitle(StringView title) { FXTitle = title; }
    void SetYTitle(StringView title) { FYTitle = title; }
    void SetXScale(TAxisScale scale) noexcept { FXScale = scale; }

    /// Raises EArgumentException `Series "%s" has %d X values and %d Y values` if these differ. A line joins its points
    /// in the order of their X.
    void AddSeries(TChartSeries series);
    [[nodiscard]] const std::vector<TChartSeries>& GetSeries() const noexcept { return FSeries; }

    /// Draws the chart inside a rectangle. Neighbours of a line that fall on one column of pixels are drawn once, from
    /// the smallest to the largest, and points on the same pixel once. A chart without values says `No values`;
    /// a rectangle of less than 80 by 60 pixels, or more than 100,000 pixels from the origin, stays as it is. Names of
    /// series that need more than a third of the height are left out. Clipping, pen, brush and font of the canvas are
    /// changed.
    void Draw(TCanvas& canvas, const TRect& rect) const;

private:
    String FTitle, FXTitle, FYTitle;
    TAxisScale FXScale = asNumber;
    std::vector<TChartSeries> FSeries;
};

}  // namespace Varnholt
