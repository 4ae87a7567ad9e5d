#include "VarnholtLib/Services/vrnLogCleaner.h"

#include <chrono>
#include <cmath>
#include <filesystem>
#include <limits>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/Runtime/Streams.h"
#include "Platform/System/LocalTime.h"
#include "Platform/System/Platform.h"

namespace Varnholt {
namespace {

namespace fs = std::filesystem;

constexpr double kMaxDays = 4;           // whole days of a file that is not old
constexpr std::int32_t kKeptFiles = 10;  // of the old ones

struct TFileItem {
    String FileName;
    TDateTime Time;  // in UTC

    bool operator==(const TFileItem&) const = default;
};

void Check(const std::error_code& failure, StringView what, StringView path) {
    if (!failure) return;
    throw EInOutError(Format(u"Cannot %s \"%s\": %s", {what, path, SystemReason(failure.value())}));
}

/// Negative for a time in the future.
double WholeDays(TDateTime time, TDateTime now) {
    constexpr double kMillisecondsPerDay = 86'400'000;
    return std::trunc(std::round((now - time) * kMillisecondsPerDay) / kMillisecondsPerDay);
}

/// The last write time in UTC; infinite for one that no clock can reach.
TDateTime LastWriteTime(const fs::directory_entry& entry, StringView path) {
    using TClock = std::chrono::system_clock;
    std::error_code failure;
    const fs::file_time_type time = entry.last_write_time(failure);
    if (failure == std::errc::value_too_large) return std::numeric_limits<TDateTime>::infinity();
    Check(failure, u"read time of file", path);
    const auto systemTime = std::chrono::file_clock::to_sys(time);
    return ToUtcDateTime(std::chrono::time_point_cast<TClock::duration>(systemTime));
}

TNewList<TFileItem> ListLogFiles(const String& folder) {
    auto files = std::make_shared<TInterfacedList<TFileItem>>();
    std::error_code failure;
    fs::directory_iterator entry(ToNativePath(folder), failure);
    for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
        std::error_code unknown;
        const std::string& native = entry->path().native();
        const bool isRegular = fs::is_regular_file(entry->symlink_status(unknown));
        if (!native.ends_with(".log") || !isRegular) continue;
        // A name that is not UTF-8 would stand for another file.
        const String path = FromNativePath(native);
        if (ToNativePath(path) == native) files->Add({path, LastWriteTime(*entry, path)});
    }
    Check(failure, u"list folder", folder);
    return TNewList<TFileItem>(files);
}

/// A path that depends on the working directory is that of a log without a folder.
bool IsAbsolute(StringView path) {
    return path.starts_with(u'/') || path.starts_with(u'\\') || path.substr(0, 2).ends_with(u':');
}

/// The newest first. The calendar dates are then in that order, too.
std::int32_t CompareNewestFirst(const TFileItem& a, const TFileItem& b) {
    if (a.Time != b.Time) return a.Time > b.Time ? -1 : 1;
    return a.FileName.compare(b.FileName);
}

class TLogCleaner : public ILogCleaner {
public:
    explicit TLogCleaner(std::shared_ptr<ILog> log) noexcept : FLog(std::move(log)) {}

    TNewList<String> GetFilesToDelete() const override {
        const auto paths = std::make_shared<TInterfacedList<String>>();
        const String folder = ExtractFilePath(FLog->GetLogFileName());
        if (!IsAbsolute(folder) || !DirectoryExists(folder)) return TNewList<String>(paths);
        const TDateTime now = Platform().Clock->NowUtc();
        const auto isOld = [now](const TFileItem& file) { return WholeDays(file.Time, now) > kMaxDays; };
        const auto old = ListLogFiles(folder)->Where(isOld)->OrderBy(CompareNewestFirst);
        for (const TFileItem& file : old->Skip(kKeptFiles)) paths->Add(file.FileName);
        return TNewList<String>(paths);
    }

    void Clean() override {
        for (const String& path : GetFilesToDelete()) {
            try {
                DeleteFile(path);
            } catch (const EInOutError&) {  // it stays until a later clean
            }
        }
    }

private:
    std::shared_ptr<ILog> FLog;
};

class TNilLogCleaner : public ILogCleaner {
public:
    TNewList<String> GetFilesToDelete() const override {
        return TNewList<String>(std::make_shared<TInterfacedList<String>>());
    }
    void Clean() override {}
};

}  // namespace

std::shared_ptr<ILogCleaner> TLogCleanerFactory::GetObject(const std::shared_ptr<ILog>& log) {
    if (!log) return std::make_shared<TNilLogCleaner>();
    return std::make_shared<TLogCleaner>(log);
}

std::shared_ptr<ILogCleaner> TLogCleanerFactory::GetObject() {
    return GetObject(HasDefaultLog() ? DefaultLog() : nullptr);
}

}  // namespace Varnholt
