#include "Tools/varnholt/StationChart.h"

#include <algorithm>
#include <cmath>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Tools/varnholt/PlotFit.h"
#include "VarnholtLib/Numerics/vrnDistributions.h"
#include "VarnholtLib/UI/vrnChart.h"
#include "VarnholtLib/UI/vrnClimateDiagram.h"

namespace Varnholt::Tool {
namespace {

TClimateDiagram DiagramOf(StringView title, const TStationSummary& summary) {
    TClimateDiagram diagram{.Title = String(title),
                            .Period = DateText(summary.FirstDate) + u" to " + DateText(summary.LastDate),
                            .Latitude = summary.Latitude};
    double temperature = 0, precipitation = 0;
    for (std::size_t m = 0; m < summary.Months.size(); ++m) {
        const TCalendarMonth& month = summary.Months[m];
        diagram.Temperature[m] = month.MeanTemperature;
        diagram.Precipitation[m] = month.Precipitation;
        temperature += month.MeanTemperature.value_or(NAN) / 12;
        precipitation += month.Precipitation.value_or(NAN);
    }
    if (std::isfinite(temperature)) diagram.AnnualTemperature = temperature;
    if (std::isfinite(precipitation)) diagram.AnnualPrecipitation = precipitation;
    return diagram;
}

TChart YearsOf(const TStationSummary& summary) {
    TChart chart;
    chart.SetXScale(asWhole);
    chart.SetTitle(u"Yearly mean temperature (\xB0\x43)");
    TChartSeries means{.Name = u"Full years", .Style = ssPoints};
    for (const TYear& year : summary.Years) {
        means.X.push_back(year.Number);
        means.Y.push_back(year.MeanTemperature.value_or(NAN));
    }
    // The trend counts the years that have a mean, from 1 on.
    TChartSeries trend;
    double position = 0;
    for (const TYear& year : summary.Years) {
        if (!year.MeanTemperature || !summary.YearlySlope.Value) continue;
        trend.X.push_back(year.Number);
        trend.Y.push_back(*summary.YearlyIntercept.Value + *summary.YearlySlope.Value * ++position);
    }
    if (!trend.X.empty())
        trend.Name = Format(u"Trend: %s \xB0\x43 a year", {SignificantText(*summary.YearlySlope.Value)});
    chart.AddSeries(std::move(means));
    chart.AddSeries(std::move(trend));
    return chart;
}

/// The width of the bars: the first of 1, 2 and 5 times a power of ten that needs at most 20 of them.
double BarWidth(float largest) {
    for (double width = 1;; width *= 10)
        for (const double factor : {1, 2, 5})
            if (largest / (factor * width) <= 20) return factor * width;
}

TChart TotalsOf(const TStationSummary& summary) {
    TChart chart;
    chart.SetTitle(u"Number of full months by precipitation");
    chart.SetXTitle(u"Monthly total (mm)");
    std::vector<float> totals = summary.MonthlyTotals;
    std::erase_if(totals, [](float total) { return !std::isfinite(total); });
    if (totals.empty()) return chart;
    const float largest = std::ranges::max(totals);
    const double width = BarWidth(largest);
    TChartSeries bars{.Name = u"Observed", .Style = ssBars, .Color = 0xE9B456, .BarWidth = width};
    for (double begin = 0; begin == 0 || begin <= largest; begin += width) {
        bars.X.push_back(begin + width / 2);
        bars.Y.push_back(static_cast<double>(std::ranges::count_if(
            totals, [&](float total) { return total >= begin && total < begin + width; })));
    }
    const double end = bars.X.back() + width / 2;
    chart.AddSeries(std::move(bars));
    if (!summary.GammaAlpha.Value) return chart;
    const auto alpha = static_cast<float>(*summary.GammaAlpha.Value);
    const auto beta = static_cast<float>(*summary.GammaBeta.Value);
    TChartSeries density{.Name = Format(u"Gamma density, shape %s, scale %s mm",
                                        {SignificantText(alpha), SignificantText(beta)}),
                         .Color = 0x005ED5};
    const double wet = summary.FullMonths - summary.DryMonths;
    // The density may be infinite at 0.
    for (int i = 1; i <= 200; ++i) {
        const double x = end * i / 200;
        density.X.push_back(x);
        density.Y.push_back(wet * width * gammf(static_cast<float>(x), alpha, beta));
    }
    chart.AddSeries(std::move(density));
    return chart;
}

}  // namespace

void DrawStationChart(TCanvas& canvas, TSize size, StringView title, const TStationSummary& summary) {
    const std::int32_t first = size.Height * 42 / 100, second = size.Height * 71 / 100;
    DrawClimateDiagram(canvas, {0, 0, size.Width, first}, DiagramOf(title, summary));
    YearsOf(summary).Draw(canvas, {0, first, size.Width, second});
    TotalsOf(summary).Draw(canvas, {0, second, size.Width, size.Height});
}

}  // namespace Varnholt::Tool
