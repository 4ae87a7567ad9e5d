#include <gmock/gmock.h>

#include "Platform/Runtime/Files.h"
#include "Tests/Support/FormatSettingsScope.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"
#include "VarnholtLib/Files/vrnNamedPoint.h"
#include "VarnholtLib/Files/vrnTextFile.h"
#include "VarnholtLib/Files/vrnTextFileParser.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;

class TextFiles : public testing::Test {
protected:
    const TTemporaryDrive FDrive{u'T'};
    const String FPath = u"T:\\x.txt";
};

TEST_F(TextFiles, AllWritersShareTheIndent) {
    {
        TTextFileWriter writer(FPath);
        TTextFileWriter::UnIndent();  // at level 0
        writer.Indent();
        writer.Indent();
        writer.WriteLine(u"x");
        writer.Write(u"y");
        writer.WriteFmt(u"%d\n", {1});
        TMemoryStream stream;
        TTextFileWriter other(stream, TEncoding::Utf16LE());
        other.UnIndent();
        other.WriteLineFmt(u"%s", {u"z"});
        other.GetStream().Flush();
        EXPECT_EQ(stream.GetSize(), 10);
        writer.WriteLine(u"\u00E4");
        writer.UnIndent();
    }
    EXPECT_EQ(ReadWholeFile(FPath), "    x\r\ny1\n  \xC3\xA4\r\n");
    EXPECT_EQ(TTextFileWriter::GetIndentString(), u"");
}

TEST_F(TextFiles, AMarkDecidesTheEncodingOfTheReader) {
    for (const std::string_view bytes :
         {std::string_view("a\r\n\r\xC3\xA4"), std::string_view("\xFF\xFE"
                                                                "a\0\n\0\n\0\xE4\0",
                                                                10)}) {
        WriteFileInOneGo(FPath, bytes);
        TTextFileReader reader(FPath);
        EXPECT_EQ(reader.ReadLine() + reader.ReadLine(), u"a");
        EXPECT_FALSE(reader.GetEndOfFile());
        EXPECT_EQ(reader.ReadLine(), u"\u00E4");
        EXPECT_TRUE(reader.GetEndOfFile());
    }
}

TEST_F(TextFiles, TheParserWalksOverLinesAndFields) {
    WriteFileInOneGo(FPath, "a, b \r\n\n\"c,d\",e");
    TTextFileParser parser(FPath, u',');
    std::vector<String> walked;
    while (true) {
        while (!parser.GetEndOfLine()) walked.push_back(parser.GetNextItem());
        walked.push_back(u"|");
        if (parser.GetEndOfFile()) break;
        parser.Next();
    }
    EXPECT_THAT(walked, ElementsAre(u"a", u"b", u"|", u"|", u"c,d", u"e", u"|"));
    EXPECT_EQ(parser.GetCount(), 3);
    EXPECT_THAT(parser.GetItemArray(2), ElementsAre(u"c,d", u"e"));
    const StringView noLine = u"An item doesn't exist at this position";
    parser.GotoRecord(2);
    EXPECT_EQ(parser.GetNextItem(), u"c,d");
    ExpectRaised<EParserError>({{[&] { parser.Next(); }, noLine},
                                {[&] { parser.GotoRecord(3); }, noLine},
                                {[&] { parser.GotoRecord(-1); }, noLine}});
    EXPECT_EQ(parser.GetNextItem(), u"e");
    ExpectRaised<EParserError>(
        {{[&] { parser.GetNextItem(); }, u"Item does not contain expected number of entries"}});
    parser.GotoRecord(0);
    EXPECT_EQ(parser.Next(), 0);

    WriteFileInOneGo(FPath, "");
    TTextFileParser empty(FPath, u',');
    empty.GotoRecord(0);
    EXPECT_TRUE(empty.GetEndOfFile());
    ExpectRaised<EListError>(
        {{[&] { static_cast<void>(empty.GetEndOfLine()); }, u"List index out of bounds (0)"},
         {[&] { empty.GetNextItem(); }, u"List index out of bounds (0)"}});
}

TEST_F(TextFiles, NamedPointsAreWrittenAndReadByColumnName) {
    TNamedPointList list;
    list.Add({u"Home", 174.75F, -36.85F});
    list.Add({u"a,b", 0, 1});
    list.SaveToFile(FPath);
    const std::string written = "\"NAME\",\"LON\",\"LAT\"\r\n\"Home\",\"174.7500\",\"-36.8500\"\r\n";
    EXPECT_EQ(ReadWholeFile(FPath), written + "\"a,b\",\"0.0000\",\"1.0000\"\r\n");
    TNamedPointList again;
    again.LoadFromFile(FPath);
    EXPECT_EQ(again.ToArray(), list.ToArray());
    WriteFileInOneGo(FPath, "N,ID,Site,E\n\"2,5\",x,Graz,\"1,5\"\n1,x,y,zz\n");
    EXPECT_EQ(Raised<EArgumentException>([&] { again.LoadFromFile(FPath); }), u"Column \"NAME\" not found");
    EXPECT_EQ(again.Count(), 0);
    TNamedPointList sites(u"Site", u"E", u"N");
    const TFormatSettingsScope comma(u',');
    EXPECT_THROW(sites.LoadFromFile(FPath), EConvertError);
    EXPECT_THAT(sites.ToArray(), ElementsAre(TNamedPoint(u"Graz", 1.5F, 2.5F)));
}

}  // namespace
}  // namespace Varnholt::Test
