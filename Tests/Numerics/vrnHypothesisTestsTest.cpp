#include "VarnholtLib/Numerics/vrnHypothesisTests.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

struct TFT {
    float T = 0, ProbT = 0, F = 0, ProbF = 0;
};

TFT Compare(float mean1, float sd1, float mean2, float sd2, std::int32_t count1, std::int32_t count2) {
    TFT result;
    FT_test(mean1, sd1, mean2, sd2, count1, count2, result.T, result.ProbT, result.F, result.ProbF);
    return result;
}

// For 2 and 2 degrees of freedom the F tail is 1 / (1 + f); for 4 Student's two tails are
// 1 - |t| (t^2 + 6) / (t^2 + 4)^1.5.
TEST(HypothesisTests, EqualVariances) {
    for (const auto& [sd1, sd2] : {std::pair{2.0F, 3.0F}, {3.0F, 2.0F}, {2.0F, 2.0F}}) {
        const TFT result = Compare(10, sd1, 13, sd2, 3, 3);
        const double f = std::pow(std::max(sd1, sd2) / std::min(sd1, sd2), 2);
        const double t = -3 / std::sqrt((sd1 * sd1 + sd2 * sd2) / 3.0);
        EXPECT_NEAR(result.F, f, 1e-6);
        EXPECT_NEAR(result.ProbF, 2 / (1 + f), 2e-6);
        EXPECT_NEAR(result.T, t, 1e-6);
        EXPECT_NEAR(result.ProbT, 1 + t * (t * t + 6) / std::pow(t * t + 4, 1.5), 2e-6);
    }
}

// Welch's test: where one variance is next to nothing, its degrees of freedom are those of the other one
// alone, and for 2 degrees Student's tails are 1 - |t| / sqrt(t^2 + 2).
TEST(HypothesisTests, UnequalVariances) {
    const TFT result = Compare(20, 0.001F, 17, 3, 40, 3), mirrored = Compare(17, 3, 20, 0.001F, 3, 40);
    EXPECT_LT(result.ProbF, 1e-5);
    EXPECT_NEAR(result.T, std::sqrt(3.0), 1e-6);
    EXPECT_NEAR(result.ProbT, 1 - std::sqrt(3 / 5.0), 2e-6);
    EXPECT_EQ(mirrored.T, -result.T);
    EXPECT_EQ(mirrored.ProbT, result.ProbT);
    EXPECT_EQ(mirrored.F, result.F);
    // u = 0.02, v = 0.64, df = 0.66^2 / (0.02^2 / 49 + 0.64^2 / 24) = 25.5112 (Satterthwaite), t = 2.4618;
    // Student's tails of both by numerical integration.
    const TFT between = Compare(12, 1, 10, 4, 50, 25);
    EXPECT_NEAR(between.T, 2 / std::sqrt(0.66), 1e-6);
    EXPECT_NEAR(between.ProbT, 0.020913144, 2e-6);
}

TEST(HypothesisTests, VariancesOfZero) {
    const TFT one = Compare(1, 0, 2, 3, 5, 5);
    EXPECT_TRUE(std::isinf(one.F) && std::isfinite(one.T));
    EXPECT_EQ(one.ProbF, 0);
    for (const float sd : {0.0F, std::nanf("")}) {
        EXPECT_EQ(Raised<Exception>([=] { Compare(1, sd, 2, 0, 5, 5); }),
                  u"Problem in beta function calculation: coefficient a or b too big, or itmex too small.");
    }
}

TEST(HypothesisTests, ChiSquareOfBins) {
    struct {
        std::vector<float> bins1, bins2;
        std::int32_t count;
        float df, chiSquare;
        double prob;
    } const cases[] = {
        // closed forms: erfc(sqrt(x / 2)), e^(-x/2), (1 + x/2) e^(-x/2) for 1, 2, 4 degrees
        {{99, 8, 0, 2}, {-1, 2, 0, 8}, 3, 1, 7.2F, std::erfc(std::sqrt(3.6))},
        {{0, 10, 20, 30, 7}, {0, 30, 20, 10}, 3, 2, 20, std::exp(-10.0)},
        {{0, 3, 3, 3, 3, 3}, {0, 1, 1, 1, 1, 1}, 5, 4, 5, 3.5 * std::exp(-2.5)},
        {{0, 5, 5}, {0, 5, 5}, 2, 1, 0, 1},
    };
    float df = 0, chi = 0, prob = 0;
    for (const auto& [bins1, bins2, count, expectedDf, expectedChi, expectedProb] : cases) {
        ChiTest(bins1, bins2, count, df, chi, prob);
        EXPECT_EQ(df, expectedDf) << expectedChi;
        EXPECT_FLOAT_EQ(chi, expectedChi);
        EXPECT_NEAR(prob, expectedProb, 3e-6 * expectedProb) << expectedChi;
    }
    const std::vector<float> bins = {0, 0, 0};
    EXPECT_EQ(Raised<EArgumentException>([&] { ChiTest(bins, bins, 3, df, chi, prob); }),
              u"ChiTest needs arrays of one element more than the bin count");
    for (const std::int32_t count : {2, 0, -2147483647 - 1}) {  // no degree of freedom
        EXPECT_EQ(Raised<Exception>([&] { ChiTest(bins, bins, count, df, chi, prob); }),
                  u"Problem in gamma function calculation: invalid argument.");
    }
}

}  // namespace
}  // namespace Varnholt::Test
