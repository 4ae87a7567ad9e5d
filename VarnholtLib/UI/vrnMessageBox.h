#pragma once

#include <initializer_list>

#include "Platform/Controls/Control.h"
#include "Platform/Runtime/Format.h"
#include "Platform/System/Desktop.h"

/// Message boxes by kind, and what they answer.
///
///     if (ClickedYes(TMsgBox::YesNo(u"Delete %d stations?", {count}, u"Delete?"))) Delete();
///     TMsgBox::Error(u"The latitude is not a number.", u"Latitude", &edLatitude);
///
/// A box belongs to the active form. The operations with a list of values use the text as a format string, and raise as
/// Format. Those with a control give it the focus afterwards, if it still exists and can have it; null for none.
///
/// Uses Application.h. Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT TMsgBox {
public:
    TMsgBox() = delete;
    using TArgs = std::initializer_list<TFormatArg>;

    /// The flags are those of TApplication::MessageBox.
    static TModalResult Show(StringView text, StringView title, std::uint32_t flags,
                             TWinControl* focusControl);

    /// A question.
    static TModalResult YesNo(StringView text, StringView title);
    static TModalResult YesNo(StringView text, TArgs args, StringView title);
    static TModalResult YesNoCancel(StringView text, StringView title);
    static TModalResult YesNoCancel(StringView text, TArgs args, StringView title);
    /// An error, and a message.
    static void Error(StringView text, StringView title, TWinControl* focusControl = nullptr);
    static void Error(StringView text, StringView title, TArgs args, TWinControl* focusControl = nullptr);
    static void Info(StringView text, StringView title, TWinControl* focusControl = nullptr);
    static void Info(StringView text, StringView title, TArgs args, TWinControl* focusControl = nullptr);
};

[[nodiscard]] VARNHOLT_EXPORT bool ClickedOK(TModalResult result) noexcept;
[[nodiscard]] VARNHOLT_EXPORT bool ClickedCancel(TModalResult result) noexcept;
[[nodiscard]] VARNHOLT_EXPORT bool ClickedYes(TModalResult result) noexcept;
[[nodiscard]] VARNHOLT_EXPORT bool ClickedNo(TModalResult result) noexcept;

}  // namespace Varnholt
