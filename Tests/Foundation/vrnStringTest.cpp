#include "VarnholtLib/Foundation/vrnString.h"

#include <gmock/gmock.h>

#include <random>

#include "Tests/Support/Raised.h"

namespace Varnholt::Test {

TEST(vrnString, TestsOfNumberTextsAndCharacters) {
    using TTexts = std::vector<StringView>;
    const std::tuple<const char*, bool (*)(StringView), TTexts, TTexts> cases[] = {
        // clang-format off
        {"IsNumber", IsNumber, {u"1E.+", u"-12.5E3", u".", u"\u0663"}, {u"", u"1e5", u"1 2", u"1,5"}},
        {"IsIntNumber", IsIntNumber, {u"12", u"+-", u"\u0663"}, {u"", u"1.5", u"x"}},
        {"IsDigitString", IsDigitString, {u"-1.5", u"1+2", u".", u"-.", u"\u0663"},
         {u"", u"-", u"1-", u"--1", u"1.2.3", u"1E5", u" 1"}}};
    // clang-format on
    for (const auto& [name, test, accepted, rejected] : cases) {
        for (const StringView text : accepted) EXPECT_TRUE(test(text)) << name << ToUtf8(text);
        for (const StringView text : rejected) EXPECT_FALSE(test(text)) << name << ToUtf8(text);
    }
    for (const Char yes : StringView(u"0+-\u0663")) EXPECT_TRUE(IsDigit(yes)) << int{yes};
    for (const Char no : StringView(u".Ea\u00B2\xD835")) EXPECT_FALSE(IsDigit(no)) << int{no};
    for (const Char no : StringView(u"\u0663-/:")) EXPECT_FALSE(IsNumberChar(no)) << int{no};
    EXPECT_TRUE(IsNumberChar(u'0') && IsNumberChar(u'9') && IsAlpha(u'\u00E4') && IsWhiteSpace(u'\u00A0'));
    EXPECT_FALSE(IsAlpha(u'1') || IsWhiteSpace(u'_'));
}

TEST(vrnString, SplitsTexts) {
    using TParts = std::vector<String>;
    const auto split = [](StringView text, Char separator, bool trim) {
        return SplitStringEx(text, separator, u'"', trim);
    };
    const std::pair<TParts, TParts> cases[] = {
        // clang-format off
        {split(u"a \"b,c\",d", u',', false), {u"a b,c", u"d"}}, {split(u"", u',', false), {}},
        {split(u",", u',', false), {u"", u""}}, {split(u"a,\"b,c", u',', false), {u"a", u"b,c"}},
        {split(u" a ,\" b \"", u',', true), {u"a", u"b"}}, {split(u" a ,b", u',', false), {u" a ", u"b"}},
        {split(u"a   b c ", u' ', false), {u"a", u"b", u"c", u""}},
        {split(u"a\"  \"b", u' ', false), {u"a  b"}}, {split(u"a \" b", u' ', false), {u"a", u" b"}},
        {SplitString(u"a,, b ,", u',', false), {u"a", u"", u" b ", u""}},
        {SplitString(u"a,, b ,", u',', true), {u"a", u"", u"b", u""}},
        {SplitString(u"a  b", u' ', false), {u"a", u"", u"b"}}, {SplitString(u"", u',', false), {}},
        {SplitWhiteSpaceString(u" \t a\u00A0\r\nbc "), {u"a", u"bc"}}, {SplitWhiteSpaceString(u" \t "), {}}};
    // clang-format on
    for (const auto& [actual, expected] : cases) EXPECT_EQ(actual, expected);
}

TEST(vrnString, GivesTexts) {
    const std::pair<String, StringView> cases[] = {
        // clang-format off
        {CombineStringArray({}, u';'), u""},
        {CombineStringArray(std::vector<String>{u"", u"a", u""}, u';'), u";a;"},
        {CreateNumberRange(-1, 2, u',', false), u"-1,0,1,2"},
        {CreateNumberRange(9, 11, u';', true), u"9; 10; 11"},
        {CreateNumberRange(2147483646, 2147483647, u',', false), u"2147483646,2147483647"},
        {CreateNumberRange(2, 1, u',', false), u""}, {StrReplace2(u"aaab", u"ab", u"b", false), u"aab"},
        {StrReplace2(u"aaab", u"ab", u"aab", false), u"aaaab"},
        {StrReplace2(u"xa", u"ab", u"xabx", true), u"xa"},  // nothing to replace
        {StrReplace2(u"abc", u"", u"x", true), u"abc"},
        {TrimString(u"a=b=c", u'='), u"b=c"}, {TrimString(u"abc", u'='), u"abc"},
        {TrimString(u"abc=", u'='), u""}, {StripChars(u"1.234,50", u",."), u"123450"},
        {StripChars(u"a\U0001F327b\U0001F328", u"\U0001F327"), u"ab\U0001F328"},  // pairs share a half
        {EnsureStringLeading(u"hTTp:", u"HttP:a", true), u"HttP:a"},
        {EnsureStringLeading(u"", u"x", false), u"x"},
        {EnsureStringLeading(u"\u00E4", u"\u00C4x", true), u"\u00E4\u00C4x"},  // only ASCII letters fold
        {EnsureStringLeading(u"http:", u"HTTP:a", false), u"http:HTTP:a"},
        {EnsureStringLeading(u"abc", u"ab", true), u"abcab"}, {PadString(u"7", 3, u'0'), u"007"},
        {PadString(u"1234", 3, u'0'), u"1234"}, {PadString(u"1", -5, u'0'), u"1"},
        {ReverseString(u"ab\U0001F327c"), u"c\U0001F327ba"}, {ReverseString(u""), u""},
        {SpaceString(u""), u""}, {SpaceString(u"MonthlyDataABC\u00C4"), u"Monthly Data A B C\u00C4"},
        {SentenceCase(u""), u""}, {SentenceCase(u"\u00E4RGER \u00DCBER"), u"\u00C4rger \u00FCber"},
        {SentenceCase(u"\U00010428\U00010400"), u"\U00010400\U00010428"}};  // Deseret letters, pairs
    // clang-format on
    for (const auto& [actual, expected] : cases) EXPECT_EQ(actual, expected);
}

TEST(vrnString, RefusesWhatDoesNotEnd) {
    // clang-format off
    ExpectRaised<EArgumentException>({
        {[] { static_cast<void>(CreateNumberRange(INT32_MIN, 2, u',', false)); }, u"The resulting text is too long"},
        {[] { static_cast<void>(PadString(u"", 2147483647, u' ')); }, u"The resulting text is too long"},
        {[] { static_cast<void>(StrReplace2(u"ab", u"ab", u"xabx", true)); },
         u"The replacement contains the text to find"},
        {[] { static_cast<void>(StrReplace2(u"aab", u"ab", u"bbaa", true)); }, u"The replacing does not end"}});
    // clang-format on
    // Long texts are no reason to refuse.
    EXPECT_EQ(StrReplace2(String(3'000'000, u'\n'), u"\n", u"<br>", true).size(), 12'000'000U);
}

TEST(vrnString, FindsReplacesAndCuts) {
    const std::vector<String> items = {u"Rain", u"rain", u"\u00C4"};
    EXPECT_TRUE(IndexOfStringArray(items, u"rain", false) == 1 &&
                IndexOfStringArray(items, u"RAIN", false) == -1);
    EXPECT_EQ(IndexOfStringArray(items, u"RAIN", true), 0);
    EXPECT_EQ(IndexOfStringArray(items, u"\u00E4", true), -1);  // only ASCII letters fold
    String list, text = u"abcAbc abc";
    for (const StringView item : {u"rain", u""}) SmartCommaList(list, item);
    SmartCommaList(list, list);
    EXPECT_EQ(list, u"rain, , rain, ");
    EXPECT_TRUE(StrReplace(text, u"bc", u"--"));
    for (const StringView find : {u"ABC", u"", u"abcd"}) EXPECT_FALSE(StrReplace(text, find, u"x"));
    EXPECT_EQ(text, u"a--Abc abc");
    for (const auto& [count, cut] : {std::pair{2, u"a-"}, {-1, u""}, {2147483647, u"-Abc abc"}, {1, u""}})
        EXPECT_EQ(CutString(text, count), cut) << count;
}

TEST(vrnString, StrReplace2RepeatsFromTheStart) {
    std::mt19937 random(7);
    const auto randomText = [&random](std::size_t maxLength) {
        String text(random() % (maxLength + 1), u'a');
        for (Char& unit : text) unit += static_cast<Char>(random() % 2);
        return text;
    };
    for (int round = 0; round < 3000; ++round) {
        const String find = randomText(3);
        const String replace = randomText(find.size());  // not the longer one, so that the model ends
        if (find.empty() || replace.find(find) != String::npos) continue;
        const String text = randomText(24);
        String expected = text;
        while (StrReplace(expected, find, replace)) continue;
        EXPECT_EQ(StrReplace2(text, find, replace, true), expected)
            << ToUtf8(text) << ' ' << ToUtf8(find) << ' ' << ToUtf8(replace);
    }
}

TEST(vrnString, OrdinalIndicators) {
    const std::pair<StringView, std::vector<std::int32_t>> cases[] = {
        {u"th", {0, 4, 10, 11, 12, 13, 111, -13, 1012, INT32_MAX, INT32_MIN}},
        {u"st", {1, 21, -1, 101}},
        {u"nd", {2, 22, -102}},
        {u"rd", {3, 23, 1003}}};
    for (const auto& [indicator, numbers] : cases)
        for (const std::int32_t number : numbers) EXPECT_EQ(GetOrdinalIndicator(number), indicator) << number;
}

TEST(vrnString, SimpleEncoding) {
    EXPECT_THAT(SimpleStrEnc(u"abc"), testing::ElementsAre(97, 196, 297));
    for (const StringView text : {u"\uFFFF x\U0001F327", u""})
        EXPECT_EQ(SimpleStrDec(SimpleStrEnc(text)), text);
    EXPECT_EQ(SimpleStrDec(std::vector<std::int32_t>{97, 197}), u"ab");
    EXPECT_EQ(SimpleStrEnc(String(32768, u'\uFFFF')).GetLength(), 32768);
    const std::vector<std::int32_t> negative = {97, -1}, large = {97, 2 * 65536};
    ExpectRaised<ERangeError>(
        {{[] { static_cast<void>(SimpleStrEnc(String(32769, u'\uFFFF'))); }, u"Text is too long to encode"},
         {[&] { static_cast<void>(SimpleStrDec(negative)); }, u"Element 1 is not an encoded character"},
         {[&] { static_cast<void>(SimpleStrDec(large)); }, u"Element 1 is not an encoded character"}});
}

}  // namespace Varnholt::Test
