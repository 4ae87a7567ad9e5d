#include <gmock/gmock.h>

#include <array>
#include <cmath>

#include "Platform/Runtime/Format.h"
#include "Tests/Support/Raised.h"
#include "VarnholtLib/UI/vrnColorDistributor.h"
#include "VarnholtLib/UI/vrnStringParse.h"

namespace Varnholt::Test {
namespace {

TEST(ColorDistributor, LevelsAndHues) {
    const auto distributor = TColorDistributorFactory::GetObject();
    const std::pair<std::int32_t, std::vector<TColor>> cases[] = {
        {1, {176}},
        {6, {176}},
        {7, {50, 230}},
        {13, {50, 140, 230}},
        {24, {50, 110, 170, 230}},
        {25, {50, 95, 140, 185, 230}},
        {31, {50, 86, 122, 158, 194, 230}},
        {54, {50, 72, 95, 118, 140, 162, 185, 208, 230}}};
    for (const auto& [count, levels] : cases) {
        std::vector<TColor> expected;
        for (const TColor level : levels)
            for (const TColor hue : {1U, 0x100U, 0x10000U, 0x101U, 0x10001U, 0x10100U})
                expected.push_back(hue * level);
        expected.resize(static_cast<std::size_t>(count));
        EXPECT_EQ(distributor->Distribute(count)->ToArray(), expected) << count;
    }
    EXPECT_TRUE(distributor->Distribute(0)->GetIsEmpty() && distributor->Distribute(INT32_MIN)->GetIsEmpty());
}

/// Hue, saturation and lightness in doubles, by the definition: the hue is the angle in the hexagon of colours.
std::array<double, 3> HslOf(int r, int g, int b) {
    const int max = std::max({r, g, b}), min = std::min({r, g, b}), range = max - min;
    const double l = (max + min) / 510.0;
    if (range == 0) return {0, 0, l};
    const double sector = r == max   ? (g - b) / double(range)
                          : g == max ? 2 + (b - r) / double(range)
                                     : 4 + (r - g) / double(range);
    return {std::fmod(sector / 6 + 1, 1), range / 255.0 / (1 - std::fabs(2 * l - 1)), l};
}

TEST(ColorConvert, HslGoesBothWays) {
    for (int r = 0; r < 256; r += 5)
        for (int g = 0; g < 256; g += 5)
            for (int b = 0; b < 256; b += 3) {
                const auto argb = 0xFF000000U | static_cast<TARGB>(r << 16 | g << 8 | b);
                float h = -1, s = -1, l = -1;
                TColorConvert::RGBtoHSL(argb, h, s, l);
                const auto [hue, saturation, lightness] = HslOf(r, g, b);
                const double turn = std::fabs(h - hue);
                ASSERT_LT(std::min(turn, 1 - turn), 1e-6) << r << ' ' << g << ' ' << b;
                ASSERT_NEAR(s, saturation, 1e-5) << r << ' ' << g << ' ' << b;
                ASSERT_NEAR(l, lightness, 1e-7) << r << ' ' << g << ' ' << b;
                ASSERT_EQ(TColorConvert::HSLtoARGB(h, s, l), argb);
            }
    for (TARGB grey = 0; grey < 256; ++grey) {
        float h = -1, s = -1, l = -1;
        TColorConvert::RGBtoHSL(grey * 0x010101, h, s, l);
        EXPECT_TRUE(h == 0 && s == 0) << grey;
        EXPECT_EQ(TColorConvert::HSLtoARGB(0.3F, 0, l), 0xFF000000 | grey * 0x010101);
    }
    const float nan = std::nanf("");
    EXPECT_EQ(TColorConvert::HSLtoARGB(0, 0, 1e30F) & TColorConvert::HSLtoARGB(0, 0, 2), 0xFFFFFFFF);
    EXPECT_EQ(TColorConvert::HSLtoARGB(nan, nan, nan) | TColorConvert::HSLtoARGB(0, 0, -1), 0xFF000000);
}

TEST(ColorConvert, FormsAndChannels) {
    EXPECT_EQ(TColorConvert::ToARGB(0x123456), 0xFF563412);
    EXPECT_EQ(TColorConvert::ToARGB(7, clBtnFace), 0x07F0F0F0U);
    EXPECT_EQ(TColorConvert::ToColor(0x80563412), 0x123456U);
    std::uint8_t a = 0, r = 0, g = 0, b = 0;
    TColorConvert::ARGBtoARGBComponents(0x01020304, a, r, g, b);
    EXPECT_THAT((std::vector<int>{a, r, g, b}), testing::ElementsAre(1, 2, 3, 4));
    TColorConvert::NativeColorToRGBComponents(0x0A0B0C, r, g, b);
    EXPECT_THAT((std::vector<int>{r, g, b}), testing::ElementsAre(12, 11, 10));
    EXPECT_TRUE(DarkenColour(0x0A80FF, 16) == 0x0070EF && LightenColour(0xF08010, 20) == 0xFF9424);
    EXPECT_TRUE(DarkenColour(clWindow, INT32_MIN) == 0xFFFFFF && LightenColour(clWindow, INT32_MIN) == 0);
    EXPECT_EQ(BlendColors(0x0000FF, 0xFF0000, 5),
              (std::vector<TColor>{0xFF, 0x4000BF, 0x800080, 0xBF0040, 0xFF0000}));
    EXPECT_EQ(BlendColors(0xFF000005, 1, 2), (std::vector<TColor>{0xFF000005, 1}));
    EXPECT_EQ(BlendColors(7, 7, 4), (std::vector<TColor>(4, 7)));
    EXPECT_EQ(Raised<Exception>([] { return BlendColors(0, 1, 1); }), u"Invalid number of colors");
}

TEST(HTMLColorString, ReadsThreeOrSixDigits) {
    for (TARGB short12 = 0; short12 < 4096; ++short12) {
        const TARGB color = (short12 >> 8) * 0x110000 + (short12 >> 4 & 15) * 0x1100 + (short12 & 15) * 0x11;
        const String text = Format(u"%.3x", {static_cast<std::int32_t>(short12)});
        EXPECT_EQ(THTMLColorString::HTMLToGPColor(text), 0xFF000000 | color);
        const THTMLColorString parsed(u"#" + text);
        EXPECT_EQ(THTMLColorString::HTMLToGPColor(parsed.AsHTMLColor(true)), 0xFF000000 | color);
    }
    EXPECT_EQ(THTMLColorString(u"b7410e").AsHTMLColor(false), u"B7410E");
    EXPECT_EQ(THTMLColorString::HTMLToColor(u"#B7410e"), 0x0E41B7U);
    THTMLColorString color(u"123456");
    const StringView invalid = u"Invalid HTML color string";
    ExpectRaised<Exception>({{[&] { color.Parse(u""); }, u"HTML color string is empty"},
                             {[&] { color.Parse(u"#"); }, invalid},
                             {[&] { color.Parse(u"##123"); }, invalid},
                             {[&] { color.Parse(u"12345"); }, invalid}});
    for (const StringView pair : {u"g0", u"-1", u"+1", u" 1", u"1 ", u"0x", u"$1"}) {
        const String text = u"ff" + String(pair) + u"00";
        EXPECT_EQ(Raised<EConvertError>([&] { color.Parse(text); }),
                  Format(u"'$%s' is not a valid integer value", {pair}));
    }
    EXPECT_EQ(color.AsHTMLColor(true), u"#123456");
    EXPECT_TRUE(color.GetRed() == 0x12 && color.GetGreen() == 0x34 && color.GetBlue() == 0x56);
}

}  // namespace
}  // namespace Varnholt::Test
