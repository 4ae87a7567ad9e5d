#include "Platform/Runtime/Encoding.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <list>
#include <mutex>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Immortal.h"

namespace Varnholt {
namespace {

constexpr std::ptrdiff_t kPiece = 1 << 20;    // ICU counts in 32 bits, so long texts are converted in pieces
constexpr std::ptrdiff_t kSlack = 32;         // room for what the converter keeps of the last piece
constexpr std::size_t kMaxInvalidBytes = 64;  // more than a character of any encoding takes
constexpr std::size_t kMaxNameLength = 50;    // ICU takes names of up to 60 characters

struct TConverterCloser {
    void operator()(UConverter* converter) const noexcept { ucnv_close(converter); }
};
using TConverter = std::unique_ptr<UConverter, TConverterCloser>;

// ICU's own callback drops invisible characters such as U+200B, so that a missing one would not be seen.
void ReplaceCharacter(const void*, UConverterFromUnicodeArgs* args, const UChar*, std::int32_t, UChar32,
                      UConverterCallbackReason reason, UErrorCode* status) {
    if (reason > UCNV_IRREGULAR) return;
    *status = U_ZERO_ERROR;
    ucnv_cbFromUWriteSub(args, 0, status);
}

// ICU's own callback gives U+001A for a single bad byte in some of the East Asian encodings.
void ReplaceBytes(const void*, UConverterToUnicodeArgs* args, const char*, std::int32_t,
                  UConverterCallbackReason reason, UErrorCode* status) {
    if (reason > UCNV_IRREGULAR) return;
    constexpr UChar kReplacement = 0xFFFD;
    *status = U_ZERO_ERROR;
    ucnv_cbToUWriteUChars(args, &kReplacement, 1, 0, status);
}

bool IsUnicode(const UConverter* converter) {
    switch (ucnv_getType(converter)) {
        case UCNV_SBCS:
        case UCNV_DBCS:
        case UCNV_MBCS:
        case UCNV_LATIN_1:
        case UCNV_US_ASCII:
        case UCNV_EBCDIC_STATEFUL:
            return false;
        default:
            return true;
    }
}

void Check(UErrorCode status) {
    if (U_SUCCESS(status)) return;
    throw EEncodingError(Format(u"Text conversion failed: %s", {FromUtf8(u_errorName(status))}));
}

// The errors of a converter whose callback stops.
bool IsInvalidText(UErrorCode status) {
    return status == U_INVALID_CHAR_FOUND || status == U_TRUNCATED_CHAR_FOUND ||
           status == U_ILLEGAL_CHAR_FOUND || status == U_ILLEGAL_ESCAPE_SEQUENCE ||
           status == U_UNSUPPORTED_ESCAPE_SEQUENCE;
}

TConverter OpenConverter(const char* name) {
    UErrorCode status = U_ZERO_ERROR;
    TConverter converter(ucnv_open(name, &status));
    Check(status);
    // An encoding of two bytes a character has no "?" and keeps its own substitute.
    UErrorCode ignored = U_ZERO_ERROR;
    if (!IsUnicode(converter.get())) ucnv_setSubstString(converter.get(), u"?", 1, &ignored);
    ucnv_setFromUCallBack(converter.get(), ReplaceCharacter, nullptr, nullptr, nullptr, &status);
    ucnv_setToUCallBack(converter.get(), ReplaceBytes, nullptr, nullptr, nullptr, &status);
    Check(status);
    return converter;
}

bool IsNameCharacter(Char c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') ||
           StringView(u"-_.:+(),=").find(c) != StringView::npos;
}

// ICU's own name of the encoding, empty where it knows none. ICU itself would take a path, and would take an
// empty name for the system's encoding. Some names of ICU contain options after a comma, as
// "ISO_2022,locale=ja,version=0"; other combinations of name and option are refused.
std::string CanonicalName(StringView name) {
    if (name.empty() || name.size() > kMaxNameLength || !std::ranges::all_of(name, IsNameCharacter))
        return {};
    const std::string given = ToUtf8(name);
    UErrorCode status = U_ZERO_ERROR;
    const TConverter converter(ucnv_open(given.c_str(), &status));
    if (U_FAILURE(status)) return {};
    const char* canonical = ucnv_getName(converter.get(), &status);
    if (U_FAILURE(status)) return {};
    std::string result(canonical);
    if (given.find(',') != std::string::npos && given != result) return {};
    // These would write a preamble before every text.
    if (result.starts_with("UTF-16")) result = result.substr(0, result.find(','));
    if (result == "UTF-16" || result == "UTF-32") result += "LE";
    return result;
}

std::atomic<const TEncoding*> chosenDefault = nullptr;

}  // namespace

/// An encoding that was requested by name, with the storage of the name.
struct TEncoding::TNamed {
    explicit TNamed(std::string canonicalName)
        : Name(std::move(canonicalName)), Encoding(Name.c_str(), std::string_view()) {}

