#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

#include "Tools/varnholt/StationFile.h"
#include "VarnholtLib/Numerics/vrnMonthlyData.h"

/// What a report tells about a station, in figures.
///
/// A day's mean temperature is the mean of its maximum and minimum; a day without one of them has none. What
/// is averaged or summed needs its days:
/// - a month's precipitation and wet days count if the precipitation of all its days is known (a full month);
/// - a month's mean temperature counts in series of months with 10 missing days at most (WMO-No. 1203);
/// - a year's mean temperature and precipitation count if they are known for all its days (a full year).
/// Series of months and years close up over a month or year that does not count.
namespace Varnholt::Tool {

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
    std::int64_t DaysWithoutRow = 0;
    std::chrono::year_month_day FirstDate, LastDate;
    double Latitude = 0;

    std::array<TCalendarMonth, 12> Months;
    std::vector<TYear> Years;

    TFigure TMaxMean, TMaxSd, TMaxMin, TMaxMax, TMinMean, TMinSd;
    TFigure PrecipitationMean, PrecipitationSd, PrecipitationMax;
    TFigure CorrTMaxTMin, TMaxPpcc, TMaxKs;
    TFigure GammaAlpha, GammaBeta, P10, P50, P90;  // of the totals of the full months
    std::int32_t FullMonths = 0, DryMonths = 0;    // dry: a full month without any precipitation
    TFigure YearlySlope, YearlyIntercept, MonthlySlope;
    std::int32_t TemperatureYears = 0, TemperatureMonths = 0;  // in the trends
    bool HasYearsLeftOut = false, HasMonthsLeftOut = false;    // between those in the trends
    TFigure HalvesT, HalvesTProb, HalvesF, HalvesFProb;
    TFigure AnnualPet;
};

[[nodiscard]] TStationSummary Summarise(const TStation& station, const TSite& site);

}  // namespace Varnholt::Tool
