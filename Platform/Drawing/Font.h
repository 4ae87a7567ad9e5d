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
    String Name;            ///< the family; empty for that of the desktop
    std::int32_t Size = 9;  ///< in points
    TColor Color = clWindowText;
    TFontStyles Style;
    bool operator==(const TFont&) const = default;
};

}  // namespace Varnholt
