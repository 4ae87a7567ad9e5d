#include "Platform/Runtime/Variant.h"

#include <array>
#include <cmath>
#include <optional>
#include <type_traits>
#include <utility>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/FloatMath.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/FormatSettings.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Text.h"

namespace Varnholt {
namespace {

struct TTypeInfo {
    TVarType Code;
    StringView Name;
};

// In the order of the alternatives of Variant::TValue.
constexpr std::array<TTypeInfo, 13> kTypes = {{{varEmpty, u"Empty"},
                                               {varSmallint, u"Smallint"},
                                               {varInteger, u"Integer"},
                                               {varSingle, u"Single"},
                                               {varDouble, u"Double"},
                                               {varCurrency, u"Currency"},
                                               {varBoolean, u"Boolean"},
                                               {varShortInt, u"ShortInt"},
                                               {varByte, u"Byte"},
                                               {varWord, u"Word"},
                                               {varLongWord, u"LongWord"},
                                               {varInt64, u"Int64"},
                                               {varString, u"String"}}};

constexpr std::int64_t kCurrencyScale = 10000;
constexpr std::size_t kMaxQuotedLength = 100;  // an error message shows no more of a text

StringView TypeName(TVarType type) {
    for (const TTypeInfo& info : kTypes) {
        if (info.Code == type) return info.Name;
    }
    return u"Unknown";
}

String Quoted(const Variant& value) {
    String text = value.ToText();
    if (text.size() > kMaxQuotedLength) text = text.substr(0, kMaxQuotedLength) + u"...";
    return u"'" + text + u"'";
}

[[noreturn]] void RaiseNoConversion(const Variant& value, TVarType type) {
    throw EVariantError(
        Format(u"Cannot convert %s %s to %s", {TypeName(value.GetType()), Quoted(value), TypeName(type)}));
}

[[noreturn]] void RaiseOutOfRange(const Variant& value, TVarType type) {
    throw EVariantError(
        Format(u"%s %s is out of range for %s", {TypeName(value.GetType()), Quoted(value), TypeName(type)}));
}

template <typename T>
bool Fits(Extended value) {  // false for a NaN; the limits of a 64-bit integer are exact as Extended
    return value >= static_cast<Extended>(std::numeric_limits<T>::min()) &&
           value <= static_cast<Extended>(std::numeric_limits<T>::max());
}

String CurrencyToText(TCurrency value) {
    const bool negative = value.Units < 0;
    const auto bits = static_cast<std::uint64_t>(value.Units);
    const std::uint64_t units = negative ? std::uint64_t{0} - bits : bits;
    const auto whole = static_cast<std::int64_t>(units / kCurrencyScale);
    const auto fraction = static_cast<std::int64_t>(units % kCurrencyScale);
    String text = (negative ? u"-" : u"") + IntToStr(whole);
    if (fraction == 0) return text;
    String digits = IntToStr(kCurrencyScale + fraction).substr(1);  // with its leading zeros
    digits.resize(digits.find_last_not_of(u'0') + 1);
    return text + FormatSettings().DecimalSeparator + digits;
}

}  // namespace

struct Variant::TRules {
    enum class TRank { Empty, Number, Text };

    static TRank RankOf(const Variant& v) noexcept {
        if (v.IsEmpty()) return TRank::Empty;
        return v.IsText() ? TRank::Text : TRank::Number;
    }

    static bool IsFloat(const Variant& v) noexcept {
        return std::holds_alternative<double>(v.FValue) || std::holds_alternative<float>(v.FValue);
    }

    static bool IsCurrency(const Variant& v) noexcept { return std::holds_alternative<TCurrency>(v.FValue); }

    /// The exact number, of a currency its units. Empty and texts are 0.
    static Extended Held(const Variant& v) noexcept {
        const auto read = [](const auto& value) -> Extended {
            using T = std::remove_cvref_t<decltype(value)>;
            if constexpr (std::is_same_v<T, TCurrency>) {
                return static_cast<Extended>(value.Units);
            } else if constexpr (std::is_same_v<T, bool>) {
                return value ? -1 : 0;
            } else if constexpr (std::is_arithmetic_v<T>) {
                return static_cast<Extended>(value);
            } else {
                return 0;
            }
        };
        return std::visit(read, v.FValue);
    }

