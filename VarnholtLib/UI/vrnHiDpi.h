#pragma once

#include "Platform/Controls/DrawGrid.h"
#include "Platform/Controls/Edits.h"

/// Scaling from the density that dialogs are designed for, 96 dots in an inch, to that of the screen.
///
///     HiDpiScaleControlSize(&form);
///     HiDpiScaleLayout(form, true);
///
/// The density is Screen().GetPixelsPerInch(). At 96 nothing changes.
///
/// Threads: main thread only.
namespace Varnholt {

/// The value in pixels of the screen, to the nearest integer, ties to the even one. A result outside 32 bits becomes the
/// nearest end of these.
[[nodiscard]] VARNHOLT_EXPORT std::int32_t HiDpiScaleValue(std::int32_t value);

/// Scales the width, unless the control is aligned to the top or bottom, and the height, unless it is aligned to
/// the left or right. Null is ignored.
VARNHOLT_EXPORT void HiDpiScaleControlSize(TControl* control);
/// The same for the control and all inside it, at every depth. Null is ignored.
VARNHOLT_EXPORT void HiDpiScaleControlSizes(TControl* control);
/// Scales all controls inside the given one, at every depth: their sizes, if told to, and the place of those without an
/// alignment.
VARNHOLT_EXPORT void HiDpiScaleLayout(TWinControl& control, bool scaleSizes);
/// Scales the default row height and column width.
VARNHOLT_EXPORT void HiDpiScaleGrid(TDrawGrid& grid);
/// Makes the button of a spin edit as wide as 10 pixels of the design, and has the spin edit lay it out anew.
VARNHOLT_EXPORT void HiDpiFixSpinEdit(TSpinEdit& spinEdit);

}  // namespace Varnholt
