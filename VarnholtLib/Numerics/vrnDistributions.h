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
/// alpha is the shape and beta the scale of a gamma distribution, so that its mean is alpha * beta. Only the
/// operations that say so check their arguments; elsewhere a logarithm or quotient of a bad value gives the
/// infinity or NaN of IEEE 754. Expressions are evaluated in Extended.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// Density of the gamma distribution, u^(alpha - 1) * e^-u / (beta * Gamma(alpha)) with u = x / beta. Largest
/// relative errors measured, for x within 4 standard deviations of the mean: 8E-7 for alpha from 0.01 to 10,
/// 2E-5 up to 100, 3E-4 up to 1000.
[[nodiscard]] VARNHOLT_EXPORT float gammf(float x, float alpha, float beta);

/// Fits a gamma distribution to all rows of one grid column: maximum likelihood in the approximation of
/// Greenwood and Durand (1960) with y = ln(mean) - sum of ln(value) / rows. The shape is within 8E-4 of the
/// one of greatest likelihood for shapes from 0.06 to 100 (largest relative error measured), and within 4E-3
/// from 0.02 on.
///
/// Values of 0 and below have no logarithm; they count as rows and in the mean only. A column that holds such
/// values is fitted differently in another unit: for 1000 values of the shape 2, a tenth of them set to 0,
/// alpha is 1.0 in millimetres and 2.1 in inches. Fit the positive values on their own.
///
/// A column outside the grid raises as TAbstractGrid::CheckBounds does.
VARNHOLT_EXPORT void Gamma(std::int32_t column, const TFloatGrid& grid, float& alpha, float& beta);

/// The x at which the gamma distribution reaches the probability p to within 0.001: a search from x0 in steps
/// of ten times the missing probability, on the trapezoid integral of gammf from 0.0001 to x. The integral is
/// refined until it changes by less than 0.0001 of itself, or 19 times.
///
/// Converges where the density is below 0.2, as for an alpha of 1.5 and a beta of 5 or more; elsewhere the
/// steps are too long. For an alpha below 1 the density is infinite at 0 and the trapezoids miss its share
/// there: the search fails, or silently gives an x of another probability. Prefer gam_ptil1. Measured from x0
/// = alpha * beta, for beta from 5 to 200 and p from 0.05 to 0.99 (Benchmarks/AccuracyTable.cpp):
///
///     alpha                            0.2      0.5      0.8      1        1.5 to 20   all
///     fails                            72 %     56 %     19 %     8 %      0 %         17 %
///     largest error of p otherwise     0.13     0.006    0.0011   0.001    0.001
///
/// Raises Exception "Problem in gam_ptil: the search for the quantile did not converge." if the integral is a
/// NaN, and after 2^25 evaluations of the density: 0.6 s of processor time, about 2 s where the density
/// underflows.
[[nodiscard]] VARNHOLT_EXPORT float gam_ptil(float alpha, float beta, float x0, float p);

/// The same by gammp, in steps of 0.01 from x0 that never change direction. For the parameters of the table
/// above it fails for 39 % at an alpha of 0.2, 3 % at 0.5 and none from 0.8 on. A start that meets the
/// tolerance already gives 0, not x0, and so does a p that is a NaN. Where a step of 0.01 passes more than
/// 0.002 of probability, the search may step over its target and fail: upwards, or where p is never reached,
/// with Exception "Problem in gam_ptil1: the search for the quantile did not converge." after 1,000,000
/// steps, a distance of 10,000; downwards with the failure of gammp below 0. The failures of gammp pass
/// through.
[[nodiscard]] VARNHOLT_EXPORT float gam_ptil1(float alpha, float beta, float x0, float p);

/// Cumulative standard normal distribution, in 64-bit floats: a rational approximation up to |x| = 7.071 and
/// a continued fraction up to 37 (Hart et al. 1968, algorithm 5666); beyond, 0 or 1. A NaN gives a NaN.
/// Largest errors measured: 4E-16 absolute everywhere; relative 2E-14 from -3 on, 9E-11 down to -5.2, 9E-9
/// below.
[[nodiscard]] VARNHOLT_EXPORT double normp(double x);

/// Percentile of one grid column, from 0 to 100 percent, without its last two rows: of n sorted values, the
/// one at the place (n + 1) * percent / 100, counted from 1 and limited to the first and the last. A place
/// that rounds down, halves to the even number, gives the mean of the values below and above it; any other
/// place between two values gives the upper one. Raises EArgumentException "A percentile needs a column of 3
/// rows or more", and "A percentile needs a number of percent" for a NaN. A column outside the grid raises as
/// TAbstractGrid::CheckBounds does.
[[nodiscard]] VARNHOLT_EXPORT float centil(std::int32_t column, float percent, const TFloatGrid& grid);

}  // namespace Varnholt
