#include "VarnholtLib/Numerics/vrnTrendline.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Varnholt::Test {
namespace {

TEST(vrnTrendline, FollowsTheLineThroughThePositions) {
    const std::tuple<TSingleArray, float, float, float> cases[] = {
        // clang-format off
        {{5, 7, 9, 11}, 1, 3, 9}, {{2.5F, 2.5F, 2.5F}, 2.5F, 2.5F, 2.5F}, {{-1, -3}, 3, 1, -5},
        {{1, 2, 2}, 2.0F / 3 - 0.5F, 2.0F / 3, 2.0F / 3 + 1.5F},  // slope 1/2, intercept 2/3
        {{16777216, 1, 1}, 30758224, 22369618, -2796200},  // S(v) = 16777216, S(i*v) = 16777220 in 32 bits
        {{4}, NAN, NAN, NAN}, {{}, NAN, NAN, NAN}, {{1, NAN, 3}, NAN, NAN, NAN}};
    // clang-format on
    for (const auto& [values, atMinus1, at0, at3] : cases) {
        for (const auto& [x, expected] : {std::pair{-1, atMinus1}, {0, at0}, {3, at3}}) {
            const float y = TTrendlineFactory::GetObject(values)->GetY(x);
            EXPECT_TRUE(std::isnan(expected) ? std::isnan(y) : std::abs(y - expected) <= 1e-6F)
                << testing::PrintToString(values) << " at " << x << " gave " << y;
        }
    }
}

}  // namespace
}  // namespace Varnholt::Test
