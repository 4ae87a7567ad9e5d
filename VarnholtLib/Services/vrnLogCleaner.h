#pragma once

#include <memory>

#include "Platform/Runtime/Guid.h"
#include "VarnholtLib/Data/vrnList.h"
#include "VarnholtLib/Services/vrnLog.h"

/// Deletes old log files: those that other programs and log names left in the folder of a log.
///
///     TLogCleanerFactory::GetObject()->Clean();       // in the folder of the default log
///
/// A file is old from the age of five full days of 24 hours on, by its last write time and whatever its name says.
/// The ten newest of the old files are kept, and younger files are neither deleted nor counted. Only regular files
/// directly in the folder whose name ends with ".log", in this case of letters, and is UTF-8, are considered; links
/// are not. A file with a time in the future is not old.
///
/// Uses vrnLog.h, vrnList.h and the clock of Platform.h. Threads: may be called on any thread.
namespace Varnholt {

class VARNHOLT_EXPORT ILogCleaner {
public:
    static constexpr TGuid kGuid = TGuid::FromText(u"{B678409E-E1C1-4232-B9CF-5DCA111C0481}");

    virtual ~ILogCleaner() = default;
    ILogCleaner(const ILogCleaner&) = delete;
    ILogCleaner& operator=(const ILogCleaner&) = delete;

    /// The full paths of the files to delete, the newest first. Files of one date are in the order of their times,
    /// too, and those of one time in that of their names: so a file is never deleted while an older one is kept.
    /// Empty if the folder does not exist, and for a log without a folder, whose file name is relative. Raises
    /// EInOutError (`Cannot list folder "%s": %s` or `Cannot read time of file "%s": %s`).
    [[nodiscard]] virtual TNewList<String> GetFilesToDelete() const = 0;
    /// Deletes these files. One that cannot be deleted stays, silently. Raises as GetFilesToDelete.
    virtual void Clean() = 0;

protected:
    ILogCleaner() = default;
};

class VARNHOLT_EXPORT TLogCleanerFactory {
public:
    TLogCleanerFactory() = delete;

    /// A new cleaner of the folder of that log; without a log, one that finds no file.
    [[nodiscard]] static std::shared_ptr<ILogCleaner> GetObject(const std::shared_ptr<ILog>& log);
    /// The same with the default log. Without one it is a cleaner that finds no file.
    [[nodiscard]] static std::shared_ptr<ILogCleaner> GetObject();
};

}  // namespace Varnholt
