#pragma once

#include <cstdint>
#include <vector>

#include "Platform/Runtime/Types.h"

/// What a program asks of the desktop: message boxes, file and folder dialogs, clipboard, keyboard, screen.
/// Platform() holds the services in use. Those without a desktop do what each interface says; a desktop back end,
/// an application or a test puts others in their place:
///
///     TPlatformScope scope;
///     Platform().MessageBoxes = std::make_shared<TRecordingBoxes>();
///
/// Threads: the services serve the main thread. Those without a desktop may be used by any thread, except the clipboard
/// and the screen.
namespace Varnholt {

// --- Message boxes ---

/// What a button, or a form, answers.
using TModalResult = std::int32_t;

inline constexpr TModalResult mrNone = 0;
inline constexpr TModalResult mrOk = 1;
inline constexpr TModalResult mrCancel = 2;
inline constexpr TModalResult mrAbort = 3;
inline constexpr TModalResult mrRetry = 4;
inline constexpr TModalResult mrIgnore = 5;
inline constexpr TModalResult mrYes = 6;
inline constexpr TModalResult mrNo = 7;

enum TMessageIcon : std::uint8_t { miNone, miStop, miQuestion, miWarning, miInformation };

struct TMessageBox {
    String Text;
    String Title;
    TMessageIcon Icon = miNone;
    std::vector<TModalResult> Buttons = {mrOk};  ///< at least one, in the order of the box
    std::size_t DefaultButton = 0;               ///< position from 0 in Buttons
    std::int32_t HelpContext = 0;                ///< the number of the help page; 0 for none
    std::uintptr_t Owner = 0;  ///< the handle of the window that the box belongs to; 0 for none
};

class IMessageBoxes {
public:
    virtual ~IMessageBoxes() = default;
    /// Shows the box and waits for the answer, one of its buttons. Without a desktop the text and a line feed are written
    /// to standard error in one write, in UTF-8, and the answer is the default button.
    virtual TModalResult Show(const TMessageBox& box) = 0;
};

// --- File and folder dialogs ---

struct TFileDialogRequest {
    bool IsSave = false;
    String Title;
    String FileName;    ///< the name in the dialog; after it the name that was chosen, as a full path
    String InitialDir;  ///< the folder where the dialog starts; empty leaves it to the desktop
    String Filter;      ///< `name|pattern|name|pattern`
    std::int32_t FilterIndex = 1;  ///< position from 1 in the filter
    String DefaultExt;             ///< appended to a name without an extension, without its full stop
    bool OverwritePrompt = false;  ///< asks before an existing file is chosen for saving
    std::uintptr_t Owner = 0;
};

struct TFolderDialogRequest {
    String Title;
    String Path;                    ///< the folder in the dialog; after it the one that was chosen
    bool IsFileSystemOnly = false;  ///< offers only folders of the file system
    bool MayCreate = true;          ///< offers to create a folder
    std::uintptr_t Owner = 0;
};

class IFileDialogs {
public:
    virtual ~IFileDialogs() = default;
    /// Lets the user choose. False if the user cancelled, and then the request is unchanged. Without a desktop
    /// always false.
    virtual bool ChooseFile(TFileDialogRequest& request) = 0;
    virtual bool ChooseFolder(TFolderDialogRequest& request) = 0;
};

// --- Clipboard, keyboard, screen ---

class IClipboard {
public:
    virtual ~IClipboard() = default;
    [[nodiscard]] virtual bool HasText() = 0;
    /// Empty if the clipboard has no text.
    [[nodiscard]] virtual String GetText() = 0;
    /// Replaces what the clipboard holds. Without a desktop the text stays in the process.
    virtual void SetText(StringView text) = 0;
};

class IKeyboard {
public:
    virtual ~IKeyboard() = default;
    /// The state of a key by its virtual key code (8 Backspace, 9 Tab, 13 Enter, 16 Shift, 17 Ctrl, 18 Alt, 27 Escape, 32
    /// space, letters and digits by their ASCII codes, ...): bit 7 is on while it is held down, bit 0 while it is
    /// locked. Without a desktop always 0.
    [[nodiscard]] virtual std::int16_t GetKeyState(std::int32_t virtualKey) = 0;
};

class IScreen {
public:
    virtual ~IScreen() = default;
    /// The handle of the window of the screen's active form; 0 if there is none.
    [[nodiscard]] virtual std::uintptr_t GetActiveFormHandle() = 0;
    /// Called by the forms.
    virtual void SetActiveFormHandle(std::uintptr_t handle) = 0;
    /// Puts a window above the others. Without a desktop always false.
    virtual bool BringWindowToTop(std::uintptr_t handle) = 0;
    /// Dots in an inch. Without a desktop 96.
    [[nodiscard]] virtual std::int32_t GetPixelsPerInch() = 0;
    /// In pixels. Without a desktop 1920 by 1080.
    [[nodiscard]] virtual std::int32_t GetWidth() = 0;
    [[nodiscard]] virtual std::int32_t GetHeight() = 0;
    /// The number of the mouse cursor: 0 the default, -11 the hourglass.
    [[nodiscard]] virtual std::int16_t GetCursor() = 0;
    virtual void SetCursor(std::int16_t cursor) = 0;
};

}  // namespace Varnholt
