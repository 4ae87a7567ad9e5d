#pragma once

#include <vector>

#include "Platform/Controls/ListView.h"

/// Items and texts of a list view.
///
///     Clipboard().SetAsText(TListViewHelper::GetSelectedItemsTextDelim(&listView, u"\t"));
///
/// Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT TListViewHelper {
public:
    TListViewHelper() = delete;

    /// In their order.
    [[nodiscard]] static std::vector<TListItem*> GetAllItems(const TListView& listView);
    [[nodiscard]] static std::vector<TListItem*> GetSelectedItems(const TListView& listView);

    /// All items, selected or not, each with CR LF after it. With one column, the caption; with more, the caption
    /// and ":" unless that is empty, then a blank and the text for each sub-item. Empty for null or a list view
    /// without columns.
    [[nodiscard]] static String GetSelectedItemsText(const TListView* listView);
    /// All items, selected or not. With one column, the caption and CR LF; with more, the caption, then the
    /// delimiter and the text for each sub-item, and no line end. Empty for null or a list view without columns.
    [[nodiscard]] static String GetSelectedItemsTextDelim(const TListView* listView, StringView delim);

    /// The bounds of a cell in the list view. Column 0 is the caption.
    [[nodiscard]] static TRect GetSubItemRect(TListView& listView, const TListItem& item,
                                              std::int32_t colIndex);
    /// Selects all items. Nothing happens for null, or if only one item may be selected.
    static void SelectAll(TListView* listView);
};

}  // namespace Varnholt
