#pragma once

#include <vector>

#include "Platform/Controls/Control.h"

/// The list view: rows with a caption and further texts, in columns.
///
///     TListView& stations = form.Add<TListView>(u"lvStations");
///     stations.AddColumn(u"Name", 200);
///     stations.AddColumn(u"Height", 80);
///     TListItem& bergen = stations.AddItem(u"Bergen");
///     bergen.AddSubItem(u"12");
///
/// Indices count from 0. One outside the list raises EListError as a list. A reference to an item is valid until
/// the item is deleted.
///
/// Threads: main thread only.
namespace Varnholt {

class TListView;

class VARNHOLT_EXPORT TListItem {
public:
    explicit TListItem(TListView& listView) noexcept : FListView(&listView) {}
    TListItem(const TListItem&) = delete;
    TListItem& operator=(const TListItem&) = delete;

    /// The text of the first column.
    [[nodiscard]] const String& GetCaption() const noexcept { return FCaption; }
    void SetCaption(StringView caption);
    /// The texts of the further columns; there may be more or fewer than columns.
    [[nodiscard]] const std::vector<String>& GetSubItems() const noexcept { return FSubItems; }
    void AddSubItem(StringView text);
    void SetSubItem(std::int32_t index, StringView text);
    [[nodiscard]] bool GetSelected() const noexcept { return FSelected; }
    /// Where only one item may be selected, selecting it deselects the others.
    void SetSelected(bool selected);
    /// What the item stands for; never owned.
    [[nodiscard]] void* GetData() const noexcept { return FData; }
    void SetData(void* data) noexcept { FData = data; }
    /// The position in the list, in constant time.
    [[nodiscard]] std::int32_t GetIndex() const noexcept { return FIndex; }
    [[nodiscard]] TListView& GetListView() const noexcept { return *FListView; }

private:
    friend class TListView;

    TListView* FListView;
    String FCaption;
    std::vector<String> FSubItems;
    void* FData = nullptr;
    std::int32_t FIndex = 0;
    bool FSelected = false;
};

struct TListColumn {
    String Caption;
    std::int32_t Width = 50;
    bool AutoSize = false;  ///< grows with the list view
};

class VARNHOLT_EXPORT TListView : public TWinControl {
public:
    TListView();
    ~TListView() override;

    // --- Columns ---

    void AddColumn(StringView caption, std::int32_t width, bool autoSize = false);
    [[nodiscard]] std::int32_t GetColumnCount() const noexcept {
        return static_cast<std::int32_t>(FColumns.size());
    }
    [[nodiscard]] const TListColumn& GetColumn(std::int32_t index) const;

    // --- Items ---

    TListItem& AddItem(StringView caption);
    [[nodiscard]] std::int32_t GetItemCount() const noexcept {
        return static_cast<std::int32_t>(FItems.size());
    }
    [[nodiscard]] TListItem& GetItem(std::int32_t index) const;
    void DeleteItem(std::int32_t index);
    void ClearItems();

    // --- Selection ---

    /// Whether several items may be selected; false at first.
    [[nodiscard]] bool GetMultiSelect() const noexcept { return FMultiSelect; }
    void SetMultiSelect(bool multiSelect);
    /// The number of selected items, in constant time.
    [[nodiscard]] std::int32_t GetSelCount() const noexcept { return FSelCount; }
    /// The first selected item; null if there is none.
    [[nodiscard]] TListItem* GetSelected() const noexcept;
    /// A person selects an item instead of those selected before; with `isAdded`, where several may be selected, turns
    /// its selection around and leaves the others. Raises OnSelectItem, then OnClick.
    bool SelectByUser(std::int32_t index, bool isAdded = false);
    /// A person clicks twice on an item, which selects it if it is not the selected one already. Raises OnDblClick.
    bool DoubleClickByUser(std::int32_t index);
    [[nodiscard]] const TNotifyEvent& GetOnSelectItem() const noexcept { return FOnSelectItem; }
    void SetOnSelectItem(TNotifyEvent onSelectItem) { FOnSelectItem = std::move(onSelectItem); }
    [[nodiscard]] const TNotifyEvent& GetOnDblClick() const noexcept { return FOnDblClick; }
    void SetOnDblClick(TNotifyEvent onDblClick) { FOnDblClick = std::move(onDblClick); }

    // --- Look ---

    /// Whether captions can be edited in place; true, and they can not, at first.
    [[nodiscard]] bool GetReadOnly() const noexcept { return FReadOnly; }
    void SetReadOnly(bool readOnly);
    /// Whether the selection covers all columns.
    [[nodiscard]] bool GetRowSelect() const noexcept { return FRowSelect; }
    void SetRowSelect(bool rowSelect);
    /// Whether the selection is invisible without the focus; true at first.
    [[nodiscard]] bool GetHideSelection() const noexcept { return FHideSelection; }
    void SetHideSelection(bool hideSelection);
    /// The bounds of a cell in the control. Without a back end rows are 17 pixels high, below a header of 24, and
    /// the columns have their widths. Column 0 is the caption; an empty rectangle for a column that does not exist.
    [[nodiscard]] TRect GetCellRect(std::int32_t row, std::int32_t column);

private:
    friend class TListItem;

    void Select(TListItem& item, bool selected);

    std::vector<TListColumn> FColumns;
    std::vector<std::unique_ptr<TListItem>> FItems;
    TNotifyEvent FOnSelectItem;
    TNotifyEvent FOnDblClick;
    std::int32_t FSelCount = 0;
    bool FMultiSelect = false;
    bool FReadOnly = true;
    bool FRowSelect = false;
    bool FHideSelection = true;
};

}  // namespace Varnholt
