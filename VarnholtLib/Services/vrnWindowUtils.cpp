#include "VarnholtLib/Services/vrnWindowUtils.h"

#include "Platform/System/Platform.h"

namespace Varnholt {

std::uintptr_t GetActiveScreenHandle() {
    return Platform().Screen->GetActiveFormHandle();
}

}  // namespace Varnholt
