#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "VarnholtBaseLib/Arrays.h"

/// A one-dimensional array of variants that remembers its initial order when it is sorted.
///
///     TSmartArray rain(TVariantArray{3.5, 0.0, 7.25});
///     rain.Sort();
///     rain.GetData(0);            // 0.0
///     rain.GetSortMapValue(0);    // 1: it was at position 1
///     rain.UndoSort();            // 3.5, 0.0, 7.25 again
///     rain.Filter(1.0, 10.0);     // keeps 3.5 and 7.25
///     rain.Average();             // 5.375
///
/// Positions count from 0. An array is unsorted or sorted. While it is sorted its values are in ascending
/// order and the initial position of each value is known, but no value can be set.
///
/// Sharing: the array shares the storage of the TVariantArray that it is made from, without a copy. Sort and
/// SetData write into that storage, so the other holder sees the values move. UndoSort and Filter give the
/// array a storage of its own.
///
/// The statistics and filters take every value as a 64-bit float, and raise EVariantError for a value that is
/// not a number, as Variant::ToDouble does.
///
/// Do not destroy the array from a filter's callback. Threads: no lock; one thread at a time.
namespace Varnholt {

/// A value in a sort, with the position that it had before.
template <typename T>
struct TSortedItem {
    T Value;
    std::int32_t InitialIndex = 0;
};

using TSortedValue = TSortedItem<Variant>;
using TSortedValueArray = std::vector<TSortedValue>;

/// What a filter does with the values for which its callback returns true.
enum TComparasonAction : std::uint8_t { caKeep, caRemove };

/// Tests the value at a position, which is passed first.
using TComparasonCallback = std::function<bool(std::int32_t, const Variant&)>;

class VARNHOLT_EXPORT TSmartArray {
public:
    /// Shares the storage of `data`.
    explicit TSmartArray(TVariantArray data);
    /// The same, then Filter(valueToFilter).
    TSmartArray(TVariantArray data, const Variant& valueToFilter);
    /// The same, then Filter(filterRange1, filterRange2).
    TSmartArray(TVariantArray data, const Variant& filterRange1, const Variant& filterRange2);
    /// That many empty values. A negative size raises ERangeError "Array length out of range (SIZE)".
    explicit TSmartArray(std::int32_t size);
    /// That many values equal to `defaultValue`. Raises likewise.
    TSmartArray(std::int32_t size, const Variant& defaultValue);

    ~TSmartArray() = default;
    TSmartArray(TSmartArray&&) noexcept = default;
    TSmartArray& operator=(TSmartArray&&) noexcept = default;
    TSmartArray(const TSmartArray&) = delete;  // two arrays would sort one storage
    TSmartArray& operator=(const TSmartArray&) = delete;

    [[nodiscard]] std::int32_t GetCount() const noexcept { return FData.GetLength(); }
    [[nodiscard]] bool GetIsEmpty() const noexcept { return FData.IsEmpty(); }
    [[nodiscard]] bool GetSorted() const noexcept { return FSorted; }

    /// While true, GetData, GetSortMapValue and DumpToFile read from the last position to the first; false
    /// after construction. Nothing else depends on it.
    [[nodiscard]] bool GetInverted() const noexcept { return FInverted; }
    void SetInverted(bool inverted) noexcept { FInverted = inverted; }

    /// The value at a position, from the end while inverted; the sorted order in the sorted state. A position
    /// outside the array raises ERangeError "Array index out of bounds (INDEX)".
    [[nodiscard]] Variant GetData(std::int32_t index) const;
    /// Sets the value at a position, which always counts from the start. Raises Exception
    /// "TSmartArray.SetData" while sorted, else ERangeError as GetData does.
    void SetData(std::int32_t index, const Variant& value);
    /// The initial position of the value that GetData returns for this index. Raises Exception
    /// "TSmartArray.GetSortMapValue" unless sorted, else ERangeError as GetData does.
    [[nodiscard]] std::int32_t GetSortMapValue(std::int32_t index) const;

