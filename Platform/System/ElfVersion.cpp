#include "Platform/System/FileVersionPrivate.h"

namespace Varnholt {
namespace {

/// A table of the file's headers, and where a header of it has the fields that matter here.
struct TTable {
    std::uint64_t Offset = 0;
    std::uint64_t EntrySize = 0;
    std::uint64_t Count = 0;
    std::uint64_t NoteType = 0;  ///< the type of an entry that refers to notes
    std::uint64_t TypeAt = 0;
    std::uint64_t OffsetAt = 0;
    std::uint64_t SizeAt = 0;
    std::uint64_t AlignmentAt = 0;
};

std::uint64_t RoundUp(std::uint64_t value, std::uint64_t alignment) {
    return (value + alignment - 1) / alignment * alignment;
}

bool IsVersionNote(TNumberReader& reader, std::uint64_t note) {
    constexpr std::string_view kOwner("Varnholt\0", 9);
    if (reader.Number(note, 4) != kOwner.size() || reader.Number(note + 4, 4) != 8) return false;
    if (reader.Number(note + 8, 4) != kVersionNoteType) return false;
    for (std::size_t i = 0; i < kOwner.size(); ++i) {
        if (reader.Number(note + 12 + i, 1) != static_cast<unsigned char>(kOwner[i])) return false;
    }
    return true;
}

/// The version in one of the notes of so many bytes.
std::optional<TVersionWords> FindInNotes(TNumberReader& reader, std::uint64_t offset, std::uint64_t size,
                                         std::uint64_t alignment) {
    constexpr std::uint64_t kHeaderSize = 12;
    std::uint64_t at = 0;
    while (at < size && size - at >= kHeaderSize && reader.IsGood()) {
        const std::uint64_t note = offset + at;
        const std::uint64_t content = RoundUp(kHeaderSize + reader.Number(note, 4), alignment);
        const std::uint64_t contentSize = reader.Number(note + 4, 4);
        if (content + contentSize <= size - at && IsVersionNote(reader, note)) {
            TVersionWords words = {};
            for (std::size_t i = 0; i < words.size(); ++i) {
                words[i] = static_cast<std::uint16_t>(reader.Number(note + content + 2 * i, 2));
            }
            return words;
        }
        at += content + RoundUp(contentSize, alignment);
    }
    return std::nullopt;
}

std::optional<TVersionWords> FindInTable(TNumberReader& reader, const TTable& table, std::size_t width) {
    for (std::uint64_t i = 0; i < table.Count && reader.IsGood(); ++i) {
        const std::uint64_t entry = table.Offset + i * table.EntrySize;
        if (reader.Number(entry + table.TypeAt, 4) != table.NoteType) continue;
        const std::uint64_t alignment = reader.Number(entry + table.AlignmentAt, width) == 8 ? 8 : 4;
        const auto words = FindInNotes(reader, reader.Number(entry + table.OffsetAt, width),
                                       reader.Number(entry + table.SizeAt, width), alignment);
        if (words) return words;
    }
    return std::nullopt;
}

}  // namespace

std::optional<TVersionWords> ReadElfVersion(TNumberReader& reader) {
    const std::uint64_t fileClass = reader.Number(4, 1);
    const std::uint64_t byteOrder = reader.Number(5, 1);
    const bool known = (fileClass == 1 || fileClass == 2) && (byteOrder == 1 || byteOrder == 2);
    if (!known) return std::nullopt;
    reader.SetBigEndian(byteOrder == 2);

    const bool wide = fileClass == 2;
    const std::size_t width = wide ? 8 : 4;
    const std::uint64_t sizes = wide ? 54 : 42;  // where the sizes and counts of the tables begin
    const TTable segments = {reader.Number(wide ? 32 : 28, width),
                             reader.Number(sizes, 2),
                             reader.Number(sizes + 2, 2),
                             4,
                             0,
                             wide ? 8U : 4U,
                             wide ? 32U : 16U,
                             wide ? 48U : 28U};
    if (const auto words = FindInTable(reader, segments, width)) return words;
    const TTable sections = {reader.Number(wide ? 40 : 32, width),
                             reader.Number(sizes + 4, 2),
                             reader.Number(sizes + 6, 2),
                             7,
                             4,
                             wide ? 24U : 16U,
                             wide ? 32U : 20U,
                             wide ? 48U : 32U};
    return FindInTable(reader, sections, width);
}

}  // namespace Varnholt
