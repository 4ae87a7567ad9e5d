#include "VarnholtLib/Numerics/vrnSmallMath.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "Platform/Runtime/Numbers.h"
#include "Tests/Foundation/Raised.h"

namespace Varnholt {
namespace {

constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr double kHuge = std::numeric_limits<double>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(vrnSmallMath, RoundsToDecimals) {
    const struct {
        double Value;
        std::int32_t Digits;
        double Rounded;
    } cases[] = {{2.5, 0, 2},
                 {3.5, 0, 4},
                 {-2.5, 0, -2},
                 {2.5, kMin, 2},
                 {0.125, 2, 0.12},
                 {1.005, 2, 1},
                 {-0.1234567894, 9, -0.123456789},
                 {0x1p62, 1, 0x1p62},
                 {kHuge, 9, kHuge},
                 {-kInfinity, 2, -kInfinity},
                 {0.3, 10, 423019622.0 / 1410065408},  // 10^10 modulo 2^32
                 {0.3, 31, 644245094 / 0x1p31}};       // -2^31
    for (const auto& [value, digits, rounded] : cases) {
        EXPECT_EQ(RoundTo(value, digits), rounded) << value << " to " << digits;
    }
    EXPECT_TRUE(std::isnan(RoundTo(std::nan(""), 2)));
    EXPECT_TRUE(std::isnan(RoundTo(0.3, 32)) && std::isnan(RoundTo(0.3, kMax)));
}

TEST(vrnSmallMath, ScalesInProportion) {
    // To the even neighbour of 2.5 and 3.5; a third as a 32-bit float is 0.3333333433.
    for (const auto& [base, length, newBase, expected] : {std::array{1920, 1080, 640, 360},
                                                          {2, 5, 1, 2},
                                                          {2, 7, 1, 4},
                                                          {3, 1000000000, 1, 333333343},
                                                          {-4, 10, 8, -20}}) {
        std::int32_t byWidth = -1;
        std::int32_t byHeight = -1;
        RatioScaleByWidth(base, length, newBase, byWidth);
        RatioScaleByHeight(length, base, byHeight, newBase);
        EXPECT_EQ(byWidth, expected) << length << " by " << newBase << " / " << base;
        EXPECT_EQ(byHeight, expected) << length << " by " << newBase << " / " << base;
    }
    std::int32_t kept = 7;
    EXPECT_EQ(Raised<ERangeError>([&] { RatioScaleByWidth(0, 3, -1, kept); }),
              u"-INF does not fit in a 32-bit integer");
    EXPECT_EQ(Raised<ERangeError>([&] { RatioScaleByHeight(3, 1, kept, kMax); }),
              u"6442450944 does not fit in a 32-bit integer");
    EXPECT_EQ(kept, 7);
}

TEST(vrnSmallMath, ChecksIndexesBetweenTheBounds) {
    EXPECT_NO_THROW(CheckIndex(6, 5, 7, true));
    EXPECT_NO_THROW(CheckIndex(0, kMin, kMax, false));
    for (const std::int32_t index : {5, 7, kMin, kMax}) {
        EXPECT_EQ(Raised<EIndexOutOfRange>([&] { CheckIndex(index, 5, 7, false); }), u"Index out of range");
        EXPECT_EQ(Raised<EIndexOutOfRange>([&] { CheckIndex(index, 5, 7, true); }),
                  u"Index (" + IntToStr(index) + u") out of range");
    }
    const EIndexOutOfRange known(1, 2, 3);
    EXPECT_TRUE(known.fbSpec && known.fiIndex == 1 && known.fiLow == 2 && known.fiHigh == 3);
    EXPECT_TRUE(!EIndexOutOfRange().fbSpec && EIndexOutOfRange(3).fbSpec && EIndexOutOfRange(3).fiIndex == 3);
}

TEST(vrnSmallMath, ReadsBinaryDigits) {
    for (const auto& [text, value] : {std::pair{StringView(u""), 0},
                                      {u"101", 5},
                                      {u"1x1", 5},
                                      {u"10 ", 4},
                                      {u"01111111111111111111111111111111", kMax},
                                      {u"10000000000000000000000000000000", kMin},
                                      {u"111111111111111111111111111111111111", -1}}) {
        EXPECT_EQ(BinToInt(text), value) << ToUtf8(text);
    }
}

}  // namespace
}  // namespace Varnholt
