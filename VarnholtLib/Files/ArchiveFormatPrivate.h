#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>

#include "VarnholtLib/Files/vrnCompress.h"

/// The header and the entries of an archive as bytes (Docs/archive-format.md), and its compressed data.
namespace Varnholt {

inline constexpr std::size_t kArchiveHeaderSize = 17;
inline constexpr std::size_t kArchiveEntrySize = 225;
inline constexpr std::size_t kArchiveNameSize = 200;  // 8-bit characters

struct TArchiveHeader {
    std::int32_t NumFiles = 0;
    bool HasSubfolders = false;
    std::int32_t CompressionLevel = 0;
};

[[nodiscard]] std::array<std::byte, kArchiveHeaderSize> EncodeHeader(const TArchiveHeader& header);
/// Nothing if the markers are not those of an archive.
[[nodiscard]] std::optional<TArchiveHeader> DecodeHeader(
    std::span<const std::byte, kArchiveHeaderSize> bytes);

/// Cuts the name to kArchiveNameSize characters. Raises Exception if the code page cannot hold it.
[[nodiscard]] std::array<std::byte, kArchiveEntrySize> EncodeEntry(const TFileEntry& entry);
/// The text of a stored name. ASCII names are read directly if the code page extends ASCII.
class TNameDecoder {
public:
    TNameDecoder();
    [[nodiscard]] String operator()(std::string_view name) const;

private:
    bool FExtendsAscii;
};

/// Nothing if the markers or sizes are not those of an entry.
[[nodiscard]] std::optional<TFileEntry> DecodeEntry(std::span<const std::byte, kArchiveEntrySize> bytes,
                                                    const TNameDecoder& decodeName);

/// The zlib stream of all that is left in the source, and how many bytes that was. Raises Exception with the file's
/// name if either has more than 2,147,483,647 bytes.
struct TCompressed {
    std::vector<std::byte> Bytes;
    std::int32_t OriginalSize = 0;
};
[[nodiscard]] TCompressed Compress(TFileStream& source, std::uint8_t level);
/// Raises EArgumentException for a level above 3.
void CheckCompressionLevel(std::uint8_t level);

/// Writes what the zlib stream contains. Raises EZDecompressionError, at the latest once there are more than
/// maxSize bytes.
void Decompress(std::span<const std::byte> compressed, TStream& dest, std::int64_t maxSize);

}  // namespace Varnholt
