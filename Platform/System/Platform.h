#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "Platform/Runtime/DateTime.h"

/// The facts of the machine and of the process that tests replace: folders, clock, process, debug output.
///
///     const String file = Platform().Process->GetExecutablePath();
///
///     TPlatformScope scope;                       // in a test: until its end the process sees these
///     Platform().Clock = std::make_shared<TFixedClock>();
///
/// Threads: the facts themselves may be read from any thread. Replacing them has no lock; do it while no other thread
/// reads them.
namespace Varnholt {

/// The folders that the operating system names.
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
    /// The path in library form without a separator at its end; empty if this system has no such folder or it can
    /// neither be found nor created.
    [[nodiscard]] virtual String Find(TKnownFolder folder) = 0;
};

class IClock {
public:
    virtual ~IClock() = default;
    /// The current time in the user's time zone.
    [[nodiscard]] virtual TDateTime Now() = 0;
};

class IProcess {
public:
    virtual ~IProcess() = default;
    /// The full path of the running program, in library form.
    [[nodiscard]] virtual String GetExecutablePath() = 0;
    [[nodiscard]] virtual std::uint32_t GetProcessId() = 0;
    /// The operating system's identifier of the calling thread.
    [[nodiscard]] virtual std::uint32_t GetThreadId() = 0;
    [[nodiscard]] virtual String GetMachineName() = 0;
    /// The arguments of the command line; the first is the program as it was called.
    [[nodiscard]] virtual std::vector<String> GetCommandLine() = 0;
};

class IDebugOutput {
public:
    virtual ~IDebugOutput() = default;
    virtual void Write(StringView text) = 0;
};

/// The facts in use. No member is ever null.
struct TPlatform {
    std::shared_ptr<IKnownFolders> KnownFolders;
    std::shared_ptr<IClock> Clock;
    std::shared_ptr<IProcess> Process;
    std::shared_ptr<IDebugOutput> DebugOutput;
};

/// Those of this process, real by default. The members may be replaced.
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
