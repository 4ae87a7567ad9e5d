#include "Platform/Runtime/Random.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>

namespace Varnholt {
namespace {

constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();

TEST(Random, SeedFixesTheSequence) {
    SetRandomSeed(1);
    const double first = Random();
    EXPECT_NE(Random(), first);
    SetRandomSeed(1);
    EXPECT_EQ(Random(), first);
    Randomize();
    EXPECT_NE(Random(), first);
}

TEST(Random, RangeExcludesItsUpperBound) {
    SetRandomSeed(4);
    for (const auto& [from, to] : {std::pair{1, 7}, {7, 1}, {kMax - 6, kMax}, {kMin, kMin + 6}}) {
        std::map<std::int32_t, int> counts;
        for (int i = 0; i < 60000; ++i) ++counts[RandomRange(from, to)];
        EXPECT_EQ(counts.size(), 6U) << from;
        EXPECT_EQ(counts.begin()->first, std::min(from, to));
        EXPECT_EQ(counts.rbegin()->first, std::max(from, to) - 1);
        for (const auto& [face, count] : counts) EXPECT_NEAR(count, 10000, 5 * std::sqrt(8333.0)) << face;
    }
    for (const std::int32_t value : {kMin, 0, kMax}) EXPECT_EQ(RandomRange(value, value), value);
}

}  // namespace
}  // namespace Varnholt
