#pragma once

#include "Platform/Runtime/Types.h"

/// Tests of code units, trimming, and comparison of texts without regard to case.
///
///     if (StartsText(u"[error]", TrimView(line))) ++errors;   // finds "[ERROR]" too
///
/// Only the ASCII letters fold: "A" equals "a", but U+00C4 does not equal U+00E4, whatever the locale.
/// Whole Unicode case mapping is in Characters.h. An empty text starts, ends and is contained in every text.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// Whether the code unit ends a line, on its own or as part of CR LF.
[[nodiscard]] constexpr bool IsLineEnd(Char unit) {
    return unit == u'\n' || unit == u'\r';
}

/// The value of a hexadecimal digit, or 16 for anything else.
[[nodiscard]] constexpr unsigned HexDigitValue(Char unit) {
    if (unit >= u'0' && unit <= u'9') return unit - u'0';
    if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10u;
    if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10u;
    return 16;
}

/// The text without the code units 32 and below at both ends: a view into the argument, which must outlive
/// it.
[[nodiscard]] VARNHOLT_EXPORT StringView TrimView(StringView text);

/// The text without the code units 32 and below at both ends.
[[nodiscard]] VARNHOLT_EXPORT String Trim(StringView text);

/// Whether the texts are equal when ASCII letters fold.
[[nodiscard]] VARNHOLT_EXPORT bool SameText(StringView left, StringView right);

/// Orders two texts by code unit, ASCII letters taken as upper case: below 0 if left comes first, 0 if the
/// texts are the same, above 0 if right comes first. A text comes after each of its prefixes.
[[nodiscard]] VARNHOLT_EXPORT int CompareText(StringView left, StringView right);

/// Whether text begins with prefix when ASCII letters fold.
[[nodiscard]] VARNHOLT_EXPORT bool StartsText(StringView prefix, StringView text);

/// Whether text ends with suffix when ASCII letters fold.
[[nodiscard]] VARNHOLT_EXPORT bool EndsText(StringView suffix, StringView text);

/// Whether text contains part when ASCII letters fold.
[[nodiscard]] VARNHOLT_EXPORT bool ContainsText(StringView part, StringView text);

/// The text with A to Z in lower case and all else unchanged.
[[nodiscard]] VARNHOLT_EXPORT String LowerCase(StringView text);

/// The text with a to z in upper case and all else unchanged.
[[nodiscard]] VARNHOLT_EXPORT String UpperCase(StringView text);

}  // namespace Varnholt
