#pragma once

#include "Platform/Runtime/Types.h"

/// Deleting files by a mask, and names for temporary files.
///
///     DelFiles(u"C:\\data\\*.tmp");
///     const String name = GetTempFileName(u"station", u"rain*.csv");   // "C:\tmp\station\rain4711.csv"
///
/// Uses Random.h. Threads: names from one thread at a time, because of its generator; the rest on any thread. A
/// name is not reserved: two callers can get the same.
namespace Varnholt {

/// Deletes the files whose names match the mask in the last part of a path. A star stands for any characters, a
/// question mark for one; a star, a full stop and a star match every name, also one without a full stop. Names
/// compare exactly; folders and files that their owner cannot write match but stay. False if nothing matches; what
/// cannot be deleted stays, silently. Raises EInOutError for a path without a native form.
VARNHOLT_EXPORT bool DelFiles(StringView mask);

/// A name in the temporary folder or in a subfolder of it, which is created. Each star of the template becomes a
/// random number from 0 to 9998; the file does not exist and is not created. Without a template the result is the
/// folder. Raises EInOutError if the folder cannot be created, and (`No free name for "%s"`) if the template has no
/// star and the file exists, or no free name is found in 100,000 attempts.
[[nodiscard]] VARNHOLT_EXPORT String GetTempFileName(StringView subFolder, StringView nameTemplate);

/// The same for a folder that does not exist, which is not created. Without a template it raises.
[[nodiscard]] VARNHOLT_EXPORT String GetTempFolder(StringView subFolder, StringView nameTemplate);

/// The last folder of a path: `b` of `C:\a\b\` and `C:` of `C:\`. Of the path of an existing file, its folder
/// counts. Empty for one character or less, after one backslash at the end is removed, too. TPathUtils (vrnIO.h)
/// has another.
[[nodiscard]] VARNHOLT_EXPORT String GetFinalDirectoryName(StringView path);

}  // namespace Varnholt
