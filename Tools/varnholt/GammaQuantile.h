#pragma once

#include "Platform/Runtime/Types.h"

/// Quantiles of the gamma distribution for the tables of a report.
///
///     const Extended dry = GammaQuantile(1.4L, 65, 0.1L);  // one value in ten is below
///
/// Threads: the function keeps no state.
namespace Varnholt::Tool {

/// The x with P(shape, x / scale) = p, where P is the regularised lower incomplete gamma function.
///
/// Method: Newton's iteration in u = ln x on ln P up to p = 0.5, and on ln(1 - P) above. Both are concave in u
/// (Bagnoli and Bergstrom 2005, Log-concave probability and its applications), so after its first step the
/// iteration approaches the root from one side. P is the series of Abramowitz and Stegun 6.5.29 below
/// x = shape + 1, and 1 - P the continued fraction 6.5.31 from there on, by Lentz's method.
///
/// Accuracy: a relative error below 1E-15 for shapes from 0.01 to 1000 and p from 1E-6 to 1 - 1E-6, against
/// values computed with 40 digits. Above a shape of 1000 the error grows with its square root, to 1E-13 at 1E7.
/// A result below the smallest Extended is 0.
///
/// Raises EArgumentException "A gamma quantile needs a shape from 1E-6 to 1E7, a positive scale and a probability
/// between 0 and 1", both excluded.
[[nodiscard]] Extended GammaQuantile(Extended shape, Extended scale, Extended p);

}  // namespace Varnholt::Tool
