#pragma once

#include "Platform/Runtime/Types.h"

/// Typed texts on the clipboard: an envelope names the type, so that an application recognises its own data.
///
///     TClipboardEnvelope::SetText(u"Station.Rows", rows);
///     ...
///     if (TClipboardEnvelope::Contains(u"Station.Rows")) Insert(TClipboardEnvelope::GetText(u"Station.Rows"));
///
/// An envelope is the text `$ENVELOPE:TYPE:TEXT`. Type names are compared exactly; one with a colon cannot be read
/// back, since the part after the colon counts as text. The text may be anything, also empty. What is on the
/// clipboard may come from any program.
///
/// Uses Clipboard.h. Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT TClipboardEnvelope {
public:
    TClipboardEnvelope() = delete;

    /// Replaces what is on the clipboard by an envelope.
    static void SetText(StringView typeName, StringView text);
    /// The text of the envelope on the clipboard. Raises Exception `Clipboard does not contain correct format` if
    /// there is no text or the envelope has another type, and `Data not in required format` for a text without an
    /// envelope.
    [[nodiscard]] static String GetText(StringView typeName);
    /// Whether the clipboard has an envelope of that type. False if it cannot be read.
    [[nodiscard]] static bool Contains(StringView typeName) noexcept;

    // --- The envelope ---

    [[nodiscard]] static String FormatEenvelope(StringView typeName, StringView text);
    /// Whether the text begins with `$ENVELOPE:`, in this case.
    [[nodiscard]] static bool HasEnvelope(StringView s) noexcept;
    /// Takes an envelope apart. A second colon may be missing, and then the text is empty. Raises Exception `Data not in
    /// required format` for a text without an envelope, and changes nothing then.
    static void ParseEnvelope(StringView s, String& typeName, String& text);
    /// Raise as ParseEnvelope.
    [[nodiscard]] static String GetEnvelopeTypeName(StringView s);
    [[nodiscard]] static String GetEnvelopeText(StringView s);
};

}  // namespace Varnholt
