#include "Platform/Runtime/Encoding.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <numeric>
#include <thread>

#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

using namespace std::string_view_literals;

TEST(EncodingTest, TextAndBytesAreThoseOfTheStandards) {
    const TEncoding &utf8 = TEncoding::Utf8(), &little = TEncoding::Utf16LE(), &big = TEncoding::Utf16BE(),
                    &ascii = TEncoding::Ascii(), &ansi = TEncoding::Default();
    enum TWay { wyBoth, wyToBytes, wyToText };
    // clang-format off
    const struct { TWay way; const TEncoding& encoding; StringView text; std::string_view bytes; } cases[] = {
        {wyBoth, utf8, u"a\u00FC\u20AC\U0001F30D", "a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x8C\x8D"},
        {wyBoth, utf8, u"\uFEFFa", "\xEF\xBB\xBF\x61"}, {wyBoth, utf8, u"a\0b"sv, "a\0b"sv},
        {wyBoth, little, u"a\u20AC\U0001F30D", "a\0\xAC\x20\x3C\xD8\x0D\xDF"sv},
        {wyBoth, big, u"a\u20AC\U0001F30D", "\0a\x20\xAC\xD8\x3C\xDF\x0D"sv},
        {wyBoth, ansi, u"\u20AC\u00FC\u2122", "\x80\xFC\x99"},
        {wyBoth, ansi, u"\u0081\u008D\u008F\u0090\u009D", "\x81\x8D\x8F\x90\x9D"},
        {wyBoth, TEncoding::ForName(u"ISO-8859-2"), u"\u0159", "\xF8"}, {wyBoth, ascii, u"", ""},
        // What does not fit is replaced: no look-alike A, invisible characters count as well.
        {wyToBytes, ansi, u"a\u0100b", "a?b"}, {wyToBytes, ansi, u"a\u200B\uFEFFb", "a??b"},
        {wyToBytes, ansi, u"\U0001F30D", "?"}, {wyToBytes, ascii, u"\u00FC\u0080", "??"},
        {wyToBytes, utf8, u"a\xD83C", "a\xEF\xBF\xBD"}, {wyToBytes, utf8, u"\xDF0D\x61", "\xEF\xBF\xBD\x61"},
        {wyToBytes, little, u"\xD83C", "\xFD\xFF"},
        // A wrong byte, cut short, too long a form, a surrogate.
        {wyToText, utf8, u"a\uFFFD\u0062", "a\xFF\x62"}, {wyToText, utf8, u"\uFFFD", "\xF0\x9F\x8C"},
        {wyToText, utf8, u"\uFFFD\uFFFD", "\xC0\x80"},
        {wyToText, utf8, u"\uFFFD\uFFFD\uFFFD", "\xED\xA0\xBC"}, {wyToText, little, u"a\uFFFD", "a\0\x3C"sv},
        {wyToText, big, u"\uFFFD\u0061", "\xD8\x3C\0a"sv}, {wyToText, ascii, u"\uFFFD\u0061", "\x80\x61"},
        {wyToText, TEncoding::ForName(u"shift_jis"), u"\uFFFD", "\x81"},
    };
    // clang-format on
    for (const auto& c : cases) {
        SCOPED_TRACE(ToUtf8(c.encoding.GetName() + u": " + String(c.text)));
        EXPECT_EQ(c.way == wyToText ? std::string(c.bytes) : c.encoding.GetBytes(c.text), c.bytes);
        EXPECT_EQ(c.way == wyToBytes ? String(c.text) : c.encoding.GetString(c.bytes), c.text);
    }
}

TEST(EncodingTest, EveryByteAndLongTextsRoundTrip) {
    std::string bytes(256, '\0');
    std::iota(bytes.begin(), bytes.end(), '\0');
    String text = TEncoding::Default().GetString(bytes);
    EXPECT_EQ(TEncoding::Default().GetBytes(text), bytes);
    while (text.size() < 3'000'001) text += u"x\U0001F30D\u20AC";
    EXPECT_TRUE(TEncoding::Utf8().GetString(TEncoding::Utf8().GetBytes(text)) == text);
}

