#include "VarnholtLib/UI/vrnBrowseFolderDialog.h"

#include "Platform/System/Platform.h"
#include "VarnholtLib/Foundation/vrnPathText.h"
#include "VarnholtLib/Services/vrnWindowUtils.h"

namespace Varnholt {
namespace {

bool ChooseFolder(TFolderDialogRequest request, String& path) {
    request.Path = path;
    if (!Platform().FileDialogs->ChooseFolder(request) || request.Path.empty()) return false;
    path = PathBelow(request.Path, u"");
    return true;
}

}  // namespace

bool BrowseForFolderDlg(StringView title, String& path) {
    TFolderDialogRequest request;
    request.Title = title;
    request.IsFileSystemOnly = true;
    request.Owner = GetActiveScreenHandle();
    return ChooseFolder(request, path);
}

bool SelectDirectoryDialog(std::uintptr_t owner, StringView title, String& path, bool mayCreate) {
    TFolderDialogRequest request;
    request.Title = title;
    request.MayCreate = mayCreate;
    request.Owner = owner;
    return ChooseFolder(request, path);
}

}  // namespace Varnholt
