#pragma once

#include "Platform/Runtime/Types.h"
#include "VarnholtLib/UI/vrnColorConvert.h"

/// Colours as texts of HTML.
///
///     const TColor rust = THTMLColorString::HTMLToColor(u"#b7410e");
///     const String text = THTMLColorString(u"fa0").AsHTMLColor(true);          // "#FFAA00"
///
/// Threads: an object serves one thread at a time, or any number that only read it.
namespace Varnholt {

class VARNHOLT_EXPORT THTMLColorString {
public:
    /// Black.
    THTMLColorString() = default;
    /// Raises as Parse.
    explicit THTMLColorString(StringView htmlColorString) { Parse(htmlColorString); }

    /// Reads three or six hexadecimal digits, in either case, after a "#" that may be missing; of three, each
    /// stands for two. Raises Exception `HTML color string is empty`, or `Invalid HTML color string` for another
    /// length, and EConvertError as StrToInt for what is no hexadecimal digit; the colour is then unchanged.
    void Parse(StringView str);

    [[nodiscard]] std::uint8_t GetRed() const noexcept { return FRed; }
    [[nodiscard]] std::uint8_t GetGreen() const noexcept { return FGreen; }
    [[nodiscard]] std::uint8_t GetBlue() const noexcept { return FBlue; }
    [[nodiscard]] TColor AsNativeColor() const noexcept;
    /// With alpha 255.
    [[nodiscard]] TARGB AsGPColor() const noexcept;
    /// Six digits in upper case, after a "#" if asked for.
    [[nodiscard]] String AsHTMLColor(bool incHash) const;

    /// The colour of a text. Raise as Parse.
    [[nodiscard]] static TColor HTMLToColor(StringView htmlColorString);
    [[nodiscard]] static TARGB HTMLToGPColor(StringView htmlColorString);

private:
    std::uint8_t FRed = 0;
    std::uint8_t FGreen = 0;
    std::uint8_t FBlue = 0;
};

}  // namespace Varnholt
