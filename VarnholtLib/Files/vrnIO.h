#pragma once

#include <memory>

#include "VarnholtLib/Services/vrnVersionNumber.h"

/// Starting programs, and parts of paths.
///
///     TFileUtils::Execute(u"https://example.org/");
///     if (TPathUtils::IsEqual(folder, u"C:\\Data\\")) ...
///
/// Threads: the functions may be called on any thread.
namespace Varnholt {

class VARNHOLT_EXPORT TFileUtils {
public:
    TFileUtils() = delete;
    /// Opens a document or address, or starts a program, and does not wait for it. Returns whether that succeeded.
    /// Platform/System/Shell.h lists the operations and says how parameters are split. The fourth text has no effect.
    static bool Execute(StringView operation, StringView fileName, StringView parameters, StringView unused);
    /// With the operation "open".
    static bool Execute(StringView fileName, StringView parameters, StringView unused);
    static bool Execute(StringView operation, StringView fileName);
    static bool Execute(StringView fileName);
    /// With the operation "runas", which asks for a password.
    static bool ExecuteAdmin(StringView fileName, StringView parameters, StringView unused);
    /// The version of a program or library. Raises EInvalidVersionNumberString if it has none.
    [[nodiscard]] static std::shared_ptr<IVersionNumber> GetVersion(StringView fileName);
};

/// Operations on the text of a path.
class VARNHOLT_EXPORT TPathUtils {
public:
    TPathUtils() = delete;
    /// What follows the last backslash, after one at the end is removed; empty for fewer than three characters.
    [[nodiscard]] static String GetFinalDirectoryName(StringView path);
    /// The path without the extension of its file name.
    [[nodiscard]] static String GetFullFileNameWithoutExt(StringView path);
    /// Whether two paths are the same text, without regard to the case of ASCII letters and to one backslash at the end
    /// of each.
    [[nodiscard]] static bool IsEqual(StringView path1, StringView path2);
};

}  // namespace Varnholt
