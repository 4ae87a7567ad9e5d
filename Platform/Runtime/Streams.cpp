#include "Platform/Runtime/Streams.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/Runtime/SystemCallsPrivate.h"

namespace Varnholt {
namespace {

static_assert(sizeof(off_t) == sizeof(std::int64_t), "Files need 64-bit positions");

constexpr std::int64_t kCopyBuffer = 1 << 20;
constexpr std::int64_t kMaxMemorySize = std::int64_t{1} << 40;
constexpr mode_t kNewFileRights = 0666;

int OpenFlags(TFileMode mode) {
    switch (mode) {
        case fmCreate:
            return O_RDWR | O_CREAT | O_TRUNC;
        case fmRewrite:
            return O_WRONLY | O_CREAT | O_TRUNC;
        case fmAppend:
            return O_WRONLY | O_CREAT | O_APPEND;
        case fmOpenRead:
            return O_RDONLY;
        case fmOpenWrite:
            return O_WRONLY;
        case fmOpenReadWrite:
            return O_RDWR;
    }
    throw EArgumentException(u"Unknown file mode");
}

[[noreturn]] void RaiseOpenFailure(StringView path, TFileMode mode, StringView reason) {
    if (mode == fmCreate || mode == fmRewrite) RaiseCannotCreate(path, reason);
    throw EFOpenError(FileMessage(u"Cannot open", path, reason));
}

int OpenFile(StringView path, TFileMode mode) {
    String reason;
    const auto native = TryToNativePath(path, reason);
    if (!native) RaiseOpenFailure(path, mode, reason);
    const int flags = OpenFlags(mode) | O_CLOEXEC;
    const int handle = Uninterrupted([&] { return open(native->c_str(), flags, kNewFileRights); });
    if (handle < 0) RaiseOpenFailure(path, mode, SystemReason(errno));
    struct stat facts {};
    if (fstat(handle, &facts) == 0 && S_ISDIR(facts.st_mode)) {  // a folder can be opened for reading
        close(handle);
        RaiseOpenFailure(path, mode, SystemReason(EISDIR));
    }
    return handle;
}

void CheckMemorySize(std::int64_t size) {
    if (size < 0 || size > kMaxMemorySize) throw EStreamError(u"Invalid size of a memory stream");
}

}  // namespace

String FileMessage(StringView action, StringView path, StringView reason) {
    return Format(u"%s file \"%s\": %s", {action, path, reason});
}

void RaiseCannotCreate(StringView path, StringView reason) {
    throw EFCreateError(FileMessage(u"Cannot create", path, reason));
}

bool SyncToDisk(int handle) noexcept {
    // A pipe or a device has no disk.
    return Uninterrupted([&] { return fsync(handle); }) == 0 || errno == EINVAL || errno == EROFS;
}

String SystemReason(int errorNumber) {
    const char* text = strerrordesc_np(errorNumber);  // unlike strerror: never translated, and thread-safe
    return FromUtf8(text != nullptr ? std::string(text) : "Error " + std::to_string(errorNumber));
}

TStream::~TStream() = default;

String TStream::UnexpectedEndMessage() const {
    return u"Unexpected end of stream";
}

void TStream::ReadBuffer(std::span<std::byte> buffer) {
    while (!buffer.empty()) {
        const std::size_t count = Read(buffer);
        if (count == 0) throw EReadError(UnexpectedEndMessage());
        buffer = buffer.subspan(count);
    }
}

void TStream::WriteBuffer(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const std::size_t count = Write(bytes);
        if (count == 0) throw EWriteError(u"Stream takes no more bytes");
        bytes = bytes.subspan(count);
    }
}

void TStream::CopyFrom(TStream& source, std::int64_t count) {
    if (count < 0) throw EArgumentException(u"Cannot copy a negative number of bytes");
    if (CopyUpTo(source, count) < count) throw EReadError(source.UnexpectedEndMessage());
}

std::int64_t TStream::CopyRestFrom(TStream& source) {
    return CopyUpTo(source, std::numeric_limits<std::int64_t>::max());
}

std::int64_t TStream::CopyUpTo(TStream& source, std::int64_t count) {
    if (&source == this) throw EArgumentException(u"Cannot copy a stream onto itself");
    std::vector<std::byte> buffer(static_cast<std::size_t>(std::min(count, kCopyBuffer)));
    std::int64_t copied = 0;
    while (copied < count) {
        const std::int64_t wanted = std::min(count - copied, kCopyBuffer);
        const std::size_t got = source.Read(std::span(buffer).first(static_cast<std::size_t>(wanted)));
        if (got == 0) break;
        WriteBuffer(std::span(buffer).first(got));
        copied += static_cast<std::int64_t>(got);
    }
    return copied;
}

TMemoryStream::TMemoryStream(std::span<const std::byte> bytes) : FBytes(bytes.begin(), bytes.end()) {}

std::size_t TMemoryStream::Read(std::span<std::byte> buffer) {
    if (FPosition >= GetSize()) return 0;
    const std::size_t position = static_cast<std::size_t>(FPosition);
    const std::size_t count = std::min(buffer.size(), FBytes.size() - position);
    std::ranges::copy(std::span(FBytes).subspan(position, count), buffer.begin());
    FPosition += static_cast<std::int64_t>(count);
    return count;
}

