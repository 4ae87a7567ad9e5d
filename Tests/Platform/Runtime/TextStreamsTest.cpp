#include "Platform/Runtime/TextStreams.h"

#include <gtest/gtest.h>

#include <vector>

#include "Platform/Runtime/Files.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {
namespace {

using namespace std::string_view_literals;

TEST(TextReaderTest, TextIsTheSameForEveryChunkSize) {
    const std::vector<String> expected = {
        u"a\u20AC\U0001F30D", u"", u"\U0001F30D\U00010000", u"b", u"", u"c", u"last"};
    const String text = u"a\u20AC\U0001F30D\r\n\r\n\U0001F30D\U00010000\rb\n\nc\r\nlast";
    for (const TEncoding* encoding : {&TEncoding::Utf8(), &TEncoding::Utf16BE()})
        for (const StringView end : {u"", u"\r", u"\n", u"\r\n"}) {
            const std::string bytes =
                std::string(encoding->GetPreamble()) + encoding->GetBytes(text + String(end));
            for (std::size_t size = 1; size <= bytes.size() + 1; ++size) {
                SCOPED_TRACE(ToUtf8(encoding->GetName()) + ", chunks of " + std::to_string(size));
                TMemoryStream stream(BytesOf(bytes));
                TStreamReader byLine(stream, TEncoding::Default(), true, size);
                std::vector<String> lines;
                while (!byLine.GetEndOfStream()) lines.push_back(byLine.ReadLine());
                String line = u"left over", pieces, chunk(size, u' ');
                EXPECT_TRUE(!byLine.ReadLine(line) && line.empty());
                EXPECT_EQ(lines, expected);
                stream.SetPosition(0);
                TStreamReader byChunk(stream, *encoding, false, 5);
                while (const std::size_t count = byChunk.Read(chunk)) pieces.append(chunk, 0, count);
                EXPECT_EQ(pieces, text + String(end));
            }
        }
}

TEST(TextReaderTest, ThePreambleDecidesTheEncoding) {
    const TEncoding &utf8 = TEncoding::Utf8(), &utf16 = TEncoding::Utf16LE(), &ansi = TEncoding::Default();
    // clang-format off
    const struct {
        std::string_view bytes; const TEncoding& given; bool detect; const TEncoding& used; StringView text;
    } cases[] = {
        {"\xEF\xBB\xBF\xC3\xBC", ansi, true, utf8, u"\u00FC"},
        {"\xEF\xBB\xBF\xC3\xBC", ansi, false, ansi, u"\u00EF\u00BB\u00BF\u00C3\u00BC"},
        {"\xEF\xBB\xBF", ansi, true, utf8, u""},
        {"\xEF\xBB", ansi, true, ansi, u"\u00EF\u00BB"}, {"\xFF\xFE\xFC\0"sv, utf8, true, utf16, u"\u00FC"},
        {"\xFF\xFE", utf8, true, utf16, u""}, {"a\xC3", utf8, true, utf8, u"a\uFFFD"},  // cut short
        {"a\0\xFC"sv, utf16, true, utf16, u"a\uFFFD"}, {"", ansi, true, ansi, u""},
        {"\xFF\xFE\0\0a\0\0\0"sv, utf8, true, TEncoding::Utf32LE(), u"a"},
        {"\xFF\xFE\0\0a\0"sv, utf16, false, utf16, u"\0a"sv},
        {"\0\0\xFE\xFF\0\0\0a"sv, utf8, true, TEncoding::Utf32BE(), u"a"},
    };
    // clang-format on
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.bytes));
        TMemoryStream stream(BytesOf(c.bytes));
        TStreamReader reader(stream, c.given, c.detect, 1);
        EXPECT_EQ(&reader.GetEncoding(), &c.used);
        EXPECT_TRUE(reader.GetEndOfStream() == c.text.empty() && reader.ReadToEnd() == c.text);
    }
}

