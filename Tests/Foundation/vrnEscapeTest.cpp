#include "VarnholtLib/Foundation/vrnEscape.h"

#include <gtest/gtest.h>

#include <random>

#include "Tests/Foundation/Raised.h"

namespace Varnholt {
namespace {

TEST(vrnEscape, EscapesTheSevenCharacters) {
    EXPECT_EQ(CStyleEscape(u"a\\'\"\t\n\r?\b"), u"a\\\\\\'\\\"\\t\\n\\r\\?\b");
    EXPECT_EQ(CStyleEscape(u""), u"");
}

TEST(vrnEscape, UnescapeIsTheInverse) {
    constexpr StringView alphabet = u"\\\\'\"\t\n\r?tnra\xD83C\xDF27";
    std::mt19937 random(3);
    for (int round = 0; round < 1000; ++round) {
        String text(random() % 12, u' ');
        for (Char& unit : text) unit = alphabet[random() % alphabet.size()];
        EXPECT_EQ(CStyleUnescape(CStyleEscape(text)), text);
    }
}

TEST(vrnEscape, RefusesDamagedEscapes) {
    for (const StringView text : {u"a\\", u"\\\\\\"}) {
        EXPECT_EQ(Raised<Exception>([&] { (void)CStyleUnescape(text); }), u"Unexpected end of string")
            << ToUtf8(text);
    }
    for (const StringView text : {u"\\a", u"\\\t", u"\\T"}) {
        EXPECT_EQ(Raised<Exception>([&] { (void)CStyleUnescape(text); }), u"Unknown unescape char")
            << ToUtf8(text);
    }
}

TEST(vrnEscape, FindsTheClosingQuote) {
    EXPECT_EQ(CStyleEscapedGetLength(u"\"a\\\"b\"", 1), 6);
    EXPECT_EQ(CStyleEscapedGetEndIndex(u"x \"\" \"", 3), 4);
    EXPECT_EQ(CStyleEscapedGetEndIndex(u"x\"\\\\\"\"", 2), 5);
    EXPECT_EQ(CStyleEscapedGetLength(u"x\"ab\"y", 2), 4);
}

TEST(vrnEscape, RefusesWhatIsNotQuoted) {
    const struct {
        StringView Text;
        std::int32_t Start;
        StringView Message;
    } cases[] = {
        {u"", 1, u"StartIndex is set at (or beyond) the end of the given string"},
        {u"ab\"", 3, u"StartIndex is set at (or beyond) the end of the given string"},
        {u"\"\"", 2147483647, u"StartIndex is set at (or beyond) the end of the given string"},
        {u"\"a\"", 2, u"Specified StartIndex must point to a quote"},
        {u"\"a\"", 0, u"Specified StartIndex must point to a quote"},
        {u"\"a\"", -2147483647 - 1, u"Specified StartIndex must point to a quote"},
        {u"\"abc", 1, u"End of string reached without finding closing quote"},
        {u"\"a\\\"", 1, u"End of string reached without finding closing quote"},
        {u"\"a\\", 1, u"End of string reached without finding closing quote"},
    };
    for (const auto& [text, start, message] : cases) {
        const auto scan = [text = text, start = start] { (void)CStyleEscapedGetLength(text, start); };
        EXPECT_EQ(Raised<Exception>(scan), message) << ToUtf8(text) << " from " << start;
    }
}

}  // namespace
}  // namespace Varnholt