std::size_t TMemoryStream::Write(std::span<const std::byte> bytes) {
    if (bytes.empty()) return 0;
    if (FPosition > kMaxMemorySize || bytes.size() > static_cast<std::size_t>(kMaxMemorySize - FPosition))
        throw EWriteError(u"Memory stream is full");
    const std::size_t position = static_cast<std::size_t>(FPosition);
    try {
        if (position + bytes.size() > FBytes.size()) FBytes.resize(position + bytes.size());
    } catch (const std::bad_alloc&) {
        throw EWriteError(u"Out of memory for a memory stream");
    }
    std::ranges::copy(bytes, FBytes.begin() + FPosition);
    FPosition += static_cast<std::int64_t>(bytes.size());
    return bytes.size();
}

std::int64_t TMemoryStream::Seek(std::int64_t offset, TSeekOrigin origin) {
    const std::int64_t start = origin == soBeginning ? 0 : origin == soCurrent ? FPosition : GetSize();
    std::int64_t position = 0;
    if (__builtin_add_overflow(start, offset, &position) || position < 0)
        throw EStreamError(u"Invalid position in a memory stream");
    FPosition = position;
    return position;
}

void TMemoryStream::SetSize(std::int64_t size) {
    CheckMemorySize(size);
    try {
        FBytes.resize(static_cast<std::size_t>(size));
    } catch (const std::bad_alloc&) {
        throw EStreamError(u"Out of memory for a memory stream");
    }
    FPosition = std::min(FPosition, size);
}

void TMemoryStream::Clear() noexcept {
    FBytes.clear();
    FPosition = 0;
}

TFileStream::TFileStream(StringView path, TFileMode mode) : TFileStream(path) {
    Open(path, mode);
}

TFileStream::~TFileStream() {
    Abandon();
}

void TFileStream::Abandon() noexcept {
    if (FHandle >= 0) close(std::exchange(FHandle, -1));
}

std::unique_ptr<TFileStream> TFileStream::OpenStandard(int handle, StringView name) {
    std::unique_ptr<TFileStream> stream(new TFileStream(name));
    stream->FIsStandard = true;
    constexpr int kFirstOther = STDERR_FILENO + 1;
    stream->FHandle = fcntl(handle, F_DUPFD_CLOEXEC, kFirstOther);
    return stream;
}

std::unique_ptr<TFileStream> TFileStream::StandardInput() {
    auto stream = OpenStandard(STDIN_FILENO, u"standard input");
    if (stream->FHandle < 0) throw EFOpenError(stream->Message(u"Cannot open", SystemReason(errno)));
    return stream;
}

std::unique_ptr<TFileStream> TFileStream::StandardOutput() {
    auto stream = OpenStandard(STDOUT_FILENO, u"standard output");
    if (stream->FHandle < 0) throw EFCreateError(stream->Message(u"Cannot create", SystemReason(errno)));
    return stream;
}

String TFileStream::Message(StringView action, StringView reason) const {
    if (!FIsStandard) return FileMessage(action, FFileName, reason);
    return Format(u"%s %s: %s", {action, FFileName, reason});
}

void TFileStream::Open(StringView path, TFileMode mode) {
    FHandle = OpenFile(path, mode);
}

int TFileStream::Handle() const {
    if (FHandle < 0) throw EStreamError(Message(u"Cannot use", u"It is closed"));
    return FHandle;
}

std::size_t TFileStream::Read(std::span<std::byte> buffer) {
    const int handle = Handle();
    const ssize_t count = Uninterrupted([&] { return read(handle, buffer.data(), buffer.size()); });
    if (count < 0) throw EReadError(Message(u"Cannot read", SystemReason(errno)));
    return static_cast<std::size_t>(count);
}

std::size_t TFileStream::Write(std::span<const std::byte> bytes) {
    const int handle = Handle();
    for (auto rest = bytes; !rest.empty();) {  // the system may write only a part
        const ssize_t count = Uninterrupted([&] { return write(handle, rest.data(), rest.size()); });
        if (count < 0) throw EWriteError(Message(u"Cannot write", SystemReason(errno)));
        rest = rest.subspan(static_cast<std::size_t>(count));
    }
    return bytes.size();
}

std::int64_t TFileStream::Seek(std::int64_t offset, TSeekOrigin origin) {
    const int whence = origin == soBeginning ? SEEK_SET : origin == soCurrent ? SEEK_CUR : SEEK_END;
    const off_t position = lseek(Handle(), offset, whence);
    if (position < 0) throw EStreamError(Message(u"Cannot seek in", SystemReason(errno)));
    return position;
}

std::int64_t TFileStream::GetPosition() const {
    const off_t position = lseek(Handle(), 0, SEEK_CUR);
    if (position < 0) throw EStreamError(Message(u"Cannot seek in", SystemReason(errno)));
    return position;
}

std::int64_t TFileStream::GetSize() const {
    struct stat facts {};
    if (fstat(Handle(), &facts) != 0)
        throw EStreamError(Message(u"Cannot read size of", SystemReason(errno)));
    return facts.st_size;
}

void TFileStream::SetSize(std::int64_t size) {
    const int handle = Handle();
    if (Uninterrupted([&] { return ftruncate(handle, size); }) != 0)
        throw EWriteError(Message(u"Cannot write", SystemReason(errno)));
    if (GetPosition() > size) SetPosition(size);
}

void TFileStream::Flush() {
    const int handle = Handle();
    if (!SyncToDisk(handle)) throw EWriteError(Message(u"Cannot write", SystemReason(errno)));
}

void TFileStream::Close() {
    if (FHandle < 0) return;
    const int result = close(std::exchange(FHandle, -1));
    // An interrupted close has released the file all the same.
    if (result != 0 && errno != EINTR) throw EWriteError(Message(u"Cannot write", SystemReason(errno)));
}

String TFileStream::UnexpectedEndMessage() const {
    return Message(u"Cannot read", u"Unexpected end of file");
}

}  // namespace Varnholt
