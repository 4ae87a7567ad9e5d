#include "Tools/varnholt/ReportStatistics.h"

#include <charconv>
#include <cmath>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"

namespace Varnholt::Tool {
namespace {

constexpr double kSignificance = 0.05;

// --- What the figures mean ---

String PpccMeaning(double ppcc) {
    constexpr double kNearlyStraight = 0.99, kRoughlyStraight = 0.97;
    const StringView shape = ppcc >= kNearlyStraight    ? u"nearly straight"
                             : ppcc >= kRoughlyStraight ? u"roughly straight"
                                                        : u"not straight";
    return Format(u"normal probability plot of the daily maxima: %s (1 is a straight line)", {shape});
}

// The distance of KS2 is at least 1/2 - 1/n for n values, which is significant from n = 11 on.
String KsMeaning(double significance) {
    return significance < kSignificance
               ? u"rejects a normal distribution of the daily maxima at the 5 % level, as "
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
    constexpr double kLeastShown = 0.00005;  // with four decimals
    const double size = std::fabs(slope);
    String text = size < kLeastShown ? String(u"no change")
                                     : Format(u"a %s of %.4f degrees", {slope > 0 ? u"rise" : u"fall", size});
    text += Format(u" per %s over %s", {step, series});
    if (hasSkipped) text += Format(u" (skipped %ss leave no gap)", {step});
    return text;
}

class TQuantityList {
public:
    void Add(StringView name, String value) { FItems.push_back({String(name), std::move(value), {}}); }
    void Add(StringView name, const TFigure& figure, StringView meaning) {
        AddWith(name, figure, [&](double) { return String(meaning); });
    }
    /// `explain` returns the meaning of the value, if there is one.
    template <typename TExplain>
    void AddWith(StringView name, const TFigure& figure, TExplain explain) {
        FItems.push_back({String(name), NumberText(figure.Value),
                          figure.Value ? explain(*figure.Value) : u"not calculated: " + figure.Reason});
    }

    [[nodiscard]] std::vector<TQuantity> Take() { return std::move(FItems); }

private:
    std::vector<TQuantity> FItems;
};

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
        dry = Format(u", the other %s counting as 0 mm", {Counted(summary.DryMonths, u"month", u"months")});
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
    list.Add(u"halves_f", summary.HalvesF, u"ratio of the larger variance of the two halves to the smaller");
    list.AddWith(u"halves_f_prob", summary.HalvesFProb, [&](double prob) {
        return HalvesMeaning(prob, u"the variance of monthly means", summary.HasUnlikeHalves);
    });
    list.Add(u"annual_pet", summary.AnnualPet,
             u"mm a year, potential evapotranspiration after Priestley and Taylor");
}

}  // namespace

std::vector<TQuantity> StationFacts(const TStationSummary& summary) {
    TQuantityList list;
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
    list.Add(u"latitude", NumberText(summary.Latitude));
    return list.Take();
}

std::vector<TQuantity> Statistics(const TStationSummary& summary) {
    TQuantityList list;
    AddDailyFigures(list, summary);
    AddGammaFit(list, summary);
    AddTrends(list, summary);
    return list.Take();
}

String Counted(std::int64_t count, StringView singular, StringView plural) {
    return Format(u"%d %s", {count, count == 1 ? singular : plural});
}

String NumberText(std::optional<double> value) {
    constexpr int kDigits = 7;
    char buffer[32];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof(buffer), value.value_or(kMissing),
                                            std::chars_format::general, kDigits);
    return FromUtf8({buffer, end});
}

}  // namespace Varnholt::Tool
