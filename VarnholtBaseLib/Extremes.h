#pragma once

#include <cmath>
#include <concepts>

/// The smallest and the largest of a series whose NaNs are to be passed over.
///
///     float lowest = std::numeric_limits<float>::quiet_NaN();
///     for (const float value : values) TakeMin(lowest, value);   // still a NaN if all values are
///
/// A NaN in `best` stands for "no value yet" and gives way to any value; a NaN among the values replaces nothing
/// else. Of values that compare equal, such as zeros with different signs, the first stays.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// Makes `best` the smaller of the two.
template <std::floating_point T>
void TakeMin(T& best, T value) noexcept {
    if (value < best || std::isnan(best)) best = value;
}

/// Makes `best` the larger of the two.
template <std::floating_point T>
void TakeMax(T& best, T value) noexcept {
    if (value > best || std::isnan(best)) best = value;
}

}  // namespace Varnholt
