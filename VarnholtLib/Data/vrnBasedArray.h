#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/Types.h"
#include "VarnholtLib/Data/vrnGridException.h"

/// The common base of TFloatArray and TIntArray: a vector of numbers with a settable first index.
///
/// A cell is addressed in two ways: an index counts from the base and is checked; a position counts from 0.
/// The base may be any value for which Base - 1 and the last index fit in 32 bits, so that no later
/// operation, such as one that removes cells, can leave the range.
///
/// Threads: no lock; one thread at a time.
namespace Varnholt {

/// A value type: a copy has cells of its own, a moved-from array is empty and can be used again.
/// T is float or std::int32_t; in the messages below TArray stands for "TFloatArray" or "TIntArray".
template <typename T>
class VARNHOLT_EXPORT TBasedArray {
public:
    /// Index of the first cell; 1 after construction.
    [[nodiscard]] std::int32_t GetBase() const noexcept { return FBase; }
    /// Index of the last cell: base + count - 1, so base - 1 for an empty array.
    [[nodiscard]] std::int32_t GetLast() const noexcept { return FBase + (GetCount() - 1); }
    /// Number of cells.
    [[nodiscard]] std::int32_t GetCount() const noexcept { return static_cast<std::int32_t>(FBuffer.size()); }

    /// The cells by position, to read and to write. Their number cannot be changed through the view, which
    /// stays valid until the array is resized, filtered, assigned, moved from or destroyed.
    [[nodiscard]] std::span<T> GetBuffer() & noexcept { return FBuffer; }
    [[nodiscard]] std::span<const T> GetBuffer() const& noexcept { return FBuffer; }
    void GetBuffer() const&& = delete;  // a loop over the view of a temporary array would outlive the array

    /// Gives the first cell the index `base`; the cells do not move. EGridException "Index range of TArray
    /// exceeds 32 bits", CR, "Base = ", the base, if the indices do not fit; the base is then unchanged.
    void SetBase(std::int32_t base);

    /// Makes `count` cells from the index `base`. With `doCopy` the old cells keep their positions, and cells
    /// are removed or zeros added at the end; without it all cells are 0. EGridException, with nothing
    /// changed:
    /// - "Can't resize and copy an uninitialised TArray": `doCopy` on an empty array
    /// - "Can't resize a TArray to a negative count"
    /// - what SetBase raises
    void SetSize(std::int32_t base, std::int32_t count, bool doCopy);

    /// Copies as many values as both arrays have into `copyTo`, by position, whatever their bases.
    void Copy(TBasedArray& copyTo) const;

    /// Copies as many values as both have into the caller's `arr`, and sets the rest of it to 0.
    void CopyToArray(std::span<T> arr) const;

    /// Smallest and largest value. Both start as the first one; each further value that is not at or above
    /// the minimum so far replaces it, so that a NaN does, and the value after a NaN; otherwise, if it is
    /// above the maximum, it replaces that. EGridException "An empty TArray has no minimum and no
    /// maximum".
    void GetMinAndMax(T& min, T& max) const;

protected:
    /// `count` zeros; none for a count below 1.
    explicit TBasedArray(std::int32_t count);
    /// These cells, whose indices must fit.
    TBasedArray(std::vector<T>&& buffer, std::int32_t base) noexcept;
    ~TBasedArray() = default;
    TBasedArray(const TBasedArray&) = default;
    TBasedArray(TBasedArray&&) noexcept = default;
    TBasedArray& operator=(const TBasedArray&) = default;
    TBasedArray& operator=(TBasedArray&&) noexcept = default;

    /// The position of an index. EGridException "Index out of bounds in ", `operation`, CR, "Index = ", the
    /// index.
    [[nodiscard]] std::size_t Position(std::int32_t index, const Char* operation) const {
        const std::int64_t position = std::int64_t{index} - FBase;
        if (!IsIndex(position, FBuffer.size())) [[unlikely]]
            RaiseIndexError(operation, index);
        return static_cast<std::size_t>(position);
    }
    [[noreturn]] static void RaiseIndexError(const Char* operation, std::int64_t index);

    /// The values outside the closed range, in order; `firstIndex` takes the index of the first of them and
    /// is unchanged if there is none.
    [[nodiscard]] std::vector<T> ValuesOutside(T min, T max, std::int32_t& firstIndex) const;

    std::vector<T> FBuffer;

private:
    std::int32_t FBase = 1;
};

extern template class TBasedArray<float>;
extern template class TBasedArray<std::int32_t>;

}  // namespace Varnholt
