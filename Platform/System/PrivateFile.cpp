#include "Platform/System/PrivateFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Paths.h"

namespace Varnholt {
namespace {

constexpr mode_t kOwnerOnly = 0600;
// Without O_NONBLOCK, opening a pipe would wait for its reader.
constexpr int kFlags = O_WRONLY | O_CREAT | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

[[noreturn]] void Fail(StringView path, StringView reason) {
    throw EFCreateError(Format(u"Cannot create file \"%s\": %s", {path, reason}));
}

}  // namespace

TPrivateFileStream::TPrivateFileStream(StringView path) : TFileStream(path) {
    String reason;
    const auto native = TryToNativePath(path, reason);
    if (!native) Fail(path, reason);
    int handle = -1;
    do {
        handle = open(native->c_str(), kFlags, kOwnerOnly);
    } while (handle < 0 && errno == EINTR);
    if (handle < 0) Fail(path, SystemReason(errno));
    Attach(handle);
    struct stat facts {};
    if (fstat(handle, &facts) != 0) Fail(path, SystemReason(errno));
    if (!S_ISREG(facts.st_mode)) Fail(path, u"It is not a regular file");
    if (facts.st_nlink > 1) Fail(path, u"It has another name");
    if (ftruncate(handle, 0) != 0) Fail(path, SystemReason(errno));
}

void MakePrivateFile(StringView path) {
    String reason;
    const auto native = TryToNativePath(path, reason);
    if (!native) return;
    // Through a link, and without waiting for the reader of a pipe.
    const int handle =
        open(native->c_str(), O_WRONLY | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, kOwnerOnly);
    if (handle < 0) return;
    struct stat facts {};
    const bool isFile = fstat(handle, &facts) == 0 && S_ISREG(facts.st_mode);
    if (isFile && (facts.st_mode & 077) != 0) static_cast<void>(fchmod(handle, facts.st_mode & 0700));
    close(handle);
}

}  // namespace Varnholt