    /// The number held times the scale of a currency. Exact for every double and for every integer up to
    /// twice the range of a currency: of the scale, 16 only moves the exponent and 625 adds 10 bits to the
    /// mantissa.
    static Extended Scaled(const Variant& v) noexcept {
        return IsCurrency(v) ? Held(v) : Held(v) * kCurrencyScale;
    }

    /// The number in a text, to 64 bits of mantissa.
    static std::optional<Extended> Parse(StringView text) {
        std::int32_t integer = 0;
        if (TryStrToInt(text, integer)) return integer;
        Extended number = 0;
        if (TryStrToFloat(text, number)) return number;
        return std::nullopt;
    }

    /// The value as a number for a conversion to that type.
    static Extended Number(const Variant& v, TVarType type) {
        if (v.IsText()) {
            const std::optional<Extended> number = Parse(v.GetTextView());
            if (!number) RaiseNoConversion(v, type);
            return *number;
        }
        return IsCurrency(v) ? Held(v) / kCurrencyScale : Held(v);
    }

    template <typename T>
    static T ToInteger(const Variant& v, TVarType type) {
        const std::optional<std::int64_t> rounded = TryRoundToInt64(Number(v, type));
        if (!rounded || !std::in_range<T>(*rounded)) RaiseOutOfRange(v, type);
        return static_cast<T>(*rounded);
    }

    static TCurrency ToCurrency(const Variant& v) {
        if (IsCurrency(v)) return std::get<TCurrency>(v.FValue);
        const std::optional<std::int64_t> units = TryRoundToInt64(Number(v, varCurrency) * kCurrencyScale);
        if (!units) RaiseOutOfRange(v, varCurrency);
        return TCurrency{*units};
    }

    /// An operand of an addition: what is neither number nor empty becomes an integer or a 64-bit float.
    static Variant Operand(const Variant& v) {
        if (!v.IsText()) return v;
        std::int32_t integer = 0;
        if (TryStrToInt(v.GetTextView(), integer)) return integer;
        return v.ToDouble();
    }

    static std::partial_ordering OrderNumbers(const Variant& a, const Variant& b) noexcept {
        if (IsCurrency(a) != IsCurrency(b)) return Scaled(a) <=> Scaled(b);
        return Held(a) <=> Held(b);
    }

