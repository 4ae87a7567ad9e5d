#pragma once

#include <cstdint>

#include "Platform/Runtime/Export.h"

/// The screen's active form, as the owner of what the system shows, and the forms inside a main form.
///
///     const std::uintptr_t owner = GetActiveScreenHandle();
///     MDICloseAll(mainForm);
///
/// Uses Platform.h and Form.h. Threads: main thread only.
namespace Varnholt {

class TCustomForm;

/// The handle of the screen's active form; 0 if there is none.
[[nodiscard]] VARNHOLT_EXPORT std::uintptr_t GetActiveScreenHandle();

/// Closes the forms inside a main form that have a system menu among their border icons. A form that raises stays
/// as it is, silently, and the others are closed.
VARNHOLT_EXPORT void MDICloseAll(TCustomForm& form);

}  // namespace Varnholt
