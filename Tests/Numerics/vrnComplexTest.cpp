#include "VarnholtLib/Numerics/vrnComplex.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <random>

namespace Varnholt::Test {
namespace {

using TModel = std::complex<Extended>;

constexpr Extended kTolerance = 1e-18L;  // about ten units in the last place

/// The distance of two numbers in the size of the second.
Extended Error(const TComplex& actual, const TModel& expected) {
    return std::abs(TModel(actual.RealP, actual.ImageP) - expected) / std::abs(expected);
}

TEST(vrnComplex, AgreesWithTheStandardLibrary) {
    std::mt19937 random(5);
    std::uniform_real_distribution<Extended> part(-10, 10);
    for (int round = 0; round < 1000; ++round) {
        const TModel a(part(random), part(random)), b(part(random), part(random));
        const TComplex x = MakeComplex(a.real(), a.imag()), y = MakeComplex(b.real(), b.imag());
        SCOPED_TRACE(testing::Message() << a << " and " << b);
        EXPECT_EQ(Error(AddComplex(x, y), a + b), 0);
        EXPECT_EQ(Error(SubtractComplex(x, y), a - b), 0);
        EXPECT_LT(Error(MulComplex(x, y), a * b), kTolerance);
        EXPECT_LT(Error(DivComplex(x, y), a / b), kTolerance);
        EXPECT_LT(Error(PowComplex(x, 5), a * a * a * a * a), 5 * kTolerance);
    }
    EXPECT_EQ(PowComplex(MakeComplex(0, 0), 0), MakeComplex(1, 0));
    EXPECT_EQ(PowComplex(MakeComplex(1, 2), 1), MakeComplex(1, 2));
    EXPECT_EQ(PowComplex(MakeComplex(1, 2), 3), MakeComplex(-11, -2));
    EXPECT_EQ(PowComplex(MakeComplex(0, 1), 255), MakeComplex(0, -1));
    for (const Extended size : {1e4900L, 1e-4900L}) {
        const TComplex divided = DivComplex(MakeComplex(3 * size, size), MakeComplex(size, size));
        EXPECT_LT(Error(divided, TModel(2, -1)), kTolerance);
    }
    const TComplex none = DivComplex(MakeComplex(1, 2), MakeComplex(0, 0));
    EXPECT_TRUE(std::isnan(none.RealP) && std::isnan(none.ImageP));
}

}  // namespace
}  // namespace Varnholt::Test
