#include <algorithm>
#include <numeric>
#include <type_traits>

#include "Platform/Runtime/Encoding.h"
#include "Platform/Runtime/Format.h"
#include "VarnholtLib/Files/ArchiveFormatPrivate.h"

namespace Varnholt {
namespace {

constexpr std::int32_t kHeaderStart = 2835;
constexpr std::int32_t kHeaderEnd = 122;
constexpr std::int32_t kEntryStart = 2725;
constexpr std::int32_t kEntryEnd = 2801;
constexpr std::size_t kNameAt = 4;  // a byte of length before the characters

/// Writes numbers at offsets, the lowest byte first.
template <typename T>
void Put(std::span<std::byte> bytes, std::size_t at, T number) {
    auto rest = static_cast<std::make_unsigned_t<T>>(number);
    for (std::size_t i = 0; i < sizeof(T); ++i) {
        bytes[at + i] = static_cast<std::byte>(rest & 0xFF);
        rest = static_cast<std::make_unsigned_t<T>>(rest >> 8);
    }
}

template <typename T>
T Take(std::span<const std::byte> bytes, std::size_t at) {
    std::uint64_t number = 0;
    for (std::size_t i = sizeof(T); i-- > 0;)
        number = number << 8 | std::to_integer<std::uint64_t>(bytes[at + i]);
    return static_cast<T>(number);
}

std::string EncodedName(const String& name) {
    const TEncoding& page = TEncoding::Default();
    std::string bytes = page.GetBytes(name);
    if (page.GetString(bytes) != name)
        throw Exception(
            Format(u"The name \"%s\" cannot be stored in the code page %s", {name, page.GetName()}));
    bytes.resize(std::min(bytes.size(), kArchiveNameSize));
    return bytes;
}

}  // namespace

std::array<std::byte, kArchiveHeaderSize> EncodeHeader(const TArchiveHeader& header) {
    std::array<std::byte, kArchiveHeaderSize> bytes{};
    Put(bytes, 0, kHeaderStart);
    Put(bytes, 4, header.NumFiles);
    Put(bytes, 8, static_cast<std::uint8_t>(header.HasSubfolders ? 1 : 0));
    Put(bytes, 9, header.CompressionLevel);
    Put(bytes, 13, kHeaderEnd);
    return bytes;
}

std::optional<TArchiveHeader> DecodeHeader(std::span<const std::byte, kArchiveHeaderSize> bytes) {
    if (Take<std::int32_t>(bytes, 0) != kHeaderStart || Take<std::int32_t>(bytes, 13) != kHeaderEnd)
        return std::nullopt;
    return TArchiveHeader{Take<std::int32_t>(bytes, 4), bytes[8] != std::byte{0},
                          Take<std::int32_t>(bytes, 9)};
}

std::array<std::byte, kArchiveEntrySize> EncodeEntry(const TFileEntry& entry) {
    std::array<std::byte, kArchiveEntrySize> bytes{};
    const std::string name = EncodedName(entry.FileName);
    Put(bytes, 0, kEntryStart);
    Put(bytes, kNameAt, static_cast<std::uint8_t>(name.size()));
    std::ranges::copy(BytesOf(name), bytes.begin() + kNameAt + 1);
    Put(bytes, 205, entry.CompressedSize);
    Put(bytes, 209, entry.OriginalSize);
    Put(bytes, 213, entry.Position);
    Put(bytes, 221, kEntryEnd);
    return bytes;
}

TNameDecoder::TNameDecoder() {
    std::string ascii(0x80, '\0');
    std::iota(ascii.begin(), ascii.end(), '\0');
    FExtendsAscii = TEncoding::Default().GetString(ascii) == String(ascii.begin(), ascii.end());
}

String TNameDecoder::operator()(std::string_view name) const {
    const bool isAscii = FExtendsAscii && std::ranges::all_of(name, [](unsigned char c) { return c < 0x80; });
    return isAscii ? String(name.begin(), name.end()) : TEncoding::Default().GetString(name);
}

std::optional<TFileEntry> DecodeEntry(std::span<const std::byte, kArchiveEntrySize> bytes,
                                      const TNameDecoder& decodeName) {
    const std::size_t length = std::to_integer<std::size_t>(bytes[kNameAt]);
    TFileEntry entry;
    entry.CompressedSize = Take<std::int32_t>(bytes, 205);
    entry.OriginalSize = Take<std::int32_t>(bytes, 209);
    entry.Position = Take<std::int64_t>(bytes, 213);
    const bool hasMarkers =
        Take<std::int32_t>(bytes, 0) == kEntryStart && Take<std::int32_t>(bytes, 221) == kEntryEnd;
    if (!hasMarkers || length > kArchiveNameSize || entry.CompressedSize < 0 || entry.OriginalSize < 0)
        return std::nullopt;
    const auto* const name = reinterpret_cast<const char*>(bytes.data() + kNameAt + 1);
    entry.FileName = decodeName({name, length});
    return entry;
}

}  // namespace Varnholt
