#include "Platform/Runtime/DraftTargetPrivate.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <sys/xattr.h>

#include <climits>
#include <string_view>

namespace Varnholt {
namespace {

constexpr int kMaxLinks = 40;   // as many as the system follows
constexpr int kDirect = EPERM;  // one that calls for direct writing
constexpr const char* kAccessList = "system.posix_acl_access";

/// The part of a path up to its last slash.
std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

// Links there name a file that is open already, by a path that need not lead to it.
bool IsOnProcessFileSystem(const std::string& folder) {
    struct statfs facts {};
    return statfs(folder.c_str(), &facts) == 0 && facts.f_type == PROC_SUPER_MAGIC;
}

std::optional<std::string> ReadLink(const std::string& path) {
    std::string text(PATH_MAX, '\0');
    const ssize_t length = readlink(path.c_str(), text.data(), text.size());
    if (length <= 0 || static_cast<std::size_t>(length) == text.size()) return std::nullopt;
    text.resize(static_cast<std::size_t>(length));
    return text;
}

/// Follows the symbolic links of the last name, the last of which may be dangling.
std::optional<std::string> WithoutLinks(std::string path) {
    for (int i = 0; i <= kMaxLinks; ++i) {
        if (path.empty() || path.back() == '/') return std::nullopt;
        struct stat facts {};
        if (lstat(path.c_str(), &facts) != 0) return errno == ENOENT ? std::optional(path) : std::nullopt;
        if (!S_ISLNK(facts.st_mode)) return path;
        const std::string folder = FolderOf(path);
        if (IsOnProcessFileSystem(folder)) return std::nullopt;
        const auto link = ReadLink(path);
        if (!link) return std::nullopt;
        path = link->starts_with('/') ? *link : folder + *link;
    }
    return std::nullopt;
}

/// Whether it is a mount point, immutable or only to be appended to: a rename would fail.
bool IsPinned(int folder, const char* name) {
    struct statx facts {};
    constexpr int kFlags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_EMPTY_PATH;
    if (statx(folder, name, kFlags, STATX_BASIC_STATS, &facts) != 0) return false;
    const bool isMount = *name != '\0' && (facts.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    return isMount || (facts.stx_attributes & (STATX_ATTR_APPEND | STATX_ATTR_IMMUTABLE)) != 0;
}

bool MayBeReplaced(const TDraftTarget& target) {
    const struct stat& former = *target.Former;
    return S_ISREG(former.st_mode) && former.st_nlink == 1 && former.st_uid == geteuid() &&
           faccessat(target.Folder.Get(), target.Name.c_str(), W_OK, AT_EACCESS) == 0 &&
           !IsPinned(target.Folder.Get(), target.Name.c_str());
}

TDescriptor OpenFolder(const std::string& path) {
    constexpr int kFlags = O_DIRECTORY | O_CLOEXEC;
    TDescriptor folder(Uninterrupted([&] { return open(path.c_str(), O_RDONLY | kFlags); }));
    if (folder.IsOpen() || errno != EACCES) return folder;
    return TDescriptor(Uninterrupted([&] { return open(path.c_str(), O_PATH | kFlags); }));
}

// A write by anyone removes the capabilities, and the kernel computes the other two from the content.
bool BelongsToContent(std::string_view attribute) {
    return attribute == "security.capability" || attribute == "security.ima" || attribute == "security.evm";
}

/// The value of an attribute; empty where it cannot be read.
template <typename TGet>
std::optional<std::string> Value(TGet get) {
    const ssize_t size = get(nullptr, 0);
    if (size < 0) return std::nullopt;
    std::string value(static_cast<std::size_t>(size), '\0');
    if (get(value.data(), value.size()) != size) return std::nullopt;
    return value;
}

bool KeepAttribute(int draft, const std::string& path, const char* name) {
    if (BelongsToContent(name)) return true;
    const auto former =
        Value([&](char* to, std::size_t size) { return lgetxattr(path.c_str(), name, to, size); });
    if (!former) return false;
    const auto present = Value([&](char* to, std::size_t size) { return fgetxattr(draft, name, to, size); });
    return present == former || fsetxattr(draft, name, former->data(), former->size(), 0) == 0;
}

bool KeepExtendedAttributes(int draft, const std::string& path) {
    const auto names = Value([&](char* to, std::size_t size) { return llistxattr(path.c_str(), to, size); });
    if (!names) return errno == EOPNOTSUPP;
    bool hasAccessList = false;
    for (std::size_t at = 0; at < names->size();) {
        const std::string name(names->c_str() + at);
        if (!KeepAttribute(draft, path, name.c_str())) return false;
        hasAccessList = hasAccessList || name == kAccessList;
        at += name.size() + 1;
    }
    // The folder may have given the draft a list of its own.
    return hasAccessList || fremovexattr(draft, kAccessList) == 0 || errno == ENODATA || errno == EOPNOTSUPP;
}

}  // namespace

std::optional<TDraftTarget> FindDraftTarget(const std::string& native, int& error) {
    error = kDirect;
    auto path = WithoutLinks(native);
    if (!path) return std::nullopt;
    TDraftTarget target;
    target.Path = *std::move(path);
    target.Name = target.Path.substr(target.Path.rfind('/') + 1);
    target.Folder = OpenFolder(FolderOf(target.Path));
    if (!target.Folder.IsOpen()) {
        error = errno;
        return std::nullopt;
    }
    if (IsPinned(target.Folder.Get(), "")) return std::nullopt;
    struct stat facts {};
    if (fstatat(target.Folder.Get(), target.Name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) == 0) {
        target.Former = facts;
        if (!MayBeReplaced(target)) return std::nullopt;
    } else if (errno != ENOENT) {
        error = errno;
        return std::nullopt;
    }
    return target;
}

// The group first and the mode last: at no moment may more users open the draft than the former file.
bool KeepAttributes(int draft, const TDraftTarget& target, int& error) {
    constexpr mode_t kModeBits = 07777;
    const struct stat& former = *target.Former;
    struct stat kept {};
    const bool isSet = fchown(draft, static_cast<uid_t>(-1), former.st_gid) == 0 &&
                       KeepExtendedAttributes(draft, target.Path) &&
                       fchmod(draft, former.st_mode & kModeBits) == 0 && fstat(draft, &kept) == 0;
    error = isSet ? kDirect : errno;
    return isSet && kept.st_uid == former.st_uid && kept.st_gid == former.st_gid &&
           kept.st_mode == former.st_mode;
}

bool CallsForDirectWriting(int error) noexcept {
    return error == EPERM || error == EACCES || error == EOPNOTSUPP || error == EINVAL;
}

}  // namespace Varnholt
