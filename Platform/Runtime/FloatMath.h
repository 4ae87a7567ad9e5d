#pragma once

#include <optional>

#include "Platform/Runtime/Types.h"

/// Floating-point operations with rules that the C++ library does not define: equality within a tolerance,
/// powers, and rounding to an integer.
///
///     if (SameValue(sum, 1.0)) ...
///     const Extended area = Power(radius, 2) * kPi;
///     const std::int32_t row = RoundToInt(y / rowHeight);
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// Whether two numbers differ by at most epsilon. An epsilon of 0 selects the type's own tolerance
///
///     max(min(|a|, |b|) * r, r)   with r = 1e-4 for float, 1e-12 for double, 1e-16 for Extended,
///
/// which is relative for numbers above 1 and absolute below. An infinity equals only itself, a NaN nothing.
/// With a negative epsilon only numbers that compare equal are the same.
[[nodiscard]] VARNHOLT_EXPORT bool SameValue(float a, float b, float epsilon = 0);
[[nodiscard]] VARNHOLT_EXPORT bool SameValue(double a, double b, double epsilon = 0);
[[nodiscard]] VARNHOLT_EXPORT bool SameValue(Extended a, Extended b, Extended epsilon = 0);

/// The base raised to the exponent. In this order:
///
/// - an exponent of 0 results in 1 for any base, a NaN included;
/// - a base of 0, of either sign, results in 0 for a positive exponent and +infinity for a negative one;
/// - a whole exponent from -32 to 32 is computed by repeated squaring: exact if the power (for a negative
///   exponent, its reciprocal) fits in the 64 bits of the mantissa, else off by at most |exponent| units in
///   the last place;
/// - otherwise it is pow of the C library: NaN for a negative base with a fractional exponent, and the
///   special values of IEEE 754.
[[nodiscard]] VARNHOLT_EXPORT Extended Power(Extended base, Extended exponent);

/// The nearest integer, ties to the even one, whatever the rounding mode of the thread. Raises ERangeError
/// "VALUE does not fit in a 32-bit integer" (or "64-bit") for a NaN and for a value that is outside the range
/// once rounded.
[[nodiscard]] VARNHOLT_EXPORT std::int32_t RoundToInt(Extended value);
[[nodiscard]] VARNHOLT_EXPORT std::int64_t RoundToInt64(Extended value);
/// The same, or nothing if it does not fit.
[[nodiscard]] VARNHOLT_EXPORT std::optional<std::int64_t> TryRoundToInt64(Extended value);

}  // namespace Varnholt
