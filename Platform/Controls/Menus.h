#pragma once

#include <memory>
#include <vector>

#include "Platform/Controls/Component.h"
#include "Platform/Drawing/Geometry.h"

/// Popup menus, and the menu bar of a form.
///
///     TPopupMenu menu;
///     TMenuItem& copy = menu.GetItems().Add(std::make_unique<TMenuItem>());
///     copy.SetCaption(u"&Copy");
///     copy.SetOnClick([&](TObject*) { Copy(); });
///     menu.Popup(point.X, point.Y);
///
///     copy.SetShortCut(u"Ctrl+C");           // in a TMainMenu, which TCustomForm::SetMenu shows
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
    /// The keys that choose the item of a menu bar, as "Ctrl+O", "Shift+F5" or "Del"; empty for none. A back end ignores
    /// what it does not understand.
    [[nodiscard]] const String& GetShortCut() const noexcept { return FShortCut; }
    void SetShortCut(StringView shortCut) { FShortCut = shortCut; }
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
    String FShortCut;
    TNotifyEvent FOnClick;
    std::vector<std::unique_ptr<TMenuItem>> FItems;
    TMenuItem* FParent = nullptr;
    bool FEnabled = true;
    bool FVisible = true;
    bool FChecked = false;
};

class VARNHOLT_EXPORT TMenu : public TComponent {
public:
    ~TMenu() override;

    /// The item whose items are the top level of the menu.
    [[nodiscard]] TMenuItem& GetItems() noexcept { return FItems; }
    [[nodiscard]] const TMenuItem& GetItems() const noexcept { return FItems; }
    /// A person chooses an item, which raises OnClick. False if the item is not in the menu, has items of its own, or it
    /// or one above it is disabled or hidden.
    virtual bool ChooseByUser(TMenuItem& item);

protected:
    TMenu();
    [[nodiscard]] bool Offers(const TMenuItem& item) const noexcept;

private:
    TMenuItem FItems;
};

/// The menu bar of a form, whose items are read when it is shown and each time one of its menus opens.
class VARNHOLT_EXPORT TMainMenu : public TMenu {
public:
    TMainMenu();
    ~TMainMenu() override;
};

class VARNHOLT_EXPORT TPopupMenu : public TMenu {
public:
    TPopupMenu();
    ~TPopupMenu() override;

    /// Raised before the menu appears.
    [[nodiscard]] const TNotifyEvent& GetOnPopup() const noexcept { return FOnPopup; }
    void SetOnPopup(TNotifyEvent onPopup) { FOnPopup = std::move(onPopup); }

    /// Shows the menu at a point of the screen. A back end returns when the user has chosen; without one, the menu
    /// stays open for ChooseByUser.
    void Popup(std::int32_t x, std::int32_t y);
    [[nodiscard]] bool IsOpen() const noexcept { return FIsOpen; }
    /// Where the menu was shown last.
    [[nodiscard]] TPoint GetPopupPoint() const noexcept { return FPopupPoint; }
    /// Closes the menu first. False also if it is closed already.
    bool ChooseByUser(TMenuItem& item) override;
    /// A person leaves the menu.
    void CloseByUser() noexcept { FIsOpen = false; }

private:
    TNotifyEvent FOnPopup;
    TPoint FPopupPoint;
    bool FIsOpen = false;
};

}  // namespace Varnholt
