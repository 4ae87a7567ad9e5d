#include "Platform/Runtime/Paths.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <mutex>
#include <shared_mutex>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Immortal.h"

namespace Varnholt {
namespace {

constexpr std::size_t kLetters = 26;

/// The native root of each drive from A on, without a slash at its end: the root of the tree is an empty
/// text.
using TDriveTable = std::array<std::optional<std::string>, kLetters>;

struct TDrives {
    std::shared_mutex Lock;
    TDriveTable Table;

    TDrives() { Table['C' - 'A'] = std::string(); }
};

TDrives& Drives() {
    static TImmortal<TDrives> drives;
    return *drives;
}

std::optional<std::size_t> DriveIndex(Char letter) {
    if (letter >= u'A' && letter <= u'Z') return static_cast<std::size_t>(letter - u'A');
    if (letter >= u'a' && letter <= u'z') return static_cast<std::size_t>(letter - u'a');
    return std::nullopt;
}

std::size_t DriveIndexOrRaise(Char letter) {
    const auto index = DriveIndex(letter);
    if (!index) throw EArgumentException(u"Drive letter must be a letter from A to Z");
    return *index;
}

bool HasDrive(StringView path) {
    return path.size() >= 2 && path[1] == u':' && DriveIndex(path[0]).has_value();
}

bool IsNative(StringView path) {
    return path.starts_with(u'/');
}

StringView Separators(StringView path) {
    return IsNative(path) ? StringView(u"/") : StringView(u"\\/");
}

bool EndsInSeparator(StringView path) {
    return !path.empty() && Separators(path).find(path.back()) != StringView::npos;
}

/// Length of the folder part, its separator included.
std::size_t FolderLength(StringView path) {
    const std::size_t separator = path.find_last_of(Separators(path));
    if (separator != StringView::npos) return separator + 1;
    return HasDrive(path) ? 2 : 0;
}

std::string WithSlashes(StringView path) {
    std::string native = ToUtf8(path);
    std::ranges::replace(native, '\\', '/');
    return native;
}

std::optional<std::string> DriveRoot(std::size_t index) {
    TDrives& drives = Drives();
    const std::shared_lock guard(drives.Lock);
    return drives.Table[index];
}

std::optional<std::string> OnDrive(Char letter, StringView rest, String& reason) {
    const auto root = DriveRoot(*DriveIndex(letter));
    if (!root) {
        reason = Format(u"Drive %s: is not known", {String(1, letter)});
        return std::nullopt;
    }
    const bool rooted = rest.starts_with(u'\\') || rest.starts_with(u'/');
    // The drive without a path is its root folder, which is a slash for the root of the tree.
    const bool slash = !rooted && (!rest.empty() || root->empty());
    return *root + (slash ? "/" : "") + WithSlashes(rest);
}

/// The part of the path below the root, or nothing if it is elsewhere: /home is no root of /homes.
std::optional<std::string_view> BelowRoot(std::string_view native, const std::string& root) {
    if (!native.starts_with(root)) return std::nullopt;
    native.remove_prefix(root.size());
    if (!native.empty() && native.front() != '/') return std::nullopt;
    return native;
}

std::string WorkingDirectory() {
    std::error_code failure;
    const std::filesystem::path folder = std::filesystem::current_path(failure);
    if (failure) throw EInOutError(u"The working directory does not exist");
    return folder.native();
}

}  // namespace

String ExtractFileName(StringView path) {
    return String(path.substr(FolderLength(path)));
}

String ExtractFilePath(StringView path) {
    return String(path.substr(0, FolderLength(path)));
}

String ExcludeTrailingPathDelimiter(StringView path) {
    return String(path.substr(0, path.size() - (EndsInSeparator(path) ? 1 : 0)));
}

std::optional<std::string> TryToNativePath(StringView path, String& reason) {
    if (path.find(u'\0') != StringView::npos) {
        reason = u"It holds a zero character";
        return std::nullopt;
    }
    if (path.starts_with(u"\\\\")) {
        reason = u"Network paths are not supported";
        return std::nullopt;
    }
    if (IsNative(path)) return ToUtf8(path);
    if (HasDrive(path)) return OnDrive(path[0], path.substr(2), reason);
    if (path.starts_with(u'\\')) return OnDrive(u'C', path, reason);
    return WithSlashes(path);
}

std::string ToNativePath(StringView path) {
    String reason;
    auto native = TryToNativePath(path, reason);
    if (!native) throw EInOutError(Format(u"Cannot use path \"%s\": %s", {path, reason}));
    return *std::move(native);
}

String FromNativePath(std::string_view native) {
    if (!native.starts_with('/')) {
        String relative = FromUtf8(native);
        const bool plain = relative.find(u'\\') == String::npos && !HasDrive(relative);
        if (!plain) return FromNativePath(WorkingDirectory() + "/" + std::string(native));
        std::ranges::replace(relative, u'/', u'\\');
        return relative;
    }
    if (native.find('\\') != std::string_view::npos) return FromUtf8(native);

    TDrives& drives = Drives();
    const std::shared_lock guard(drives.Lock);
    std::optional<std::size_t> best;
    for (std::size_t i = 0; i < kLetters; ++i) {
        const auto& root = drives.Table[i];
        if (!root || !BelowRoot(native, *root)) continue;
        if (!best || root->size() > drives.Table[*best]->size()) best = i;
    }
    if (!best) return FromUtf8(native);
    String path = FromUtf8(*BelowRoot(native, *drives.Table[*best]));
    std::ranges::replace(path, u'/', u'\\');
    if (path.empty()) path = u"\\";
    return String{static_cast<Char>(u'A' + *best), u':'} + path;
}

void SetDrive(Char letter, std::string_view nativeRoot) {
    const std::size_t index = DriveIndexOrRaise(letter);
    if (!nativeRoot.starts_with('/') || nativeRoot.find('\0') != std::string_view::npos)
        throw EArgumentException(u"Root of a drive must be an absolute path: \"" + FromUtf8(nativeRoot) +
                                 u"\"");
    while (nativeRoot.ends_with('/')) nativeRoot.remove_suffix(1);
    TDrives& drives = Drives();
    const std::unique_lock guard(drives.Lock);
    drives.Table[index] = std::string(nativeRoot);
}

void RemoveDrive(Char letter) {
    const std::size_t index = DriveIndexOrRaise(letter);
    TDrives& drives = Drives();
    const std::unique_lock guard(drives.Lock);
    drives.Table[index].reset();
}

struct TDriveTableScope::TSaved {
    TDriveTable Table;
};

TDriveTableScope::TDriveTableScope() : FSaved(std::make_unique<TSaved>()) {
    TDrives& drives = Drives();
    const std::shared_lock guard(drives.Lock);
    FSaved->Table = drives.Table;
}

TDriveTableScope::~TDriveTableScope() {
    TDrives& drives = Drives();
    const std::unique_lock guard(drives.Lock);
    drives.Table.swap(FSaved->Table);
}

}  // namespace Varnholt
