#include "Platform/Runtime/Random.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

namespace Varnholt::Test {

TEST(Random, SeedFixesTheSequence) {
    SetRandomSeed(1);
    const double first = Random(), second = Random();
    SetRandomSeed(1);
    EXPECT_TRUE(first != second && Random() == first && Random() == second);
    Randomize();
    EXPECT_NE(Random(), first);
}

TEST(Random, RangeExcludesItsUpperBound) {
    SetRandomSeed(4);
    for (const auto& [from, to] :
         {std::pair{1, 7}, {7, 1}, {INT32_MAX - 6, INT32_MAX}, {INT32_MIN, INT32_MIN + 6}}) {
        std::map<std::int32_t, int> counts;
        for (int i = 0; i < 60000; ++i) ++counts[RandomRange(from, to)];
        EXPECT_TRUE(counts.size() == 6 && counts.begin()->first == std::min(from, to)) << from;
        for (const auto& [face, count] : counts) EXPECT_NEAR(count, 10000, 5 * std::sqrt(8333.0)) << face;
    }
    for (const std::int32_t value : {INT32_MIN, 0, INT32_MAX}) EXPECT_EQ(RandomRange(value, value), value);
}

}  // namespace Varnholt::Test
