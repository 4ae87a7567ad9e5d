#pragma once

#include "Platform/Controls/Control.h"

/// Enabling or disabling all controls inside a container.
///
///     TControlEnumerator::SetEnabled(panel, false, true);
///
/// Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT TControlEnumerator {
public:
    TControlEnumerator() = delete;
    /// Sets the enabled state of each control inside the given one, with `enumChildren` at every depth. The control
    /// itself is not changed.
    static void SetEnabled(TWinControl& control, bool value, bool enumChildren);
};

}  // namespace Varnholt
