#include "Platform/Runtime/Format.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

#include "Platform/Runtime/FormatSettings.h"
#include "Tests/Support/FormatSettingsScope.h"
#include "Tests/Support/Raised.h"

namespace Varnholt::Test {

static_assert(!std::is_convertible_v<bool, TFormatArg> && !std::is_convertible_v<Char, TFormatArg> &&
              !std::is_convertible_v<const char*, TFormatArg> &&
              !std::is_convertible_v<const int*, TFormatArg>);

TEST(Format, AcceptedAndRejected) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const String text = u"rain";
    // clang-format off
    const std::tuple<StringView, std::vector<TFormatArg>, const char*> cases[] = {
        {u"", {}, ""}, {u"100%% %%d", {}, "100% %d"}, {u"%s has %d of %d", {text, 1, 2u}, "rain has 1 of 2"},
        {u"[%6s][%-6s][%3s]", {text, StringView(text), text.c_str()}, "[  rain][rain  ][rain]"},
        {u"[%.2s][%5.0s][%.9s]", {text, text, text}, "[ra][     ][rain]"},
        {u"[%.2s][%.3s]", {u"a\xD83D\xDE00", u"a\xD83D\xDE00"}, "[a][a\U0001F600]"},
        {u"[%s]", {static_cast<const Char*>(nullptr)}, "[]"},
        {u"[%5d][%-5d][%.4d][%7.4d][%.0d]", {-42, -42, -42, -42, 0}, "[  -42][-42  ][-0042][  -0042][0]"},
        {u"%d %d", {INT64_MIN, UINT64_MAX}, "-9223372036854775808 18446744073709551615"},
        {u"%x %x %x", {std::int8_t{-1}, std::int16_t{-2}, -1}, "FF FFFE FFFFFFFF"},
        {u"%x %.2x%.2x %6.4x %x", {std::int64_t{-1}, 10, std::uint8_t{255}, 0xabc, 0},
         "FFFFFFFFFFFFFFFF 0AFF   0ABC 0"},
        {u"%f %f %f", {2.5f, 0.125, 1.0L / 3}, "2.50 0.12 0.33"},
        {u"[%8.3f][%-8.1f][%.0f]", {3.14159, -0.25, 2.5}, "[   3.142][-0.2    ][2]"},
        {u"%f %.1f %.0f", {-0.0, -0.04, -0.5L}, "0.00 0.0 0"},
        {u"[%5f][%f][%-5.1f]", {std::nan(""), kInfinity, -kInfinity}, "[  NAN][INF][-INF ]"},
        {u"%.25f", {0.1L}, "0.1000000000000000000013553"},
    };
    // clang-format on
    for (const auto& [format, args, expected] : cases) EXPECT_EQ(ToUtf8(Format(format, args)), expected);
    EXPECT_EQ(Format(u"%10000.10000d", {1}), String(9999, u'0') + u"1");
    EXPECT_EQ(Format(u"%.10000f", {std::numeric_limits<Extended>::max()}).size(), 4933u + 10001);
    const String one = u", position 1: ";
    // clang-format off
    const std::tuple<StringView, std::vector<TFormatArg>, String> rejected[] = {
        {u"ab%", {}, u", position 3: unfinished placeholder '%'"},
        {u"%d %q", {1, 2}, u", position 4: unknown placeholder '%q'"},
        {u"%D", {1}, one + u"unknown placeholder '%D'"}, {u"%5%", {}, one + u"unknown placeholder '%5%'"},
        {u"%.f", {1.0}, one + u"unknown placeholder '%.f'"},
        {u"%--d", {1}, one + u"unknown placeholder '%--'"},
        {u"%\xD83D\xDE00", {1}, one + u"unknown placeholder '%\U0001F600'"},
        {u"%10001d", {1}, one + u"a width or precision is above 10000"},
        {u"%.99999999999999999999f", {1.0}, one + u"a width or precision is above 10000"},
        {u"%s and %4d", {u"a"}, u", position 8: no argument for '%4d'"},
        {u"%d", {u"1"}, one + u"'%d' takes an integer"}, {u"%s", {1}, one + u"'%s' takes a text"},
        {u"%x", {1.0}, one + u"'%x' takes an integer"}, {u"%.3f", {1}, one + u"'%.3f' takes a float"},
        {u"%d%%", {1, 2, 3}, u" takes 1 arguments, not 3"}, {u"plain", {u""}, u" takes 0 arguments, not 1"}};
    // clang-format on
    for (const auto& [format, args, reason] : rejected)
        EXPECT_EQ(Raised<EConvertError>(
                      [&format = format, &args = args] { static_cast<void>(Format(format, args)); }),
                  u"Format '" + String(format) + u"'" + reason);
    const TFormatSettingsScope comma(u',');
    EXPECT_EQ(Format(u"%f %.0f %s", {-1.5, 3.0, u"1.5"}), u"-1,50 3 1.5");
}

// printf rounds exactly too; only what rounds to zero keeps its sign there.
TEST(Format, RandomFloatsAgreeWithPrintf) {
    std::mt19937_64 random(99);
    for (int round = 0; round < 20000; ++round) {
        const double tie = std::ldexp(static_cast<double>(random() % 2000001) - 1000000, -(round / 2 % 21));
        const double value = round % 2 == 0 ? tie : std::bit_cast<double>(random());
        if (!std::isfinite(value)) continue;
        const Extended wide = round % 3 == 0 ? Extended{value} / 3 : Extended{value};
        const int precision = round % 21;
        char buffer[5100];
        std::snprintf(buffer, sizeof buffer, "%.*Lf", precision, wide);
        std::string expected = buffer;
        if (expected.find_first_not_of("-0.") == std::string::npos && expected[0] == '-')
            expected.erase(0, 1);
        ASSERT_EQ(ToUtf8(Format(u"%." + FromUtf8(std::to_string(precision)) + u"f", {wide})), expected);
    }
}

}  // namespace Varnholt::Test
