#pragma once

#include <memory>

#include "Platform/Runtime/Types.h"

/// Shows forms and controls on the user's desktop.
///
///     int main(int argc, char** argv) {
///         Varnholt::TDesktop desktop(argc, argv);
///         TMainForm form;
///         Varnholt::Application().Run(form);
///     }
///
/// While it exists the controls are widgets of Qt, and the services of Platform() (message boxes, file dialogs, clipboard,
/// keyboard, screen) are those of the desktop. Forms, controls and events are used as without it.
///
/// The event loop serves the steps of other threads (MainThread.h) and the timers, also while a message box, a file dialog
/// or a menu is open. What an event raises goes to Application().HandleException.
///
/// Handles of windows are the addresses of their widgets. Fonts are as many pixels high as Font.h says, and bounds are in
/// pixels of 1/96 inch: on a finer screen the toolkit enlarges both.
///
/// Threads: main thread only.
namespace Varnholt {

class TCustomForm;

class VARNHOLT_EXPORT TDesktop {
public:
    /// Takes the toolkit's own options, as `-platform offscreen`, out of the arguments, which must outlive this. A
    /// QApplication that the program has made before is used. One desktop exists at a time, and no form is visible at
    /// its beginning or end: EInvalidOperation `There is a desktop already`. Without a display Qt ends the process with
    /// a message on standard error.
    TDesktop(int& argc, char** argv);
    ~TDesktop();
    TDesktop(const TDesktop&) = delete;
    TDesktop& operator=(const TDesktop&) = delete;

    /// Writes a picture of a form that is shown, with its menu, as a PNG file. EInvalidOperation `Form "%s" is not
    /// shown`, and Exception `Cannot write the picture "%s"`.
    void SavePicture(TCustomForm& form, StringView fileName);

private:
    struct TParts;
    std::unique_ptr<TParts> FParts;
};

}  // namespace Varnholt