    const std::string Name;
    const TEncoding Encoding;
};

const TEncoding& TEncoding::Utf8() noexcept {
    static constexpr TEncoding kEncoding("UTF-8", "\xEF\xBB\xBF");
    return kEncoding;
}

const TEncoding& TEncoding::Utf16LE() noexcept {
    static constexpr TEncoding kEncoding("UTF-16LE", "\xFF\xFE");
    return kEncoding;
}

const TEncoding& TEncoding::Utf16BE() noexcept {
    static constexpr TEncoding kEncoding("UTF-16BE", "\xFE\xFF");
    return kEncoding;
}

const TEncoding& TEncoding::Utf32LE() noexcept {
    static constexpr TEncoding kEncoding("UTF-32LE", std::string_view("\xFF\xFE\0\0", 4));
    return kEncoding;
}

const TEncoding& TEncoding::Utf32BE() noexcept {
    static constexpr TEncoding kEncoding("UTF-32BE", std::string_view("\0\0\xFE\xFF", 4));
    return kEncoding;
}

const TEncoding& TEncoding::Ascii() noexcept {
    static constexpr TEncoding kEncoding("US-ASCII", "");
    return kEncoding;
}

const TEncoding& TEncoding::Windows1252() noexcept {
    static constexpr TEncoding kEncoding("windows-1252", "");
    return kEncoding;
}

const TEncoding& TEncoding::Default() noexcept {
    const TEncoding* chosen = chosenDefault.load(std::memory_order_acquire);
    return chosen != nullptr ? *chosen : Windows1252();
}

void TEncoding::SetDefault(StringView name) {
    const TEncoding& wanted = ForName(name);
    const TEncoding* settled = nullptr;
    if (chosenDefault.compare_exchange_strong(settled, &wanted) || settled == &wanted) return;
    throw EInvalidOperation(Format(u"Default encoding is already set to %s", {settled->GetName()}));
}

const TEncoding& TEncoding::ForName(StringView name) {
    const std::string canonical = CanonicalName(name);
    if (canonical.empty()) throw EEncodingError(Format(u"No encoding is named \"%s\"", {name}));
    for (const TEncoding* known :
         {&Utf8(), &Utf16LE(), &Utf16BE(), &Utf32LE(), &Utf32BE(), &Ascii(), &Windows1252()})
        if (canonical == CanonicalName(FromUtf8(known->FName))) return *known;

    static TImmortal<std::mutex> lock;
    static TImmortal<std::list<TNamed>> table;  // a list keeps its entries in place
    const std::lock_guard guard(*lock);
    const auto found = std::ranges::find(*table, canonical, &TNamed::Name);
    return found != table->end() ? found->Encoding : table->emplace_back(canonical).Encoding;
}

const TEncoding* TEncoding::DetectByPreamble(std::string_view bytes) noexcept {
    // UTF-32 first, as its preamble begins with that of UTF-16.
    for (const TEncoding* candidate : {&Utf8(), &Utf32LE(), &Utf32BE(), &Utf16LE(), &Utf16BE()})
        if (bytes.starts_with(candidate->FPreamble)) return candidate;
    return nullptr;
}

String TEncoding::GetName() const {
    return FromUtf8(FName);
}

std::string TEncoding::GetBytes(StringView text) const {
    std::string bytes;
    TEncoder(*this).Encode(text, true, bytes);
    return bytes;
}

String TEncoding::GetString(std::string_view bytes) const {
    String text;
    TDecoder(*this).Decode(bytes, true, text);
    return text;
}

struct TDecoder::TState {
    TConverter Converter;
    const TEncoding& Encoding;
};

TDecoder::TDecoder(const TEncoding& encoding, TInvalidBytes invalid)
    : FState(std::make_unique<TState>(TState{OpenConverter(encoding.FName), encoding})) {
    if (invalid == ibReplace) return;
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setToUCallBack(FState->Converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    Check(status);
}

TDecoder::~TDecoder() = default;

void TDecoder::RaiseInvalidBytes() {
    std::array<char, kMaxInvalidBytes> bytes{};
    auto count = static_cast<std::int8_t>(bytes.size());
    UErrorCode status = U_ZERO_ERROR;
    ucnv_getInvalidChars(FState->Converter.get(), bytes.data(), &count, &status);
    ucnv_resetToUnicode(FState->Converter.get());
    Check(status);
    String digits;
    for (const char byte : std::string_view(bytes.data(), static_cast<std::size_t>(count)))
        digits += Format(u" %.2x", {static_cast<std::uint8_t>(byte)});
    throw EEncodingError(Format(count == 1 ? u"Byte%s is not valid in %s" : u"Bytes%s are not valid in %s",
                                {digits, FState->Encoding.GetName()}));
}

void TDecoder::Decode(std::string_view bytes, bool last, String& text) {
    const char* source = bytes.empty() ? "" : bytes.data();
    const char* const end = source + bytes.size();
    do {
        const char* const pieceEnd = source + std::min(end - source, kPiece);
        UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
        while (status == U_BUFFER_OVERFLOW_ERROR) {
            const std::size_t used = text.size();
            text.resize(used + static_cast<std::size_t>(pieceEnd - source + kSlack));
            Char* target = text.data() + used;
            status = U_ZERO_ERROR;
            ucnv_toUnicode(FState->Converter.get(), &target, text.data() + text.size(), &source, pieceEnd,
                           nullptr, last && pieceEnd == end, &status);
            text.resize(static_cast<std::size_t>(target - text.data()));
        }
        if (IsInvalidText(status)) RaiseInvalidBytes();
        Check(status);
    } while (source != end);
}

struct TEncoder::TState {
    TConverter Converter;
};

TEncoder::TEncoder(const TEncoding& encoding)
    : FState(std::make_unique<TState>(TState{OpenConverter(encoding.FName)})) {}

TEncoder::~TEncoder() = default;

void TEncoder::Encode(StringView text, bool last, std::string& bytes) {
    const Char* source = text.empty() ? u"" : text.data();
    const Char* const end = source + text.size();
    do {
        const Char* const pieceEnd = source + std::min(end - source, kPiece);
        UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
        while (status == U_BUFFER_OVERFLOW_ERROR) {
            const std::size_t used = bytes.size();
            bytes.resize(used + static_cast<std::size_t>((pieceEnd - source) * 2 + kSlack));
            char* target = bytes.data() + used;
            status = U_ZERO_ERROR;
            ucnv_fromUnicode(FState->Converter.get(), &target, bytes.data() + bytes.size(), &source, pieceEnd,
                             nullptr, last && pieceEnd == end, &status);
            bytes.resize(static_cast<std::size_t>(target - bytes.data()));
        }
        Check(status);
    } while (source != end);
}

}  // namespace Varnholt
