#pragma once

#include <functional>
#include <vector>

#include "Platform/Controls/Form.h"
#include "Platform/Controls/Timer.h"
#include "Platform/Runtime/Exceptions.h"

/// The application: its messages, its unhandled exceptions, its message boxes, its forms and its screen.
///
///     int main() {
///         TMainForm form;
///         Application().Run(form);
///     }
///
///     Application().Post([&] { form.edName.TypeByUser(u"Bergen"); form.btOk.ClickByUser(); });
///     form.ShowModal();                                                   // a test plays the user
///
/// Messages are the events of the back end, the steps of other threads (MainThread.h), the timers, and the steps
/// that Post hands over.
///
/// Threads: main thread only, except Post.
namespace Varnholt {

using TExceptionEvent = TEvent<TObject*, const Exception&>;

class VARNHOLT_EXPORT TApplication : public TObject {
public:
    /// The title of the boxes of ShowException.
    [[nodiscard]] const String& GetTitle() const noexcept { return FTitle; }
    void SetTitle(StringView title) { FTitle = title; }

    // --- Messages ---

    /// Queue of MainThread.h: hands a step to the main thread and does not wait for it. May be called on any thread.
    void Post(std::function<void()> step);
    /// Handles one message, and waits for it if that is allowed. Returns whether there was one. What it raises goes to
    /// HandleException. Without a back end, waiting ends at once if nothing can send a message.
    bool HandleMessage(bool mayWait);
    /// Handles the messages that are there.
    void ProcessMessages();
    /// Shows the main form and handles messages until it is closed or Terminate is called.
    void Run(TCustomForm& mainForm);
    /// Ends Run and the waiting of the modal forms that are open, which answer mrCancel.
    void Terminate() noexcept;
    /// Whether that was called since Run began.
    [[nodiscard]] bool GetTerminated() const noexcept { return FTerminated; }
    /// The form of Run; null outside of it.
    [[nodiscard]] TCustomForm* GetMainForm() const noexcept { return FMainForm.Get(); }

    // --- Exceptions ---

    /// Called in a handler, with the object whose event raised: gives the exception that is being handled to
    /// OnException, or to ShowException if there is no such event. An exception that is not of the library's family
    /// is given as an Exception with its text. What OnException raises itself goes to ShowException.
    void HandleException(TObject* sender) noexcept;
    /// Shows the message of an exception in a box.
    void ShowException(const Exception& exception);
    [[nodiscard]] const TExceptionEvent& GetOnException() const noexcept { return FOnException; }
    void SetOnException(TExceptionEvent onException) { FOnException = std::move(onException); }

    // --- Message boxes ---

    /// Shows a box of the active form. The flags are the sum of
    /// - the buttons: 0 OK; 1 OK, Cancel; 2 Abort, Retry, Ignore; 3 Yes, No, Cancel; 4 Yes, No; 5 Retry, Cancel
    /// - the icon: 0 none, 16 stop, 32 question, 48 warning, 64 information
    /// - the default button: 0 the first, 256 the second, 512 the third
    /// Other bits are ignored. The title is taken as it is, also an empty one.
    TModalResult MessageBox(StringView text, StringView title, std::uint32_t flags);

protected:
    TApplication();
    ~TApplication() override;

private:
    friend class TCustomForm;
    friend class TTimer;

    bool FireTimer();
    [[nodiscard]] TTimer* NextTimer() const noexcept;
    bool Wait();

    String FTitle;
    TExceptionEvent FOnException;
    TComponentRef<TCustomForm> FMainForm;
    std::vector<TTimer*> FTimers;
    std::vector<std::unique_ptr<TCustomForm>> FReleased;  // destroyed when no event of theirs runs
    std::int32_t FDepth = 0;                              // of messages that are being handled
    std::int64_t FTerminations = 0;
    bool FTerminated = false;
};

/// The application of the process, which is never destroyed.
[[nodiscard]] VARNHOLT_EXPORT TApplication& Application();

/// The visible forms, the cursor and the density of the screen.
class VARNHOLT_EXPORT TScreen {
public:
    [[nodiscard]] std::int32_t GetFormCount() const noexcept;
    /// By its index from 0, in the order in which they were shown. EListError as a list.
    [[nodiscard]] TCustomForm& GetForm(std::int32_t index) const;
    /// The form that receives what the user types; null if there is none.
    [[nodiscard]] TCustomForm* GetActiveForm() const noexcept;
    /// Its control with the focus; null if there is none.
    [[nodiscard]] TWinControl* GetActiveControl() const noexcept;
    /// 0 the default, -11 the hourglass. The cursor, density and size are those of Platform().Screen.
    [[nodiscard]] std::int16_t GetCursor() const;
    void SetCursor(std::int16_t cursor);
    [[nodiscard]] std::int32_t GetPixelsPerInch() const;

private:
    friend class TCustomForm;
    friend class TControl;

    [[nodiscard]] bool IsBlocked(const TCustomForm& form) const noexcept;
    void Activate(TCustomForm& form);
    void FormShown(TCustomForm& form);
    void FormHidden(TCustomForm& form) noexcept;

    std::vector<TCustomForm*> FForms;  // visible ones, in the order in which they were shown
    std::vector<TCustomForm*> FStack;  // the same, the active one last
};

[[nodiscard]] VARNHOLT_EXPORT TScreen& Screen();

}  // namespace Varnholt
