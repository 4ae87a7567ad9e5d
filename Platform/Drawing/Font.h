#pragma once

#include "Platform/Drawing/Colors.h"
#include "Platform/Runtime/EnumSet.h"
#include "Platform/Runtime/Types.h"

/// The font of a text.
///
/// Threads: plain values.
namespace Varnholt {

enum TFontStyle : std::uint8_t { fsBold, fsItalic, fsUnderline, fsStrikeOut };

using TFontStyles = TEnumSet<TFontStyle>;

struct TFont {
    String Name = {};       ///< the family; empty for that of the desktop
    std::int32_t Size = 9;  ///< in points of 1/72 inch, of which 72 are 96 pixels
    TColor Color = clWindowText;
    TFontStyles Style = {};
    /// The direction of the text in tenths of a degree, counterclockwise from the right.
    std::int32_t Escapement = 0;
    bool operator==(const TFont&) const = default;
};

}  // namespace Varnholt
