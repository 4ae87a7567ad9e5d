#include "VarnholtLib/Numerics/vrnMonthlyData.h"

#include <gmock/gmock.h>

#include <cmath>

namespace Varnholt::Test {
namespace {

using THelper = TMonthlyDataHelper;

// 2^24 + 1 has no place in 32 bits and is rounded back, each time.
const TMonthlyData kSteep{{1, 16777216, 0.5f, 1, 1, 1, 1, 1, 1, 1, 1, -3}};

TEST(vrnMonthlyData, WorksOnTheYearAndOnSelections) {
    const TMonthSet winter = MonthSetOf({moDecember, moJanuary, moMarch});
    EXPECT_THAT(THelper::Extract(kSteep, winter), testing::ElementsAre(1, 0.5f, -3));
    const std::pair<float, float> cases[] = {
        // clang-format off
        {THelper::Sum(kSteep), 16777213}, {THelper::Average(kSteep), 16777213.0f / 12},
        {THelper::Min(kSteep), -3}, {THelper::Max(kSteep), 16777216}, {THelper::Min(kSteep, winter), -3},
        {THelper::Sum(kSteep, MonthSetOf({moMarch, moFebruary})), 16777216},
        {THelper::Max(kSteep, winter), 1},
        {THelper::Average(kSteep, MonthSetOf({moJanuary, moMarch})), 0.75f}, {THelper::Sum(kSteep, {}), 0}};
    // clang-format on
    for (const auto& [actual, expected] : cases) EXPECT_EQ(actual, expected);
    EXPECT_TRUE(std::isnan(THelper::Average(kSteep, {})));
    EXPECT_TRUE(std::isnan(THelper::Min(kSteep, {})) && std::isnan(THelper::Max(kSteep, {})));
}

}  // namespace
}  // namespace Varnholt::Test
