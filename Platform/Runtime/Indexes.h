#pragma once

#include <cstddef>
#include <cstdint>

#include "Platform/Runtime/Exceptions.h"

/// The check of a 0-based index from a caller.
///
///     return FItems[ListIndex(index, FItems.size())];
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// Whether a 0-based index is valid in a container of that many items.
[[nodiscard]] constexpr bool IsIndex(std::int64_t index, std::size_t count) noexcept {
    return static_cast<std::uint64_t>(index) < count;  // a negative index is larger than any count
}

/// The index as a position. Raises EListError "List index out of bounds (INDEX)" if it is not valid.
[[nodiscard]] inline std::size_t ListIndex(std::int64_t index, std::size_t count) {
    if (!IsIndex(index, count)) [[unlikely]]
        throw EListError::IndexOutOfBounds(index);
    return static_cast<std::size_t>(index);
}

}  // namespace Varnholt
