#include "VarnholtLib/UI/vrnColorConvert.h"

#include <algorithm>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/FloatMath.h"

namespace Varnholt {
namespace {

constexpr Extended kThird = Extended{1} / 3;

std::uint8_t Byte(std::uint32_t value, int index) noexcept {
    return static_cast<std::uint8_t>(value >> (8 * index));
}

TColor Plain(std::uint32_t r, std::uint32_t g, std::uint32_t b) noexcept {
    return r | g << 8 | b << 16;
}

/// The nearest channel of a value from 0 to 1.
std::uint8_t Channel(float value) noexcept {
    const double scaled = double{value} * 255;  // exact: 24 bits by 8
    if (!(scaled > 0)) return 0;                // also for no number
    if (scaled >= 255) return 255;
    const int whole = static_cast<int>(scaled);
    const double rest = scaled - whole;
    const bool goesUp = rest > 0.5 || (rest == 0.5 && whole % 2 == 1);  // ties to even
    return static_cast<std::uint8_t>(whole + (goesUp ? 1 : 0));
}

/// How far a channel is from the largest, in sixths.
float Distance(float channel, float max, float delta) noexcept {
    return static_cast<float>(((Extended{max} - channel) / 6 + Extended{delta} / 2) / delta);
}

TColor EachChannel(TColor color, std::int64_t change) noexcept {
    const TColor plain = ColorToRGB(color);
    const auto changed = [&](int index) {
        return static_cast<std::uint32_t>(std::clamp<std::int64_t>(Byte(plain, index) + change, 0, 255));
    };
    return Plain(changed(0), changed(1), changed(2));
}

}  // namespace

TARGB TColorConvert::ToARGB(TColor color) noexcept {
    return ToARGB(255, color);
}

TARGB TColorConvert::ToARGB(std::uint8_t opacity, TColor color) noexcept {
    const TColor plain = ColorToRGB(color);
    return TARGB{opacity} << 24 | TARGB{Byte(plain, 0)} << 16 | TARGB{Byte(plain, 1)} << 8 | Byte(plain, 2);
}

TColor TColorConvert::ToColor(TARGB argbColor) noexcept {
    return Plain(Byte(argbColor, 2), Byte(argbColor, 1), Byte(argbColor, 0));
}

void TColorConvert::HSLtoRGB(float h, float s, float l, std::uint8_t& r, std::uint8_t& g,
                             std::uint8_t& b) noexcept {
    if (s == 0) {
        r = g = b = Channel(l);
        return;
    }
    const auto v2 =
        static_cast<float>(l < 0.5F ? (Extended{1} + s) * l : (Extended{l} + s) - Extended{s} * l);
    const auto v1 = static_cast<float>(Extended{2} * l - v2);
    r = Channel(Hue_2_RGB(v1, v2, static_cast<float>(h + kThird)));
    g = Channel(Hue_2_RGB(v1, v2, h));
    b = Channel(Hue_2_RGB(v1, v2, static_cast<float>(h - kThird)));
}

TARGB TColorConvert::HSLtoARGB(float h, float s, float l) noexcept {
    std::uint8_t r = 0, g = 0, b = 0;
    HSLtoRGB(h, s, l, r, g, b);
    return ToARGB(Plain(r, g, b));
}

float TColorConvert::Hue_2_RGB(float v1, float v2, float hue) noexcept {
    if (hue < 0) hue = static_cast<float>(Extended{hue} + 1);
    if (hue > 1) hue = static_cast<float>(Extended{hue} - 1);
    const Extended range = Extended{v2} - v1;
    if (Extended{6} * hue < 1) return static_cast<float>(range * 6 * hue + v1);
    if (Extended{2} * hue < 1) return v2;
    if (Extended{3} * hue < 2) return static_cast<float>(range * (2 * kThird - hue) * 6 + v1);
    return v1;
}

void TColorConvert::RGBtoHSL(std::uint8_t r, std::uint8_t g, std::uint8_t b, float& h, float& s,
                             float& l) noexcept {
    const auto red = static_cast<float>(Extended{1} * r / 255),
               green = static_cast<float>(Extended{1} * g / 255),
               blue = static_cast<float>(Extended{1} * b / 255);
    const float min = std::min({red, green, blue}), max = std::max({red, green, blue});
    const auto delta = static_cast<float>(Extended{max} - min);
    h = 0;
    s = 0;
    l = static_cast<float>((Extended{max} + min) / 2);
    if (delta == 0) return;
    s = static_cast<float>(l < 0.5F ? delta / (Extended{max} + min) : delta / (Extended{2} - max - min));
    const float dr = Distance(red, max, delta), dg = Distance(green, max, delta),
                db = Distance(blue, max, delta);
    if (red == max) {
        h = static_cast<float>(Extended{db} - dg);
    } else if (green == max) {
        h = static_cast<float>(kThird + dr - db);
    } else {
        h = static_cast<float>(2 * kThird + dg - dr);
    }
    if (h < 0) h = static_cast<float>(Extended{h} + 1);
    if (h > 1) h = static_cast<float>(Extended{h} - 1);
}

void TColorConvert::RGBtoHSL(TARGB color, float& h, float& s, float& l) noexcept {
    RGBtoHSL(Byte(color, 2), Byte(color, 1), Byte(color, 0), h, s, l);
}

void TColorConvert::ARGBtoRGBComponents(TARGB color, std::uint8_t& r, std::uint8_t& g,
                                        std::uint8_t& b) noexcept {
    r = Byte(color, 2);
    g = Byte(color, 1);
    b = Byte(color, 0);
}

void TColorConvert::ARGBtoARGBComponents(TARGB color, std::uint8_t& a, std::uint8_t& r, std::uint8_t& g,
                                         std::uint8_t& b) noexcept {
    a = Byte(color, 3);
    ARGBtoRGBComponents(color, r, g, b);
}

void TColorConvert::NativeColorToRGBComponents(TColor color, std::uint8_t& r, std::uint8_t& g,
                                               std::uint8_t& b) noexcept {
    ARGBtoRGBComponents(ToARGB(color), r, g, b);
}

std::vector<TColor> BlendColors(TColor color1, TColor color2, std::int32_t numColors) {
    if (numColors < 2) throw Exception(u"Invalid number of colors");
    std::vector<TColor> colors(static_cast<std::size_t>(numColors), color1);
    colors.back() = color2;
    float steps[3];
    for (int c = 0; c < 3; ++c)
        steps[c] = static_cast<float>(Extended(Byte(color2, c) - Byte(color1, c)) / (numColors - 1));
    for (std::int32_t i = 1; i < numColors - 1; ++i) {
        const auto channel = [&](int c) {
            const std::int32_t value = RoundToInt(Byte(color1, c) + Extended{steps[c]} * i);
            return static_cast<std::uint32_t>(std::clamp(value, 0, 255));
        };
        colors[static_cast<std::size_t>(i)] = Plain(channel(0), channel(1), channel(2));
    }
    return colors;
}

TColor DarkenColour(TColor color, std::int32_t amount) noexcept {
    return EachChannel(color, -std::int64_t{amount});
}

TColor LightenColour(TColor color, std::int32_t amount) noexcept {
    return EachChannel(color, amount);
}

}  // namespace Varnholt
