#include "Platform/Runtime/Characters.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include <algorithm>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Text.h"

namespace Varnholt {
namespace {

constexpr std::size_t kMaxLength =
    700'000'000;  // the mapping triples a text at most, and ICU counts in int32
constexpr const char* kRootLocale = "";

using TCaseMapping = std::int32_t (*)(UChar*, std::int32_t, const UChar*, std::int32_t, const char*,
                                      UErrorCode*);

UChar32 CodePoint(char32_t character) {
    return static_cast<UChar32>(character);
}

String MapCase(StringView text, TCaseMapping mapping) {
    if (text.empty()) return {};
    if (text.size() >= kMaxLength) throw EArgumentException(u"Text is too long to convert");
    const auto length = static_cast<std::int32_t>(text.size());
    String result(text.size(), u'\0');
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t needed = mapping(result.data(), length, text.data(), length, kRootLocale, &status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {
        result.resize(static_cast<std::size_t>(needed));
        status = U_ZERO_ERROR;
        needed = mapping(result.data(), needed, text.data(), length, kRootLocale, &status);
    }
    if (U_FAILURE(status))
        throw Exception(Format(u"Case mapping failed: %s", {FromUtf8(u_errorName(status))}));
    result.resize(static_cast<std::size_t>(needed));
    return result;
}

bool IsAscii(StringView text) {
    return std::ranges::all_of(text, [](Char c) { return c < 0x80; });
}

}  // namespace

bool IsUnicodeLetter(char32_t character) {
    return u_isalpha(CodePoint(character)) != 0;
}

bool IsUnicodeDigit(char32_t character) {
    return u_isdigit(CodePoint(character)) != 0;
}

bool IsUnicodeWhiteSpace(char32_t character) {
    return u_isUWhiteSpace(CodePoint(character)) != 0;
}

bool IsUnicodeUpper(char32_t character) {
    return u_isupper(CodePoint(character)) != 0;
}

bool IsUnicodeLower(char32_t character) {
    return u_islower(CodePoint(character)) != 0;
}

bool IsUnicodeLetter(Char unit) {
    return IsUnicodeLetter(char32_t{unit});
}

bool IsUnicodeDigit(Char unit) {
    return IsUnicodeDigit(char32_t{unit});
}

bool IsUnicodeWhiteSpace(Char unit) {
    return IsUnicodeWhiteSpace(char32_t{unit});
}

bool IsUnicodeUpper(Char unit) {
    return IsUnicodeUpper(char32_t{unit});
}

bool IsUnicodeLower(Char unit) {
    return IsUnicodeLower(char32_t{unit});
}

String ToUpper(StringView text) {
    return IsAscii(text) ? UpperCase(text) : MapCase(text, u_strToUpper);
}

String ToLower(StringView text) {
    return IsAscii(text) ? LowerCase(text) : MapCase(text, u_strToLower);
}

char32_t CharacterAt(StringView text, std::size_t position) {
    if (position >= text.size()) {
        throw ERangeError(Format(u"Position %d is outside the text", {position}));
    }
    const Char first = text[position];
    if (!U16_IS_LEAD(first) || position + 1 == text.size()) return first;
    const Char second = text[position + 1];
    if (!U16_IS_TRAIL(second)) return first;
    constexpr char32_t kFirstSupplementary = 0x10000;
    return kFirstSupplementary + ((first & 0x3FFu) << 10) + (second & 0x3FFu);
}

std::size_t CharacterLength(char32_t character) {
    return character > 0xFFFF ? 2 : 1;
}

}  // namespace Varnholt
