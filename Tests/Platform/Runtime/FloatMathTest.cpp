#include "Platform/Runtime/FloatMath.h"

#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>

#include "Tests/Support/Raised.h"

namespace Varnholt::Test {

constexpr Extended kInf = std::numeric_limits<Extended>::infinity();
constexpr Extended kNan = std::numeric_limits<Extended>::quiet_NaN();

TEST(FloatMath, SameValueWithinTheTolerance) {
    // clang-format off
    const struct { double a, b, epsilon; bool expected; } cases[] = {
        {0, 0.9e-12, 0, true}, {0, 1.1e-12, 0, false}, {1e6, 1e6 + 9e-7, 0, true},
        {1e6, 1e6 + 1.1e-6, 0, false},
        {5, 5.5, 0.5, true}, {5, 5.6, 0.5, false}, {5, 5, -1, true}, {5, 5.1, -1, false},
        {1e308, -1e308, 0, false}, {HUGE_VAL, HUGE_VAL, 0, true}, {HUGE_VAL, 1e308, 0, false},
        {NAN, 1, 10, false},
    };
    // clang-format on
    for (const auto& [a, b, epsilon, expected] : cases)
        EXPECT_TRUE(SameValue(a, b, epsilon) == expected && SameValue(b, a, epsilon) == expected)
            << a << ' ' << b;
    EXPECT_TRUE(SameValue(1000.0f, 1000.09f) && !SameValue(1000.0f, 1000.2f));
    EXPECT_TRUE(SameValue(1.0L, 1 + 0.9e-16L) && !SameValue(1.0L, 1 + 1.2e-16L));
}

TEST(FloatMath, PowerOfSpecialValues) {
    // clang-format off
    const struct { Extended base, exponent, expected; } cases[] = {
        {0, 0, 1}, {kNan, 0, 1}, {kInf, -0.0L, 1}, {0, 2.5L, 0}, {-0.0L, 3, 0}, {0, -2, kInf},
        {-0.0L, -3, kInf}, {-2, 3, -8}, {-2, -2, 0.25L}, {3, 32, 1853020188851841}, {10, 19, 1e19L},
        {-1, 1e30L, 1}, {-1, 33, -1}, {kInf, -2, 0}, {-kInf, 3, -kInf}, {2, kInf, kInf}, {0x1p520L, 32, kInf},
        {0x1p-520L, -32, kInf}, {0x1p512L, -32, 0x1p-16384L}, {0x1p513L, -32, 0x1p-16416L},
        {0x1p-511L, 32, 0x1p-16352L}, {0x1p-513L, 32, 0x1p-16416L}, {4, 0.5L, 2}, {4, 40, 0x1p80L},
        {-8, 1 / 3.0L, kNan}, {-1, 0.5L, kNan}, {kNan, 2, kNan}, {kNan, 0.5L, kNan}, {2, kNan, kNan},
        {0, kNan, kNan},
    };
    // clang-format on
    for (const auto& [base, exponent, expected] : cases) {
        const Extended power = Power(base, exponent);
        EXPECT_TRUE(std::isnan(expected) ? std::isnan(power)
                                         : power == expected && std::signbit(power) == std::signbit(expected))
            << base << " ^ " << exponent << " gave " << power;
    }
}

TEST(FloatMath, RoundsToEvenInEveryMode) {
    constexpr Extended kWide = 0x1p63L, kEpsilon = std::numeric_limits<Extended>::epsilon();
    // clang-format off
    const std::pair<Extended, std::int64_t> cases[] = {
        {0, 0}, {0.5L, 0}, {1.5L, 2}, {2.5L, 2}, {-0.5L, 0}, {-1.5L, -2}, {-2.5L, -2}, {2.51L, 3},
        {-2.51L, -3}, {1e-4940L, 0}, {0.5L - kEpsilon, 0}, {0.5L + kEpsilon, 1},
        {INT32_MAX + 0.49L, INT32_MAX}, {INT32_MIN - 0.5L, INT32_MIN},
    };
    // clang-format on
    for (const int mode : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        std::fesetround(mode);
        for (const auto& [value, expected] : cases)
            EXPECT_TRUE(RoundToInt(value) == expected && RoundToInt64(value) == expected)
                << value << " in mode " << mode;
    }
    std::fesetround(FE_TONEAREST);
    EXPECT_TRUE(RoundToInt64(kWide - 1) == INT64_MAX && RoundToInt64(-kWide) == INT64_MIN);
    EXPECT_EQ(RoundToInt64(0x1p62L + 0.5L), std::int64_t{1} << 62);
    // clang-format off
    ExpectRaised<ERangeError>({
        {[] { static_cast<void>(RoundToInt(2147483647.5L)); },
         u"2147483647.5 does not fit in a 32-bit integer"},
        {[] { static_cast<void>(RoundToInt(kNan)); }, u"NAN does not fit in a 32-bit integer"},
        {[] { static_cast<void>(RoundToInt64(kWide - 0.5L)); },
         u"9.22337203685478E18 does not fit in a 64-bit integer"},
        {[] { static_cast<void>(RoundToInt64(-kWide - 1)); },
         u"-9.22337203685478E18 does not fit in a 64-bit integer"}});
    // clang-format on
}

}  // namespace Varnholt::Test
