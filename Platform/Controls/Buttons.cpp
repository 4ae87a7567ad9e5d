#include "Platform/Controls/Buttons.h"

#include "Platform/Controls/Form.h"

namespace Varnholt {
namespace {

constexpr std::int32_t kKeySpace = 32;

}  // namespace

TButtonControl::TButtonControl() {
    SetColor(clBtnFace);
    SetBounds(0, 0, 97, 25);
}

TButtonControl::~TButtonControl() = default;

void TButtonControl::SetCaption(StringView caption) {
    FCaption = caption;
    Changed(caText);
}

bool TButtonControl::ClickByUser() {
    return FocusByUser() && TControl::ClickByUser();
}

bool TButtonControl::PressedByUser(std::int32_t virtualKey) {
    return virtualKey == kKeySpace && ClickByUser();
}

// --- TButton ---

TButton::TButton() = default;

TButton::~TButton() = default;

void TButton::SetDefault(bool isDefault) {
    FDefault = isDefault;
    Changed(caState);
}

void TButton::SetCancel(bool isCancel) {
    FCancel = isCancel;
    Changed(caState);
}

void TButton::Click() {
    TCustomForm* const form = GetParentForm();
    if (form != nullptr && FModalResult != mrNone) form->SetModalResult(FModalResult);
    TButtonControl::Click();
}

bool TButton::PressedByUser(std::int32_t virtualKey) {
    return virtualKey == kKeyEnter ? ClickByUser() : TButtonControl::PressedByUser(virtualKey);
}

bool TButton::AnswersKey(std::int32_t virtualKey) const noexcept {
    return (FDefault && virtualKey == kKeyEnter) || (FCancel && virtualKey == kKeyEscape);
}

// --- TCheckBox ---

TCheckBox::TCheckBox() = default;

TCheckBox::~TCheckBox() = default;

void TCheckBox::SetChecked(bool checked) {
    if (FChecked == checked) return;
    FChecked = checked;
    Changed(caState);
    Click();
}

bool TCheckBox::ClickByUser() {
    if (!FocusByUser()) return false;
    if (CanFocus()) SetChecked(!FChecked);
    return true;
}

// --- TRadioButton ---

TRadioButton::TRadioButton() = default;

TRadioButton::~TRadioButton() = default;

void TRadioButton::SetChecked(bool checked) {
    if (FChecked == checked) return;
    FChecked = checked;
    Changed(caState);
    if (checked) UncheckOthers();
    Click();
}

void TRadioButton::UncheckOthers() {
    const TWinControl* const parent = GetParent();
    for (std::int32_t i = 0; parent != nullptr && i < parent->GetControlCount(); ++i) {
        auto* const other = dynamic_cast<TRadioButton*>(&parent->GetControl(i));
        if (other == nullptr || other == this || !other->FChecked) continue;
        other->FChecked = false;
        other->Changed(caState);
    }
}

bool TRadioButton::ClickByUser() {
    if (!FocusByUser()) return false;
    if (CanFocus()) SetChecked(true);
    return true;
}

}  // namespace Varnholt
