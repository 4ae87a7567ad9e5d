#pragma once

#include "Platform/Runtime/Types.h"

/// Operations on the text of a path. None accesses a file or checks whether the path is valid.
///
///     String folder = AddTrailingSlashIfRequired(u"C:\\Data");         // "C:\Data\"
///     String backup = AddFilenamePostfix(u"C:\\Data\\a.csv", u"_1");   // "C:\Data\a_1.csv"
///     String name = StripFileName(backup);                             // "a_1"
///
/// The separator is the backslash. The file-name part of a path is what follows its last backslash, the whole
/// path if it has none; the folder part is the rest, that backslash included. The extension of a file name
/// begins at its last "." and includes it.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// The text with a backslash at its end, added only if there is none. Empty text becomes one backslash.
[[nodiscard]] VARNHOLT_EXPORT String AddTrailingSlashIfRequired(StringView text);

/// Appends a backslash unless there is one at the end and returns true, provided that the text begins with
/// two backslashes or with a letter and ":". Otherwise leaves the text unchanged and returns false.
VARNHOLT_EXPORT bool EnsurePathString(String& text);

/// The path of a name below a folder. A separator is put between them unless the folder ends with one or is empty:
/// a backslash, or in a native path, which begins with a slash, a slash. The backslashes of the name then become
/// slashes, too.
[[nodiscard]] VARNHOLT_EXPORT String PathBelow(StringView folder, StringView name);

/// Replaces each of the characters :*?"<>| in the file-name part by "_", and with includeSeparators also the
/// forward slash. The folder part is unchanged, and with it every backslash.
VARNHOLT_EXPORT void RemoveInvalidPathChars(String& path, bool includeSeparators);

/// The path after the operation above, separators included.
[[nodiscard]] VARNHOLT_EXPORT String RemoveInvalidPathChars(StringView path);

/// The file name without its folder and its extension.
[[nodiscard]] VARNHOLT_EXPORT String StripFileName(StringView path);

/// The text between the last backslash and the end of the path. One backslash at the end is ignored:
/// "C:\a\b\" gives "b".
[[nodiscard]] VARNHOLT_EXPORT String ExtractFinalPathElement(StringView path);

/// The path with the postfix before the last "." of the whole path, even in a folder name, or at the end if
/// there is no ".". An empty path stays empty.
[[nodiscard]] VARNHOLT_EXPORT String AddFilenamePostfix(StringView path, StringView postfix);

/// The path of the folder that contains it: "C:\a\b\" and "C:\a\b" both give "C:\a\". Empty if no backslash
/// is left after one at the end is removed, as with "C:\".
[[nodiscard]] VARNHOLT_EXPORT String ParentPath(StringView path);

/// True if the file name has that extension, given with or without its ".", without regard to the case of
/// ASCII letters. Empty extension: true if the file name has none.
[[nodiscard]] VARNHOLT_EXPORT bool FileExtIs(StringView extension, StringView fileName);

/// Operations on path elements.
class VARNHOLT_EXPORT TStringTools {
public:
    TStringTools() = delete;

    /// The last element of the path, as ExtractFinalPathElement gives it: empty for a path of one backslash.
    [[nodiscard]] static String GetDirectoryElement(StringView path);
};

}  // namespace Varnholt
