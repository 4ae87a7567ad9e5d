#pragma once

#include "Platform/Runtime/Types.h"

/// Latitudes and longitudes written as text.
///
///     GetLatitudeValue(u"33.5S");                          // -33.5
///     GetLongitudeValue(u"9 deg 30 min 36 sec E");         // 9.51
///     LongitudeVal(-170);                                  // 190
///
/// A text is a plain number, or degrees, minutes and seconds with the words DEG, MIN and SEC in this order,
/// each after its number; seconds, or minutes and seconds, may be omitted. A letter for the hemisphere may
/// end the text. Case is ignored, and blanks may surround the numbers. Each number is read by StrToFloat,
/// with the decimal separator of FormatSettings(), and keeps its own sign: minutes are always added.
///
/// Commas and semicolons are removed from the text wherever they occur, so they separate nothing: "33,5" is
/// 335, even where the comma is the decimal separator.
///
/// No range is checked: "400" is a latitude of 400 degrees, and a number beyond the range of a float gives an
/// infinity.
///
/// Threads: the functions keep no state; for the settings see FormatSettings.h.
namespace Varnholt {

/// The latitude in decimal degrees, south negative. A last "S" means south. A last "N" means north, unless an
/// "I" precedes it: it then belongs to "MIN". A blank after the letter is not skipped.
///
/// Raises Exception "Problem parsing the string: ", followed by "String is empty" for a text without any
/// character other than commas and semicolons, else by StrToFloat's "'PART' is not a valid floating point
/// value", with the first part that is no number, in upper case.
[[nodiscard]] VARNHOLT_EXPORT float GetLatitudeValue(StringView text);

/// The longitude in decimal degrees, west negative. As GetLatitudeValue, with "W" for west and "E" for east.
[[nodiscard]] VARNHOLT_EXPORT float GetLongitudeValue(StringView text);

/// The longitude counted eastwards: a negative value plus 360, any other unchanged. A value just below 0 may
/// round to 360.
[[nodiscard]] VARNHOLT_EXPORT float LongitudeVal(float value);

}  // namespace Varnholt
