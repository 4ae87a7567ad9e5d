#include "VarnholtLib/Files/vrnPathBreadcrumb.h"

#include <algorithm>
#include <vector>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Indexes.h"
#include "VarnholtLib/Foundation/vrnString.h"

namespace Varnholt {
namespace {

class TPathBreadcrumb final : public IPathBreadcrumb {
public:
    bool FindFileFromEnd(StringView fileName, String& foundFileName) const override {
        for (std::int32_t i = GetCount() - 1; i >= 0; --i)
            if (HasFile(i, fileName, foundFileName)) return true;
        return false;
    }

    bool FindFileFromStart(StringView fileName, String& foundFileName) const override {
        for (std::int32_t i = 0; i < GetCount(); ++i)
            if (HasFile(i, fileName, foundFileName)) return true;
        return false;
    }

    String BuildPath(std::int32_t index) const override {
        String path;
        for (std::int32_t i = 0; i <= std::min(index, GetCount() - 1); ++i) path.append(GetItem(i)) += u'\\';
        return path;
    }

    String GetPath() const override { return FPath; }

    void SetPath(StringView path) override {
        FBreadcrumb = SplitString(path, u'\\', false);
        FPath = path;
    }

    std::int32_t GetCount() const override { return static_cast<std::int32_t>(FBreadcrumb.size()); }
    String GetItem(std::int32_t index) const override {
        return FBreadcrumb[ListIndex(index, FBreadcrumb.size())];
    }

private:
    bool HasFile(std::int32_t index, StringView fileName, String& foundFileName) const {
        const bool isRooted = fileName.starts_with(u'\\') || fileName.starts_with(u'/') ||
                              (fileName.size() > 1 && fileName[1] == u':');
        const String candidate = isRooted ? String(fileName) : BuildPath(index).append(fileName);
        if (!FileExists(candidate)) return false;
        foundFileName = candidate;
        return true;
    }

    String FPath;
    std::vector<String> FBreadcrumb;
};

}  // namespace

std::shared_ptr<IPathBreadcrumb> TPathBreadcrumbFactory::GetObject() {
    return std::make_shared<TPathBreadcrumb>();
}

}  // namespace Varnholt
