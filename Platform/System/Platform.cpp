#include "Platform/System/Platform.h"

#include "Platform/Runtime/Immortal.h"
#include "Platform/System/RealPlatformPrivate.h"

namespace Varnholt {

TPlatform& Platform() {
    static TImmortal<TPlatform> platform(RealPlatform());
    return *platform;
}

TPlatformScope::TPlatformScope() : FFormer(Platform()) {}

TPlatformScope::~TPlatformScope() {
    Platform() = FFormer;
}

}  // namespace Varnholt
