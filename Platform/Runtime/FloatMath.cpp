#include "Platform/Runtime/FloatMath.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"

namespace Varnholt {
namespace {

template <typename T>
bool IsNear(T a, T b, T epsilon, T resolution) {
    if (a == b) return true;
    if (std::isinf(a) || std::isinf(b)) return false;
    if (epsilon == 0) epsilon = std::max(std::min(std::fabs(a), std::fabs(b)) * resolution, resolution);
    return std::fabs(a - b) <= epsilon;
}

constexpr int kMaxMultipliedExponent = 32;

/// base^exponent for an exponent of 1 or more. Only the squares that the result needs are computed, so
/// nothing overflows before the result does.
Extended MultiplyOut(Extended base, int exponent) {
    Extended power = 1;
    for (;;) {
        if (exponent % 2 != 0) power *= base;
        exponent /= 2;
        if (exponent == 0) return power;
        base *= base;
    }
}

/// Nearest integer, ties to even; none if it does not fit. All steps are exact, hence free of the rounding
/// mode.
std::optional<std::int64_t> RoundEven(Extended value) {
    constexpr Extended kLimit = 0x1p63L;
    if (!(value >= -kLimit && value < kLimit)) return std::nullopt;
    const auto whole = static_cast<std::int64_t>(value);
    const Extended rest = std::fabs(value - static_cast<Extended>(whole));
    if (rest < 0.5L || (rest == 0.5L && whole % 2 == 0)) return whole;
    if (value < 0) return whole - 1;
    if (whole == std::numeric_limits<std::int64_t>::max()) return std::nullopt;
    return whole + 1;
}

ERangeError DoesNotFit(Extended value, StringView type) {
    return ERangeError(
        Format(u"%s does not fit in a %s integer", {FloatToStr(value, TFormatSettings::Invariant()), type}));
}

}  // namespace

bool SameValue(float a, float b, float epsilon) {
    return IsNear(a, b, epsilon, 1e-4f);
}

bool SameValue(double a, double b, double epsilon) {
    return IsNear(a, b, epsilon, 1e-12);
}

bool SameValue(Extended a, Extended b, Extended epsilon) {
    return IsNear(a, b, epsilon, 1e-16L);
}

Extended Power(Extended base, Extended exponent) {
    if (exponent == 0) return 1;
    if (base == 0 && exponent > 0) return 0;
    if (base == 0 && exponent < 0) return std::numeric_limits<Extended>::infinity();
    if (std::fabs(exponent) > kMaxMultipliedExponent || std::trunc(exponent) != exponent) {
        return std::pow(base, exponent);
    }
    const Extended power = MultiplyOut(base, static_cast<int>(std::fabs(exponent)));
    if (exponent > 0) return power;
    // The reciprocal of a power outside the normal range may be within it.
    return std::isnormal(power) ? 1 / power : std::pow(base, exponent);
}

std::int32_t RoundToInt(Extended value) {
    const std::optional<std::int64_t> rounded = RoundEven(value);
    if (!rounded || !std::in_range<std::int32_t>(*rounded)) throw DoesNotFit(value, u"32-bit");
    return static_cast<std::int32_t>(*rounded);
}

std::optional<std::int64_t> TryRoundToInt64(Extended value) {
    return RoundEven(value);
}

std::int64_t RoundToInt64(Extended value) {
    const std::optional<std::int64_t> rounded = RoundEven(value);
    if (!rounded) throw DoesNotFit(value, u"64-bit");
    return *rounded;
}

}  // namespace Varnholt
