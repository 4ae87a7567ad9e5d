#pragma once

#include "Platform/Runtime/Types.h"

/// The gamma function and the incomplete gamma and beta functions: the tail probabilities behind the
/// chi-square, t and F tests and the gamma distribution.
///
///     const float p = gammp(0.5F * df, 0.5F * chiSquare);       // chi-square distribution with df degrees
///     const float tail = betai(df / 2, 0.5F, df / (t * t + df));  // two-sided tail of Student's t
///
/// Arguments and results are 32-bit floats. Expressions are evaluated in Extended; the running values of the
/// series (ser, sum, del) and all terms of the continued fractions are rounded to 32 bits at each step, so
/// results are reproducible to the bit.
///
/// Accuracy: the largest errors of 20,000 random calls for each row, against Boost.Math in long double, for x
/// within 4 standard deviations of the mean of the distribution (Benchmarks/AccuracyTable.cpp). "Relative" is
/// the error of gammp for x below a + 1, of gammq from there on, and of betai. The complement of a result
/// near 1 has the absolute error only: 1 - gammp does not measure a small gammq.
///
///     gammp, gammq                                   betai
///     a              absolute  relative  fails       a and b         absolute  relative
///     0.01 to 10     6E-7      1E-6      never       0.01 to 1       6E-7      4E-5
///     10 to 100      9E-6      2E-5      never       1 to 10         2E-6      6E-6
///     100 to 400     4E-5      7E-5      0.01 %      10 to 100       4E-5      1E-4
///     400 to 1000    2E-4      3E-4      15 %        100 to 1000     7E-4      2E-3
///     1000 to 10000  2E-3      4E-3      half        1000 to 20000   3E-2      5E-2
///
/// So betai(5000, 5000, 0.5) is 0.498. The error grows with the arguments because the logarithm of the gamma
/// function is a 32-bit float.
///
/// A series or continued fraction that has not settled to EPS = 3E-7 within 100 terms raises; NaN and
/// infinite arguments do the same, or give the infinity or NaN of IEEE 754. All exceptions are of the plain
/// class Exception.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// ln Gamma(x) for x > 0: Lanczos series (1964) with g = 5 and six coefficients,
///
///     Gamma(x) = sqrt(2 pi) * (1 + c1 / x + ... + c6 / (x + 5)) * t^(x - 1/2) * e^-t,   t = x + 4.5
///
/// Largest errors measured: 8E-8 of the value for x from 1E-10 to 0.01 and above 10; 1E-6 absolute between,
/// where the value crosses 0 at 1 and 2; 8E-7 of the value down to 1E-15 and 6E-3 down to 1E-19. Below 5E-20,
/// as for 0, the result is an infinity. A negative x gives no meaningful result.
[[nodiscard]] VARNHOLT_EXPORT float gammln(float x);

/// Regularised lower incomplete gamma function P(a, x) = 1 / Gamma(a) * integral from 0 to x of
/// t^(a - 1) * e^-t dt, for a > 0 and x >= 0: by gser for x below a + 1, else 1 minus gcf.
/// - "Problem in GAMMP - Invalide arguments.": x below 0, or a not above 0
/// - the failures of gser and gcf
[[nodiscard]] VARNHOLT_EXPORT float gammp(float a, float x);

/// Its complement Q(a, x) = 1 - P(a, x), without the loss of digits of that difference where Q is small.
/// - "Problem in gamma function calculation: invalid argument.": x below 0, or a not above 0
/// - the failures of gser and gcf
[[nodiscard]] VARNHOLT_EXPORT float gammq(float a, float x);

/// P(a, x) by its power series; suited to x below a + 1. Also gives gln = gammln(a). From about a = 390
/// on the series does not settle for every x below a + 1.
/// - "Problem in gamma function calculation: coefficient x less than 0."
/// - "Problem in gamma function calculation: coefficient a too large.": not settled after 100 terms
VARNHOLT_EXPORT void gser(float a, float x, float& gamser, float& gln);

/// Q(a, x) by its continued fraction (Legendre); suited to x from a + 1 on, up to about 1E19, where the terms
/// leave the range of a float. Also gives gln = gammln(a).
/// - "Problem in gamma function calculation: coefficient a too large.": not settled after 100 terms
VARNHOLT_EXPORT void gcf(float a, float x, float& gammcf, float& gln);

/// Regularised incomplete beta function I_x(a, b) for a, b > 0 and x from 0 to 1, by the continued fraction
/// of Abramowitz and Stegun 26.5.8, taken at (a, b, x) or, past x = (a + 1) / (a + b + 2), at (b, a, 1 - x).
/// - "Problem in beta function calculation.": x below 0 or above 1
/// - "Problem in beta function calculation: coefficient a or b too big, or itmex too small.": not settled
///   after 100 terms
[[nodiscard]] VARNHOLT_EXPORT float betai(float a, float b, float x);

}  // namespace Varnholt
