#pragma once

#include <span>

#include "Platform/Runtime/Types.h"

/// Finding out whether the process may write to a folder, and restarting a program with the rights of an administrator.
///
///     TUACHelperToken token;
///     TUACHelper::InitToken(token, folder);
///     const bool mayWrite = TUACHelper::CheckForWrite(token) == cfcOK;
///     TUACHelper::FreeToken(token);                                  // deletes the probe file
///     if (!mayWrite && !TUACHelper::StartedFromRelaunch()) TUACHelper::LaunchAsAdmin(program, u"");
///
/// Uses Random.h. Threads: InitToken on one thread at a time, because of its generator; the rest on any thread, for
/// each token one at a time.
namespace Varnholt {

/// The argument by which a program knows that it was restarted.
inline constexpr StringView UACRelaunchString = u"-uacrelaunch";

struct TUACHelperToken {
    std::int32_t ID = 0;  ///< makes the name of the probe file unique
    String Path;          ///< the folder
    String Filename;      ///< the probe file; empty until it was created
    bool AllowDirCreate = false;
};

enum TCheckForResult : std::uint8_t {
    cfcOK,
    cfcFolderDoesNotExist,
    cfcFolderCouldNotBeCreated,
    cfcFileCreateFailed,
    cfcCouldNotGetWrite,
};

class VARNHOLT_EXPORT TUACHelper {
public:
    TUACHelper() = delete;
    /// Prepares a probe of a folder, which with createDir is created if it is missing. Seeds the random generator.
    static void InitToken(TUACHelperToken& token, StringView path, bool createDir = false);
    /// Whether a file can be created in the folder: creates the probe file, `TestFile` with the number of the
    /// token, or empties one of that name.
    [[nodiscard]] static TCheckForResult CheckForCreate(TUACHelperToken& token);
    /// Whether the probe file, which is created if it is missing, can be opened for writing.
    [[nodiscard]] static TCheckForResult CheckForWrite(TUACHelperToken& token);
    /// Deletes the probe file, if there is one, and does not report a failure.
    static void FreeToken(TUACHelperToken& token);
    /// Starts a program by TFileUtils::ExecuteAdmin, with UACRelaunchString as its last argument.
    static bool LaunchAsAdmin(StringView fileName, StringView params);
    /// The same with each parameter in double quotes; what is in a parameter is not escaped.
    static bool LaunchAsAdmin(StringView fileName, std::span<const String> params);
    /// Whether an argument of the process, the program name left out, is exactly UACRelaunchString.
    [[nodiscard]] static bool StartedFromRelaunch();
};

}  // namespace Varnholt