    static bool IsNaN(const Variant& v) noexcept { return IsFloat(v) && std::isnan(Held(v)); }
};

Variant::Variant(const Char* text) : Variant(text == nullptr ? StringView() : StringView(text)) {}

Variant::Variant(StringView text)
    : FValue(std::in_place_type<TText>, text.empty() ? nullptr : std::make_shared<const String>(text)) {}

Variant::Variant(const String& text) : Variant(StringView(text)) {}

Variant::Variant(String&& text)
    : FValue(std::in_place_type<TText>,
             text.empty() ? nullptr : std::make_shared<const String>(std::move(text))) {}

TVarType Variant::GetType() const noexcept {
    static_assert(kTypes.size() == std::variant_size_v<TValue>);
    return kTypes[FValue.index()].Code;
}

bool Variant::IsNumeric() const noexcept {
    return !IsEmpty() && !IsText() && !std::holds_alternative<bool>(FValue);
}

StringView Variant::GetTextView() const noexcept {
    const TText* text = std::get_if<TText>(&FValue);
    return text != nullptr && *text != nullptr ? StringView(**text) : StringView();
}

double Variant::ToDouble() const {
    if (const double* value = std::get_if<double>(&FValue)) return *value;
    if (const TCurrency* value = std::get_if<TCurrency>(&FValue)) {
        return static_cast<double>(value->Units) / static_cast<double>(kCurrencyScale);
    }
    if (!IsText()) return static_cast<double>(TRules::Held(*this));
    double number = 0;
    std::int32_t integer = 0;
    if (TryStrToFloat(GetTextView(), number)) return number;
    if (TryStrToInt(GetTextView(), integer)) return integer;
    RaiseNoConversion(*this, varDouble);
}

std::int32_t Variant::ToInt32() const {
    return TRules::ToInteger<std::int32_t>(*this, varInteger);
}

std::int64_t Variant::ToInt64() const {
    return TRules::ToInteger<std::int64_t>(*this, varInt64);
}

String Variant::ToText() const {
    const auto write = [this](const auto& value) -> String {
        using T = std::remove_cvref_t<decltype(value)>;
        if constexpr (std::is_same_v<T, bool>) {
            return value ? u"True" : u"False";
        } else if constexpr (std::is_integral_v<T>) {
            return IntToStr(value);
        } else if constexpr (std::is_floating_point_v<T>) {
            return FloatToStr(static_cast<Extended>(value));
        } else if constexpr (std::is_same_v<T, TCurrency>) {
            return CurrencyToText(value);
        } else {
            return String(GetTextView());
        }
    };
    return std::visit(write, FValue);
}

bool Variant::ToBoolean() const {
    if (!IsText()) return TRules::Held(*this) != 0;
    const StringView text = TrimView(GetTextView());
    if (SameText(text, u"True")) return true;
    if (SameText(text, u"False")) return false;
    return TRules::Number(*this, varBoolean) != 0;
}

Variant Variant::ConvertTo(TVarType type) const {
    switch (type) {
        case varEmpty:
            if (!IsEmpty()) RaiseNoConversion(*this, varEmpty);
            return {};
        case varSmallint:
            return TRules::ToInteger<std::int16_t>(*this, type);
        case varInteger:
            return TRules::ToInteger<std::int32_t>(*this, type);
        case varSingle:
            if (GetType() == varInt64) return static_cast<float>(ToInt64());  // one rounding, not two
            return static_cast<float>(ToDouble());
        case varDouble:
            return ToDouble();
        case varCurrency:
            return TRules::ToCurrency(*this);
        case varBoolean:
            return ToBoolean();
        case varShortInt:
            return TRules::ToInteger<std::int8_t>(*this, type);
        case varByte:
            return TRules::ToInteger<std::uint8_t>(*this, type);
        case varWord:
            return TRules::ToInteger<std::uint16_t>(*this, type);
        case varLongWord:
            return TRules::ToInteger<std::uint32_t>(*this, type);
        case varInt64:
            return TRules::ToInteger<std::int64_t>(*this, type);
        case varString:
            return IsText() ? *this : Variant(ToText());
        default:
            throw EVariantError(Format(u"Invalid variant type (%d)", {type}));
    }
}

std::partial_ordering Variant::Compare(const Variant& a, const Variant& b) noexcept {
    const double* x = std::get_if<double>(&a.FValue);
    const double* y = std::get_if<double>(&b.FValue);
    if (x != nullptr && y != nullptr) return *x <=> *y;
    if (a.IsText() && b.IsText()) return a.GetTextView() <=> b.GetTextView();
    if (TRules::IsNaN(a) || TRules::IsNaN(b)) return std::partial_ordering::unordered;
    const TRules::TRank rankA = TRules::RankOf(a);
    const TRules::TRank rankB = TRules::RankOf(b);
    return rankA != rankB ? rankA <=> rankB : TRules::OrderNumbers(a, b);
}

Variant Variant::Add(const Variant& a, const Variant& b) {
    if (a.IsText() && b.IsText()) return String(a.GetTextView()).append(b.GetTextView());
    const Variant x = TRules::Operand(a);
    const Variant y = TRules::Operand(b);
    if (TRules::IsFloat(x) || TRules::IsFloat(y)) return x.ToDouble() + y.ToDouble();
    if (TRules::IsCurrency(x) || TRules::IsCurrency(y)) {
        const Extended units = TRules::Scaled(x) + TRules::Scaled(y);
        if (Fits<std::int64_t>(units)) return TCurrency{static_cast<std::int64_t>(units)};
        return x.ToDouble() + y.ToDouble();
    }
    const Extended sum = TRules::Held(x) + TRules::Held(y);
    if (Fits<std::int32_t>(sum)) return static_cast<std::int32_t>(sum);
    if (Fits<std::int64_t>(sum)) return static_cast<std::int64_t>(sum);
    return static_cast<double>(sum);
}

}  // namespace Varnholt
