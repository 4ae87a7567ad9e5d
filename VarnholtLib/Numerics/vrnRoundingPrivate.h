#pragma once

#include <bit>
#include <cstdint>

#include "Platform/Runtime/Types.h"

/// Rounds expressions that are defined in Extended to 32 bits, in less time than Extended takes.
///
///     del = Round32([&]<typename W> { return W{del} * x / W(ap); });
///
/// Double carries 29 bits more than a float. What is computed in double therefore rounds to the same float as
/// what is computed in Extended, unless it is close to the midpoint between two floats: only then is the
/// expression evaluated again in Extended. The results are those of Extended, to the bit.
///
/// A single operation on two floats needs none of this: its exact result, rounded to 53 or 64 bits first,
/// rounds to the same float as at once, since 53 >= 2 * 24 + 2.
///
/// Threads: the functions keep no state.
namespace Varnholt {

constexpr std::uint64_t kRoundingMiddle = std::uint64_t{1} << 28;  // half of the 29 extra bits of a double
constexpr std::uint64_t kRoundingTail = 2 * kRoundingMiddle - 1;
constexpr std::uint64_t kRoundingSlack = 64;

/// Two doubles in one register, and their bits.
using TPair [[gnu::vector_size(16)]] = double;
using TPairBits [[gnu::vector_size(16)]] = std::uint64_t;

/// Whether a value computed in double with a relative error of up to 30 * 2^-53 may round to another float
/// than the exact one. Also true for a value that is not a normal float: zero, infinity, NaN, too small, too
/// large.
inline bool MayRoundOtherwise(double value) {
    constexpr auto kSmallest = std::bit_cast<std::uint64_t>(0x1p-126) << 1;  // shifted: without the sign
    constexpr auto kLargest = std::bit_cast<std::uint64_t>(0x1p127) << 1;
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const bool isNearMiddle =
        ((bits - (kRoundingMiddle - kRoundingSlack)) & kRoundingTail) <= 2 * kRoundingSlack;
    const bool isNoNormalFloat = (bits << 1) - kSmallest > kLargest - kSmallest;
    return isNearMiddle | isNoNormalFloat;
}

/// The value rounded to 32 bits, if it is not close to the midpoint between two floats or to the limits of
/// their range. Stays in the floating-point registers: half the time of a conversion to float and back.
inline double ClearTail(double value) {
    const auto bits = std::bit_cast<TPairBits>(TPair{value, value});
    return std::bit_cast<TPair>((bits + kRoundingMiddle) & ~kRoundingTail)[0];
}

/// A value rounded to 32 bits and held in a double, for use in the next expression. `value` is the value
/// in double, `exact` a function that computes it in Extended. The double must be within 30 * 2^-53 of it,
/// relatively: after at most some fifteen operations, with cancellation only in the first.
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

/// The roundings of one step of a method that computes in pairs. Each pair is returned rounded, and it is
/// recorded whether one of them might differ in Extended: one check for the whole step, after which the
/// caller evaluates a doubtful step again. The doubles must be as close to the exact values as for Round32.
class TPairRounding {
public:
    TPair operator()(TPair value) {
        const auto bits = std::bit_cast<TPairBits>(value);
        const TPairBits low = bits + (kRoundingMiddle - kRoundingSlack);
        const TPairBits high = bits + (kRoundingMiddle + kRoundingSlack);
        FMiddles |= low ^ high;
        FSizes |= (bits + kSizeShift) ^ (std::uint64_t{1} << 62);
        return std::bit_cast<TPair>(low & ~kRoundingTail);
    }

    /// True also for a value whose size is not from 2^-63 up to 2^65: zero, infinity and NaN among them.
    [[nodiscard]] bool IsInDoubt() const {
        const TPairBits doubts = (FMiddles & ~kRoundingTail) | (FSizes & kSizeBits);
        return (doubts[0] | doubts[1]) != 0;
    }

private:
    // 64 more in the biased exponent turn those of 2^-63 to 2^64 into the ones whose upper four bits are
    // 1000.
    static constexpr std::uint64_t kSizeShift = std::uint64_t{64} << 52;
    static constexpr std::uint64_t kSizeBits = std::uint64_t{15} << 59;

    TPairBits FMiddles{}, FSizes{};
};

/// A value rounded to 32 bits whose error in double is known as an absolute bound; `exact` as above. A NaN is
/// evaluated by it.
template <typename TExact>
float Round32Near(double value, double error, const TExact& exact) {
    const auto low = static_cast<float>(value - error);
    const auto high = static_cast<float>(value + error);
    if (low == high) [[likely]]
        return static_cast<float>(value);  // which need not wait for the other two
    return static_cast<float>(exact());
}

}  // namespace Varnholt
