#include "VarnholtLib/Data/vrnFloatSort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

namespace Varnholt {
namespace {

using TFloats = std::vector<float>;

struct TPlaced {
    float value;
    float position;
};

// The heap sort in its textbook steps, for elements at the indices 1 to n.
void TextbookHeapSort(std::vector<TPlaced>& a) {
    std::size_t ir = a.size() - 1;
    std::size_t l = ir / 2 + 1;
    while (true) {
        TPlaced key{};
        if (l > 1) {
            key = a[--l];
        } else {
            key = a[ir];
            a[ir] = a[1];
            if (--ir == 1) {
                a[1] = key;
                return;
            }
        }
        std::size_t i = l;
        std::size_t j = 2 * l;
        while (j <= ir) {
            if (j < ir && a[j].value < a[j + 1].value) ++j;
            if (key.value < a[j].value) {
                a[i] = a[j];
                i = j;
                j = 2 * i;
            } else {
                j = ir + 1;
            }
        }
        a[i] = key;
    }
}

std::vector<std::uint32_t> Bits(const TFloats& values) {
    std::vector<std::uint32_t> bits;
    for (const float value : values) bits.push_back(std::bit_cast<std::uint32_t>(value));
    return bits;
}

void CheckEverySort(const TFloats& values) {
    std::vector<TPlaced> placed(1);
    for (const float value : values) placed.push_back({value, static_cast<float>(placed.size())});
    TextbookHeapSort(placed);
    TFloats heaped(values.size());
    TFloats places(values.size());
    std::ranges::transform(placed.begin() + 1, placed.end(), heaped.begin(), &TPlaced::value);
    std::ranges::transform(placed.begin() + 1, placed.end(), places.begin(), &TPlaced::position);

    TFloats sorted = values;
    HeapSortFloats(sorted);
    ASSERT_EQ(Bits(sorted), Bits(heaped)) << "HeapSortFloats";
    sorted = values;
    TFloats positions(values.size());
    IndexSortFloats(sorted, positions);
    ASSERT_EQ(Bits(sorted), Bits(heaped)) << "IndexSortFloats";
    ASSERT_EQ(positions, places);

    TFloats inserted = values;
    if (values.size() <= 200) InsertionSortFloats(inserted);
    if (values.size() <= 50) {
        TFloats stable = values;
        std::ranges::stable_sort(stable);
        const bool hasNan = std::ranges::any_of(values, [](float value) { return value != value; });
        ASSERT_TRUE(hasNan || Bits(inserted) == Bits(stable)) << "InsertionSortFloats";
        ASSERT_TRUE(std::ranges::is_permutation(Bits(inserted), Bits(values))) << "InsertionSortFloats";
    }
    sorted = values;
    SortFloats(sorted);
    ASSERT_EQ(Bits(sorted), Bits(values.size() <= 50 ? inserted : heaped)) << "SortFloats";
}

TEST(FloatSort, KeepsTheBitsOfTheTextbookSteps) {
    const float infinity = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float otherNan = std::bit_cast<float>(0xFFC01234U);
    const float tiny = std::numeric_limits<float>::denorm_min();
    const TFloats pools[] = {{},  // any finite value
                             {1, 2, 3, -4},
                             {0.0F, 1, -1, tiny, -tiny},
                             {-0.0F, 1, -1, infinity, -infinity},
                             {-0.0F, 0.0F, 1, -1},
                             {nan, 1, 2, 3, 4, 5, -infinity},
                             {nan, otherNan, -0.0F, 0.0F, infinity, -infinity, tiny, 1, 2, 3}};
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
}  // namespace Varnholt
