#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Streams.h"
#include "Platform/Runtime/StringList.h"

/// Packing files into an archive, and unpacking it. Docs/archive-format.md gives the format byte by byte.
///
///     TVarnCompressor compressor(u"C:\\data\\", true, true);   // names from C:\data\ on, and only files below it
///     compressor.AddFile(u"C:\\data\\2012\\may.csv");
///     compressor.SaveToFile(u"C:\\backup\\data.vrn");
///
///     TVarnDecompressor archive(u"C:\\backup\\data.vrn");
///     archive.ExtractAllTo(u"C:\\restored");                // C:\restored\2012\may.csv
///
/// A stored name is relative, with backslashes, and in the default 8-bit code page (TEncoding::Default). A file has
/// at most 2,147,483,647 bytes, before and after compression. One file at a time is in memory, in compressed form.
///
/// Errors. An error of the table TCompressorError sets LastError and calls OnError, which may let the process go
/// on; otherwise EVarnCompress is raised. Indexes count from 0; a wrong one raises EListError.
///
/// Uses zlib. Threads: an object serves one thread at a time; callbacks come on that thread.
namespace Varnholt {

enum TCompressorError : std::uint8_t {
    ceNone,
    ceUnknown,
    ceUnableToCreateArchive,
    ceInvalidArchive,
    ceCannotOpenArchive,
    ceUnableToCreateDirectory,
    ceDecompressionError,
    ceDuplicateSourceFile,
    ceNotInsideBaseDirectory,
    ceCannotOpenInputFile,
    ceCannotCreateDestinationFile,
};

/// The message is the text of its error.
class VARNHOLT_EXPORT EVarnCompress : public Exception {
public:
    explicit EVarnCompress(TCompressorError error);
    [[nodiscard]] TCompressorError GetError() const noexcept { return FError; }
    [[nodiscard]] static StringView ErrorToString(TCompressorError error) noexcept;

private:
    TCompressorError FError;
};

/// Compressed data that are damaged, end early or contain more than the size of the file.
class VARNHOLT_EXPORT EZDecompressionError : public Exception {
public:
    using Exception::Exception;
};

/// An entry of an archive.
struct TFileEntry {
    String FileName;  ///< the stored name
    std::int32_t CompressedSize = 0;
    std::int32_t OriginalSize = 0;
    std::int64_t Position = 0;  ///< of the compressed data in the archive
};

class TVarnBaseCompressor;

/// Called for an error. The process stops unless the last argument, true at first, is set to false.
using TCompressorErrorEvent = void (*)(TVarnBaseCompressor& sender, TCompressorError error,
                                       bool& stopProcess);
/// Called after each file with its number, from 1, and the number of all.
using TCompressorProgress = std::function<void(std::int32_t fileNo, std::int32_t total)>;

class VARNHOLT_EXPORT TVarnBaseCompressor {
public:
    virtual ~TVarnBaseCompressor() = default;
    TVarnBaseCompressor(const TVarnBaseCompressor&) = delete;
    TVarnBaseCompressor& operator=(const TVarnBaseCompressor&) = delete;

    void SetOnError(TCompressorErrorEvent event) noexcept { FOnError = event; }
    void SetOnProgress(TCompressorProgress progress) { FOnProgress = std::move(progress); }
    /// 0 none, 1 fastest, 2 the default, 3 maximum.
    [[nodiscard]] std::uint8_t GetCompressionLevel() const noexcept { return FCompressionLevel; }
    void SetCompressionLevel(std::uint8_t level) noexcept { FCompressionLevel = level; }
    [[nodiscard]] TCompressorError GetLastError() const noexcept { return FLastError; }

protected:
    TVarnBaseCompressor() = default;

    /// Raises EVarnCompress unless OnError lets the process go on; with forceStop always.
    void DoError(TCompressorError error, bool forceStop);
    void DoProgress(std::int32_t fileNo, std::int32_t total) const;
    /// Null if the file cannot be opened and OnError lets the process go on.
    [[nodiscard]] std::unique_ptr<TFileStream> CreateFileStream(StringView fileName, TFileMode mode,
                                                                TCompressorError error);

private:
    TCompressorError FLastError = ceNone;
    TCompressorErrorEvent FOnError = nullptr;
    TCompressorProgress FOnProgress;
    std::uint8_t FCompressionLevel = 2;
};

struct TFileToCompress {
    String FileName;     ///< the path of the source
    String NewFileName;  ///< the name to store
};

class VARNHOLT_EXPORT TVarnCompressor final : public TVarnBaseCompressor {
public:
    TVarnCompressor() = default;
    TVarnCompressor(StringView baseDirectory, bool keepSubfolders, bool restrictAddingToBase)
        : FBaseDirectory(baseDirectory),
          FKeepSubfolders(keepSubfolders),
          FRestrictToBase(restrictAddingToBase) {}

