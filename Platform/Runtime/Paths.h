#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Types.h"

/// Paths: their parts, and conversion between library paths and native ones.
///
/// The library writes paths with drive letters and backslashes. A path becomes native only when a file is
/// accessed, and a native path becomes a library path when the system names a folder:
///
///     ToNativePath(u"C:\\home\\ann\\x.csv")      // "/home/ann/x.csv"
///     FromNativePath("/home/ann/x.csv")          // C:\home\ann\x.csv
///
/// What a library path may be:
/// - `C:\folder\name`: below the native folder of the drive. The drive C: is the root of the native tree; no
///   other drive exists until SetDrive adds one. `C:name` means the same as `C:\name`, and
///   `\name` means a name in the root of C:.
/// - `folder\name`: relative to the working directory.
/// - `/folder/name`: a native path, used as it is. A backslash in it is part of a name.
///
/// In the first two forms the forward slash is a separator, too. Drive letters match without regard to case;
/// all other names match as in the native file system.
///
/// Threads: all functions may be called on any thread.
namespace Varnholt {

/// The part after the last separator, or the colon of the drive: `x.csv` of `C:\a\x.csv`.
[[nodiscard]] VARNHOLT_EXPORT String ExtractFileName(StringView path);

/// The part before the file name, with its separator: `C:\a\` of `C:\a\x.csv`.
[[nodiscard]] VARNHOLT_EXPORT String ExtractFilePath(StringView path);

/// The path without a separator at its end; only one is removed.
[[nodiscard]] VARNHOLT_EXPORT String ExcludeTrailingPathDelimiter(StringView path);

/// The native form of a library path, in UTF-8. It does not access the disk, and leaves `..` to the system.
/// Raises EInOutError (`Cannot use path "%s": ` and the reason) if there is no native form:
/// - "Drive %s: is not known"
/// - "Network paths are not supported" for a path that begins with two backslashes
/// - "It holds a zero character"
[[nodiscard]] VARNHOLT_EXPORT std::string ToNativePath(StringView path);

/// The same without raising: nothing if there is no native form, with the reason in the second argument.
[[nodiscard]] VARNHOLT_EXPORT std::optional<std::string> TryToNativePath(StringView path, String& reason);

/// The library form of a native path in UTF-8, on the drive with the longest root above it. A path below no
/// drive, and one with a backslash in a name, has no form with a drive letter and is returned as an absolute
/// native path. ToNativePath of the result names the same file.
[[nodiscard]] VARNHOLT_EXPORT String FromNativePath(std::string_view native);

/// Makes an absolute native folder (in UTF-8) the root of a drive, for the whole process. The folder need not
/// exist. Raises EArgumentException for a letter outside A to Z or a root that is not absolute.
VARNHOLT_EXPORT void SetDrive(Char letter, std::string_view nativeRoot);

/// Removes a drive, if it exists.
VARNHOLT_EXPORT void RemoveDrive(Char letter);

/// Restores the table of drives at the end of its scope:
///
///     const TDriveTableScope scope;
///     SetDrive(u'D', folder);
class VARNHOLT_EXPORT TDriveTableScope {
public:
    TDriveTableScope();
    ~TDriveTableScope();
    TDriveTableScope(const TDriveTableScope&) = delete;
    TDriveTableScope& operator=(const TDriveTableScope&) = delete;

private:
    struct TSaved;
    std::unique_ptr<TSaved> FSaved;
};

}  // namespace Varnholt
