#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "Platform/Runtime/Types.h"
#include "VarnholtBaseLib/Arrays.h"
#include "VarnholtLib/Foundation/vrnPathText.h"

/// Everyday work with text: tests of characters, splitting and joining, replacing, padding.
///
///     SplitStringEx(u"Graz; \"a; b\"; 7", u';', u'"', true);   // "Graz", "a; b" and "7"
///     SpaceString(u"MonthlyData");                            // "Monthly Data"
///     IntToStr(21) + GetOrdinalIndicator(21);                 // "21st"
///
/// Positions in text count UTF-16 code units from 1, array indexes count from 0. Letters, digits and
/// white space are those of Unicode. Comparisons are exact; "without regard to case" folds the ASCII letters
/// alone. Trimming takes away blanks and control characters (codes 32 and below) from both ends.
///
/// An argument of type String& is changed in place. PadString and CreateNumberRange, which make long texts of
/// short arguments, raise EArgumentException "The resulting text is too long" beyond 268435456 code units.
///
/// Operations on path text, which this header brings along, stand in vrnPathText.h.
///
/// Leans on the character tests and case mappings of Platform/Runtime.
/// Threads: the functions keep no state.
namespace Varnholt {

// Tests of characters and number texts

/// True for any Unicode decimal digit, and also for "-" and "+".
[[nodiscard]] VARNHOLT_EXPORT bool IsDigit(Char character);
/// True for the ASCII digits 0 to 9 alone.
[[nodiscard]] VARNHOLT_EXPORT bool IsNumberChar(Char character);
/// True for any Unicode letter.
[[nodiscard]] VARNHOLT_EXPORT bool IsAlpha(Char character);
/// True for any Unicode white space.
[[nodiscard]] VARNHOLT_EXPORT bool IsWhiteSpace(Char character);

/// True if the text is not empty and each character passes IsDigit or is "." or an upper-case "E".
/// Neither order nor count is looked at: "1E.+" passes.
[[nodiscard]] VARNHOLT_EXPORT bool IsNumber(StringView text);

/// True if the text is not empty and each character passes IsDigit.
[[nodiscard]] VARNHOLT_EXPORT bool IsIntNumber(StringView text);

/// True for digits with at most one "." among them and a "-" in no place but the first. Signs "+" pass
/// everywhere. False for empty text and for "-" alone.
[[nodiscard]] VARNHOLT_EXPORT bool IsDigitString(StringView text);

// Splitting and joining

/// The parts of the text between separators outside quotes. Quote characters are dropped and need not
/// balance: an open quote runs to the end. Where the separator is a blank, a run of blanks counts as one.
/// With trim, each part is trimmed, quoted or not. Empty text has no parts; any other has at least one.
[[nodiscard]] VARNHOLT_EXPORT std::vector<String> SplitStringEx(StringView text, Char separator, Char quote,
                                                                bool trim);

/// The parts of the text between separators, empty ones too; with trim, each is trimmed. Empty text has no
/// parts, as with SplitStringEx.
[[nodiscard]] VARNHOLT_EXPORT std::vector<String> SplitString(StringView text, Char separator, bool trim);

/// The parts of the text between runs of white space (IsWhiteSpace). No part is empty.
[[nodiscard]] VARNHOLT_EXPORT std::vector<String> SplitWhiteSpaceString(StringView text);

/// The parts with the separator between them. No parts give empty text.
[[nodiscard]] VARNHOLT_EXPORT String CombineStringArray(std::span<const String> parts, Char separator);

/// Makes the item the list where the list is empty, else appends ", " and the item.
VARNHOLT_EXPORT void SmartCommaList(String& list, StringView item);

/// The integers from first to last, ascending, with the separator between them and, with addBlank, one
/// blank after each separator. Empty text where first is above last. The limit of length reckons each number
/// as long as the longer of first and last.
[[nodiscard]] VARNHOLT_EXPORT String CreateNumberRange(std::int32_t first, std::int32_t last, Char separator,
                                                       bool addBlank);

/// The index from 0 of the first element that equals the text, or -1. With ignoreCase, without regard to
/// case.
[[nodiscard]] VARNHOLT_EXPORT std::int32_t IndexOfStringArray(std::span<const String> items, StringView text,
                                                              bool ignoreCase);

// Replacing and cutting

/// Replaces the first occurrence and returns true, or returns false if there is none. Empty text to find
/// occurs nowhere.
VARNHOLT_EXPORT bool StrReplace(String& text, StringView find, StringView replace);

/// The text after one StrReplace or, with all, after StrReplace from the start of the text again and again
/// until nothing is found: "aaab" with "ab" replaced by "b" gives "b". So what the replacing itself brings
/// about is replaced, too.
///
/// With all, a replacement that contains the text to find raises EArgumentException "The replacement contains
/// the text to find", whatever the text. Some other pairs never come to an end either, such as "ab" replaced
/// by "bbaa" in "aab", or take very long: unless the replacement is the shorter one, EArgumentException "The
/// replacing does not come to an end" is raised once the replacements written exceed by 16777216 code units
/// what a text full of occurrences takes when each is replaced once.
[[nodiscard]] VARNHOLT_EXPORT String StrReplace2(StringView text, StringView find, StringView replace,
                                                 bool all);

/// The text without the characters that occur in chars.
[[nodiscard]] VARNHOLT_EXPORT String StripChars(StringView text, StringView chars);

/// Returns the first count code units and deletes them from the text; fewer where the text is shorter, none
/// where count is negative.
[[nodiscard]] VARNHOLT_EXPORT String CutString(String& text, std::int32_t count);

/// What follows the first occurrence of the character; the whole text where it does not occur.
[[nodiscard]] VARNHOLT_EXPORT String TrimString(StringView text, Char character);

// Shaping

/// The ending of an English ordinal number: "st" for 21, "th" for 11. The sign of the number has no say.
[[nodiscard]] VARNHOLT_EXPORT String GetOrdinalIndicator(std::int32_t number);

/// The text, if it begins with leading, else leading followed by the text. With ignoreCase the beginning is
/// compared without regard to case, and the text keeps its own.
[[nodiscard]] VARNHOLT_EXPORT String EnsureStringLeading(StringView leading, StringView text,
                                                         bool ignoreCase);

/// The text with the character put before it until it has length code units. A text of that length or more
/// comes back as it is.
[[nodiscard]] VARNHOLT_EXPORT String PadString(StringView text, std::int32_t length, Char character);

/// The characters in reverse order. A surrogate pair is one character and stays in its order.
[[nodiscard]] VARNHOLT_EXPORT String ReverseString(StringView text);

/// The text with a blank before each letter A to Z that is not the first character.
[[nodiscard]] VARNHOLT_EXPORT String SpaceString(StringView text);

/// The text with its first character in upper case and all others in lower case, by the mappings of Unicode.
[[nodiscard]] VARNHOLT_EXPORT String SentenceCase(StringView text);

// A light veil over text, no protection

/// Makes text unreadable to the casual eye: element i, from 0, is the character code times i + 1. "abc" gives
/// 97, 196, 297. Raises ERangeError "Text is too long to encode" where a product exceeds 32 bits, which takes
/// more than 32768 characters.
[[nodiscard]] VARNHOLT_EXPORT TIntegerArray SimpleStrEnc(StringView text);

/// The text that SimpleStrEnc turned into these elements: character i is element i divided by i + 1, the
/// fraction dropped. Raises ERangeError "Element %d is no encoded character", with the index, where that
/// gives no character code.
[[nodiscard]] VARNHOLT_EXPORT String SimpleStrDec(std::span<const std::int32_t> elements);

}  // namespace Varnholt
