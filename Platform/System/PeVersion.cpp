#include "Platform/System/FileVersionPrivate.h"

namespace Varnholt {
namespace {

/// Where the directory of resources is.
struct TResources {
    std::uint64_t Sections = 0;  ///< offset of the table of sections
    std::uint64_t SectionCount = 0;
    std::uint64_t Address = 0;  ///< of the directory, once the file is loaded
};

std::optional<TResources> FindResources(TNumberReader& reader) {
    constexpr std::uint64_t kSignature = 0x00004550;  // "PE" and two zeros
    const std::uint64_t header = reader.Number(0x3C, 4);
    if (reader.Number(header, 4) != kSignature) return std::nullopt;
    const std::uint64_t optional = header + 24;
    const std::uint64_t magic = reader.Number(optional, 2);
    if (magic != 0x10B && magic != 0x20B) return std::nullopt;

    const std::uint64_t directories = magic == 0x10B ? 96 : 112;
    const std::uint64_t optionalSize = reader.Number(header + 20, 2);
    const bool hasResources =
        optionalSize >= directories + 24 && reader.Number(optional + directories - 4, 4) > 2;
    if (!hasResources) return std::nullopt;
    return TResources{optional + optionalSize, reader.Number(header + 6, 2),
                      reader.Number(optional + directories + 16, 4)};
}

/// The offset in the file of an address.
std::optional<std::uint64_t> OffsetOf(TNumberReader& reader, const TResources& resources,
                                      std::uint64_t address) {
    constexpr std::uint64_t kSectionSize = 40;
    for (std::uint64_t i = 0; i < resources.SectionCount && reader.IsGood(); ++i) {
        const std::uint64_t section = resources.Sections + i * kSectionSize;
        const std::uint64_t first = reader.Number(section + 12, 4);
        if (address < first || address - first >= reader.Number(section + 16, 4)) continue;
        return reader.Number(section + 20, 4) + (address - first);
    }
    return std::nullopt;
}

/// What the entry of a resource directory refers to: the entry with the number or, without one, the first.
std::optional<std::uint64_t> FindEntry(TNumberReader& reader, std::uint64_t directory,
                                       std::optional<std::uint64_t> id) {
    const std::uint64_t count = reader.Number(directory + 12, 2) + reader.Number(directory + 14, 2);
    for (std::uint64_t i = 0; i < count && reader.IsGood(); ++i) {
        const std::uint64_t entry = directory + 16 + i * 8;
        if (!id || reader.Number(entry, 4) == *id) return reader.Number(entry + 4, 4);
    }
    return std::nullopt;
}

/// The offset of the data entry of the version: type 16, first name, first language.
std::optional<std::uint64_t> FindVersionEntry(TNumberReader& reader, std::uint64_t root) {
    constexpr std::uint64_t kVersionType = 16;
    constexpr std::uint64_t kIsDirectory = 0x80000000;
    const auto type = FindEntry(reader, root, kVersionType);
    if (!type || (*type & kIsDirectory) == 0) return std::nullopt;
    const auto name = FindEntry(reader, root + (*type ^ kIsDirectory), std::nullopt);
    if (!name || (*name & kIsDirectory) == 0) return std::nullopt;
    const auto language = FindEntry(reader, root + (*name ^ kIsDirectory), std::nullopt);
    if (!language || (*language & kIsDirectory) != 0) return std::nullopt;
    return root + *language;
}

}  // namespace

std::optional<TVersionWords> ReadPeVersion(TNumberReader& reader) {
    constexpr std::uint64_t kFixedInfoOffset = 40;  // after three words and "VS_VERSION_INFO"
    constexpr std::uint64_t kFixedInfoSize = 52;
    constexpr std::uint64_t kFixedInfoSignature = 0xFEEF04BD;
    const auto resources = FindResources(reader);
    if (!resources) return std::nullopt;
    const auto root = OffsetOf(reader, *resources, resources->Address);
    if (!root) return std::nullopt;
    const auto entry = FindVersionEntry(reader, *root);
    if (!entry) return std::nullopt;
    if (reader.Number(*entry + 4, 4) < kFixedInfoOffset + kFixedInfoSize) return std::nullopt;
    const auto block = OffsetOf(reader, *resources, reader.Number(*entry, 4));
    if (!block || reader.Number(*block + 2, 2) < kFixedInfoSize) return std::nullopt;

    const std::uint64_t info = *block + kFixedInfoOffset;
    if (reader.Number(info, 4) != kFixedInfoSignature) return std::nullopt;
    const auto word = [&](std::uint64_t at) {
        return static_cast<std::uint16_t>(reader.Number(info + at, 2));
    };
    static_cast<void>(reader.Number(info + kFixedInfoSize - 1, 1));  // the last byte must be in the file
    return TVersionWords{word(10), word(8), word(14), word(12)};
}

}  // namespace Varnholt
