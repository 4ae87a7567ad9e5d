#include "VarnholtLib/Numerics/vrnGammaFunctions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "Tests/Support/Raised.h"
#include "VarnholtLib/Numerics/vrnRoundingPrivate.h"

// Values marked "50 digits" were computed with 50-digit arithmetic. Tolerances: a float has 6E-8, the Lanczos
// series with six coefficients 2E-10, and series and fractions stop at 3E-7 and round at each of up to 100
// terms. The absolute error of ln Gamma(a), 6E-8 of its value, is a relative one of x^a e^-x / Gamma(a).

namespace Varnholt::Test {
namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

TEST(GammaFunctions, LogarithmOfGamma) {
    const std::pair<float, double> cases[] = {
        // 50 digits
        // clang-format off
        {0.001F, 6.90717888538}, {0.1F, 2.25271265173}, {0.5F, 0.572364942925}, {1, 0}, {1.0001F, -5.7713342e-5},
        {1.5F, -0.120782237635}, {1.9999F, -4.2275209e-5}, {2, 0}, {2.5F, 0.284682870473}, {3.5F, 1.20097360235},
        {10, 12.8018274801}, {50.5F, 146.519255491}, {100, 359.13420537}, {1000, 5905.22042321}, {1e5F, 1051287.70897},
        // clang-format on
    };
    for (const auto& [x, expected] : cases) {
        EXPECT_NEAR(gammln(x), expected, 5e-7 * std::max(1.0, expected)) << x;
    }
    EXPECT_EQ(gammln(0), kInf);
    EXPECT_TRUE(std::isnan(gammln(kNan)));
}

TEST(GammaFunctions, IncompleteGamma) {
    struct {
        float a, x;
        double p, q;
    } const cases[] = {
        // 50 digits
        // clang-format off
        {0.1F, 0.001F, 0.526768568392, 0.473231431608}, {0.1F, 1, 0.975872656274, 0.0241273437263},
        {0.5F, 0.5F, 0.682689492137, 0.317310507863}, {1, 1, 0.632120558829, 0.367879441171},
        {1.5F, 0.3F, 0.103567626658, 0.896432373342}, {2, 1, 0.264241117657, 0.735758882343},
        {2, 6, 0.982648734763, 0.0173512652367}, {5, 5, 0.559506714935, 0.440493285065},
        {10, 5, 0.0318280573062, 0.968171942694}, {10, 10, 0.542070285528, 0.457929714472},
        {10, 20, 0.995004587692, 0.00499541230831}, {50, 50, 0.518808315472, 0.481191684528},
        {100, 80, 0.0171083130351, 0.982891686965}, {100, 100, 0.513298798279, 0.486701201721},
        {100, 130, 0.997249591633, 0.00275040836731}, {7, 0, 0, 1},
        // clang-format on
    };
    for (const auto& [a, x, p, q] : cases) {
        const double tolerance = 2e-6 + 1e-7 * a * std::log(1.0 + a);
        EXPECT_NEAR(gammp(a, x), p, tolerance * p) << a << ' ' << x;
        EXPECT_NEAR(gammq(a, x), q, tolerance * (x < a + 1 ? 1 : q)) << a << ' ' << x;
    }
}

TEST(GammaFunctions, IncompleteBeta) {
    struct {
        float x, a, b;
        double expected;
    } const cases[] = {
        // 50 digits
        // clang-format off
        {0.5F, 0.5F, 0.5F, 0.5}, {0.1F, 0.5F, 5, 0.68335708498}, {0.5F, 2, 3, 0.6875}, {0.9F, 5, 0.5F, 0.31664291502},
        {0.01F, 1, 10, 0.0956179249912}, {0.3F, 10, 20, 0.364004081072}, {0.5F, 50, 50, 0.5},
        {0.6F, 100, 80, 0.885574044074}, {0.999F, 0.2F, 0.2F, 0.867798708271}, {1e-6F, 0.1F, 1, 0.251188643151},
        {0, 3, 4, 0}, {1, 3, 4, 1},
        // clang-format on
    };
    for (const auto& [x, a, b, expected] : cases) {
        const double tolerance = 3e-6 + 1e-7 * (a + b) * std::log(1 + a + b);
        EXPECT_NEAR(betai(a, b, x), expected, tolerance * expected) << x << ' ' << a << ' ' << b;
    }
}

// P + Q = 1; P(a, x) - P(a + 1, x) = x^a e^-x / Gamma(a + 1), also across the border between series and
// fraction; I_x(a, b) = 1 - I_(1-x)(b, a).
TEST(GammaFunctions, IdentitiesOverRandomArguments) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> shapes(0.05F, 60), shares(0, 1);
    for (int round = 0; round < 20000; ++round) {
        const float a = shapes(random), b = shapes(random), x = 2 * a * shares(random), u = shares(random);
        ASSERT_NEAR(gammp(a, x) + gammq(a, x), 1, 1.2e-7) << a << ' ' << x;
        const double step = std::exp(a * std::log(double{x}) - x - std::lgamma(a + 1.0));
        ASSERT_NEAR(gammp(a, x) - gammp(a + 1, x), step, 4e-5) << a << ' ' << x;
        ASSERT_NEAR(betai(a, b, u) + betai(b, a, 1 - u), 1, 1e-4) << a << ' ' << b << ' ' << u;
    }
}

TEST(GammaFunctions, RaiseWhatTheyCanNotCompute) {
    const auto raised = [](auto function, auto... arguments) {
        return Raised<Exception>([&] { (void)function(arguments...); });
    };
    for (const auto& [a, x] : {std::pair{1.0F, -0.1F}, {0, 1}, {-2, 1}, {kNan, 1}, {1, -kInf}}) {
        EXPECT_EQ(raised(gammp, a, x), u"Problem in GAMMP - Invalide arguments.") << a;
        EXPECT_EQ(raised(gammq, a, x), u"Problem in gamma function calculation: invalid argument.") << a;
    }
    constexpr auto kTooLarge = u"Problem in gamma function calculation: coefficient a too large.";
    for (const auto& [a, x] : {std::pair{1000.0F, 1000.0F}, {2, kNan}, {2, kInf}, {kInf, 1}, {1, 1e30F}}) {
        EXPECT_EQ(raised(gammp, a, x), kTooLarge) << a << ' ' << x;
        EXPECT_EQ(raised(gammq, a, x), kTooLarge) << a << ' ' << x;
    }
    float value = 0, gln = 0;
    EXPECT_EQ(Raised<Exception>([&] { gser(1, -1, value, gln); }),
              u"Problem in gamma function calculation: coefficient x less than 0.");
    for (const float x : {-1e-9F, 1.0000001F}) {
        EXPECT_EQ(raised(betai, 1.0F, 1.0F, x), u"Problem in beta function calculation.") << x;
    }
    for (const auto& [a, x] : {std::pair{1e6F, 0.5F}, {1, kNan}, {kNan, 0.5F}}) {
        EXPECT_EQ(raised(betai, a, a, x),
                  u"Problem in beta function calculation: coefficient a or b too big, or itmex too small.")
            << a;
    }
}

/// The series (up to x = a + 1) and the fraction in Extended throughout, with the roundings as the header
/// names them.
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

}  // namespace
}  // namespace Varnholt::Test