    /// Should end in a separator, otherwise stored names begin with one.
    [[nodiscard]] const String& GetBaseDirectory() const noexcept { return FBaseDirectory; }
    void SetBaseDirectory(StringView folder) { FBaseDirectory = folder; }
    /// Whether names are stored with folders. If not, only what follows the last backslash is stored.
    [[nodiscard]] bool GetKeepSubfolders() const noexcept { return FKeepSubfolders; }
    void SetKeepSubfolders(bool keep) noexcept { FKeepSubfolders = keep; }
    [[nodiscard]] bool GetRestrictAddingToBaseDirectory() const noexcept { return FRestrictToBase; }
    void SetRestrictAddingToBaseDirectory(bool restrictToBase) noexcept { FRestrictToBase = restrictToBase; }

    /// Adds a file under the rest of its path after the base directory, if subfolders are kept and the path begins
    /// with it (exactly), otherwise under its file name. Slashes become backslashes. Raises EVarnCompress
    /// ceDuplicateSourceFile, whatever OnError says, if the path is in the list; and as the other form.
    void AddFile(StringView fileName);
    /// Adds a file under a name. Nothing happens if there is no such file. Raises EVarnCompress
    /// ceNotInsideBaseDirectory, whatever OnError says, if adding is restricted and the path does not begin with
    /// the base directory. The list may have the path already.
    void AddFile(StringView fileName, StringView newFileName);
    [[nodiscard]] std::int32_t GetFileCount() const noexcept {
        return static_cast<std::int32_t>(FFiles.size());
    }
    [[nodiscard]] TFileToCompress& GetFileName(std::int32_t index);
    /// The name of a file in the archive, with backslashes, before it is cut to 200 characters.
    [[nodiscard]] String GetStoredName(std::int32_t index) const;
    /// The first position of a path, or of a file name in any folder, without regard to the case of ASCII letters; -1 if
    /// there is none.
    [[nodiscard]] std::int32_t IndexOf(StringView fileName) const;
    [[nodiscard]] std::int32_t IndexOfJustFileName(StringView fileName) const;

    /// Writes the archive, which replaces an existing one as a whole or not at all. A file that does not exist any
    /// more is skipped silently; one that cannot be opened is skipped if OnError lets the process go on after
    /// ceCannotOpenInputFile. The archive has the entries that were written, and says so.
    ///
    /// Raises EVarnCompress ceUnableToCreateArchive, EArgumentException for a level above 3, Exception for a name
    /// that the code page cannot hold (`The name "%s" cannot be stored in the code page %s`) and for a file that is
    /// too large (`%s: The file has more than 2147483647 bytes`), and what reading and writing raise. If there is
    /// no archive of that name, one with the entries before the failure is left.
    void SaveToFile(StringView fileName);
    /// Whether the last SaveToFile failed and left such a part.
    [[nodiscard]] bool GetHasLeftPart() const noexcept { return FHasLeftPart; }

private:
    class TWriter;

    void WriteFiles(TWriter& writer);
    [[nodiscard]] String StoredName(const TFileToCompress& file) const;

