#include "VarnholtLib/UI/vrnListViewHelper.h"

namespace Varnholt {
namespace {

constexpr StringView kLineEnd = u"\r\n";

}  // namespace

std::vector<TListItem*> TListViewHelper::GetAllItems(const TListView& listView) {
    std::vector<TListItem*> items;
    items.reserve(static_cast<std::size_t>(listView.GetItemCount()));
    for (std::int32_t i = 0; i < listView.GetItemCount(); ++i) items.push_back(&listView.GetItem(i));
    return items;
}

std::vector<TListItem*> TListViewHelper::GetSelectedItems(const TListView& listView) {
    if (listView.GetSelCount() == 0) return {};
    std::vector<TListItem*> items = GetAllItems(listView);
    std::erase_if(items, [](const TListItem* item) { return !item->GetSelected(); });
    return items;
}

String TListViewHelper::GetSelectedItemsText(const TListView* listView) {
    String text;
    if (listView == nullptr || listView->GetColumnCount() == 0) return text;
    for (const TListItem* const item : GetAllItems(*listView)) {
        text += item->GetCaption();
        if (listView->GetColumnCount() > 1) {
            if (!item->GetCaption().empty()) text += u':';
            for (const String& subItem : item->GetSubItems()) text += u' ' + subItem;
        }
        text += kLineEnd;
    }
    return text;
}

String TListViewHelper::GetSelectedItemsTextDelim(const TListView* listView, StringView delim) {
    String text;
    if (listView == nullptr || listView->GetColumnCount() == 0) return text;
    for (const TListItem* const item : GetAllItems(*listView)) {
        text += item->GetCaption();
        if (listView->GetColumnCount() > 1) {
            for (const String& subItem : item->GetSubItems()) text.append(delim).append(subItem);
        } else {
            text += kLineEnd;
        }
    }
    return text;
}

TRect TListViewHelper::GetSubItemRect(TListView& listView, const TListItem& item, std::int32_t colIndex) {
    return listView.GetCellRect(item.GetIndex(), colIndex);
}

void TListViewHelper::SelectAll(TListView* listView) {
    if (listView == nullptr || !listView->GetMultiSelect()) return;
    for (TListItem* const item : GetAllItems(*listView)) item->SetSelected(true);
}

}  // namespace Varnholt
