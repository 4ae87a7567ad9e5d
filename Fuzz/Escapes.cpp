#include "Fuzz/FuzzInput.h"
#include "VarnholtLib/Foundation/vrnEscape.h"

/// Escaping and its reverse, and the scan for the end of a quoted text.
namespace Varnholt::Fuzz {
namespace {

/// The position, from 1, of the closing quote, found plainly; 0 if there is none.
std::int32_t ClosingQuote(StringView text, std::size_t openIndex) {
    for (std::size_t i = openIndex + 1; i < text.size(); i += text[i] == u'\\' ? 2 : 1)
        if (text[i] == u'"') return static_cast<std::int32_t>(i) + 1;
    return 0;
}

}  // namespace

void RunInput(TInput input) {
    const String text = TextOf(input);
    const String escaped = CStyleEscape(text);
    Require(escaped.find_first_of(u"\t\n\r") == String::npos, "no control code is left");
    RequireSame(CStyleUnescape(escaped), text, "what is escaped is unescaped");
    const String quoted = u"\"" + escaped + u"\"" + text;
    Require(CStyleEscapedGetLength(quoted, 1) == static_cast<std::int32_t>(escaped.size()) + 2,
            "a quoted text ends at its own quote");

    String raw;
    const String failure = FailureOf([&] { raw = CStyleUnescape(text); });
    if (failure.empty()) RequireSame(CStyleUnescape(CStyleEscape(raw)), raw, "unescaped text escapes anew");
    Require(raw.size() <= text.size(), "unescaping does not lengthen");

    for (std::size_t i = 0; i <= text.size() + 1; ++i) {
        const auto position = static_cast<std::int32_t>(i);  // from 1: before, on and after each character
        std::int32_t end = 0;
        const String problem = FailureOf([&] { end = CStyleEscapedGetEndIndex(text, position); });
        const bool isQuote = i > 0 && i < text.size() && text[i - 1] == u'"';
        Require(end == (isQuote ? ClosingQuote(text, i - 1) : 0), "the closing quote of a plain scan");
        Require(problem.empty() == (end != 0), "either a position or a failure");
    }
}

}  // namespace Varnholt::Fuzz
