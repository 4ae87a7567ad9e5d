#include "VarnholtLib/Numerics/vrnDescriptive.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <vector>

#include "Platform/Runtime/Random.h"
#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

TFloatArray Array(const std::vector<float>& values, std::int32_t base = 1) {
    TFloatArray array(static_cast<std::int32_t>(values.size()));
    std::ranges::copy(values, array.GetBuffer().begin());
    array.SetBase(base);
    return array;
}

TEST(Descriptive, ScoresAndTails) {
    EXPECT_EQ(ZScore(5, 2, 0), 2);
    EXPECT_EQ(Zp(0), 100);
    EXPECT_EQ(Zp(1), 100);
    EXPECT_EQ(Zp(0.5F), 0);
    EXPECT_TRUE(std::isnan(Zp(-0.1F)) && std::isnan(Zp(1.1F)) && std::isnan(Zp(kNan)));
    // Computed with 50-digit arithmetic; the formula is good to 0.011.
    for (const auto& [p, z] :
         {std::pair{0.75F, 0.674489750196}, {0.95F, 1.64485362695}, {0.99F, 2.32634787404}}) {
        EXPECT_NEAR(Zp(p), z, 0.011) << p;
    }
    for (float p = 0.0005F; p < 1; p += 0.0005F) {  // the formula in Extended, to the bit
        const Extended wide = (std::pow(Extended{p}, 0.135L) - std::pow(1 - Extended{p}, 0.135L)) / 0.1975L;
        ASSERT_EQ(Zp(p), static_cast<float>(wide)) << p;
    }
    EXPECT_EQ(Probability(0), 0.5);
    EXPECT_TRUE(std::isnan(Probability(std::nan(""))));
    for (double x = 0.01; x < 5.6; x += 0.01) {
        const double expected = std::erfc(x / std::sqrt(2.0)) / 2;
        ASSERT_NEAR(Probability(x), expected, 6e-4 * expected) << x;
        ASSERT_EQ(Probability(-x), 1 - Probability(x)) << x;
    }
}

TEST(Descriptive, LeavesMissingValuesOut) {
    const float above = std::nextafter(-999.0F, 0.0F), below = std::nextafter(-1000.0F, -kInf);
    struct {
        std::vector<float> values;
        float mean, min, max, sd;
    } const cases[] = {
        {{-999, -1000, -999.5F}, -999, -999, -999, -999},
        {{-999, 4, -1000, 8, -999.5F}, 6, 4, 8, std::sqrt(8.0F)},
        {{7, -999}, 7, 7, 7, -999},
        {{above, above}, above, above, above, 0},
        {{below, below}, below, below, below, 0},
        {{0.1F, 0.1F, 0.1F}, 0.1F, 0.1F, 0.1F, 0},
        {{16777216, 1, 1, 16777216}, 8388608.5F, 1, 16777216, 9686330.0F},
    };
    for (const auto& [values, mean, min, max, sd] : cases) {
        const TFloatArray array = Array(values);
        const std::string name = testing::PrintToString(values);
        EXPECT_EQ(Mean2(array), mean) << name;
        EXPECT_EQ(Min2(array), min) << name;
        EXPECT_EQ(Max2(array), max) << name;
        EXPECT_FLOAT_EQ(StDev2(array), sd) << name;
    }
    const TFloatArray odd = Array({3, kNan, 5});
    EXPECT_TRUE(std::isnan(Mean2(odd)) && std::isnan(StDev2(odd)) && std::isnan(PPCC2(odd)));
    EXPECT_EQ(Min2(odd), 3);
    EXPECT_EQ(Max2(odd), 5);
}

TEST(Descriptive, ProbabilityPlotCorrelation) {
    for (const auto& values : {std::vector<float>{-999, -1000}, {5}, {0.1F, 0.1F, 0.1F, 0.1F}}) {
        EXPECT_EQ(PPCC2(Array(values)), -999) << testing::PrintToString(values);
    }
    // Filliben's medians for n = 3 are 0.2063, 0.5, 0.7937: the quantiles are -a, 0, a, so that for 1, 2, 6
    // the correlation is 5 a / sqrt(14 * 2 a^2).
    EXPECT_NEAR(PPCC2(Array({-999, 6, 1, -1000, 2})), 5 / std::sqrt(28.0), 1e-6);
    // On its own quantiles, (i - 0.3175) / (n + 0.365), a sample lies on a line, but for its two ends.
    std::vector<float> values;
    for (int i = 1; i <= 200; ++i) values.push_back(3 + 2 * Zp((static_cast<float>(i) - 0.3175F) / 200.365F));
    EXPECT_NEAR(PPCC2(Array(values)), 1, 1e-5);
}

