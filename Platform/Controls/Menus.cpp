#include "Platform/Controls/Menus.h"

#include "Platform/Controls/ControlBackend.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Indexes.h"

namespace Varnholt {

TMenuItem::TMenuItem() = default;

TMenuItem::~TMenuItem() = default;

void TMenuItem::Click() {
    const TNotifyEvent onClick = FOnClick;
    onClick(this);
}

TMenuItem& TMenuItem::Add(std::unique_ptr<TMenuItem> item) {
    if (item == nullptr) throw EArgumentNilException(u"item");
    item->FParent = this;
    FItems.push_back(std::move(item));
    return *FItems.back();
}

TMenuItem& TMenuItem::GetItem(std::int32_t index) const {
    return *FItems[ListIndex(index, FItems.size())];
}

void TMenuItem::Delete(std::int32_t index) {
    FItems.erase(FItems.begin() + static_cast<std::ptrdiff_t>(ListIndex(index, FItems.size())));
}

TMenu::TMenu() = default;

TMenu::~TMenu() = default;

bool TMenu::Offers(const TMenuItem& item) const noexcept {
    const TMenuItem* at = &item;
    while (at != nullptr && at != &FItems && at->GetEnabled() && at->GetVisible()) at = at->GetParent();
    return at == &FItems && &item != &FItems && item.GetCount() == 0;
}

bool TMenu::ChooseByUser(TMenuItem& item) {
    if (!Offers(item)) return false;
    item.Click();
    return true;
}

TMainMenu::TMainMenu() = default;

TMainMenu::~TMainMenu() = default;

TPopupMenu::TPopupMenu() = default;

TPopupMenu::~TPopupMenu() = default;

void TPopupMenu::Popup(std::int32_t x, std::int32_t y) {
    const TNotifyEvent onPopup = FOnPopup;
    onPopup(this);
    FPopupPoint = {x, y};
    FIsOpen = true;
    if (IControlBackend* const backend = ControlBackend()) backend->ShowPopup(*this);
}

bool TPopupMenu::ChooseByUser(TMenuItem& item) {
    if (!FIsOpen || !Offers(item)) return false;
    FIsOpen = false;
    return TMenu::ChooseByUser(item);
}

}  // namespace Varnholt
