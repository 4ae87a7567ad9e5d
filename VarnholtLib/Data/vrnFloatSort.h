#pragma once

#include <span>

#include "Platform/Runtime/Export.h"

/// Ascending sorts of 32-bit floats in place, with an order that is fixed to the bit.
///
///     std::vector<float> values = ...;
///     SortFloats(values);
///
/// Values that compare equal may differ in their bits: the two zeros, and NaNs, which compare with nothing.
/// Where they end up is fixed by the steps told at each function. NaNs spoil the order of the values around
/// them, as in any sort by comparison, but every sort ends and keeps the values that it was given.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// Sorts as InsertionSortFloats does for up to 50 values, as HeapSortFloats does for more: the same bits,
/// in less time. Never fails.
VARNHOLT_EXPORT void SortFloats(std::span<float> values);

/// Takes out each value in turn and moves up those before it that are greater. Stable; quadratic in the
/// number of values.
VARNHOLT_EXPORT void InsertionSortFloats(std::span<float> values);

/// Heap sort (Williams 1964, the heap built as by Floyd 1964). Not stable; about 2 n log2(n) comparisons at
/// most. The heap is built from its last parent up to its top; then the last element changes places with the
/// top and sinks. A sinking value passes the greater child, of equal ones the first, until that child is not
/// above it.
VARNHOLT_EXPORT void HeapSortFloats(std::span<float> values);

/// Heap-sorts `values`, with the same moves as HeapSortFloats, and writes to `positions` where each value
/// stood before: positions[k] is the 1-based position that values[k] had, exact up to 16,777,216. Equal
/// values come in no particular order of position. `positions` must have the length of `values`, else
/// EArgumentException "A sort needs one position for each value"; nothing is changed then, nor when
/// memory for the pairs is short (std::bad_alloc).
VARNHOLT_EXPORT void IndexSortFloats(std::span<float> values, std::span<float> positions);

}  // namespace Varnholt
