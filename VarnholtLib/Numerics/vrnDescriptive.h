#pragma once

#include <cstdint>
#include <span>

#include "Platform/Runtime/Types.h"
#include "VarnholtLib/Data/vrnFloatArray.h"
#include "VarnholtLib/Data/vrnFloatGrid.h"

/// Descriptive statistics of arrays: moments, extremes, fit to the normal distribution, correlation,
/// bootstrap samples; and small functions of the normal distribution.
///
///     const float mean = Mean2(rain), sd = StDev2(rain);
///     if (mean != -999) Show(ZScore(rain.GetFloat(7), mean, sd));
///
/// Missing values. The operations whose name ends in 2 leave out every value from -1000 to -999, both
/// included, and return -999 where there is no result: if no value is left, and if the formula divides by
/// zero. Those without the 2 take every value unchanged, and a division by zero gives the infinity or NaN of
/// IEEE 754. No operation changes its input. NaNs are not missing values: they show in the result.
///
/// Threads: the functions keep no state, except that RandN and bsample draw from the process's generator
/// (Platform/Runtime/Random.h).
namespace Varnholt {

/// (x - mean) / sd; for an sd of exactly 0 the mean.
[[nodiscard]] VARNHOLT_EXPORT double ZScore(double x, double mean, double sd);

/// Approximate quantile of the standard normal distribution for 0 < p < 1, (p^0.135 - (1 - p)^0.135) /
/// 0.1975. 100 for a p of exactly 0 or 1; outside 0 to 1 a NaN. Largest errors measured: 0.011 for p from
/// 0.01 to 0.99, 0.02 from 0.001, 0.12 from 0.0001 and 0.5 from 1E-6, likewise at the upper end.
[[nodiscard]] VARNHOLT_EXPORT float Zp(float p);

/// Approximate upper tail of the standard normal distribution,
/// 1/2 * exp(-((83 x + 351) x + 562) / (703 / x + 165)); by symmetry below 0, and 0.5 at 0. Largest errors
/// measured: 5E-4 of the value for 0 < x < 5.6, 2 % up to 8, and no digit is right from about 30 on.
[[nodiscard]] VARNHOLT_EXPORT double Probability(double x);

/// An approximately normally distributed random number: the sum of 12 uniform numbers minus 6, times sd, plus
/// mean. No result is more than 6 sd away from the mean.
[[nodiscard]] VARNHOLT_EXPORT float RandN(float mean, float sd);

/// Mean, smallest and largest of the values that are not missing, or -999. The sum of the mean has 64 bits. A
/// NaN makes the mean a NaN; the extremes skip NaNs.
[[nodiscard]] VARNHOLT_EXPORT float Mean2(const TFloatArray& array);
[[nodiscard]] VARNHOLT_EXPORT float Min2(const TFloatArray& array);
[[nodiscard]] VARNHOLT_EXPORT float Max2(const TFloatArray& array);

/// Sample standard deviation, sqrt((n Sxx - Sx^2) / (n (n - 1))) of n values with sum Sx and sum of squares
/// Sxx, both of 64 bits; -999 for fewer than two values. Where rounding leaves a difference below 0, as it
/// may for equal values, the result is 0.
[[nodiscard]] VARNHOLT_EXPORT float StDev2(const TFloatArray& array);

/// Normal probability plot correlation coefficient (Filliben 1975): the correlation of the sorted values with
/// the normal quantiles, by the formula of Zp, of the medians of their order statistics. Near 1 for normally
/// distributed values; -999 for constant values and for a single one.
[[nodiscard]] VARNHOLT_EXPORT float PPCC2(const TFloatArray& array);

/// Significance of a Kolmogorov-Smirnov test against the normal distribution with the mean and standard
/// deviation of the values: Q_KS((sqrt(c) + 0.12 + 0.11 / sqrt(c)) * D), Q_KS(l) = 2 * sum over j of
/// (-1)^(j - 1) * e^(-2 j^2 l^2) in 99 terms at most, and 1 where they do not settle. -999 where no value is
/// above -999. A NaN or an infinity among the values gives a NaN.
///
/// This is not the distance of the textbooks, so compare the results only with each other:
/// - c counts the values above -999;
/// - the distribution function at a score z counts as (1 - Probability(z / sqrt(2))) / 2 + 1/2, which is 1/2
///   or more, limited to 0.00001 to 0.99999;
/// - D is the greatest of k / size - p and p - (k - 1) / size, over the second and later of the sorted
///   values. k is the index in the array cleaned of missing values, whose base is the index of the first
///   value that is not missing; size includes the missing values.
[[nodiscard]] VARNHOLT_EXPORT double KS2(const TFloatArray& array);

/// Pearson correlation of array1 and array2 at the indices from 1 to the count of array1, by running means
/// and sums of 32 bits (Welford 1962). 0 for fewer than 3 pairs, and if one of the two is constant. Both need
/// the base 1, and array2 as many values as array1; otherwise TFloatArray::GetFloat raises at the first
/// missing index.
[[nodiscard]] VARNHOLT_EXPORT float Corr(const TFloatArray& array1, const TFloatArray& array2);

/// Root of the sum of squared differences over the highest 0-based index of array1, so over one less than its
/// number of values; an infinity or a NaN for one value. The sum has 32 bits. Raises EArgumentException "RMSE
/// needs at least one value", and "RMSE needs a second array as long as the first".
[[nodiscard]] VARNHOLT_EXPORT float RMSE(std::span<const float> array1, std::span<const float> array2);

/// Replaces `grid` by bootstrap samples: `sampleCount` columns of as many values as the array has, each drawn
/// from the array with replacement. The last value of the array is never drawn, unless it is the only one.
/// Seeds the process's generator from the clock first. The array needs the base 1, otherwise
/// TFloatArray::GetFloat raises; a sampleCount below 1 raises as TFloatGrid's constructor does. `grid` is
/// then unchanged.
VARNHOLT_EXPORT void bsample(const TFloatArray& array, std::int32_t sampleCount, TFloatGrid& grid);

}  // namespace Varnholt
