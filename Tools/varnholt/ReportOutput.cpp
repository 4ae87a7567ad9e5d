#include "Tools/varnholt/ReportOutput.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Tools/varnholt/Output.h"

namespace Varnholt::Tool {
namespace {

constexpr double kSignificance = 0.05;

// --- Numbers ---

String Number(double value) {
    constexpr int kDigits = 7;
    char buffer[32];
    const auto [end, error] =
        std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::general, kDigits);
    return error == std::errc() ? FromUtf8({buffer, end}) : IntToStr(static_cast<std::int64_t>(kMissing));
}

String Number(std::optional<double> value) {
    return Number(value.value_or(kMissing));
}

/// A cell of a printed table.
String Cell(std::optional<double> value, int width, int decimals) {
    const String place = u"%" + IntToStr(width);
    if (!value) return Format(place + u"s", {u"-"});
    return Format(place + u"." + IntToStr(decimals) + u"f", {*value});
}

// --- Statistics and their meaning ---

struct TQuantity {
    String Name;
    String Value;
    String Meaning;
};

String PpccMeaning(double ppcc) {
    constexpr double kNearlyStraight = 0.99, kRoughlyStraight = 0.97;
    const StringView shape = ppcc >= kNearlyStraight    ? u"nearly straight"
                             : ppcc >= kRoughlyStraight ? u"roughly straight"
                                                        : u"not straight";
    return Format(u"normal probability plot of the daily maxima: %s (1 is a straight line)", {shape});
}

// The distance of KS2 is at least 1/2 - 1/n for n values, which is significant from n = 11 on.
String KsMeaning(double significance) {
    return significance < kSignificance ? u"rejects a normal distribution of the daily maxima at the 5 % level, as "
                                          u"it does for any 11 or more values"
                                        : u"does not reject a normal distribution of the daily maxima";
}

String CorrelationMeaning(double corr) {
    constexpr double kStrong = 0.7, kWeak = 0.3;
    if (std::fabs(corr) < kWeak) return u"little linear relation between daily maxima and minima";
    return Format(u"%s tendency for warm days to have %s nights, seasons included",
                  {std::fabs(corr) < kStrong ? u"moderate" : u"strong", corr > 0 ? u"warm" : u"cold"});
}

String HalvesMeaning(double significance, StringView what, bool hasUnlikeHalves) {
    const StringView lead = significance < kSignificance ? u"evidence" : u"no evidence";
    return Format(u"%s of a difference in %s (5 %% level, months taken as independent%s)",
                  {lead, what, hasUnlikeHalves ? u"; the halves hold different calendar months" : u""});
}

String TrendMeaning(double slope, StringView step, StringView series, bool hasSkipped) {
    const StringView direction = slope > 0 ? u"a rise" : u"a fall";
    String text = slope == 0 ? String(u"no change")
                             : Format(u"%s of %s degrees", {direction, Number(std::fabs(slope))});
    text += Format(u" a %s over %s", {step, series});
    if (hasSkipped) text += Format(u", with no gap for the %ss skipped between", {step});
    return text;
}

class TQuantityList {
public:
    void Add(StringView name, String value) { FItems.push_back({String(name), std::move(value), {}}); }
    void Add(StringView name, const TFigure& figure, StringView meaning) {
        AddWith(name, figure, [&](double) { return String(meaning); });
    }
    /// `explain` makes the meaning from the figure, if it has a value.
    template <typename TExplain>
    void AddWith(StringView name, const TFigure& figure, TExplain explain) {
        FItems.push_back({String(name), Number(figure.Value),
                          figure.Value ? explain(*figure.Value) : u"not calculated: " + figure.Reason});
    }

