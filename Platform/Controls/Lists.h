#pragma once

#include <functional>
#include <vector>

#include "Platform/Controls/Control.h"

/// Lists of texts: the combo box and the list box.
///
///     TComboBox& method = form.Add<TComboBox>(u"cbMethod");
///     method.GetItems().SetLines({u"mean", u"sum"});
///     method.SetItemIndex(0);
///     method.SetOnChange([&](TObject*) { Use(method.GetItems()[method.GetItemIndex()]); });
///
/// Indices count from 0; -1 stands for no item. An index outside the list raises EListError as a list.
///
/// Threads: main thread only.
namespace Varnholt {

/// The texts of a control, which reports every change.
class VARNHOLT_EXPORT TControlItems {
public:
    using const_iterator = std::vector<String>::const_iterator;

    explicit TControlItems(std::function<void()> changed) : FChanged(std::move(changed)) {}
    TControlItems(const TControlItems&) = delete;
    TControlItems& operator=(const TControlItems&) = delete;

    /// Adds an item at the end and returns its index.
    std::int32_t Add(StringView item);
    void Insert(std::int32_t index, StringView item);
    void Delete(std::int32_t index);
    void Clear();
    void SetItem(std::int32_t index, StringView item);
    void SetLines(std::vector<String> items);

    [[nodiscard]] std::int32_t GetCount() const noexcept { return static_cast<std::int32_t>(FItems.size()); }
    [[nodiscard]] const String& operator[](std::int32_t index) const;
    /// The first item that equals the text; if none does, the first that differs only in the case of ASCII letters;
    /// -1 if there is none.
    [[nodiscard]] std::int32_t IndexOf(StringView text) const;
    [[nodiscard]] const_iterator begin() const noexcept { return FItems.begin(); }
    [[nodiscard]] const_iterator end() const noexcept { return FItems.end(); }

private:
    std::vector<String> FItems;
    std::function<void()> FChanged;
};

class VARNHOLT_EXPORT TComboBox : public TWinControl {
public:
    TComboBox();
    ~TComboBox() override;

    /// When the items change, the selected one stays selected by its index, or none if the index is gone.
    [[nodiscard]] TControlItems& GetItems() noexcept { return FItems; }
    [[nodiscard]] const TControlItems& GetItems() const noexcept { return FItems; }
    /// Raises no event. An index outside the items selects none.
    [[nodiscard]] std::int32_t GetItemIndex() const noexcept { return FItemIndex; }
    void SetItemIndex(std::int32_t index);
    /// The text of the field: that of the item, or what was typed. Setting it selects the item of that text, if
    /// there is one.
    [[nodiscard]] const String& GetText() const noexcept { return FText; }
    void SetText(StringView text);
    /// Raised when a person chooses an item or types, not by the setters.
    [[nodiscard]] const TNotifyEvent& GetOnChange() const noexcept { return FOnChange; }
    void SetOnChange(TNotifyEvent onChange) { FOnChange = std::move(onChange); }

    /// A person chooses an item; false for one that is not there.
    bool SelectByUser(std::int32_t index);
    /// A person types a text into the field, in place of the former one.
    bool TypeByUser(StringView text);

private:
    void ItemsChanged();
    void RaiseOnChange();

    TControlItems FItems;
    String FText;
    TNotifyEvent FOnChange;
    std::int32_t FItemIndex = -1;
};

class VARNHOLT_EXPORT TListBox : public TWinControl {
public:
    TListBox();
    ~TListBox() override;

    [[nodiscard]] TControlItems& GetItems() noexcept { return FItems; }
    [[nodiscard]] const TControlItems& GetItems() const noexcept { return FItems; }
    /// The item with the focus. Setting it selects the item, alone if only one may be selected. An index outside
    /// the items selects none.
    [[nodiscard]] std::int32_t GetItemIndex() const noexcept { return FItemIndex; }
    void SetItemIndex(std::int32_t index);
    /// Whether several items may be selected; false at first.
    [[nodiscard]] bool GetMultiSelect() const noexcept { return FMultiSelect; }
    void SetMultiSelect(bool multiSelect);
    [[nodiscard]] bool GetSelected(std::int32_t index) const;
    void SetSelected(std::int32_t index, bool selected);

    /// A person clicks on an item, which raises OnClick. With several allowed it turns the selection of that item around.
    bool SelectByUser(std::int32_t index);

private:
    void ItemsChanged();

    TControlItems FItems;
    std::vector<bool> FSelected;
    std::int32_t FItemIndex = -1;
    bool FMultiSelect = false;
};

}  // namespace Varnholt
