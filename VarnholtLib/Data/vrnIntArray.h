#pragma once

#include "VarnholtLib/Data/vrnBasedArray.h"

/// A one-dimensional array of 32-bit integers with a settable first index.
///
///     TIntArray flags(3);            // three zeros, indices 1 to 3
///     flags.WriteInt(2, 1);
///     flags.Sort(flags);             // 0, 0, 1
///
/// Threads: no lock; one thread at a time.
namespace Varnholt {

class VARNHOLT_EXPORT TIntArray : public TBasedArray<std::int32_t> {
public:
    /// `nItems` zeros from index 1; an empty array for a number below 1.
    explicit TIntArray(std::int32_t nItems);

    /// The value at an index from base to last. EGridException "Index out of bounds in TIntArray.GetInt", CR,
    /// "Index = ", the index.
    [[nodiscard]] std::int32_t GetInt(std::int32_t index) const {
        return FBuffer[Position(index, u"TIntArray.GetInt")];
    }
    [[nodiscard]] std::int32_t operator[](std::int32_t index) const { return GetInt(index); }
    /// Sets the value at an index. EGridException "Index out of bounds in TIntArray.WriteInt", CR,
    /// "Index = ", the index.
    void WriteInt(std::int32_t index, std::int32_t value) {
        FBuffer[Position(index, u"TIntArray.WriteInt")] = value;
    }

    /// Copies this array into `sortTo`, as Copy does, and sorts all of `sortTo` ascending. This array is
    /// unchanged, unless it is `sortTo`.
    void Sort(TIntArray& sortTo) const;

    /// The values outside the closed range `min` to `max`, in order and without gaps; an empty array with
    /// base 1 if there are none. The result's base is the index here of its first value, in unsigned 16 bits:
    /// the index itself from 0 to 65,535, and its low 16 bits otherwise. For arrays of more than 65,535
    /// values the base is the whole index.
    [[nodiscard]] TIntArray Clean(std::int32_t min, std::int32_t max) const;

private:
    TIntArray(std::vector<std::int32_t>&& buffer, std::int32_t base) noexcept;
};

}  // namespace Varnholt
