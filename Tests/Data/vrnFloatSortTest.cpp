#include "VarnholtLib/Data/vrnFloatSort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <random>
#include <span>

namespace Varnholt::Test {
namespace {

using TFloats = std::vector<float>;

// The heap sort in its textbook steps, for elements at the indices 1 to n: values with their positions.
void TextbookHeapSort(std::vector<std::pair<float, float>>& a) {
    std::size_t ir = a.size() - 1;
    for (std::size_t l = ir / 2 + 1; true;) {
        const bool isHeap = l == 1;
        const auto key = isHeap ? std::exchange(a[ir], a[1]) : a[--l];
        if (isHeap && --ir == 1) return void(a[1] = key);
        std::size_t i = l;
        for (std::size_t j = 2 * l; j <= ir; j = 2 * i) {
            if (j < ir && a[j].first < a[j + 1].first) ++j;
            if (!(key.first < a[j].first)) break;
            a[i] = a[j];
            i = j;
        }
        a[i] = key;
    }
}

constexpr auto kBits = [](float value) { return std::bit_cast<std::uint32_t>(value); };

bool AreSame(const TFloats& a, const TFloats& b) {
    return std::ranges::equal(a, b, {}, kBits, kBits);
}

void CheckEverySort(const TFloats& values) {
    std::vector<std::pair<float, float>> placed(1);
    for (const float value : values) placed.emplace_back(value, static_cast<float>(placed.size()));
    TextbookHeapSort(placed);
    TFloats heaped, places, sorted = values, indexed = values, positions = values, small = values;
    for (const auto& [value, place] : std::span(placed).subspan(1)) {
        heaped.push_back(value);
        places.push_back(place);
    }
    HeapSortFloats(sorted);
    ASSERT_TRUE(AreSame(sorted, heaped));
    IndexSortFloats(indexed, positions);
    ASSERT_TRUE(AreSame(indexed, heaped) && positions == places);
    if (values.size() <= 50) {
        InsertionSortFloats(small);
        TFloats stable = values;
        std::ranges::stable_sort(stable);
        const bool hasNan = std::ranges::any_of(values, [](float value) { return value != value; });
        ASSERT_TRUE(hasNan ? std::ranges::is_permutation(small, values, {}, kBits, kBits)
                           : AreSame(small, stable));
    }
    sorted = values;
    SortFloats(sorted);
    ASSERT_TRUE(AreSame(sorted, values.size() <= 50 ? small : heaped));
}

TEST(FloatSort, KeepsTheBitsOfTheTextbookSteps) {
    const float infinity = INFINITY, nan = NAN, tiny = 0x1p-149F,
                otherNan = std::bit_cast<float>(0xFFC01234U);
    // clang-format off
    const TFloats pools[] = {{},  // any finite value
        {1, 2, 3, -4}, {0.0F, 1, -1, tiny, -tiny}, {-0.0F, 1, -1, infinity, -infinity}, {-0.0F, 0.0F, 1, -1},
        {nan, 1, 2, 3, 4, 5, -infinity}, {nan, otherNan, -0.0F, 0.0F, infinity, -infinity, tiny, 1, 2, 3}};
    // clang-format on
    std::vector<std::size_t> sizes = {999, 1000, 1001, 5000, 70'000};
    for (std::size_t size = 2; size <= 200; ++size) sizes.push_back(size);
    std::mt19937 random(31);
    std::uniform_real_distribution<float> finite(-1e6F, 1e6F);
    for (const TFloats& pool : pools) {
        for (const std::size_t size : sizes) {
            SCOPED_TRACE(testing::Message() << size << " values of " << testing::PrintToString(pool));
            TFloats values(size);
            for (float& value : values) value = pool.empty() ? finite(random) : pool[random() % pool.size()];
            ASSERT_NO_FATAL_FAILURE(CheckEverySort(values));
        }
    }
}

}  // namespace
}  // namespace Varnholt::Test
