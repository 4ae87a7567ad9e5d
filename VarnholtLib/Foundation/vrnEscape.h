#pragma once

#include <cstdint>

#include "Platform/Runtime/Types.h"

/// Backslash escaping as in C string literals, and the scanning of quoted text.
///
///     String line = u"name = \"" + CStyleEscape(name) + u"\";";
///     std::int32_t length = CStyleEscapedGetLength(line, 8);   // the quoted name with both quotes
///     String back = CStyleUnescape(StringView(line).substr(8, length - 2));   // the name again
///
/// Seven characters are escaped: backslash, single quote, double quote and question mark as a backslash and
/// themselves; tab, line feed and carriage return as \t, \n and \r. Positions count from 1.
///
/// Failures raise the plain Exception with the text given at the operation.
/// Threads: the functions keep no state.
namespace Varnholt {

/// The text with a backslash and a letter in place of each of the seven characters.
[[nodiscard]] VARNHOLT_EXPORT String CStyleEscape(StringView text);

/// The reverse: CStyleUnescape(CStyleEscape(t)) is t for any t. Raises "Unexpected end of string" if the text
/// ends in a backslash that escapes nothing, and "Unknown unescape char" if one precedes any other
/// character.
[[nodiscard]] VARNHOLT_EXPORT String CStyleUnescape(StringView text);

/// The position of the double quote that closes the quoted text whose opening quote is at startIndex. A quote
/// after a backslash does not close it. Raises, checked in this order:
/// - "StartIndex is set at (or beyond) the end of the given string" if startIndex is the last position or a
///   later one;
/// - "Specified StartIndex must point to a quote" if there is no double quote, also for 0 and below;
/// - "End of string reached without finding closing quote".
[[nodiscard]] VARNHOLT_EXPORT std::int32_t CStyleEscapedGetEndIndex(StringView text, std::int32_t startIndex);

/// The length of that quoted text with both quotes. Raises what CStyleEscapedGetEndIndex raises.
[[nodiscard]] VARNHOLT_EXPORT std::int32_t CStyleEscapedGetLength(StringView text, std::int32_t startIndex);

}  // namespace Varnholt
