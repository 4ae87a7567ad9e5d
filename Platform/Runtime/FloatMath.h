#pragma once

#include <optional>

#include "Platform/Runtime/Types.h"

/// Floating-point operations whose rules the C++ library leaves open: equality within a tolerance, powers,
/// and rounding to an integer.
///
///     if (SameValue(sum, 1.0)) ...
///     const Extended area = Power(radius, 2) * kPi;
///     const std::int32_t row = RoundToInt(y / rowHeight);
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// Whether two numbers differ by no more than epsilon. An epsilon of 0 asks for the type's own tolerance
///
///     max(min(|a|, |b|) * r, r)   with r = 1e-4 for float, 1e-12 for double, 1e-16 for Extended,
///
/// which is relative for numbers above 1 and absolute below. An infinity equals itself only, a NaN nothing; a
/// negative epsilon leaves the numbers that compare equal.
[[nodiscard]] VARNHOLT_EXPORT bool SameValue(float a, float b, float epsilon = 0);
[[nodiscard]] VARNHOLT_EXPORT bool SameValue(double a, double b, double epsilon = 0);
[[nodiscard]] VARNHOLT_EXPORT bool SameValue(Extended a, Extended b, Extended epsilon = 0);

/// The base raised to the exponent. In this order:
///
/// - an exponent of 0 gives 1, whatever the base, a NaN included;
/// - a base of 0, of either sign, gives 0 for a positive exponent and +infinity for a negative one;
/// - a whole exponent from -32 to 32 is multiplied out by repeated squaring: exact where the power (of a
///   negative exponent: its reciprocal) fits in the 64 bits of the mantissa, else off by |exponent| units in
///   the last place at most;
/// - all else is the pow of the C library: a negative base with a fractional exponent gives NaN, the special
///   values follow IEEE 754.
[[nodiscard]] VARNHOLT_EXPORT Extended Power(Extended base, Extended exponent);

/// The nearest integer, of two equally near ones the even one, whatever the rounding mode of the thread.
/// Raises ERangeError "VALUE does not fit in a 32-bit integer" (or "64-bit") for a NaN and for what lies
/// outside the range once it is rounded.
[[nodiscard]] VARNHOLT_EXPORT std::int32_t RoundToInt(Extended value);
[[nodiscard]] VARNHOLT_EXPORT std::int64_t RoundToInt64(Extended value);
/// The same, or nothing where it does not fit.
[[nodiscard]] VARNHOLT_EXPORT std::optional<std::int64_t> TryRoundToInt64(Extended value);

}  // namespace Varnholt
