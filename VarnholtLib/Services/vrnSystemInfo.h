#pragma once

#include "Platform/Runtime/Types.h"

/// Facts of the machine.
///
/// Uses Platform.h. Threads: the function may be called on any thread.
namespace Varnholt {

class VARNHOLT_EXPORT TSystemInfo {
public:
    TSystemInfo() = delete;
    /// The name of the machine in its network; empty if the system gives none.
    [[nodiscard]] static String GetMachineName();
};

}  // namespace Varnholt
