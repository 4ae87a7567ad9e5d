#include "Platform/Runtime/Numbers.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {
namespace {

TEST(Numbers, Integers) {
    // clang-format off
    const std::pair<StringView, int> accepted[] = {
        {u"-0", 0}, {u"+7", 7}, {u" \t12\r\n", 12}, {u"000000000042", 42}, {u"2147483647", 2147483647},
        {u"-2147483648", INT32_MIN}, {u"-$Ff", -255}, {u"0x10", 16}, {u" -0X1 ", -1},
        {u"$80000000", INT32_MIN}, {u"-$80000000", INT32_MIN}, {u"0x00FFFFFFFF", -1},
    };
    const StringView rejected[] = {
        u"", u" ", u"+", u"--1", u"- 1", u"1 2", u"1.0", u"12a", u"$", u"0x", u"$-1", u"$G", u"x1F", u"$0x1",
        u"2147483648", u"-2147483649", u"$100000000", u"-$80000001", u"\u0663", u"\uFF11", u"1\u00A0",
        u"00x1", u"99999999999", u"4294967297",
    };
    // clang-format on
    for (const auto& [text, expected] : accepted) EXPECT_EQ(StrToInt(text), expected) << ToUtf8(text);
    for (const StringView text : rejected) {
        std::int32_t value = 17;
        EXPECT_TRUE(!TryStrToInt(text, value) && value == 17 && StrToIntDef(text, -3) == -3) << ToUtf8(text);
        EXPECT_EQ(Raised<EConvertError>([&] { static_cast<void>(StrToInt(text)); }),
                  u"'" + String(text) + u"' is not a valid integer value");
    }
}

TEST(Numbers, FloatsRejected) {
    // clang-format off
    const StringView cases[] = {
        u"", u".", u"-", u"+.", u".e5", u"1e", u"1e+", u"1e5.0", u"1 e5", u"- 1", u"--1", u"1.2.3", u"1,5",
        u"1,000.5", u"inf", u"NaN", u"0x1p3", u"$10", u"1\u00A0", u"1e4933", u"1.1898e4932", u"1e999999999",
        u"\u0661", u"1f",
    };
    // clang-format on
    for (const StringView text : cases) {
        Extended wide = 17;
        double narrow = 17;
        EXPECT_FALSE(TryStrToFloat(text, wide) || wide != 17 || TryStrToFloat(text, narrow) || narrow != 17)
            << ToUtf8(text);
        EXPECT_EQ(Raised<EConvertError>([&] { static_cast<void>(StrToFloat(text)); }),
                  u"'" + String(text) + u"' is not a valid floating point value");
    }
}

// The C library, in the "C" locale, is the second opinion.
void ExpectAsCLibrary(const std::string& text) {
    const auto check = [&](auto expected) {
        auto value = expected;
        EXPECT_EQ(TryStrToFloat(FromUtf8(text), value), std::isfinite(expected)) << text;
        EXPECT_TRUE(value == expected && std::signbit(value) == std::signbit(expected))
            << text << " gave " << value;
    };
    check(std::strtod(text.c_str(), nullptr));
    check(std::strtold(text.c_str(), nullptr));
}

TEST(Numbers, FloatsAgreeWithTheCLibrary) {
    EXPECT_EQ(StrToFloat(u" \t-12.5e1\r\n"), -125);
    // clang-format off
    const char* cases[] = {
        "-0", "+.5", "5.", "-1.e-3", "1E5", "1e+05", "1e22", "1e23", "1e27", "1e28",
        "0e99999999999", "18446744073709551615e-27", "18446744073709551616",
        "3.14159265358979323846264338327950288", "1e308", "1.8e308", "-2e308", "2.2250738585072011e-308",
        "5e-324", "3e-324", "2e-324", "1e-5000", "1e4932", "1.18973149535723176502e4932", "3.3621e-4932",
        "1e-4945", "-1e-4951", "1e-99999999999",
        // at and beside a tie of double; the neighbours of the second tie are one value as Extended
        "9007199254740993", "9007199254740993.00000000000000000001", "1.00000000000000011102230246251565404",
        "1.00000000000000011102230246251565405",
    };
    // clang-format on
    for (const char* text : cases) ExpectAsCLibrary(text);

    std::mt19937 random(20240607);
    const auto pick = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
    for (int round = 0; round < 20000 && !testing::Test::HasFailure(); ++round) {
        std::string text(static_cast<std::size_t>(pick(1, round % 50 == 0 ? 900 : 25)), '0');
        for (char& digit : text) digit = static_cast<char>('0' + pick(0, 9));
        text.insert(static_cast<std::size_t>(pick(0, static_cast<int>(text.size()))), ".");
        if (round % 4 != 0) text += 'e' + std::to_string(round % 20 == 1 ? pick(-5000, 4000) : pick(-40, 40));
        ExpectAsCLibrary(text);
    }
}

TEST(Numbers, MillionsOfDigitsKeepTheirValue) {
    // 2^64 + 1 and 2^53 + 1 are midpoints between two values: the last of the digits decides.
    // clang-format off
    const std::tuple<StringView, Char, StringView, Extended, double> cases[] = {
        {u"0.", u'3', u"", 1.0L / 3, 1.0 / 3}, {u".", u'0', u"25e10000001", 2.5L, 2.5},
        {u"75", u'0', u"e-10000001", 7.5L, 7.5}, {u"18446744073709551617.", u'0', u"", 0x1p64L, 0x1p64},
        {u"18446744073709551617.", u'0', u"1", 0x1p64L + 2, 0x1p64},
        {u"9007199254740993.", u'0', u"1", 9007199254740993, 9007199254740994}};
    // clang-format on
    double narrow = 0;
    for (const auto& [front, repeated, back, expected, expectedNarrow] : cases) {
        const String text = String(front).append(10'000'000, repeated).append(back);
        EXPECT_EQ(StrToFloat(text), expected);
        EXPECT_TRUE(TryStrToFloat(text, narrow) && narrow == expectedNarrow) << narrow;
    }
    EXPECT_FALSE(TryStrToFloat(String(10'000'000, u'9'), narrow));
}

// printf's %g has the same rule for the two forms; only its exponent is written differently.
void ExpectAsPrintf(Extended value) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.15Lg", value);
    std::string expected = buffer;
    if (const std::size_t e = expected.find('e'); e != std::string::npos)
        expected = expected.substr(0, e) + 'E' + std::to_string(std::stoi(expected.substr(e + 1)));
    EXPECT_EQ(ToUtf8(FloatToStr(value)), expected == "-0" ? "0" : expected);
}

