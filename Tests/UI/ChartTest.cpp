#include <gmock/gmock.h>

#include <cmath>
#include <set>

#include "Platform/Drawing/CanvasRecorder.h"
#include "Platform/Runtime/DateTime.h"
#include "Platform/Runtime/Exceptions.h"
#include "Tests/Support/Raised.h"
#include "VarnholtLib/UI/vrnChart.h"
#include "VarnholtLib/UI/vrnClimateDiagram.h"

namespace Varnholt::Test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(ChartAxis, TicksAreRound) {
    const double day = EncodeDate(2020, 2, 28);
    struct TCase {
        std::vector<double> Values;
        TAxisScale Scale;
        std::int32_t MaxTicks;
        bool IsLoose;
        const char* Labels;
    };
    const TCase cases[] = {
        {{0.12, 9.7}, asNumber, 6, true, "0 2 4 6 8 10"},
        {{0.12, 9.7}, asNumber, 6, false, "2 4 6 8"},
        {{-0.1, 0.2}, asNumber, 7, true, "-0.1 -0.05 0 0.05 0.1 0.15 0.2"},
        {{0, 1}, asNumber, 11, false, "0 0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9 1"},
        {{-1E308, 1E308}, asNumber, 5, true, "-1E308 -5E307 0 5E307 1E308"},
        {{5, kNaN, 5, kInfinity}, asNumber, 3, true, "4.5 5 5.5"},
        {{0}, asNumber, 3, true, "-1 0 1"},
        {{1E15, 1E15 + 0.125}, asNumber, 3, true, "900000000000000 1E15 1.1E15"},
        {{}, asDate, 3, true, "0 0.5 1"},
        {{2012, 2015}, asWhole, 20, false, "2012 2013 2014 2015"},
        {{day, day + 3}, asDate, 5, false, "2020-02-28 2020-02-29 2020-03-01 2020-03-02"},
        {{day, day + 0.25}, asDate, 9, false, "2020-02-28 01:00 02:00 03:00 04:00 05:00 06:00"},
        {{day + 0.375, day + 1.125}, asDate, 5, false, "12:00 18:00 2020-02-29"},
        {{day + 0.5, day + 0.5002}, asDate, 5, false, "2020-02-28 12:00:00 12:00:05 12:00:10 12:00:15"},
        {{-2.5, -1.75},
         asDate,
         5,
         false,
         "12:00 18:00 1899-12-28 06:00"},  // days count evenly before 1899-12-30
        {{2001}, asWhole, 9, false, "2000 2001 2002"},
        {{day, day + 400}, asDate, 6, false, "2020-04 2020-07 2020-10 2021-01 2021-04"},
        {{day, day + 40000}, asDate, 6, false, "2050 2100"},
        {{EncodeDate(1, 1, 1), EncodeDate(9999, 12, 31)}, asDate, 4, false, "5000"},
        {{1E9, 3E9}, asDate, 3, false, "1000000000 2000000000 3000000000"},
    };
    for (const TCase& c : cases) {
        TChartRange range;
        for (const double value : c.Values) range.Include(value);
        const TChartAxis axis(range, c.Scale, c.MaxTicks, c.IsLoose);
        std::string labels;
        for (const TChartTick& tick : axis.GetTicks())
            labels += (labels.empty() ? "" : " ") + ToUtf8(tick.Label);
        EXPECT_EQ(labels, c.Labels) << c.Labels;
        EXPECT_EQ(axis.Position(axis.GetMin(), 400, 10), 400);
        EXPECT_EQ(axis.Position(axis.GetMax(), 400, 10), 10);
        for (const Extended odd : {kNaN, kInfinity, -kInfinity})
            EXPECT_LE(std::abs(axis.Position(odd, 400, 10)), 1'000'000);
    }
}

constexpr TRect kRect{10, 20, 410, 320};

/// The operations of a kind that a drawing makes.
std::vector<TDrawnOperation> Drawn(TCanvasRecorder& recorder, TDrawnKind kind) {
    std::vector<TDrawnOperation> drawn;
    for (const TDrawnOperation& operation : recorder.GetOperations())
        if (operation.Kind == kind) drawn.push_back(operation);
    return drawn;
}

