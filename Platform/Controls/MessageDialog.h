#pragma once

#include <cstdint>
#include <initializer_list>

#include "Platform/Runtime/Types.h"

/// The message dialog: a text, a kind that determines icon and title, and the buttons for the answer.
///
///     MessageDlg(u"The series has no values.", mtInformation, {mbOK}, 0);
///
/// The service that shows it can be replaced: a desktop program shows a window, and a test records the texts.
///
///     TRecordingService recorder;                         // an IMessageDialogService
///     const TMessageDialogServiceScope scope(recorder);   // until the end of the block
///
/// Without such a service the text and a line feed are written to standard error in one write, in UTF-8, and
/// the answer is mbOK whatever the buttons are.
///
/// Threads: the choice of the service has no lock; replace it while no other thread shows a message. The
/// service decides which threads may show one; standard error may be used by any.
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
    /// Shows the text and waits for the answer. `helpContext` is the number of the help page of the
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

/// Makes a service that of the process until the end of the scope, which restores the former one. The service
/// must outlive the scope. Scopes are nested and end in reverse order.
class VARNHOLT_EXPORT TMessageDialogServiceScope {
public:
    explicit TMessageDialogServiceScope(IMessageDialogService& service) noexcept;
    ~TMessageDialogServiceScope();
    TMessageDialogServiceScope(const TMessageDialogServiceScope&) = delete;
    TMessageDialogServiceScope& operator=(const TMessageDialogServiceScope&) = delete;

private:
    IMessageDialogService& FFormer;
};

/// Shows a message through the service of the process and returns the button that answered it. Passes on
/// what the service raises; the one for standard error raises only std::bad_alloc.
VARNHOLT_EXPORT TMsgDlgBtn MessageDlg(StringView text, TMsgDlgType dialogType, TMsgDlgButtons buttons,
                                      std::int32_t helpContext);

}  // namespace Varnholt
