#include "Platform/Runtime/StringList.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "Platform/Runtime/Files.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;
using namespace std::string_view_literals;

TStringList ListOf(std::initializer_list<StringView> lines) {
    TStringList list;
    for (const StringView line : lines) list.Add(line);
    return list;
}

TEST(StringListTest, LinesAreFoundAndOrderedWithOrWithoutCase) {
    TStringList list = ListOf({u"b", u"B", u"\u00E4", u"a", u"_"});
    EXPECT_TRUE(list.IndexOf(u"B") == 0 && list.IndexOf(u"\u00C4") == -1);  // ASCII letters only
    list.SetCaseSensitive(true);
    EXPECT_TRUE(list.IndexOf(u"B") == 1 && list.IndexOf(u"A") == -1);
    list.Sort();
    EXPECT_THAT(list, ElementsAre(u"B", u"_", u"a", u"b", u"\u00E4"));
    list.SetCaseSensitive(false);
    list.Insert(4, u"A");
    list.Insert(6, u"z");
    list.Delete(1);
    list.Sort();
    EXPECT_THAT(list, ElementsAre(u"a", u"A", u"B", u"b", u"z", u"\u00E4"));
}

TEST(StringListTest, IndicesOutsideAreRejected) {
    TStringList list = ListOf({u"a", u"b"});
    ExpectRaised<EListError>(
        {{[&] { list[2] = u"x"; }, u"List index out of bounds (2)"},
         {[&] { static_cast<void>(std::as_const(list)[-1]); }, u"List index out of bounds (-1)"},
         {[&] { list.Delete(2); }, u"List index out of bounds (2)"},
         {[&] { list.Insert(3, u"x"); }, u"List index out of bounds (3)"},
         {[&] { list.Insert(-1, u"x"); }, u"List index out of bounds (-1)"}});
    EXPECT_THAT(list, ElementsAre(u"a", u"b"));
}

TEST(StringListTest, TextIsSplitAndJoined) {
    const std::pair<StringView, StringView> cases[] = {
        {u"", u""}, {u"\n\r\r\na", u"\r\n\r\n\r\na\r\n"}, {u"a\r\nb\nc\rd\r\n", u"a\r\nb\r\nc\r\nd\r\n"}};
    for (const auto& [text, joined] : cases) {
        TStringList list = ListOf({u"former"});
        list.SetText(text);
        EXPECT_EQ(list.GetText(), joined);
        EXPECT_EQ(list.GetCount(), std::ranges::count(joined, u'\r'));
    }
}

TEST(StringListTest, FilesHoldExactlyTheLines) {
    const TTemporaryFolder folder;
    const String path = folder.GetPath(u"a.csv");
    const TStringList list = ListOf({u"Z\u00FCrich,\u20AC", u"", u"\u0100"});
    // clang-format off
    const std::pair<const TEncoding*, std::string_view> cases[] = {
        {&TEncoding::Default(), "Z\xFCrich,\x80\r\n\r\n?\r\n"},
        {&TEncoding::Utf8(), "\xEF\xBB\xBFZ\xC3\xBCrich,\xE2\x82\xAC\r\n\r\n\xC4\x80\r\n"},
        {&TEncoding::Utf16BE(), "\xFE\xFF\0Z\0\xFC\0r\0i\0c\0h\0,\x20\xAC\0\r\0\n\0\r\0\n\x01\0\0\r\0\n"sv},
    };
    // clang-format on
    for (const auto& [encoding, bytes] : cases) {
        WriteFileInOneGo(path, "a file that is there already, and longer than the new one will be");
        list.SaveToFile(path, *encoding);
        EXPECT_EQ(ReadWholeFile(path), bytes);
        TStringList loaded = ListOf({u"former"});
        loaded.LoadFromFile(path);
        EXPECT_THAT(loaded, ElementsAre(list[0], u"", bytes == cases[0].second ? u"?" : u"\u0100"));
    }
    list.SaveToFile(path);
    EXPECT_EQ(ReadWholeFile(path), cases[0].second);
    TStringList kept = ListOf({u"former"});
    EXPECT_THROW(kept.LoadFromFile(folder.GetPath(u"no.csv")), EFOpenError);
    EXPECT_THAT(kept, ElementsAre(u"former"));
    EXPECT_THROW(list.SaveToFile(u"/dev/full"), EWriteError);
}

}  // namespace
}  // namespace Varnholt::Test
