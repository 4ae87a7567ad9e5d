#include "Platform/Controls/Lists.h"

#include <algorithm>
#include <utility>

#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/Text.h"

namespace Varnholt {

// --- TControlItems ---

std::int32_t TControlItems::Add(StringView item) {
    FItems.emplace_back(item);
    FChanged();
    return GetCount() - 1;
}

void TControlItems::Insert(std::int32_t index, StringView item) {
    const std::size_t at = ListIndex(index, FItems.size() + 1);
    FItems.insert(FItems.begin() + static_cast<std::ptrdiff_t>(at), String(item));
    FChanged();
}

void TControlItems::Delete(std::int32_t index) {
    FItems.erase(FItems.begin() + static_cast<std::ptrdiff_t>(ListIndex(index, FItems.size())));
    FChanged();
}

void TControlItems::Clear() {
    FItems.clear();
    FChanged();
}

void TControlItems::SetItem(std::int32_t index, StringView item) {
    FItems[ListIndex(index, FItems.size())] = item;
    FChanged();
}

void TControlItems::SetLines(std::vector<String> items) {
    FItems = std::move(items);
    FChanged();
}

const String& TControlItems::operator[](std::int32_t index) const {
    return FItems[ListIndex(index, FItems.size())];
}

std::int32_t TControlItems::IndexOf(StringView text) const {
    auto found = std::ranges::find(FItems, text);
    if (found == FItems.end())
        found = std::ranges::find_if(FItems, [&](const String& item) { return SameText(item, text); });
    return found == FItems.end() ? -1 : static_cast<std::int32_t>(found - FItems.begin());
}

// --- TComboBox ---

TComboBox::TComboBox() : FItems([this] { ItemsChanged(); }) {
    SetBounds(0, 0, 145, 23);
}

TComboBox::~TComboBox() = default;

void TComboBox::ItemsChanged() {
    Changed(caItems);
    if (FItemIndex >= 0) SetItemIndex(FItemIndex);
}

void TComboBox::SetItemIndex(std::int32_t index) {
    FItemIndex = IsIndex(index, static_cast<std::size_t>(FItems.GetCount())) ? index : -1;
    FText = FItemIndex < 0 ? String() : FItems[FItemIndex];
    Changed(caSelection);
}

void TComboBox::SetText(StringView text) {
    FItemIndex = FItems.IndexOf(text);
    FText = text;
    Changed(caSelection);
}

void TComboBox::RaiseOnChange() {
    const TNotifyEvent onChange = FOnChange;
    onChange(this);
}

bool TComboBox::SelectByUser(std::int32_t index) {
    if (!IsIndex(index, static_cast<std::size_t>(FItems.GetCount())) || !FocusByUser() || !CanFocus())
        return false;
    SetItemIndex(index);
    RaiseOnChange();
    return true;
}

bool TComboBox::TypeByUser(StringView text) {
    if (!FocusByUser() || !CanFocus()) return false;
    SetText(text);
    RaiseOnChange();
    return true;
}

// --- TListBox ---

TListBox::TListBox() : FItems([this] { ItemsChanged(); }) {
    SetBounds(0, 0, 121, 97);
}

TListBox::~TListBox() = default;

void TListBox::ItemsChanged() {
    FSelected.resize(static_cast<std::size_t>(FItems.GetCount()), false);
    if (FItemIndex >= FItems.GetCount()) FItemIndex = -1;
    Changed(caItems);
}

void TListBox::SetItemIndex(std::int32_t index) {
    FItemIndex = IsIndex(index, FSelected.size()) ? index : -1;
    if (!FMultiSelect) std::fill(FSelected.begin(), FSelected.end(), false);
    if (FItemIndex >= 0) FSelected[static_cast<std::size_t>(FItemIndex)] = true;
    Changed(caSelection);
}

void TListBox::SetMultiSelect(bool multiSelect) {
    FMultiSelect = multiSelect;
    if (!multiSelect) SetItemIndex(FItemIndex);
    Changed(caState);
}

bool TListBox::GetSelected(std::int32_t index) const {
    return FSelected[ListIndex(index, FSelected.size())];
}

void TListBox::SetSelected(std::int32_t index, bool selected) {
    const std::size_t at = ListIndex(index, FSelected.size());
    if (selected && !FMultiSelect) return SetItemIndex(index);
    FSelected[at] = selected;
    if (!selected && !FMultiSelect) FItemIndex = -1;
    Changed(caSelection);
}

bool TListBox::SelectByUser(std::int32_t index) {
    if (!IsIndex(index, FSelected.size()) || !FocusByUser() || !CanFocus()) return false;
    const bool selected = !FMultiSelect || !GetSelected(index);
    FItemIndex = index;
    SetSelected(index, selected);
    return TControl::ClickByUser();
}

}  // namespace Varnholt
