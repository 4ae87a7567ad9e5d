#pragma once

#include "Platform/Controls/Control.h"
#include "Platform/Controls/Menus.h"

/// Building popup menus, and showing one beside a control.
///
///     AddMenuItem(menu, u"&Copy", kCopy, [this](TObject*) { Copy(); });
///     ShowPopup(menu, button, ppUnder);
///
/// Threads: main thread only.
namespace Varnholt {

/// Where a popup menu appears: below the control, or at its right.
enum TPopupPlacement : std::uint8_t { ppUnder, ppRight };

/// A new item, which the caller adds to a menu; the menu then owns it.
[[nodiscard]] VARNHOLT_EXPORT std::unique_ptr<TMenuItem> CreateMenuItem(StringView caption, std::int32_t tag,
                                                                        TNotifyEvent onClick);
/// Appends a new item to the top level of a menu and returns it.
VARNHOLT_EXPORT TMenuItem& AddMenuItem(TPopupMenu& menu, StringView caption, std::int32_t tag,
                                       TNotifyEvent onClick);
/// Appends a new item to another item and returns it.
VARNHOLT_EXPORT TMenuItem& AddSubMenuItem(TMenuItem& parent, StringView caption, std::int32_t tag,
                                          TNotifyEvent onClick);

/// Shows a menu at the lower left corner of a control, or at its upper right one.
VARNHOLT_EXPORT void ShowPopup(TPopupMenu& menu, TControl& control, TPopupPlacement placement);

}  // namespace Varnholt
