#include "VarnholtLib/Services/vrnSystemInfo.h"

#include "Platform/System/Platform.h"

namespace Varnholt {

String TSystemInfo::GetMachineName() {
    return Platform().Process->GetMachineName();
}

}  // namespace Varnholt