std::string TextsOf(const TCanvasRecorder& recorder) {
    std::string texts;
    for (const String& line : recorder.Describe())
        if (line.starts_with(u"Text")) texts += ToUtf8(line.substr(line.find(u'"'))) + "\n";
    return texts;
}

/// Draws, and checks that nothing but what is turned lies outside the rectangle.
void DrawInside(TCanvasRecorder& recorder, const std::function<void(TCanvas&)>& draw) {
    recorder.Clear();
    TCanvas canvas(recorder);
    draw(canvas);
    const std::vector<String> lines = recorder.Describe();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const TDrawnOperation& operation = recorder.GetOperations()[i];
        for (const auto& point : recorder.GetPoints(operation))
            EXPECT_TRUE(point.X >= kRect.Left && point.X <= kRect.Right && point.Y >= kRect.Top &&
                        point.Y <= kRect.Bottom)
                << ToUtf8(lines[i]);
        if (operation.Kind != dkText || lines[i].find(u"turned") != String::npos) continue;
        const std::size_t begin = lines[i].find(u'"'), end = lines[i].rfind(u'"');
        const double size = lines[i].ends_with(u"size 12") ? 12 : 9;
        EXPECT_LE(recorder.GetPoints(operation)[0].X + size * static_cast<double>(end - begin - 1),
                  kRect.Right)
            << ToUtf8(lines[i]);
    }
}

TEST(Chart, OddSeriesAreDrawnInside) {
    const std::vector<TChartSeries> odd[] = {
        {},
        {{.Name = u"None", .X = {1, 2}, .Y = {kNaN, kInfinity}}},
        {{.Name = u"A name that is much too long for the legend of this chart",
          .Style = ssPoints,
          .X = {1},
          .Y = {-1E300}}},
        {{.Name = u"One", .X = {3, 1, kNaN, 2}, .Y = {1, 1E-300, 7, kNaN}},
         {.Name = u"Two", .X = {2}, .Y = {9}}},
        {{.Style = ssBars, .X = {-5, 5}, .Y = {-1E9, 1E9}, .BarWidth = 1E10}},
        {{.Style = ssPoints, .X = {1E300, -1E300}, .Y = {1E300, -1E300}}},
    };
    for (const auto& list : odd) {
        TCanvasRecorder recorder;
        TChart chart;
        chart.SetTitle(u"A title of a chart that is much too long for its width");
        chart.SetXTitle(u"x");
        for (const TChartSeries& series : list) chart.AddSeries(series);
        DrawInside(recorder, [&](TCanvas& canvas) { chart.Draw(canvas, kRect); });
        const bool isEmpty = list.empty() || list[0].Name == u"None";
        EXPECT_EQ(TextsOf(recorder).find("\"No values\"") != std::string::npos, isEmpty);
        recorder.Clear();
        TCanvas canvas(recorder);
        chart.Draw(canvas, {0, 0, 79, 500});
        EXPECT_TRUE(recorder.GetOperations().empty());
    }
    TChart chart;
    EXPECT_EQ(Raised<EArgumentException>([&] {
                  chart.AddSeries({.Name = u"a", .X = {1, 2}, .Y = {1}});
              }),
              u"Series \"a\" has 2 X values and 1 Y values");
}

TEST(Chart, ManySeriesStayTellableAndRectanglesBounded) {
    TChart chart;
    for (int i = 0; i < 60; ++i)
        chart.AddSeries({.Name = u"Series of numbers", .X = {1, 2}, .Y = {1.0 * i, 2}});
    TCanvasRecorder recorder;
    DrawInside(recorder, [&](TCanvas& canvas) { chart.Draw(canvas, kRect); });
    EXPECT_NE(TextsOf(recorder).find("\"...\""), std::string::npos);
    std::set<std::pair<TColor, TPenStyle>> pens;
    for (const TDrawnOperation& line : Drawn(recorder, dkPolyline))
        pens.insert({line.Pen.Color, line.Pen.Style});
    EXPECT_EQ(pens.size(), 28U);
    for (const TRect& far :
         {TRect{2'000'000, 0, 2'000'800, 500}, TRect{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}}) {
        recorder.Clear();
        TCanvas canvas(recorder);
        chart.Draw(canvas, far);
        EXPECT_TRUE(recorder.GetOperations().empty());
    }
    DrawInside(recorder, [](TCanvas& canvas) {
        DrawClimateDiagram(canvas, {10, 20, 168, 140}, {.Temperature = {100000, -100000}});
    });
}