    /// Sorts ascending in the order of the variants and remembers where each value came from. Does nothing
    /// while sorted. If allocation fails (std::bad_alloc), nothing has changed.
    ///
    /// The sort is the quicksort of Hoare (1962) with the middle element as pivot:
    ///
    ///     sort lo..hi:   i = lo, j = hi, pivot = the value at (lo + hi) div 2
    ///                    repeat   move i up while a[i] < pivot; move j down while a[j] > pivot
    ///                             if i <= j: swap a[i] and a[j], i up, j down      until i > j
    ///                    sort lo..j, sort i..hi
    ///
    /// It is not stable. The order of values that compare equal is fixed by these steps: (1, 1, 1) for
    /// example gets the map 2, 1, 0. A NaN compares with nothing and disturbs the order around it. The result
    /// is always that of these steps; the time is at most of the order of n log2(n)^2, also where the steps
    /// as written would take n^2.
    void Sort();
    /// Restores the initial order of the values. Does nothing unless sorted.
    void UndoSort();
    /// Ends the sorted state and keeps the sorted order, which cannot be undone then.
    void FinalizeSort() noexcept;
    /// Sorts the values in their present order by the steps described at Sort, without a map, and leaves the
    /// array unsorted in that order. Raises what Sort raises.
    void SortAndFinalize();

    /// Filter(value, value): keeps the values equal to it, or, for a NaN, all but the NaNs.
    std::int32_t Filter(const Variant& value);
    /// Keeps the values from one bound to the other, both included and given in either order, and no NaN.
    /// With a NaN as one of the bounds it keeps all but the NaNs. Returns how many stayed.
    ///
    /// A sorted array is sorted again afterwards, with a map that refers to the filtered initial order. If a
    /// bound or a value is not a number, the array keeps all its values, unsorted in their initial order.
    std::int32_t Filter(const Variant& range1, const Variant& range2);
    /// Calls the callback for each value, in initial order, and keeps or removes those for which it returns
    /// true. The values that stay are narrowed to the nearest 32-bit floats. Returns how many stayed.
    ///
    /// A sorted array is unsorted while the callback runs, and sorted again afterwards. If the callback
    /// raises, or a value that stays is not a number, the array keeps all its values, unsorted in their
    /// initial order. The filter walks over the storage that it starts with, so it sees what a callback sets
    /// or sorts there; other changes that the callback makes to the values are overwritten. An empty callback
    /// raises EArgumentNilException "comparasonCallback" unless the array is empty.
    std::int32_t Filter(const TComparasonCallback& comparasonCallback, TComparasonAction comparasonAction);

    /// Sets all values, as 64-bit floats. Raises Exception, with nothing changed: "Smart Array size much
    /// match provided data size" for another number of values, "TSmartArray.SetData" while sorted.
    void Push(const TSingleArray& data);

    /// Statistics of the values. On an empty array all five raise Exception "TSmartArray.Average".
    ///
    /// The sum, starting from an integer 0 in the order of storage, by the addition of variants: integers add
    /// up exactly until a float is added.
    [[nodiscard]] double Sum() const;
    /// Sum divided by count.
    [[nodiscard]] double Average() const;
    /// The least and the greatest value: the first one, replaced by each that is strictly below or above.
    /// A NaN at the start therefore stays, and later ones are skipped.
    [[nodiscard]] double Min() const;
    [[nodiscard]] double Max() const;
    /// The middle value, or half the sum of the two middle values. Sorts the array, which stays sorted.
    [[nodiscard]] double Median();

    /// Writes one line for each position in the order of GetData, with four decimals and the separator of
    /// FormatSettings(). Lines end in CR LF; the text is in the platform's default 8-bit encoding and the
    /// file is replaced as a whole. Raises what WriteFileInOneGo raises.
    void DumpToFile(StringView fileName) const;

private:
    [[nodiscard]] std::int64_t Position(std::int32_t index) const;
    void CheckNotEmpty() const;
    [[nodiscard]] TIntegerArray SortStorage();
    std::int32_t Refill(std::vector<Variant> kept, bool sortAgain);

    TVariantArray FData;
    TIntegerArray FSortMap;
    bool FSorted = false;
    bool FInverted = false;
};

}  // namespace Varnholt
