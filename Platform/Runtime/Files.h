#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Types.h"

/// Whole files and folders, by library path (see Paths.h).
///
///     ForceDirectories(u"C:\\data\\out");
///     WriteFileInOneGo(u"C:\\data\\out\\rain.csv", bytes);
///
/// A failure raises an exception that names the path as given and the system's reason. FileExists,
/// RegularFileExists, DirectoryExists and IsSameFile never fail.
///
/// Uses Streams.h. Threads: all functions may be called on any thread.
namespace Varnholt {

/// Whether the path names something other than a folder. False for a path that has no native form.
[[nodiscard]] VARNHOLT_EXPORT bool FileExists(StringView path);
/// The same, and it is neither a pipe nor a device, on which a reader may wait without end.
[[nodiscard]] VARNHOLT_EXPORT bool RegularFileExists(StringView path);
/// Whether the path names a folder. False for a path that has no native form.
[[nodiscard]] VARNHOLT_EXPORT bool DirectoryExists(StringView path);

/// Whether both paths lead to the same file or folder, after all symbolic links. False if one does not exist.
[[nodiscard]] VARNHOLT_EXPORT bool IsSameFile(StringView a, StringView b);

/// The file's length in bytes. Raises EInOutError (`Cannot read size of file "%s": %s`), for a folder too.
[[nodiscard]] VARNHOLT_EXPORT std::int64_t FileSize(StringView path);

/// Raises EInOutError (`Cannot delete file "%s": %s`), also if the file does not exist.
VARNHOLT_EXPORT void DeleteFile(StringView path);

/// Renames a file or folder within a file system. An existing file of the new name is replaced in one step.
/// Raises EInOutError (`Cannot rename "%s" to "%s": %s`).
VARNHOLT_EXPORT void RenameFile(StringView oldPath, StringView newPath);

/// Creates the folder and all missing folders above it. Raises EInOutError
/// (`Cannot create folder "%s": %s`).
VARNHOLT_EXPORT void ForceDirectories(StringView path);

/// Deletes an empty folder. Raises EInOutError (`Cannot delete folder "%s": %s`).
VARNHOLT_EXPORT void RemoveDirectory(StringView path);

/// Creates the file, or replaces its whole content, through a TDraftFileStream. Raises what that raises:
/// EFCreateError (`Cannot create file "%s": %s`), EWriteError (`Cannot write file "%s": %s`) or EInOutError.
/// An existing file is then unchanged, with the exceptions that DraftFile.h lists.
VARNHOLT_EXPORT void WriteFileInOneGo(StringView path, std::string_view bytes);

/// All bytes of the file. Raises EFOpenError (`Cannot open file "%s": %s`) or EReadError
/// (`Cannot read file "%s": %s`).
[[nodiscard]] VARNHOLT_EXPORT std::string ReadWholeFile(StringView path);

}  // namespace Varnholt
