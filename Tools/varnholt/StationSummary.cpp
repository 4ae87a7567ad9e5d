#include "Tools/varnholt/StationSummary.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Tools/varnholt/GammaQuantile.h"
#include "VarnholtLib/Numerics/vrnClimatePhysics.h"
#include "VarnholtLib/Numerics/vrnStatistics.h"
#include "VarnholtLib/Numerics/vrnTrendline.h"

namespace Varnholt::Tool {
namespace {

constexpr float kWetDay = 1;  // mm
constexpr int kMostMissingDays = 10;

TFigure Unknown(String reason) {
    return {std::nullopt, std::move(reason)};
}

TFigure FigureOf(double value) {
    if (!std::isfinite(value)) return Unknown(u"the result is not a finite number");
    return {value, {}};
}

TFloatArray ToFloatArray(std::span<const float> values) {
    TFloatArray array(static_cast<std::int32_t>(values.size()));
    std::ranges::copy(values, array.GetBuffer().begin());
    return array;
}

// --- Months and years ---

struct TTally {
    double Sum = 0;
    int Count = 0;

    void Add(double value) {
        Sum += value;
        ++Count;
    }
    void Add(const TTally& other) {
        Sum += other.Sum;
        Count += other.Count;
    }
    [[nodiscard]] std::optional<double> Mean() const {
        return Count == 0 ? std::nullopt : std::optional(Sum / Count);
    }
};

/// The days of one month of one year.
struct TMonthTally {
    std::chrono::year_month Month;
    int Rows = 0;
    TTally Temperature, Precipitation;
    int WetDays = 0;

