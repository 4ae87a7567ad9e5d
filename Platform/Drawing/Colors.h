#pragma once

#include <cstdint>

#include "Platform/Runtime/Export.h"

/// Colours, and the colours that the user has chosen for the desktop.
///
///     const TColor face = ColorToRGB(clBtnFace);       // 0x00F0F0F0 unless the desktop has another
///
/// Threads: the table of system colours has no lock; change it while no other thread reads it.
namespace Varnholt {

/// Red in the low byte, then green, then blue. The top byte is 0 for a plain colour, and 0xFF for a system colour, whose
/// number is in the low byte.
using TColor = std::uint32_t;

/// Alpha, red, green, blue from the top byte to the low one; alpha 255 is opaque.
using TARGB = std::uint32_t;

inline constexpr TColor clBlack = 0x000000;
inline constexpr TColor clWhite = 0xFFFFFF;
inline constexpr TColor clRed = 0x0000FF;

// --- System colours ---
inline constexpr TColor clScrollBar = 0xFF000000;
inline constexpr TColor clMenu = 0xFF000004;
inline constexpr TColor clWindow = 0xFF000005;
inline constexpr TColor clWindowFrame = 0xFF000006;
inline constexpr TColor clMenuText = 0xFF000007;
inline constexpr TColor clWindowText = 0xFF000008;
inline constexpr TColor clHighlight = 0xFF00000D;
inline constexpr TColor clHighlightText = 0xFF00000E;
inline constexpr TColor clBtnFace = 0xFF00000F;
inline constexpr TColor clBtnShadow = 0xFF000010;
inline constexpr TColor clGrayText = 0xFF000011;
inline constexpr TColor clBtnText = 0xFF000012;
inline constexpr TColor clBtnHighlight = 0xFF000014;
inline constexpr TColor clInfoText = 0xFF000017;
inline constexpr TColor clInfoBk = 0xFF000018;

/// The plain colour: that of the table for a system colour, black for one that the table does not have, otherwise the
/// colour without its top byte.
[[nodiscard]] VARNHOLT_EXPORT TColor ColorToRGB(TColor color) noexcept;

/// Sets a system colour for the whole process. Any other `color` is ignored, and so is the top byte of `plain`.
VARNHOLT_EXPORT void SetSystemColor(TColor color, TColor plain) noexcept;

}  // namespace Varnholt
