#include "VarnholtLib/Numerics/vrnMath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <random>

#include "Platform/Runtime/Numbers.h"
#include "Tests/Support/FormatSettingsScope.h"
#include "Tests/Support/Raised.h"
#include "VarnholtLib/Numerics/vrnComplex.h"

namespace Varnholt::Test {
namespace {

constexpr std::int32_t kMin = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();

TEST(vrnSmallMath, RoundsToDecimals) {
    const std::tuple<double, std::int32_t, double> cases[] = {
        // clang-format off
        {2.5, 0, 2}, {3.5, 0, 4}, {-2.5, kMin, -2}, {0.125, 2, 0.12}, {1.005, 2, 1}, {0x1p62, 1, 0x1p62},
        {-0.1234567894, 9, -0.123456789}, {-INFINITY, 2, -INFINITY},
        {0.3, 10, 423019622.0 / 1410065408},  // 10^10 modulo 2^32
        {0.3, 31, 644245094 / 0x1p31}};       // -2^31
    // clang-format on
    for (const auto& [value, digits, rounded] : cases)
        EXPECT_EQ(RoundTo(value, digits), rounded) << value << " to " << digits;
    EXPECT_TRUE(std::isnan(RoundTo(NAN, 2)) && std::isnan(RoundTo(0.3, 32)) &&
                std::isnan(RoundTo(0.3, kMax)));
}

TEST(vrnSmallMath, ScalesInProportion) {
    // Of 2.5 and 3.5 to the even neighbour; a third as a 32-bit float is 0.3333333433.
    const std::array<std::int32_t, 4> cases[] = {
        {1920, 1080, 640, 360}, {2, 5, 1, 2}, {2, 7, 1, 4}, {3, 1000000000, 1, 333333343}, {-4, 10, 8, -20}};
    for (const auto& [base, length, newBase, expected] : cases) {
        std::int32_t byWidth = -1, byHeight = -1;
        RatioScaleByWidth(base, length, newBase, byWidth);
        RatioScaleByHeight(length, base, byHeight, newBase);
        EXPECT_EQ(std::pair(byWidth, byHeight), std::pair(expected, expected)) << base << " to " << newBase;
    }
    std::int32_t kept = 7;
    ExpectRaised<ERangeError>(
        {{[&] { RatioScaleByWidth(0, 3, -1, kept); }, u"-INF does not fit in a 32-bit integer"},
         {[&] { RatioScaleByHeight(3, 1, kept, kMax); }, u"6442450944 does not fit in a 32-bit integer"}});
    EXPECT_EQ(kept, 7);
}

TEST(vrnSmallMath, ChecksIndexesAndReadsBinaryDigits) {
    EXPECT_NO_THROW((CheckIndex(6, 5, 7, true), CheckIndex(0, kMin, kMax, false)));
    ExpectRaised<EIndexOutOfRange>({{[] { CheckIndex(5, 5, 7, false); }, u"Index out of range"},
                                    {[] { CheckIndex(5, 5, 7, true); }, u"Index (5) out of range"},
                                    {[] { CheckIndex(7, 5, 7, true); }, u"Index (7) out of range"}});
    const std::pair<StringView, std::int32_t> cases[] = {// clang-format off
        {u"", 0}, {u"101", 5}, {u"1x1", 5}, {u"10 ", 4}, {u"01111111111111111111111111111111", kMax},
        {u"10000000000000000000000000000000", kMin}, {u"111111111111111111111111111111111111", -1}};
    // clang-format on
    for (const auto& [text, value] : cases) EXPECT_EQ(BinToInt(text), value) << ToUtf8(text);
}

// The tolerance is about ten units in the last place.
TEST(vrnComplex, AgreesWithTheStandardLibrary) {
    const auto error = [](const TComplex& actual, const std::complex<Extended>& expected) {
        return std::abs(std::complex(actual.RealP, actual.ImageP) - expected) / std::abs(expected);
    };
    std::mt19937 random(5);
    std::uniform_real_distribution<Extended> part(-10, 10);
    for (int round = 0; round < 1000; ++round) {
        const std::complex a(part(random), part(random)), b(part(random), part(random));
        const TComplex x = MakeComplex(a.real(), a.imag()), y = MakeComplex(b.real(), b.imag());
        ASSERT_EQ(error(AddComplex(x, y), a + b) + error(SubtractComplex(x, y), a - b), 0) << a << b;
        ASSERT_LT(error(MulComplex(x, y), a * b) + error(DivComplex(x, y), a / b), 2e-18L) << a << b;
        ASSERT_LT(error(PowComplex(x, 5), a * a * a * a * a), 5e-18L) << a;
    }
    EXPECT_EQ(PowComplex(MakeComplex(0, 0), 0), MakeComplex(1, 0));
    EXPECT_EQ(PowComplex(MakeComplex(0, 1), 255), MakeComplex(0, -1));
    for (const Extended size : {1e4900L, 1e-4900L})
        EXPECT_LT(error(DivComplex(MakeComplex(3 * size, size), MakeComplex(size, size)), {2, -1}), 1e-18L);
    EXPECT_TRUE(std::isnan(DivComplex(MakeComplex(1, 2), MakeComplex(0, 0)).RealP));
}

/// The value in decimal digits, or the part of the text that is refused, in quotes. Any other message whole.
String Outcome(float (*read)(StringView), StringView text) {
    constexpr StringView kHead = u"Problem parsing the string: ";
    constexpr StringView kTail = u" is not a valid floating point value";
    try {
        return FloatToStr(read(text));
    } catch (const Exception& failure) {
        const String message = failure.GetMessage();
        if (!message.starts_with(kHead) || !message.ends_with(kTail)) return message;
        return message.substr(kHead.size(), message.size() - kHead.size() - kTail.size());
    }
}

TEST(vrnCoordinates, ReadsOrRefuses) {
    // What follows DEG has no meaning in a longitude. The long s, 017F, is no S.
    const StringView empty = u"Problem parsing the string: String is empty";
    const std::tuple<StringView, StringView, StringView> cases[] = {
        // clang-format off
        {u"33.5", u"33.5", u"33.5"}, {u"33.5s", u"-33.5", u"'33.5S'"}, {u" 33.5 n", u"33.5", u"' 33.5 N'"},
        {u"170.25W", u"'170.25W'", u"-170.25"}, {u"170.25 e", u"'170.25 E'", u"170.25"},
        {u"-33.5S", u"33.5", u"'-33.5S'"}, {u"33,5", u"335", u"335"}, {u";3;3.5,W;", u"'33.5W'", u"-33.5"},
        {u"1E300", u"INF", u"INF"}, {u"33 deg s", u"-33", u"33"}, {u"33 DEG 30 MIN", u"33.5", u"33.5"},
        {u"33deg30minn", u"33.5", u"33.5"}, {u"33 DEG 30 MINS", u"-33.5", u"33.5"},
        {u"-33 deg, 30 min w", u"-32.5", u"32.5"}, {u"1 DEG 15 MIN 225 SEC S", u"-1.3125", u"1.3125"},
        {u"33 deg 30 sec", u"'33 DEG 30 '", u"'33 DEG 30 '"}, {u"33.5 S ", u"'33.5 S '", u"'33.5 S '"},
        {u"33.5IN", u"'33.5IN'", u"'33.5IN'"}, {u"33.5\u017F", u"'33.5\u017F'", u"'33.5\u017F'"},
        {u"N", u"'N'", u"'N'"}, {u"S", u"''", u"'S'"}, {u"E", u"'E'", u"''"}, {u"", empty, empty},
        {u";,;", empty, empty}};
    // clang-format on
    for (const auto& [text, latitude, longitude] : cases) {
        EXPECT_EQ(Outcome(GetLatitudeValue, text), latitude) << ToUtf8(text);
        EXPECT_EQ(Outcome(GetLongitudeValue, text), longitude) << ToUtf8(text);
    }
    const TFormatSettingsScope comma(u',');
    EXPECT_EQ(Outcome(GetLatitudeValue, u"33.5") + Outcome(GetLatitudeValue, u"33,5"), u"'33.5'335");
    EXPECT_TRUE(LongitudeVal(-170) == 190 && LongitudeVal(170) == 170 && LongitudeVal(0) == 0);
}

}  // namespace
}  // namespace Varnholt::Test
