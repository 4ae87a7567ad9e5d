#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <memory>
#include <variant>

#include "Platform/Runtime/Types.h"

/// One value of a type that is known only at run time: nothing, a number, a Boolean or a text.
///
///     Variant cell = u"12";
///     cell = cell.ConvertTo(varInteger);       // the 32-bit integer 12
///     Variant total = cell + 0.5;              // the 64-bit float 12.5
///     if (total > cell) Show(total.ToText());  // "12.5"
///
/// A failed conversion raises EVariantError and changes nothing. There are two messages:
/// "Cannot convert String 'abc' to Integer" for a value that has no form in the other type, and
/// "Int64 '3000000000' is out of range for Integer" for a number that does not fit.
///
/// Uses Numbers.h for number texts, which follow FormatSettings().
///
/// Threads: a variant may be used by one thread at a time, or by any number of threads that only read it.
/// Copies are independent, also those that share the storage of a text, which never changes.
namespace Varnholt {

/// The 16-bit code of a variant's type. Columns store it and compare it as a number.
using TVarType = std::uint16_t;

inline constexpr TVarType varEmpty = 0;      ///< nothing
inline constexpr TVarType varSmallint = 2;   ///< 16-bit integer
inline constexpr TVarType varInteger = 3;    ///< 32-bit integer
inline constexpr TVarType varSingle = 4;     ///< 32-bit float
inline constexpr TVarType varDouble = 5;     ///< 64-bit float
inline constexpr TVarType varCurrency = 6;   ///< TCurrency
inline constexpr TVarType varBoolean = 11;   ///< Boolean; as a number True is -1 and False 0
inline constexpr TVarType varShortInt = 16;  ///< 8-bit integer
inline constexpr TVarType varByte = 17;      ///< unsigned 8-bit integer
inline constexpr TVarType varWord = 18;      ///< unsigned 16-bit integer
inline constexpr TVarType varLongWord = 19;  ///< unsigned 32-bit integer
inline constexpr TVarType varInt64 = 20;     ///< 64-bit integer
inline constexpr TVarType varString = 256;   ///< text

/// A decimal number with four places: the value is Units / 10000.
struct TCurrency {
    std::int64_t Units = 0;

    friend auto operator<=>(const TCurrency&, const TCurrency&) = default;
};

/// The C++ types that a variant holds unchanged. An unsigned 64-bit integer, an enumeration, a single
/// character and a pointer do not compile.
template <typename T>
concept CVariantValue = std::same_as<T, std::int16_t> || std::same_as<T, std::int32_t> ||
    std::same_as<T, float> || std::same_as<T, double> || std::same_as<T, TCurrency> ||
    std::same_as<T, bool> || std::same_as<T, std::int8_t> || std::same_as<T, std::uint8_t> ||
    std::same_as<T, std::uint16_t> || std::same_as<T, std::uint32_t> || std::same_as<T, std::int64_t>;

class VARNHOLT_EXPORT Variant {
public:
    /// An empty variant.
    Variant() noexcept = default;
    /// A number or Boolean; GetType returns the code of exactly this type.
    template <CVariantValue T>
    Variant(T value) noexcept : FValue(std::in_place_type<T>, value) {}
    /// The other 64-bit integer type of the language.
    Variant(long long value) noexcept : Variant(static_cast<std::int64_t>(value)) {}
    /// Held as a 64-bit float: the nearest one, an infinity beyond its range.
    Variant(Extended value) noexcept : Variant(static_cast<double>(value)) {}
    /// A text. A null pointer is an empty text.
    Variant(const Char* text);
    Variant(StringView text);
    Variant(const String& text);
    Variant(String&& text);
    Variant(std::nullptr_t) = delete;

    [[nodiscard]] TVarType GetType() const noexcept;
    [[nodiscard]] bool IsEmpty() const noexcept { return std::holds_alternative<std::monostate>(FValue); }
    /// True for every number type, but not for Boolean.
    [[nodiscard]] bool IsNumeric() const noexcept;
    [[nodiscard]] bool IsText() const noexcept { return std::holds_alternative<TText>(FValue); }
    /// The text, without a copy; an empty view if the variant holds no text. Valid until the variant changes
    /// or is destroyed.
    [[nodiscard]] StringView GetTextView() const noexcept;

    /// The value as a 64-bit float. Empty is 0, True -1. A text is read as StrToFloat does, and
    /// otherwise as StrToInt does (hexadecimal forms).
    [[nodiscard]] double ToDouble() const;
    /// The value as an integer; a fraction rounds to the nearest integer, ties to the even one. Empty is
    /// 0, True -1. A text is read as StrToInt does, and otherwise as StrToFloat does, then rounded. Raises
    /// for a NaN and for a number outside the range.
    [[nodiscard]] std::int32_t ToInt32() const;
    [[nodiscard]] std::int64_t ToInt64() const;
    /// The value as a text: integers in decimal digits, floats as FloatToStr writes them, a currency with the
    /// decimals it has, "True" or "False", and "" for an empty variant.
    [[nodiscard]] String ToText() const;
    /// False for empty and for a number that is 0, True for every other number, a NaN too. A text must be
    /// "True" or "False", in letters of either case, or a number.
    [[nodiscard]] bool ToBoolean() const;
    /// The value converted to the type of that code by the rules above. A float narrows to 32 bits by the
    /// rules of IEEE: to the nearest, and beyond the range to an infinity. A currency takes the nearest
    /// ten-thousandth, ties to the even one. Only an empty variant converts to varEmpty. A code that
    /// is not listed above raises "Invalid variant type (CODE)".
    [[nodiscard]] Variant ConvertTo(TVarType type) const;

    /// Order of any two variants: empty before numbers before texts. Numbers, Booleans among them, compare by
    /// their exact value, whatever their types; texts compare by code unit. Never raises. A NaN is unordered
    /// against everything, itself included.
    [[nodiscard]] friend std::partial_ordering operator<=>(const Variant& a, const Variant& b) noexcept {
        return Compare(a, b);
    }
    /// Equal in the order above: 2 equals 2.0 and not "2", and a NaN equals nothing.
    [[nodiscard]] friend bool operator==(const Variant& a, const Variant& b) noexcept {
        return Compare(a, b) == 0;
    }

    /// Two texts are joined. Otherwise both become numbers and are added: empty is 0, True -1, a text that
    /// is not a number raises. The sum of two integers is a 32-bit integer if it fits, else a 64-bit
    /// integer, else a 64-bit float. With a float operand it is a 64-bit float. The sum of a currency and an
    /// integer or currency is a currency if it fits, else a 64-bit float.
    [[nodiscard]] friend Variant operator+(const Variant& a, const Variant& b) { return Add(a, b); }
    Variant& operator+=(const Variant& other) { return *this = Add(*this, other); }
    /// The quotient of both ToDouble values as a 64-bit float; a division by 0 results in an infinity or a
    /// NaN.
    [[nodiscard]] friend Variant operator/(const Variant& a, const Variant& b) {
        return a.ToDouble() / b.ToDouble();
    }

private:
    struct TRules;                                // shared by the operations
    using TText = std::shared_ptr<const String>;  // none for the empty text
    using TValue = std::variant<std::monostate, std::int16_t, std::int32_t, float, double, TCurrency, bool,
                                std::int8_t, std::uint8_t, std::uint16_t, std::uint32_t, std::int64_t, TText>;

    static std::partial_ordering Compare(const Variant& a, const Variant& b) noexcept;
    static Variant Add(const Variant& a, const Variant& b);

    TValue FValue;
};

static_assert(sizeof(Variant) == 24, "arrays of variants must be compact");

}  // namespace Varnholt
