#pragma once

#include "VarnholtBaseLib/Arrays.h"
#include "VarnholtBaseLib/Months.h"

/// Arithmetic on a year of monthly values.
///
///     TMonthlyData rain{{48, 51, 60, 57, 72, 74, 71, 64, 50, 43, 57, 52}};
///     rain[moJuly] += 3;
///     float year = TMonthlyDataHelper::Sum(rain);
///     float summer = TMonthlyDataHelper::Average(rain, MonthSetOf({moJune, moJuly, moAugust}));
///
/// Sums run in calendar order in a 32-bit float, so the sum of all months selected is the sum of the data to
/// the bit. A NaN or an infinity among the values enters the sum by the rules of IEEE 754; Min and Max skip
/// NaNs.
///
/// Uses the months and arrays of the base library.
///
/// Threads: the operations keep no state.
namespace Varnholt {

/// Twelve 32-bit floats by month.
using TMonthlyData = TMonthArray<float>;

class VARNHOLT_EXPORT TMonthlyDataHelper {
public:
    TMonthlyDataHelper() = delete;

    [[nodiscard]] static float Sum(const TMonthlyData& data);
    /// The sum divided by 12.
    [[nodiscard]] static float Average(const TMonthlyData& data);
    /// The smallest value, a NaN where all twelve are NaNs.
    [[nodiscard]] static float Min(const TMonthlyData& data);
    /// The largest value, a NaN where all twelve are NaNs.
    [[nodiscard]] static float Max(const TMonthlyData& data);

    /// A new array of the values of the selected months in calendar order, empty where none is selected.
    [[nodiscard]] static TSingleArray Extract(const TMonthlyData& data, const TMonthSet& months);

    // The same over the selected months. With no month selected the sum is 0 and all others are NaNs.

    [[nodiscard]] static float Sum(const TMonthlyData& data, const TMonthSet& months);
    [[nodiscard]] static float Average(const TMonthlyData& data, const TMonthSet& months);
    [[nodiscard]] static float Min(const TMonthlyData& data, const TMonthSet& months);
    [[nodiscard]] static float Max(const TMonthlyData& data, const TMonthSet& months);
};

}  // namespace Varnholt
