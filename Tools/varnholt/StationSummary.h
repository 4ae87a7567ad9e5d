#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

#include "Tools/varnholt/StationFile.h"
#include "VarnholtLib/Numerics/vrnMonthlyData.h"

/// The figures of a report on a station.
///
///     const TStationSummary summary = Summarise(ReadStation(file, columns, missing), site);
///     if (summary.P10.Value) ...                            // else summary.P10.Reason says why not
///
/// A day's mean temperature is the mean of its maximum and minimum; a day without one of them has none. Sums
/// and means count only with enough days:
/// - a month's precipitation and wet days count if the precipitation of all its days is known (a full month);
/// - a month's mean temperature counts in series of months with at most 10 missing days. This is the first of
///   the two criteria in WMO-No. 1203 (2017); the other one, on consecutive missing days, is not applied;
/// - a year's mean temperature and precipitation count if they are known for all its days (a full year).
/// Series of months and years skip a month or year that does not count and leave no gap for it.
namespace Varnholt::Tool {

/// Where a station is, and its radiation.
struct TSite {
    float Latitude = 0;                    // degrees, south negative
    std::optional<TMonthlyData> Sunshine;  // hours a month
    float AngstromA = 0.25F;
    float AngstromB = 0.5F;
};

/// A figure, or the reason why there is none. A figure is a finite number.
struct TFigure {
    std::optional<double> Value;
    String Reason;
};

/// A month of the mean year.
struct TCalendarMonth {
    std::optional<double> MeanTemperature;   // of all days of this month in all years
    std::optional<double> Precipitation;     // mm a month, mean of the full months
    std::optional<double> WetDays;           // with 1 mm or more, mean of the full months
    double DayLength = 0;                    // hours, on the 15th
    double ExtraterrestrialRadiation = 0;    // MJ m-2, on the 15th
    std::optional<double> SurfaceRadiation;  // MJ m-2 a day
    std::optional<double> Pet;               // mm a month
};

struct TYear {
    int Number = 0;
    std::int32_t Rows = 0;
    std::optional<double> MeanTemperature;  // of a full year
    std::optional<double> Precipitation;    // mm, of a full year
};

struct TStationSummary {
    std::int64_t Rows = 0;
    std::int64_t MissingTMax = 0, MissingTMin = 0, MissingPrecipitation = 0;
    std::array<std::int64_t, kImplausibleKinds> Implausible{};  // values, by TImplausible
    std::int64_t DaysWithoutRow = 0;
    std::chrono::year_month_day FirstDate, LastDate;
    double Latitude = 0;

    std::array<TCalendarMonth, 12> Months;
    std::vector<TYear> Years;

    TFigure TMaxMean, TMaxSd, TMaxMin, TMaxMax, TMinMean, TMinSd;
    TFigure PrecipitationMean, PrecipitationSd, PrecipitationMax;
    TFigure CorrTMaxTMin, TMaxPpcc, TMaxKs;
    TFigure GammaAlpha, GammaBeta;               // fitted to the totals above 0 mm of the full months
    std::vector<float> MonthlyTotals;            // mm, of the full months
    TFigure P10, P50, P90;                       // of the full months, dry ones included
    std::int32_t FullMonths = 0, DryMonths = 0;  // dry: a full month with a total of 0 mm (or below)
    TFigure YearlySlope, YearlyIntercept, MonthlySlope;
    std::int32_t TemperatureYears = 0, TemperatureMonths = 0;  // in the trends
    bool HasSkippedYears = false, HasSkippedMonths = false;    // between those in the trends
    TFigure HalvesT, HalvesTProb, HalvesF, HalvesFProb;
    bool HasUnlikeHalves = false;  // the halves hold different calendar months
    TFigure AnnualPet;

    [[nodiscard]] std::int64_t Count(TImplausible kind) const {
        return Implausible[static_cast<std::size_t>(kind)];
    }
};

/// Calculates all figures. A figure that cannot be calculated has a reason; nothing is raised.
[[nodiscard]] TStationSummary Summarise(const TStation& station, const TSite& site);

}  // namespace Varnholt::Tool
