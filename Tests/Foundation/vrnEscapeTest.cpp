#include "VarnholtLib/Foundation/vrnEscape.h"

#include <gtest/gtest.h>

#include "Tests/Support/Raised.h"

namespace Varnholt::Test {

TEST(vrnEscape, UnescapeIsTheInverse) {
    // In the last characters an escaped backslash precedes the letter of another escape.
    const StringView plain = u"a\\'\"\t\n\r?\b\xD83C\xDF27\\n",
                     escaped = u"a\\\\\\'\\\"\\t\\n\\r\\?\b\xD83C\xDF27\\\\n";
    EXPECT_EQ(CStyleEscape(plain), escaped);
    EXPECT_EQ(CStyleUnescape(escaped), plain);
    constexpr StringView end = u"Unexpected end of string", unknown = u"Unknown unescape char";
    const std::pair<StringView, StringView> refused[] = {
        {u"a\\", end}, {u"\\\\\\", end}, {u"\\a", unknown}, {u"\\\t", unknown}, {u"\\T", unknown}};
    for (const auto& [text, message] : refused)
        EXPECT_EQ(Raised<Exception>([t = text] { static_cast<void>(CStyleUnescape(t)); }), message)
            << ToUtf8(text);
}

TEST(vrnEscape, FindsTheClosingQuoteOrRefuses) {
    constexpr StringView found = u"(nothing raised)",
                         beyond = u"StartIndex is set at (or beyond) the end of the given string";
    constexpr StringView noQuote = u"Specified StartIndex must point to a quote";
    constexpr StringView open = u"End of string reached without finding closing quote";
    const std::tuple<StringView, std::int32_t, std::int32_t, StringView> cases[] = {
        // clang-format off
        {u"\"a\\\"b\"", 1, 6, found}, {u"x \"\" \"", 3, 2, found}, {u"x\"\\\\\"\"", 2, 4, found},
        {u"x\"ab\"y", 2, 4, found}, {u"", 1, 0, beyond}, {u"ab\"", 3, 0, beyond},
        {u"\"\"", 2147483647, 0, beyond}, {u"\"a\"", 2, 0, noQuote}, {u"\"a\"", 0, 0, noQuote},
        {u"\"a\"", -2147483647 - 1, 0, noQuote}, {u"\"abc", 1, 0, open}, {u"\"a\\\"", 1, 0, open},
        {u"\"a\\", 1, 0, open}};
    // clang-format on
    for (const auto& [text, start, expected, message] : cases) {
        std::int32_t length = 0;
        const auto scan = [&, t = text, s = start] {
            length = CStyleEscapedGetLength(t, s);
            EXPECT_EQ(CStyleEscapedGetEndIndex(t, s), s + length - 1);
        };
        SCOPED_TRACE(ToUtf8(text) + " from " + std::to_string(start));
        EXPECT_EQ(Raised<Exception>(scan), message);
        EXPECT_EQ(length, expected);
    }
}

}  // namespace Varnholt::Test
