#include "Platform/Runtime/Numbers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>

#include "Platform/Runtime/Exceptions.h"

namespace Varnholt {
namespace {

constexpr TFormatSettings kComma{u',', u'.'};

std::string MessageOf(const std::function<void()>& operation) {
    try {
        operation();
        return "no exception";
    } catch (const EConvertError& error) {
        return error.what();
    }
}

/// The same bits, so that the sign of a zero counts.
bool SameValueAndSign(Extended left, Extended right) {
    return left == right && std::signbit(left) == std::signbit(right);
}

TEST(Numbers, IntegersAccepted) {
    const std::pair<StringView, std::int32_t> cases[] = {
        {u"0", 0},
        {u"-0", 0},
        {u"+7", 7},
        {u" \t12\r\n", 12},
        {u"000000000000000000000042", 42},
        {u"2147483647", 2147483647},
        {u"-2147483648", std::numeric_limits<std::int32_t>::min()},
        {u"$ff", 255},
        {u"-$Ff", -255},
        {u"0x10", 16},
        {u" -0X1 ", -1},
        {u"$7FFFFFFF", 2147483647},
        {u"$80000000", std::numeric_limits<std::int32_t>::min()},
        {u"-$80000000", std::numeric_limits<std::int32_t>::min()},
        {u"0x00FFFFFFFF", -1},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(StrToInt(text), expected) << ToUtf8(text);
        EXPECT_EQ(StrToIntDef(text, 99), expected) << ToUtf8(text);
    }
}

TEST(Numbers, IntegersRejected) {
    const StringView cases[] = {
        u"",       u" ",      u"+",          u"-",           u"--1",         u"- 1",        u"1 2",
        u"1.0",    u"1e3",    u"12a",        u"$",           u"0x",          u"$-1",        u"$G",
        u"x1F",    u"$0x1",   u"2147483648", u"-2147483649", u"1-5",         u"$100000000", u"-$80000001",
        u"\u0663", u"\uFF11", u"1\u00A0",    u"00x1",        u"99999999999", u"4294967297"};
    for (const StringView text : cases) {
        std::int32_t value = 17;
        EXPECT_FALSE(TryStrToInt(text, value)) << ToUtf8(text);
        EXPECT_EQ(value, 17) << ToUtf8(text);
        EXPECT_EQ(StrToIntDef(text, -3), -3) << ToUtf8(text);
        EXPECT_EQ(MessageOf([&] { static_cast<void>(StrToInt(text)); }),
                  "'" + ToUtf8(text) + "' is not a valid integer value");
    }
}

TEST(Numbers, FloatsAccepted) {
    const std::pair<StringView, Extended> cases[] = {
        {u"0", 0},
        {u"-0", -0.0L},
        {u"0e999999999999999999999", 0},
        {u" \t1.5\n", 1.5L},
        {u"+.5", .5L},
        {u"5.", 5},
        {u"-1.e-3", -1e-3L},
        {u"1E5", 1e5L},
        {u"1e+05", 1e5L},
        {u"0.1", 0.1L},
        {u"1e27", 1e27L},
        {u"1e28", 1e28L},
        {u"18446744073709551615e-27", 18446744073709551615e-27L},
        {u"18446744073709551616", 18446744073709551616.0L},
        {u"3.14159265358979323846264338327950288", 3.14159265358979323846264338327950288L},
        {u"1.18973149535723176502e4932", std::numeric_limits<Extended>::max()},
        {u"3.3621e-4932", 3.3621e-4932L},
        {u"1e-4945", 1e-4945L},  // denormal
        {u"-1e-5000", -0.0L},
        {u"1e-99999999999999999999999", 0},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_TRUE(SameValueAndSign(StrToFloat(text), expected))
            << ToUtf8(text) << " gave " << StrToFloat(text);
    }
}

TEST(Numbers, FloatsRejected) {
    const StringView cases[] = {
        u"",       u" ",       u".",           u"-",           u"+.",     u"e5",    u".e5",   u"1e",
        u"1e+",    u"1e5.0",   u"1 e5",        u"- 1",         u"--1",    u"1.2.3", u"1,5",   u"1,000.5",
        u"inf",    u"INF",     u"nan",         u"NaN",         u"0x1p3",  u"$10",   u"1_000", u"1\u00A0",
        u"1e4933", u"-1e4933", u"1.1898e4932", u"1e999999999", u"\u0661", u"1f",    u"1d0"};
    for (const StringView text : cases) {
        Extended extended = 17;
        double narrow = 17;
        EXPECT_FALSE(TryStrToFloat(text, extended)) << ToUtf8(text);
        EXPECT_FALSE(TryStrToFloat(text, narrow)) << ToUtf8(text);
        EXPECT_TRUE(extended == 17 && narrow == 17) << ToUtf8(text);
        EXPECT_EQ(MessageOf([&] { static_cast<void>(StrToFloat(text)); }),
                  "'" + ToUtf8(text) + "' is not a valid floating point value");
    }
}

TEST(Numbers, DoublesRoundOnce) {
    const std::pair<StringView, double> cases[] = {
        {u"1e-5000", 0},
        {u"-5e-324", -5e-324},
        {u"2e-324", 0},
        {u"3e-324", 5e-324},
        {u"2.2250738585072011e-308", 2.2250738585072011e-308},
        {u"1.7976931348623157e308", 1.7976931348623157e308},
        {u"9007199254740993", 9007199254740992.0},  // a tie, to even
        {u"9007199254740993.0000000000000000000000001", 9007199254740994.0},
        {u"1.00000000000000011102230246251565404", 1.0},  // just below a tie of double,
        {u"1.00000000000000011102230246251565405",
         1.0000000000000002},  // and just above: one value as Extended
    };
    for (const auto& [text, expected] : cases) {
        double value = 17;
        EXPECT_TRUE(TryStrToFloat(text, value)) << ToUtf8(text);
        EXPECT_EQ(value, expected) << ToUtf8(text);
    }
    double value = 17;
    EXPECT_FALSE(TryStrToFloat(u"1.8e308", value));
    EXPECT_FALSE(TryStrToFloat(u"1e400", value));
    EXPECT_EQ(value, 17);
}

// The C library, in the "C" locale, is the second opinion.
TEST(Numbers, RandomTextsAgreeWithTheCLibrary) {
    std::mt19937 random(20240607);
    const auto pick = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
    for (int round = 0; round < 20000; ++round) {
        std::string text(pick(0, 1) == 0 ? "-" : "");
        const int digits = pick(1, round % 50 == 0 ? 900 : 25);
        const int pointAt = pick(0, digits);
        for (int i = 0; i < digits; ++i) {
            if (i == pointAt) text += '.';
            text += static_cast<char>('0' + pick(0, 9));
        }
        if (pick(0, 3) != 0)
            text += 'e' + std::to_string(round % 20 == 0 ? pick(-5000, 4000) : pick(-40, 40));

        double narrow = 0;
        const bool isDouble = TryStrToFloat(FromUtf8(text), narrow);
        const double expectedNarrow = std::strtod(text.c_str(), nullptr);
        ASSERT_EQ(isDouble, std::isfinite(expectedNarrow)) << text;
        if (isDouble) {
            ASSERT_TRUE(SameValueAndSign(narrow, expectedNarrow)) << text;
        }
        ASSERT_TRUE(SameValueAndSign(StrToFloat(FromUtf8(text)), std::strtold(text.c_str(), nullptr)))
            << text;
    }
}

TEST(Numbers, MillionsOfDigitsKeepTheirValue) {
    constexpr std::size_t kMany = 10'000'000;
    EXPECT_EQ(StrToFloat(u"0." + String(kMany, u'3')), 1.0L / 3);
    EXPECT_EQ(StrToFloat(u"." + String(kMany, u'0') + u"25e10000001"), 2.5L);
    EXPECT_EQ(StrToFloat(u"75" + String(kMany, u'0') + u"e-10000001"), 7.5L);
    // 2^64 + 1 lies in the middle between two values: the last of the digits decides.
    const String middle = u"18446744073709551617." + String(kMany, u'0');
    EXPECT_EQ(StrToFloat(middle), 0x1p64L);
    EXPECT_EQ(StrToFloat(middle + u"1"), 0x1p64L + 2);
    double narrow = 0;
    EXPECT_TRUE(TryStrToFloat(u"9007199254740993." + String(kMany, u'0') + u"1", narrow));
    EXPECT_EQ(narrow, 9007199254740994.0);
    EXPECT_FALSE(TryStrToFloat(String(kMany, u'9'), narrow));
    EXPECT_FALSE(TryStrToFloat(String(kMany, u'9') + u"x", narrow));
}

TEST(Numbers, FloatTexts) {
    const std::pair<Extended, StringView> cases[] = {
        {0.0L, u"0"},
        {-0.0L, u"0"},
        {5, u"5"},
        {-1250000, u"-1250000"},
        {0.1L, u"0.1"},
        {1.0L / 3, u"0.333333333333333"},
        {-2.0L / 3, u"-0.666666666666667"},
        {0.0001L, u"0.0001"},
        {0.00009999999999999999L, u"0.0001"},
        {0.00001L, u"1E-5"},
        {1.5e-7L, u"1.5E-7"},
        {123456789012345.678L, u"123456789012346"},
        {999999999999999.0L, u"999999999999999"},
        {999999999999999.5L, u"1E15"},
        {1e15L, u"1E15"},
        {-1e20L, u"-1E20"},
        {1.25e300L, u"1.25E300"},
        {std::numeric_limits<Extended>::denorm_min(), u"3.64519953188247E-4951"},
        {std::numeric_limits<Extended>::max(), u"1.18973149535723E4932"},
        {std::numeric_limits<Extended>::infinity(), u"INF"},
        {-std::numeric_limits<Extended>::infinity(), u"-INF"},
        {-std::numeric_limits<Extended>::quiet_NaN(), u"NAN"},
    };
    for (const auto& [value, expected] : cases) EXPECT_EQ(ToUtf8(FloatToStr(value)), ToUtf8(expected));
    EXPECT_EQ(FloatToStr(-0.5L, kComma), u"-0,5");
    EXPECT_EQ(FloatToStr(1.5e-7L, kComma), u"1,5E-7");
    EXPECT_EQ(IntToStr(std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808");
}

// printf's %g has the same rule for the two forms; only its exponent is written differently.
TEST(Numbers, RandomFloatTextsAgreeWithPrintf) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<Extended> logarithm(-25, 25);
    for (int round = 0; round < 20000; ++round) {
        Extended value = std::pow(10.0L, logarithm(random)) * (round % 2 == 0 ? 1 : -1);
        if (round % 3 == 0) value = static_cast<double>(value);
        if (round % 5 == 0) value = std::ldexp(std::rint(std::ldexp(value, 4)), -4);  // ties
        std::array<char, 64> buffer{};
        std::snprintf(buffer.data(), buffer.size(), "%.15Lg", value + 0.0L);
        std::string expected = buffer.data();
        if (const std::size_t e = expected.find('e'); e != std::string::npos) {
            expected = expected.substr(0, e) + 'E' + std::to_string(std::stoi(expected.substr(e + 1)));
        }
        ASSERT_EQ(ToUtf8(FloatToStr(value)), expected == "-0" ? "0" : expected);
    }
}

/// Puts the C locale on one with a decimal comma, made on the spot if the machine has none, and back at the
/// end.
class TCommaLocale {
public:
    TCommaLocale()
        : FFolder(std::filesystem::temp_directory_path() /
                  ("locale-" + std::to_string(std::random_device{}()))) {
        for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8"})
            FIsSet = FIsSet || std::setlocale(LC_ALL, name) != nullptr;
        if (FIsSet) return;
        std::filesystem::create_directory(FFolder);
        const std::string target = (FFolder / "de_DE.UTF-8").string();
        if (std::system(("localedef -i de_DE -f UTF-8 '" + target + "' >/dev/null 2>&1").c_str()) != 0)
            return;
        ::setenv("LOCPATH", FFolder.c_str(), 1);
        FIsSet = std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
    }
    ~TCommaLocale() {
        std::setlocale(LC_ALL, "C");
        RefreshFormatSettings();
        ::unsetenv("LOCPATH");
        std::error_code ignored;
        std::filesystem::remove_all(FFolder, ignored);
    }
    TCommaLocale(const TCommaLocale&) = delete;
    TCommaLocale& operator=(const TCommaLocale&) = delete;

    [[nodiscard]] bool IsSet() const { return FIsSet; }

private:
    std::filesystem::path FFolder;
    bool FIsSet = false;
};

TEST(Numbers, ConversionsFollowTheSettingsAndNeverTheLocale) {
    ASSERT_EQ(FormatSettings(), TFormatSettings::Invariant());
    const TCommaLocale locale;
    if (!locale.IsSet()) GTEST_SKIP() << "no locale with a decimal comma on this machine";
    ASSERT_EQ(std::localeconv()->decimal_point, std::string(","));

    const auto check = [](const TFormatSettings& settings, StringView text, StringView written) {
        EXPECT_EQ(StrToFloat(text, settings), 0.1234567890123456789012L);
        double narrow = 0;
        EXPECT_TRUE(TryStrToFloat(text, narrow, settings));
        EXPECT_EQ(narrow, 0.1234567890123456789012);
        EXPECT_EQ(FloatToStr(0.1234567890123456789012L, settings), written);
        EXPECT_EQ(FloatToStr(0.25L, settings)[1], settings.DecimalSeparator);
    };
    const StringView withPoint = u"0.1234567890123456789012";
    const StringView withComma = u"0,1234567890123456789012";
    check(FormatSettings(), withPoint, u"0.123456789012346");  // still those taken at load
    EXPECT_THROW(static_cast<void>(StrToFloat(withComma)), EConvertError);

    RefreshFormatSettings();
    EXPECT_EQ(FormatSettings().DecimalSeparator, u',');
    EXPECT_NE(FormatSettings().ThousandSeparator, u',');
    check(FormatSettings(), withComma, u"0,123456789012346");
    EXPECT_THROW(static_cast<void>(StrToFloat(withPoint)), EConvertError);
    check(TFormatSettings::Invariant(), withPoint, u"0.123456789012346");

    FormatSettings().DecimalSeparator = u'\u066B';
    check(FormatSettings(), u"0\u066B1234567890123456789012", u"0\u066B123456789012346");
}

}  // namespace
}  // namespace Varnholt
