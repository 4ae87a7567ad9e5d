#include "Platform/Controls/Edits.h"

#include <algorithm>

#include "Platform/Controls/Form.h"
#include "Platform/Runtime/Numbers.h"

namespace Varnholt {

TCustomEdit::TCustomEdit() {
    SetBounds(0, 0, 121, 23);
}

TCustomEdit::~TCustomEdit() = default;

String TCustomEdit::Kept(StringView text) const {
    return String(text);
}

void TCustomEdit::TextChanged() {
    const TNotifyEvent onChange = FOnChange;
    onChange(this);
}

void TCustomEdit::Replace(String text) {
    if (FText == text) return;
    FText = std::move(text);
    Changed(caText);
    Changed(caSelection);
    TextChanged();
}

void TCustomEdit::SetText(StringView text) {
    FSelStart = 0;
    FSelLength = 0;
    Replace(Kept(text));
}

void TCustomEdit::SetMaxLength(std::int32_t maxLength) {
    FMaxLength = std::max(maxLength, 0);
    Changed(caText);
}

void TCustomEdit::SetReadOnly(bool readOnly) {
    FReadOnly = readOnly;
    Changed(caText);
}

void TCustomEdit::Select(std::int32_t start, std::int32_t length) {
    const auto size = static_cast<std::int32_t>(FText.size());
    FSelStart = std::clamp(start, 0, size);
    FSelLength = std::clamp(length, 0, size - FSelStart);
    Changed(caSelection);
}

void TCustomEdit::SelectAll() {
    Select(0, INT32_MAX);
}

bool TCustomEdit::TypeByUser(StringView text) {
    if (FReadOnly || !FocusByUser() || !CanFocus()) return false;
    String typed = Kept(text);
    const auto start = static_cast<std::size_t>(FSelStart), selected = static_cast<std::size_t>(FSelLength);
    if (FMaxLength > 0) {
        const auto others = static_cast<std::int64_t>(FText.size() - selected);
        const std::int64_t room = std::max<std::int64_t>(FMaxLength - others, 0);
        typed.resize(std::min(typed.size(), static_cast<std::size_t>(room)));
    }
    String whole = FText;
    whole.replace(start, selected, typed);
    return EditByUser(whole, FSelStart + static_cast<std::int32_t>(typed.size()));
}

bool TCustomEdit::EditByUser(StringView text, std::int32_t caret) {
    const std::size_t limit = FMaxLength == 0 ? SIZE_MAX : static_cast<std::size_t>(FMaxLength);
    String whole = Kept(text);
    if (FReadOnly || whole.size() > std::max(limit, FText.size()) || !FocusByUser() || !CanFocus())
        return false;
    FSelStart = std::clamp(caret, 0, static_cast<std::int32_t>(whole.size()));
    FSelLength = 0;
    Replace(std::move(whole));
    return true;
}

bool TCustomEdit::SelectByUser(std::int32_t start, std::int32_t length) {
    if (!FocusByUser()) return false;
    Select(start, length);
    return true;
}

bool TCustomEdit::ClickByUser() {
    return FocusByUser() && TControl::ClickByUser();
}

// --- TEdit and TMemo ---

TEdit::TEdit() = default;

TEdit::~TEdit() = default;

void TEdit::SetIsPassword(bool isPassword) {
    FIsPassword = isPassword;
    Changed(caText);
}

StringView TEdit::GetPaintedText() const noexcept {
    return FIsPassword ? StringView() : TCustomEdit::GetPaintedText();
}

String TEdit::Kept(StringView text) const {
    String line(text);
    std::erase_if(line, [](Char unit) { return unit == u'\r' || unit == u'\n'; });
    return line;
}

TMemo::TMemo() {
    SetBounds(0, 0, 185, 89);
}

TMemo::~TMemo() = default;

TStringList TMemo::GetLines() const {
    TStringList lines;
    lines.SetText(GetText());
    return lines;
}

void TMemo::SetLines(const TStringList& lines) {
    String text = lines.GetText();
    if (text.ends_with(u"\r\n")) text.resize(text.size() - 2);
    SetText(text);
}

bool TMemo::PressedByUser(std::int32_t virtualKey) {
    return virtualKey == kKeyEnter && TypeByUser(u"\r\n");
}

// --- TSpinEdit ---

TSpinButton::TSpinButton() {
    SetBounds(0, 0, 17, 23);
}

TSpinButton::~TSpinButton() = default;

TSpinEdit::TSpinEdit() : FButton(&Add<TSpinButton>(u"")) {
    SetText(u"0");
    SetBounds(0, 0, 121, 24);
}

TSpinEdit::~TSpinEdit() = default;

std::int32_t TSpinEdit::Limited(std::int64_t value) const noexcept {
    const bool isLimited = FMaxValue > FMinValue;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, isLimited ? FMinValue : INT32_MIN,
                                                              isLimited ? FMaxValue : INT32_MAX));
}

std::int32_t TSpinEdit::GetValue() const {
    return Limited(StrToIntDef(GetText(), FMinValue));
}

void TSpinEdit::SetValue(std::int32_t value) {
    SetText(IntToStr(Limited(value)));
}

void TSpinEdit::SetRange(std::int32_t minValue, std::int32_t maxValue) {
    FMinValue = minValue;
    FMaxValue = maxValue;
    Changed(caText);
}

bool TSpinEdit::SpinByUser(bool isUp) {
    if (GetReadOnly() || !FocusByUser() || !CanFocus()) return false;
    SetValue(Limited(std::int64_t{GetValue()} + (isUp ? 1 : -1)));
    return true;
}

void TSpinEdit::Resized(TSize former) {
    TCustomEdit::Resized(former);
    if (FButton != nullptr)
        FButton->SetBounds(GetWidth() - FButton->GetWidth(), 0, FButton->GetWidth(), GetHeight());
}

}  // namespace Varnholt
