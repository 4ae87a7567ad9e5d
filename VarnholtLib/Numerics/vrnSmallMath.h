#pragma once

#include "Platform/Runtime/Exceptions.h"

/// Small helpers around numbers: rounding to decimals, swapping, scaling in proportion, an index check,
/// binary digits.
///
///     RoundTo(0.125, 2);                              // 0.12, to the even neighbour
///     std::int32_t height = 0;
///     RatioScaleByWidth(1920, 1080, 640, height);     // 360
///     CheckIndex(row, 0, rowCount + 1, true);         // rows 1 to rowCount pass
///
/// Rounding to an integer is to the nearest, of two equally near ones to the even one.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// An index is outside its range.
class VARNHOLT_EXPORT EIndexOutOfRange : public Exception {
public:
    /// "Index out of range", with nothing known about the index.
    EIndexOutOfRange();
    /// "Index (INDEX) out of range"
    explicit EIndexOutOfRange(std::int32_t index);
    /// "Index (INDEX) out of range", with the bounds in the fields.
    EIndexOutOfRange(std::int32_t index, std::int32_t low, std::int32_t high);

    std::int32_t fiIndex = 0;
    std::int32_t fiLow = 0;
    std::int32_t fiHigh = 0;
    bool fbSpec = false;  ///< whether fiIndex is known
};

/// The value rounded to that many decimals: value m, rounded to an integer, divided by m, with m = 10^digits,
/// and m = 1 for digits below 1.
///
/// The product decides; a decimal fraction that a double only approximates is not corrected: RoundTo(1.005,
/// 2) is 1, since the nearest double is below 1.005.
///
/// m is a 32-bit integer, right for 0 to 9 digits. Above, it wraps around and the value is rounded to a
/// meaningless step; from 32 digits on m is 0 and the result a NaN. A NaN is returned unchanged, and so is an
/// infinity up to 31 digits.
[[nodiscard]] VARNHOLT_EXPORT double RoundTo(double value, std::int32_t digits);

VARNHOLT_EXPORT void RealSwap(float& a, float& b);
VARNHOLT_EXPORT void IntSwap(std::int32_t& a, std::int32_t& b);

/// The height that keeps the proportions of width to height at the new width: height r, rounded to an
/// integer, with r = new width / width as a 32-bit float. Raises ERangeError "VALUE does not fit in a 32-bit
/// integer" where it does not, as with a width of 0 ("INF", "-INF" or "NAN").
VARNHOLT_EXPORT void RatioScaleByWidth(std::int32_t width, std::int32_t height, std::int32_t newWidth,
                                       std::int32_t& newHeight);

/// The width that keeps the proportions at the new height; otherwise as RatioScaleByWidth.
VARNHOLT_EXPORT void RatioScaleByHeight(std::int32_t width, std::int32_t height, std::int32_t& newWidth,
                                        std::int32_t newHeight);

/// Passes only if low < index < high: the bounds themselves are refused. Otherwise raises EIndexOutOfRange,
/// with the index and its bounds if specific is true, without them if not.
VARNHOLT_EXPORT void CheckIndex(std::int32_t index, std::int32_t low, std::int32_t high, bool specific);

/// The number written in binary digits; the last character has the weight 1. Any character other than "1"
/// counts as 0; empty text is 0. The sum wraps around in 32 bits: the 32nd digit from the end is the sign,
/// and digits before it are lost.
[[nodiscard]] VARNHOLT_EXPORT std::int32_t BinToInt(StringView text);

}  // namespace Varnholt