// Valid text before the invalid bytes is kept, and the decoder can be used again.
TEST(EncodingTest, StrictDecoderNamesTheInvalidBytes) {
    // clang-format off
    const struct { StringView name; std::string_view bytes; StringView text, message; } cases[] = {
        {u"utf-8", "a\xFF\x62", u"a", u"Byte FF is not valid in UTF-8"},
        {u"utf-8", "\xC3\xBC\xE2\x82", u"\u00FC", u"Bytes E2 82 are not valid in UTF-8"},
        {u"utf-8", "\xF0\x9F\x8C\x8D\xED\xA0\xBC", u"\U0001F30D", u"Byte ED is not valid in UTF-8"},
        {u"utf-16be", "\0a\xD8\x3C\0a"sv, u"a", u"Bytes D8 3C are not valid in UTF-16BE"},
        {u"utf-32le", "a\0\0\0\0\0\0\x01"sv, u"a", u"Bytes 00 00 00 01 are not valid in UTF-32LE"},
        {u"ascii", "ab\x80", u"ab", u"Byte 80 is not valid in US-ASCII"},
        {u"shift_jis", "a\x81", u"a", u"Byte 81 is not valid in ibm-943_P15A-2003"},
    };
    // clang-format on
    for (const auto& c : cases) {
        TDecoder decoder(TEncoding::ForName(c.name), ibRefuse);
        for (std::size_t size = 1; size <= c.bytes.size(); ++size) {
            SCOPED_TRACE(ToUtf8(c.message) + " in pieces of " + std::to_string(size));
            String text;
            EXPECT_EQ(Raised<EEncodingError>([&] {
                          for (std::size_t i = 0; i < c.bytes.size(); i += size)
                              decoder.Decode(c.bytes.substr(i, size), false, text);
                          decoder.Decode({}, true, text);
                      }),
                      c.message);
            EXPECT_EQ(text, c.text);
        }
    }
}

TEST(EncodingTest, PreamblesAndNamesLeadToOneObjectEach) {
    for (const TEncoding* encoding : {&TEncoding::Utf8(), &TEncoding::Utf16LE(), &TEncoding::Utf16BE(),
                                      &TEncoding::Utf32LE(), &TEncoding::Utf32BE()})
        EXPECT_EQ(TEncoding::DetectByPreamble(std::string(encoding->GetPreamble()) + "a"), encoding);
    // clang-format off
    const std::pair<StringView, const TEncoding&> names[] = {
        {u"utf8", TEncoding::Utf8()}, {u"UTF-16", TEncoding::Utf16LE()}, {u"utf-16be", TEncoding::Utf16BE()},
        {u"ascii", TEncoding::Ascii()}, {u"cp1252", TEncoding::Default()},
        {u"UTF-32", TEncoding::Utf32LE()}, {u"UnicodeBig", TEncoding::Utf16BE()},
        {u"latin1", TEncoding::ForName(u"ISO-8859-1")}};
    // clang-format on
    for (const auto& [name, encoding] : names) EXPECT_EQ(&TEncoding::ForName(name), &encoding);
    // Names of ICU with options, and an encoding that has no "?".
    for (StringView name : {u"ISO-2022-JP", u"ibm-37_P100-1995,swaplfnl", u"GB_2312-80"}) {
        const TEncoding& encoding = TEncoding::ForName(name);
        EXPECT_EQ(&TEncoding::ForName(encoding.GetName()), &encoding) << ToUtf8(name);
        EXPECT_EQ(encoding.GetString(encoding.GetBytes(u"\u3042")) == u"\u3042", name[0] != u'i')
            << ToUtf8(name);
    }
    for (const String& name : {String(), String(u"no-such"), String(u"utf-8,version=1"), String(u"../utf-8"),
                               String(u"utf-8\0"sv), String(5000, u'x')})
        EXPECT_EQ(Raised<EEncodingError>([&] { static_cast<void>(TEncoding::ForName(name)); }),
                  u"No encoding is named \"" + name + u"\"");
}

// The default belongs to the process, so each order of settings runs in a process of its own.
[[noreturn]] void SetDefaultsAndExit() {
    TEncoding::SetDefault(u"windows-1250");
    TEncoding::SetDefault(u"cp1250");
    const bool used = TEncoding::Default().GetBytes(u"\u0159") == "\xF8";
    const String told = Raised<EInvalidOperation>([] { TEncoding::SetDefault(u"utf-8"); });
    const bool kept = &TEncoding::Default() == &TEncoding::ForName(u"windows-1250");
    std::_Exit(used && kept && told.starts_with(u"Default encoding is already set to ") ? 0 : 1);
}

TEST(EncodingTest, DefaultIsSetOncePerProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(SetDefaultsAndExit(), testing::ExitedWithCode(0), "");
}

TEST(EncodingTest, ThreadsConvertAtTheSameTime) {
    const String text = u"J\u00E4nner \U0001F30D";
    std::atomic<int> wrong = 0;
    const auto convert = [&] {
        for (int i = 0; i < 500; ++i)
            for (const TEncoding* encoding : {&TEncoding::Utf8(), &TEncoding::ForName(u"utf-32")})
                if (encoding->GetString(encoding->GetBytes(text)) != text) ++wrong;
    };
    { const std::jthread threads[] = {std::jthread(convert), std::jthread(convert), std::jthread(convert)}; }
    EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace Varnholt::Test
