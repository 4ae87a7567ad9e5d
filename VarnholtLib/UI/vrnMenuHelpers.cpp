#include "VarnholtLib/UI/vrnMenuHelpers.h"

#include <algorithm>
#include <utility>

namespace Varnholt {
namespace {

std::int32_t Sum(std::int64_t a, std::int64_t b) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(a + b, INT32_MIN, INT32_MAX));
}

}  // namespace

std::unique_ptr<TMenuItem> CreateMenuItem(StringView caption, std::int32_t tag, TNotifyEvent onClick) {
    auto item = std::make_unique<TMenuItem>();
    item->SetCaption(caption);
    item->SetTag(tag);
    item->SetOnClick(std::move(onClick));
    return item;
}

TMenuItem& AddMenuItem(TPopupMenu& menu, StringView caption, std::int32_t tag, TNotifyEvent onClick) {
    return menu.GetItems().Add(CreateMenuItem(caption, tag, std::move(onClick)));
}

TMenuItem& AddSubMenuItem(TMenuItem& parent, StringView caption, std::int32_t tag, TNotifyEvent onClick) {
    return parent.Add(CreateMenuItem(caption, tag, std::move(onClick)));
}

void ShowPopup(TPopupMenu& menu, TControl& control, TPopupPlacement placement) {
    const TPoint origin = control.GetClientOrigin();
    if (placement == ppUnder) {
        menu.Popup(origin.X, Sum(origin.Y, control.GetHeight()));
    } else {
        menu.Popup(Sum(origin.X, control.GetWidth()), origin.Y);
    }
}

}  // namespace Varnholt
