#pragma once

#include <cstdint>
#include <initializer_list>

#include "Platform/Runtime/Types.h"

/// The message dialog: a text, a kind that tells its icon and title, and the buttons to answer with.
///
///     MessageDlg(u"The series has no values.", mtInformation, {mbOK}, 0);
///
/// Who shows it can be exchanged: a desktop program puts a window in, and a test takes the texts down.
///
///     TRecordingService recorder;                         // an IMessageDialogService
///     const TMessageDialogServiceScope scope(recorder);   // until the end of the block
///
/// Without such a service the program counts as one that has no window: the text becomes one write of the
/// text and a line feed to standard error, in UTF-8, and the answer is mbOK whatever the buttons are.
///
/// Threads: the choice of the service carries no lock; exchange it while no other thread shows a message.
/// Which threads may show one is the service's business; standard error takes any.
namespace Varnholt {

enum TMsgDlgType : std::uint8_t { mtWarning, mtError, mtInformation, mtConfirmation, mtCustom };

enum TMsgDlgBtn : std::uint8_t { mbYes, mbNo, mbOK, mbCancel, mbAbort, mbRetry, mbIgnore };

/// A set of buttons.
class TMsgDlgButtons {
public:
    constexpr TMsgDlgButtons(std::initializer_list<TMsgDlgBtn> buttons) noexcept {
        for (const TMsgDlgBtn button : buttons) FBits |= 1U << button;
    }
    [[nodiscard]] constexpr bool Contains(TMsgDlgBtn button) const noexcept {
        return (FBits >> button & 1U) != 0;
    }
    bool operator==(const TMsgDlgButtons&) const = default;

private:
    std::uint32_t FBits = 0;
};

/// Shows message dialogs.
class VARNHOLT_EXPORT IMessageDialogService {
public:
    /// Shows the text and waits for the answer. `helpContext` is the number of the help page behind the
    /// dialog, 0 for none.
    virtual TMsgDlgBtn Show(StringView text, TMsgDlgType dialogType, TMsgDlgButtons buttons,
                            std::int32_t helpContext) = 0;

protected:
    IMessageDialogService() = default;
    IMessageDialogService(const IMessageDialogService&) = default;
    IMessageDialogService& operator=(const IMessageDialogService&) = default;
    ~IMessageDialogService() = default;  // never owned through the interface
};

/// The service of the process.
[[nodiscard]] VARNHOLT_EXPORT IMessageDialogService& MessageDialogService() noexcept;

/// Makes a service that of the process, and the former one again when it goes. The service must outlive the
/// scope. Scopes are nested, the youngest goes first.
class VARNHOLT_EXPORT TMessageDialogServiceScope {
public:
    explicit TMessageDialogServiceScope(IMessageDialogService& service) noexcept;
    ~TMessageDialogServiceScope();
    TMessageDialogServiceScope(const TMessageDialogServiceScope&) = delete;
    TMessageDialogServiceScope& operator=(const TMessageDialogServiceScope&) = delete;

private:
    IMessageDialogService& FFormer;
};

/// Shows a message through the service of the process and returns the button that answered it. What the
/// service raises passes through; the one without a window raises nothing but std::bad_alloc.
VARNHOLT_EXPORT TMsgDlgBtn MessageDlg(StringView text, TMsgDlgType dialogType, TMsgDlgButtons buttons,
                                      std::int32_t helpContext);

}  // namespace Varnholt