    [[nodiscard]] std::vector<TQuantity> Take() { return std::move(FItems); }

private:
    std::vector<TQuantity> FItems;
};

void AddStation(TQuantityList& list, const TStationSummary& summary) {
    list.Add(u"rows", IntToStr(summary.Rows));
    list.Add(u"missing_tmax", IntToStr(summary.MissingTMax));
    list.Add(u"missing_tmin", IntToStr(summary.MissingTMin));
    list.Add(u"missing_precipitation", IntToStr(summary.MissingPrecipitation));
    static constexpr const Char* kImplausible[kImplausibleKinds] = {
        u"implausible_temperature", u"maximum_below_minimum", u"negative_precipitation",
        u"precipitation_above_2000_mm"};
    for (std::size_t kind = 0; kind < kImplausibleKinds; ++kind) {
        list.Add(kImplausible[kind], IntToStr(summary.Implausible[kind]));
    }
    list.Add(u"first_date", DateText(summary.FirstDate));
    list.Add(u"last_date", DateText(summary.LastDate));
    list.Add(u"latitude", Number(summary.Latitude));
}

void AddDailyFigures(TQuantityList& list, const TStationSummary& summary) {
    list.Add(u"tmax_mean", summary.TMaxMean, u"degrees, mean of the daily maxima");
    list.Add(u"tmax_sd", summary.TMaxSd, u"degrees, their standard deviation");
    list.Add(u"tmax_min", summary.TMaxMin, u"degrees, on the day with the lowest maximum");
    list.Add(u"tmax_max", summary.TMaxMax, u"degrees, on the hottest day");
    list.Add(u"tmin_mean", summary.TMinMean, u"degrees, mean of the daily minima");
    list.Add(u"tmin_sd", summary.TMinSd, u"degrees, their standard deviation");
    list.Add(u"precipitation_mean", summary.PrecipitationMean, u"mm a day");
    list.Add(u"precipitation_sd", summary.PrecipitationSd, u"mm, standard deviation of the days");
    list.Add(u"precipitation_max", summary.PrecipitationMax, u"mm, on the wettest day");
    list.AddWith(u"corr_tmax_tmin", summary.CorrTMaxTMin, CorrelationMeaning);
    list.AddWith(u"tmax_ppcc", summary.TMaxPpcc, PpccMeaning);
    list.AddWith(u"tmax_ks", summary.TMaxKs, KsMeaning);
}

void AddGammaFit(TQuantityList& list, const TStationSummary& summary) {
    String which = IntToStr(summary.FullMonths) + u" monthly totals", dry;
    if (summary.DryMonths > 0) {
        which = Format(u"the %d of %s that are above 0 mm", {summary.FullMonths - summary.DryMonths, which});
        dry = Format(u", the other %d months counting as 0 mm", {summary.DryMonths});
    }
    list.Add(u"monthly_precipitation_gamma_alpha", summary.GammaAlpha,
             u"shape of a gamma distribution fitted to " + which);
    list.Add(u"monthly_precipitation_gamma_beta", summary.GammaBeta,
             u"mm, its scale; shape times scale is the mean of these totals");
    const auto addPercentile = [&](StringView name, const TFigure& figure, StringView share) {
        list.AddWith(name, figure, [&](double value) {
            return Format(u"%s %.1f mm (exact quantile of the fit%s)", {share, value, dry});
        });
    };
    addPercentile(u"monthly_precipitation_p10", summary.P10, u"one month in ten has at most");
    addPercentile(u"monthly_precipitation_p50", summary.P50, u"one month in two has at most");
    addPercentile(u"monthly_precipitation_p90", summary.P90, u"one month in ten has more than");
}

void AddTrends(TQuantityList& list, const TStationSummary& summary) {
    list.AddWith(u"yearly_tmean_slope", summary.YearlySlope, [&](double slope) {
        return TrendMeaning(slope, u"year", Format(u"%d full years", {summary.TemperatureYears}),
                            summary.HasSkippedYears);
    });
    list.Add(u"yearly_tmean_intercept", summary.YearlyIntercept,
             u"degrees, the trend line in the year before the first full one");
    list.AddWith(u"monthly_tmean_slope", summary.MonthlySlope, [&](double slope) {
        return TrendMeaning(slope, u"month", Format(u"%d months", {summary.TemperatureMonths}),
                            summary.HasSkippedMonths) +
               u"; no measure of warming, as it includes the seasons";
    });
    list.Add(u"halves_t", summary.HalvesT,
             u"t statistic of the monthly mean temperatures, first half against second");
    list.AddWith(u"halves_t_prob", summary.HalvesTProb, [&](double prob) {
        return HalvesMeaning(prob, u"mean temperature", summary.HasUnlikeHalves);
    });
    list.Add(u"halves_f", summary.HalvesF, u"the larger variance of the two halves over the smaller");
    list.AddWith(u"halves_f_prob", summary.HalvesFProb, [&](double prob) {
        return HalvesMeaning(prob, u"the variance of monthly means", summary.HasUnlikeHalves);
    });
    list.Add(u"annual_pet", summary.AnnualPet,
             u"mm a year, potential evapotranspiration after Priestley and Taylor");
}

std::vector<TQuantity> Statistics(const TStationSummary& summary) {
    TQuantityList list;
    AddDailyFigures(list, summary);
    AddGammaFit(list, summary);
    AddTrends(list, summary);
    return list.Take();
}

// --- Printing ---

void PrintStation(StringView title, const TStationSummary& summary) {
    PrintLine(Format(u"Report on %s", {title}));
    PrintLine({});
    PrintLine(Format(
        u"Period    %s to %s, %d rows, %d days without a row",
        {DateText(summary.FirstDate), DateText(summary.LastDate), summary.Rows, summary.DaysWithoutRow}));
    PrintLine(Format(u"Latitude  %.4f", {summary.Latitude}));
    PrintLine(Format(u"Missing   %d maxima, %d minima, %d precipitation values",
                     {summary.MissingTMax, summary.MissingTMin, summary.MissingPrecipitation}));
    PrintLine(
        Format(u"Doubtful  %d temperatures, %d maxima below minima, %d precipitation values",
               {summary.Count(TImplausible::Temperature), summary.Count(TImplausible::MaximumBelowMinimum),
                summary.Count(TImplausible::NegativePrecipitation) +
                    summary.Count(TImplausible::GreatPrecipitation)}));
    if (std::ranges::count(summary.Implausible, 0) == std::ssize(summary.Implausible)) return;
    PrintLine(
        u"Doubtful are temperatures outside -95 to 65 degrees, maxima below the minimum of the day, and");
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
    PrintLine(u"Temperature: mean of all days with a maximum and a minimum, a day counting (max + min) / 2.");
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
    PrintLine(u"Mean temperatures and totals only of years in which every day has a value.");
}

void PrintStatistics(const TStationSummary& summary) {
    PrintLine({});
    PrintLine(u"Statistics");
    for (const TQuantity& quantity : Statistics(summary)) {
        PrintLine(Format(u"%-33s %13s  %s", {quantity.Name, quantity.Value, quantity.Meaning}));
    }
}

// --- Files ---

String MonthlyTable(const TStationSummary& summary) {
    String text =
        u"month,mean_temperature,precipitation,wet_days,day_length,extraterrestrial_radiation,"
        u"surface_radiation,pet\n";
    std::int64_t number = 0;
    for (const TCalendarMonth& month : summary.Months) {
        text += IntToStr(++number);
        for (const std::optional<double> value :
             {month.MeanTemperature, month.Precipitation, month.WetDays, std::optional(month.DayLength),
              std::optional(month.ExtraterrestrialRadiation), month.SurfaceRadiation, month.Pet}) {
            text += u"," + Number(value);
        }
        text += u"\n";
    }
    return text;
}

String YearlyTable(const TStationSummary& summary) {
    String text = u"year,rows,mean_temperature,precipitation\n";
    for (const TYear& year : summary.Years) {
        text += Format(u"%d,%d,%s,%s\n",
                       {year.Number, year.Rows, Number(year.MeanTemperature), Number(year.Precipitation)});
    }
    return text;
}

String SummaryTable(const TStationSummary& summary) {
    TQuantityList station;
    AddStation(station, summary);
    String text = u"quantity,value\n";
    for (const auto& quantities : {station.Take(), Statistics(summary)}) {
        for (const TQuantity& quantity : quantities) text += quantity.Name + u"," + quantity.Value + u"\n";
    }
    return text;
}

}  // namespace

void PrintReport(StringView title, const TStationSummary& summary) {
    PrintStation(title, summary);
    PrintMonths(summary);
    PrintYears(summary);
    PrintStatistics(summary);
}

void WriteReportFiles(StringView folder, const TStationSummary& summary) {
    ForceDirectories(folder);
    const String prefix = String(folder) + u"/";
    WriteFileInOneGo(prefix + u"monthly.csv", ToUtf8(MonthlyTable(summary)));
    WriteFileInOneGo(prefix + u"yearly.csv", ToUtf8(YearlyTable(summary)));
    WriteFileInOneGo(prefix + u"summary.csv", ToUtf8(SummaryTable(summary)));
}

}  // namespace Varnholt::Tool
