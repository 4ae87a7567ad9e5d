#include "VarnholtLib/UI/vrnControlEnumerator.h"

namespace Varnholt {

void TControlEnumerator::SetEnabled(TWinControl& control, bool value, bool enumChildren) {
    for (std::int32_t i = 0; i < control.GetControlCount(); ++i) {
        TControl& child = control.GetControl(i);
        child.SetEnabled(value);
        auto* const container = dynamic_cast<TWinControl*>(&child);
        if (enumChildren && container != nullptr) SetEnabled(*container, value, true);
    }
}

}  // namespace Varnholt