TEST(TextReaderTest, MixedReadingLosesNothing) {
    TMemoryStream stream(BytesOf("one\r\ntwo\nthree\rfour"));
    TStreamReader reader(stream, TEncoding::Utf8(), true, 2);
    EXPECT_TRUE(reader.Peek() == u'o' && reader.ReadLine() == u"one");
    Char two[2];
    EXPECT_TRUE(reader.Read(two) == 2 && StringView(two, 2) == u"tw" && reader.ReadLine() == u"o");
    EXPECT_EQ(reader.ReadToEnd(), u"three\rfour");
    EXPECT_THROW(TStreamReader(stream, TEncoding::Utf8(), true, 0), EArgumentException);
}

TEST(TextReaderTest, RefusesInvalidBytesAfterTheTextBeforeThem) {
    for (std::size_t size = 1; size < 12; ++size) {
        SCOPED_TRACE(size);
        TMemoryStream stream(BytesOf("one\r\ntwo\r\xFFx\n"));
        TStreamReader byLine(stream, TEncoding::Utf8(), true, size, ibRefuse);
        EXPECT_TRUE(byLine.ReadLine() == u"one" && byLine.ReadLine() == u"two");
        for (int i = 0; i < 2; ++i)
            EXPECT_EQ(Raised<EEncodingError>([&] { byLine.ReadLine(); }), u"Byte FF is not valid in UTF-8");
        stream.SetPosition(0);
        TStreamReader byChunk(stream, TEncoding::Utf8(), true, size, ibRefuse);
        String chunk(20, u' ');
        EXPECT_EQ(byChunk.Read(chunk), 9U);
        EXPECT_THROW(byChunk.Read(chunk), EEncodingError);
    }
}

TEST(TextWriterTest, BytesAreTheSameForEveryBufferSize) {
    const TTemporaryFolder folder;
    const String path = folder.GetPath(u"out.txt");
    for (const std::size_t size : {0u, 1u, 3u, 7u, 4096u}) {
        TStreamWriter writer(path, TEncoding::Utf8(), size);
        writer.WritePreamble();
        writer.WriteLine(u"a\u20AC");
        writer.Write(u"\xD83C");
        writer.Flush();
        writer.Write(u"\xDF0D");  // the pair stays whole
        writer.SetNewLine(u"\n");
        writer.WriteLine();
        writer.Write(u"\xD83C");
        writer.Close();
        EXPECT_EQ(ReadWholeFile(path), "\xEF\xBB\xBF\x61\xE2\x82\xAC\r\n\xF0\x9F\x8C\x8D\n\xEF\xBF\xBD")
            << size;
    }
    TStreamWriter again(path, TEncoding::Default(), 4096, true);
    again.Write(u"\u00FC");
    EXPECT_TRUE(ReadWholeFile(path).ends_with("\xBD"));
    again.Flush();
    EXPECT_TRUE(ReadWholeFile(path).ends_with("\xBD\xFC"));
    const String text(200'001, u'\u20AC');
    TMemoryStream stream;
    TStreamWriter(stream).Write(text);  // the stream stays, with the text in it
    stream.SetPosition(0);
    EXPECT_TRUE(TStreamReader(stream).ReadToEnd() == text);
}

TEST(TextWriterTest, FailuresAreRaisedOnceAndNeverFromTheDestructor) {
    TStreamWriter writer(u"/dev/full");
    writer.Write(u"x");
    EXPECT_THROW(writer.Flush(), EWriteError);
    writer.Flush();
    writer.Write(u"x");
    EXPECT_THROW(writer.Close(), EWriteError);
    writer.Close();
    EXPECT_THROW(writer.Write(u"x"), EInvalidOperation);
    EXPECT_THROW(TStreamWriter(u"/dev/full").Write(String(5000, u'x')), EWriteError);
    TStreamWriter(u"/dev/full").Write(u"x");
}

}  // namespace
}  // namespace Varnholt::Test
