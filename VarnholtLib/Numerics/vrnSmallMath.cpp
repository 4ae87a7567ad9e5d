#include "VarnholtLib/Numerics/vrnSmallMath.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Platform/Runtime/FloatMath.h"
#include "Platform/Runtime/Numbers.h"

namespace Varnholt {

namespace {

/// 10 to that power modulo 2^32. From 32 on it has the factor 2^32 and is 0.
std::int32_t WrappedPowerOfTen(std::int32_t exponent) {
    std::uint32_t power = 1;
    for (std::int32_t factor = std::min(exponent, 32); factor > 0; --factor) power *= 10;
    return static_cast<std::int32_t>(power);
}

/// length, scaled by newBase / base.
std::int32_t Scaled(std::int32_t length, std::int32_t base, std::int32_t newBase) {
    const auto ratio = static_cast<float>(static_cast<Extended>(newBase) / base);
    return RoundToInt(static_cast<Extended>(length) * ratio);
}

}  // namespace

EIndexOutOfRange::EIndexOutOfRange() : Exception(u"Index out of range") {}

EIndexOutOfRange::EIndexOutOfRange(std::int32_t index) : EIndexOutOfRange(index, 0, 0) {}

EIndexOutOfRange::EIndexOutOfRange(std::int32_t index, std::int32_t low, std::int32_t high)
    : Exception(u"Index (" + IntToStr(index) + u") out of range"),
      fiIndex(index),
      fiLow(low),
      fiHigh(high),
      fbSpec(true) {}

double RoundTo(double value, std::int32_t digits) {
    const std::int32_t m = WrappedPowerOfTen(digits);
    const Extended product = Extended{value} * m;
    // From here on a half is below the precision of the resulting double. NaNs take this branch, too.
    if (!(std::fabs(product) < 0x1p62L)) return static_cast<double>(product / m);
    return static_cast<double>(static_cast<Extended>(RoundToInt64(product)) / m);
}

void RealSwap(float& a, float& b) {
    std::swap(a, b);
}

void IntSwap(std::int32_t& a, std::int32_t& b) {
    std::swap(a, b);
}

void RatioScaleByWidth(std::int32_t width, std::int32_t height, std::int32_t newWidth,
                       std::int32_t& newHeight) {
    newHeight = Scaled(height, width, newWidth);
}

void RatioScaleByHeight(std::int32_t width, std::int32_t height, std::int32_t& newWidth,
                        std::int32_t newHeight) {
    newWidth = Scaled(width, height, newHeight);
}

void CheckIndex(std::int32_t index, std::int32_t low, std::int32_t high, bool specific) {
    if (low < index && index < high) return;
    if (specific) throw EIndexOutOfRange(index, low, high);
    throw EIndexOutOfRange();
}

std::int32_t BinToInt(StringView text) {
    std::uint32_t sum = 0;
    for (const Char digit : text) sum = sum * 2 + (digit == u'1' ? 1 : 0);
    return static_cast<std::int32_t>(sum);
}

}  // namespace Varnholt
