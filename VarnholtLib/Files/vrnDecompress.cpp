#include <algorithm>
#include <array>
#include <filesystem>

#include "Platform/Runtime/Characters.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/Runtime/Text.h"
#include "Platform/System/Platform.h"
#include "VarnholtLib/Files/ArchiveFormatPrivate.h"
#include "VarnholtLib/Foundation/vrnPathText.h"

namespace Varnholt {
namespace {

namespace fs = std::filesystem;

bool IsSeparator(Char c) {
    return c == u'\\' || c == u'/';
}

/// The steps of a stored name. A slash separates, too: it would in the path of the file.
std::vector<StringView> StepsOf(StringView name) {
    std::vector<StringView> steps;
    for (std::size_t start = 0;;) {
        std::size_t end = start;
        while (end < name.size() && !IsSeparator(name[end])) ++end;
        steps.push_back(name.substr(start, end - start));
        if (end == name.size()) return steps;
        start = end + 1;
    }
}

/// The names of devices on systems to which an archive may be carried, with any extension.
bool IsDeviceName(StringView step) {
    static constexpr StringView kNames[] = {u"CON", u"PRN", u"AUX", u"NUL"};
    StringView name = step.substr(0, step.find(u'.'));
    while (name.ends_with(u' ')) name.remove_suffix(1);
    if (std::ranges::any_of(kNames, [&](StringView device) { return SameText(name, device); })) return true;
    const bool isNumbered = name.size() == 4 && name[3] >= u'1' && name[3] <= u'9';
    return isNumbered && (SameText(name.substr(0, 3), u"COM") || SameText(name.substr(0, 3), u"LPT"));
}

bool IsSafeStep(StringView step) {
    const bool isForbidden =
        std::ranges::any_of(step, [](Char c) { return c < u' ' || c == u':' || c == 0x7F; });
    return !step.empty() && step != u"." && step != u".." && !isForbidden && !IsDeviceName(step);
}

/// Why a name is not extracted below a folder; empty if it may be.
StringView RefusalOf(StringView directory, StringView name) {
    if (!IsExtractableName(name)) return u"The stored name is not one of a file below the folder";
    fs::path path = ToNativePath(directory);
    for (const StringView step : StepsOf(name)) {
        path /= ToUtf8(step);
        std::error_code ignored;
        if (fs::is_symlink(fs::symlink_status(path, ignored)))
            return u"The stored name passes through a symbolic link";
    }
    return {};
}

/// What follows the last backslash of a name.
String LastPart(const String& name) {
    return name.substr(name.rfind(u'\\') + 1);
}

[[noreturn]] void RaiseEndsEarly(const TFileStream& file) {
    throw EReadError(Format(u"Cannot read file \"%s\": Unexpected end of file", {file.GetFileName()}));
}

/// Reads the heads of entries, those of small files several at a time.
class THeads {
public:
    explicit THeads(TFileStream& file) : FFile(file) {}

