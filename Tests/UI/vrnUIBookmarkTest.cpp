#include "VarnholtLib/UI/vrnUIBookmark.h"

#include <gtest/gtest.h>

#include <random>

#include "Platform/Runtime/Files.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"
#include "VarnholtLib/UI/vrnUIBookmarkXMLDb.h"

namespace Varnholt::Test {
namespace {

const std::string kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

std::shared_ptr<IUIBookmark> NewBookmark(StringView name, const TUIBookmarkValues& values) {
    auto bookmark = TUIBookmarkFactory::GetObject();
    bookmark->SetName(name);
    for (const auto& [key, value] : values) bookmark->SetValue(key, value);
    return bookmark;
}

/// `COLLECTION{BOOKMARK{KEY=VALUE,}}` for all that the database holds.
String Content(IUIBookmarkDb& db) {
    String text;
    for (const auto& collection : db) {
        text += collection->GetName() + u"{";
        for (const auto& bookmark : *collection) {
            text += bookmark->GetName() + u"{";
            for (const auto& [key, value] : bookmark->GetValues()) text += key + u"=" + value + u",";
            text += u"}";
        }
        text += u"}";
    }
    return text;
}

class vrnUIBookmark : public ::testing::Test {
protected:
    const TTemporaryFolder Folder;
    const String Path = Folder.GetPath(u"a.bookmarks");
    const std::shared_ptr<IUIBookmarkDb> Db = TUIBookmarkXMLDbFactory::GetObject();
};

TEST_F(vrnUIBookmark, KeepsOneValueForEachKeyAndFindsTheFirstCollectionOfAName) {
    Db->GetCollection(u"Main")->Add(NewBookmark(u"Last", {{u"a", u"1"}, {u"A", u"2"}}));
    Db->GetCollection(u"Main")->First()->SetValue(u"a", u"3");
    dynamic_cast<TBaseUIBookmarkDb&>(*Db).CreateCollection(u"Main")->Add(NewBookmark(u"Later", {}));
    Db->Add(nullptr);
    static_cast<void>(Db->GetCollection(u"main"));
    Db->GetCollection(u"Main")->Add(NewBookmark(u"Last", {}));
    Db->Delete(2);
    EXPECT_EQ(Content(*Db), u"Main{Last{A=2,a=3,}Last{}}Main{Later{}}main{}");
}

TEST_F(vrnUIBookmark, SavesToTheFileOfTheLastLoad) {
    static_cast<void>(Db->GetCollection(u"Old"));
    ExpectRaised<EInvalidOperation>(
        {{[&] { Db->Save(); }, u"Default Save Method not available when no file has been selected"}});
    Db->Load(Path);
    EXPECT_EQ(Content(*Db), u"") << "a missing file empties the database";
    Db->GetCollection(u"New")->Add(NewBookmark(u"", {{u"", u""}}));
    Db->Save(Folder.GetPath(u"b"));
    EXPECT_FALSE(FileExists(Path));
    Db->Save();
    EXPECT_EQ(ReadWholeFile(Path), ReadWholeFile(Folder.GetPath(u"b")));
    Db->Load(Path);
    EXPECT_EQ(Content(*Db), u"New{{=,}}");
    Db->Load(u"");
    EXPECT_NE(Raised<EInvalidOperation>([&] { Db->Save(); }), u"(nothing raised)");
    Db->Add(nullptr);
    ExpectRaised<EArgumentNilException>({{[&] { Db->Save(Path); }, u"collection"}});
}

TEST_F(vrnUIBookmark, WritesTheFileByteForByte) {
    Db->Save(Path);
    EXPECT_EQ(ReadWholeFile(Path), kHead + "<uibCollections/>\n");
    const auto main = Db->GetCollection(u"Main");
    main->Add(NewBookmark(u"Last", {{u"chkAll", u"-1"}}));
    Db->Save(Path);
    EXPECT_EQ(
        ReadWholeFile(Path),
        kHead +
            "<uibCollections><uibCollection name=\"Main\"><uibBookmark name=\"Last\"><values>"
            "<value name=\"chkAll\">-1</value></values></uibBookmark></uibCollection></uibCollections>\n");
    main->SetItem(0, NewBookmark(u"\"\n", {{u"<", u"&\r\u00E9 "}, {u" ", u""}}));
    Db->Save(Path);
    EXPECT_EQ(ReadWholeFile(Path),
              kHead +
                  "<uibCollections><uibCollection name=\"Main\"><uibBookmark name=\"&quot;&#10;\"><values>"
                  "<value name=\" \"/><value name=\"&lt;\">&amp;&#13;\u00E9 </value></values></uibBookmark>"
                  "</uibCollection></uibCollections>\n");
}

TEST_F(vrnUIBookmark, LosesOnlyTheEntryThatIsDamaged) {
    const auto collection = [](const std::string& body) {
        return "<uibCollection name='c'><uibBookmark name='first'><values/></uibBookmark>" + body +
               "<uibBookmark name='last'><values/></uibBookmark></uibCollection>";
    };
    const struct {
        std::string Inside;
        StringView Expected;
    } rows[] = {
        {collection(
             "<uibBookmark name='b'><values><value name='k'>1</value><value name='k'>2</value></values>"
             "</uibBookmark>"),
         u"c{first{}b{k=2,}last{}}"},
        {collection("<uibBookmark name='b'><values><value "
                    "name='k'>1</value><value>2</value></values></uibBookmark>"),
         u"c{first{}last{}}"},
        {collection("<uibBookmark><values/></uibBookmark>"), u"c{first{}last{}}"},
        {collection("<uibBookmark name='b'/>"), u"c{first{}last{}}"},
        {collection("<uibBookmark name='b'><values/><values><value/></values></uibBookmark>"),
         u"c{first{}b{}last{}}"},
        {collection(
             "<UibBookmark name='b'/>text<uibBookmark name='b'><values><Value/>x</values></uibBookmark>"),
         u"c{first{}b{}last{}}"},
        {"<uibCollection Name='d'><uibBookmark name='b'><values/></uibBookmark></uibCollection>" +
             collection(""),
         u"c{first{}last{}}"},
        {"<uibCollection name='c'/><x/><uibCollection name='c'/>", u"c{}c{}"},
    };
    for (const auto& row : rows) {
        WriteFileInOneGo(Path, "<uibCollections>" + row.Inside + "</uibCollections>");
        Db->Load(Path);
        EXPECT_EQ(Content(*Db), row.Expected) << row.Inside;
    }
}

TEST_F(vrnUIBookmark, RefusesAFileThatIsNoDatabaseAndReplacesItAtTheNextSave) {
    const auto load = [&](std::string_view bytes) {
        return [this, bytes] {
            WriteFileInOneGo(Path, bytes);
            static_cast<void>(Db->GetCollection(u"former"));
            Db->Load(Path);
        };
    };
    ExpectRaised<EXMLDocError>(
        {{load("<UibCollections/>"), u"The XML document has no root element \"uibCollections\""},
         {load("<uibCollections>"), Path + u": line 1: Premature end of data in tag uibCollections line 1"}});
    EXPECT_EQ(Content(*Db), u"");
    Db->Save();
    EXPECT_EQ(ReadWholeFile(Path), kHead + "<uibCollections/>\n");
}

TEST_F(vrnUIBookmark, SavesWhateverXmlCanHoldAndNamesWhatItCannot) {
    std::mt19937 random(5);
    const StringView pieces[] = {u"a",  u"<",  u"]]>",    u"&amp;",  u"'",      u"\"",         u" ", u"\t",
                                 u"\r", u"\n", u"\u0085", u"\u2028", u"\uFFFD", u"\U0001F327", u"-1"};
    const auto text = [&] {
        String result;
        for (auto left = random() % 5; left > 0; --left) result += pieces[random() % std::size(pieces)];
        return result;
    };
    for (int i = 0; i < 50; ++i) {
        const auto collection = Db->GetCollection(text());
        for (int b = 0; b < 3; ++b)
            collection->Add(NewBookmark(text(), {{text(), text()}, {text(), text()}}));
    }
    Db->Save(Path);
    const String content = Content(*Db);
    const std::string bytes = ReadWholeFile(Path);
    Db->Load(Path);
    EXPECT_EQ(Content(*Db), content);

    const auto save = [&](StringView collection, const std::shared_ptr<IUIBookmark>& bookmark) {
        return [=, this] {
            Db->Clear();
            Db->GetCollection(collection)->Add(bookmark);
            Db->Save(Path);
        };
    };
    const String high(1, Char(0xD800)), reason = u" cannot be saved: XML cannot hold character U+";
    ExpectRaised<EXMLDocError>({
        {save(u"C\u0001", NewBookmark(u"B", {})), u"The bookmark collection \"C\u0001\"" + reason + u"0001"},
        {save(u"C", NewBookmark(u"\uFFFF", {})),
         u"The bookmark \"\uFFFF\" in collection \"C\"" + reason + u"FFFF"},
        {save(u"C", NewBookmark(u"B", {{u"K" + high, u""}})),
         u"The value \"K" + high + u"\" of bookmark \"B\" in collection \"C\"" + reason + u"D800"},
        {save(u"C", NewBookmark(u"B", {{u"K", String(1, u'\0')}})),
         u"The value \"K\" of bookmark \"B\" in collection \"C\"" + reason + u"0000"},
    });
    ExpectRaised<EArgumentNilException>({{save(u"C", nullptr), u"bookmark"}});
    EXPECT_EQ(ReadWholeFile(Path), bytes) << "the former file stands";
}

}  // namespace
}  // namespace Varnholt::Test
