#include "VarnholtLib/Numerics/vrnStatistics.h"

#include <gmock/gmock.h>

#include <cmath>
#include <set>

#include "Platform/Runtime/Random.h"
#include "Tests/Data/GridTestSupport.h"

namespace Varnholt::Test {
namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

TEST(Descriptive, ScoresAndTails) {
    EXPECT_TRUE(ZScore(5, 2, 0) == 2 && ZScore(5, 2, 1.5) == 2);
    EXPECT_TRUE(Zp(0) == 100 && Zp(1) == 100 && std::isnan(Zp(-0.1F)) && std::isnan(Zp(1.1F)));
    for (float p = 0.0005F; p < 1; p += 0.0005F) {  // the formula in Extended, to the bit
        const Extended wide = (std::pow(Extended{p}, 0.135L) - std::pow(1 - Extended{p}, 0.135L)) / 0.1975L;
        ASSERT_EQ(Zp(p), static_cast<float>(wide)) << p;
    }
    EXPECT_TRUE(Probability(0) == 0.5 && std::isnan(Probability(kNan)));
    for (double x = 0.01; x < 5.6; x += 0.01) {
        const double expected = std::erfc(x / std::sqrt(2.0)) / 2;
        ASSERT_NEAR(Probability(x), expected, 5e-4 * expected) << x;
        ASSERT_EQ(Probability(-x), 1 - Probability(x)) << x;
    }
}

TEST(Descriptive, LeavesMissingValuesOut) {
    const float above = std::nextafter(-999.0F, 0.0F), below = std::nextafter(-1000.0F, -kInf);
    const std::tuple<TFloatArray, float, float, float, float> cases[] = {
        // clang-format off
        {ArrayOf({-999, -1000, -999.5F}), -999, -999, -999, -999},
        {ArrayOf({-999, 4, -1000, 8, -999.5F}), 6, 4, 8, std::sqrt(8.0F)},
        {ArrayOf({7, -999}), 7, 7, 7, -999}, {ArrayOf({above, above}), above, above, above, 0},
        {ArrayOf({below, below}), below, below, below, 0}, {ArrayOf({0.1F, 0.1F, 0.1F}), 0.1F, 0.1F, 0.1F, 0},
        {ArrayOf({16777216, 1, 1, 16777216}), 8388608.5F, 1, 16777216, 9686330.0F}};
    // clang-format on
    for (const auto& [array, mean, min, max, sd] : cases) {
        const std::string name = testing::PrintToString(array.GetBuffer());
        EXPECT_EQ(std::tuple(Mean2(array), Min2(array), Max2(array)), std::tuple(mean, min, max)) << name;
        EXPECT_FLOAT_EQ(StDev2(array), sd) << name;
    }
    const TFloatArray odd = ArrayOf({kNan, 3, 5});
    EXPECT_TRUE(std::isnan(Mean2(odd)) && std::isnan(StDev2(odd)) && std::isnan(PPCC2(odd)));
    EXPECT_TRUE(Min2(odd) == 3 && Max2(odd) == 5);
}

TEST(Descriptive, ProbabilityPlotCorrelation) {
    EXPECT_EQ(PPCC2(ArrayOf({-999, -1000})), -999) << "nothing known";
    EXPECT_EQ(PPCC2(ArrayOf({0.1F, 0.1F, 0.1F, 0.1F})), -999) << "constant values";
    // Filliben's medians for n = 3 are 0.2063, 0.5, 0.7937: the quantiles are -a, 0, a, so that for 1, 2, 6
    // the correlation is 5 a / sqrt(14 * 2 a^2).
    EXPECT_NEAR(PPCC2(ArrayOf({-999, 6, 1, -1000, 2})), 5 / std::sqrt(28.0), 1e-6);
    // On its own quantiles, (i - 0.3175) / (n + 0.365), a sample is linear, except for its two ends.
    TFloatArray values(200);
    for (int i = 1; i <= 200; ++i)
        values.WriteFloat(i, 3 + 2 * Zp((static_cast<float>(i) - 0.3175F) / 200.365F));
    EXPECT_NEAR(PPCC2(values), 1, 1e-5);
}

// By the definition, for the sorted values 1, 2, 6 with mean 3 and standard deviation sqrt(7).
TEST(Descriptive, KolmogorovSmirnov) {
    const auto significance = [](double c, double distance) {
        const double lambda = (std::sqrt(c) + 0.12 + 0.11 / std::sqrt(c)) * distance;
        double sum = 0;
        for (int j = 1; j < 100; ++j) sum += (j % 2 == 1 ? 2 : -2) * std::exp(-2 * lambda * lambda * j * j);
        return sum;
    };
    const auto p = [](double x) { return (1 - Probability((x - 3) / std::sqrt(14.0))) / 2 + 0.5; };
    const std::tuple<const char*, TFloatArray, double> cases[] = {
        {"three values", ArrayOf({6, 1, 2}), significance(3, std::max(p(2) - 1 / 3.0, 1 - p(6)))},
        {"the index counts", ArrayOf({6, 1, 2}, 0), significance(3, p(2))},
        // Codes before the first value move the base of what is left, and count in the size.
        {"codes", ArrayOf({-999, -999, 6, 1, 2}), significance(3, std::max(4 / 5.0 - p(2), 1 - p(6)))},
        {"only codes", ArrayOf({-999, -1000}), -999},
        {"the terms do not settle", ArrayOf({5}), 1},
        {"equal values", ArrayOf({100, 100}), significance(2, 0.99999 - 0.5)},
    };
    for (const auto& [name, array, expected] : cases) EXPECT_NEAR(KS2(array), expected, 1e-7) << name;
    for (const float odd : {kNan, kInf, -kInf})
        EXPECT_TRUE(std::isnan(KS2(ArrayOf({1, 2, odd, 3}))) && std::isnan(KS2(ArrayOf({odd})))) << odd;
}

TEST(Descriptive, CorrelationAndSquaredDifferences) {
    const TFloatArray four = ArrayOf({1, 2, 3, 4});
    const std::tuple<TFloatArray, TFloatArray, double> cases[] = {
        // clang-format off
        {ArrayOf({1, 2}), ArrayOf({1, 2}), 0}, {ArrayOf({1, 2, 3}), ArrayOf({9, 7, 5}), -1},
        {ArrayOf({4, 4, 4}), ArrayOf({1, 2, 3}), 0}, {four, ArrayOf({1, 3, 2, 4, 9}), .8},
        {ArrayOf({-999, 2, 3, 4}), four, 0.7756257}};
    // clang-format on
    for (const auto& [x, y, expected] : cases)
        EXPECT_NEAR(Corr(x, y), expected, 1e-6) << testing::PrintToString(y.GetBuffer());
    const auto corr = [&](TFloatArray x, TFloatArray y) { return [x, y] { return Corr(x, y); }; };
    const String missing = u"Index out of bounds in TFloatArray.GetFloat\rIndex = ";
    ExpectRaised<EGridException>({{corr(ArrayOf({1, 2, 3}, 0), four), missing + u"3"},
                                  {corr(four, ArrayOf({1, 2, 3, 4, 5}, 3)), missing + u"1"}});
    const std::vector<float> x = {1, 2, 3, 4}, y = {2, 0, 3, 9, kNan}, one = {1}, two = {2};
    EXPECT_FLOAT_EQ(RMSE(x, y), std::sqrt(30 / 3.0F)) << "over one less than the number of values";
    EXPECT_TRUE(RMSE(one, two) == kInf && std::isnan(RMSE(one, one)));
    ExpectRaised<EArgumentException>(
        {{[&] { return RMSE(y, x); }, u"RMSE needs a second array as long as the first"},
         {[&] { return RMSE({}, x); }, u"RMSE needs at least one value"}});
}

TEST(Descriptive, RandomNumbersAndBootstrapSamples) {
    SetRandomSeed(1);
    double sum = 0, squares = 0;
    for (int i = 0; i < 100000; ++i) {
        const double z = (RandN(100, 5) - 100) / 5.0;
        sum += z;
        squares += z * z;
    }
    EXPECT_NEAR(sum / 100000, 0, 5 / std::sqrt(100000));  // 5 standard errors
    EXPECT_NEAR(squares / 100000, 1, 5 * std::sqrt(1.9 / 100000));

    TFloatGrid grid(1, 1);
    bsample(ArrayOf({1, 2, 4, 8, 16}), 200, grid);
    EXPECT_TRUE(grid.GetCountX() == 200 && grid.GetCountY() == 5);
    std::set<float> drawn;
    for (std::int32_t row = 1; row <= 5; ++row)
        drawn.insert(grid.GetRow(row).begin(), grid.GetRow(row).end());
    EXPECT_EQ(drawn, (std::set<float>{1, 2, 4, 8})) << "the last value is never drawn";
    bsample(ArrayOf({3}), 2, grid);
    ExpectRaised<EGridException>(
        {{[&] { bsample(ArrayOf({1}), 0, grid); }, u"Can't create a grid with a dimension less than 1"}});
    EXPECT_EQ(grid.Get(2, 1), 3) << "the only value is drawn, and a failure changes nothing";
}

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
        EXPECT_NEAR(result.F, f, 1e-6) << sd1;
        EXPECT_NEAR(result.ProbF, 2 / (1 + f), 2e-6) << sd1;
        EXPECT_NEAR(result.T, t, 1e-6) << sd1;
        EXPECT_NEAR(result.ProbT, 1 + t * (t * t + 6) / std::pow(t * t + 4, 1.5), 2e-6) << sd1;
    }
}

