#pragma once

#include <cstdint>

#include "Platform/Runtime/Types.h"
#include "VarnholtLib/Data/vrnFloatGrid.h"

/// The gamma distribution (density, fit, quantiles), the normal distribution function, and percentiles.
///
///     float alpha = 0, beta = 0;
///     Gamma(3, rain, alpha, beta);                          // fits column 3 of a grid
///     const float p = gammp(alpha, x / beta);               // probability of x or less
///     const float wet = gam_ptil1(alpha, beta, x, 0.9F);    // the amount not exceeded in 90 % of cases
///     const double below = normp(1.96);                     // 0.975
///
/// alpha is the shape and beta the scale of a gamma distribution, so that its mean is alpha * beta. No
/// operation but those that say so checks its arguments: a logarithm or quotient of a bad value gives what
/// IEEE arithmetic makes of it. Expressions are evaluated in Extended.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// Density of the gamma distribution, u^(alpha - 1) * e^-u / (beta * Gamma(alpha)) with u = x / beta.
[[nodiscard]] VARNHOLT_EXPORT float gammf(float x, float alpha, float beta);

/// Fits a gamma distribution to all rows of one grid column: maximum likelihood in the approximation of
/// Greenwood and Durand (1960) with A = ln(mean) - sum of ln(value) / rows. Values of 0 and below have no
/// logarithm; they count as rows and in the mean only. A column outside the grid raises as
/// TAbstractGrid::CheckBounds does.
VARNHOLT_EXPORT void Gamma(std::int32_t column, const TFloatGrid& grid, float& alpha, float& beta);

/// The x at which the gamma distribution reaches the probability p to within 0.001: a search from x0 in steps
/// of ten times the missing probability, on the trapezoid integral of gammf from 0.0001 to x. The integral is
/// refined until it changes by less than 0.0001 of itself, or 19 times.
///
/// Works best where ten times the density is below 1, so for a beta of some 5 and more; with a small beta the
/// steps are too long. Exception "Problem in gam_ptil: the search for the quantile did not converge." when
/// the integral is a NaN, and after 2^25 evaluations of the density, about a second of work.
[[nodiscard]] VARNHOLT_EXPORT float gam_ptil(float alpha, float beta, float x0, float p);

/// The same by gammp, in steps of 0.01 from x0 that never change direction. A start that meets the tolerance
/// already gives 0, not x0, and so does a p that is a NaN. Where a step of 0.01 passes more than 0.002 of
/// probability, the search may step over its target and fail: upwards, or where p is never reached, with
/// Exception "Problem in gam_ptil1: the search for the quantile did not converge." after 1,000,000 steps, a
/// distance of 10,000; downwards with the failure of gammp below 0. The failures of gammp pass through.
[[nodiscard]] VARNHOLT_EXPORT float gam_ptil1(float alpha, float beta, float x0, float p);

/// Cumulative standard normal distribution, in 64-bit floats, to 1E-15, which in the lower tail is not
/// relative: a rational approximation up to |x| = 7.071 and a continued fraction up to 37 (Hart et al. 1968,
/// algorithm 5666); beyond, 0 or 1. A NaN gives a NaN.
[[nodiscard]] VARNHOLT_EXPORT double normp(double x);

/// Percentile of one grid column, from 0 to 100 percent, without its last two rows: of n sorted values, the
/// one at the place (n + 1) * percent / 100, counted from 1 and held between the first and the last. A place
/// less than half, or just half and after an even number, past a value gives the mean of that value and the
/// next one; any other place between two values gives the upper one. EArgumentException "A percentile needs
/// a column of 3 rows or more", and "A percentile needs a number of percent" for a NaN. A column outside the
/// grid raises as TAbstractGrid::CheckBounds does.
[[nodiscard]] VARNHOLT_EXPORT float centil(std::int32_t column, float percent, const TFloatGrid& grid);

}  // namespace Varnholt
