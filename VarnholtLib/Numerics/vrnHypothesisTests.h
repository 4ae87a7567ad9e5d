#pragma once

#include <cstdint>
#include <span>

#include "Platform/Runtime/Types.h"

/// Hypothesis tests: do two samples have the same variance, the same mean, the same distribution?
///
///     float t = 0, probT = 0, f = 0, probF = 0;
///     FT_test(mean1, sd1, mean2, sd2, 30, 28, t, probT, f, probF);
///     if (probT < 0.05F) ...                                 // the means differ
///
/// Outputs are 32-bit floats; expressions are evaluated in Extended. A division by zero gives the infinity or
/// NaN of IEEE 754; the failures of betai and gammq, which a NaN causes, pass through.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// F test of two variances, and the t test of two means that it selects; from the means, standard deviations
/// and counts of the two samples.
///
/// - f is the greater variance over the smaller, probF its two-sided significance, computed as twice one
///   tail. That tail may exceed 1/2 where the variances are nearly equal and the counts are not, so probF is
///   no probability above 1: it reaches 1.365. Treat a greater value as 1;
/// - with probF above 0.05 the variances count as equal, and t is Student's on count1 + count2 - 2 degrees of
///   freedom; otherwise t is Welch's (1947) on Satterthwaite's degrees of freedom. probT is its two-sided
///   significance.
///
/// If betai raises, f may be set and the other outputs are not.
VARNHOLT_EXPORT void FT_test(float mean1, float sd1, float mean2, float sd2, std::int32_t count1,
                             std::int32_t count2, float& t, float& probT, float& f, float& probF);

/// Chi-square comparison of two binned samples with equal totals: the sum of (b1 - b2)^2 / (b1 + b2). The
/// bins are the elements 1 to binCount of the arrays; element 0 is not read. df is binCount - 1, minus one
/// for each pair of empty bins, which adds nothing to chiSquare. prob is the significance, gammq(df / 2,
/// chiSquare / 2).
///
/// Raises EArgumentException "ChiTest needs arrays of one element more than the bin count", with nothing set.
/// If gammq raises, as it does for a df of 0, df and chiSquare are set and prob is not.
VARNHOLT_EXPORT void ChiTest(std::span<const float> bins1, std::span<const float> bins2,
                             std::int32_t binCount, float& df, float& chiSquare, float& prob);

}  // namespace Varnholt
