#include "Platform/Runtime/Characters.h"

#include <gtest/gtest.h>

#include "Tests/Support/Raised.h"

namespace Varnholt::Test {

// "L" letter, "D" digit, "W" white space, "U" upper case, "l" lower case; the categories are those of
// UnicodeData.txt and PropList.txt.
TEST(Characters, KindsOfCharacters) {
    const auto kindsOf = [](auto c) {
        return std::string(IsUnicodeLetter(c) ? "L" : "") + (IsUnicodeDigit(c) ? "D" : "") +
               (IsUnicodeWhiteSpace(c) ? "W" : "") + (IsUnicodeUpper(c) ? "U" : "") +
               (IsUnicodeLower(c) ? "l" : "");
    };
    // clang-format off
    const std::pair<std::u32string_view, const char*> cases[] = {
        {U"A\u0416\U00010400", "LU"}, {U"z\u00DF\U00010428", "Ll"}, {U"\u01C5\u4E2D\U00020000", "L"},
        {U"0\u0663\uFF15\U0001D7D8", "D"}, {U" \t\u0085\u00A0\u3000", "W"},
        {U"_\x1C\u00B2\u00BD\u200B\u2167\uFFFF\xD800\xDFFF\U0010FFFF\x110000\xFFFFFFFF", ""},
    };
    // clang-format on
    for (const auto& [characters, kinds] : cases)
        for (const char32_t character : characters) {
            const auto narrow = static_cast<Char>(character);
            EXPECT_TRUE(kindsOf(character) == kinds && (narrow != character || kindsOf(narrow) == kinds))
                << std::uint32_t{character} << " is " << kindsOf(character);
        }
}

TEST(Characters, CaseMappingOfWholeTexts) {
    // clang-format off
    const StringView cases[][3] = {  // text, upper case, lower case
        {u"", u"", u""}, {u"iI", u"II", u"ii"}, {u"stra\u00DFe 1", u"STRASSE 1", u"stra\u00DFe 1"},
        {u"\u0390\u0390", u"\u0399\u0308\u0301\u0399\u0308\u0301", u"\u0390\u0390"},  // three units for one
        {u"\u039F\u03A3", u"\u039F\u03A3", u"\u03BF\u03C2"},                          // final sigma
        {u"\xD801\xDC28", u"\xD801\xDC00", u"\xD801\xDC28"}, {u"\xD801z", u"\xD801Z", u"\xD801z"},
    };
    // clang-format on
    for (const auto& [text, upper, lower] : cases) {
        EXPECT_EQ(ToUpper(text), upper) << ToUtf8(text);
        EXPECT_EQ(ToLower(text), lower) << ToUtf8(text);
    }
}

TEST(Characters, WalksByWholeCharacter) {
    const String text = u"a\xD83D\xDE00\xDE00\xD83Dz\xD83D";
    std::u32string walked;
    for (std::size_t at = 0; at < text.size(); at += CharacterLength(walked.back()))
        walked += CharacterAt(text, at);
    EXPECT_EQ(walked, U"a\U0001F600\xDE00\xD83Dz\xD83D");
    EXPECT_EQ(CharacterAt(u"\xD83D\xDE00", 1), 0xDE00u);
    EXPECT_EQ(Raised<ERangeError>([&] { static_cast<void>(CharacterAt(text, 7)); }),
              u"Position 7 is outside the text");
}

}  // namespace Varnholt::Test