    [[nodiscard]] int Days() const {
        return static_cast<int>(static_cast<unsigned>((Month / std::chrono::last).day()));
    }
    [[nodiscard]] bool HasTemperature() const { return Temperature.Count >= Days() - kMostMissingDays; }
    [[nodiscard]] bool IsFull() const { return Precipitation.Count == Days(); }
    [[nodiscard]] std::size_t Index() const { return static_cast<unsigned>(Month.month()) - 1; }
};

std::vector<TMonthTally> TallyMonths(std::span<const TStationDay> days) {
    std::vector<TMonthTally> months;
    for (const TStationDay& day : days) {
        const std::chrono::year_month month = day.Date.year() / day.Date.month();
        if (months.empty() || months.back().Month != month) months.push_back({month, 0, {}, {}, 0});
        TMonthTally& tally = months.back();
        ++tally.Rows;
        if (IsKnown(day.TMax) && IsKnown(day.TMin)) tally.Temperature.Add((double{day.TMax} + day.TMin) / 2);
        if (!IsKnown(day.Precipitation)) continue;
        tally.Precipitation.Add(day.Precipitation);
        if (day.Precipitation >= kWetDay) ++tally.WetDays;
    }
    return months;
}

std::vector<TYear> ListYears(std::span<const TMonthTally> months) {
    std::vector<TYear> years;
    for (auto month = months.begin(); month != months.end();) {
        const std::chrono::year number = month->Month.year();
        TYear year{static_cast<int>(number), 0, {}, {}};
        TTally temperature, precipitation;
        for (; month != months.end() && month->Month.year() == number; ++month) {
            year.Rows += month->Rows;
            temperature.Add(month->Temperature);
            precipitation.Add(month->Precipitation);
        }
        const int days = number.is_leap() ? 366 : 365;
        if (temperature.Count == days) year.MeanTemperature = temperature.Mean();
        if (precipitation.Count == days) year.Precipitation = precipitation.Sum;
        years.push_back(year);
    }
    return years;
}

void FillMeanYear(std::span<const TMonthTally> months, TStationSummary& summary) {
    std::array<TTally, 12> temperature, totals, wetDays;
    for (const TMonthTally& month : months) {
        temperature[month.Index()].Add(month.Temperature);
        if (!month.IsFull()) continue;
        totals[month.Index()].Add(month.Precipitation.Sum);
        wetDays[month.Index()].Add(month.WetDays);
    }
    for (std::size_t i = 0; i < summary.Months.size(); ++i) {
        summary.Months[i].MeanTemperature = temperature[i].Mean();
        summary.Months[i].Precipitation = totals[i].Mean();
        summary.Months[i].WetDays = wetDays[i].Mean();
    }
}

// --- Radiation and evapotranspiration ---

void FillRadiation(const TSite& site, TStationSummary& summary) {
    constexpr int kMiddleOfMonth = 15;
    for (const TMonth month : kMonths) {
        const std::int32_t day = MonthAccLength[month] + kMiddleOfMonth;
        TCalendarMonth& row = summary.Months[month - moJanuary];
        float dayLength = 0;
        row.DayLength = CalcDayLength(day, site.Latitude);
        row.ExtraterrestrialRadiation = Solar_Radiation(site.Latitude, day, dayLength);
    }
}

// A month without a mean temperature enters as a NaN, which affects its own month only.
void FillPet(const TSite& site, TStationSummary& summary) {
    if (!site.Sunshine) {
        summary.AnnualPet = Unknown(u"it needs the hours of sunshine (--sunshine)");
        return;
    }
    const TMonthlyData radiation =
        GetSolarRadiation(site.Latitude, site.AngstromA, site.AngstromB, *site.Sunshine);
    TMonthlyData temperature;
    for (const TMonth month : kMonths) {
        const auto& mean = summary.Months[month - moJanuary].MeanTemperature;
        temperature[month] = static_cast<float>(mean.value_or(std::numeric_limits<double>::quiet_NaN()));
    }
    const TMonthlyData pet = CalcAnnualPET(temperature, radiation);
    for (const TMonth month : kMonths) {
        TCalendarMonth& row = summary.Months[month - moJanuary];
        if (std::isfinite(radiation[month])) row.SurfaceRadiation = radiation[month];
        if (std::isfinite(pet[month])) row.Pet = pet[month];
    }
    const bool hasAllMonths =
        std::ranges::all_of(summary.Months, [](const auto& row) { return row.MeanTemperature.has_value(); });
    summary.AnnualPet = hasAllMonths ? FigureOf(TMonthlyDataHelper::Sum(pet))
                                     : Unknown(u"it needs a mean temperature for all twelve months");
}

// --- Daily values ---

/// The known values of one column. Missing values are left out here, because KS2 includes them in its count.
std::vector<float> KnownValues(std::span<const TStationDay> days, float TStationDay::*column) {
    std::vector<float> values;
    for (const TStationDay& day : days) {
        if (IsKnown(day.*column)) values.push_back(day.*column);
    }
    return values;
}

template <typename TStatistic>
TFigure DailyFigure(std::span<const float> values, std::size_t least, TStatistic statistic) {
    if (values.size() < least) {
        return Unknown(values.empty() ? u"there are no values" : u"there is only one value");
    }
    return FigureOf(statistic(ToFloatArray(values)));
}

// The fit to a normal distribution has no meaning for equal values.
template <typename TStatistic>
TFigure NormalFit(std::span<const float> values, TStatistic statistic) {
    if (values.size() > 1 && std::ranges::min(values) == std::ranges::max(values)) {
        return Unknown(u"all values are equal");
    }
    return DailyFigure(values, 2, statistic);
}

TFigure CorrelateTemperatures(std::span<const TStationDay> days) {
    constexpr std::size_t kFewestPairs = 3;
    std::vector<float> maxima, minima;
    for (const TStationDay& day : days) {
        if (!IsKnown(day.TMax) || !IsKnown(day.TMin)) continue;
        maxima.push_back(day.TMax);
        minima.push_back(day.TMin);
    }
    if (maxima.size() < kFewestPairs) return Unknown(u"it needs three days with both temperatures");
    const TFloatArray x = ToFloatArray(maxima), y = ToFloatArray(minima);
    if (Min2(x) == Max2(x) || Min2(y) == Max2(y)) return Unknown(u"all values of a column are equal");
    return FigureOf(Corr(x, y));
}

void FillDailyFigures(std::span<const TStationDay> days, TStationSummary& summary) {
    const std::vector<float> maxima = KnownValues(days, &TStationDay::TMax);
    const std::vector<float> minima = KnownValues(days, &TStationDay::TMin);
    const std::vector<float> rain = KnownValues(days, &TStationDay::Precipitation);
    const auto missing = [&](const std::vector<float>& known) {
        return std::ssize(days) - std::ssize(known);
    };
    summary.MissingTMax = missing(maxima);
    summary.MissingTMin = missing(minima);
    summary.MissingPrecipitation = missing(rain);

    summary.TMaxMean = DailyFigure(maxima, 1, Mean2);
    summary.TMaxSd = DailyFigure(maxima, 2, StDev2);
    summary.TMaxMin = DailyFigure(maxima, 1, Min2);
    summary.TMaxMax = DailyFigure(maxima, 1, Max2);
    summary.TMinMean = DailyFigure(minima, 1, Mean2);
    summary.TMinSd = DailyFigure(minima, 2, StDev2);
    summary.PrecipitationMean = DailyFigure(rain, 1, Mean2);
    summary.PrecipitationSd = DailyFigure(rain, 2, StDev2);
    summary.PrecipitationMax = DailyFigure(rain, 1, Max2);
    summary.CorrTMaxTMin = CorrelateTemperatures(days);
    summary.TMaxPpcc = NormalFit(maxima, PPCC2);
    summary.TMaxKs = NormalFit(maxima, KS2);
}

// --- Monthly precipitation ---

/// The total that a month has at most with probability p, where one of `dryShare` is 0 and the others have a
/// gamma distribution (Thom 1966, WMO Technical Note 81).
TFigure TotalPercentile(double dryShare, float alpha, float beta, double p) {
    if (p <= dryShare) return FigureOf(0);
    try {
        return FigureOf(static_cast<double>(GammaQuantile(alpha, beta, (p - dryShare) / (1 - dryShare))));
    } catch (const Exception& failure) {
        return Unknown(failure.GetMessage());
    }
}

// Totals of 0 are left out of the fit: Gamma would count them in the mean and not in the logarithms.
void FillGammaFit(std::span<const TMonthTally> months, TStationSummary& summary) {
    std::vector<float> totals;
    for (const TMonthTally& month : months) {
        if (!month.IsFull()) continue;
        ++summary.FullMonths;
        const auto total = static_cast<float>(month.Precipitation.Sum);
        summary.MonthlyTotals.push_back(total);
        if (total > 0) totals.push_back(total);
    }
    const auto count = static_cast<std::int32_t>(totals.size());
    summary.DryMonths = summary.FullMonths - count;
    float alpha = 0, beta = 0;
    String reason = u"it needs two months above 0 mm with known precipitation on every day";
    if (count >= 2) {
        TFloatGrid column(1, count);
        for (std::int32_t row = 1; const float total : totals) column.Put(1, row++, total);
        reason = u"the monthly totals do not vary as a gamma distribution does";
        if (std::ranges::min(totals) != std::ranges::max(totals)) Gamma(1, column, alpha, beta);
    }
    if (!(std::isfinite(alpha) && std::isfinite(beta) && alpha > 0 && beta > 0)) {
        summary.GammaAlpha = summary.GammaBeta = Unknown(reason);
        summary.P10 = summary.P50 = summary.P90 = Unknown(u"there is no gamma distribution");
        return;
    }
    summary.GammaAlpha = FigureOf(alpha);
    summary.GammaBeta = FigureOf(beta);
    const double dryShare = static_cast<double>(summary.DryMonths) / summary.FullMonths;
    summary.P10 = TotalPercentile(dryShare, alpha, beta, 0.1);
    summary.P50 = TotalPercentile(dryShare, alpha, beta, 0.5);
    summary.P90 = TotalPercentile(dryShare, alpha, beta, 0.9);
}

// --- Trends ---

// A trendline gives only its values. GetY(0) is the intercept. For a large x the intercept hardly counts, so
// the difference from GetY(0) keeps all digits of the slope; GetY(1) would not.
void FitTrend(std::span<const float> values, const Char* unit, TFigure& slope, TFigure* intercept) {
    constexpr std::int32_t kLargeX = 1 << 30;
    TFigure unused;
    if (intercept == nullptr) intercept = &unused;
    if (values.size() < 2) {
        slope = *intercept = Unknown(Format(u"it needs the mean temperatures of two %s", {unit}));
        return;
    }
    const auto trend = TTrendlineFactory::GetObject(TSingleArray(values));
    const float start = trend->GetY(0);
    *intercept = FigureOf(start);
    slope = FigureOf(static_cast<float>((Extended{trend->GetY(kLargeX)} - start) / kLargeX));
}

/// A month in the series of mean temperatures.
struct TMonthMean {
    std::chrono::year_month Month;
    float Temperature;
};

bool HaveSameCalendarMonths(std::span<const TMonthMean> a, std::span<const TMonthMean> b) {
    std::array<int, 13> counts{};
    for (const TMonthMean& mean : a) ++counts[static_cast<unsigned>(mean.Month.month())];
    for (const TMonthMean& mean : b) --counts[static_cast<unsigned>(mean.Month.month())];
    return std::ranges::all_of(counts, [](int count) { return count == 0; });
}

std::vector<float> TemperaturesOf(std::span<const TMonthMean> months) {
    std::vector<float> values;
    for (const TMonthMean& mean : months) values.push_back(mean.Temperature);
    return values;
}

void CompareHalves(std::span<const TMonthMean> months, TStationSummary& summary) {
    const auto firstMonths = months.first(months.size() / 2);
    const auto secondMonths = months.subspan(months.size() / 2);  // one more of an odd number
    summary.HasUnlikeHalves = !HaveSameCalendarMonths(firstMonths, secondMonths);
    String reason = u"it needs the mean temperatures of four months";
    try {
        if (firstMonths.size() >= 2) {
            const TFloatArray first = ToFloatArray(TemperaturesOf(firstMonths));
            const TFloatArray second = ToFloatArray(TemperaturesOf(secondMonths));
            float t = 0, probT = 0, f = 0, probF = 0;
            FT_test(Mean2(first), StDev2(first), Mean2(second), StDev2(second), first.GetCount(),
                    second.GetCount(), t, probT, f, probF);
            summary.HalvesT = FigureOf(t);
            summary.HalvesTProb = FigureOf(probT);
            summary.HalvesF = FigureOf(f);
            // Twice an upper tail, which is above 1/2 for some f near 1 if the halves differ in length.
            summary.HalvesFProb = FigureOf(std::isnan(probF) ? probF : std::min(probF, 1.0F));
            return;
        }
    } catch (const Exception& failure) {
        reason = failure.GetMessage();
    }
    summary.HalvesT = summary.HalvesTProb = summary.HalvesF = summary.HalvesFProb = Unknown(reason);
}

void FillTrends(std::span<const TMonthTally> months, TStationSummary& summary) {
    std::vector<TMonthMean> monthly;
    for (const TMonthTally& month : months) {
        if (!month.HasTemperature()) continue;
        const bool isNext = monthly.empty() || monthly.back().Month + std::chrono::months(1) == month.Month;
        if (!isNext) summary.HasSkippedMonths = true;
        monthly.push_back({month.Month, static_cast<float>(*month.Temperature.Mean())});
    }
    std::vector<float> yearly;
    std::optional<int> lastYear;
    for (const TYear& year : summary.Years) {
        if (!year.MeanTemperature) continue;
        if (lastYear && *lastYear + 1 != year.Number) summary.HasSkippedYears = true;
        lastYear = year.Number;
        yearly.push_back(static_cast<float>(*year.MeanTemperature));
    }
    summary.TemperatureYears = static_cast<std::int32_t>(yearly.size());
    summary.TemperatureMonths = static_cast<std::int32_t>(monthly.size());
    FitTrend(yearly, u"full years", summary.YearlySlope, &summary.YearlyIntercept);
    FitTrend(TemperaturesOf(monthly), u"months", summary.MonthlySlope, nullptr);
    CompareHalves(monthly, summary);
}

}  // namespace

TStationSummary Summarise(const TStation& station, const TSite& site) {
    TStationSummary summary;
    summary.Rows = std::ssize(station.Days);
    summary.FirstDate = station.Days.front().Date;
    summary.LastDate = station.Days.back().Date;
    const auto period = std::chrono::sys_days(summary.LastDate) - std::chrono::sys_days(summary.FirstDate);
    summary.DaysWithoutRow = period.count() + 1 - summary.Rows;
    summary.Latitude = site.Latitude;
    std::ranges::transform(station.Implausible, summary.Implausible.begin(), &TFinding::Count);

    const std::vector<TMonthTally> months = TallyMonths(station.Days);
    summary.Years = ListYears(months);
    FillMeanYear(months, summary);
    FillRadiation(site, summary);
    FillPet(site, summary);
    FillDailyFigures(station.Days, summary);
    FillGammaFit(months, summary);
    FillTrends(months, summary);
    return summary;
}

}  // namespace Varnholt::Tool
