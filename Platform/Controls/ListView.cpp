#include "Platform/Controls/ListView.h"

#include <algorithm>

#include "Platform/Runtime/Indexes.h"

namespace Varnholt {
namespace {

constexpr std::int32_t kHeaderHeight = 24;
constexpr std::int32_t kRowHeight = 17;

std::int32_t Pixels(std::int64_t value) noexcept {
    return static_cast<std::int32_t>(std::min<std::int64_t>(value, INT32_MAX));
}

}  // namespace

// --- TListItem ---

void TListItem::SetCaption(StringView caption) {
    FCaption = caption;
    FListView->Changed(caItems);
}

void TListItem::AddSubItem(StringView text) {
    FSubItems.emplace_back(text);
    FListView->Changed(caItems);
}

void TListItem::SetSubItem(std::int32_t index, StringView text) {
    FSubItems[ListIndex(index, FSubItems.size())] = text;
    FListView->Changed(caItems);
}

void TListItem::SetSelected(bool selected) {
    FListView->Select(*this, selected);
    FListView->Changed(caSelection);
}

// --- TListView: columns and items ---

TListView::TListView() {
    SetBounds(0, 0, 250, 150);
}

TListView::~TListView() = default;

void TListView::AddColumn(StringView caption, std::int32_t width, bool autoSize) {
    FColumns.push_back({String(caption), std::max(width, 0), autoSize});
    Changed(caItems);
}

const TListColumn& TListView::GetColumn(std::int32_t index) const {
    return FColumns[ListIndex(index, FColumns.size())];
}

TListItem& TListView::AddItem(StringView caption) {
    FItems.push_back(std::make_unique<TListItem>(*this));
    TListItem& item = *FItems.back();
    item.FCaption = caption;
    item.FIndex = GetItemCount() - 1;
    Changed(caItems);
    return item;
}

TListItem& TListView::GetItem(std::int32_t index) const {
    return *FItems[ListIndex(index, FItems.size())];
}

void TListView::DeleteItem(std::int32_t index) {
    const std::size_t at = ListIndex(index, FItems.size());
    if (FItems[at]->FSelected) --FSelCount;
    FItems.erase(FItems.begin() + static_cast<std::ptrdiff_t>(at));
    for (std::size_t i = at; i < FItems.size(); ++i) FItems[i]->FIndex = static_cast<std::int32_t>(i);
    Changed(caItems);
}

void TListView::ClearItems() {
    FItems.clear();
    FSelCount = 0;
    Changed(caItems);
}

// --- TListView: selection ---

void TListView::Select(TListItem& item, bool selected) {
    if (selected && !FMultiSelect && FSelCount > 0)
        for (const std::unique_ptr<TListItem>& other : FItems) other->FSelected = false, FSelCount = 0;
    if (item.FSelected == selected) return;
    item.FSelected = selected;
    FSelCount += selected ? 1 : -1;
}

void TListView::SetMultiSelect(bool multiSelect) {
    TListItem* const first = GetSelected();
    FMultiSelect = multiSelect;
    if (!multiSelect && first != nullptr) Select(*first, true);
    Changed(caState);
    Changed(caSelection);
}

TListItem* TListView::GetSelected() const noexcept {
    if (FSelCount == 0) return nullptr;
    const auto found = std::ranges::find_if(FItems, [](const auto& item) { return item->FSelected; });
    return found == FItems.end() ? nullptr : found->get();
}

bool TListView::SelectByUser(std::int32_t index, bool isAdded) {
    if (!IsIndex(index, FItems.size()) || !FocusByUser() || !CanFocus()) return false;
    TListItem& item = GetItem(index);
    const bool turns = isAdded && FMultiSelect;
    const bool selected = !turns || !item.FSelected;
    if (!turns)
        for (const std::unique_ptr<TListItem>& other : FItems) Select(*other, false);
    Select(item, selected);
    Changed(caSelection);
    const TNotifyEvent onSelectItem = FOnSelectItem;
    onSelectItem(this);
    TControl::ClickByUser();
    return true;
}

bool TListView::DoubleClickByUser(std::int32_t index) {
    const bool isSelected = FSelCount == 1 && IsIndex(index, FItems.size()) && GetItem(index).FSelected;
    if (!(isSelected ? FocusByUser() : SelectByUser(index)) || !CanFocus()) return false;
    const TNotifyEvent onDblClick = FOnDblClick;
    onDblClick(this);
    return true;
}

// --- TListView: look ---

void TListView::SetReadOnly(bool readOnly) {
    FReadOnly = readOnly;
    Changed(caState);
}

void TListView::SetRowSelect(bool rowSelect) {
    FRowSelect = rowSelect;
    Changed(caState);
}

void TListView::SetHideSelection(bool hideSelection) {
    FHideSelection = hideSelection;
    Changed(caState);
}

TRect TListView::GetCellRect(std::int32_t row, std::int32_t column) {
    static_cast<void>(ListIndex(row, FItems.size()));
    if (!IsIndex(column, FColumns.size())) return {};
    if (GetPeer() != nullptr) return GetPeer()->GetCellRect(column, row);
    std::int64_t left = 0;
    for (std::int32_t i = 0; i < column; ++i) left += GetColumn(i).Width;
    const std::int64_t top = kHeaderHeight + std::int64_t{row} * kRowHeight;
    return {Pixels(left), Pixels(top), Pixels(left + GetColumn(column).Width), Pixels(top + kRowHeight)};
}

}  // namespace Varnholt