    [[nodiscard]] std::span<const std::byte, kArchiveEntrySize> Read(std::int64_t position) {
        const std::int64_t end = FStart + static_cast<std::int64_t>(FCount);
        if (position < FStart || position + static_cast<std::int64_t>(kArchiveEntrySize) > end) {
            FFile.SetPosition(position);
            FStart = position;
            FCount = 0;
            while (FCount < kArchiveEntrySize) {
                const std::size_t count = FFile.Read(FBytes.subspan(FCount));
                if (count == 0) RaiseEndsEarly(FFile);
                FCount += count;
            }
        }
        return FBytes.subspan(static_cast<std::size_t>(position - FStart)).first<kArchiveEntrySize>();
    }

private:
    TFileStream& FFile;
    std::array<std::byte, 4096> FBuffer{};
    const std::span<std::byte> FBytes = FBuffer;
    std::int64_t FStart = 0;
    std::size_t FCount = 0;
};

}  // namespace

bool IsExtractableName(StringView storedName) {
    return std::ranges::all_of(StepsOf(storedName), IsSafeStep);
}

// --- Opening ---

TVarnDecompressor::TVarnDecompressor(StringView fileName)
    : FFileIn(CreateFileStream(fileName, fmOpenRead, ceCannotOpenArchive)) {
    std::array<std::byte, kArchiveHeaderSize> bytes{};
    if (FFileIn->GetSize() < std::ssize(bytes)) DoError(ceInvalidArchive, true);
    FFileIn->ReadBuffer(bytes);
    const auto header = DecodeHeader(bytes);
    if (!header) DoError(ceInvalidArchive, true);
    FKeeySubdirs = header->HasSubfolders;
    SetCompressionLevel(static_cast<std::uint8_t>(header->CompressionLevel & 0xFF));
    GatherInfo(header->NumFiles);
}

void TVarnDecompressor::GatherInfo(std::int32_t count) {
    constexpr auto kEntry = static_cast<std::int64_t>(kArchiveEntrySize);
    const std::int64_t size = FFileIn->GetSize();
    std::int64_t at = kArchiveHeaderSize;
    if (count < 0 || count > (size - at) / kEntry) DoError(ceInvalidArchive, true);
    FFileEntries.reserve(static_cast<std::size_t>(count));
    FFileEntryIndex.reserve(static_cast<std::size_t>(count));
    THeads heads(*FFileIn);
    const TNameDecoder decodeName;
    for (std::int32_t i = 0; i < count; ++i) {
        if (size - at < kEntry) DoError(ceInvalidArchive, true);
        auto entry = DecodeEntry(heads.Read(at), decodeName);
        if (!entry || entry->Position < 0 || entry->Position > size) DoError(ceInvalidArchive, true);
        if (!FFileEntryIndex.try_emplace(ToLower(entry->FileName), i).second)
            throw EListError(Format(u"The archive has two entries named \"%s\"", {entry->FileName}));
        at += kEntry + entry->CompressedSize;
        FFileEntries.push_back(*std::move(entry));
    }
}

// --- Entries ---

const TFileEntry& TVarnDecompressor::EntryAt(std::int32_t index) const {
    return FFileEntries[ListIndex(index, FFileEntries.size())];
}

TFileEntry TVarnDecompressor::GetFileEntryAt(std::int32_t index) const {
    return EntryAt(index);
}

std::int32_t TVarnDecompressor::GetEntryIndex(StringView fileName) const {
    const auto found = FFileEntryIndex.find(ToLower(fileName));
    return found == FFileEntryIndex.end() ? -1 : found->second;
}

std::int32_t TVarnDecompressor::IndexOfFileName(StringView fileName) const {
    const auto found = std::ranges::find_if(
        FFileEntries, [&](const TFileEntry& entry) { return SameText(entry.FileName, fileName); });
    return found == FFileEntries.end() ? -1 : static_cast<std::int32_t>(found - FFileEntries.begin());
}

// --- To streams, bytes and texts ---

bool TVarnDecompressor::Extract(std::int32_t index, TStream& dest) {
    const TFileEntry& entry = EntryAt(index);
    const auto size = static_cast<std::size_t>(entry.CompressedSize);
    // No more memory than the file has bytes.
    if (entry.CompressedSize > FFileIn->GetSize() - entry.Position) RaiseEndsEarly(*FFileIn);
    const auto compressed = std::make_unique_for_overwrite<std::byte[]>(size);
    FFileIn->SetPosition(entry.Position);
    FFileIn->ReadBuffer({compressed.get(), size});
    Decompress({compressed.get(), size}, dest, entry.OriginalSize);
    return true;
}

bool TVarnDecompressor::Extract(StringView fileName, TStream& dest) {
    const std::int32_t index = GetEntryIndex(fileName);
    return index != -1 && Extract(index, dest);
}

bool TVarnDecompressor::Extract(std::int32_t index, std::vector<std::byte>& dest) {
    dest.clear();
    TMemoryStream stream;
    Extract(index, stream);
    dest.assign(stream.GetBytes().begin(), stream.GetBytes().end());
    return true;
}

bool TVarnDecompressor::Extract(StringView fileName, std::vector<std::byte>& dest) {
    dest.clear();
    const std::int32_t index = GetEntryIndex(fileName);
    return index != -1 && Extract(index, dest);
}

bool TVarnDecompressor::ExtractString(std::int32_t index, String& dest) {
    dest.clear();
    TMemoryStream stream;
    Extract(index, stream);
    const std::span<const std::byte> bytes = stream.GetBytes();
    dest = FromUtf8({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    return true;
}

bool TVarnDecompressor::ExtractString(StringView fileName, String& dest) {
    const std::int32_t index = GetEntryIndex(fileName);
    dest.clear();
    return index != -1 && ExtractString(index, dest);
}

// --- To files ---

String TVarnDecompressor::BuildFileName(StringView directory, const TFileEntry& entry) const {
    return PathBelow(directory, FKeeySubdirs ? entry.FileName : LastPart(entry.FileName));
}

bool TVarnDecompressor::Fail(std::int32_t index, StringView fileName, StringView error) const {
    const TFileEntry& entry = EntryAt(index);
    Platform().DebugOutput->Write(
        Format(u"Failed to extract: Index=%d, NewFileName=%s, Entry.Pos=%d, Entry.CSize=%d, Entry.OSize=%d, "
               u"Error=%s",
               {index, fileName, entry.Position, entry.CompressedSize, entry.OriginalSize, error}));
    return false;
}

/// Whether an existing file may be replaced. If not, the result of the extraction is set.
bool TVarnDecompressor::OverwriteTest(const String& fileName, const TFileEntry& entry, bool& result) {
    bool allowOverwrite = true;
    bool cancelExtract = false;
    if (FOnOverwriteRequest) {
        FOnOverwriteRequest(*this, fileName, entry, allowOverwrite, cancelExtract);
    } else {
        allowOverwrite = false;
        cancelExtract = true;
    }
    result = !cancelExtract;
    return allowOverwrite;
}

bool TVarnDecompressor::Extract(std::int32_t index, StringView newFileName) {
    const TFileEntry entry = EntryAt(index);
    const String path(newFileName);
    try {
        const String folder = ExcludeTrailingPathDelimiter(ExtractFilePath(path));
        if (FKeeySubdirs && !folder.empty() && !DirectoryExists(folder)) ForceDirectories(folder);
        bool result = false;
        if (FileExists(path) && !OverwriteTest(path, entry, result)) return result;
        const auto target = CreateFileStream(path, fmCreate, ceCannotCreateDestinationFile);
        if (!target) throw Exception(u"Failed to create output file: " + path);
        Extract(index, *target);
        const bool isWhole = target->GetSize() == entry.OriginalSize;
        target->Close();
        FExtractedFiles.Add(path);
        return isWhole;
    } catch (const std::exception& failure) {
        try {
            if (FileExists(path)) DeleteFile(path);
        } catch (const Exception&) {  // the extraction has failed already
        }
        return Fail(index, path, FromUtf8(failure.what()));
    }
}

bool TVarnDecompressor::Extract(StringView fileName, StringView newFileName) {
    const std::int32_t index = IndexOfFileName(fileName);
    return index != -1 && Extract(index, newFileName);
}

bool TVarnDecompressor::ExtractTo(std::int32_t index, StringView directory) {
    const TFileEntry& entry = EntryAt(index);
    const String path = BuildFileName(directory, entry);
    try {
        const StringView refusal =
            RefusalOf(directory, FKeeySubdirs ? entry.FileName : LastPart(entry.FileName));
        if (!refusal.empty()) return Fail(index, path, refusal);
    } catch (const Exception& failure) {  // the folder has no native path
        return Fail(index, path, failure.GetMessage());
    }
    return Extract(index, path);
}

bool TVarnDecompressor::ExtractTo(StringView fileName, StringView directory) {
    const std::int32_t index = IndexOfFileName(fileName);
    return index != -1 && ExtractTo(index, directory);
}

bool TVarnDecompressor::ExtractAllTo(StringView directory) {
    for (std::int32_t i = 0; i < GetFileEntryCount(); ++i) {
        if (!ExtractTo(i, directory)) return false;
        DoProgress(i + 1, GetFileEntryCount());
    }
    return true;
}

void TVarnDecompressor::ExtractAllTo(StringView directory, std::vector<String>& errors) {
    errors.clear();
    for (std::int32_t i = 0; i < GetFileEntryCount(); ++i) {
        if (!ExtractTo(i, directory)) errors.push_back(EntryAt(i).FileName);
        DoProgress(i + 1, GetFileEntryCount());
    }
}

}  // namespace Varnholt
