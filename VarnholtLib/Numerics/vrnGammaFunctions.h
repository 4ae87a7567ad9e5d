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
/// results are reproducible to the bit. About six digits are good, fewer where the result is a small
/// difference: gammln near 1 and 2 is good to 5E-7 absolute, 1 - gammp is no measure of a small gammq.
///
/// A series or continued fraction that has not settled to EPS = 3E-7 within 100 terms raises; NaN and
/// infinite arguments end the same way, or give what IEEE arithmetic makes of them. The failures are of the
/// plain class Exception.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// ln Gamma(x) for x > 0: Lanczos series (1964) with g = 5 and six coefficients,
///
///     Gamma(x) = sqrt(2 pi) * (1 + c1 / x + ... + c6 / (x + 5)) * t^(x - 1/2) * e^-t,   t = x + 4.5
///
/// Zero gives an infinity, a negative x nothing useful.
[[nodiscard]] VARNHOLT_EXPORT float gammln(float x);

/// Regularised lower incomplete gamma function P(a, x) = 1 / Gamma(a) * integral from 0 to x of
/// t^(a - 1) * e^-t dt, for a > 0 and x >= 0: by gser for x below a + 1, else 1 minus gcf.
/// - "Problem in GAMMP - Invalide arguments.": x below 0, or a not above 0
/// - the failures of gser and gcf
[[nodiscard]] VARNHOLT_EXPORT float gammp(float a, float x);

/// Its complement Q(a, x) = 1 - P(a, x), which keeps its digits where it is small.
/// - "Problem in gamma function calculation: invalid argument.": x below 0, or a not above 0
/// - the failures of gser and gcf
[[nodiscard]] VARNHOLT_EXPORT float gammq(float a, float x);

/// P(a, x) by its power series; good for x below a + 1. Also gives gln = gammln(a). Up to about a = 400 the
/// series settles for every x below a + 1.
/// - "Problem in gamma function calculation: coefficient x less than 0."
/// - "Problem in gamma function calculation: coefficient a too large.": not settled after 100 terms
VARNHOLT_EXPORT void gser(float a, float x, float& gamser, float& gln);

/// Q(a, x) by its continued fraction (Legendre); good for x from a + 1 on, up to about 1E19, where the terms
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
