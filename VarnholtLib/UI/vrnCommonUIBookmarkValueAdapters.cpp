#include "VarnholtLib/UI/vrnCommonUIBookmarkValueAdapters.h"

#include <algorithm>

#include "Platform/Controls/Buttons.h"
#include "Platform/Controls/Edits.h"
#include "Platform/Controls/Lists.h"
#include "Platform/Controls/PageControl.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Variant.h"
#include "VarnholtLib/Foundation/vrnString.h"

namespace Varnholt {
namespace {

constexpr StringView kNoItem = u"##_INVALID_INDEX_##";
constexpr StringView kNoPage = u"page:nil";

template <typename T>
T& As(TControl& control, const IUIBookmarkValueAdapter& adapter) {
    if (auto* const typed = dynamic_cast<T*>(&control)) return *typed;
    throw EInvalidOperation(
        Format(u"Control \"%s\" is not a %s", {control.GetName(), adapter.GetControlTypeName()}));
}

/// Calls a handler of the control without a sender.
void Notify(const TNotifyEvent& handler) {
    handler(nullptr);
}

template <typename T>
void UpdateChecked(T& button, StringView data) {
    button.SetChecked(Variant(data).ToBoolean());
    Notify(button.GetOnClick());
}

String CheckedText(bool checked) {
    return checked ? u"-1" : u"0";
}

}  // namespace

// --- TCheckBox and TRadioButton ---

String TCheckBoxUIBookmarkValueAdapter::GetData(TControl& control) {
    return CheckedText(As<TCheckBox>(control, *this).GetChecked());
}

void TCheckBoxUIBookmarkValueAdapter::UpdateControl(TControl& control, StringView data) {
    UpdateChecked(As<TCheckBox>(control, *this), data);
}

String TCheckBoxUIBookmarkValueAdapter::GetControlTypeName() const {
    return u"TCheckBox";
}

String TRadioButtonUIBookmarkValueAdapter::GetData(TControl& control) {
    return CheckedText(As<TRadioButton>(control, *this).GetChecked());
}

void TRadioButtonUIBookmarkValueAdapter::UpdateControl(TControl& control, StringView data) {
    UpdateChecked(As<TRadioButton>(control, *this), data);
}

String TRadioButtonUIBookmarkValueAdapter::GetControlTypeName() const {
    return u"TRadioButton";
}

// --- TEdit ---

String TEditUIBookmarkValueAdapter::GetData(TControl& control) {
    return As<TEdit>(control, *this).GetText();
}

void TEditUIBookmarkValueAdapter::UpdateControl(TControl& control, StringView data) {
    auto& edit = As<TEdit>(control, *this);
    edit.SetText(data);
    Notify(edit.GetOnChange());
    Notify(edit.GetOnExit());
}

String TEditUIBookmarkValueAdapter::GetControlTypeName() const {
    return u"TEdit";
}

// --- TComboBox ---

String TComboBoxUIBookmarkValueAdapter::GetData(TControl& control) {
    const auto& comboBox = As<TComboBox>(control, *this);
    const std::int32_t index = comboBox.GetItemIndex();
    return index == -1 ? String(kNoItem) : comboBox.GetItems()[index];
}

void TComboBoxUIBookmarkValueAdapter::UpdateControl(TControl& control, StringView data) {
    auto& comboBox = As<TComboBox>(control, *this);
    const TControlItems& items = comboBox.GetItems();
    const auto found = data == kNoItem ? items.end() : std::ranges::find(items, data);
    comboBox.SetItemIndex(found == items.end() ? -1 : static_cast<std::int32_t>(found - items.begin()));
    Notify(comboBox.GetOnChange());
}

String TComboBoxUIBookmarkValueAdapter::GetControlTypeName() const {
    return u"TComboBox";
}

// --- TPageControl ---

String TPageControlUIBookmarkValueAdapter::GetData(TControl& control) {
    const TTabSheet* const page = As<TPageControl>(control, *this).GetActivePage();
    return page == nullptr ? String(kNoPage) : u"page:" + page->GetName();
}

void TPageControlUIBookmarkValueAdapter::UpdateControl(TControl& control, StringView data) {
    auto& pages = As<TPageControl>(control, *this);
    if (data == kNoPage) return;
    const std::vector<String> parts = SplitString(data, u':', false);
    if (parts.size() != 2 || parts[0] != u"page") return;
    for (std::int32_t i = 0; i < pages.GetPageCount(); ++i) {
        if (pages.GetPage(i).GetName() != parts[1]) continue;
        pages.SetActivePage(&pages.GetPage(i));
        const TNotifyEvent onChange = pages.GetOnChange();
        return onChange(&pages);
    }
}

String TPageControlUIBookmarkValueAdapter::GetControlTypeName() const {
    return u"TPageControl";
}

}  // namespace Varnholt
