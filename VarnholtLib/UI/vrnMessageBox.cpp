#include "VarnholtLib/UI/vrnMessageBox.h"

#include "Platform/Controls/Application.h"

namespace Varnholt {
namespace {

constexpr std::uint32_t kYesNoCancel = 3, kYesNo = 4, kStopIcon = 16, kQuestionIcon = 32,
                        kInformationIcon = 64;

}  // namespace

TModalResult TMsgBox::Show(StringView text, StringView title, std::uint32_t flags,
                           TWinControl* focusControl) {
    const TComponentRef<TWinControl> focus(focusControl);
    const TModalResult result = Application().MessageBox(text, title, flags);
    TWinControl* const control = focus.Get();
    if (control != nullptr && control->CanFocus()) control->SetFocus();
    return result;
}

TModalResult TMsgBox::YesNo(StringView text, StringView title) {
    return Show(text, title, kQuestionIcon | kYesNo, nullptr);
}

TModalResult TMsgBox::YesNo(StringView text, TArgs args, StringView title) {
    return YesNo(Format(text, args), title);
}

TModalResult TMsgBox::YesNoCancel(StringView text, StringView title) {
    return Show(text, title, kQuestionIcon | kYesNoCancel, nullptr);
}

TModalResult TMsgBox::YesNoCancel(StringView text, TArgs args, StringView title) {
    return YesNoCancel(Format(text, args), title);
}

void TMsgBox::Error(StringView text, StringView title, TWinControl* focusControl) {
    Show(text, title, kStopIcon, focusControl);
}

void TMsgBox::Error(StringView text, StringView title, TArgs args, TWinControl* focusControl) {
    Error(Format(text, args), title, focusControl);
}

void TMsgBox::Info(StringView text, StringView title, TWinControl* focusControl) {
    Show(text, title, kInformationIcon, focusControl);
}

void TMsgBox::Info(StringView text, StringView title, TArgs args, TWinControl* focusControl) {
    Info(Format(text, args), title, focusControl);
}

bool ClickedOK(TModalResult result) noexcept {
    return result == mrOk;
}

bool ClickedCancel(TModalResult result) noexcept {
    return result == mrCancel;
}

bool ClickedYes(TModalResult result) noexcept {
    return result == mrYes;
}

bool ClickedNo(TModalResult result) noexcept {
    return result == mrNo;
}

}  // namespace Varnholt
