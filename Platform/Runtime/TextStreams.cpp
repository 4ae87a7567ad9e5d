#include "Platform/Runtime/TextStreams.h"

#include <algorithm>

#include "Platform/Runtime/Text.h"

namespace Varnholt {
namespace {

constexpr std::size_t kPreambleLength = 4;  // of the longest
constexpr std::size_t kEncodePiece = 1 << 16;

}  // namespace

TStreamReader::TStreamReader(std::unique_ptr<TStream> owned, TStream* stream, const TEncoding& encoding,
                             bool detectPreamble, std::size_t bufferSize, TInvalidBytes invalid)
    : FOwned(std::move(owned)),
      FStream(stream != nullptr ? stream : FOwned.get()),
      FEncoding(&encoding),
      FDetectPreamble(detectPreamble),
      FInvalid(invalid),
      FBytes(bufferSize, '\0') {
    if (bufferSize == 0) throw EArgumentException(u"A text reader needs a buffer");
}

TStreamReader::TStreamReader(StringView path, const TEncoding& encoding, bool detectPreamble,
                             std::size_t bufferSize, TInvalidBytes invalid)
    : TStreamReader(std::make_unique<TFileStream>(path, fmOpenRead), nullptr, encoding, detectPreamble,
                    bufferSize, invalid) {}

TStreamReader::TStreamReader(TStream& stream, const TEncoding& encoding, bool detectPreamble,
                             std::size_t bufferSize, TInvalidBytes invalid)
    : TStreamReader(nullptr, &stream, encoding, detectPreamble, bufferSize, invalid) {}

TStreamReader::~TStreamReader() = default;

/// Reads the first bytes, decides the encoding, and decodes what follows the preamble.
void TStreamReader::Start() {
    std::string head(std::max(FBytes.size(), kPreambleLength), '\0');
    std::size_t used = 0;
    while (used < kPreambleLength) {
        const std::size_t wanted = std::min(FBytes.size(), head.size() - used);
        const std::size_t count = FStream->Read(WritableBytesOf(head).subspan(used, wanted));
        if (count == 0) break;
        used += count;
    }
    head.resize(used);
    const TEncoding* detected = FDetectPreamble ? TEncoding::DetectByPreamble(head) : nullptr;
    if (detected != nullptr) FEncoding = detected;
    const std::string_view preamble = FEncoding->GetPreamble();
    FHasPreamble = !preamble.empty() && head.starts_with(preamble);
    const std::size_t skipped = FHasPreamble ? preamble.size() : 0;
    FDecoder = std::make_unique<TDecoder>(*FEncoding, FInvalid);
    Decode(std::string_view(head).substr(skipped), false);
}

void TStreamReader::Decode(std::string_view bytes, bool last) {
    try {
        FDecoder->Decode(bytes, last, FText);
    } catch (const EEncodingError& failure) {
        FFailure = failure;
        FFinished = true;
    }
}

/// Decodes further bytes, once all decoded text has been returned. False at the end of the text and before
/// invalid bytes.
bool TStreamReader::TryFill() {
    FText.clear();
    FPosition = 0;
    if (!FDecoder) Start();
    while (FText.empty() && !FFinished) {
        const std::size_t count = FStream->Read(WritableBytesOf(FBytes));
        FFinished = count == 0;
        Decode(std::string_view(FBytes).substr(0, count), FFinished);
    }
    return !FText.empty();
}

/// The same, but raises for invalid bytes.
bool TStreamReader::Fill() {
    if (TryFill()) return true;
    if (FFailure) throw EEncodingError(*FFailure);
    return false;
}

bool TStreamReader::ReadLine(String& line) {
    line.clear();
    while (FPosition < FText.size() || Fill()) {
        const auto rest = StringView(FText).substr(FPosition);
        const auto end = std::ranges::find_if(rest, IsLineEnd);
        const std::size_t length = static_cast<std::size_t>(end - rest.begin());
        line.append(rest.substr(0, length));
        FPosition += length;
        if (length == rest.size()) continue;
        ++FPosition;
        const bool isPair =
            *end == u'\r' && (FPosition < FText.size() || TryFill()) && FText[FPosition] == u'\n';
        if (isPair) ++FPosition;
        return true;
    }
    return !line.empty();
}

String TStreamReader::ReadLine() {
    String line;
    ReadLine(line);
    return line;
}

String TStreamReader::ReadToEnd() {
    String text;
    while (FPosition < FText.size() || Fill()) {
        text.append(FText, FPosition);
        FPosition = FText.size();
    }
    return text;
}

std::size_t TStreamReader::Read(std::span<Char> chunk) {
    std::size_t used = 0;
    while (used < chunk.size() && (FPosition < FText.size() || TryFill())) {
        const std::size_t count = FText.copy(chunk.data() + used, chunk.size() - used, FPosition);
        used += count;
        FPosition += count;
    }
    if (used == 0 && !chunk.empty() && FFailure) throw EEncodingError(*FFailure);
    return used;
}

std::optional<Char> TStreamReader::Peek() {
    if (FPosition == FText.size() && !Fill()) return std::nullopt;
    return FText[FPosition];
}

const TEncoding& TStreamReader::GetEncoding() {
    if (!FDecoder) Start();
    return *FEncoding;
}

bool TStreamReader::GetHasPreamble() {
    if (!FDecoder) Start();
    return FHasPreamble;
}

TStreamWriter::TStreamWriter(StringView path, const TEncoding& encoding, std::size_t bufferSize, bool append)
    : FOwned(std::make_unique<TFileStream>(path, append ? fmAppend : fmRewrite)),
      FStream(FOwned.get()),
      FEncoding(&encoding),
      FEncoder(encoding),
      FBufferSize(bufferSize) {}

TStreamWriter::TStreamWriter(TStream& stream, const TEncoding& encoding, std::size_t bufferSize)
    : FStream(&stream), FEncoding(&encoding), FEncoder(encoding), FBufferSize(bufferSize) {}

TStreamWriter::~TStreamWriter() {
    try {
        Close();
    } catch (...) {  // a destructor must not raise; Close reports failures
    }
}

void TStreamWriter::CheckOpen() const {
    if (FClosed) throw EInvalidOperation(u"Text writer is closed");
}

/// Writes the buffer to the stream. It is empty afterwards, also on failure: a part of it may have been
/// written, and must not be written twice.
void TStreamWriter::Empty() {
    std::string bytes;
    bytes.swap(FBytes);
    FStream->WriteBuffer(BytesOf(bytes));
    bytes.clear();
    FBytes.swap(bytes);  // keeps the memory
}

void TStreamWriter::Write(StringView text) {
    CheckOpen();
    while (!text.empty()) {
        const StringView piece = text.substr(0, kEncodePiece);
        FEncoder.Encode(piece, false, FBytes);
        if (FBytes.size() >= FBufferSize) Empty();
        text.remove_prefix(piece.size());
    }
}

void TStreamWriter::WriteLine(StringView text) {
    Write(text);
    Write(FNewLine);
}

void TStreamWriter::WritePreamble() {
    CheckOpen();
    FBytes += FEncoding->GetPreamble();
}

void TStreamWriter::Flush() {
    CheckOpen();
    Empty();
}

// After another failure, which is the one to report.
void TStreamWriter::CloseQuietly() noexcept {
    try {
        if (FOwned) FOwned->Close();
    } catch (const Exception&) {
    }
}

void TStreamWriter::Close() {
    if (FClosed) return;
    FClosed = true;
    try {
        FEncoder.Encode({}, true, FBytes);
        Empty();
    } catch (...) {
        CloseQuietly();
        throw;
    }
    if (FOwned) FOwned->Close();
}

}  // namespace Varnholt
