#pragma once

#include <span>

#include "Platform/Runtime/Export.h"

/// Ascending sorts of 32-bit floats in place, with an order that is fixed to the bit.
///
///     std::vector<float> values = ...;
///     SortFloats(values);
///
/// Values that compare equal may differ in their bits: the two zeros, and NaNs, which compare with nothing.
/// Their order is fixed by the steps described at each function. NaNs disturb the order of the values around
/// them, as in any sort by comparison, but every sort terminates and only permutes the values.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// Sorts as InsertionSortFloats does for up to 50 values, as HeapSortFloats does for more: the same bits,
/// in less time. Never fails.
VARNHOLT_EXPORT void SortFloats(std::span<float> values);

/// Takes each value in turn and moves the greater ones before it up by one. Stable; the time is quadratic in
/// the number of values.
VARNHOLT_EXPORT void InsertionSortFloats(std::span<float> values);

/// Heap sort (Williams 1964, the heap built as by Floyd 1964). Not stable; about 2 n log2(n) comparisons at
/// most. The heap is built from its last parent to its top; then the last element is swapped with the top and
/// sifted down. A value sifted down passes the greater child, of equal ones the first, until that child is
/// not above it.
VARNHOLT_EXPORT void HeapSortFloats(std::span<float> values);

/// Heap-sorts `values`, with the same moves as HeapSortFloats, and writes to `positions` the former place of
/// each value: positions[k] is the 1-based position that values[k] had, exact up to 16,777,216. The order of
/// the positions of equal values is unspecified. `positions` must have the length of `values`, else
/// EArgumentException "A sort needs one position for each value"; nothing is changed then, nor if
/// allocation fails (std::bad_alloc).
VARNHOLT_EXPORT void IndexSortFloats(std::span<float> values, std::span<float> positions);

}  // namespace Varnholt
