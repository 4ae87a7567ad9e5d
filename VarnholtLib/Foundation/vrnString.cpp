#include "VarnholtLib/Foundation/vrnString.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "Platform/Runtime/Characters.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Text.h"

namespace Varnholt {
namespace {

constexpr std::int64_t kMaxResultLength = std::int64_t{1} << 28;
constexpr std::size_t kMaxRewriting = std::size_t{1} << 24;

void CheckResultLength(std::int64_t length) {
    if (length > kMaxResultLength) throw EArgumentException(u"The resulting text is too long");
}

bool IsUpperAToZ(Char character) {
    return character >= u'A' && character <= u'Z';
}

/// The character that begins at that position from 0: one code unit, or the two of a surrogate pair.
StringView CharacterViewAt(StringView text, std::size_t at) {
    return text.substr(at, CharacterLength(CharacterAt(text, at)));
}

/// Replaces the leftmost occurrence until there is none.
///
/// The text is split in two: `done` contains no occurrence, and `rest` holds what follows, last unit first,
/// so that both grow and shrink at their ends. Units move from rest to done; an occurrence is complete when
/// its last unit is moved, and the first to be complete is the leftmost one. Its replacement is put at the
/// front of the rest, where it can become part of the next occurrence. So only replacements are scanned
/// twice, and the result is the same as that of starting from the front each time.
String ReplaceUntilNoneIsLeft(StringView text, StringView find, StringView replace) {
    // With a shorter replacement this ends, as the text shrinks each time. Otherwise the output is bounded.
    const std::size_t limit = text.size() / find.size() * replace.size() + kMaxRewriting;
    const bool mayNotEnd = replace.size() >= find.size();
    std::size_t written = 0;
    const String backwards(replace.rbegin(), replace.rend());
    String done;
    String rest(text.rbegin(), text.rend());
    while (!rest.empty()) {
        done += rest.back();
        rest.pop_back();
        if (done.back() != find.back() || !done.ends_with(find)) continue;
        done.resize(done.size() - find.size());
        written += replace.size();
        if (mayNotEnd && written > limit) throw EArgumentException(u"The replacing does not end");
        rest += backwards;
    }
    return done;
}

}  // namespace

bool IsDigit(Char character) {
    return character == u'-' || character == u'+' || IsUnicodeDigit(character);
}

bool IsNumberChar(Char character) {
    return character >= u'0' && character <= u'9';
}

bool IsAlpha(Char character) {
    return IsUnicodeLetter(character);
}

bool IsWhiteSpace(Char character) {
    return IsUnicodeWhiteSpace(character);
}

bool IsNumber(StringView text) {
    const auto isAllowed = [](Char unit) { return IsDigit(unit) || unit == u'.' || unit == u'E'; };
    return !text.empty() && std::ranges::all_of(text, isAllowed);
}

bool IsIntNumber(StringView text) {
    return !text.empty() && std::ranges::all_of(text, IsDigit);
}

bool IsDigitString(StringView text) {
    if (text.empty() || text == u"-") return false;
    if (text.starts_with(u'-')) text.remove_prefix(1);
    const auto isAllowed = [](Char unit) { return unit != u'-' && (unit == u'.' || IsDigit(unit)); };
    return std::ranges::count(text, u'.') <= 1 && std::ranges::all_of(text, isAllowed);
}

std::vector<String> SplitStringEx(StringView text, Char separator, Char quote, bool trim) {
    std::vector<String> parts;
    if (text.empty()) return parts;
    parts.emplace_back();
    bool isQuoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t start = at;
        while (at < text.size() && text[at] != quote && (isQuoted || text[at] != separator)) ++at;
        parts.back() += text.substr(start, at - start);
        if (at == text.size()) break;
        if (text[at] == quote) {
            isQuoted = !isQuoted;
        } else if (separator != u' ' || !text.substr(at + 1).starts_with(u' ')) {
            parts.emplace_back();
        }
    }
    if (!trim) return parts;
    for (String& part : parts) {
        const StringView trimmed = TrimView(part);
        if (trimmed.size() != part.size()) part = String(trimmed);
    }
    return parts;
}

std::vector<String> SplitString(StringView text, Char separator, bool trim) {
    std::vector<String> parts;
    if (text.empty()) return parts;
    for (std::size_t start = 0;;) {
        const std::size_t end = std::min(text.find(separator, start), text.size());
        const StringView part = text.substr(start, end - start);
        parts.emplace_back(trim ? TrimView(part) : part);
        if (end == text.size()) return parts;
        start = end + 1;
    }
}

std::vector<String> SplitWhiteSpaceString(StringView text) {
    std::vector<String> parts;
    for (auto next = text.begin();;) {
        const auto start = std::find_if_not(next, text.end(), IsWhiteSpace);
        if (start == text.end()) return parts;
        next = std::find_if(start, text.end(), IsWhiteSpace);
        parts.emplace_back(start, next);
    }
}

