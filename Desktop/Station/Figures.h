#pragma once

#include "Desktop/Station/StationTable.h"
#include "Platform/Drawing/Canvas.h"
#include "VarnholtLib/Numerics/vrnMonthlyData.h"
#include "VarnholtLib/UI/vrnClimateDiagram.h"

/// What is calculated from a table and shown beside it.
namespace Varnholt::Station {

/// A line of figures for each column of numbers among those from `left` to `right`: name, values, missing values, mean,
/// standard deviation, smallest and largest value, of the rows that are shown.
[[nodiscard]] std::vector<std::vector<String>> StatisticsOf(const TStationTable& table, std::int32_t left,
                                                            std::int32_t right);
/// The headings of these.
[[nodiscard]] std::vector<String> StatisticsHeadings();

/// Draws the columns of numbers among some columns over the table's first column of dates, or over the numbers of the rows.
void DrawColumns(TCanvas& canvas, const TRect& area, const TStationTable& table, std::int32_t left,
                 std::int32_t right);

/// What a report needs to know of a station.
struct TReportSettings {
    String Title;
    float Latitude = 0;
    std::optional<TMonthlyData> Sunshine = {};  ///< hours a month
    float AngstromA = 0.25F;
    float AngstromB = 0.5F;
    String MaximumColumn, MinimumColumn, PrecipitationColumn;
};

/// The mean year of a station.
struct TReport {
    TClimateDiagram Diagram;
    std::array<double, 12> DayLengths{};  ///< hours, on the 15th of each month
    std::optional<TMonthlyData>
        Evaporation;  ///< potential, mm a month; none without sunshine or a temperature
};

/// The report on all rows that are shown: mean temperatures of the days with both extremes, and for each month of the
/// year the mean of the totals of its months in which the precipitation of every day is known. EArgumentException `The table has
/// no column "%s" of %s`, and `The table has no column of dates`.
[[nodiscard]] TReport MakeReport(const TStationTable& table, const TReportSettings& settings);

/// The report as lines of cells, and their headings.
[[nodiscard]] std::vector<std::vector<String>> ReportLines(const TReport& report);
[[nodiscard]] std::vector<String> ReportHeadings();

}  // namespace Varnholt::Station
