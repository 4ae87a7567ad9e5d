#include "Tools/varnholt/ReportOutput.h"

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

// --- What the statistics say ---

struct TQuantity {
    String Name;
    String Value;
    String Meaning;
};

String PpccMeaning(double ppcc) {
    constexpr double kClose = 0.99, kRough = 0.97;
    return ppcc >= kClose   ? u"daily maxima are close to a normal distribution (1 is a perfect fit)"
           : ppcc >= kRough ? u"daily maxima are roughly normally distributed (1 is a perfect fit)"
                            : u"daily maxima are not normally distributed (1 is a perfect fit)";
}

// The distance that KS2 takes is at least 1/2 - 1/n, whatever the n values: from n = 11 on that is
// significant.
String KsMeaning(double significance) {
    return significance < kSignificance ? u"evidence against a normal distribution of the daily maxima, "
                                          u"which this test finds in any 11 "
                                          u"values or more"
                                        : u"no evidence against a normal distribution of the daily maxima";
}

String CorrelationMeaning(double corr) {
    constexpr double kStrong = 0.7, kWeak = 0.3;
    if (std::fabs(corr) < kWeak) return u"warm days and warm nights hardly go together";
    const String strength = std::fabs(corr) < kStrong ? u"moderately" : u"strongly";
    return corr > 0 ? u"warm days go " + strength + u" with warm nights"
                    : u"warm days go " + strength + u" with cold nights";
}

String HalvesMeaning(double significance, StringView what) {
    const StringView lead = significance < kSignificance ? u"evidence" : u"no evidence";
    return Format(u"%s that %s differs between the halves of the period (5 %% level)", {lead, what});
}

String TrendMeaning(double slope, const Char* step, std::int32_t count, const Char* unit,
                    bool hasStepsLeftOut) {
    const StringView direction = slope > 0 ? u"warming" : slope < 0 ? u"cooling" : u"no change";
    String text = Format(u"%s: %.4f degrees a %s over %d %s", {direction, slope, step, count, unit});
    if (hasStepsLeftOut) text.append(u", closed up over those that do not count");
    return text;
}

class TQuantityList {
public:
    void Add(StringView name, String value) { FItems.push_back({String(name), std::move(value), {}}); }
    void Add(StringView name, const TFigure& figure, StringView meaning) {
        AddTold(name, figure, [&](double) { return String(meaning); });
    }
    /// `tell` makes the meaning from the figure, if there is one.
    template <typename TTell>
    void AddTold(StringView name, const TFigure& figure, TTell tell) {
        FItems.push_back({String(name), Number(figure.Value),
                          figure.Value ? tell(*figure.Value) : u"not worked out: " + figure.Reason});
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
    list.AddTold(u"corr_tmax_tmin", summary.CorrTMaxTMin, CorrelationMeaning);
    list.AddTold(u"tmax_ppcc", summary.TMaxPpcc, PpccMeaning);
    list.AddTold(u"tmax_ks", summary.TMaxKs, KsMeaning);
}

void AddGammaFit(TQuantityList& list, const TStationSummary& summary) {
    list.AddTold(u"monthly_precipitation_gamma_alpha", summary.GammaAlpha, [&](double) {
        String text = Format(u"shape of the distribution of %d monthly totals", {summary.FullMonths});
        if (summary.DryMonths > 0) {
            text += Format(u", %d of them 0 mm, which the fit takes badly", {summary.DryMonths});
        }
        return text;
    });
    list.Add(u"monthly_precipitation_gamma_beta", summary.GammaBeta,
             u"mm, its scale; shape times scale is the mean total");
    list.AddTold(u"monthly_precipitation_p10", summary.P10,
                 [](double value) { return Format(u"one month in ten stays at %.1f mm or less", {value}); });
    list.AddTold(u"monthly_precipitation_p50", summary.P50,
                 [](double value) { return Format(u"one month in two stays at %.1f mm or less", {value}); });
    list.AddTold(u"monthly_precipitation_p90", summary.P90,
                 [](double value) { return Format(u"one month in ten has more than %.1f mm", {value}); });
}

void AddTrends(TQuantityList& list, const TStationSummary& summary) {
    list.AddTold(u"yearly_tmean_slope", summary.YearlySlope, [&](double slope) {
        return TrendMeaning(slope, u"year", summary.TemperatureYears, u"full years", summary.HasYearsLeftOut);
    });
    list.Add(u"yearly_tmean_intercept", summary.YearlyIntercept,
             u"degrees, the trend in the year before the first full one");
    list.AddTold(u"monthly_tmean_slope", summary.MonthlySlope, [&](double slope) {
        return TrendMeaning(slope, u"month", summary.TemperatureMonths, u"months", summary.HasMonthsLeftOut) +
               u"; the seasons count in it";
    });
    list.Add(u"halves_t", summary.HalvesT,
             u"t of the monthly means, first half of the months against second");
    list.AddTold(u"halves_t_prob", summary.HalvesTProb,
                 [](double prob) { return HalvesMeaning(prob, u"the mean temperature"); });
    list.Add(u"halves_f", summary.HalvesF, u"the greater variance of the halves over the smaller");
    list.AddTold(u"halves_f_prob", summary.HalvesFProb,
                 [](double prob) { return HalvesMeaning(prob, u"the variance of temperature"); });
    list.Add(u"annual_pet", summary.AnnualPet, u"mm a year could evaporate where water is at hand");
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
    PrintLine(u"Precipitation and wet days (1 mm or more): means of the months with a row and a known");
    PrintLine(
        u"precipitation for each of their days. Day length and radiation at the top of the atmosphere: on");
    PrintLine(u"the 15th.");
    if (!hasRadiation) {
        PrintLine(
            u"Radiation at the surface and PET are left out: they need the hours of sunshine (--sunshine).");
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
    PrintLine(u"Means and totals of years in which the value of each day is known.");
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
