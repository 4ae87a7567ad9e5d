#include "VarnholtLib/Numerics/vrnSmallMath.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "Platform/Runtime/Numbers.h"
#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();

TEST(vrnSmallMath, RoundsToDecimals) {
    const double huge = std::numeric_limits<double>::max();
    const std::tuple<double, std::int32_t, double> cases[] = {
        // clang-format off
        {2.5, 0, 2}, {3.5, 0, 4}, {-2.5, 0, -2}, {2.5, kMin, 2}, {0.125, 2, 0.12}, {1.005, 2, 1},
        {-0.1234567894, 9, -0.123456789}, {0x1p62, 1, 0x1p62}, {huge, 9, huge}, {-INFINITY, 2, -INFINITY},
        {0.3, 10, 423019622.0 / 1410065408},  // 10^10 modulo 2^32
        {0.3, 31, 644245094 / 0x1p31}};       // -2^31
    // clang-format on
    for (const auto& [value, digits, rounded] : cases)
        EXPECT_EQ(RoundTo(value, digits), rounded) << value << " to " << digits;
    for (const auto& [value, digits] : {std::pair{std::nan(""), 2}, {0.3, 32}, {0.3, kMax}})
        EXPECT_TRUE(std::isnan(RoundTo(value, digits))) << digits;
}

TEST(vrnSmallMath, ScalesInProportion) {
    // To the even neighbour of 2.5 and 3.5; a third as a 32-bit float is 0.3333333433.
    // clang-format off
    for (const auto& [base, length, newBase, expected] : {
             std::array{1920, 1080, 640, 360}, {2, 5, 1, 2}, {2, 7, 1, 4}, {3, 1000000000, 1, 333333343},
             {-4, 10, 8, -20}}) {
        // clang-format on
        std::int32_t byWidth = -1, byHeight = -1;
        RatioScaleByWidth(base, length, newBase, byWidth);
        RatioScaleByHeight(length, base, byHeight, newBase);
        EXPECT_TRUE(byWidth == expected && byHeight == expected)
            << byWidth << ", " << byHeight << " by " << base;
    }
    std::int32_t kept = 7;
    EXPECT_EQ(Raised<ERangeError>([&] { RatioScaleByWidth(0, 3, -1, kept); }),
              u"-INF does not fit in a 32-bit integer");
    EXPECT_EQ(Raised<ERangeError>([&] { RatioScaleByHeight(3, 1, kept, kMax); }),
              u"6442450944 does not fit in a 32-bit integer");
    EXPECT_EQ(kept, 7);
}

TEST(vrnSmallMath, ChecksIndexesAndReadsBinaryDigits) {
    EXPECT_NO_THROW((CheckIndex(6, 5, 7, true), CheckIndex(0, kMin, kMax, false)));
    for (const std::int32_t index : {5, 7, kMin, kMax}) {
        EXPECT_EQ(Raised<EIndexOutOfRange>([&] { CheckIndex(index, 5, 7, false); }), u"Index out of range");
        EXPECT_EQ(Raised<EIndexOutOfRange>([&] { CheckIndex(index, 5, 7, true); }),
                  u"Index (" + IntToStr(index) + u") out of range");
    }
    const EIndexOutOfRange known(1, 2, 3);
    EXPECT_TRUE(known.fbSpec && known.fiIndex == 1 && known.fiLow == 2 && known.fiHigh == 3);
    EXPECT_TRUE(!EIndexOutOfRange().fbSpec && EIndexOutOfRange(3).fbSpec && EIndexOutOfRange(3).fiIndex == 3);
    const std::pair<StringView, std::int32_t> cases[] = {// clang-format off
        {u"", 0}, {u"101", 5}, {u"1x1", 5}, {u"10 ", 4}, {u"01111111111111111111111111111111", kMax},
        {u"10000000000000000000000000000000", kMin}, {u"111111111111111111111111111111111111", -1}};
    // clang-format on
    for (const auto& [text, value] : cases) EXPECT_EQ(BinToInt(text), value) << ToUtf8(text);
}

}  // namespace
}  // namespace Varnholt::Test
