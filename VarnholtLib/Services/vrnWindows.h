#pragma once

#include <cstddef>
#include <type_traits>

#include "Platform/Runtime/Export.h"

/// Rights of the user, pointers, and the state of all controls in a container.
///
/// Threads: the functions keep no state; those on controls are for the main thread only.
namespace Varnholt {

class TControl;

/// Whether the user may act as administrator: the superuser, and members of the groups sudo, wheel and admin, whose
/// members may become that by the usual configuration. The groups of the process count, whether or not sudo is
/// installed.
[[nodiscard]] VARNHOLT_EXPORT bool IsWindowsAdmin();

/// Draws the controls inside a control again, at every depth, and after those inside it the control itself.
VARNHOLT_EXPORT void RepaintAll(TControl& control);

/// Enables or disables a control and all inside it, at every depth. An edit, combo box, list box, list view, memo
/// or tree view inside it, or of a class derived from these, also gets the colour clWindow, or clBtnFace while
/// disabled.
VARNHOLT_EXPORT void SetChildControlsState(TControl& control, bool enabled);

/// Adds so many bytes to a pointer.
template <typename T>
void IncPtr(T*& pointer, std::ptrdiff_t count) noexcept {
    using TByte = std::conditional_t<std::is_const_v<T>, const std::byte, std::byte>;
    using TVoid = std::conditional_t<std::is_const_v<T>, const void, void>;
    pointer = static_cast<T*>(static_cast<TVoid*>(static_cast<TByte*>(static_cast<TVoid*>(pointer)) + count));
}

}  // namespace Varnholt
