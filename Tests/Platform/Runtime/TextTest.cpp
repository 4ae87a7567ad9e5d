#include "Platform/Runtime/Text.h"

#include <gtest/gtest.h>

namespace Varnholt {
namespace {

TEST(Text, TrimTakesControlCodesAndBlanksAtBothEnds) {
    const std::pair<String, String> cases[] = {
        {u"", u""},
        {u" \t\r\n", u""},
        {String(u"\0\x1F a b\x20\x01", 8), u"a b"},
        {u"\u00A0a\u3000", u"\u00A0a\u3000"},  // blanks above 32 stay
        {u"a", u"a"},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(ToUtf8(Trim(text)), ToUtf8(expected));
        EXPECT_EQ(TrimView(text), expected);
    }
    const String text = u"  inside  ";
    EXPECT_EQ(TrimView(text).data(), text.data() + 2);
}

TEST(Text, ComparisonFoldsAsciiLettersOnly) {
    struct {
        StringView left, right;
        int expected;
    } const cases[] = {
        {u"", u"", 0},
        {u"Rain", u"rAIN", 0},
        {u"rain", u"rainy", -1},
        {u"b", u"A", 1},
        {u"_", u"a", 1},  // letters count as upper case, so "_" (95) follows them
        {u"@", u"`", -1},
        {u"[", u"{", -1},
        {u"\u00E4", u"\u00C4", 1},
        {u"\u212A", u"k", 1},  // the Kelvin sign is no ASCII letter
        {u"\u0130", u"i", 1},
        {u"\xD83D\xDE00", u"\xFFFD", -1},  // by code unit
    };
    for (const auto& [left, right, expected] : cases) {
        EXPECT_EQ(CompareText(left, right), expected) << ToUtf8(left) << " with " << ToUtf8(right);
        EXPECT_EQ(CompareText(right, left), -expected) << ToUtf8(right) << " with " << ToUtf8(left);
        EXPECT_EQ(SameText(left, right), expected == 0) << ToUtf8(left) << " with " << ToUtf8(right);
    }
}

TEST(Text, BeginningEndAndMiddle) {
    struct {
        StringView part, text;
        bool starts, ends, contains;
    } const cases[] = {
        {u"", u"", true, true, true},           {u"", u"abc", true, true, true},
        {u"a", u"", false, false, false},       {u"ABC", u"abc", true, true, true},
        {u"abcd", u"abc", false, false, false}, {u"AB", u"abcab", true, true, true},
        {u"bc", u"aBCa", false, false, true},   {u"aab", u"aaab", false, true, true},
        {u"ac", u"abc", false, false, false},   {u"abc", u"xabc", false, true, true},
    };
    for (const auto& [part, text, starts, ends, contains] : cases) {
        EXPECT_EQ(StartsText(part, text), starts) << ToUtf8(part) << " in " << ToUtf8(text);
        EXPECT_EQ(EndsText(part, text), ends) << ToUtf8(part) << " in " << ToUtf8(text);
        EXPECT_EQ(ContainsText(part, text), contains) << ToUtf8(part) << " in " << ToUtf8(text);
    }
}

TEST(Text, CaseMappingLeavesAllButAsciiLettersAlone) {
    EXPECT_EQ(UpperCase(u"@az[`AZ{\u00E4\u00DF"), u"@AZ[`AZ{\u00E4\u00DF");
    EXPECT_EQ(LowerCase(u"@AZ[`az{\u00C4"), u"@az[`az{\u00C4");
}

}  // namespace
}  // namespace Varnholt
