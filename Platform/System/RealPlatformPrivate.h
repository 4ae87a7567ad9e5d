#pragma once

#include "Platform/System/Platform.h"

namespace Varnholt {

/// The facts of the real machine.
[[nodiscard]] TPlatform RealPlatform();

}  // namespace Varnholt
