#include <dlfcn.h>
#include <grp.h>
#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <filesystem>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/System/LocalTimePrivate.h"
#include "Platform/System/RealPlatformPrivate.h"

namespace Varnholt {
namespace {

class TRealClock : public IClock {
public:
    TDateTime Now() override {
        const auto now = std::chrono::system_clock::now();
        return ToDateTime(now, Offset(std::chrono::floor<std::chrono::seconds>(now)));
    }

    TDateTime NowUtc() override { return ToUtcDateTime(std::chrono::system_clock::now()); }

private:
    /// The offset in the given second, which is looked up once: the system's look-up takes a lock.
    std::chrono::seconds Offset(std::chrono::sys_seconds now) {
        constexpr std::uint64_t kBias = kOffsetMask / 2 + 1;  // an offset may be negative
        const auto second = static_cast<std::uint64_t>(now.time_since_epoch().count()) << kOffsetBits;
        std::uint64_t known = FKnown.load(std::memory_order_relaxed);
        if ((known & ~kOffsetMask) != second || known == 0) {
            known = second | (static_cast<std::uint64_t>(ZoneOffset(now).count()) + kBias);
            FKnown.store(known, std::memory_order_relaxed);
        }
        return std::chrono::seconds(static_cast<std::int64_t>(known & kOffsetMask) -
                                    static_cast<std::int64_t>(kBias));
    }

    static constexpr int kOffsetBits = 20;  // an offset is less than two days
    static constexpr std::uint64_t kOffsetMask = (1U << kOffsetBits) - 1;

    std::atomic<std::uint64_t> FKnown{0};  // a second and, in its lowest bits, the offset
};

/// Asking the system takes longer than writing a line to a log.
constinit thread_local std::uint32_t threadId = 0;

class TRealProcess : public IProcess {
public:
    // The thread that runs in a forked process has an identifier of its own.
    TRealProcess() {
        pthread_atfork(nullptr, nullptr, [] { threadId = 0; });
    }

    String GetExecutablePath() override {
        std::error_code failure;
        std::string path = std::filesystem::read_symlink("/proc/self/exe", failure).native();
        if (path.empty()) return {};
        // The system marks a file that was deleted or replaced while it runs.
        constexpr std::string_view kMark = " (deleted)";
        if (path.ends_with(kMark) && !std::filesystem::exists(path, failure)) {
            path.resize(path.size() - kMark.size());
        }
        return FromNativePath(path);
    }

    std::uint32_t GetProcessId() override { return static_cast<std::uint32_t>(getpid()); }

    std::uint32_t GetThreadId() override {
        if (threadId == 0) threadId = static_cast<std::uint32_t>(gettid());
        return threadId;
    }

    String GetMachineName() override {
        std::array<char, 256> name{};
        if (gethostname(name.data(), name.size() - 1) != 0) return {};
        return FromUtf8(name.data());
    }

    bool GetIsSuperUser() override { return geteuid() == 0; }

    std::vector<String> GetGroups() override {
        std::vector<gid_t> ids(static_cast<std::size_t>(std::max(getgroups(0, nullptr), 0)));
        const int count = ids.empty() ? 0 : getgroups(static_cast<int>(ids.size()), ids.data());
        ids.resize(static_cast<std::size_t>(std::max(count, 0)));
        ids.push_back(getegid());
        std::vector<String> names;
        for (const gid_t id : ids) {
            std::array<char, 16384> buffer;
            group entry{};
            group* found = nullptr;
            if (getgrgid_r(id, &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr)
                names.push_back(FromUtf8(found->gr_name));
        }
        return names;
    }

    std::vector<String> GetCommandLine() override {
        std::vector<String> arguments;
        std::string bytes;
        try {
            bytes = ReadWholeFile(FromNativePath("/proc/self/cmdline"));
        } catch (const Exception&) {
            return arguments;
        }
        std::string_view rest = bytes;
        while (!rest.empty()) {
            const std::size_t length = std::min(rest.find('\0'), rest.size());
            arguments.push_back(FromUtf8(rest.substr(0, length)));
            rest.remove_prefix(std::min(length + 1, rest.size()));
        }
        return arguments;
    }
};

class TStandardError : public IDebugOutput {
public:
    void Write(StringView text) override {
        const std::string line = ToUtf8(text) + '\n';
        static_cast<void>(!write(STDERR_FILENO, line.data(), line.size()));
    }
};

}  // namespace

void KeepLibraryLoaded(const void* address) noexcept {
    Dl_info facts{};
    if (dladdr(address, &facts) == 0 || facts.dli_fname == nullptr) return;
    // The handle is never closed.
    static_cast<void>(dlopen(facts.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE));
}

TPlatform RealPlatform() {
    TPlatform platform;
    platform.KnownFolders = RealKnownFolders();
    platform.Clock = std::make_shared<TRealClock>();
    platform.Process = std::make_shared<TRealProcess>();
    platform.DebugOutput = std::make_shared<TStandardError>();
    UseNoDesktop(platform);
    return platform;
}

}  // namespace Varnholt
