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
/// A failure raises an exception that names the path as it was given and the system's reason. The two
/// questions FileExists and DirectoryExists never fail.
///
/// Leans on Streams.h. Threads: everything here may be called on any thread.
namespace Varnholt {

/// Whether there is something of that name that is no folder. False for a path that has no native form.
[[nodiscard]] VARNHOLT_EXPORT bool FileExists(StringView path);
/// Whether there is a folder of that name. False for a path that has no native form.
[[nodiscard]] VARNHOLT_EXPORT bool DirectoryExists(StringView path);

/// Whether both paths lead to the same file or folder, after all symbolic links. False if one does not exist.
/// Never fails.
[[nodiscard]] VARNHOLT_EXPORT bool IsSameFile(StringView a, StringView b);

/// The file's length in bytes. Raises EInOutError (`Cannot read size of file "%s": %s`), for a folder too.
[[nodiscard]] VARNHOLT_EXPORT std::int64_t FileSize(StringView path);

/// Raises EInOutError (`Cannot delete file "%s": %s`), also where there is no such file.
VARNHOLT_EXPORT void DeleteFile(StringView path);

/// Gives the file or folder another name, on the same file system. A file that has the new name already is
/// replaced, at no moment missing. Raises EInOutError (`Cannot rename "%s" to "%s": %s`).
VARNHOLT_EXPORT void RenameFile(StringView oldPath, StringView newPath);

/// Makes the folder and those above it, as far as they are missing. Raises EInOutError
/// (`Cannot create folder "%s": %s`).
VARNHOLT_EXPORT void ForceDirectories(StringView path);

/// Deletes an empty folder. Raises EInOutError (`Cannot delete folder "%s": %s`).
VARNHOLT_EXPORT void RemoveDirectory(StringView path);

/// Makes the bytes the whole content of the file, which is created or replaced. Raises EFCreateError
/// (`Cannot create file "%s": %s`) or EWriteError (`Cannot write file "%s": %s`) and leaves a present file
/// alone; TDraftFileStream tells how, and which files are written directly.
VARNHOLT_EXPORT void WriteFileInOneGo(StringView path, std::string_view bytes);

/// All bytes of the file. Raises EFOpenError (`Cannot open file "%s": %s`) or EReadError
/// (`Cannot read file "%s": %s`).
[[nodiscard]] VARNHOLT_EXPORT std::string ReadWholeFile(StringView path);

}  // namespace Varnholt
