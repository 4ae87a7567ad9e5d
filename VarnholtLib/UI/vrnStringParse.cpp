#include "VarnholtLib/UI/vrnStringParse.h"

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Text.h"

namespace Varnholt {

void THTMLColorString::Parse(StringView str) {
    if (str.empty()) throw Exception(u"HTML color string is empty");
    if (str.starts_with(u'#')) str.remove_prefix(1);
    if (str.size() != 3 && str.size() != 6) throw Exception(u"Invalid HTML color string");
    const auto channel = [&](std::size_t index) {
        const String pair = str.size() == 3 ? String(2, str[index]) : String(str.substr(2 * index, 2));
        const unsigned high = HexDigitValue(pair[0]), low = HexDigitValue(pair[1]);
        if (high > 15 || low > 15) throw EConvertError(Format(u"'$%s' is not a valid integer value", {pair}));
        return static_cast<std::uint8_t>(high << 4 | low);
    };
    const std::uint8_t red = channel(0), green = channel(1), blue = channel(2);
    FRed = red;
    FGreen = green;
    FBlue = blue;
}

TColor THTMLColorString::AsNativeColor() const noexcept {
    return TColorConvert::ToColor(AsGPColor());
}

TARGB THTMLColorString::AsGPColor() const noexcept {
    return 0xFF000000U | TARGB{FRed} << 16 | TARGB{FGreen} << 8 | FBlue;
}

String THTMLColorString::AsHTMLColor(bool incHash) const {
    return Format(u"%s%.2x%.2x%.2x", {incHash ? u"#" : u"", FRed, FGreen, FBlue});
}

TColor THTMLColorString::HTMLToColor(StringView htmlColorString) {
    return THTMLColorString(htmlColorString).AsNativeColor();
}

TARGB THTMLColorString::HTMLToGPColor(StringView htmlColorString) {
    return THTMLColorString(htmlColorString).AsGPColor();
}

}  // namespace Varnholt
