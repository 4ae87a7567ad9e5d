#include "VarnholtLib/Services/vrnSpecialFolders.h"

#include <algorithm>

#include "Platform/System/Platform.h"
#include "VarnholtLib/Foundation/vrnPathText.h"

namespace Varnholt {
namespace {

struct TNumberedFolder {
    std::int32_t Number;
    TKnownFolder Folder;
};

constexpr TNumberedFolder kFolders[] = {
    {5, kfPersonal}, {26, kfAppData},      {28, kfLocalAppData}, {35, kfCommonAppData},   {36, kfWindows},
    {37, kfSystem},  {38, kfProgramFiles}, {39, kfMyPictures},   {46, kfCommonDocuments},
};

String FolderOf(std::int32_t csidl) {
    String path;
    TSpecialFolders::GetSpecialFolderString(path, csidl);
    return path;
}

}  // namespace

String TSpecialFolders::GetAppData() {
    return FolderOf(26);
}

String TSpecialFolders::GetCommonAppData() {
    return FolderOf(35);
}

String TSpecialFolders::GetCommonDocuments() {
    return FolderOf(46);
}

String TSpecialFolders::GetLocalAppData() {
    return FolderOf(28);
}

String TSpecialFolders::GetMyPictures() {
    return FolderOf(39);
}

String TSpecialFolders::GetPersonal() {
    return FolderOf(5);
}

String TSpecialFolders::GetProgramFiles() {
    return FolderOf(38);
}

String TSpecialFolders::GetSystem() {
    return FolderOf(37);
}

String TSpecialFolders::GetWindows() {
    return FolderOf(36);
}

bool TSpecialFolders::GetSpecialFolderString(String& path, std::int32_t csidl) {
    const auto row = std::ranges::find(kFolders, csidl, &TNumberedFolder::Number);
    if (row == std::ranges::end(kFolders)) return false;
    String folder = Platform().KnownFolders->Find(row->Folder);
    if (folder.empty()) return false;
    const bool hasDrive = EnsurePathString(folder);
    if (!hasDrive && !folder.ends_with(u'/')) folder += u'/';
    path = folder;
    return true;
}

}  // namespace Varnholt
