#pragma once

#include <cstddef>

#include "Platform/Runtime/Types.h"

/// The categories of characters and the case mapping of texts, by the Unicode character database.
///
/// Each test has two forms: for one code unit, and for a whole character. For a unit that is half of a
/// surrogate pair all tests are false, so texts with characters outside the basic plane are processed by
/// character:
///
///     for (std::size_t at = 0; at < text.size(); at += CharacterLength(CharacterAt(text, at))) {
///         if (IsUnicodeLetter(CharacterAt(text, at))) ++letters;
///     }
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// A letter of any script (general categories Lu, Ll, Lt, Lm and Lo).
[[nodiscard]] VARNHOLT_EXPORT bool IsUnicodeLetter(Char unit);
[[nodiscard]] VARNHOLT_EXPORT bool IsUnicodeLetter(char32_t character);

/// A decimal digit of any script (general category Nd). Fractions, superscripts and Roman numerals are not
/// digits.
[[nodiscard]] VARNHOLT_EXPORT bool IsUnicodeDigit(Char unit);
[[nodiscard]] VARNHOLT_EXPORT bool IsUnicodeDigit(char32_t character);

/// White space (property White_Space): blank, tab, line ends, no-break space, the spaces of U+2000 and so on.
/// The zero-width space U+200B is not white space.
[[nodiscard]] VARNHOLT_EXPORT bool IsUnicodeWhiteSpace(Char unit);
[[nodiscard]] VARNHOLT_EXPORT bool IsUnicodeWhiteSpace(char32_t character);

/// An upper-case letter (general category Lu).
[[nodiscard]] VARNHOLT_EXPORT bool IsUnicodeUpper(Char unit);
[[nodiscard]] VARNHOLT_EXPORT bool IsUnicodeUpper(char32_t character);

/// A lower-case letter (general category Ll).
[[nodiscard]] VARNHOLT_EXPORT bool IsUnicodeLower(Char unit);
[[nodiscard]] VARNHOLT_EXPORT bool IsUnicodeLower(char32_t character);

/// The text in upper case by the full mapping of Unicode, whatever the process's locale. The length may
/// change: U+00DF becomes "SS". An unpaired surrogate is unchanged. Raises EArgumentException "Text is too
/// long to convert" for texts of 700 million units and more.
[[nodiscard]] VARNHOLT_EXPORT String ToUpper(StringView text);

/// The text in lower case by the full mapping of Unicode; otherwise as ToUpper.
[[nodiscard]] VARNHOLT_EXPORT String ToLower(StringView text);

/// The whole character that begins at a 0-based position: a high surrogate followed by a low one is one
/// character, an unpaired surrogate is returned as it is. Raises ERangeError "Position N is outside
/// the text".
[[nodiscard]] VARNHOLT_EXPORT char32_t CharacterAt(StringView text, std::size_t position);

/// The number of code units that a character takes in a String: 2 above U+FFFF, else 1.
[[nodiscard]] VARNHOLT_EXPORT std::size_t CharacterLength(char32_t character);

}  // namespace Varnholt
