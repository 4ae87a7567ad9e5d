#include "Desktop/Station/Figures.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <map>

#include "Platform/Runtime/DateTime.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "VarnholtLib/Data/vrnFloatArray.h"
#include "VarnholtLib/Numerics/vrnClimatePhysics.h"
#include "VarnholtLib/Numerics/vrnStatistics.h"
#include "VarnholtLib/UI/vrnChart.h"

namespace Varnholt::Station {
namespace {

String NumberText(double value) {
    return Format(u"%.3f", {value});
}

/// The numbers of a column in the rows that are shown, kMissing for none.
TFloatArray NumbersOf(const TStationTable& table, std::int32_t column) {
    TFloatArray numbers(table.GetRowCount());
    for (std::int32_t row = 0; row < table.GetRowCount(); ++row)
        numbers.WriteFloat(row + 1, static_cast<float>(table.GetNumber(column, row).value_or(kMissing)));
    return numbers;
}

std::int32_t FirstColumnOf(const TStationTable& table, TColumnType type) {
    for (std::int32_t column = 0; column < table.GetColumnCount(); ++column)
        if (table.GetType(column) == type) return column;
    return -1;
}

std::int32_t ColumnOf(const TStationTable& table, const String& name, StringView meaning) {
    const std::int32_t column = table.FindColumn(name);
    if (column < 0 || table.GetType(column) != ctNumber)
        throw EArgumentException(Format(u"The table has no column \"%s\" of %s", {name, String(meaning)}));
    return column;
}

/// A sum and how many values it has.
struct TMean {
    double Sum = 0;
    int Count = 0;
    void Add(double value) { Sum += value, ++Count; }
    [[nodiscard]] std::optional<double> Get() const {
        return Count == 0 ? std::nullopt : std::optional(Sum / Count);
    }
};

/// The sum of twelve values that are all there.
std::optional<double> SumOf(const std::array<std::optional<double>, 12>& values) {
    double sum = 0;
    for (const std::optional<double>& value : values) sum += value.value_or(NAN);
    return std::isnan(sum) ? std::nullopt : std::optional(sum);
}

void AddEvaporation(TReport& report, const TReportSettings& settings) {
    TMonthlyData temperature{};
    for (std::size_t m = 0; m < 12; ++m) {
        if (!report.Diagram.Temperature[m]) return;
        temperature[static_cast<TMonth>(m + 1)] = static_cast<float>(*report.Diagram.Temperature[m]);
    }
    if (!settings.Sunshine) return;
    report.Evaporation = CalcAnnualPET(
        temperature,
        GetSolarRadiation(settings.Latitude, settings.AngstromA, settings.AngstromB, *settings.Sunshine));
}

}  // namespace

// --- Statistics and chart ---

std::vector<String> StatisticsHeadings() {
    return {u"Column", u"Values", u"Missing", u"Mean", u"Deviation", u"Smallest", u"Largest"};
}

std::vector<std::vector<String>> StatisticsOf(const TStationTable& table, std::int32_t left,
                                              std::int32_t right) {
    std::vector<std::vector<String>> lines;
    for (std::int32_t column = left; column <= right; ++column) {
        if (table.GetType(column) != ctNumber || table.GetRowCount() == 0) continue;
        const TFloatArray numbers = NumbersOf(table, column);
        std::int64_t known = 0;
        for (std::int32_t i = 1; i <= table.GetRowCount(); ++i) known += IsMissing(numbers[i]) ? 0 : 1;
        std::vector<String> line = {table.GetName(column), IntToStr(known),
                                    IntToStr(table.GetRowCount() - known)};
        for (const float figure : {Mean2(numbers), StDev2(numbers), Min2(numbers), Max2(numbers)})
            line.push_back(known == 0 || IsMissing(figure) ? String() : NumberText(figure));
        lines.push_back(std::move(line));
    }
    return lines;
}

void DrawColumns(TCanvas& canvas, const TRect& area, const TStationTable& table, std::int32_t left,
                 std::int32_t right) {
    const std::int32_t dates = FirstColumnOf(table, ctDate);
    TChart chart;
    chart.SetXScale(dates < 0 ? asNumber : asDate);
    chart.SetXTitle(dates < 0 ? String(u"Row") : String());
    for (std::int32_t column = left; column <= right; ++column) {
        if (table.GetType(column) != ctNumber) continue;
        // A line would join rows that the filter has parted.
        TChartSeries series{.Name = table.GetName(column),
                            .Style = table.GetFilter().empty() ? ssLine : ssPoints};
        for (std::int32_t row = 0; row < table.GetRowCount(); ++row) {
            series.X.push_back(dates < 0 ? row + 1 : table.GetNumber(dates, row).value_or(NAN));
            series.Y.push_back(table.GetNumber(column, row).value_or(NAN));
        }
        chart.AddSeries(std::move(series));
    }
    chart.Draw(canvas, area);
}

// --- The report ---

TReport MakeReport(const TStationTable& table, const TReportSettings& settings) {
    const std::int32_t dates = FirstColumnOf(table, ctDate);
    if (dates < 0) throw EArgumentException(u"The table has no column of dates");
    const std::int32_t maximum = ColumnOf(table, settings.MaximumColumn, u"maximum temperatures");
    const std::int32_t minimum = ColumnOf(table, settings.MinimumColumn, u"minimum temperatures");
    const std::int32_t precipitation = ColumnOf(table, settings.PrecipitationColumn, u"precipitation");

    std::array<TMean, 12> temperatures;
    std::map<std::chrono::year_month, TMean> totals;
    double first = INFINITY, last = -INFINITY;
    for (std::int32_t row = 0; row < table.GetRowCount(); ++row) {
        const std::optional<double> date = table.GetNumber(dates, row);
        if (!date) continue;
        const TDateTimeFields day = DecodeDateTime(*date);
        first = std::min(first, *date);
        last = std::max(last, *date);
        const std::optional<double> high = table.GetNumber(maximum, row), low = table.GetNumber(minimum, row);
        if (high && low) temperatures[static_cast<std::size_t>(day.Month - 1)].Add((*high + *low) / 2);
        if (const std::optional<double> rain = table.GetNumber(precipitation, row))
            totals[std::chrono::year(day.Year) / day.Month].Add(*rain);
    }
    std::array<TMean, 12> months;
    for (const auto& [month, total] : totals)
        if (total.Count == static_cast<int>(unsigned{(month / std::chrono::last).day()}))
            months[unsigned{month.month()} - 1].Add(total.Sum);

    TReport report;
    report.Diagram = {.Title = settings.Title, .Latitude = settings.Latitude};
    if (first <= last)
        report.Diagram.Period =
            FormatDateTime(u"yyyy-mm-dd", first) + u" to " + FormatDateTime(u"yyyy-mm-dd", last);
    for (std::size_t m = 0; m < 12; ++m) {
        report.Diagram.Temperature[m] = temperatures[m].Get();
        report.Diagram.Precipitation[m] = months[m].Get();
        report.DayLengths[m] = CalcDayLength(MonthAccLength[kMonths[m]] + 15, settings.Latitude);
    }
    report.Diagram.AnnualPrecipitation = SumOf(report.Diagram.Precipitation);
    if (const std::optional<double> sum = SumOf(report.Diagram.Temperature))
        report.Diagram.AnnualTemperature = *sum / 12;
    AddEvaporation(report, settings);
    return report;
}

std::vector<String> ReportHeadings() {
    return {u"Month", u"Mean \u00B0\x43", u"Precipitation mm", u"Day length h", u"PET mm"};
}

std::vector<std::vector<String>> ReportLines(const TReport& report) {
    std::vector<std::vector<String>> lines;
    const auto text = [](const std::optional<double>& value) {
        return value ? Format(u"%.1f", {*value}) : String();
    };
    for (std::size_t m = 0; m < 12; ++m) {
        const auto month = static_cast<TMonth>(m + 1);
        lines.push_back(
            {IntToStr(static_cast<std::int64_t>(m + 1)), text(report.Diagram.Temperature[m]),
             text(report.Diagram.Precipitation[m]), text(report.DayLengths[m]),
             text(report.Evaporation ? std::optional<double>((*report.Evaporation)[month]) : std::nullopt)});
    }
    const std::optional<double> evaporation =
        report.Evaporation ? std::optional<double>(TMonthlyDataHelper::Sum(*report.Evaporation))
                           : std::nullopt;
    lines.push_back({u"Year", text(report.Diagram.AnnualTemperature),
                     text(report.Diagram.AnnualPrecipitation), String(), text(evaporation)});
    return lines;
}

}  // namespace Varnholt::Station
