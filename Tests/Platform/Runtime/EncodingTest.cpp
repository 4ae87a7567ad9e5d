#include "Platform/Runtime/Encoding.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>
#include <vector>

namespace Varnholt {
namespace {

using namespace std::string_view_literals;

std::vector<const TEncoding*> Encodings() {
    return {&TEncoding::Utf8(),  &TEncoding::Utf16LE(), &TEncoding::Utf16BE(),
            &TEncoding::Ascii(), &TEncoding::Default(), &TEncoding::ForName(u"iso-8859-2")};
}

struct TCase {
    const TEncoding& encoding;
    StringView text;
    std::string_view bytes;
};

TEST(EncodingTest, TextAndBytesAreThoseOfTheStandards) {
    const TCase both[] = {
        {TEncoding::Utf8(), u"a\u00FC\u20AC\U0001F30D", "a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x8C\x8D"},
        {TEncoding::Utf8(), u"\uFEFFa", "\xEF\xBB\xBF\x61"},
        {TEncoding::Utf8(), u"a\0b"sv, "a\0b"sv},
        {TEncoding::Utf16LE(), u"a\u20AC\U0001F30D", "a\0\xAC\x20\x3C\xD8\x0D\xDF"sv},
        {TEncoding::Utf16BE(), u"a\u20AC\U0001F30D", "\0a\x20\xAC\xD8\x3C\xDF\x0D"sv},
        {TEncoding::Default(), u"\u20AC\u00FC\u2122", "\x80\xFC\x99"},
        {TEncoding::Default(), u"\u0081\u008D\u008F\u0090\u009D", "\x81\x8D\x8F\x90\x9D"},
        {TEncoding::ForName(u"ISO-8859-2"), u"\u0159", "\xF8"},
        {TEncoding::Ascii(), u"", ""},
    };
    for (const TCase& c : both) {
        SCOPED_TRACE(ToUtf8(c.encoding.GetName() + u": " + String(c.text)));
        EXPECT_EQ(c.encoding.GetBytes(c.text), c.bytes);
        EXPECT_EQ(c.encoding.GetString(c.bytes), c.text);
    }
}

TEST(EncodingTest, WhatDoesNotFitIsReplaced) {
    const TCase encoded[] = {
        {TEncoding::Default(), u"a\u0100b", "a?b"},         // no look-alike A
        {TEncoding::Default(), u"a\u200B\uFEFFb", "a??b"},  // invisible characters count as well
        {TEncoding::Default(), u"\U0001F30D", "?"},
        {TEncoding::Ascii(), u"\u00FC\u0080", "??"},
        {TEncoding::Utf8(), u"a\xD83C", "a\xEF\xBF\xBD"},
        {TEncoding::Utf8(), u"\xDF0D\x61", "\xEF\xBF\xBD\x61"},
        {TEncoding::Utf16LE(), u"\xD83C", "\xFD\xFF"},
    };
    for (const TCase& c : encoded) EXPECT_EQ(c.encoding.GetBytes(c.text), c.bytes) << ToUtf8(c.text);
    const TCase decoded[] = {
        {TEncoding::Utf8(), u"a\uFFFD\u0062", "a\xFF\x62"},
        {TEncoding::Utf8(), u"\uFFFD", "\xF0\x9F\x8C"},              // cut short
        {TEncoding::Utf8(), u"\uFFFD\uFFFD", "\xC0\x80"},            // too long a form
        {TEncoding::Utf8(), u"\uFFFD\uFFFD\uFFFD", "\xED\xA0\xBC"},  // a surrogate
        {TEncoding::Utf16LE(), u"a\uFFFD", "a\0\x3C"sv},
        {TEncoding::Utf16BE(), u"\uFFFD\u0061", "\xD8\x3C\0a"sv},
        {TEncoding::Ascii(), u"\uFFFD\u0061", "\x80\x61"},
        {TEncoding::ForName(u"shift_jis"), u"\uFFFD", "\x81"},
    };
    for (const TCase& c : decoded)
        EXPECT_EQ(c.encoding.GetString(c.bytes), c.text)
            << ToUtf8(c.encoding.GetName() + u": " + String(c.text));
}

TEST(EncodingTest, EveryByteOfTheDefaultEncodingRoundTrips) {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
    const String text = TEncoding::Default().GetString(bytes);
    EXPECT_EQ(text.size(), 256u);
    EXPECT_EQ(text.find(u'\uFFFD'), String::npos);
    EXPECT_EQ(TEncoding::Default().GetBytes(text), bytes);
}

TEST(EncodingTest, PiecesOfAnySizeGiveTheWhole) {
    const String text = u"A\U0001F30D\u00FC\u20AC\r\n\U00010000z\xD83C";
    for (const TEncoding* encoding : Encodings()) {
        const std::string bytes = encoding->GetBytes(text);
        const String decoded = encoding->GetString(bytes);
        for (std::size_t size = 1; size <= bytes.size(); ++size) {
            SCOPED_TRACE(ToUtf8(encoding->GetName()) + " in pieces of " + std::to_string(size));
            TEncoder encoder(*encoding);
            TDecoder decoder(*encoding);
            std::string pieceBytes;
            String pieceText;
            for (std::size_t i = 0; i < text.size(); i += size)
                encoder.Encode(StringView(text).substr(i, size), i + size >= text.size(), pieceBytes);
            for (std::size_t i = 0; i < bytes.size(); i += size)
                decoder.Decode(std::string_view(bytes).substr(i, size), false, pieceText);
            decoder.Decode({}, true, pieceText);
            EXPECT_EQ(pieceBytes, bytes);
            EXPECT_EQ(pieceText, decoded);
        }
    }
}

TEST(EncodingTest, LongTextRoundTrips) {
    String text;
    while (text.size() < 3'000'001) text += u"x\U0001F30D\u20AC";
    for (const TEncoding* encoding : {&TEncoding::Utf8(), &TEncoding::Utf16BE()})
        EXPECT_TRUE(encoding->GetString(encoding->GetBytes(text)) == text) << ToUtf8(encoding->GetName());
}

TEST(EncodingTest, PreamblesAreDetected) {
    for (const TEncoding* encoding : {&TEncoding::Utf8(), &TEncoding::Utf16LE(), &TEncoding::Utf16BE()})
        EXPECT_EQ(TEncoding::DetectByPreamble(std::string(encoding->GetPreamble()) + "a"), encoding);
    for (std::string_view bytes : {""sv, "\xEF\xBB"sv, "\xFF"sv, "a\xFF\xFE"sv})
        EXPECT_EQ(TEncoding::DetectByPreamble(bytes), nullptr) << bytes;
}

TEST(EncodingTest, NamesLeadToOneObjectEach) {
    EXPECT_EQ(&TEncoding::ForName(u"utf8"), &TEncoding::Utf8());
    EXPECT_EQ(&TEncoding::ForName(u"UTF-16"), &TEncoding::Utf16LE());
    EXPECT_EQ(&TEncoding::ForName(u"utf-16be"), &TEncoding::Utf16BE());
    EXPECT_EQ(&TEncoding::ForName(u"ascii"), &TEncoding::Ascii());
    EXPECT_EQ(&TEncoding::ForName(u"cp1252"), &TEncoding::Default());
    EXPECT_EQ(&TEncoding::ForName(u"latin1"), &TEncoding::ForName(u"ISO-8859-1"));
    for (StringView name : {u""sv, u"no-such"sv, u"utf-8,version=1"sv, u"../utf-8"sv, u"utf-8\0"sv}) {
        try {
            static_cast<void>(TEncoding::ForName(name));
            ADD_FAILURE() << ToUtf8(name);
        } catch (const EEncodingError& failure) {
            EXPECT_EQ(failure.GetMessage(), u"No encoding is named \"" + String(name) + u"\"");
        }
    }
    EXPECT_THROW(static_cast<void>(TEncoding::ForName(String(5000, u'x'))), EEncodingError);
}

// The default belongs to the process, so each order of settings runs in a process of its own.
[[noreturn]] void SetDefaultsAndExit() {
    TEncoding::SetDefault(u"windows-1250");
    TEncoding::SetDefault(u"cp1250");
    const bool used = TEncoding::Default().GetBytes(u"\u0159") == "\xF8";
    try {
        TEncoding::SetDefault(u"utf-8");
    } catch (const EInvalidOperation& failure) {
        const bool kept = &TEncoding::Default() == &TEncoding::ForName(u"windows-1250");
        const bool told = failure.GetMessage().starts_with(u"Default encoding is already set to ");
        std::_Exit(used && kept && told ? 0 : 1);
    }
    std::_Exit(2);
}

TEST(EncodingTest, DefaultIsSetOncePerProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(SetDefaultsAndExit(), testing::ExitedWithCode(0), "");
}

TEST(EncodingTest, ThreadsConvertAtTheSameTime) {
    const String text = u"J\u00E4nner \U0001F30D";
    std::vector<int> wrong(4, 0);
    std::vector<std::thread> threads;
    for (int& count : wrong)
        threads.emplace_back([&text, &count] {
            for (int i = 0; i < 500; ++i)
                for (const TEncoding* encoding : {&TEncoding::Utf8(), &TEncoding::ForName(u"utf-32")})
                    if (encoding->GetString(encoding->GetBytes(text)) != text) ++count;
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, std::vector<int>(4, 0));
}

}  // namespace
}  // namespace Varnholt
