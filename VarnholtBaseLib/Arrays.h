#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/Variant.h"

/// The array types that modules exchange: resizable, 0-based, and cheap to pass.
///
///     TDoubleArray rain = {1.5, 0.0, 7.25};
///     TDoubleArray same = rain;          // shares the elements
///     same[1] = 3.0;                     // rain[1] is 3.0, too
///     TDoubleArray own = rain.Copy();    // own elements
///     rain.SetLength(4);                 // rain now has its own storage; same keeps the old one
///     double sum = Sum(rain.GetSpan());  // hot loops run over the span
///
/// Threads: an array and all arrays that share its storage may be used by one thread at a time, or by any
/// number of threads that only read. Pass a Copy to another thread.
namespace Varnholt {

/// Raises ERangeError "Array index out of bounds (INDEX)".
[[noreturn]] VARNHOLT_EXPORT void RaiseArrayIndex(std::int64_t index);
/// Raises ERangeError "Array length out of range (LENGTH)".
[[noreturn]] VARNHOLT_EXPORT void RaiseArrayLength(std::int64_t length);

/// A shared handle on a resizable array.
///
/// Sharing: a copied or assigned array shares the storage of its source, and an element that is written
/// through one of them is seen by all. A change of length affects only one array: if its storage is
/// shared, it moves to a new storage with copies of the elements that stay, and the others keep the
/// old one; if it is not shared, its storage is resized in place. An array of length 0 holds no storage, so
/// that an array never filled and an emptied one are the same. A moved-from array is empty.
///
/// Spans, iterators and element references stay valid until the length of the array changes or its last
/// handle is destroyed.
template <typename T>
class TDynArray {
public:
    using value_type = T;

    TDynArray() noexcept = default;
    TDynArray(std::initializer_list<T> items) : TDynArray(std::vector<T>(items)) {}
    /// Copies of the elements.
    explicit TDynArray(std::span<const T> items) : TDynArray(items.begin(), items.end()) {}
    template <std::input_iterator TIterator>
    requires std::constructible_from<T, std::iter_reference_t<TIterator>> TDynArray(TIterator first,
                                                                                    TIterator last)
        : TDynArray(std::vector<T>(first, last)) {}
    /// Takes the elements, without a copy if the vector is moved in. More than 2147483647 elements
    /// raise ERangeError "Array length out of range (LENGTH)".
    explicit TDynArray(std::vector<T> items) {
        CheckLength(static_cast<std::int64_t>(items.size()));
        if (!items.empty()) FItems = std::make_shared<std::vector<T>>(std::move(items));
    }

    /// An array of that many equal elements. A length outside 0 to 2147483647 raises ERangeError
    /// "Array length out of range (LENGTH)".
    [[nodiscard]] static TDynArray WithLength(std::int64_t length, const T& value = T()) {
        CheckLength(length);
        return TDynArray(std::vector<T>(static_cast<std::size_t>(length), value));
    }

    [[nodiscard]] std::int32_t GetLength() const noexcept { return static_cast<std::int32_t>(size()); }
    [[nodiscard]] bool IsEmpty() const noexcept { return FItems == nullptr; }

    /// Changes the length: the first elements stay, new ones are zero or empty. Does nothing if the length is
    /// the same, and then the storage stays shared. Growing by one element takes constant time on average
    /// while the storage is not shared. A length outside 0 to 2147483647 raises ERangeError
    /// "Array length out of range (LENGTH)".
    void SetLength(std::int64_t length) {
        CheckLength(length);
        const auto newSize = static_cast<std::size_t>(length);
        if (newSize == size()) return;
        if (newSize == 0) {
            FItems.reset();
        } else if (FItems != nullptr && FItems.use_count() == 1) {
            FItems->resize(newSize);
        } else {
            std::vector<T> items;
            items.reserve(newSize);
            const std::span<const T> kept = std::as_const(*this).GetSpan().first(std::min(size(), newSize));
            items.assign(kept.begin(), kept.end());
            items.resize(newSize);
            FItems = std::make_shared<std::vector<T>>(std::move(items));
        }
    }

    /// An array with copies of the elements. Elements that are arrays still share their storage.
    [[nodiscard]] TDynArray Copy() const { return TDynArray(GetSpan()); }

    /// True if a write through one of the two arrays is seen by the other.
    [[nodiscard]] bool SharesWith(const TDynArray& other) const noexcept {
        return FItems != nullptr && FItems == other.FItems;
    }

    /// The element at that 0-based position. A position outside the array raises ERangeError
    /// "Array index out of bounds (INDEX)".
    [[nodiscard]] T& operator[](std::int64_t index) { return data()[CheckedIndex(index)]; }
    [[nodiscard]] const T& operator[](std::int64_t index) const { return data()[CheckedIndex(index)]; }

    /// All elements, for hot loops. An array also converts to a span implicitly.
    [[nodiscard]] std::span<T> GetSpan() noexcept { return {data(), size()}; }
    [[nodiscard]] std::span<const T> GetSpan() const noexcept { return {data(), size()}; }

    // The names that the standard library uses.
    [[nodiscard]] std::size_t size() const noexcept { return FItems == nullptr ? 0 : FItems->size(); }
    [[nodiscard]] bool empty() const noexcept { return IsEmpty(); }
    [[nodiscard]] T* data() noexcept { return FItems == nullptr ? nullptr : FItems->data(); }
    [[nodiscard]] const T* data() const noexcept { return FItems == nullptr ? nullptr : FItems->data(); }
    [[nodiscard]] T* begin() noexcept { return data(); }
    [[nodiscard]] T* end() noexcept { return data() + size(); }
    [[nodiscard]] const T* begin() const noexcept { return data(); }
    [[nodiscard]] const T* end() const noexcept { return data() + size(); }

    /// Same length and equal elements, shared or not.
    [[nodiscard]] friend bool operator==(const TDynArray& a, const TDynArray& b) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end());
    }

private:
    static void CheckLength(std::int64_t length) {
        if (length < 0 || length > std::numeric_limits<std::int32_t>::max()) RaiseArrayLength(length);
    }

    [[nodiscard]] std::size_t CheckedIndex(std::int64_t index) const {
        if (!IsIndex(index, size())) [[unlikely]]
            RaiseArrayIndex(index);
        return static_cast<std::size_t>(index);
    }

    std::shared_ptr<std::vector<T>> FItems;  // none for the empty array
};

using TDoubleArray = TDynArray<double>;
using TSingleArray = TDynArray<float>;
using TIntegerArray = TDynArray<std::int32_t>;
using TWordArray = TDynArray<std::uint16_t>;
using TVariantArray = TDynArray<Variant>;
using TStringArray = TDynArray<String>;
using TDoubleArrayArray = TDynArray<TDoubleArray>;
using TSingleArrayArray = TDynArray<TSingleArray>;

/// The smallest and the largest element. NaNs are ignored; if there is no other element, the result is a
/// NaN. Of zeros with different signs the first is returned.
[[nodiscard]] VARNHOLT_EXPORT float MinOf(std::span<const float> values) noexcept;
[[nodiscard]] VARNHOLT_EXPORT float MaxOf(std::span<const float> values) noexcept;

/// Each value as a 32-bit float, by Variant::ToDouble and then to the nearest; beyond the range an infinity.
/// A value that does not convert raises EVariantError.
[[nodiscard]] VARNHOLT_EXPORT TSingleArray ToSingleArray(const TVariantArray& values);

}  // namespace Varnholt