    std::vector<TFileToCompress> FFiles;
    mutable std::unordered_map<String, std::int32_t>
        FIndex;                       // the first position of each path, in lower case
    mutable bool FIsIndexed = false;  // not after a caller may have changed paths
    bool FHasLeftPart = false;
    String FBaseDirectory;
    bool FKeepSubfolders = false;
    bool FRestrictToBase = false;
};

enum TOverwriteType : std::uint8_t { otAlreadyExists, otAlreadyExtracted };

class TVarnDecompressor;

/// Called for a file that exists. allowOverwrite, true at first, replaces it; otherwise the file is left alone, and
/// cancelExtract, false at first, makes the extraction fail.
using TOverwriteEvent =
    std::function<void(TVarnDecompressor& sender, const String& fileName, const TFileEntry& fileEntry,
                       bool& allowOverwrite, bool& cancelExtract)>;

/// Whether a stored name is that of a file below the folder to which it is extracted. No step of it may be empty, one
/// full stop, two full stops or a reserved device name, or have a colon or a control character.
[[nodiscard]] VARNHOLT_EXPORT bool IsExtractableName(StringView storedName);

/// Reads an archive, which may come from a stranger. Memory is bounded by the size of the archive. Names are looked
/// up without regard to case.
///
/// Into a folder, a name is extracted only if the file lands below the folder: a name that is empty, has an empty
/// step, a step `.` or `..`, a colon, a control character, a reserved device name (`NUL`, `COM1.txt`), or that
/// passes through a symbolic link is a failure. A single extraction that fails returns false, writes a line to the
/// debug output (Platform.h) and leaves no file, with one exception: a file that came out shorter than the entry
/// says stays.
class VARNHOLT_EXPORT TVarnDecompressor final : public TVarnBaseCompressor {
public:
    /// Opens an archive and reads its entries. Raises EVarnCompress ceCannotOpenArchive or ceInvalidArchive, and
    /// EListError `The archive has two entries named "%s"` for names that differ only in case.
    explicit TVarnDecompressor(StringView fileName);

    void SetOnOverwriteRequest(TOverwriteEvent event) { FOnOverwriteRequest = std::move(event); }
    [[nodiscard]] std::int32_t GetFileEntryCount() const noexcept {
        return static_cast<std::int32_t>(FFileEntries.size());
    }
    [[nodiscard]] TFileEntry GetFileEntryAt(std::int32_t index) const;
    /// The index of a stored name; -1 if there is none. The first folds all letters, the second ASCII letters.
    [[nodiscard]] std::int32_t GetEntryIndex(StringView fileName) const;
    [[nodiscard]] std::int32_t IndexOfFileName(StringView fileName) const;

    /// Extracts to a file; its folder is created if the archive has subfolders. An existing file is left alone and
    /// the result false, unless OnOverwriteRequest decides otherwise: true for a file that is skipped. False after
    /// any failure.
    bool Extract(std::int32_t index, StringView newFileName);
    /// The same for a stored name; false if there is none, here and below.
    bool Extract(StringView fileName, StringView newFileName);
    /// Extracts to a stream or to bytes. Raises EReadError and EZDecompressionError.
    bool Extract(std::int32_t index, TStream& dest);
    bool Extract(StringView fileName, TStream& dest);
    bool Extract(std::int32_t index, std::vector<std::byte>& dest);
    bool Extract(StringView fileName, std::vector<std::byte>& dest);
    /// Extracts to a text, from UTF-8; a byte-order mark stays. The text is empty after a failure.
    bool ExtractString(std::int32_t index, String& dest);
    bool ExtractString(StringView fileName, String& dest);

    /// Extracts to the stored name below a folder; without subfolders in the archive, to what follows its last
    /// backslash. False also for a name that would leave the folder.
    bool ExtractTo(std::int32_t index, StringView directory);
    bool ExtractTo(StringView fileName, StringView directory);
    /// ExtractTo for each entry; stops at the first that fails. OnProgress is called after each one that does not.
    bool ExtractAllTo(StringView directory);
    /// ExtractTo for each entry; the stored names of those that fail are the errors. OnProgress is called after each.
    void ExtractAllTo(StringView directory, std::vector<String>& errors);

    /// Replaces the items by the paths of the files that were written, in order.
    void GetLog(TStringList& items) const { items = FExtractedFiles; }
    void ClearLog() noexcept { FExtractedFiles.Clear(); }

private:
    void GatherInfo(std::int32_t count);
    [[nodiscard]] const TFileEntry& EntryAt(std::int32_t index) const;
    [[nodiscard]] String BuildFileName(StringView directory, const TFileEntry& entry) const;
    [[nodiscard]] bool OverwriteTest(const String& fileName, const TFileEntry& entry, bool& result);
    bool Fail(std::int32_t index, StringView fileName, StringView error) const;

    std::vector<TFileEntry> FFileEntries;
    std::unordered_map<String, std::int32_t> FFileEntryIndex;  // by lower-cased name
    std::unique_ptr<TFileStream> FFileIn;
    TStringList FExtractedFiles;
    TOverwriteEvent FOnOverwriteRequest;
    bool FKeeySubdirs = false;
};

}  // namespace Varnholt
