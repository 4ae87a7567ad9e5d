#pragma once

#include <cstddef>
#include <type_traits>

#include "Platform/Runtime/Export.h"

/// Rights of the user, and pointers.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// Whether the user may act as administrator: the superuser, and members of the groups sudo, wheel and admin, whose members
/// may become that by the usual configuration. The groups of the process count, whether or not sudo is installed.
[[nodiscard]] VARNHOLT_EXPORT bool IsWindowsAdmin();

/// Adds so many bytes to a pointer.
template <typename T>
void IncPtr(T*& pointer, std::ptrdiff_t count) noexcept {
    using TByte = std::conditional_t<std::is_const_v<T>, const std::byte, std::byte>;
    using TVoid = std::conditional_t<std::is_const_v<T>, const void, void>;
    pointer = static_cast<T*>(static_cast<TVoid*>(static_cast<TByte*>(static_cast<TVoid*>(pointer)) + count));
}

}  // namespace Varnholt
