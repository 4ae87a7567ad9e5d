#include "VarnholtLib/Files/vrnCompress.h"

#include <algorithm>
#include <array>

#include "Platform/Runtime/DraftFile.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/Runtime/Text.h"
#include "VarnholtLib/Files/ArchiveFormatPrivate.h"

namespace Varnholt {

EVarnCompress::EVarnCompress(TCompressorError error) : Exception(ErrorToString(error)), FError(error) {}

StringView EVarnCompress::ErrorToString(TCompressorError error) noexcept {
    static constexpr std::array<StringView, 11> kTexts = {
        u"No error has occured",
        u"An unknown error has occured",
        u"The output archive file could not be created",
        u"The archive is not in a valid format.",
        u"The archive cannot be accessed",
        u"Unable to create output directory",
        u"An unknown error has occured",
        u"This file is already in the source file list",
        u"This was is not contained within the specified base directory",
        u"A file to be compressed can not be accessed",
        u"Cannot create the destination file to extract to",
    };
    return error < kTexts.size() ? kTexts[error] : kTexts[ceUnknown];
}

// --- What both directions share ---

void TVarnBaseCompressor::DoError(TCompressorError error, bool forceStop) {
    FLastError = error;
    bool stopProcess = true;
    if (FOnError != nullptr) FOnError(*this, error, stopProcess);
    if (stopProcess || forceStop) throw EVarnCompress(error);
}

void TVarnBaseCompressor::DoProgress(std::int32_t fileNo, std::int32_t total) const {
    if (FOnProgress) FOnProgress(fileNo, total);
}

std::unique_ptr<TFileStream> TVarnBaseCompressor::CreateFileStream(StringView fileName, TFileMode mode,
                                                                   TCompressorError error) {
    try {
        return std::make_unique<TFileStream>(fileName, mode);
    } catch (const Exception&) {
        DoError(error, false);
    }
    return nullptr;
}

// --- The list of files ---

void TVarnCompressor::AddFile(StringView fileName) {
    if (IndexOf(fileName) != -1) DoError(ceDuplicateSourceFile, true);
    const bool hasBase = FKeepSubfolders && fileName.starts_with(FBaseDirectory);
    String name = hasBase ? String(fileName.substr(FBaseDirectory.size())) : ExtractFileName(fileName);
    std::ranges::replace(name, u'/', u'\\');
    AddFile(fileName, name);
}

void TVarnCompressor::AddFile(StringView fileName, StringView newFileName) {
    if (!FileExists(fileName)) return;
    if (FRestrictToBase && !fileName.starts_with(FBaseDirectory)) DoError(ceNotInsideBaseDirectory, true);
    FFiles.push_back({String(fileName), String(newFileName)});
    if (FIsIndexed) FIndex.try_emplace(LowerCase(fileName), GetFileCount() - 1);
}

TFileToCompress& TVarnCompressor::GetFileName(std::int32_t index) {
    FIsIndexed = false;
    return FFiles[ListIndex(index, FFiles.size())];
}

String TVarnCompressor::GetStoredName(std::int32_t index) const {
    return StoredName(FFiles[ListIndex(index, FFiles.size())]);
}

std::int32_t TVarnCompressor::IndexOf(StringView fileName) const {
    if (!FIsIndexed) {
        FIndex.clear();
        for (std::int32_t i = 0; const TFileToCompress& file : FFiles)
            FIndex.try_emplace(LowerCase(file.FileName), i++);
        FIsIndexed = true;
    }
    const auto found = FIndex.find(LowerCase(fileName));
    return found == FIndex.end() ? -1 : found->second;
}

std::int32_t TVarnCompressor::IndexOfJustFileName(StringView fileName) const {
    const String name = ExtractFileName(fileName);
    const auto found = std::ranges::find_if(
        FFiles, [&](const TFileToCompress& file) { return SameText(ExtractFileName(file.FileName), name); });
    return found == FFiles.end() ? -1 : static_cast<std::int32_t>(found - FFiles.begin());
}

// --- Writing ---

/// Writes an archive forwards, and its header once more if fewer entries follow than it said.
class TVarnCompressor::TWriter {
public:
    TWriter(TDraftFileStream& archive, const TArchiveHeader& header) : FArchive(archive), FHeader(header) {
        FArchive.WriteBuffer(EncodeHeader(header));
    }

    void Add(const String& name, TFileStream& source, std::uint8_t level) {
        const TCompressed data = Compress(source, level);
        const std::int64_t position = FEnd + static_cast<std::int64_t>(kArchiveEntrySize);
        FArchive.WriteBuffer(
            EncodeEntry({name, static_cast<std::int32_t>(data.Bytes.size()), data.OriginalSize, position}));
        FArchive.WriteBuffer(data.Bytes);
        FEnd = position + std::ssize(data.Bytes);
        ++FCount;
    }

    void Commit() {
        if (FCount != FHeader.NumFiles) {
            FHeader.NumFiles = FCount;
            FArchive.SetPosition(0);
            FArchive.WriteBuffer(EncodeHeader(FHeader));
        }
        FArchive.Commit();
    }

    /// Leaves the entries before a failure. False if that fails, too.
    bool KeepPart() noexcept {
        try {
            FArchive.SetSize(FEnd);
            Commit();
            return true;
        } catch (const std::exception&) {  // the failure before this one is raised
            return false;
        }
    }

private:
    TDraftFileStream& FArchive;
    TArchiveHeader FHeader;
    std::int32_t FCount = 0;
    std::int64_t FEnd = kArchiveHeaderSize;
};

String TVarnCompressor::StoredName(const TFileToCompress& file) const {
    String name = file.NewFileName;
    std::ranges::replace(name, u'/', u'\\');
    return FKeepSubfolders ? name : name.substr(name.rfind(u'\\') + 1);
}

void TVarnCompressor::WriteFiles(TWriter& writer) {
    std::int32_t number = 0;
    for (const TFileToCompress& file : FFiles) {
        ++number;
        if (!FileExists(file.FileName)) continue;
        const auto source = CreateFileStream(file.FileName, fmOpenRead, ceCannotOpenInputFile);
        if (source) writer.Add(StoredName(file), *source, GetCompressionLevel());
        DoProgress(number, GetFileCount());
    }
}

void TVarnCompressor::SaveToFile(StringView fileName) {
    CheckCompressionLevel(GetCompressionLevel());
    FHasLeftPart = false;
    std::unique_ptr<TDraftFileStream> archive;
    try {
        archive = std::make_unique<TDraftFileStream>(fileName);
    } catch (const Exception&) {
        DoError(ceUnableToCreateArchive, true);
    }
    TWriter writer(*archive, {GetFileCount(), FKeepSubfolders, GetCompressionLevel()});
    try {
        WriteFiles(writer);
    } catch (...) {
        // An archive that is there by now, from before or from another program, is better than a part.
        FHasLeftPart = !FileExists(fileName) && writer.KeepPart();
        throw;
    }
    writer.Commit();
}

}  // namespace Varnholt
