#include "Platform/Runtime/Encoding.h"

#include <string>
#include <vector>

#include "Fuzz/FuzzInput.h"
#include "Platform/Runtime/TextStreams.h"

/// Decoding and encoding in one go and in pieces, round trips, and the text reader over a stream of any bytes.
namespace Varnholt::Fuzz {
namespace {

// Each character of these has an encoding; each byte of the others has a character.
constexpr StringView kUnicode[] = {u"utf-8", u"utf-16le", u"utf-16be", u"utf-32"};
constexpr StringView kBytewise[] = {u"windows-1252", u"iso-8859-2", u"ibm437"};
constexpr StringView kOther[] = {u"us-ascii", u"shift_jis", u"gb18030", u"euc-kr", u"big5"};

struct TStrictText {
    String Text;
    String Failure;
};

TStrictText DecodeStrictly(const TEncoding& encoding, std::string_view bytes, std::size_t size) {
    TStrictText strict;
    strict.Failure = FailureOf([&] {
        TDecoder decoder(encoding, ibRefuse);
        for (std::size_t at = 0; at < bytes.size(); at += size)
            decoder.Decode(bytes.substr(at, size), at + size >= bytes.size(), strict.Text);
    });
    return strict;
}

/// Refusing invalid bytes, in one go and in pieces, beside replacing them.
void RequireStrictMatches(const TEncoding& encoding, std::string_view bytes, const String& replaced) {
    const TStrictText whole = DecodeStrictly(encoding, bytes, bytes.size() + 1);
    Require(replaced.starts_with(whole.Text), "the text before invalid bytes is that of the whole");
    if (whole.Failure.empty()) RequireSame(whole.Text, replaced, "valid bytes give the same text either way");
    if (&encoding == &TEncoding::Utf8())
        Require(whole.Failure.empty() == (encoding.GetBytes(replaced) == bytes), "invalid UTF-8 is refused");
    for (const std::size_t size : {1U, 3U}) {
        const TStrictText pieces = DecodeStrictly(encoding, bytes, size);
        RequireSame(pieces.Text, whole.Text, "pieces do not change the text before invalid bytes");
        RequireSame(pieces.Failure, whole.Failure, "pieces do not change the refusal");
    }
}

void RequirePiecesMatch(const TEncoding& encoding, std::string_view bytes, StringView text) {
    const String decoded = encoding.GetString(bytes);
    const std::string encoded = encoding.GetBytes(text);
    RequireStrictMatches(encoding, bytes, decoded);
    for (const std::size_t size : {1U, 3U}) {
        String decodedPieces;
        TDecoder decoder(encoding);
        for (std::size_t at = 0; at < bytes.size(); at += size)
            decoder.Decode(bytes.substr(at, size), at + size >= bytes.size(), decodedPieces);
        RequireSame(decodedPieces, decoded, "bytes in pieces give the text of the whole");

        std::string encodedPieces;
        TEncoder encoder(encoding);
        for (std::size_t at = 0; at < text.size(); at += size)
            encoder.Encode(text.substr(at, size), at + size >= text.size(), encodedPieces);
        Require(encodedPieces == encoded, "text in pieces gives the bytes of the whole");
    }
}

void RequireRoundTrips(std::string_view bytes, StringView text) {
    const String wellFormed = FromUtf8(ToUtf8(text));
    for (const StringView name : kUnicode) {
        const TEncoding& encoding = TEncoding::ForName(name);
        RequireSame(encoding.GetString(encoding.GetBytes(wellFormed)), wellFormed, "text is read back");
        RequireSame(encoding.GetString(encoding.GetBytes(text)), wellFormed, "lone surrogates are replaced");
        Require(
            encoding.GetBytes(wellFormed + u"a") == encoding.GetBytes(wellFormed) + encoding.GetBytes(u"a"),
            "no bytes but those of the characters are written");
    }
    for (const StringView name : kBytewise) {
        const TEncoding& encoding = TEncoding::ForName(name);
        Require(encoding.GetBytes(encoding.GetString(bytes)) == bytes, "bytes are written back");
    }
}

std::vector<String> LinesOf(StringView text) {
    std::vector<String> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(u"\r\n"), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end);
        text.remove_prefix(text.starts_with(u"\r\n") ? 2 : std::min<std::size_t>(1, text.size()));
    }
    return lines;
}

void RequireReaderMatches(TInput input, std::string_view bytes) {
    const TEncoding* marked = TEncoding::DetectByPreamble(bytes);
    const TEncoding& encoding = marked != nullptr ? *marked : TEncoding::Utf8();
    const String expected = encoding.GetString(bytes.substr(marked ? encoding.GetPreamble().size() : 0));
    const std::vector<String> expectedLines = LinesOf(expected);
    for (const std::size_t bufferSize : {1U, 3U, 4096U}) {
        TMemoryStream stream(std::as_bytes(input));
        TStreamReader whole(stream, TEncoding::Utf8(), true, bufferSize);
        RequireSame(whole.ReadToEnd(), expected, "the reader gives the text of the bytes");

        stream.Seek(0, soBeginning);
        TStreamReader byLine(stream, TEncoding::Utf8(), true, bufferSize);
        std::size_t count = 0;
        for (String line; byLine.ReadLine(line); ++count) {
            Require(count < expectedLines.size(), "no more lines than the text has");
            RequireSame(line, expectedLines[count], "the lines of the text");
        }
        Require(count == expectedLines.size() && byLine.GetEndOfStream(), "as many lines as the text has");
    }
}

}  // namespace

void RunInput(TInput input) {
    const std::string_view bytes(reinterpret_cast<const char*>(input.data()), input.size());
    const String text = TextOf(input);
    for (const auto& names : {std::span<const StringView>(kUnicode), std::span<const StringView>(kBytewise),
                              std::span<const StringView>(kOther)}) {
        for (const StringView name : names) RequirePiecesMatch(TEncoding::ForName(name), bytes, text);
    }
    RequireRoundTrips(bytes, text);
    RequireReaderMatches(input, bytes);
}

}  // namespace Varnholt::Fuzz
