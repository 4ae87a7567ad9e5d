#pragma once

#include <bit>
#include <cstdint>

#include "Platform/Runtime/Types.h"

/// Private to the numerics: the roundings to 32 bits of expressions that are to be evaluated in Extended, in
/// less time than Extended takes.
///
///     del = Round32([&]<typename W> { return W{del} * x / W(ap); });
///
/// Double carries 29 bits more than a float. What is computed in double therefore rounds to the same float as
/// what is computed in Extended, unless it falls next to the middle between two floats: then, and only then,
/// the expression is evaluated again in Extended. The results are those of Extended, to the bit.
///
/// A single operation on two floats needs none of this: its exact result, rounded to 53 or 64 bits first,
/// rounds to the same float as at once, since 53 >= 2 * 24 + 2.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// Whether a value computed in double with a relative error of up to 30 * 2^-53 may round to another float
/// than the exact one. Also true for what is no normal float: zero, infinity, NaN, too small, too large.
inline bool MayRoundOtherwise(double value) {
    constexpr std::uint64_t kMiddle = std::uint64_t{1} << 28;  // half of the 29 bits that a float has not
    constexpr std::uint64_t kTail = 2 * kMiddle - 1;
    constexpr std::uint64_t kSlack = 64;
    constexpr auto kSmallest = std::bit_cast<std::uint64_t>(0x1p-126) << 1;  // shifted: without the sign
    constexpr auto kLargest = std::bit_cast<std::uint64_t>(0x1p127) << 1;
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const bool isNearMiddle = ((bits - (kMiddle - kSlack)) & kTail) <= 2 * kSlack;
    const bool isNoNormalFloat = (bits << 1) - kSmallest > kLargest - kSmallest;
    return isNearMiddle | isNoNormalFloat;
}

/// The value rounded to 32 bits, for one that is clear of the middle between two floats and of the limits of
/// their range. Stays in the floating-point registers: half the time of a conversion to float and back.
inline double ClearTail(double value) {
    using TDoubles [[gnu::vector_size(16)]] = double;
    using TBits [[gnu::vector_size(16)]] = std::uint64_t;
    constexpr std::uint64_t kMiddle = std::uint64_t{1} << 28;
    const auto bits = std::bit_cast<TBits>(TDoubles{value, value});
    return std::bit_cast<TDoubles>((bits + kMiddle) & ~(2 * kMiddle - 1))[0];
}

/// A value rounded to 32 bits; held in a double, for the next expression to go on with. `value` is the value
/// in double, `exact` a function that computes it in Extended. The double must be within 30 * 2^-53 of it,
/// relatively: after some fifteen operations at most, and with no cancellation but in the first.
template <typename TExact>
double Round32(double value, const TExact& exact) {
    if (MayRoundOtherwise(value)) [[unlikely]]
        return static_cast<float>(exact());
    return ClearTail(value);
}

/// The same for an expression written once: a lambda that computes in the type W that it is given.
template <typename TExpression>
double Round32(const TExpression& expression) {
    return Round32(expression.template operator()<double>(),
                   [&] { return expression.template operator()<Extended>(); });
}

/// A value rounded to 32 bits whose error in double is known as an absolute bound; `exact` as above. A NaN is
/// left to it.
template <typename TExact>
float Round32Near(double value, double error, const TExact& exact) {
    const auto low = static_cast<float>(value - error);
    const auto high = static_cast<float>(value + error);
    if (low == high) [[likely]]
        return static_cast<float>(value);  // which need not wait for the other two
    return static_cast<float>(exact());
}

}  // namespace Varnholt
