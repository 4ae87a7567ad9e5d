#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "Platform/Runtime/DateTime.h"
#include "Platform/System/Desktop.h"

/// The facts of the machine and of the process that tests replace: folders, clock, process, debug output, and the
/// services of the desktop.
///
///     const String file = Platform().Process->GetExecutablePath();
///
///     TPlatformScope scope;                       // in a test: until its end the process sees these
///     Platform().Clock = std::make_shared<TFixedClock>();
///
/// Threads: the facts themselves may be read from any thread. Replacing them has no lock; do it while no other thread
/// reads them.
namespace Varnholt {

/// The folders that the operating system names. On Linux, with HOME for $HOME, or for the folder that the password
/// database names if $HOME is not an absolute path:
///
/// | folder            | is                                                        | if it is missing  |
/// |-------------------|-----------------------------------------------------------|-------------------|
/// | kfAppData         | $XDG_CONFIG_HOME, else HOME/.config                       | created, mode 0700 |
/// | kfLocalAppData    | $XDG_DATA_HOME, else HOME/.local/share                    | created, mode 0700 |
/// | kfCommonAppData   | $VARNHOLT_COMMON_DATA, else /var/lib/varnholt             | created, mode 0755 |
/// | kfPersonal        | XDG_DOCUMENTS_DIR of user-dirs.dirs, else HOME/Documents  | created, mode 0700 |
/// | kfMyPictures      | XDG_PICTURES_DIR of user-dirs.dirs, else HOME/Pictures    | created, mode 0700 |
/// | kfCommonDocuments | the folder "documents" in that of kfCommonAppData         | created, mode 0755 |
/// | kfProgramFiles    | /opt                                                      | empty text        |
/// | kfSystem          | /usr/bin                                                  | empty text        |
/// | kfWindows         | none                                                      | empty text        |
///
/// Missing folders above a folder are created with it and with the same mode, except HOME: if HOME does not exist,
/// nothing below it is created. A relative path in a variable counts as none, as for all XDG base
/// directories. user-dirs.dirs is read in the folder of kfAppData, as its own manual page says: NAME="VALUE" in lines of
/// their own, the last of a name counts, VALUE begins with $HOME or a slash, and a backslash takes the next character
/// literally. Other lines, and files that are not regular or larger than 1 MiB, are ignored.
enum TKnownFolder {
    kfAppData,          ///< the user's application data
    kfLocalAppData,     ///< the user's application data that stays on this machine
    kfCommonAppData,    ///< machine-wide application data
    kfPersonal,         ///< the user's documents
    kfMyPictures,       ///< the user's pictures
    kfCommonDocuments,  ///< documents that all users share
    kfProgramFiles,     ///< installed programs
    kfSystem,           ///< the folder of the operating system's own programs
    kfWindows,          ///< the folder of the operating system
};

class IKnownFolders {
public:
    virtual ~IKnownFolders() = default;
    /// The path in library form, without a separator at its end unless it is the root of a drive. Empty if this
    /// system has no such folder, if it can neither be found nor created, or if its name is not valid UTF-8. The
    /// environment is read at each call.
    [[nodiscard]] virtual String Find(TKnownFolder folder) = 0;
};

class IClock {
public:
    virtual ~IClock() = default;
    /// The current time in the user's time zone, to the microsecond. The real clock determines the zone's offset
    /// once in each second.
    [[nodiscard]] virtual TDateTime Now() = 0;
    /// The same time in UTC, for ages.
    [[nodiscard]] virtual TDateTime NowUtc() = 0;
};

class IProcess {
public:
    virtual ~IProcess() = default;
    /// The full path of the running program, in library form; empty if the system does not know it.
    [[nodiscard]] virtual String GetExecutablePath() = 0;
    [[nodiscard]] virtual std::uint32_t GetProcessId() = 0;
    /// The operating system's identifier of the calling thread.
    [[nodiscard]] virtual std::uint32_t GetThreadId() = 0;
    [[nodiscard]] virtual String GetMachineName() = 0;
    /// Whether the process has the rights of the superuser.
    [[nodiscard]] virtual bool GetIsSuperUser() = 0;
    /// The names of the groups of the process.
    [[nodiscard]] virtual std::vector<String> GetGroups() = 0;
    /// The arguments of the command line; the first is the program as it was called.
    [[nodiscard]] virtual std::vector<String> GetCommandLine() = 0;
};

class IDebugOutput {
public:
    virtual ~IDebugOutput() = default;
    /// Writes the text for the developer of the program. The real one writes it with a line end to standard error,
    /// in one system call, and ignores failures.
    virtual void Write(StringView text) = 0;
};

/// Keeps the shared library that contains this address loaded until the end of the process, for threads that run its code
/// and that nobody waits for.
VARNHOLT_EXPORT void KeepLibraryLoaded(const void* address) noexcept;

/// The facts in use. No member is ever null.
struct TPlatform {
    std::shared_ptr<IKnownFolders> KnownFolders;
    std::shared_ptr<IClock> Clock;
    std::shared_ptr<IProcess> Process;
    std::shared_ptr<IDebugOutput> DebugOutput;
    std::shared_ptr<IScreen> Screen;
    std::shared_ptr<IMessageBoxes> MessageBoxes;
    std::shared_ptr<IFileDialogs> FileDialogs;
    std::shared_ptr<IClipboard> Clipboard;
    std::shared_ptr<IKeyboard> Keyboard;
};

/// Those of this process: at first the real ones, and the desktop's services without a desktop. The members may be
/// replaced.
[[nodiscard]] VARNHOLT_EXPORT TPlatform& Platform();

/// Puts the facts that were in use at its construction back at its end.
class VARNHOLT_EXPORT TPlatformScope {
public:
    TPlatformScope();
    ~TPlatformScope();
    TPlatformScope(const TPlatformScope&) = delete;
    TPlatformScope& operator=(const TPlatformScope&) = delete;

private:
    const TPlatform FFormer;
};

}  // namespace Varnholt
