#include "VarnholtLib/Numerics/vrnDistributions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "Tests/Support/Raised.h"
#include "VarnholtLib/Numerics/vrnGammaFunctions.h"

namespace Varnholt::Test {
namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

/// Both pieces of the approximation of normp are good to 1E-15, but that is an absolute error.
double RelativeErrorOfNormp(double x) {
    return x > -5.2 ? 1e-10 : 1e-8;
}

TEST(Distributions, Normal) {
    const std::pair<double, double> cases[] = {
        // computed with 50-digit arithmetic
        // clang-format off
        {-8, 6.22096057427e-16}, {-5, 2.86651571879e-7}, {-3.09, 0.00100078247661}, {-1, 0.158655253931}, {0, 0.5},
        {1.96, 0.975002104852}, {3, 0.998650101968}, {0.674489750196, 0.75}, {2.57582930355, 0.995},
        // clang-format on
    };
    for (const auto& [x, expected] : cases) {
        EXPECT_NEAR(normp(x), expected, RelativeErrorOfNormp(x) * expected) << x;
    }
    for (double x = -36.9; x < 37; x += 0.0137) {
        const double expected = std::erfc(-x / std::sqrt(2.0)) / 2;
        ASSERT_NEAR(normp(x), expected, std::min(1e-15, RelativeErrorOfNormp(x) * expected) + 1e-16 * (x > 0))
            << x;
        ASSERT_EQ(normp(std::fabs(x)), 1 - normp(-std::fabs(x))) << x;
    }
    EXPECT_GT(normp(-37), 0);
    EXPECT_EQ(normp(-38), 0);
    EXPECT_EQ(normp(HUGE_VAL), 1);
    EXPECT_TRUE(std::isnan(normp(std::nan(""))));
}

TEST(Distributions, GammaDensity) {
    for (const float alpha : {0.5F, 1.0F, 2.0F, 7.5F, 60.0F}) {
        for (const float x : {0.1F, 0.9F, 3.0F, 75.0F}) {
            const double u = x / 2.5, logGamma = std::lgamma(alpha);
            const double expected = std::exp(std::log(u) * (alpha - 1) - u - std::log(2.5) - logGamma);
            // the absolute error of gammln is a relative one here
            EXPECT_NEAR(gammf(x, alpha, 2.5F), expected, (1e-6 + 1.2e-7 * logGamma) * expected + 1e-45)
                << alpha;
        }
    }
    EXPECT_EQ(gammf(0, 2, 1), 0);
    EXPECT_EQ(gammf(0, 0.5F, 1), kInf);
    EXPECT_TRUE(std::isnan(gammf(-1, 2, 1)));
}

// The fit solves ln(alpha) - digamma(alpha) = A to 1E-3, and keeps the mean.
TEST(Distributions, GammaFit) {
    std::mt19937 random(5);
    for (const float shape : {0.8F, 2.0F, 9.0F}) {
        std::gamma_distribution<float> values(shape, 3);
        TFloatGrid grid(2, 4000);
        grid.SetBaseY(0);
        double sum = 0, logs = 0;
        for (int row = 0; row < 4000; ++row) {
            const float value = row % 50 == 0 ? 0 : values(random);  // zeros count in the mean only
            grid.Put(2, row, value);
            sum += value;
            if (value > 0) logs += std::log(value);
        }
        float alpha = 0, beta = 0;
        Gamma(2, grid, alpha, beta);
        EXPECT_NEAR(alpha * beta, sum / 4000, 1e-6 * sum / 4000);
        const double digamma = (std::lgamma(alpha + 1e-4) - std::lgamma(alpha - 1e-4)) / 2e-4;
        EXPECT_NEAR(std::log(alpha) - digamma, std::log(sum / 4000) - logs / 4000, 1e-3) << shape;
        EXPECT_EQ(Raised<EGridException>([&] { Gamma(3, grid, alpha, beta); }),
                  u"Index out of bounds in TAbstractGrid.CheckBounds\rX = 3");
    }
}

TEST(Distributions, GammaQuantiles) {
    const std::tuple<float, float, float, float> cases[] = {
        {2, 8, 10, 0.5F}, {2, 8, 40, 0.9F}, {5, 10, 1, 0.1F}, {5, 10, 200, 0.99F}, {9, 20, 180, 0.25F},
    };
    for (const auto& [alpha, beta, x0, p] : cases) {
        // The trapezoids are good to 0.0001, and what lies below 0.0001 is nothing here.
        EXPECT_NEAR(gammp(alpha, gam_ptil(alpha, beta, x0, p) / beta), p, 0.0012) << alpha << ' ' << x0;
        EXPECT_NEAR(gammp(alpha, gam_ptil1(alpha, beta, x0, p) / beta), p, 0.001) << alpha << ' ' << x0;
    }
    // Chi-square with 5 degrees, computed with 50-digit arithmetic; its density is 0.01 there.
    EXPECT_NEAR(gam_ptil(2.5F, 2, 8, 0.95F), 11.07049769, 0.15);
    EXPECT_NEAR(gam_ptil1(2.5F, 2, 8, 0.95F), 11.07049769, 0.15);
    EXPECT_EQ(gam_ptil1(1, 1, std::log(2.0F), 0.5F), 0) << "a start that meets the tolerance";
    EXPECT_EQ(gam_ptil1(1, 1, 1, kNan), 0);
}

TEST(Distributions, QuantileSearchesEnd) {
    constexpr auto kTrapezoid = u"Problem in gam_ptil: the search for the quantile did not converge.";
    constexpr auto kSteps = u"Problem in gam_ptil1: the search for the quantile did not converge.";
    EXPECT_EQ(Raised<Exception>([] { (void)gam_ptil(2, 0.05F, 1, 0.5F); }), kTrapezoid) << "too long steps";
    for (const float bad : {kNan, kInf, -kInf}) {
        EXPECT_EQ(Raised<Exception>([&] { (void)gam_ptil(2, 8, 10, bad); }), kTrapezoid) << bad;
        EXPECT_EQ(Raised<Exception>([&] { (void)gam_ptil(bad, 8, 10, 0.5F); }), kTrapezoid) << bad;
    }
    EXPECT_EQ(Raised<Exception>([] { (void)gam_ptil1(2, 1, 1, 1.5F); }), kSteps);
    EXPECT_EQ(Raised<Exception>([] { (void)gam_ptil1(100, 0.001F, 0.085F, 0.5F); }), kSteps);  // stepped over
    EXPECT_EQ(Raised<Exception>([] { (void)gam_ptil1(100, 0.001F, 0.115F, 0.5F); }),
              u"Problem in GAMMP - Invalide arguments.");
}

TEST(Distributions, Percentiles) {
    TFloatGrid grid(2, 7);
    grid.SetBaseX(-3);
    grid.SetBaseY(-3);
    std::int32_t y = -3;
    for (const float value : {40.0F, 10.0F, 50.0F, 30.0F, 20.0F, -1e9F, 1e9F}) grid.Put(-2, y++, value);
    const std::pair<float, float> cases[] = {
        {0, 10},  {16, 10}, {17, 15}, {20, 15}, {25, 20},  {40, 25}, {45, 30},   {50, 30},
        {65, 40}, {70, 45}, {83, 50}, {84, 50}, {100, 50}, {-5, 10}, {kInf, 50}, {-kInf, 10},
    };
    for (const auto& [percent, expected] : cases) EXPECT_EQ(centil(-2, percent, grid), expected) << percent;
    EXPECT_EQ(Raised<EArgumentException>([] { (void)centil(1, 50, TFloatGrid(1, 2)); }),
              u"A percentile needs a column of 3 rows or more");
    EXPECT_EQ(Raised<EArgumentException>([] { (void)centil(1, kNan, TFloatGrid(1, 9)); }),
              u"A percentile needs a number of percent");
    EXPECT_EQ(Raised<EGridException>([] { (void)centil(0, 50, TFloatGrid(1, 9)); }),
              u"Index out of bounds in TAbstractGrid.CheckBounds\rX = 0");
}

}  // namespace
}  // namespace Varnholt::Test
