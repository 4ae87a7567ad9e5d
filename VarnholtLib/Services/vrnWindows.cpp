#include "VarnholtLib/Services/vrnWindows.h"

#include <algorithm>

#include "Platform/Controls/Edits.h"
#include "Platform/Controls/ListView.h"
#include "Platform/Controls/Lists.h"
#include "Platform/Controls/TreeView.h"
#include "Platform/System/Platform.h"

namespace Varnholt {
namespace {

template <typename... TClasses>
bool IsOneOf(const TControl& control) {
    return ((dynamic_cast<const TClasses*>(&control) != nullptr) || ...);
}

}  // namespace

bool IsWindowsAdmin() {
    static constexpr StringView kGroups[] = {u"sudo", u"wheel", u"admin"};
    if (Platform().Process->GetIsSuperUser()) return true;
    return std::ranges::any_of(Platform().Process->GetGroups(), [](const String& group) {
        return std::ranges::find(kGroups, group) != std::end(kGroups);
    });
}

void RepaintAll(TControl& control) {
    auto* const container = dynamic_cast<TWinControl*>(&control);
    for (std::int32_t i = 0; container != nullptr && i < container->GetControlCount(); ++i)
        RepaintAll(container->GetControl(i));
    control.Repaint();
}

void SetChildControlsState(TControl& control, bool enabled) {
    control.SetEnabled(enabled);
    auto* const container = dynamic_cast<TWinControl*>(&control);
    for (std::int32_t i = 0; container != nullptr && i < container->GetControlCount(); ++i) {
        TControl& child = container->GetControl(i);
        SetChildControlsState(child, enabled);
        if (IsOneOf<TEdit, TComboBox, TListBox, TListView, TMemo, TTreeView>(child))
            child.SetColor(enabled ? clWindow : clBtnFace);
    }
}

}  // namespace Varnholt
