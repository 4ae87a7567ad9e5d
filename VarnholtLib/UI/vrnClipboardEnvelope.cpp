#include "VarnholtLib/UI/vrnClipboardEnvelope.h"

#include <algorithm>
#include <utility>

#include "Platform/Controls/Clipboard.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"

namespace Varnholt {
namespace {

constexpr StringView kMarker = u"$ENVELOPE:";

struct TEnvelope {
    StringView TypeName;
    StringView Text;
};

/// Raises as ParseEnvelope.
TEnvelope PartsOf(StringView s) {
    if (!TClipboardEnvelope::HasEnvelope(s)) throw Exception(u"Data not in required format");
    const StringView rest = s.substr(kMarker.size());
    const std::size_t end = std::min(rest.find(u':'), rest.size());
    return {rest.substr(0, end), rest.substr(std::min(end + 1, rest.size()))};
}

[[noreturn]] void RaiseWrongFormat() {
    throw Exception(u"Clipboard does not contain correct format");
}

}  // namespace

void TClipboardEnvelope::SetText(StringView typeName, StringView text) {
    Clipboard().SetAsText(FormatEenvelope(typeName, text));
}

String TClipboardEnvelope::GetText(StringView typeName) {
    if (!Clipboard().HasFormat(kClipboardText)) RaiseWrongFormat();
    const String s = Clipboard().GetAsText();
    const TEnvelope envelope = PartsOf(s);
    if (envelope.TypeName != typeName) RaiseWrongFormat();
    return String(envelope.Text);
}

bool TClipboardEnvelope::Contains(StringView typeName) noexcept {
    try {
        if (!Clipboard().HasFormat(kClipboardText)) return false;
        const String s = Clipboard().GetAsText();
        return HasEnvelope(s) && PartsOf(s).TypeName == typeName;
    } catch (...) {
        return false;  // a clipboard that cannot be read has none
    }
}

String TClipboardEnvelope::FormatEenvelope(StringView typeName, StringView text) {
    return Format(u"$ENVELOPE:%s:%s", {typeName, text});
}

bool TClipboardEnvelope::HasEnvelope(StringView s) noexcept {
    return s.starts_with(kMarker);
}

void TClipboardEnvelope::ParseEnvelope(StringView s, String& typeName, String& text) {
    const TEnvelope envelope = PartsOf(s);
    String newTypeName(envelope.TypeName), newText(envelope.Text);  // either result may hold the envelope
    typeName = std::move(newTypeName);
    text = std::move(newText);
}

String TClipboardEnvelope::GetEnvelopeTypeName(StringView s) {
    return String(PartsOf(s).TypeName);
}

String TClipboardEnvelope::GetEnvelopeText(StringView s) {
    return String(PartsOf(s).Text);
}

}  // namespace Varnholt
