#pragma once

#include <QMenu>
#include <QMenuBar>
#include <functional>

#include "Platform/Controls/Menus.h"

namespace Varnholt {

/// Called with the item that the user has chosen.
using TChoose = std::function<void(TMenuItem& item)>;

/// Puts the visible items into a menu of the toolkit, which reads those of submenus again each time they open.
void FillMenu(QMenu& menu, TMenuItem& items, const TChoose& choose);
void FillMenuBar(QMenuBar& bar, TMenuItem& items, const TChoose& choose);

}  // namespace Varnholt
