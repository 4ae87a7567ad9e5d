#pragma once

#include "Platform/Runtime/FormatSettings.h"
#include "Platform/Runtime/Types.h"

/// Conversion between numbers and texts.
///
///     const Extended rain = StrToFloat(u" 12.5 ");
///     std::int32_t station = 0;
///     if (!TryStrToInt(field, station)) station = kUnknownStation;
///     label = FloatToStr(rain * 2);                                 // "25"
///
/// A number may have blanks (code units 32 and below) around it, but not within. Only ASCII digits are
/// digits. The decimal separator is that of the settings, by default FormatSettings().
///
/// Threads: the functions keep no state; for the default settings the rule of FormatSettings.h holds.
namespace Varnholt {

/// The integer in a text: an optional sign, then decimal digits, or "$", "0x" or "0X" and
/// hexadecimal digits of either case. The value must fit in 32 bits. A hexadecimal number without "-" may use
/// all 32 bits, up to FFFFFFFF: 80000000 and above are the negative number of that bit pattern, so
/// "$FFFFFFFF" is -1. Raises EConvertError "'TEXT' is not a valid integer value".
[[nodiscard]] VARNHOLT_EXPORT std::int32_t StrToInt(StringView text);

/// As StrToInt, but returns whether the text was an integer, and leaves value unchanged if not.
[[nodiscard]] VARNHOLT_EXPORT bool TryStrToInt(StringView text, std::int32_t& value);

/// As StrToInt, but returns the default for a text that is not an integer.
[[nodiscard]] VARNHOLT_EXPORT std::int32_t StrToIntDef(StringView text, std::int32_t defaultValue);

/// The number in a text, correctly rounded (to nearest): an optional sign, digits with at most one decimal
/// separator before, between or after them, and optionally "E" or "e", an optional sign and digits. No other
/// form is accepted: no thousand separators, infinities, NaNs or hexadecimal digits. A magnitude too small
/// for the type becomes a denormal number or zero, one too large is refused. Raises EConvertError "'TEXT' is
/// not a valid floating point value".
[[nodiscard]] VARNHOLT_EXPORT Extended StrToFloat(StringView text,
                                                  const TFormatSettings& settings = FormatSettings());

/// As StrToFloat, but returns whether the text was a number, and leaves value unchanged if not. The form
/// for double rounds once, from the text to a double.
[[nodiscard]] VARNHOLT_EXPORT bool TryStrToFloat(StringView text, Extended& value,
                                                 const TFormatSettings& settings = FormatSettings());
[[nodiscard]] VARNHOLT_EXPORT bool TryStrToFloat(StringView text, double& value,
                                                 const TFormatSettings& settings = FormatSettings());

/// The decimal digits of an integer, with a "-" before a negative one.
[[nodiscard]] VARNHOLT_EXPORT String IntToStr(std::int64_t value);

/// The number rounded to 15 significant digits, without trailing zeros: "0.1", "-1250000". Below 1E-4 and
/// from 1E15 in scientific form: "1.5E-7", "1E20". Zero of either sign gives "0"; the special values are
/// "NAN", "INF" and "-INF".
[[nodiscard]] VARNHOLT_EXPORT String FloatToStr(Extended value,
                                                const TFormatSettings& settings = FormatSettings());

/// The same, written after what the text holds already.
VARNHOLT_EXPORT void AppendInt(String& text, std::int64_t value);
VARNHOLT_EXPORT void AppendFloat(String& text, Extended value,
                                 const TFormatSettings& settings = FormatSettings());

}  // namespace Varnholt
