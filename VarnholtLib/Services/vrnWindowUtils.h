#pragma once

#include <cstdint>

#include "Platform/Runtime/Export.h"

/// The screen's active form, as the owner of what the system shows.
///
///     const std::uintptr_t owner = GetActiveScreenHandle();
///
/// Uses Platform.h. Threads: may be called on any thread.
namespace Varnholt {

/// The handle of the screen's active form; 0 if there is none.
[[nodiscard]] VARNHOLT_EXPORT std::uintptr_t GetActiveScreenHandle();

}  // namespace Varnholt
