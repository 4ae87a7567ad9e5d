#pragma once

#include "Platform/Controls/Component.h"
#include "Platform/System/Desktop.h"

/// The dialogs that open and save files.
///
///     TOpenDialog dialog;
///     dialog.SetTitle(u"Open a station");
///     dialog.SetFilter(u"Comma-separated (*.csv)|*.csv|All files|*.*");
///     if (dialog.Execute()) Load(dialog.GetFileName());
///
/// Platform().FileDialogs shows them. Without a desktop Execute returns false.
///
/// Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT TFileDialog : public TComponent {
public:
    ~TFileDialog() override;

    [[nodiscard]] const String& GetTitle() const noexcept { return FRequest.Title; }
    void SetTitle(StringView title) { FRequest.Title = title; }
    /// The name in the dialog, and after it the one that was chosen.
    [[nodiscard]] const String& GetFileName() const noexcept { return FRequest.FileName; }
    void SetFileName(StringView fileName) { FRequest.FileName = fileName; }
    /// The folder where the dialog starts; empty leaves it to the desktop.
    [[nodiscard]] const String& GetInitialDir() const noexcept { return FRequest.InitialDir; }
    void SetInitialDir(StringView folder) { FRequest.InitialDir = folder; }
    /// `name|pattern|name|pattern`, and which of them is chosen, from 1.
    [[nodiscard]] const String& GetFilter() const noexcept { return FRequest.Filter; }
    void SetFilter(StringView filter) { FRequest.Filter = filter; }
    [[nodiscard]] std::int32_t GetFilterIndex() const noexcept { return FRequest.FilterIndex; }
    void SetFilterIndex(std::int32_t index) noexcept { FRequest.FilterIndex = index; }
    /// Appended to a name without an extension; without its full stop.
    [[nodiscard]] const String& GetDefaultExt() const noexcept { return FRequest.DefaultExt; }
    void SetDefaultExt(StringView extension) { FRequest.DefaultExt = extension; }

    /// Shows the dialog for the active form. False if the user cancelled; the settings are then unchanged.
    bool Execute();

protected:
    explicit TFileDialog(bool isSave);

    TFileDialogRequest FRequest;
};

class VARNHOLT_EXPORT TOpenDialog : public TFileDialog {
public:
    TOpenDialog();
    ~TOpenDialog() override;
};

class VARNHOLT_EXPORT TSaveDialog : public TFileDialog {
public:
    TSaveDialog();
    ~TSaveDialog() override;
    /// Whether the user is asked before an existing file is chosen; false at first.
    [[nodiscard]] bool GetOverwritePrompt() const noexcept { return FRequest.OverwritePrompt; }
    void SetOverwritePrompt(bool prompt) noexcept { FRequest.OverwritePrompt = prompt; }
};

}  // namespace Varnholt
