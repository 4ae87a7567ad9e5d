#include "Platform/Runtime/Files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <optional>

#include "Platform/Runtime/DraftFile.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Paths.h"

namespace Varnholt {
namespace {

constexpr std::size_t kReadPiece = 1 << 16;
constexpr std::int64_t kMaxHint = 1 << 30;

[[noreturn]] void Fail(StringView what, StringView reason) {
    throw EInOutError(Format(u"Cannot %s: %s", {what, reason}));
}

std::string NativeOrFail(StringView path, StringView what) {
    String reason;
    auto native = TryToNativePath(path, reason);
    if (!native) Fail(what, reason);
    return *std::move(native);
}

std::optional<struct stat> Facts(StringView path) {
    String reason;
    const auto native = TryToNativePath(path, reason);
    struct stat facts {};
    if (!native || stat(native->c_str(), &facts) != 0) return std::nullopt;
    return facts;
}

}  // namespace

bool FileExists(StringView path) {
    const auto facts = Facts(path);
    return facts && !S_ISDIR(facts->st_mode);
}

bool RegularFileExists(StringView path) {
    const auto facts = Facts(path);
    return facts && S_ISREG(facts->st_mode);
}

bool DirectoryExists(StringView path) {
    const auto facts = Facts(path);
    return facts && S_ISDIR(facts->st_mode);
}

bool IsSameFile(StringView a, StringView b) {
    const auto left = Facts(a);
    const auto right = Facts(b);
    return left && right && left->st_dev == right->st_dev && left->st_ino == right->st_ino;
}

std::int64_t FileSize(StringView path) {
    const String what = Format(u"read size of file \"%s\"", {path});
    const std::string native = NativeOrFail(path, what);
    struct stat facts {};
    if (stat(native.c_str(), &facts) != 0) Fail(what, SystemReason(errno));
    if (S_ISDIR(facts.st_mode)) Fail(what, SystemReason(EISDIR));
    return facts.st_size;
}

void DeleteFile(StringView path) {
    const String what = Format(u"delete file \"%s\"", {path});
    const std::string native = NativeOrFail(path, what);
    if (unlink(native.c_str()) != 0) Fail(what, SystemReason(errno));
}

void RenameFile(StringView oldPath, StringView newPath) {
    const String what = Format(u"rename \"%s\" to \"%s\"", {oldPath, newPath});
    const std::string oldNative = NativeOrFail(oldPath, what);
    const std::string newNative = NativeOrFail(newPath, what);
    if (std::rename(oldNative.c_str(), newNative.c_str()) != 0) Fail(what, SystemReason(errno));
}

void ForceDirectories(StringView path) {
    const String what = Format(u"create folder \"%s\"", {path});
    const std::string native = NativeOrFail(path, what);
    std::error_code failure;
    std::filesystem::create_directories(native, failure);
    if (failure) Fail(what, SystemReason(failure.value()));
    if (!DirectoryExists(path)) Fail(what, SystemReason(ENOTDIR));
}

void RemoveDirectory(StringView path) {
    const String what = Format(u"delete folder \"%s\"", {path});
    const std::string native = NativeOrFail(path, what);
    if (rmdir(native.c_str()) != 0) Fail(what, SystemReason(errno));
}

void WriteFileInOneGo(StringView path, std::string_view bytes) {
    TDraftFileStream file(path);
    file.WriteBuffer(BytesOf(bytes));
    file.Commit();
}

std::string ReadWholeFile(StringView path) {
    TFileStream file(path, fmOpenRead);
    std::string bytes;
    std::size_t used = 0;
    // The size is only a hint: some files of the system report 0 although they have content, others far too
    // much.
    std::size_t piece = static_cast<std::size_t>(std::clamp<std::int64_t>(file.GetSize(), 0, kMaxHint)) + 1;
    while (true) {
        bytes.resize(used + piece);
        const std::size_t count = file.Read(WritableBytesOf(bytes).subspan(used));
        used += count;
        if (count == 0) break;
        piece = kReadPiece;
    }
    bytes.resize(used);
    return bytes;
}

}  // namespace Varnholt
