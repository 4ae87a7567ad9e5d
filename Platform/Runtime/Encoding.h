#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Types.h"

/// Text encodings: how a text becomes the bytes of a file, and back.
///
///     const std::string bytes = TEncoding::Default().GetBytes(u"Zürich");
///     const String text = TEncoding::ForName(u"iso-8859-2").GetString(bytes);
///
/// Conversion accepts any input. Bytes that are not valid in the encoding become U+FFFD. A character that
/// the encoding does not have becomes one "?"; in the UTF encodings only an unpaired surrogate cannot be
/// encoded, and it becomes U+FFFD. TDecoder and TEncoder convert text that arrives in pieces. A decoder can
/// also refuse invalid bytes (ibRefuse).
///
/// Uses ICU's converters. Threads: a TEncoding may be used by any number of threads at once, a TDecoder or
/// TEncoder by one thread at a time.
namespace Varnholt {

/// An encoding. There is one object for each; it exists as long as the process, is passed by reference, and
/// is compared by address.
class VARNHOLT_EXPORT TEncoding {
public:
    TEncoding(const TEncoding&) = delete;
    TEncoding& operator=(const TEncoding&) = delete;

    /// UTF-8, with the preamble EF BB BF.
    [[nodiscard]] static const TEncoding& Utf8() noexcept;
    /// UTF-16 with the low byte first, with the preamble FF FE.
    [[nodiscard]] static const TEncoding& Utf16LE() noexcept;
    /// UTF-16 with the high byte first, with the preamble FE FF.
    [[nodiscard]] static const TEncoding& Utf16BE() noexcept;
    /// UTF-32 with the low byte first, with the preamble FF FE 00 00.
    [[nodiscard]] static const TEncoding& Utf32LE() noexcept;
    /// UTF-32 with the high byte first, with the preamble 00 00 FE FF.
    [[nodiscard]] static const TEncoding& Utf32BE() noexcept;
    /// 7-bit ASCII. A byte above 127 is not valid.
    [[nodiscard]] static const TEncoding& Ascii() noexcept;

    /// The platform's 8-bit encoding: windows-1252 until SetDefault names another. In windows-1252 the five
    /// bytes without a character (81, 8D, 8F, 90, 9D) are the control codes of the same number.
    [[nodiscard]] static const TEncoding& Default() noexcept;

    /// Sets what Default returns, once for the process: call it before anything is read or written. Naming
    /// the same encoding again does nothing; another one raises EInvalidOperation
    /// ("Default encoding is already set to %s"). An unknown name raises as in ForName.
    static void SetDefault(StringView name);

    /// The encoding of a name or alias that ICU knows ("utf-8", "windows-1250", "latin1"), without regard to
    /// case. "utf-16" and "utf-32" are the forms with the low byte first. An unknown name raises
    /// EEncodingError (`No encoding is named "%s"`).
    [[nodiscard]] static const TEncoding& ForName(StringView name);

    /// The encoding of the preamble that the bytes begin with, or a null pointer. FF FE 00 00 is UTF-32 and
    /// never UTF-16 text that begins with a zero character.
    [[nodiscard]] static const TEncoding* DetectByPreamble(std::string_view bytes) noexcept;

    /// A name of the encoding, which ForName accepts.
    [[nodiscard]] String GetName() const;
    /// The bytes at the start of a file that mark it as written in this encoding; empty if there are none.
    [[nodiscard]] std::string_view GetPreamble() const noexcept { return FPreamble; }

    /// The text in this encoding, without a preamble.
    [[nodiscard]] std::string GetBytes(StringView text) const;
    /// The text of the bytes. A preamble is not removed: it becomes U+FEFF.
    [[nodiscard]] String GetString(std::string_view bytes) const;

private:
    friend class TDecoder;
    friend class TEncoder;
    struct TNamed;

    constexpr TEncoding(const char* name, std::string_view preamble) noexcept
        : FName(name), FPreamble(preamble) {}
    static const TEncoding& Windows1252() noexcept;

    const char* FName;
    std::string_view FPreamble;
};

/// What a decoder does with bytes that are not valid in the encoding.
enum TInvalidBytes : std::uint8_t {
    ibReplace,  ///< they become U+FFFD
    ibRefuse,   ///< raises EEncodingError
};

/// Decodes bytes that arrive in pieces; a piece may end within a character.
///
///     TDecoder decoder(TEncoding::Utf8());
///     decoder.Decode("Z\xC3", false, text);
///     decoder.Decode("\xBCrich", true, text);
class VARNHOLT_EXPORT TDecoder {
public:
    explicit TDecoder(const TEncoding& encoding, TInvalidBytes invalid = ibReplace);
    ~TDecoder();
    TDecoder(const TDecoder&) = delete;
    TDecoder& operator=(const TDecoder&) = delete;

    /// Appends the text of the bytes. With `last`, a character that is still incomplete becomes U+FFFD, and
    /// the decoder is ready for a new text.
    ///
    /// With ibRefuse, invalid bytes and an incomplete last character raise EEncodingError, such as "Byte FF
    /// is not valid in UTF-8" or "Bytes E2 82 are not valid in UTF-8". The text of the valid bytes before
    /// them has then been appended, the bytes after them are ignored, and the decoder is ready for a new
    /// text.
    void Decode(std::string_view bytes, bool last, String& text);

private:
    [[noreturn]] void RaiseInvalidBytes();

    struct TState;
    std::unique_ptr<TState> FState;
};

/// Encodes text that arrives in pieces; a piece may end within a surrogate pair.
class VARNHOLT_EXPORT TEncoder {
public:
    explicit TEncoder(const TEncoding& encoding);
    ~TEncoder();
    TEncoder(const TEncoder&) = delete;
    TEncoder& operator=(const TEncoder&) = delete;

    /// Appends the bytes of the text. With `last`, an unpaired high surrogate at the end is replaced, and the
    /// encoder is ready for a new text.
    void Encode(StringView text, bool last, std::string& bytes);

private:
    struct TState;
    std::unique_ptr<TState> FState;
};

}  // namespace Varnholt
