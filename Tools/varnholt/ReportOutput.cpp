#include "Tools/varnholt/ReportOutput.h"

#include <algorithm>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Tools/varnholt/Output.h"
#include "Tools/varnholt/ReportStatistics.h"

namespace Varnholt::Tool {
namespace {

/// A cell of a printed table; "-" for no value.
String Cell(std::optional<double> value, int width, int decimals) {
    const String place = u"%" + IntToStr(width);
    if (!value) return Format(place + u"s", {u"-"});
    return Format(place + u"." + IntToStr(decimals) + u"f", {*value});
}

void PrintStation(StringView title, const TStationSummary& summary) {
    PrintLine(Format(u"Report on %s", {title}));
    PrintLine({});
    PrintLine(
        Format(u"Period       %s to %s, %s, %s without a row",
               {DateText(summary.FirstDate), DateText(summary.LastDate),
                Counted(summary.Rows, u"row", u"rows"), Counted(summary.DaysWithoutRow, u"day", u"days")}));
    PrintLine(Format(u"Latitude     %.4f", {summary.Latitude}));
    const auto rainValues = [](std::int64_t count) {
        return Counted(count, u"precipitation value", u"precipitation values");
    };
    PrintLine(Format(u"Missing      %s, %s, %s", {Counted(summary.MissingTMax, u"maximum", u"maxima"),
                                                  Counted(summary.MissingTMin, u"minimum", u"minima"),
                                                  rainValues(summary.MissingPrecipitation)}));
    PrintLine(Format(u"Implausible  %s, %s, %s",
                     {Counted(summary.Count(TImplausible::Temperature), u"temperature", u"temperatures"),
                      Counted(summary.Count(TImplausible::MaximumBelowMinimum), u"maximum below the minimum",
                              u"maxima below minima"),
                      rainValues(summary.Count(TImplausible::NegativePrecipitation) +
                                 summary.Count(TImplausible::ExcessivePrecipitation))}));
    if (std::ranges::count(summary.Implausible, 0) == std::ssize(summary.Implausible)) return;
    PrintLine(
        u"Implausible are temperatures outside -95 to 65 degrees, maxima below the minimum of the day, and");
    PrintLine(u"precipitation below 0 or above 2,000 mm a day. All figures include these values.");
}

void PrintMonths(const TStationSummary& summary) {
    static constexpr const Char* kNames[] = {u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                                             u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
    const bool hasRadiation = summary.Months.front().SurfaceRadiation.has_value();
    PrintLine({});
    PrintLine(u"Month   Temp.  Precip.  Wet days   Day length   Radiation, top" +
              String(hasRadiation ? u"   at surface       PET" : u""));
    PrintLine(u"      degrees       mm                  hours           MJ m-2" +
              String(hasRadiation ? u"       MJ m-2        mm" : u""));
    for (std::size_t i = 0; i < summary.Months.size(); ++i) {
        const TCalendarMonth& month = summary.Months[i];
        String line = String(kNames[i]) + Cell(month.MeanTemperature, 10, 2) +
                      Cell(month.Precipitation, 9, 1) + Cell(month.WetDays, 10, 1) +
                      Cell(month.DayLength, 13, 2) + Cell(month.ExtraterrestrialRadiation, 17, 2);
        if (hasRadiation) line += Cell(month.SurfaceRadiation, 13, 2) + Cell(month.Pet, 10, 1);
        PrintLine(line);
    }
    PrintLine(u"Temperature: mean of all days with a maximum and a minimum; a day's mean is half their sum.");
    PrintLine(u"Precipitation and wet days (1 mm or more): means of the months in which every day has a");
    PrintLine(
        u"precipitation value. Day length and daily radiation at the top of the atmosphere: on the 15th.");
    if (hasRadiation) {
        PrintLine(u"Radiation at the surface: mean of the days of the month. PET: total of the month.");
    } else {
        PrintLine(
            u"Radiation at the surface and PET are omitted: they need the sunshine hours (--sunshine).");
    }
}

void PrintYears(const TStationSummary& summary) {
    PrintLine({});
    PrintLine(u"Year   Rows     Temp.   Precip.");
    PrintLine(u"              degrees        mm");
    for (const TYear& year : summary.Years) {
        PrintLine(Format(u"%.4d %6d", {year.Number, year.Rows}) + Cell(year.MeanTemperature, 10, 2) +
                  Cell(year.Precipitation, 10, 1));
    }
    PrintLine(u"Mean temperatures and totals are given only for years in which every day has a value.");
}

void PrintStatistics(const TStationSummary& summary) {
    PrintLine({});
    PrintLine(u"Statistics");
    for (const TQuantity& quantity : Statistics(summary)) {
        PrintLine(Format(u"%-33s %13s  %s", {quantity.Name, quantity.Value, quantity.Meaning}));
    }
}

}  // namespace

void PrintReport(StringView title, const TStationSummary& summary) {
    PrintStation(title, summary);
    PrintMonths(summary);
    PrintYears(summary);
    PrintStatistics(summary);
}

}  // namespace Varnholt::Tool
