#pragma once

#include <concepts>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <type_traits>
#include <variant>

#include "Platform/Runtime/Types.h"

/// The formatter, which inserts values into a format text.
///
///     Format(u"%s: %.1f mm in %d days", {station, rain, days});   // "Ombrix: 12.5 mm in 3 days"
///     Format(u"%-8s|%8.3f|%.2x", {name, value, color});
///
/// A placeholder is "%", an optional "-", an optional width, an optional "." with a precision, and a letter:
///
///     %d   an integer in decimal digits; precision: the least number of digits, padded with zeros
///     %x   an integer in upper-case hexadecimal digits, a negative one in two's complement of the width of
///          its own type (std::int8_t -1 is FF); precision as for %d
///     %s   a text; precision: the greatest number of code units (a surrogate pair is not cut in two)
///     %f   a float with as many decimal places as the precision says, 2 without one, correctly rounded (to
///          nearest), the decimal separator that of FormatSettings(). What rounds to zero has no sign. The
///          special values are NAN, INF and -INF.
///     %%   a percent sign; takes no argument, width or precision
///
/// The width is the least number of code units: blanks are added before the text, or with "-" after it. Width
/// and precision are at most 10000. The placeholders take the arguments in order, and all must be taken.
///
/// Threads: as FormatSettings.h says.
namespace Varnholt {

/// The integer types of at most 64 bits, without bool and the character types.
template <typename T>
concept TFormatInteger = std::integral<T> && sizeof(T) <= sizeof(std::uint64_t) && !std::same_as<T, bool> &&
                         !std::same_as<T, char> && !std::same_as<T, wchar_t> && !std::same_as<T, char8_t> &&
                         !std::same_as<T, char16_t> && !std::same_as<T, char32_t>;

/// One argument of Format: an integer, a float or a text, converted implicitly. A text is not copied and must
/// exist as long as the argument, as it does in a call of Format. A null text is an empty one.
class VARNHOLT_EXPORT TFormatArg {
public:
    struct TInteger {
        std::uint64_t Magnitude;
        std::uint64_t Bits;  ///< two's complement in the width of the argument's type
        bool IsNegative;
    };
    using TValue = std::variant<TInteger, Extended, StringView>;

    template <TFormatInteger T>
    TFormatArg(T value) noexcept : FValue(ToInteger(value)) {}
    TFormatArg(float value) noexcept : FValue(Extended{value}) {}
    TFormatArg(double value) noexcept : FValue(Extended{value}) {}
    TFormatArg(Extended value) noexcept : FValue(value) {}
    TFormatArg(const String& text) noexcept : FValue(StringView(text)) {}
    TFormatArg(StringView text) noexcept : FValue(text) {}
    TFormatArg(const Char* text) noexcept : FValue(text == nullptr ? StringView() : StringView(text)) {}

    [[nodiscard]] const TValue& GetValue() const noexcept { return FValue; }

private:
    template <TFormatInteger T>
    static TInteger ToInteger(T value) noexcept {
        const bool isNegative = value < T{0};
        const auto wide = static_cast<std::uint64_t>(value);
        return {isNegative ? 0 - wide : wide, static_cast<std::make_unsigned_t<T>>(value), isNegative};
    }

    TValue FValue;
};

/// The format with its placeholders replaced by the arguments, in order. Raises EConvertError
/// "Format 'FORMAT', position N: REASON", with N the 1-based position of the placeholder's "%", for an
/// unknown or unfinished placeholder, a missing argument, one of the wrong kind (an integer is no float) and
/// a width or precision above 10000; and "Format 'FORMAT' takes N arguments, not M" for arguments left over.
[[nodiscard]] VARNHOLT_EXPORT String Format(StringView format, std::span<const TFormatArg> args);
[[nodiscard]] VARNHOLT_EXPORT String Format(StringView format, std::initializer_list<TFormatArg> args);

}  // namespace Varnholt
