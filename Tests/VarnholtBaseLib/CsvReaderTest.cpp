#include "VarnholtBaseLib/CsvReader.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/TextStreams.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {
namespace {

using TRows = std::vector<std::vector<String>>;
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

constexpr std::size_t kChunkSizes[] = {1, 2, 3, 5, 1000};

TEST(CsvReaderTest, ReadsRowsInChunksOfAnySize) {
    // clang-format off
    const struct { const Char* text; TRows rows; std::vector<std::int64_t> lines; } cases[] = {
        {u"", {}, {}}, {u"\xFEFF", {}, {}}, {u"\r\n\n\r\r\n", {}, {}},
        {u"\xFEFFn\xFEFF,b", {{u"n\xFEFF", u"b"}}, {1}}, {u"\n\r\na\r\r\n\nb\n", {{u"a"}, {u"b"}}, {3, 6}},
        {u"a,b\r\nc,d\ne,f\rg,h", {{u"a", u"b"}, {u"c", u"d"}, {u"e", u"f"}, {u"g", u"h"}}, {1, 2, 3, 4}},
        {u"a,\n,\n,b,c\n\"\"\n \n",
         {{u"a", u""}, {u"", u""}, {u"", u"b", u"c"}, {u""}, {u" "}}, {1, 2, 3, 4, 5}},
        {u"\"a,b\",\"c\"\"d\"\r\n\"\"\"\",x", {{u"a,b", u"c\"d"}, {u"\"", u"x"}}, {1, 2}},
        {u"\"a\r\nb\nc\rd\r\",1\r\n\"\n\"\nz", {{u"a\r\nb\nc\rd\r", u"1"}, {u"\n"}, {u"z"}}, {1, 6, 8}},
        {u"\"a\" b\"c\",d\"e\"\n \"f\",\"g\"h", {{u"a b\"c\"", u"d\"e\""}, {u" \"f\"", u"gh"}}, {1, 2}},
        {u"a,b,", {{u"a", u"b", u""}}, {1}}, {u"\"a\",\"\"", {{u"a", u""}}, {1}},
    };
    // clang-format on
    for (const auto& c : cases) {
        for (const std::size_t size : kChunkSizes) {
            TCSVRowReader reader(Chunks(c.text, size));
            TRows rows;
            std::vector<std::int64_t> lines;
            std::vector<String> row = {u"left", u"from", u"before", u"!"};
            while (reader.ReadRow(row)) {
                rows.push_back(row);
                lines.push_back(reader.GetLineNumber());
            }
            EXPECT_EQ(rows, c.rows) << ToUtf8(c.text) << " in chunks of " << size;
            EXPECT_EQ(lines, c.lines) << ToUtf8(c.text) << " in chunks of " << size;
            EXPECT_TRUE(!reader.ReadRow(row) && row.empty());
        }
    }
}

TEST(CsvReaderTest, NamesTheLineOfAQuoteThatStaysOpen) {
    const std::pair<StringView, Char> cases[] = {
        {u"\"", u'1'}, {u"a,b\r\n\r\nc,\"d\n\ne,f\n", u'3'}, {u"\"a\n\",\"b\"\"", u'2'}};
    for (const auto& [text, line] : cases)
        for (const std::size_t size : kChunkSizes) {
            TCSVRowReader reader(Chunks(text, size));
            std::vector<String> row;
            const auto readAll = [&] {
                while (reader.ReadRow(row)) continue;
            };
            EXPECT_EQ(Raised<EConvertError>(readAll),
                      u"The quote opened in line " + String(1, line) + u" is never closed");
            EXPECT_FALSE(reader.ReadRow(row));
        }
}

TEST(CsvReaderTest, RefusesARowThatIsTooLong) {
    const String tooLong = u"The row in line 2 is longer than 40 characters";
    // A field counts 16 and its characters; a row of exactly 40 is read.
    const String texts[] = {u"a,12345678\r\n" + String(25, u'x'), u"a,1234567\r\n\"" + String(40, u'\n'),
                            u"1234567,a\n\"" + String(50, u'"'), u"a\n,,\n"};
    for (const String& text : texts)
        for (const std::size_t size : kChunkSizes) {
            SCOPED_TRACE(ToUtf8(text) + " in chunks of " + std::to_string(size));
            TCSVRowReader reader(Chunks(text, size));
            reader.SetMaxRowLength(text.starts_with(u"a,12345678") ? 41 : 40);
            std::vector<String> row;
            EXPECT_TRUE(reader.ReadRow(row));
            reader.SetMaxRowLength(40);
            EXPECT_EQ(Raised<EConvertError>([&] { reader.ReadRow(row); }), tooLong);
            EXPECT_FALSE(reader.ReadRow(row));
        }
    TCSVRowReader endless([](std::span<Char> chunk) {
        std::ranges::fill(chunk, u',');
        return chunk.size();
    });
    std::vector<String> row;
    EXPECT_THROW(endless.ReadRow(row), EConvertError);
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
    std::vector<String> row;
    TCSVRowReader(Chunks(u"a,b\t\"c\td\"", 100), u'\t').ReadRow(row);
    EXPECT_THAT(row, ElementsAre(u"a,b", u"c\td"));
    for (const Char separator : {u'"', u'\r', u'\n'})
        EXPECT_THROW(TCSVRowReader(Chunks(u"", 1), separator), EArgumentException);
}

// Any text survives the way through CsvField and back.
TEST(CsvReaderTest, ReadsBackWhatCsvFieldWrote) {
    EXPECT_EQ(CsvField(u"plain; text "), u"plain; text ");
    EXPECT_EQ(CsvField(u"a;b", u';'), u"\"a;b\"");
    EXPECT_EQ(CsvField(u"say \"x\""), u"\"say \"\"x\"\"\"");
    std::minstd_rand random(1);
    for (int round = 0; round < 2000; ++round) {
        std::vector<String> fields(2), row;
        for (String& field : fields)
            for (int i = 0; i < 5; ++i) field += u"\",\r\na "[random() / 1000 % 6];
        const String text = CsvField(fields[0]) + u"," + CsvField(fields[1]) + u"\r\n";
        TCSVRowReader reader(Chunks(text, 7));
        ASSERT_TRUE(reader.ReadRow(row) && row == fields) << ToUtf8(text);
        ASSERT_FALSE(reader.ReadRow(row)) << ToUtf8(text);
    }
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
    EXPECT_EQ(Raised<EConvertError>([&] { (void)TCSVReader::FromFile(path, u','); }),
              path + u": The quote opened in line 2 is never closed");
    EXPECT_THROW((void)TCSVReader::FromFile(path + u".none", u','), EFOpenError);
    WriteFileInOneGo(path, "");
    EXPECT_THROW(TCSVReader::FromFile(path, u',').GetColumnIndexes({u"a"}, columns), EArgumentException);
}

}  // namespace
}  // namespace Varnholt::Test
