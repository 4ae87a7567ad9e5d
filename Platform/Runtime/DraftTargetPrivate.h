#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

#include "Platform/Runtime/SystemCallsPrivate.h"

/// Where a draft replaces a file, and what of the former file the draft keeps.
namespace Varnholt {

/// A file that a draft can replace, or create.
struct TDraftTarget {
    TDescriptor Folder;
    std::string Path;                   ///< of the file, after all symbolic links
    std::string Name;                   ///< of the file in its folder
    std::optional<struct stat> Former;  ///< none where the file does not exist
};

/// The target of a native path; nothing, with an error number, where a draft is impossible.
[[nodiscard]] std::optional<TDraftTarget> FindDraftTarget(const std::string& native, int& error);

/// Gives a new file the group, extended attributes and mode of the former one. False, with an error number,
/// where one of them or the owner cannot be kept.
[[nodiscard]] bool KeepAttributes(int draft, const TDraftTarget& target, int& error);

/// Whether a draft that fails with this error number calls for direct writing: the file itself may well be
/// writable. After any other error, such as a full disk, opening it would destroy it for nothing.
[[nodiscard]] bool CallsForDirectWriting(int error) noexcept;

}  // namespace Varnholt
