#include "VarnholtLib/Numerics/vrnTrendline.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Varnholt {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

TEST(vrnTrendline, FollowsTheLineThroughThePositions) {
    struct {
        TSingleArray values;
        float atMinus1, at0, at3;
    } const cases[] = {
        {{5, 7, 9, 11}, 1, 3, 9},
        {{2.5F, 2.5F, 2.5F}, 2.5F, 2.5F, 2.5F},
        {{1, 2, 2}, 2.0F / 3 - 0.5F, 2.0F / 3, 2.0F / 3 + 1.5F},  // slope 1/2, intercept 2/3
        {{-1, -3}, 3, 1, -5},
        {{16777216, 1, 1}, 30758224, 22369618, -2796200},  // S(v) = 16777216, S(i*v) = 16777220 in 32 bits
        {{4}, kNan, kNan, kNan},
        {{}, kNan, kNan, kNan},
        {{1, kNan, 3}, kNan, kNan, kNan},
    };
    for (const auto& [values, atMinus1, at0, at3] : cases) {
        const auto trend = TTrendlineFactory::GetObject(values);
        for (const auto& [x, expected] : {std::pair{-1, atMinus1}, {0, at0}, {3, at3}}) {
            const float y = trend->GetY(x);
            EXPECT_TRUE(std::isnan(expected) ? std::isnan(y) : std::abs(y - expected) <= 1e-6F)
                << testing::PrintToString(values) << " at " << x << " gave " << y;
        }
    }
}

}  // namespace
}  // namespace Varnholt
