#include "VarnholtLib/Foundation/vrnEscape.h"

#include <algorithm>
#include <array>

#include "Platform/Runtime/Exceptions.h"

namespace Varnholt {
namespace {

struct TEscapePair {
    Char Raw;
    Char Letter;
};

constexpr std::array<TEscapePair, 7> kEscapes = {{{u'\\', u'\\'},
                                                  {u'\'', u'\''},
                                                  {u'"', u'"'},
                                                  {u'\t', u't'},
                                                  {u'\n', u'n'},
                                                  {u'\r', u'r'},
                                                  {u'?', u'?'}}};

/// The pair that has the character in that column, or none.
const TEscapePair* FindEscape(Char character, Char TEscapePair::*column) {
    const auto found = std::ranges::find(kEscapes, character, column);
    return found == kEscapes.end() ? nullptr : &*found;
}

}  // namespace

String CStyleEscape(StringView text) {
    String result;
    result.reserve(text.size());
    for (const Char character : text) {
        const TEscapePair* escape = FindEscape(character, &TEscapePair::Raw);
        if (escape != nullptr) result += u'\\';
        result += escape != nullptr ? escape->Letter : character;
    }
    return result;
}

String CStyleUnescape(StringView text) {
    String result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != u'\\') {
            result += text[at];
            continue;
        }
        if (++at == text.size()) throw Exception(u"Unexpected end of string");
        const TEscapePair* escape = FindEscape(text[at], &TEscapePair::Letter);
        if (escape == nullptr) throw Exception(u"Unknown unescape char");
        result += escape->Raw;
    }
    return result;
}

std::int32_t CStyleEscapedGetEndIndex(StringView text, std::int32_t startIndex) {
    if (startIndex >= static_cast<std::int64_t>(text.size())) {
        throw Exception(u"StartIndex is set at (or beyond) the end of the given string");
    }
    if (startIndex < 1 || text[static_cast<std::size_t>(startIndex) - 1] != u'"') {
        throw Exception(u"Specified StartIndex must point to a quote");
    }
    // 0-based from here: the position after the opening quote is startIndex itself.
    for (auto at = static_cast<std::size_t>(startIndex); at < text.size(); ++at) {
        if (text[at] == u'"') return static_cast<std::int32_t>(at + 1);
        if (text[at] == u'\\') ++at;
    }
    throw Exception(u"End of string reached without finding closing quote");
}

std::int32_t CStyleEscapedGetLength(StringView text, std::int32_t startIndex) {
    return CStyleEscapedGetEndIndex(text, startIndex) - startIndex + 1;
}

}  // namespace Varnholt
