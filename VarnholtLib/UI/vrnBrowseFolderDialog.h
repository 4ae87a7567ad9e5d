#pragma once

#include <cstdint>

#include "Platform/Runtime/Types.h"

/// Choosing a folder.
///
///     String folder = config.ReadString(u"main.folder");
///     if (BrowseForFolderDlg(u"Folder of the stations", folder)) Load(folder);
///
/// An edit field for the name is left to the desktop. Uses Platform().FileDialogs, which returns false without a
/// desktop. The path is the folder in the dialog, and, if the user chose, the new one with a separator at its end;
/// otherwise it is unchanged.
///
/// Threads: main thread only.
namespace Varnholt {

/// Offers folders of the file system, and to create one. The dialog belongs to the active form. Returns whether the
/// user chose.
VARNHOLT_EXPORT bool BrowseForFolderDlg(StringView title, String& path);

/// Offers all folders, and to create one if told to. The dialog belongs to the window of that handle.
VARNHOLT_EXPORT bool SelectDirectoryDialog(std::uintptr_t owner, StringView title, String& path,
                                           bool mayCreate);

}  // namespace Varnholt
