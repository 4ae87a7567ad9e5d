#pragma once

#include <cstdint>

#include "Platform/Runtime/EnumSet.h"
#include "Platform/System/Desktop.h"

/// The message dialog: a text, a kind that determines icon and title, and the buttons for the answer.
///
///     MessageDlg(u"The series has no values.", mtInformation, {mbOK}, 0);
///
/// Platform().MessageBoxes shows it. Without a desktop it writes the text to standard error and answers with the first
/// button.
///
/// Threads: as the service.
namespace Varnholt {

enum TMsgDlgType : std::uint8_t { mtWarning, mtError, mtInformation, mtConfirmation, mtCustom };

enum TMsgDlgBtn : std::uint8_t { mbYes, mbNo, mbOK, mbCancel, mbAbort, mbRetry, mbIgnore };

using TMsgDlgButtons = TEnumSet<TMsgDlgBtn>;

/// Shows a message and returns the answer of the button. The buttons are in the order of TMsgDlgBtn; without any
/// there is an OK button. The title is "Warning", "Error", "Information", "Confirm" or empty. `helpContext` is the
/// number of the help page of the dialog, 0 for none. Passes on what the service raises; the one without a desktop
/// raises only std::bad_alloc.
VARNHOLT_EXPORT TModalResult MessageDlg(StringView text, TMsgDlgType dialogType, TMsgDlgButtons buttons,
                                        std::int32_t helpContext);

}  // namespace Varnholt
