#pragma once

#include "Platform/System/Platform.h"

namespace Varnholt {

/// The facts of the real machine.
[[nodiscard]] TPlatform RealPlatform();

/// The folders of the real machine.
[[nodiscard]] std::shared_ptr<IKnownFolders> RealKnownFolders();

/// Sets the services of a machine without a desktop.
void UseNoDesktop(TPlatform& platform);

}  // namespace Varnholt
