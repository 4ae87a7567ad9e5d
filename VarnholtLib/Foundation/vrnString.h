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
/// Positions in text count UTF-16 code units from 1, array indexes count from 0. Letters, digits and white
/// space are those of Unicode. Comparisons are exact; "without regard to case" folds only the ASCII letters,
/// by the functions of Text.h. Trimming removes blanks and control characters (codes 32 and below) from both
/// ends.
///
/// An argument of type String& is changed in place. PadString and CreateNumberRange, which make long texts
/// from short arguments, raise EArgumentException "The resulting text is too long" beyond 268435456 code
/// units.
///
/// This header includes vrnPathText.h, the operations on path text.
///
/// Threads: the functions keep no state.
namespace Varnholt {

// --- Tests of characters and number texts ---

/// True for any Unicode decimal digit, and also for "-" and "+".
[[nodiscard]] VARNHOLT_EXPORT bool IsDigit(Char character);
/// True only for the ASCII digits 0 to 9.
[[nodiscard]] VARNHOLT_EXPORT bool IsNumberChar(Char character);
/// True for any Unicode letter.
[[nodiscard]] VARNHOLT_EXPORT bool IsAlpha(Char character);
/// True for any Unicode white space.
[[nodiscard]] VARNHOLT_EXPORT bool IsWhiteSpace(Char character);

/// True if the text is not empty and each character passes IsDigit or is "." or an upper-case "E".
/// Neither order nor count is checked: "1E.+" passes.
[[nodiscard]] VARNHOLT_EXPORT bool IsNumber(StringView text);

/// True if the text is not empty and each character passes IsDigit.
[[nodiscard]] VARNHOLT_EXPORT bool IsIntNumber(StringView text);

/// True for digits with at most one "." among them and a "-" only in the first place. A "+" passes
/// everywhere. False for empty text and for "-".
[[nodiscard]] VARNHOLT_EXPORT bool IsDigitString(StringView text);

// --- Splitting and joining ---

/// The parts of the text between separators outside quotes. Quote characters are removed and need not
/// balance: an open quote extends to the end. If the separator is a blank, a run of blanks counts as one.
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

/// Sets an empty list to the item, otherwise appends ", " and the item.
VARNHOLT_EXPORT void SmartCommaList(String& list, StringView item);

/// The integers from first to last, ascending, with the separator between them and, with addBlank, one
/// blank after each separator. Empty text if first is above last. For the limit of length each number counts
/// as the longer of first and last.
[[nodiscard]] VARNHOLT_EXPORT String CreateNumberRange(std::int32_t first, std::int32_t last, Char separator,
                                                       bool addBlank);

/// The index from 0 of the first element that equals the text, or -1. With ignoreCase, without regard to
/// case.
[[nodiscard]] VARNHOLT_EXPORT std::int32_t IndexOfStringArray(std::span<const String> items, StringView text,
                                                              bool ignoreCase);

// --- Replacing and cutting ---

/// Replaces the first occurrence and returns true, or returns false if there is none. Empty text to find
/// occurs nowhere.
VARNHOLT_EXPORT bool StrReplace(String& text, StringView find, StringView replace);

/// The text after one StrReplace or, with all, after StrReplace from the start of the text again and again
/// until nothing is found: "aaab" with "ab" replaced by "b" gives "b". So occurrences that a replacement
/// creates are replaced, too.
///
/// With all, and if the text to find occurs, a replacement that contains it raises EArgumentException "The
/// replacement contains the text to find". Some other pairs do not end either, such as "ab" replaced by
/// "bbaa" in "aab", or take very long: unless the replacement is the shorter one, EArgumentException "The
/// replacing does not end" is raised when the replacements written exceed by 16777216 code units what a text
/// full of occurrences takes when each is replaced once. With a shorter replacement the time is at most that
/// of writing it once for each code unit of the text.
[[nodiscard]] VARNHOLT_EXPORT String StrReplace2(StringView text, StringView find, StringView replace,
                                                 bool all);

/// The text without the characters that occur in chars.
[[nodiscard]] VARNHOLT_EXPORT String StripChars(StringView text, StringView chars);

/// Returns the first count code units and deletes them from the text; fewer if the text is shorter, none if
/// count is negative.
[[nodiscard]] VARNHOLT_EXPORT String CutString(String& text, std::int32_t count);

/// What follows the first occurrence of the character; the whole text if it does not occur.
[[nodiscard]] VARNHOLT_EXPORT String TrimString(StringView text, Char character);

// --- Shaping ---

/// The ending of an English ordinal number: "st" for 21, "th" for 11. The sign of the number is ignored.
[[nodiscard]] VARNHOLT_EXPORT String GetOrdinalIndicator(std::int32_t number);

/// The text if it begins with leading, otherwise leading followed by the text. With ignoreCase the beginning
/// is compared without regard to case, and the text keeps its case.
[[nodiscard]] VARNHOLT_EXPORT String EnsureStringLeading(StringView leading, StringView text,
                                                         bool ignoreCase);

/// The text, preceded by as many of the character as give it length code units. A text of that length or more
/// is returned unchanged.
[[nodiscard]] VARNHOLT_EXPORT String PadString(StringView text, std::int32_t length, Char character);

/// The characters in reverse order. A surrogate pair is one character and keeps its order.
[[nodiscard]] VARNHOLT_EXPORT String ReverseString(StringView text);

/// The text with a blank before each letter A to Z that is not the first character.
[[nodiscard]] VARNHOLT_EXPORT String SpaceString(StringView text);

/// The text with its first character in upper case and all others in lower case, by the mappings of Unicode.
[[nodiscard]] VARNHOLT_EXPORT String SentenceCase(StringView text);

// --- Obfuscation, not encryption ---

/// Makes text unreadable at a glance: element i, from 0, is the character code times i + 1. "abc" gives
/// 97, 196, 297. Raises ERangeError "Text is too long to encode" where a product exceeds 32 bits, which takes
/// more than 32768 characters.
[[nodiscard]] VARNHOLT_EXPORT TIntegerArray SimpleStrEnc(StringView text);

/// The text that SimpleStrEnc turned into these elements: character i is element i divided by i + 1, without
/// the fraction. Raises ERangeError "Element %d is not an encoded character", with the index, if that is not
/// a character code.
[[nodiscard]] VARNHOLT_EXPORT String SimpleStrDec(std::span<const std::int32_t> elements);

}  // namespace Varnholt