String CombineStringArray(std::span<const String> parts, Char separator) {
    String result;
    for (const String& part : parts) {
        if (&part != parts.data()) result += separator;
        result += part;
    }
    return result;
}

void SmartCommaList(String& list, StringView item) {
    const StringView glue = list.empty() ? u"" : u", ";
    list += String(glue).append(item);  // the item may be a view into the list
}

String CreateNumberRange(std::int32_t first, std::int32_t last, Char separator, bool addBlank) {
    if (first > last) return {};
    const String glue = addBlank ? String{separator, u' '} : String{separator};
    const std::size_t widest = std::max(IntToStr(first).size(), IntToStr(last).size()) + glue.size();
    const std::int64_t length = (std::int64_t{last} - first + 1) * static_cast<std::int64_t>(widest);
    CheckResultLength(length);
    String result;
    result.reserve(static_cast<std::size_t>(length));
    for (std::int64_t number = first; number <= last; ++number) {
        if (number != first) result += glue;
        result += IntToStr(number);
    }
    return result;
}

std::int32_t IndexOfStringArray(std::span<const String> items, StringView text, bool ignoreCase) {
    const auto isMatch = [&](const String& item) { return ignoreCase ? SameText(item, text) : item == text; };
    const auto found = std::ranges::find_if(items, isMatch);
    return found == items.end() ? -1 : static_cast<std::int32_t>(found - items.begin());
}

bool StrReplace(String& text, StringView find, StringView replace) {
    if (find.empty()) return false;
    const std::size_t at = text.find(find);
    if (at == String::npos) return false;
    text.replace(at, find.size(), String(replace));  // the replacement may be a view into the text
    return true;
}

String StrReplace2(StringView text, StringView find, StringView replace, bool all) {
    String result(text);
    if (!StrReplace(result, find, replace) || !all) return result;
    if (replace.find(find) != StringView::npos) {
        throw EArgumentException(u"The replacement contains the text to find");
    }
    return ReplaceUntilNoneIsLeft(text, find, replace);
}

String StripChars(StringView text, StringView chars) {
    String result;
    for (std::size_t at = 0; at < text.size();) {
        const StringView character = CharacterViewAt(text, at);
        if (chars.find(character) == StringView::npos) result += character;
        at += character.size();
    }
    return result;
}

String CutString(String& text, std::int32_t count) {
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(std::max(count, 0)));
    String head = text.substr(0, length);
    text.erase(0, length);
    return head;
}

String TrimString(StringView text, Char character) {
    return String(text.substr(text.find(character) + 1));  // no occurrence is npos, and npos + 1 is 0
}

String GetOrdinalIndicator(std::int32_t number) {
    const std::int64_t value = std::abs(std::int64_t{number});
    if (value % 100 >= 11 && value % 100 <= 13) return u"th";
    switch (value % 10) {
        case 1:
            return u"st";
        case 2:
            return u"nd";
        case 3:
            return u"rd";
        default:
            return u"th";
    }
}

String EnsureStringLeading(StringView leading, StringView text, bool ignoreCase) {
    const bool isLed = ignoreCase ? StartsText(leading, text) : text.starts_with(leading);
    return isLed ? String(text) : String(leading).append(text);
}

String PadString(StringView text, std::int32_t length, Char character) {
    const std::int64_t missing = std::int64_t{length} - static_cast<std::int64_t>(text.size());
    if (missing <= 0) return String(text);
    CheckResultLength(length);
    return String(static_cast<std::size_t>(missing), character).append(text);
}

String ReverseString(StringView text) {
    String result(text.rbegin(), text.rend());
    for (std::size_t at = 0; at < text.size();) {  // back to order: the pairs of the text
        const std::size_t units = CharacterViewAt(text, at).size();
        if (units == 2) std::swap(result[result.size() - at - 1], result[result.size() - at - 2]);
        at += units;
    }
    return result;
}

String SpaceString(StringView text) {
    String result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (at > 0 && IsUpperAToZ(text[at])) result += u' ';
        result += text[at];
    }
    return result;
}

String SentenceCase(StringView text) {
    if (text.empty()) return {};
    const StringView first = CharacterViewAt(text, 0);
    return ToUpper(first) + ToLower(text.substr(first.size()));
}

TIntegerArray SimpleStrEnc(StringView text) {
    std::vector<std::int32_t> elements;
    elements.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::uint64_t product = std::uint64_t{text[i]} * (i + 1);
        if (product > std::numeric_limits<std::int32_t>::max())
            throw ERangeError(u"Text is too long to encode");
        elements.push_back(static_cast<std::int32_t>(product));
    }
    return TIntegerArray(std::move(elements));
}

String SimpleStrDec(std::span<const std::int32_t> elements) {
    String text;
    text.reserve(elements.size());
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const std::int64_t code = elements[i] / static_cast<std::int64_t>(i + 1);
        if (elements[i] < 0 || code > std::numeric_limits<Char>::max()) {
            throw ERangeError(Format(u"Element %d is not an encoded character", {i}));
        }
        text += static_cast<Char>(code);
    }
    return text;
}

}  // namespace Varnholt
