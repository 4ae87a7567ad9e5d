#include "VarnholtBaseLib/CsvReader.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/TextStreams.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;

/// Gives a text in chunks of that many characters at most.
TCSVRowReader::TSource Chunks(StringView text, std::size_t size) {
    return [text, size](std::span<Char> chunk) mutable {
        const std::size_t count = std::min({size, chunk.size(), text.size()});
        std::copy_n(text.begin(), count, chunk.begin());
        text.remove_prefix(count);
        return count;
    };
}

/// The rows as "LINE[FIELD|FIELD]", and after them the message of a row that cannot be read.
String Outcome(TCSVRowReader& reader) {
    String outcome;
    std::vector<String> row = {u"left", u"from", u"before", u"!"};
    const String message = Raised<EConvertError>([&] {
        while (reader.ReadRow(row)) {
            outcome += IntToStr(reader.GetLineNumber()) + u"[" + row[0];
            for (std::size_t i = 1; i < row.size(); ++i) outcome += u"|" + row[i];
            outcome += u"]";
        }
    });
    EXPECT_TRUE(!reader.ReadRow(row) && row.empty());
    return message == u"(nothing raised)" ? outcome : outcome + message;
}

TEST(CsvReaderTest, ReadsRowsInChunksOfAnySize) {
    const String open = u"The quote opened in line 3 is never closed";
    const String tooLong = u"The row in line 3 is longer than 60 characters";
    // clang-format off
    const std::pair<String, String> cases[] = {
        {u"", u""}, {u"\xFEFF", u""}, {u"\r\n\n\r\r\n", u""}, {u"\xFEFFn\xFEFF,b", u"1[n\xFEFF|b]"},
        {u"\n\r\na\r\r\n\nb\n", u"3[a]6[b]"}, {u"a,b\r\nc,d\ne\rg,h", u"1[a|b]2[c|d]3[e]4[g|h]"},
        {u"a,\n,\n,b,c\n\"\"\n \n", u"1[a|]2[|]3[|b|c]4[]5[ ]"},
        {u"\"a,b\",\"c\"\"d\"\r\n\"\"\"\",x", u"1[a,b|c\"d]2[\"|x]"},
        {u"\"a\r\nb\nc\rd\r\",1\r\n\"\n\"\nz", u"1[a\r\nb\nc\rd\r|1]6[\n]8[z]"},
        {u"\"a\" b\"c\",d\"e\"\n \"f\",\"g\"h", u"1[a b\"c\"|d\"e\"]2[ \"f\"|gh]"},
        {u"a,b,", u"1[a|b|]"}, {u"\"a\",\"\"", u"1[a|]"},
        {u"a,\"1\n2\"\n\"", u"1[a|1\n2]" + open}, {u"1\n\"a\nb\",\"c\n", u"1[1]" + open}, {u"a\r\n\r\nc,\"d\n\ne,f\n", u"1[a]" + open},
        // A field counts 16 and its characters, quotes and line ends in quotes included.
        {u"a,123456789012345678901234567\r\n\r\n" + String(45, u'x'),
         u"1[a|123456789012345678901234567]" + tooLong},
        {u"1\n\n\"" + String(60, u'\n'), u"1[1]" + tooLong}, {u"a\n\n,,,\n", u"1[a]" + tooLong},
        {u"1\n\n\"" + String(90, u'"'), u"1[1]" + tooLong}};
    // clang-format on
    for (const auto& [text, expected] : cases)
        for (const std::size_t size : std::initializer_list<std::size_t>{1, 2, 3, 5, 1000}) {
            TCSVRowReader reader(Chunks(text, size));
            reader.SetMaxRowLength(60);
            EXPECT_EQ(Outcome(reader), expected) << ToUtf8(text) << " in chunks of " << size;
        }
    TCSVRowReader endless([](std::span<Char> chunk) {
        std::ranges::fill(chunk, u'x');
        return chunk.size();
    });
    EXPECT_EQ(Outcome(endless), u"The row in line 1 is longer than 67108864 characters");
    EXPECT_THROW(endless.SetMaxRowLength(0), EArgumentException);
}

TEST(CsvReaderTest, KnowsTheLineOfInvalidBytes) {
    TMemoryStream stream(BytesOf("a,b\n\"1\n2\",c\r\nd\xFF,e\n"));
    TStreamReader text(stream, TEncoding::Utf8(), true, 4, ibRefuse);
    TCSVRowReader reader(text);
    std::vector<String> row;
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(reader.ReadRow(row));
    for (int i = 0; i < 2; ++i) EXPECT_THROW(reader.ReadRow(row), EEncodingError);
    EXPECT_EQ(reader.GetCurrentLine(), 4);
}

TEST(CsvReaderTest, TakesAnySeparatorButQuotesAndLineEnds) {
    TCSVRowReader reader(Chunks(u"a,b\t\"c\td\"", 100), u'\t');
    EXPECT_EQ(Outcome(reader), u"1[a,b|c\td]");
    for (const Char separator : {u'"', u'\r', u'\n'})
        EXPECT_THROW(TCSVRowReader(Chunks(u"", 1), separator), EArgumentException);
}

TEST(CsvReaderTest, FieldsAreQuotedWhereNeeded) {
    EXPECT_EQ(CsvField(u"plain; text "), u"plain; text ");
    EXPECT_EQ(CsvField(u"a;b", u';'), u"\"a;b\"");
    EXPECT_EQ(CsvField(u"say \"x\""), u"\"say \"\"x\"\"\"");
}

TEST(CsvFileTest, LoadsATableAndFindsItsColumns) {
    const TTemporaryFolder folder;
    const String path = folder.GetPath(u"a.csv");
    WriteFileInOneGo(path,
                     "\xEF\xBB\xBFLAT,ID,NAME,name,NAME\r\n\r\n-36.85,\"1\",\"Z\xC3\xBCrich, See\"\r\n");
    const TCSVReader table = TCSVReader::FromFile(path, u',');
    ASSERT_EQ(table.GetRows().size(), 2U);
    EXPECT_THAT(table.GetRows()[1], ElementsAre(u"-36.85", u"1", u"Z\xFCrich, See"));

    TIntegerArray columns = {7};
    const TIntegerArray before = columns;
    const auto find = [&] { table.GetColumnIndexes({u"LAT", u"Id"}, columns); };
    EXPECT_EQ(Raised<EArgumentException>(find), u"Column \"Id\" not found");
    EXPECT_TRUE(columns.SharesWith(before));
    table.GetColumnIndexes({u"NAME", u"LAT", u"name", u"NAME"}, columns);
    EXPECT_THAT(columns, ElementsAre(2, 0, 3, 2));
    EXPECT_THAT(before, ElementsAre(7));

    WriteFileInOneGo(path, "a,b\n1,\"2\n");
    EXPECT_EQ(Raised<EConvertError>([&] { static_cast<void>(TCSVReader::FromFile(path, u',')); }),
              path + u": The quote opened in line 2 is never closed");
    WriteFileInOneGo(path, "");
    EXPECT_THROW(TCSVReader::FromFile(path, u',').GetColumnIndexes({u"a"}, columns), EArgumentException);
}

}  // namespace
}  // namespace Varnholt::Test
