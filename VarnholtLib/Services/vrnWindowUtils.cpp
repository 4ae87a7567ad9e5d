#include "VarnholtLib/Services/vrnWindowUtils.h"

#include <vector>

#include "Platform/Controls/Form.h"
#include "Platform/System/Platform.h"

namespace Varnholt {

std::uintptr_t GetActiveScreenHandle() {
    return Platform().Screen->GetActiveFormHandle();
}

void MDICloseAll(TCustomForm& form) {
    std::vector<TComponentRef<TCustomForm>> children;  // closing one may destroy others
    for (std::int32_t i = 0; i < form.GetMDIChildCount(); ++i)
        if (form.GetMDIChild(i).GetBorderIcons().Contains(biSystemMenu))
            children.emplace_back(&form.GetMDIChild(i));
    for (const TComponentRef<TCustomForm>& child : children) {
        try {
            if (TCustomForm* const open = child.Get()) open->Close();
        } catch (...) {
            // The next one is closed all the same.
        }
    }
}

}  // namespace Varnholt