// Welch's test. With u = 0.02 and v = 0.64, df = 0.66^2 / (0.02^2 / 49 + 0.64^2 / 24) = 25.5112
// (Satterthwaite); Student's tails by numerical integration.
TEST(HypothesisTests, UnequalVariances) {
    const TFT result = Compare(12, 1, 10, 4, 50, 25), mirrored = Compare(10, 4, 12, 1, 25, 50);
    EXPECT_NEAR(result.T, 2 / std::sqrt(0.66), 1e-6);
    EXPECT_NEAR(result.ProbT, 0.020913144, 2e-6);
    EXPECT_EQ(std::tuple(mirrored.T, mirrored.ProbT, mirrored.F),
              std::tuple(-result.T, result.ProbT, result.F));
    const TFT constant = Compare(1, 0, 2, 3, 5, 5);
    EXPECT_TRUE(std::isinf(constant.F) && std::isfinite(constant.T) && constant.ProbF == 0);
    const StringView tooBig =
        u"Problem in beta function calculation: coefficient a or b too big, or itmex too small.";
    ExpectRaised<Exception>(
        {{[] { Compare(1, 0, 2, 0, 5, 5); }, tooBig}, {[] { Compare(1, NAN, 2, 0, 5, 5); }, tooBig}});
}

TEST(HypothesisTests, ChiSquareOfBins) {
    using TBins = std::vector<float>;
    const std::tuple<TBins, TBins, std::int32_t, float, float, double> cases[] = {
        // closed forms: erfc(sqrt(x / 2)), e^(-x/2), (1 + x/2) e^(-x/2) for 1, 2, 4 degrees
        {{99, 8, 0, 2}, {-1, 2, 0, 8}, 3, 1, 7.2F, std::erfc(std::sqrt(3.6))},
        {{0, 10, 20, 30, 7}, {0, 30, 20, 10}, 3, 2, 20, std::exp(-10.0)},
        {{0, 3, 3, 3, 3, 3}, {0, 1, 1, 1, 1, 1}, 5, 4, 5, 3.5 * std::exp(-2.5)},
    };
    float df = 0, chi = 0, prob = 0;
    for (const auto& [bins1, bins2, count, expectedDf, expectedChi, expectedProb] : cases) {
        ChiTest(bins1, bins2, count, df, chi, prob);
        EXPECT_EQ(df, expectedDf) << expectedChi;
        EXPECT_FLOAT_EQ(chi, expectedChi);
        EXPECT_NEAR(prob, expectedProb, 3e-6 * expectedProb) << expectedChi;
    }
    const TBins bins = {0, 0, 0}, more = {0, 0, 0, 0};
    const auto test = [&](std::span<const float> bins1, std::span<const float> bins2, std::int32_t count) {
        return [&, bins1, bins2, count] { ChiTest(bins1, bins2, count, df, chi, prob); };
    };
    const StringView tooShort = u"ChiTest needs arrays of one element more than the bin count";
    ExpectRaised<EArgumentException>({{test(bins, more, 3), tooShort}, {test(more, bins, 3), tooShort}});
    const StringView noFreedom = u"Problem in gamma function calculation: invalid argument.";
    ExpectRaised<Exception>(
        {{test(bins, bins, 2), noFreedom}, {test(bins, bins, -2147483647 - 1), noFreedom}});
}

}  // namespace
}  // namespace Varnholt::Test
