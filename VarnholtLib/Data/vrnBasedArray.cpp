#include "VarnholtLib/Data/vrnBasedArray.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

#include "Platform/Runtime/Format.h"

namespace Varnholt {
namespace {

template <typename T>
String ClassName() {
    return std::is_same_v<T, float> ? u"TFloatArray" : u"TIntArray";
}

template <typename T>
void CheckIndexRange(std::int32_t base, std::int64_t count) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    if (base == std::numeric_limits<std::int32_t>::min() || base + count - 1 > kMost) {
        throw EGridException(Format(u"Index range of %s exceeds 32 bits\rBase = %d", {ClassName<T>(), base}));
    }
}

}  // namespace

template <typename T>
TBasedArray<T>::TBasedArray(std::int32_t count) : FBuffer(static_cast<std::size_t>(std::max(count, 0))) {}

template <typename T>
TBasedArray<T>::TBasedArray(std::vector<T>&& buffer, std::int32_t base) noexcept
    : FBuffer(std::move(buffer)), FBase(base) {}

template <typename T>
void TBasedArray<T>::SetBase(std::int32_t base) {
    CheckIndexRange<T>(base, GetCount());
    FBase = base;
}

template <typename T>
void TBasedArray<T>::SetSize(std::int32_t base, std::int32_t count, bool doCopy) {
    if (doCopy && FBuffer.empty()) {
        throw EGridException(Format(u"Can't resize and copy an uninitialised %s", {ClassName<T>()}));
    }
    if (count < 0) {
        throw EGridException(Format(u"Can't resize a %s to a negative count", {ClassName<T>()}));
    }
    CheckIndexRange<T>(base, count);
    if (doCopy) {
        FBuffer.resize(static_cast<std::size_t>(count));
    } else {
        FBuffer = std::vector<T>(static_cast<std::size_t>(count));
    }
    FBase = base;
}

template <typename T>
void TBasedArray<T>::Copy(TBasedArray& copyTo) const {
    if (&copyTo == this) return;
    const std::size_t count = std::min(FBuffer.size(), copyTo.FBuffer.size());
    std::copy_n(FBuffer.begin(), count, copyTo.FBuffer.begin());
}

template <typename T>
void TBasedArray<T>::CopyToArray(std::span<T> arr) const {
    const std::size_t count = std::min(FBuffer.size(), arr.size());
    if (count > 0) std::memmove(arr.data(), FBuffer.data(), count * sizeof(T));
    std::ranges::fill(arr.subspan(count), T{0});
}

template <typename T>
void TBasedArray<T>::GetMinAndMax(T& min, T& max) const {
    if (FBuffer.empty()) {
        throw EGridException(Format(u"An empty %s has no minimum and no maximum", {ClassName<T>()}));
    }
    T low = FBuffer.front();
    T high = low;
    for (const T value : std::span(FBuffer).subspan(1)) {
        if (!(value >= low)) {
            low = value;
        } else if (value > high) {
            high = value;
        }
    }
    min = low;
    max = high;
}

template <typename T>
void TBasedArray<T>::RaiseIndexError(const Char* operation, std::int64_t index) {
    throw EGridException(Format(u"Index out of bounds in %s\rIndex = %d", {operation, index}));
}

template <typename T>
std::vector<T> TBasedArray<T>::ValuesOutside(T min, T max, std::int32_t& firstIndex) const {
    const auto isOutside = [min, max](T value) { return !(value >= min && value <= max); };
    const auto first = std::ranges::find_if(FBuffer, isOutside);
    std::vector<T> kept;
    if (first == FBuffer.end()) return kept;
    kept.reserve(static_cast<std::size_t>(std::count_if(first, FBuffer.end(), isOutside)));
    std::copy_if(first, FBuffer.end(), std::back_inserter(kept), isOutside);
    firstIndex = FBase + static_cast<std::int32_t>(first - FBuffer.begin());
    return kept;
}

template class TBasedArray<float>;
template class TBasedArray<std::int32_t>;

}  // namespace Varnholt
