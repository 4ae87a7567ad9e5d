#pragma once

#include "Platform/Controls/Control.h"
#include "Platform/Drawing/Font.h"
#include "Platform/Drawing/Geometry.h"

/// Font styles, anchors, sizes and rectangles as short texts, for settings.
///
///     config.WriteString(u"main.size", SizeToString({form.GetWidth(), form.GetHeight()}));
///     const TSize size = StringToSize(config.ReadString(u"main.size"));
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// A letter for each style: "B" bold, "I" italic, "U" underline, "S" strike-out, in this order; empty for none.
[[nodiscard]] VARNHOLT_EXPORT String FontStylesToString(TFontStyles styles);
/// The styles whose letters occur, in any order. Other characters, lower-case letters among them, are ignored.
[[nodiscard]] VARNHOLT_EXPORT TFontStyles StringToFontStyles(StringView text);

/// A letter for each anchor: "L" left, "T" top, "R" right, "B" bottom, in this order; empty for none.
[[nodiscard]] VARNHOLT_EXPORT String AnchorsToString(TAnchors anchors);
/// As StringToFontStyles.
[[nodiscard]] VARNHOLT_EXPORT TAnchors StringToAnchors(StringView text);

/// `WIDTH,HEIGHT`.
[[nodiscard]] VARNHOLT_EXPORT String SizeToString(const TSize& size);
/// Two integers with a comma between them, each as StrToInt reads it. Raises EConvertError `String is not a valid
/// Size string` for another number of parts, and as StrToInt for a part that is no integer.
[[nodiscard]] VARNHOLT_EXPORT TSize StringToSize(StringView text);

/// `LEFT,TOP,RIGHT,BOTTOM`.
[[nodiscard]] VARNHOLT_EXPORT String RectToString(const TRect& rect);
/// As StringToSize, for four integers; with the same message.
[[nodiscard]] VARNHOLT_EXPORT TRect StringToRect(StringView text);

}  // namespace Varnholt
