#include "Platform/Runtime/Characters.h"

#include <gtest/gtest.h>

#include "Platform/Runtime/Exceptions.h"

namespace Varnholt {
namespace {

// "L" letter, "D" digit, "W" white space, "U" upper case, "l" lower case; the categories are those of
// UnicodeData.txt and PropList.txt.
template <typename T>
std::string KindsOf(T character) {
    std::string kinds;
    if (IsUnicodeLetter(character)) kinds += 'L';
    if (IsUnicodeDigit(character)) kinds += 'D';
    if (IsUnicodeWhiteSpace(character)) kinds += 'W';
    if (IsUnicodeUpper(character)) kinds += 'U';
    if (IsUnicodeLower(character)) kinds += 'l';
    return kinds;
}

TEST(Characters, KindsOfCharacters) {
    const std::pair<char32_t, const char*> cases[] = {
        {U'A', "LU"},    {U'z', "Ll"},   {U'0', "D"},    {U'_', ""},     {U' ', "W"},    {U'\t', "W"},
        {0x85, "W"},     {0xA0, "W"},    {0x200B, ""},   {0x3000, "W"},  {0x1C, ""},     {0xDF, "Ll"},
        {0x0416, "LU"},  {0x01C5, "L"},  {0x4E2D, "L"},  {0x0663, "D"},  {0xFF15, "D"},  {0xB2, ""},
        {0xBD, ""},      {0x2167, ""},   {0xD800, ""},   {0xDFFF, ""},   {0xFFFF, ""},   {0x10400, "LU"},
        {0x10428, "Ll"}, {0x1D7D8, "D"}, {0x20000, "L"}, {0x10FFFF, ""}, {0x110000, ""}, {0xFFFFFFFF, ""},
    };
    for (const auto& [character, kinds] : cases) {
        EXPECT_EQ(KindsOf(character), kinds) << std::hex << static_cast<std::uint32_t>(character);
        if (character > 0xFFFF) continue;
        EXPECT_EQ(KindsOf(static_cast<Char>(character)), kinds)
            << std::hex << static_cast<std::uint32_t>(character);
    }
}

TEST(Characters, CaseMappingOfWholeTexts) {
    struct {
        StringView text, upper, lower;
    } const cases[] = {
        {u"", u"", u""},
        {u"Abc 1", u"ABC 1", u"abc 1"},
        {u"stra\u00DFe", u"STRASSE", u"stra\u00DFe"},
        {u"iI", u"II", u"ii"},
        {u"\u0390\u0390", u"\u0399\u0308\u0301\u0399\u0308\u0301", u"\u0390\u0390"},  // three units for one
        {u"\u039F\u03A3", u"\u039F\u03A3", u"\u03BF\u03C2"},                          // final sigma
        {u"\xD801\xDC28", u"\xD801\xDC00", u"\xD801\xDC28"},
        {u"\xD801z", u"\xD801Z", u"\xD801z"},  // a lone surrogate stays
    };
    for (const auto& [text, upper, lower] : cases) {
        EXPECT_EQ(ToUpper(text), upper) << ToUtf8(text);
        EXPECT_EQ(ToLower(text), lower) << ToUtf8(text);
    }
}

TEST(Characters, WalksByWholeCharacter) {
    const String text = u"a\xD83D\xDE00\xDE00\xD83Dz\xD83D";
    const std::pair<std::size_t, char32_t> expected[] = {{0, U'a'},   {1, 0x1F600}, {3, 0xDE00},
                                                         {4, 0xD83D}, {5, U'z'},    {6, 0xD83D}};
    std::size_t at = 0;
    for (const auto& [position, character] : expected) {
        EXPECT_EQ(at, position);
        EXPECT_EQ(CharacterAt(text, position), character) << position;
        at += CharacterLength(CharacterAt(text, position));
    }
    EXPECT_EQ(at, text.size());
    EXPECT_EQ(CharacterAt(u"\xD83D\xDE00", 1), 0xDE00u);
    try {
        static_cast<void>(CharacterAt(text, 7));
        FAIL();
    } catch (const ERangeError& error) {
        EXPECT_STREQ(error.what(), "Position 7 is outside the text");
    }
}

}  // namespace
}  // namespace Varnholt
