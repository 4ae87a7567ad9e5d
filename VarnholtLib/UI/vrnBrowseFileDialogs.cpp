#include "VarnholtLib/UI/vrnBrowseFileDialogs.h"

#include "Platform/Controls/FileDialogs.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Paths.h"

namespace Varnholt {
namespace {

bool Choose(TFileDialog& dialog, StringView title, String& fileName, StringView filter) {
    dialog.SetTitle(title);
    dialog.SetFilter(filter);
    if (!fileName.empty() && DirectoryExists(fileName)) {
        dialog.SetInitialDir(fileName);
    } else {
        dialog.SetFileName(fileName);
        if (!fileName.empty() && FileExists(fileName)) dialog.SetInitialDir(ExtractFilePath(fileName));
    }
    if (!dialog.Execute()) return false;
    fileName = dialog.GetFileName();
    return true;
}

/// The same with the text of an edit as the name.
template <typename TBrowse>
bool WithText(TCustomEdit& edit, TBrowse browse) {
    const TComponentRef<TCustomEdit> target(&edit);
    String fileName = edit.GetText();
    if (!browse(fileName)) return false;
    if (TCustomEdit* const alive = target.Get()) alive->SetText(fileName);
    return true;
}

}  // namespace

bool BrowseForFileOpen(StringView title, String& fileName, StringView filter) {
    TOpenDialog dialog;
    return Choose(dialog, title, fileName, filter);
}

bool BrowseForFileOpen(StringView title, TCustomEdit& edit, StringView filter) {
    return WithText(edit, [&](String& fileName) { return BrowseForFileOpen(title, fileName, filter); });
}

bool BrowseForFileSave(StringView title, String& fileName, StringView filter, StringView defaultExt) {
    TSaveDialog dialog;
    dialog.SetDefaultExt(defaultExt);
    dialog.SetOverwritePrompt(true);
    return Choose(dialog, title, fileName, filter);
}

bool BrowseForFileSave(StringView title, TCustomEdit& edit, StringView filter, StringView defaultExt) {
    return WithText(edit,
                    [&](String& fileName) { return BrowseForFileSave(title, fileName, filter, defaultExt); });
}

}  // namespace Varnholt
