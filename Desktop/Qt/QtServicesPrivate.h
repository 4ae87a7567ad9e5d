#pragma once

#include "Platform/System/Platform.h"

namespace Varnholt {

/// Puts the services of the desktop in the place of those of the platform.
void UseQtServices(TPlatform& platform);

}  // namespace Varnholt
