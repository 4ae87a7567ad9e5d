#include <algorithm>

#include "Platform/Runtime/Text.h"
#include "VarnholtLib/Foundation/vrnString.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcCleanupPrivate.h"

namespace Varnholt::CalcCleanup {
namespace {

constexpr StringView kOperators = u"+-*/^";

}  // namespace

void ClumpedSpaces(String& text) {
    const StringView trimmed = TrimView(text);
    std::size_t kept = 0;
    const std::size_t first = static_cast<std::size_t>(trimmed.data() - text.data());
    const std::size_t last = first + trimmed.size();
    for (std::size_t i = first; i < last; ++i) {
        const bool clumped = text[i] == u' ' && i + 1 < last && text[i + 1] == u' ';
        if (!clumped) text[kept++] = text[i];
    }
    text.resize(kept);
}

void SpacesAfterOpeningBrackets(String& text) {
    std::size_t kept = 0;
    for (const Char c : text) {
        const bool afterBracket = c == u' ' && kept > 0 && text[kept - 1] == u'(';
        if (!afterBracket) text[kept++] = c;
    }
    text.resize(kept);
}

void SpacesBeforeClosingBrackets(String& text) {
    std::size_t kept = 0;
    for (const Char c : text) {
        if (c == u')') {
            while (kept > 0 && text[kept - 1] == u' ') --kept;
        }
        text[kept++] = c;
    }
    text.resize(kept);
}

void MakeSureOneSpaceAround(String& text, StringView characters) {
    String spaced;
    spaced.reserve(text.size() + 2 * static_cast<std::size_t>(std::ranges::count_if(text, [&](Char c) {
                                     return characters.find(c) != StringView::npos;
                                 })));
    for (std::size_t i = 0; i < text.size(); ++i) {
        const Char c = text[i];
        if (characters.find(c) == StringView::npos) {
            spaced.push_back(c);
            continue;
        }
        if (!spaced.empty() && spaced.back() != u' ') spaced.push_back(u' ');
        spaced.push_back(c);
        if (i + 1 < text.size() && text[i + 1] != u' ') spaced.push_back(u' ');
    }
    text.swap(spaced);
}

// All five at once have the same effect as one after the other: a blank is added only where there is none yet.
void SpacesAroundOperators(String& text) {
    MakeSureOneSpaceAround(text, kOperators);
}

bool IsLastItemADigit(StringView text, std::size_t position) {
    std::size_t i = std::min(position == 0 ? 0 : position - 1, text.size());
    while (i > 0 && text[i - 1] == u' ') --i;
    if (i == 0) return false;
    const Char last = text[i - 1];
    return last == u')' || IsNumberChar(last) || IsAlpha(last);
}

void RemoveSpaceAfterNegativeModifier(String& text) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const Char c = text[i];
        text[kept++] = c;
        if (c != u'-' || i + 1 >= text.size() || text[i + 1] != u' ') continue;
        // The text before the minus is final. It holds the same characters as before the pass except the
        // dropped blanks.
        if (!IsLastItemADigit(text, kept)) ++i;
    }
    text.resize(kept);
}

void Expression(String& text) {
    ClumpedSpaces(text);
    SpacesAfterOpeningBrackets(text);
    SpacesBeforeClosingBrackets(text);
    SpacesAroundOperators(text);
    RemoveSpaceAfterNegativeModifier(text);
}

}  // namespace Varnholt::CalcCleanup
