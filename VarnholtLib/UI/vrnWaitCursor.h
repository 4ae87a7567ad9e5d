#pragma once

#include <cstdint>

#include "Platform/Runtime/Export.h"

/// The hourglass while something takes long; calls may be nested.
///
///     TWaitCursor::Wait();
///     Calculate();
///     TWaitCursor::Restore();
///
/// The state belongs to the process. Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT TWaitCursor {
public:
    TWaitCursor() = delete;

    /// Shows the hourglass; the outermost call keeps the cursor that it replaces.
    static void Wait();
    /// Ends a Wait; the outermost brings the kept cursor back. Without a Wait nothing happens.
    static void Restore();
    /// Ends all of them: brings the kept cursor back in any case, which is 0 before the first call of Wait or SetCursor.
    static void Reset();
    /// Keeps the present cursor and sets another. The nesting is unchanged.
    static void SetCursor(std::int16_t cur);

    /// How many calls of Wait are not ended, and the cursor that is kept.
    [[nodiscard]] static std::int32_t GetCount() noexcept;
    [[nodiscard]] static std::int16_t GetCursor() noexcept;
};

}  // namespace Varnholt
