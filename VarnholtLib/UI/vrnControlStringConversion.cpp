#include "VarnholtLib/UI/vrnControlStringConversion.h"

#include <vector>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "VarnholtLib/Foundation/vrnString.h"

namespace Varnholt {
namespace {

// The letters of the values, in the order of the values.
constexpr StringView kStyleLetters = u"BIUS";
constexpr StringView kAnchorLetters = u"LTRB";

template <typename TValue>
String LettersOf(TEnumSet<TValue> set, StringView letters) {
    String text;
    for (std::size_t i = 0; i < letters.size(); ++i)
        if (set.Contains(static_cast<TValue>(i))) text += letters[i];
    return text;
}

template <typename TValue>
TEnumSet<TValue> SetOf(StringView text, StringView letters) {
    TEnumSet<TValue> set;
    for (std::size_t i = 0; i < letters.size(); ++i)
        if (text.find(letters[i]) != StringView::npos) set.Include(static_cast<TValue>(i));
    return set;
}

std::vector<String> PartsOf(StringView text, std::size_t count) {
    std::vector<String> parts = SplitString(text, u',', false);
    if (parts.size() != count) throw EConvertError(u"String is not a valid Size string");
    return parts;
}

}  // namespace

String FontStylesToString(TFontStyles styles) {
    return LettersOf(styles, kStyleLetters);
}

TFontStyles StringToFontStyles(StringView text) {
    return SetOf<TFontStyle>(text, kStyleLetters);
}

String AnchorsToString(TAnchors anchors) {
    return LettersOf(anchors, kAnchorLetters);
}

TAnchors StringToAnchors(StringView text) {
    return SetOf<TAnchorKind>(text, kAnchorLetters);
}

String SizeToString(const TSize& size) {
    return Format(u"%d,%d", {size.Width, size.Height});
}

TSize StringToSize(StringView text) {
    const std::vector<String> parts = PartsOf(text, 2);
    return {StrToInt(parts[0]), StrToInt(parts[1])};
}

String RectToString(const TRect& rect) {
    return Format(u"%d,%d,%d,%d", {rect.Left, rect.Top, rect.Right, rect.Bottom});
}

TRect StringToRect(StringView text) {
    const std::vector<String> parts = PartsOf(text, 4);
    return {StrToInt(parts[0]), StrToInt(parts[1]), StrToInt(parts[2]), StrToInt(parts[3])};
}

}  // namespace Varnholt
