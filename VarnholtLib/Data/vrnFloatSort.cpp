#include "VarnholtLib/Data/vrnFloatSort.h"

#include <bit>
#include <boost/sort/spreadsort/float_sort.hpp>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <new>
#include <utility>
#include <vector>

#include "Platform/Runtime/Exceptions.h"

namespace Varnholt {
namespace {

constexpr std::size_t kMostByInsertion = 50;

struct TPlacedValue {
    float Value;
    float Position;
};

// Sifts `key` down from the 1-based place `i` of a heap that ends at the 1-based place `last`.
template <typename T, typename TLess>
void SiftDown(std::span<T> heap, std::size_t i, std::size_t last, T key, TLess less) {
    std::size_t child = 2 * i;
    while (child <= last) {
        if (child < last && less(heap[child - 1], heap[child])) ++child;
        if (!less(key, heap[child - 1])) break;
        heap[i - 1] = heap[child - 1];
        i = child;
        child = 2 * i;
    }
    heap[i - 1] = key;
}

template <typename T, typename TLess>
void HeapSort(std::span<T> heap, TLess less) {
    const std::size_t count = heap.size();
    if (count < 2) return;
    for (std::size_t i = count / 2; i >= 1; --i) SiftDown(heap, i, count, heap[i - 1], less);
    for (std::size_t last = count - 1; last > 1; --last) {
        const T key = heap[last];
        heap[last] = heap[0];
        SiftDown(heap, 1, last, key, less);
    }
    std::swap(heap[0], heap[1]);
}

// Whether two orders of these values can both be ascending and differ in their bits.
bool BitsDependOnSteps(std::span<const float> values) {
    bool hasNan = false;
    bool hasMinusZero = false;
    bool hasPlusZero = false;
    for (const float value : values) {
        const bool isZero = value == 0.0F;
        const bool isNegative = std::signbit(value);
        hasNan |= std::isnan(value);
        hasMinusZero |= isZero & isNegative;
        hasPlusZero |= isZero & !isNegative;
    }
    return hasNan || (hasMinusZero && hasPlusZero);
}

// The bits of a float as an integer, 64 bits wide because the sort subtracts one from another.
struct TShiftedBits {
    std::int64_t operator()(float value, unsigned shift) const {
        return std::int64_t{std::bit_cast<std::int32_t>(value)} >> shift;
    }
};

void SortByValueOnly(std::span<float> values) {
    try {
        boost::sort::spreadsort::float_sort(values.begin(), values.end(), TShiftedBits());
    } catch (const std::bad_alloc&) {  // for its bins; the values are complete, in some order
        HeapSortFloats(values);
    }
}

}  // namespace

void SortFloats(std::span<float> values) {
    if (values.size() <= kMostByInsertion) {
        InsertionSortFloats(values);
    } else if (BitsDependOnSteps(values)) {
        HeapSortFloats(values);
    } else {
        SortByValueOnly(values);  // equal values are equal bits here: there is one ascending order only
    }
}

void InsertionSortFloats(std::span<float> values) {
    for (std::size_t next = 1; next < values.size(); ++next) {
        const float value = values[next];
        std::size_t gap = next;
        for (; gap > 0 && values[gap - 1] > value; --gap) values[gap] = values[gap - 1];
        values[gap] = value;
    }
}

void HeapSortFloats(std::span<float> values) {
    HeapSort(values, std::less<float>());
}

void IndexSortFloats(std::span<float> values, std::span<float> positions) {
    if (positions.size() != values.size()) {
        throw EArgumentException(u"A sort needs one position for each value");
    }
    std::vector<TPlacedValue> placed(values.size());
    for (std::size_t i = 0; i < placed.size(); ++i) placed[i] = {values[i], static_cast<float>(i + 1)};
    HeapSort(std::span(placed),
             [](const TPlacedValue& a, const TPlacedValue& b) { return a.Value < b.Value; });
    for (std::size_t i = 0; i < placed.size(); ++i) {
        values[i] = placed[i].Value;
        positions[i] = placed[i].Position;
    }
}

}  // namespace Varnholt
