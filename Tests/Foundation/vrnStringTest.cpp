#include "VarnholtLib/Foundation/vrnString.h"

#include <gmock/gmock.h>

#include <random>

#include "Tests/Foundation/Raised.h"

namespace Varnholt {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct TTestCase {
    StringView Name;
    bool (*Test)(StringView);
    std::vector<StringView> Accepted;
    std::vector<StringView> Rejected;
};

TEST(vrnString, TestsOfNumberTexts) {
    const TTestCase cases[] = {
        {u"IsNumber", IsNumber, {u"1E.+", u"-12.5E3", u".", u"\u0663"}, {u"", u"1e5", u"1 2", u"1,5"}},
        {u"IsIntNumber", IsIntNumber, {u"12", u"+-", u"\u0663"}, {u"", u"1.5", u"x"}},
        {u"IsDigitString",
         IsDigitString,
         {u"-1.5", u"1+2", u".", u"-.", u"\u0663"},
         {u"", u"-", u"1-", u"--1", u"1.2.3", u"1E5", u" 1"}},
    };
    for (const TTestCase& each : cases) {
        for (const StringView text : each.Accepted)
            EXPECT_TRUE(each.Test(text)) << ToUtf8(each.Name) << ToUtf8(text);
        for (const StringView text : each.Rejected)
            EXPECT_FALSE(each.Test(text)) << ToUtf8(each.Name) << ToUtf8(text);
    }
}

TEST(vrnString, TestsOfCharacters) {
    for (const Char yes : StringView(u"0+-\u0663")) EXPECT_TRUE(IsDigit(yes)) << int{yes};
    for (const Char no : StringView(u".Ea\u00B2\xD835")) EXPECT_FALSE(IsDigit(no)) << int{no};
    EXPECT_FALSE(IsNumberChar(u'\u0663') || IsNumberChar(u'-') || IsNumberChar(u'/') || IsNumberChar(u':'));
    EXPECT_TRUE(IsNumberChar(u'0') && IsNumberChar(u'9') && IsAlpha(u'\u00E4') && IsWhiteSpace(u'\u00A0'));
    EXPECT_FALSE(IsAlpha(u'1') || IsWhiteSpace(u'_'));
}

TEST(vrnString, SplitStringExDropsQuotesAndKeepsWhatTheyHold) {
    EXPECT_THAT(SplitStringEx(u"a \"b,c\",d", u',', u'"', false), ElementsAre(u"a b,c", u"d"));
    EXPECT_THAT(SplitStringEx(u"", u',', u'"', false), IsEmpty());
    EXPECT_THAT(SplitStringEx(u",", u',', u'"', false), ElementsAre(u"", u""));
    EXPECT_THAT(SplitStringEx(u"a,\"b,c", u',', u'"', false), ElementsAre(u"a", u"b,c"));
    EXPECT_THAT(SplitStringEx(u" a ,\" b \"", u',', u'"', true), ElementsAre(u"a", u"b"));
    EXPECT_THAT(SplitStringEx(u" a ,b", u',', u'"', false), ElementsAre(u" a ", u"b"));
    EXPECT_THAT(SplitStringEx(u"a   b c ", u' ', u'"', false), ElementsAre(u"a", u"b", u"c", u""));
    EXPECT_THAT(SplitStringEx(u"a\"  \"b", u' ', u'"', false), ElementsAre(u"a  b"));
    EXPECT_THAT(SplitStringEx(u"a \" b", u' ', u'"', false), ElementsAre(u"a", u" b"));
}

TEST(vrnString, SplitsAndJoins) {
    EXPECT_THAT(SplitString(u"a,, b ,", u',', false), ElementsAre(u"a", u"", u" b ", u""));
    EXPECT_THAT(SplitString(u"a,, b ,", u',', true), ElementsAre(u"a", u"", u"b", u""));
    EXPECT_THAT(SplitString(u"a  b", u' ', false), ElementsAre(u"a", u"", u"b"));
    EXPECT_THAT(SplitString(u"", u',', false), IsEmpty());
    EXPECT_THAT(SplitWhiteSpaceString(u" \t a\u00A0\r\nbc "), ElementsAre(u"a", u"bc"));
    EXPECT_THAT(SplitWhiteSpaceString(u" \t "), IsEmpty());
    EXPECT_EQ(CombineStringArray(std::vector<String>{u"", u"a", u""}, u';'), u";a;");
    EXPECT_EQ(CombineStringArray({}, u';'), u"");
    String list;
    SmartCommaList(list, u"rain");
    SmartCommaList(list, u"");
    SmartCommaList(list, list);
    EXPECT_EQ(list, u"rain, , rain, ");
}

TEST(vrnString, NumberRange) {
    EXPECT_EQ(CreateNumberRange(-1, 2, u',', false), u"-1,0,1,2");
    EXPECT_EQ(CreateNumberRange(9, 11, u';', true), u"9; 10; 11");
    EXPECT_EQ(CreateNumberRange(2, 1, u',', false), u"");
    EXPECT_EQ(CreateNumberRange(2147483646, 2147483647, u',', false), u"2147483646,2147483647");
    const auto giant = [] { (void)CreateNumberRange(-2147483647 - 1, 2147483647, u',', false); };
    EXPECT_EQ(Raised<EArgumentException>(giant), u"The resulting text is too long");
}

TEST(vrnString, FindsInArrays) {
    const std::vector<String> items = {u"Rain", u"rain", u"\u00C4"};
    EXPECT_EQ(IndexOfStringArray(items, u"rain", false), 1);
    EXPECT_EQ(IndexOfStringArray(items, u"RAIN", true), 0);
    EXPECT_EQ(IndexOfStringArray(items, u"RAIN", false), -1);
    EXPECT_EQ(IndexOfStringArray(items, u"\u00E4", true), -1);  // ASCII letters alone fold
}

TEST(vrnString, StrReplaceTakesTheFirstOccurrence) {
    String text = u"abcAbc abc";
    EXPECT_TRUE(StrReplace(text, u"bc", u"--"));
    EXPECT_EQ(text, u"a--Abc abc");
    EXPECT_FALSE(StrReplace(text, u"ABC", u"x") || StrReplace(text, u"", u"x") ||
                 StrReplace(text, u"abcd", u"x"));
    EXPECT_EQ(text, u"a--Abc abc");
    EXPECT_EQ(StrReplace2(u"aaab", u"ab", u"b", false), u"aab");
    EXPECT_EQ(StrReplace2(u"aaab", u"ab", u"aab", false), u"aaaab");
}

TEST(vrnString, StrReplace2RepeatsFromTheStart) {
    EXPECT_EQ(StrReplace2(u"aaab", u"ab", u"b", true), u"b");
    EXPECT_EQ(StrReplace2(u"babab", u"ab", u"ba", true), u"bbbaa");
    EXPECT_EQ(StrReplace2(u"abc", u"", u"x", true), u"abc");
    std::mt19937 random(7);
    const auto randomText = [&random](std::size_t maxLength) {
        String text(random() % (maxLength + 1), u'a');
        for (Char& unit : text) unit = random() % 2 == 0 ? u'a' : u'b';
        return text;
    };
    for (int round = 0; round < 3000; ++round) {
        const String find = randomText(3);
        const String replace = randomText(find.size());  // not the longer one, so that the model ends
        if (find.empty() || replace.find(find) != String::npos) continue;
        const String text = randomText(24);
        String expected = text;
        while (StrReplace(expected, find, replace)) {
        }
        EXPECT_EQ(StrReplace2(text, find, replace, true), expected)
            << ToUtf8(text) << ' ' << ToUtf8(find) << ' ' << ToUtf8(replace);
    }
}

TEST(vrnString, StrReplace2RefusesWhatDoesNotEnd) {
    const auto containing = [] { (void)StrReplace2(u"none", u"ab", u"xabx", true); };
    EXPECT_EQ(Raised<EArgumentException>(containing), u"The replacement contains the text to find");
    const auto endless = [] { (void)StrReplace2(u"aab", u"ab", u"bbaa", true); };
    EXPECT_EQ(Raised<EArgumentException>(endless), u"The replacing does not come to an end");
    // Long texts are no reason to refuse.
    const String lines = StrReplace2(String(3'000'000, u'\n'), u"\n", u"<br>", true);
    EXPECT_EQ(lines.size(), 12'000'000U);
}

TEST(vrnString, CutsAndStrips) {
    String text = u"abcdef";
    EXPECT_EQ(CutString(text, 2), u"ab");
    EXPECT_EQ(CutString(text, -1), u"");
    EXPECT_EQ(text, u"cdef");
    EXPECT_EQ(CutString(text, 2147483647), u"cdef");
    EXPECT_EQ(text, u"");
    EXPECT_EQ(CutString(text, 1), u"");
    EXPECT_EQ(TrimString(u"a=b=c", u'='), u"b=c");
    EXPECT_EQ(TrimString(u"abc", u'='), u"abc");
    EXPECT_EQ(TrimString(u"abc=", u'='), u"");
    EXPECT_EQ(StripChars(u"1.234,50", u",."), u"123450");
    EXPECT_EQ(StripChars(u"a\U0001F327b\U0001F328", u"\U0001F327"), u"ab\U0001F328");  // pairs share a half
}

TEST(vrnString, OrdinalIndicators) {
    const struct {
        StringView Indicator;
        std::vector<std::int32_t> Numbers;
    } cases[] = {{u"th", {0, 4, 10, 11, 12, 13, 111, -13, 1012, 2147483647, -2147483647 - 1}},
                 {u"st", {1, 21, -1, 101}},
                 {u"nd", {2, 22, -102}},
                 {u"rd", {3, 23, 1003}}};
    for (const auto& [indicator, numbers] : cases) {
        for (const std::int32_t number : numbers) EXPECT_EQ(GetOrdinalIndicator(number), indicator) << number;
    }
}

TEST(vrnString, Shapes) {
    EXPECT_EQ(EnsureStringLeading(u"http://", u"HTTP://a", true), u"HTTP://a");
    EXPECT_EQ(EnsureStringLeading(u"http://", u"HTTP://a", false), u"http://HTTP://a");
    EXPECT_EQ(EnsureStringLeading(u"abc", u"ab", true), u"abcab");
    EXPECT_EQ(EnsureStringLeading(u"", u"x", false), u"x");
    EXPECT_EQ(PadString(u"7", 3, u'0'), u"007");
    EXPECT_EQ(PadString(u"1234", 3, u'0'), u"1234");
    EXPECT_EQ(PadString(u"1", -5, u'0'), u"1");
    const auto giant = [] { (void)PadString(u"", 2147483647, u' '); };
    EXPECT_EQ(Raised<EArgumentException>(giant), u"The resulting text is too long");
    EXPECT_EQ(ReverseString(u"ab\U0001F327c"), u"c\U0001F327ba");
    EXPECT_EQ(ReverseString(u""), u"");
    EXPECT_EQ(SpaceString(u"MonthlyDataABC\u00C4"), u"Monthly Data A B C\u00C4");
    EXPECT_EQ(SpaceString(u""), u"");
    EXPECT_EQ(SentenceCase(u"\u00E4RGER \u00DCBER"), u"\u00C4rger \u00FCber");
    EXPECT_EQ(SentenceCase(u"\U00010428\U00010400"), u"\U00010400\U00010428");  // Deseret letters, pairs
    EXPECT_EQ(SentenceCase(u""), u"");
}

TEST(vrnString, SimpleEncoding) {
    EXPECT_THAT(SimpleStrEnc(u"abc"), ElementsAre(97, 196, 297));
    const String text = u"\uFFFF x\U0001F327";
    EXPECT_EQ(SimpleStrDec(SimpleStrEnc(text)), text);
    EXPECT_TRUE(SimpleStrEnc(u"").IsEmpty());
    EXPECT_EQ(SimpleStrDec(std::vector<std::int32_t>{97, 197}), u"ab");
    EXPECT_EQ(SimpleStrEnc(String(32768, u'\uFFFF')).GetLength(), 32768);
    EXPECT_EQ(Raised<ERangeError>([] { (void)SimpleStrEnc(String(32769, u'\uFFFF')); }),
              u"Text is too long to encode");
    for (const std::int32_t outside : {-1, 2 * 65536}) {
        const std::vector<std::int32_t> elements = {97, outside};
        EXPECT_EQ(Raised<ERangeError>([&] { (void)SimpleStrDec(elements); }),
                  u"Element 1 is no encoded character");
    }
}

}  // namespace
}  // namespace Varnholt
