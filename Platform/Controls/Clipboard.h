#pragma once

#include <cstdint>

#include "Platform/Runtime/Types.h"

/// The clipboard.
///
///     Clipboard().SetAsText(u"12.5");
///     if (Clipboard().HasFormat(kClipboardText)) Paste(Clipboard().GetAsText());
///
/// Platform().Clipboard holds it; without a desktop it stays in the process. Any program may have written it.
///
/// Threads: main thread only.
namespace Varnholt {

/// The number of the text format.
inline constexpr std::uint16_t kClipboardText = 1;

class VARNHOLT_EXPORT TClipboard {
public:
    /// Whether there is a text; false for every other format.
    [[nodiscard]] bool HasFormat(std::uint16_t format) const;
    /// Empty if there is none.
    [[nodiscard]] String GetAsText() const;
    void SetAsText(StringView text);
};

/// The clipboard of the desktop.
[[nodiscard]] VARNHOLT_EXPORT TClipboard& Clipboard() noexcept;

}  // namespace Varnholt
