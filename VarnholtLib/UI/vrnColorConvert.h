#pragma once

#include <cstdint>
#include <vector>

#include "Platform/Drawing/Colors.h"

/// Colours in their three forms, and calculating with them.
///
///     const TARGB half = TColorConvert::ToARGB(128, clHighlight);
///     float h, s, l;
///     TColorConvert::RGBtoHSL(half, h, s, l);
///
/// A TColor has red in its low byte; a system colour becomes a plain one where the comment says so. An ARGB colour has
/// alpha in its top byte, then red, green and blue. Hue, saturation and lightness (HSL) are from 0 to 1; grey has hue and
/// saturation 0. Values that are stored in 32-bit floats are rounded at each store.
///
/// Threads: as Colors.h.
namespace Varnholt {

class VARNHOLT_EXPORT TColorConvert {
public:
    TColorConvert() = delete;

    /// The colour, made plain, with alpha 255 or the given opacity.
    [[nodiscard]] static TARGB ToARGB(TColor color) noexcept;
    [[nodiscard]] static TARGB ToARGB(std::uint8_t opacity, TColor color) noexcept;
    /// Without alpha.
    [[nodiscard]] static TColor ToColor(TARGB argbColor) noexcept;

    /// Channels beyond 0 to 255, as of a lightness above 1, become the nearest of these; those of no number 0.
    static void HSLtoRGB(float h, float s, float l, std::uint8_t& r, std::uint8_t& g,
                         std::uint8_t& b) noexcept;
    [[nodiscard]] static TARGB HSLtoARGB(float h, float s, float l) noexcept;
    /// A channel, from 0 to 1, of the hue between two values (Foley and van Dam 1982, the HLS model).
    [[nodiscard]] static float Hue_2_RGB(float v1, float v2, float hue) noexcept;
    static void RGBtoHSL(std::uint8_t r, std::uint8_t g, std::uint8_t b, float& h, float& s,
                         float& l) noexcept;
    static void RGBtoHSL(TARGB color, float& h, float& s, float& l) noexcept;

    static void ARGBtoRGBComponents(TARGB color, std::uint8_t& r, std::uint8_t& g, std::uint8_t& b) noexcept;
    static void ARGBtoARGBComponents(TARGB color, std::uint8_t& a, std::uint8_t& r, std::uint8_t& g,
                                     std::uint8_t& b) noexcept;
    /// Of the colour, made plain.
    static void NativeColorToRGBComponents(TColor color, std::uint8_t& r, std::uint8_t& g,
                                           std::uint8_t& b) noexcept;
};

/// So many colours from one to the other, in equal steps of each channel. Both ends are as given; the bytes of the
/// colours count as they are, so pass plain ones. Raises Exception `Invalid number of colors` for a number below 2.
[[nodiscard]] VARNHOLT_EXPORT std::vector<TColor> BlendColors(TColor color1, TColor color2,
                                                              std::int32_t numColors);

/// The colour, made plain, with each channel less or more by an amount, between 0 and 255.
[[nodiscard]] VARNHOLT_EXPORT TColor DarkenColour(TColor color, std::int32_t amount) noexcept;
[[nodiscard]] VARNHOLT_EXPORT TColor LightenColour(TColor color, std::int32_t amount) noexcept;

}  // namespace Varnholt
