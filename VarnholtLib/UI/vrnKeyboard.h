#pragma once

#include <cstdint>

#include "Platform/Runtime/Export.h"

/// The keyboard.
///
///     const bool isAdded = TKeyboard::IsKeyDown(17);      // Ctrl
///
/// Uses Platform().Keyboard. Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT TKeyboard {
public:
    TKeyboard() = delete;
    /// Whether a key is held down, by its virtual key code (Desktop.h).
    [[nodiscard]] static bool IsKeyDown(std::int32_t vk);
};

}  // namespace Varnholt