TEST(Chart, LinesHaveGapsAndFewPoints) {
    TCanvasRecorder recorder;
    TCanvas canvas(recorder);
    TChart chart;
    chart.AddSeries({.X = {6, 5, 4, 3, 2, 1}, .Y = {1, 2, kNaN, 7, kNaN, 3}});
    chart.Draw(canvas, kRect);
    EXPECT_EQ(Drawn(recorder, dkPolyline).size(), 1U);  // from 5 to 6; 1 and 3 are dots
    EXPECT_EQ(Drawn(recorder, dkFillRect).size(), 2U);
    // 100,000 points become at most four for each column, and keep the extremes.
    TChartSeries many;
    for (int i = 0; i < 100'000; ++i) {
        many.X.push_back(i);
        many.Y.push_back(i == 70'000 ? 50 : i == 30'000 ? -50 : i % 7);
    }
    for (const TSeriesStyle style : {ssLine, ssPoints}) {
        recorder.Clear();
        TChart thick;
        many.Style = style;
        thick.AddSeries(many);
        thick.Draw(canvas, kRect);
        const auto drawn = Drawn(recorder, style == ssLine ? dkPolyline : dkFillRect);
        double top = 1000, bottom = 0, count = 0;
        for (const TDrawnOperation& operation : drawn) {
            for (const auto& point : recorder.GetPoints(operation)) {
                top = std::min(top, point.Y);
                bottom = std::max(bottom, point.Y);
                ++count;
            }
        }
        EXPECT_LT(count, style == ssLine ? 1600 : 8000);
        EXPECT_NEAR(bottom - top, 210, 8);
    }
}

TEST(ClimateDiagram, SpansFollowTheMonths) {
    TClimateDiagram diagram{
        .Title = u"Here", .Period = u"1990 to 2000", .Latitude = -12.345, .AnnualTemperature = 20.04};
    diagram.Temperature.fill(20);
    diagram.Precipitation.fill(30);  // dry, but for January with 300 mm and an unknown May
    diagram.Precipitation[0] = 300;
    diagram.Precipitation[4] = std::nullopt;
    diagram.Temperature[9] = kNaN;
    TCanvasRecorder recorder;
    DrawInside(recorder, [&](TCanvas& canvas) { DrawClimateDiagram(canvas, kRect, diagram); });
    const std::string texts = TextsOf(recorder);
    EXPECT_THAT(texts, testing::HasSubstr("\"12.35\xC2\xB0 S   1990 to 2000   20 \xC2\xB0\x43\""));
    EXPECT_THAT(texts, testing::HasSubstr("\"J\" size 9\n\"A\" size 9\n\"S\" size 9\n\"O\" size 9"));
    EXPECT_THAT(texts, testing::HasSubstr("\"1100\""));  // above the break at 100 mm
    const auto areas = Drawn(recorder, dkPolygon);
    ASSERT_EQ(areas.size(), 2U);  // the humid span around January, and its part above 100 mm
    const auto columns = [&](const TDrawnOperation& area) { return area.PointCount / 2; };
    const std::uint32_t wet = areas[0].Brush.Style == bsSolid ? 0 : 1;
    EXPECT_TRUE(columns(areas[wet]) > 5 && columns(areas[wet]) < columns(areas[1 - wet]))
        << columns(areas[0]);
    EXPECT_EQ(Drawn(recorder, dkPolyline).size(), 4U);  // both curves have a gap
    EXPECT_GT(Drawn(recorder, dkLine).size(), 20U);     // dotted
    diagram = {.Latitude = 1E300};
    diagram.Temperature.fill(-1E300);
    diagram.Precipitation.fill(kInfinity);
    DrawInside(recorder, [&](TCanvas& canvas) { DrawClimateDiagram(canvas, kRect, diagram); });
}

}  // namespace
}  // namespace Varnholt::Test
