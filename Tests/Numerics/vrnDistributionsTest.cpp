#include "VarnholtLib/Numerics/vrnDistributions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "Tests/Support/Raised.h"
#include "VarnholtLib/Numerics/vrnGammaFunctions.h"
#include "VarnholtLib/Numerics/vrnRoundingPrivate.h"

namespace Varnholt::Test {
namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

// Values computed with 50-digit arithmetic. The tolerances are the errors that the header states.
TEST(GammaFunctions, AgreeWithFiftyDigits) {
    const std::pair<float, double> logarithms[] = {// clang-format off
        {0.001F, 6.90717888538}, {0.5F, 0.572364942925}, {1.0001F, -5.7713342e-5}, {1.5F, -0.120782237635},
        {2, 0}, {50.5F, 146.519255491}, {1000, 5905.22042321}, {1e5F, 1051287.70897}};
    // clang-format on
    for (const auto& [x, expected] : logarithms)
        EXPECT_NEAR(gammln(x), expected, 5e-7 + 8e-8 * expected) << x;
    EXPECT_TRUE(gammln(0) == kInf && std::isnan(gammln(kNan)));
    const std::tuple<float, float, double, double, double> incomplete[] = {
        // clang-format off
        {0.1F, 0.001F, 0.526768568392, 0.473231431608, 1e-6}, {2, 6, 0.982648734763, 0.0173512652367, 1e-6},
        {10, 5, 0.0318280573062, 0.968171942694, 2e-5}, {100, 130, 0.997249591633, 0.00275040836731, 7e-5},
        {390, 390, 0.506733837916, 0.493266162084, 7e-5}, {7, 0, 0, 1, 0}};
    // clang-format on
    for (const auto& [a, x, p, q, tolerance] : incomplete) {
        EXPECT_NEAR(gammp(a, x), p, tolerance * p) << a << ' ' << x;
        EXPECT_NEAR(gammq(a, x), q, tolerance * (x < a + 1 ? 1 : q)) << a << ' ' << x;
    }
    const std::tuple<float, float, float, double, double> betas[] = {// clang-format off
        {0.5F, 0.5F, 0.5F, 0.5, 6e-6}, {0.1F, 0.5F, 5, 0.68335708498, 6e-6}, {0.5F, 2, 3, 0.6875, 6e-6},
        {0.9F, 5, 0.5F, 0.31664291502, 6e-6}, {0.01F, 1, 10, 0.0956179249912, 6e-6},
        {0.6F, 100, 80, 0.885574044074, 1e-4}, {1e-6F, 0.1F, 1, 0.251188643151, 6e-6}, {0, 3, 4, 0, 0},
        {1, 3, 4, 1, 0}, {0.5F, 5000, 5000, 0.498, 1e-3}};
    // clang-format on
    for (const auto& [x, a, b, expected, tolerance] : betas)
        EXPECT_NEAR(betai(a, b, x), expected, tolerance * expected) << x << ' ' << a << ' ' << b;
}

TEST(GammaFunctions, RaiseWhatTheyCannotCompute) {
    const auto p = [](float a, float x) { return [=] { return gammp(a, x); }; };
    const auto q = [](float a, float x) { return [=] { return gammq(a, x); }; };
    const auto beta = [](float a, float x) { return [=] { return betai(a, a, x); }; };
    float value = 0, gln = 0;
    const StringView invalidP = u"Problem in GAMMP - Invalide arguments.";
    const StringView invalidQ = u"Problem in gamma function calculation: invalid argument.";
    const StringView tooLarge = u"Problem in gamma function calculation: coefficient a too large.";
    const StringView outside = u"Problem in beta function calculation.";
    const StringView unsettled =
        u"Problem in beta function calculation: coefficient a or b too big, or itmex too small.";
    // clang-format off
    ExpectRaised<Exception>({
        {p(1, -0.1F), invalidP}, {q(0, 1), invalidQ}, {p(kNan, 1), invalidP}, {q(kNan, 1), invalidQ},
        {p(1000, 1000), tooLarge}, {q(2, kNan), tooLarge}, {q(1, 1e30F), tooLarge},
        {beta(1, -1e-9F), outside}, {beta(1, 1.0000001F), outside}, {beta(1e6F, 0.5F), unsettled},
        {[&] { gser(1, -1, value, gln); },
         u"Problem in gamma function calculation: coefficient x less than 0."}});
    // clang-format on
}

/// The series (up to x = a + 1) and the fraction in Extended throughout, with the roundings that the header
/// names.
float PlainSum(float a, float x) {
    Extended ap = a;
    float del = 1 / a, sum = del;
    do {
        ap += 1;
        del = static_cast<float>(Extended{del} * x / ap);
        sum += del;
    } while (!(std::fabs(Extended{del}) < std::fabs(Extended{sum}) * 3E-7L));
    return sum;
}

float PlainFraction(Extended a, Extended x) {
    float gold = 0, a0 = 1, a1 = static_cast<float>(x), b0 = 0, b1 = 1, fac = 1;
    for (int n = 1;; ++n) {
        const auto ana = static_cast<float>(n - a), anf = static_cast<float>(Extended{fac} * n);
        a0 = static_cast<float>((a1 + Extended{a0} * ana) * fac);
        b0 = static_cast<float>((b1 + Extended{b0} * ana) * fac);
        a1 = static_cast<float>(x * a0 + Extended{anf} * a1);
        b1 = static_cast<float>(x * b0 + Extended{anf} * b1);
        if (a1 == 0) continue;
        fac = static_cast<float>(1 / Extended{a1});
        const auto g = static_cast<float>(Extended{b1} * fac);
        if (std::fabs((Extended{g} - gold) / g) < 3E-7L) return g;
        gold = g;
    }
}

// Work in double must not show, to the bit. Shapes of few bits give ties, tiny ones leave the range of pairs.
TEST(GammaFunctions, RoundingsAreThoseOfExtended) {
    std::mt19937 random(11);
    std::uniform_real_distribution<float> share(0, 1);
    for (int round = 0; round < 200000; ++round) {
        const auto bits = static_cast<float>(static_cast<int>(random() >> (8 + round % 21)) + 1);
        const float a = std::ldexp(bits, round % 21 - 24 + static_cast<int>(random() % 7)) *
                        (round % 97 == 0 ? 1e-24F : 1.0F);
        const float x =
            2 * (a + 1) * (round % 2 == 0 ? share(random) : 0.25F * static_cast<float>(round % 8 + 1));
        const bool isSeries = x < Extended{a} + 1;
        float value = 0, gln = 0;
        (isSeries ? gser : gcf)(a, x, value, gln);
        const Extended factor = std::exp(Extended{a} * std::log(Extended{x}) - x - gammln(a));
        const auto expected = static_cast<float>((isSeries ? PlainSum(a, x) : PlainFraction(a, x)) * factor);
        ASSERT_EQ(value, expected) << a << ' ' << x;
        ASSERT_EQ(gln, gammln(a));
        const auto expression = [=]<typename W> { return (x - W{a} * bits) * gln; };
        ASSERT_EQ(Round32(expression), static_cast<float>(expression.operator()<Extended>()))
            << a << ' ' << x;
    }
}

TEST(Distributions, Normal) {
    for (double x = -36.99; x < 37; x += 0.0137) {
        const double expected = std::erfc(-x / std::sqrt(2.0)) / 2;
        ASSERT_NEAR(normp(x), expected, (x > -3 ? 2e-14 : x > -5.2 ? 1e-10 : 1e-8) * expected) << x;
        ASSERT_NEAR(normp(x), expected, 5e-16) << x;
        ASSERT_EQ(normp(std::fabs(x)), 1 - normp(-std::fabs(x))) << x;
    }
    EXPECT_TRUE(normp(-37) > 0 && normp(-38) == 0 && normp(kInf) == 1 && std::isnan(normp(kNan)));
}

// For the shapes 1 and 3 the density is e^-u / beta and u^2 e^-u / (2 beta).
TEST(Distributions, GammaDensity) {
    EXPECT_NEAR(gammf(3, 1, 2.5F), std::exp(-1.2) / 2.5, 1e-7);
    EXPECT_NEAR(gammf(75, 3, 2.5F), 450 * std::exp(-30.0) / 2.5, 1e-6 * 180 * std::exp(-30.0));
    EXPECT_TRUE(gammf(0, 2, 1) == 0 && gammf(0, 0.5F, 1) == kInf && std::isnan(gammf(-1, 2, 1)));
}

// The fit solves ln(alpha) - digamma(alpha) = A to 1E-3, and keeps the mean. Zeros count in the mean only.
TEST(Distributions, GammaFit) {
    TFloatGrid grid(2, 4);
    grid.SetBaseY(0);
    for (const auto& [row, value] : {std::pair{0, 1.5F}, {1, 9.0F}, {2, 0.0F}, {3, 40.0F}})
        grid.Put(2, row, value);
    float alpha = 0, beta = 0;
    Gamma(2, grid, alpha, beta);
    const double mean = 50.5 / 4, A = std::log(mean) - std::log(1.5 * 9 * 40) / 4;
    EXPECT_NEAR(alpha * beta, mean, 1e-6 * mean);
    const double digamma = (std::lgamma(alpha + 1e-4) - std::lgamma(alpha - 1e-4)) / 2e-4;
    EXPECT_NEAR(std::log(alpha) - digamma, A, 1e-3);
}

TEST(Distributions, GammaQuantiles) {
    // The last is chi-square with 5 degrees of freedom at 11.0705.
    const std::tuple<float, float, float, float> cases[] = {
        {2, 8, 10, 0.5F}, {2, 8, 40, 0.9F}, {5, 10, 1, 0.1F}, {9, 20, 180, 0.25F}, {2.5F, 2, 8, 0.95F}};
    for (const auto& [alpha, beta, x0, p] : cases) {
        // The trapezoids are right to 0.0001, and there is next to nothing below 0.0001 here.
        EXPECT_NEAR(gammp(alpha, gam_ptil(alpha, beta, x0, p) / beta), p, 0.0012) << alpha << ' ' << x0;
        EXPECT_NEAR(gammp(alpha, gam_ptil1(alpha, beta, x0, p) / beta), p, 0.001) << alpha << ' ' << x0;
    }
    EXPECT_EQ(gam_ptil1(1, 1, std::log(2.0F), 0.5F), 0) << "a start that meets the tolerance";
    EXPECT_EQ(gam_ptil1(1, 1, 1, kNan), 0);
    const auto search = [](auto quantile, float alpha, float beta, float x0, float p) {
        return [=] { return quantile(alpha, beta, x0, p); };
    };
    const StringView trapezoid = u"Problem in gam_ptil: the search for the quantile did not converge.";
    const StringView steps = u"Problem in gam_ptil1: the search for the quantile did not converge.";
    ExpectRaised<Exception>({
        {search(gam_ptil, 2, 0.05F, 1, 0.5F), trapezoid},       // too long steps
        {search(gam_ptil1, 100, 0.001F, 0.085F, 0.5F), steps},  // stepped over
        {search(gam_ptil1, 100, 0.001F, 0.115F, 0.5F), u"Problem in GAMMP - Invalide arguments."},
    });
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
    ExpectRaised<EArgumentException>(
        {{[] { return centil(1, 50, TFloatGrid(1, 2)); }, u"A percentile needs a column of 3 rows or more"},
         {[&] { return centil(-2, kNan, grid); }, u"A percentile needs a number of percent"}});
}

}  // namespace
}  // namespace Varnholt::Test