// After the definition, for the sorted values 1, 2, 6 with mean 3 and standard deviation sqrt(7).
TEST(Descriptive, KolmogorovSmirnov) {
    const auto significance = [](double c, double distance) {
        const double lambda = (std::sqrt(c) + 0.12 + 0.11 / std::sqrt(c)) * distance;
        double sum = 0;
        for (int j = 1; j < 100; ++j) sum += (j % 2 == 1 ? 2 : -2) * std::exp(-2 * lambda * lambda * j * j);
        return sum;
    };
    const auto p = [](double x) { return (1 - Probability((x - 3) / std::sqrt(14.0))) / 2 + 0.5; };
    EXPECT_NEAR(KS2(Array({6, 1, 2})), significance(3, std::max(p(2) - 1 / 3.0, 1 - p(6))), 1e-6);
    EXPECT_NEAR(KS2(Array({6, 1, 2}, 0)), significance(3, p(2)), 1e-6) << "the index counts";
    // Codes before the first value move the base of what is left, and count in the size.
    EXPECT_NEAR(KS2(Array({-999, -999, 6, 1, 2})), significance(3, std::max(4 / 5.0 - p(2), 1 - p(6))), 1e-6);
    EXPECT_EQ(KS2(Array({-999, -1000})), -999);
    EXPECT_EQ(KS2(Array({-1000.1F, -1200})), -999) << "no value above -999";
    EXPECT_EQ(KS2(Array({5})), 1) << "the terms do not settle";
    for (const float odd : {kNan, kInf, -kInf}) {
        EXPECT_TRUE(std::isnan(KS2(Array({1, 2, odd, 3}))) && std::isnan(KS2(Array({odd})))) << odd;
    }
}

TEST(Descriptive, Correlation) {
    struct {
        std::vector<float> x, y;
        double expected;
    } const cases[] = {
        {{1, 2}, {1, 2}, 0},
        {{1, 2, 3}, {5, 7, 9}, 1},
        {{1, 2, 3}, {9, 7, 5}, -1},
        {{4, 4, 4}, {1, 2, 3}, 0},
        {{1, 2, 3, 4}, {1, 3, 2, 4, 9}, .8},
        {{-999, 2, 3, 4}, {1, 2, 3, 4}, 0.7756257},
    };
    for (const auto& [x, y, expected] : cases) {
        EXPECT_NEAR(Corr(Array(x), Array(y)), expected, 1e-6) << testing::PrintToString(x);
    }
    for (const auto& [base1, count2, base2, index] :
         {std::tuple{0, 4U, 1, u"4"}, {2, 4, 1, u"1"}, {1, 3, 1, u"4"}, {1, 4, 0, u"4"}, {1, 9, 3, u"1"}}) {
        const TFloatArray array1 = Array({1, 2, 3, 4}, base1),
                          array2 = Array(std::vector<float>(count2), base2);
        EXPECT_EQ(Raised<EGridException>([&] { (void)Corr(array1, array2); }),
                  u"Index out of bounds in TFloatArray.GetFloat\rIndex = " + String(index));
    }
}

TEST(Descriptive, RootOfSquaredDifferences) {
    const std::vector<float> x = {1, 2, 3, 4}, y = {2, 0, 3, 9, kNan}, one = {1}, two = {2};
    EXPECT_FLOAT_EQ(RMSE(x, y), std::sqrt(30 / 3.0F)) << "over one less than the number of values";
    EXPECT_EQ(RMSE(one, two), kInf);
    EXPECT_TRUE(std::isnan(RMSE(one, one)));
    EXPECT_EQ(Raised<EArgumentException>([&] { (void)RMSE(y, x); }),
              u"RMSE needs a second array as long as the first");
    EXPECT_EQ(Raised<EArgumentException>([&] { (void)RMSE({}, x); }), u"RMSE needs at least one value");
}

TEST(Descriptive, RandomNumbersAndBootstrapSamples) {
    SetRandomSeed(1);
    double sum = 0, squares = 0;
    for (int i = 0; i < 100000; ++i) {
        const double z = (RandN(100, 5) - 100) / 5.0;
        ASSERT_LE(std::fabs(z), 6);
        sum += z;
        squares += z * z;
    }
    EXPECT_NEAR(sum / 100000, 0, 5 / std::sqrt(100000));  // 5 standard errors
    EXPECT_NEAR(squares / 100000, 1, 5 * std::sqrt(1.9 / 100000));

    TFloatGrid grid(1, 1);
    bsample(Array({1, 2, 4, 8, 16}), 200, grid);
    EXPECT_EQ(grid.GetCountX(), 200);
    EXPECT_EQ(grid.GetCountY(), 5);
    std::set<float> drawn;
    for (std::int32_t row = 1; row <= 5; ++row)
        drawn.insert(grid.GetRow(row).begin(), grid.GetRow(row).end());
    EXPECT_EQ(drawn, (std::set<float>{1, 2, 4, 8})) << "the last value is never drawn";
    bsample(Array({3}), 2, grid);
    EXPECT_EQ(grid.Get(2, 1), 3) << "unless it is the only one";
    EXPECT_EQ(Raised<EGridException>([&] { bsample(Array({1}), 0, grid); }),
              u"Can't create a grid with a dimension less than 1");
    EXPECT_EQ(Raised<EGridException>([&] { bsample(Array({1}, 2), 1, grid); }),
              u"Index out of bounds in TFloatArray.GetFloat\rIndex = 1");
    EXPECT_EQ(grid.Get(2, 1), 3) << "a failure changes nothing";
}

}  // namespace
}  // namespace Varnholt::Test
