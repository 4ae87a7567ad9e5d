#pragma once

#include "Platform/Controls/Edits.h"

/// Choosing a file to open or to save, starting where the current file is.
///
///     if (BrowseForFileOpen(u"Open a station", edFile, filters.GetFilterString())) Load(edFile.GetText());
///
/// The current file is the text of the variable or the edit. If it names a folder, the dialog starts there; if it
/// names a file, in the folder of that; otherwise the desktop decides. A name that is no folder is also the name in
/// the dialog. If the user chose, the new name is stored there and the result is true; otherwise nothing changes.
/// Saving asks before an existing file is chosen.
///
/// Uses FileDialogs.h. Threads: main thread only.
namespace Varnholt {

VARNHOLT_EXPORT bool BrowseForFileOpen(StringView title, String& fileName, StringView filter);
VARNHOLT_EXPORT bool BrowseForFileOpen(StringView title, TCustomEdit& edit, StringView filter);
/// The default extension, without its full stop, is appended to a name without one.
VARNHOLT_EXPORT bool BrowseForFileSave(StringView title, String& fileName, StringView filter,
                                       StringView defaultExt);
VARNHOLT_EXPORT bool BrowseForFileSave(StringView title, TCustomEdit& edit, StringView filter,
                                       StringView defaultExt);

}  // namespace Varnholt
