#include "Platform/Runtime/Text.h"

#include <gtest/gtest.h>

namespace Varnholt::Test {

TEST(Text, TrimTakesControlCodesAndBlanksAtBothEnds) {
    EXPECT_EQ(Trim(StringView(u"\0\x1F a b\x20\x01", 8)), u"a b");
    EXPECT_EQ(Trim(u" \t\r\n"), u"");
    EXPECT_EQ(Trim(u"\u00A0a\u3000"), u"\u00A0a\u3000");
}

TEST(Text, ComparisonFoldsAsciiLettersOnly) {
    // clang-format off
    const std::tuple<StringView, StringView, int> cases[] = {
        {u"", u"", 0}, {u"Rain", u"rAIN", 0}, {u"rain", u"rainy", -1}, {u"b", u"A", 1},
        {u"_", u"a", 1},  // letters count as upper case, so "_" (95) follows them
        {u"@", u"`", -1}, {u"[", u"{", -1}, {u"\u00E4", u"\u00C4", 1}, {u"\u0130", u"i", 1},
        {u"\u212A", u"k", 1},  // the Kelvin sign is no ASCII letter
        {u"\xD83D\xDE00", u"\xFFFD", -1},  // by code unit
    };
    // clang-format on
    for (const auto& [left, right, expected] : cases) {
        EXPECT_TRUE(CompareText(left, right) == expected && CompareText(right, left) == -expected &&
                    SameText(left, right) == (expected == 0))
            << ToUtf8(left) << " with " << ToUtf8(right);
    }
}

TEST(Text, BeginningEndAndMiddle) {
    // clang-format off
    const std::tuple<StringView, StringView, std::string> cases[] = {  // part, text, Starts Ends Contains
        {u"", u"", "SEC"}, {u"", u"abc", "SEC"}, {u"a", u"", ""}, {u"ABC", u"abc", "SEC"},
        {u"abcd", u"abc", ""}, {u"AB", u"abcab", "SEC"}, {u"bc", u"aBCa", "C"}, {u"aab", u"aaab", "EC"},
        {u"ac", u"abc", ""}, {u"abc", u"xabc", "EC"},
    };
    // clang-format on
    for (const auto& [part, text, expected] : cases) {
        const std::string found = std::string(StartsText(part, text) ? "S" : "") +
                                  (EndsText(part, text) ? "E" : "") + (ContainsText(part, text) ? "C" : "");
        EXPECT_EQ(found, expected) << ToUtf8(part) << " in " << ToUtf8(text);
    }
}

TEST(Text, CaseMappingLeavesAllButAsciiLettersAlone) {
    EXPECT_EQ(UpperCase(u"@az[`AZ{\u00E4\u00DF"), u"@AZ[`AZ{\u00E4\u00DF");
    EXPECT_EQ(LowerCase(u"@AZ[`az{\u00C4"), u"@az[`az{\u00C4");
}

}  // namespace Varnholt::Test
