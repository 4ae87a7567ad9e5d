#include "Platform/System/RealPlatformPrivate.h"

namespace Varnholt {

TPlatform RealPlatform() {
    return {};
}

}  // namespace Varnholt
