#include "Platform/Runtime/Numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "Fuzz/FuzzInput.h"
#include "Platform/Runtime/Text.h"

/// Number texts beside the C library's conversions in its "C" locale, and the way back to a text.
namespace Varnholt::Fuzz {
namespace {

constexpr Extended kReadBackLimit = 1e4931L;  // from here on, 15 digits may round up beyond the range

template <typename TFloat>
using TStrTo = TFloat (*)(const char*, char**);

/// The value of a plain decimal number as the C library reads it; false for any other text and for an overflow.
template <typename TFloat>
bool ReadWithC(StringView text, TStrTo<TFloat> strTo, TFloat& value) {
    const std::string trimmed = ToUtf8(TrimView(text));
    if (trimmed.empty() || trimmed.find_first_not_of("0123456789+-.eE") != std::string::npos) return false;
    char* end = nullptr;
    value = strTo(trimmed.c_str(), &end);
    return end == trimmed.c_str() + trimmed.size() && std::isfinite(value);
}

template <typename TFloat>
void RequireFloat(StringView text, TStrTo<TFloat> strTo) {
    TFloat value = 77, expected = 0;
    const bool isNumber = TryStrToFloat(text, value);
    Require(isNumber == ReadWithC(text, strTo, expected), "the C library reads the same texts");
    Require(isNumber ? SameValue(value, expected) : value == 77, "the C library reads the same value");
}

void RequireInt(StringView text) {
    std::int32_t value = 77;
    const bool isNumber = TryStrToInt(text, value);
    Require(isNumber || value == 77, "a refused integer leaves the value");
    Require(StrToIntDef(text, -5) == (isNumber ? value : -5), "the default is for refused texts only");
    Require(FailureOf([&] { static_cast<void>(StrToInt(text)); }).empty() == isNumber, "StrToInt agrees");

    const std::string trimmed = ToUtf8(TrimView(text));
    char* end = nullptr;
    const long long decimal = std::strtoll(trimmed.c_str(), &end, 10);
    const bool isDecimal = !trimmed.empty() && *end == '\0' && end == trimmed.c_str() + trimmed.size() &&
                           static_cast<unsigned char>(trimmed[0]) > ' ' && decimal == std::int32_t(decimal);
    if (isDecimal) Require(isNumber && value == decimal, "a decimal integer has its value");
    if (isNumber) Require(StrToInt(IntToStr(value)) == value, "an integer's text is read back");
}

void RequireTextIsReadBack(StringView text) {
    Extended value = 0;
    if (!TryStrToFloat(text, value) || std::fabs(value) >= kReadBackLimit) return;
    const String written = FloatToStr(value);
    const Extended again = StrToFloat(written);
    RequireSame(FloatToStr(again), written, "the text of a number is read back");
    char rounded[64];
    std::snprintf(rounded, sizeof rounded, "%.14Le", value);
    Require(again == std::strtold(rounded, nullptr), "a number is rounded to 15 digits");
}

void RequireSeparatorSwaps(String text) {
    const TFormatSettings comma{u',', u'.'};
    Extended value = 0, swappedValue = 0;
    const bool isNumber = TryStrToFloat(text, value);
    for (Char& unit : text) unit = unit == u'.' ? u',' : unit == u',' ? u'.' : unit;
    Require(TryStrToFloat(text, swappedValue, comma) == isNumber, "the separator is that of the settings");
    Require(SameValue(value, swappedValue), "the separator does not change the value");
}

}  // namespace

void RunInput(TInput input) {
    const String text = TextOf(input);
    RequireInt(text);
    RequireFloat<double>(text, std::strtod);
    RequireFloat<Extended>(text, std::strtold);
    RequireTextIsReadBack(text);
    RequireSeparatorSwaps(text);
}

}  // namespace Varnholt::Fuzz
