#include "Platform/Controls/PageControl.h"

#include <algorithm>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Indexes.h"

namespace Varnholt {

TTabSheet::TTabSheet() {
    SetAlign(alClient);
    SetTabStop(false);
    SetVisible(false);
}

TTabSheet::~TTabSheet() = default;

void TTabSheet::SetCaption(StringView caption) {
    FCaption = caption;
    Changed(caText);
}

TPageControl::TPageControl() {
    SetBounds(0, 0, 289, 193);
}

TPageControl::~TPageControl() = default;

std::vector<TTabSheet*> TPageControl::Pages() const {
    std::vector<TTabSheet*> pages;
    for (std::int32_t i = 0; i < GetControlCount(); ++i)
        if (auto* const page = dynamic_cast<TTabSheet*>(&GetControl(i))) pages.push_back(page);
    return pages;
}

std::int32_t TPageControl::GetPageCount() const noexcept {
    std::int32_t count = 0;
    for (std::int32_t i = 0; i < GetControlCount(); ++i)
        count += dynamic_cast<const TTabSheet*>(&GetControl(i)) != nullptr ? 1 : 0;
    return count;
}

TTabSheet& TPageControl::GetPage(std::int32_t index) const {
    const std::vector<TTabSheet*> pages = Pages();
    return *pages[ListIndex(index, pages.size())];
}

void TPageControl::SetActivePage(TTabSheet* page) {
    const std::vector<TTabSheet*> pages = Pages();
    const auto found = std::ranges::find(pages, page);
    if (page != nullptr && found == pages.end())
        throw EInvalidOperation(Format(u"Control \"%s\" has no child \"%s\"", {GetName(), page->GetName()}));
    FActivePage = page;
    if (page != nullptr) FActiveIndex = static_cast<std::int32_t>(found - pages.begin());
    if (page != nullptr) page->SetVisible(true);            // first, so that the focus finds a place
    for (std::int32_t i = 0; i < GetControlCount(); ++i) {  // an event of the focus may change the pages
        auto* const other = dynamic_cast<TTabSheet*>(&GetControl(i));
        if (other != nullptr) other->SetVisible(other == GetActivePage());
    }
    Changed(caSelection);
}

bool TPageControl::SelectPageByUser(std::int32_t index) {
    if (!IsIndex(index, static_cast<std::size_t>(GetPageCount())) || !FocusByUser() || !CanFocus())
        return false;
    TTabSheet& page = GetPage(index);
    if (GetActivePage() == &page) return true;
    SetActivePage(&page);
    const TNotifyEvent onChange = FOnChange;
    onChange(this);
    return true;
}

TSize TPageControl::GetClientSize() const {
    return GetPeer() != nullptr ? GetPeer()->GetClientSize() : TWinControl::GetClientSize();
}

void TPageControl::ControlsChanged() {
    const std::vector<TTabSheet*> pages = Pages();
    Changed(caItems);
    const bool isThere = std::ranges::find(pages, GetActivePage()) != pages.end();
    if (isThere && GetActivePage() != nullptr) return;
    if (pages.empty()) {
        FActivePage = {};
    } else {
        SetActivePage(pages[std::min(static_cast<std::size_t>(FActiveIndex), pages.size() - 1)]);
    }
}

}  // namespace Varnholt
