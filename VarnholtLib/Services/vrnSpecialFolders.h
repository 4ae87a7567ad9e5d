#pragma once

#include <cstdint>

#include "Platform/Runtime/Types.h"

/// The known folders: where a user's settings, data and documents are.
///
///     const String settings = TSpecialFolders::GetAppData() + u"Varnholt\\Ombrix\\Favourites";
///
/// Each operation returns a path in library form with a separator at its end (`C:\home\ann\Documents\`), or an
/// empty text if the system has no such folder or it can neither be found nor created. A missing folder is
/// created where the table says so:
///
/// | operation          | number | folder on Linux                                                    |
/// |--------------------|--------|--------------------------------------------------------------------|
/// | GetAppData         | 26     | `$XDG_CONFIG_HOME`, else `~/.config`; created                      |
/// | GetCommonAppData   | 35     | `$VARNHOLT_COMMON_DATA`, else `/var/lib/varnholt`; created if the process may do so |
/// | GetCommonDocuments | 46     | the folder `documents` in the one above, likewise                  |
/// | GetLocalAppData    | 28     | `$XDG_DATA_HOME`, else `~/.local/share`; created                   |
/// | GetMyPictures      | 39     | `XDG_PICTURES_DIR` of `user-dirs.dirs`, else `~/Pictures`; created |
/// | GetPersonal        | 5      | `XDG_DOCUMENTS_DIR` of `user-dirs.dirs`, else `~/Documents`; created |
/// | GetProgramFiles    | 38     | `/opt`                                                             |
/// | GetSystem          | 37     | `/usr/bin`                                                         |
/// | GetWindows         | 36     | none: always empty                                                 |
///
/// Platform.h has the details. A folder that has no form with a drive letter (see Paths.h) is an absolute native
/// path, with a slash at its end.
///
/// Threads: may be called on any thread, while none changes the environment.
namespace Varnholt {

class VARNHOLT_EXPORT TSpecialFolders {
public:
    TSpecialFolders() = delete;

    /// The user's application data, which roams with the user.
    [[nodiscard]] static String GetAppData();
    /// Machine-wide application data.
    [[nodiscard]] static String GetCommonAppData();
    /// Documents of all users.
    [[nodiscard]] static String GetCommonDocuments();
    /// The user's application data on this machine.
    [[nodiscard]] static String GetLocalAppData();
    /// The user's pictures.
    [[nodiscard]] static String GetMyPictures();
    /// The user's documents.
    [[nodiscard]] static String GetPersonal();
    /// Installed programs.
    [[nodiscard]] static String GetProgramFiles();
    /// The operating system's own programs.
    [[nodiscard]] static String GetSystem();
    /// The folder of the operating system.
    [[nodiscard]] static String GetWindows();

    /// The folder of a number in the table. Returns false for any other number and for a folder that the system
    /// cannot supply, and leaves the path unchanged. Finding a folder here shows nothing, so it needs no owner
    /// window.
    static bool GetSpecialFolderString(String& path, std::int32_t csidl);
};

}  // namespace Varnholt
