#include "VarnholtLib/UI/vrnHiDpi.h"

#include <algorithm>

#include "Platform/Controls/Application.h"
#include "Platform/Runtime/FloatMath.h"

namespace Varnholt {
namespace {

constexpr Extended kDesignDensity = 96;

}  // namespace

std::int32_t HiDpiScaleValue(std::int32_t value) {
    // A density of 32 bits keeps the product within 64.
    const std::int64_t scaled = RoundToInt64(Screen().GetPixelsPerInch() / kDesignDensity * value);
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(scaled, INT32_MIN, INT32_MAX));
}

void HiDpiScaleControlSize(TControl* control) {
    if (control == nullptr) return;
    const TAlign align = control->GetAlign();
    if (align != alTop && align != alBottom) control->SetWidth(HiDpiScaleValue(control->GetWidth()));
    if (align != alLeft && align != alRight) control->SetHeight(HiDpiScaleValue(control->GetHeight()));
}

void HiDpiScaleControlSizes(TControl* control) {
    HiDpiScaleControlSize(control);
    auto* const container = dynamic_cast<TWinControl*>(control);
    for (std::int32_t i = 0; container != nullptr && i < container->GetControlCount(); ++i)
        HiDpiScaleControlSizes(&container->GetControl(i));
}

void HiDpiScaleLayout(TWinControl& control, bool scaleSizes) {
    for (std::int32_t i = 0; i < control.GetControlCount(); ++i) {
        TControl& child = control.GetControl(i);
        if (scaleSizes) HiDpiScaleControlSize(&child);
        if (child.GetAlign() == alNone) {
            child.SetLeft(HiDpiScaleValue(child.GetLeft()));
            child.SetTop(HiDpiScaleValue(child.GetTop()));
        }
        if (auto* const container = dynamic_cast<TWinControl*>(&child))
            HiDpiScaleLayout(*container, scaleSizes);
    }
}

void HiDpiScaleGrid(TDrawGrid& grid) {
    grid.SetDefaultRowHeight(HiDpiScaleValue(grid.GetDefaultRowHeight()));
    grid.SetDefaultColWidth(HiDpiScaleValue(grid.GetDefaultColWidth()));
}

void HiDpiFixSpinEdit(TSpinEdit& spinEdit) {
    const std::int32_t width = spinEdit.GetWidth();
    spinEdit.GetButton().SetWidth(HiDpiScaleValue(10));
    spinEdit.SetWidth(width < INT32_MAX ? width + 1 : width - 1);
    spinEdit.SetWidth(width);
}

}  // namespace Varnholt
