#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

#include "Platform/Runtime/Types.h"

/// What the files of this folder share when they call the system.
namespace Varnholt {

/// Repeats a system call as long as a signal interrupts it.
template <typename TCall>
auto Uninterrupted(TCall call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

/// Owns a file descriptor.
class TDescriptor {
public:
    TDescriptor() = default;
    explicit TDescriptor(int handle) noexcept : FHandle(handle) {}
    TDescriptor(TDescriptor&& other) noexcept : FHandle(other.Release()) {}
    TDescriptor& operator=(TDescriptor&& other) noexcept {
        std::swap(FHandle, other.FHandle);
        return *this;
    }
    ~TDescriptor() {
        if (FHandle >= 0) close(FHandle);
    }

    [[nodiscard]] bool IsOpen() const noexcept { return FHandle >= 0; }
    [[nodiscard]] int Get() const noexcept { return FHandle; }
    [[nodiscard]] int Release() noexcept { return std::exchange(FHandle, -1); }

private:
    int FHandle = -1;
};

/// `ACTION file "PATH": REASON`
[[nodiscard]] String FileMessage(StringView action, StringView path, StringView reason);

/// Raises EFCreateError `Cannot create file "PATH": REASON`.
[[noreturn]] void RaiseCannotCreate(StringView path, StringView reason);

/// Waits until the file or folder is on the disk; sets errno on failure. What has no disk, such as a pipe,
/// succeeds.
[[nodiscard]] bool SyncToDisk(int handle) noexcept;

}  // namespace Varnholt