TEST(Numbers, FloatTextsAgreeWithPrintf) {
    const Extended kInfinity = HUGE_VALL;
    EXPECT_EQ(FloatToStr(kInfinity) + FloatToStr(-kInfinity) + FloatToStr(NAN) + FloatToStr(-NAN),
              u"INF-INFNANNAN");
    const TFormatSettings kComma{u',', u'.'};
    EXPECT_EQ(FloatToStr(-0.5L, kComma) + FloatToStr(1.5e-7L, kComma), u"-0,51,5E-7");
    EXPECT_EQ(IntToStr(INT64_MIN), u"-9223372036854775808");
    // clang-format off
    for (const Extended value : {0.0L, -0.0L, 5.0L, -1250000.0L, 0.0001L, 0.00001L, 1e15L, -1e20L, 1 / 3.0L,
                                 0.00009999999999999999L, 123456789012345.678L, 999999999999999.0L,
                                 999999999999999.5L, 123456789012344.5L, 99999999999999.95L,
                                 0.000244140625L, 3.6451995318824746e-4951L, 1.18973149535723176502e4932L})
        ExpectAsPrintf(value);
    // clang-format on
    std::mt19937_64 random(7);
    std::uniform_real_distribution<Extended> logarithm(-25, 25);
    for (int round = 0; round < 20000 && !testing::Test::HasFailure(); ++round) {
        Extended value = std::pow(10.0L, logarithm(random)) * (round % 2 == 0 ? 1 : -1);
        if (round % 3 == 0) value = static_cast<double>(value);
        if (round % 5 == 0) value = std::ldexp(std::rint(std::ldexp(value, 4)), -4);  // ties
        ExpectAsPrintf(value);
    }
}

/// Puts the C locale on one with a decimal comma, made in the folder if the machine has none; false without
/// success.
bool SetCommaLocale(const std::string& folder) {
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr) return true;
    const std::string command = "localedef -i de_DE -f UTF-8 '" + folder + "/de_DE.UTF-8' >/dev/null 2>&1";
    if (std::system(command.c_str()) != 0) return false;
    ::setenv("LOCPATH", folder.c_str(), 1);
    return std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
}

TEST(Numbers, ConversionsFollowTheSettingsAndNeverTheLocale) {
    ASSERT_EQ(FormatSettings(), TFormatSettings::Invariant());
    const TTemporaryFolder folder;
    if (!SetCommaLocale(folder.GetNativePath())) GTEST_SKIP() << "no locale with a decimal comma";
    ASSERT_EQ(std::localeconv()->decimal_point, std::string(","));

    const auto check = [](const TFormatSettings& settings, Char separator) {
        ASSERT_EQ(settings.DecimalSeparator, separator);
        const String text = String(u"0") + separator + u"1234567890123456789012";
        double narrow = 0;
        EXPECT_TRUE(TryStrToFloat(text, narrow, settings) && narrow == 0.1234567890123456789012);
        EXPECT_EQ(StrToFloat(text, settings), 0.1234567890123456789012L);
        EXPECT_EQ(FloatToStr(0.1234567890123456789012L, settings), text.substr(0, 16) + u"6");
        EXPECT_FALSE(TryStrToFloat(separator == u',' ? u"1.5" : u"1,5", narrow, settings));
    };
    check(FormatSettings(), u'.');  // still those taken at load
    RefreshFormatSettings();
    EXPECT_NE(FormatSettings().ThousandSeparator, u',');
    EXPECT_EQ(FormatSettings().DateSeparator, u'.');
    EXPECT_EQ(FormatSettings().ShortDateFormat, u"DD/MM/YYYY");
    check(FormatSettings(), u',');
    FormatSettings().DecimalSeparator = u'\u066B';
    check(FormatSettings(), u'\u066B');

    std::setlocale(LC_ALL, "C");
    RefreshFormatSettings();
    EXPECT_EQ(FormatSettings(), TFormatSettings::Invariant());
}

}  // namespace
}  // namespace Varnholt::Test
