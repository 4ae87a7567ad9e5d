#pragma once

#include <cstdint>
#include <memory>

#include "Platform/Runtime/Guid.h"

/// A path as a list of its elements, behind an interface, with a search for a file along the path. vrnPathArray.h
/// compares the three classes for paths.
///
///     const auto path = TPathBreadcrumbFactory::GetObject();
///     path->SetPath(u"C:\\data\\2012\\may");
///     String found;
///     if (path->FindFileFromEnd(u"station.ini", found)) ...   // tried in may, 2012, data, C:
///
/// Threads: an object serves one thread at a time.
namespace Varnholt {

class VARNHOLT_EXPORT IPathBreadcrumb {
public:
    static constexpr TGuid kGuid = TGuid::FromText(u"{01FFDC80-4C7F-4D15-8CEA-C42E2CE86619}");

    virtual ~IPathBreadcrumb() = default;
    /// Looks for a file in the folder of each element, from the last to the first, and not below these folders.
    /// True, with the path of the file, at the first that has it; a file name that begins with a root or drive is
    /// that path itself. Otherwise false, and the path is unchanged.
    [[nodiscard]] virtual bool FindFileFromEnd(StringView fileName, String& foundFileName) const = 0;
    /// The same from the first to the last.
    [[nodiscard]] virtual bool FindFileFromStart(StringView fileName, String& foundFileName) const = 0;
    /// The elements from 0 to the index, each with a backslash after it; all for an index beyond the last, none for
    /// one below
    /// 0.
    [[nodiscard]] virtual String BuildPath(std::int32_t index) const = 0;
    /// The path as it was set.
    [[nodiscard]] virtual String GetPath() const = 0;
    /// Splits a path at each backslash; empty parts are elements, too. An empty path has none.
    virtual void SetPath(StringView path) = 0;
    [[nodiscard]] virtual std::int32_t GetCount() const = 0;
    /// Raises EListError.
    [[nodiscard]] virtual String GetItem(std::int32_t index) const = 0;
};

class VARNHOLT_EXPORT TPathBreadcrumbFactory {
public:
    TPathBreadcrumbFactory() = delete;
    /// A new object with an empty path.
    [[nodiscard]] static std::shared_ptr<IPathBreadcrumb> GetObject();
};

}  // namespace Varnholt
