#pragma once

#include <memory>
#include <vector>

#include "Platform/Controls/Component.h"
#include "Platform/Drawing/Geometry.h"

/// Popup menus.
///
///     TPopupMenu menu;
///     TMenuItem& copy = menu.GetItems().Add(std::make_unique<TMenuItem>());
///     copy.SetCaption(u"&Copy");
///     copy.SetOnClick([&](TObject*) { Copy(); });
///     menu.Popup(point.X, point.Y);
///
/// A menu owns its items, and an item those below it. Indices count from 0; one outside the list raises EListError
/// as a list. A caption of one hyphen makes a separator.
///
/// Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT TMenuItem : public TComponent {
public:
    TMenuItem();
    ~TMenuItem() override;

    [[nodiscard]] const String& GetCaption() const noexcept { return FCaption; }
    void SetCaption(StringView caption) { FCaption = caption; }
    [[nodiscard]] bool GetEnabled() const noexcept { return FEnabled; }
    void SetEnabled(bool enabled) noexcept { FEnabled = enabled; }
    [[nodiscard]] bool GetVisible() const noexcept { return FVisible; }
    void SetVisible(bool visible) noexcept { FVisible = visible; }
    [[nodiscard]] bool GetChecked() const noexcept { return FChecked; }
    void SetChecked(bool checked) noexcept { FChecked = checked; }
    [[nodiscard]] const TNotifyEvent& GetOnClick() const noexcept { return FOnClick; }
    void SetOnClick(TNotifyEvent onClick) { FOnClick = std::move(onClick); }
    /// Raises OnClick with this item as sender.
    void Click();

    /// Takes an item as the last one below this. EArgumentNilException `item` for null.
    TMenuItem& Add(std::unique_ptr<TMenuItem> item);
    [[nodiscard]] std::int32_t GetCount() const noexcept { return static_cast<std::int32_t>(FItems.size()); }
    [[nodiscard]] TMenuItem& GetItem(std::int32_t index) const;
    void Delete(std::int32_t index);
    void Clear() noexcept { FItems.clear(); }
    /// The item above this one; null for the items of a menu.
    [[nodiscard]] TMenuItem* GetParent() const noexcept { return FParent; }

private:
    String FCaption;
    TNotifyEvent FOnClick;
    std::vector<std::unique_ptr<TMenuItem>> FItems;
    TMenuItem* FParent = nullptr;
    bool FEnabled = true;
    bool FVisible = true;
    bool FChecked = false;
};

class VARNHOLT_EXPORT TPopupMenu : public TComponent {
public:
    TPopupMenu();
    ~TPopupMenu() override;

    /// The item whose items are the top level of the menu.
    [[nodiscard]] TMenuItem& GetItems() noexcept { return FItems; }
    [[nodiscard]] const TMenuItem& GetItems() const noexcept { return FItems; }
    /// Raised before the menu appears.
    [[nodiscard]] const TNotifyEvent& GetOnPopup() const noexcept { return FOnPopup; }
    void SetOnPopup(TNotifyEvent onPopup) { FOnPopup = std::move(onPopup); }

    /// Shows the menu at a point of the screen. A back end returns when the user has chosen; without one, the menu
    /// stays open for ChooseByUser.
    void Popup(std::int32_t x, std::int32_t y);
    [[nodiscard]] bool IsOpen() const noexcept { return FIsOpen; }
    /// Where the menu was shown last.
    [[nodiscard]] TPoint GetPopupPoint() const noexcept { return FPopupPoint; }
    /// A person chooses an item, which closes the menu and raises OnClick. False if the menu is closed, or the item
    /// is not in it, has items of its own, or it or one above it is disabled or hidden.
    bool ChooseByUser(TMenuItem& item);
    /// A person leaves the menu.
    void CloseByUser() noexcept { FIsOpen = false; }

private:
    TMenuItem FItems;
    TNotifyEvent FOnPopup;
    TPoint FPopupPoint;
    bool FIsOpen = false;
};

}  // namespace Varnholt
