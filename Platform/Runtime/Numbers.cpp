#include "Platform/Runtime/Numbers.h"

#include <locale.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <optional>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Text.h"

namespace Varnholt {
namespace {

bool IsDecimalDigit(Char unit) {
    return unit >= u'0' && unit <= u'9';
}

/// Takes a sign from the front of the text; true for a minus.
bool TakeSign(StringView& text) {
    const bool isNegative = text.starts_with(u'-');
    if (isNegative || text.starts_with(u'+')) text.remove_prefix(1);
    return isNegative;
}

/// Takes the prefix of a hexadecimal number from the text; false if it has none.
bool TakeHexMark(StringView& text) {
    const bool isLong = text.starts_with(u"0x") || text.starts_with(u"0X");
    if (!isLong && !text.starts_with(u'$')) return false;
    text.remove_prefix(isLong ? 2 : 1);
    return true;
}

/// Digits of the base up to the end of the text, as a number of 32 bits.
std::optional<std::uint32_t> ReadUnsigned(StringView text, unsigned base) {
    if (text.empty()) return std::nullopt;
    std::uint64_t number = 0;
    for (const Char unit : text) {
        const unsigned digit = HexDigitValue(unit);
        if (digit >= base) return std::nullopt;
        number = number * base + digit;
        if (number > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
    }
    return static_cast<std::uint32_t>(number);
}

/// The parts of a number text: its value is the digits, read as one integer, times ten to the exponent.
struct TDecimal {
    StringView Digits;           // as written, perhaps with the decimal separator
    std::uint64_t Mantissa = 0;  // the digits as an integer, while Fits is true
    bool Fits = true;
    bool IsNegative = false;
    std::int64_t Exponent = 0;
};

constexpr std::int64_t kWrittenExponentLimit = 1'000'000'000'000'000;  // no text is long enough to balance it

/// Takes digits from the front of the text into the mantissa; returns their number.
std::size_t TakeDigits(StringView& text, TDecimal& decimal) {
    constexpr std::uint64_t kMax = std::numeric_limits<std::uint64_t>::max();
    std::size_t count = 0;
    for (; count < text.size() && IsDecimalDigit(text[count]); ++count) {
        const std::uint64_t digit = static_cast<std::uint64_t>(text[count] - u'0');
        decimal.Fits = decimal.Fits && decimal.Mantissa <= (kMax - digit) / 10;
        if (decimal.Fits) decimal.Mantissa = decimal.Mantissa * 10 + digit;
    }
    text.remove_prefix(count);
    return count;
}

/// The exponent in the text, which begins with its letter; a huge one is reduced to the limit.
std::optional<std::int64_t> ReadExponent(StringView text) {
    if (!text.starts_with(u'E') && !text.starts_with(u'e')) return std::nullopt;
    text.remove_prefix(1);
    const bool isNegative = TakeSign(text);
    if (text.empty() || !std::all_of(text.begin(), text.end(), IsDecimalDigit)) return std::nullopt;
    std::int64_t exponent = 0;
    for (const Char unit : text) exponent = std::min(exponent * 10 + (unit - u'0'), kWrittenExponentLimit);
    return isNegative ? -exponent : exponent;
}

std::optional<TDecimal> ReadDecimal(StringView text, Char decimalSeparator) {
    TDecimal decimal;
    text = TrimView(text);
    decimal.IsNegative = TakeSign(text);
    const StringView number = text;
    std::size_t digitCount = TakeDigits(text, decimal);
    if (text.starts_with(decimalSeparator)) {
        text.remove_prefix(1);
        const std::size_t fractionCount = TakeDigits(text, decimal);
        decimal.Exponent = -static_cast<std::int64_t>(fractionCount);
        digitCount += fractionCount;
    }
    if (digitCount == 0) return std::nullopt;
    decimal.Digits = number.substr(0, number.size() - text.size());
    if (!text.empty()) {
        const std::optional<std::int64_t> written = ReadExponent(text);
        if (!written) return std::nullopt;
        decimal.Exponent += *written;
    }
    return decimal;
}

/// The magnitude as an ASCII text of bounded length with the same correctly rounded value. No value of the
/// float types, and no midpoint between two of them, has more than 11600 significant digits; so of the
/// rest only matters whether it is zero, and a single digit 1 replaces it if it is not.
std::string AsciiText(const TDecimal& decimal) {
    constexpr std::size_t kDigitLimit = 12'000;
    constexpr std::int64_t kExponentLimit = 100'000;  // with the most digits still beyond every float's range
    std::string text;
    std::int64_t exponent = decimal.Exponent;
    bool hasRest = false;
    for (const Char unit : decimal.Digits) {
        if (!IsDecimalDigit(unit) || (text.empty() && unit == u'0')) continue;
        if (text.size() < kDigitLimit) {
            text.push_back(static_cast<char>(unit));
        } else {
            hasRest = hasRest || unit != u'0';
            ++exponent;
        }
    }
    if (hasRest) {
        text.push_back('1');
        --exponent;
    }
    return text + 'e' + std::to_string(std::clamp(exponent, -kExponentLimit, kExponentLimit));
}

/// glibc's own conversion, in the "C" locale whatever the process's: std::from_chars of libstdc++ 12 refuses
/// denormal values of long double.
void ConvertAscii(const std::string& text, Extended& value) {
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    if (cLocale == nullptr) throw Exception(u"The C locale is not available");
    const int outerError = errno;
    value = strtold_l(text.c_str(), nullptr, cLocale);
    errno = outerError;
}

void ConvertAscii(const std::string& text, double& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc::result_out_of_range) return;
    Extended wide = 0;
    ConvertAscii(text, wide);
    value = wide > 1 ? HUGE_VAL : 0.0;
}

template <std::size_t count, typename T>
constexpr std::array<T, count> PowersOfTen() {
    std::array<T, count> powers{1};
    for (std::size_t i = 1; i < count; ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}

/// Where both the mantissa and the power of ten are exact in T, their product or quotient is rounded once,
/// hence correctly: 5^27 fits in the 64 bits of Extended, 5^22 in the 53 bits of double.
template <typename T>
std::optional<T> ExactMagnitude(const TDecimal& decimal) {
    constexpr int kMantissaBits = std::min(std::numeric_limits<T>::digits, 64);
    static_assert(FLT_EVAL_METHOD == 0 || sizeof(T) > sizeof(double),
                  "double arithmetic must round to double");
    constexpr std::size_t kExactPowers = kMantissaBits == 64 ? 28 : 23;
    static constexpr auto kPowers = PowersOfTen<kExactPowers, T>();
    if (!decimal.Fits || (decimal.Mantissa >> (kMantissaBits - 1)) > 1) return std::nullopt;
    const T mantissa = static_cast<T>(decimal.Mantissa);
    if (decimal.Mantissa == 0) return mantissa;
    const std::uint64_t power = static_cast<std::uint64_t>(std::llabs(decimal.Exponent));
    if (power >= kPowers.size()) return std::nullopt;
    return decimal.Exponent < 0 ? mantissa / kPowers[power] : mantissa * kPowers[power];
}

template <typename T>
bool ReadFloat(StringView text, T& value, const TFormatSettings& settings) {
    const std::optional<TDecimal> decimal = ReadDecimal(text, settings.DecimalSeparator);
    if (!decimal) return false;
    T magnitude = 0;
    if (const std::optional<T> exact = ExactMagnitude<T>(*decimal)) {
        magnitude = *exact;
    } else {
        ConvertAscii(AsciiText(*decimal), magnitude);
    }
    if (!std::isfinite(magnitude)) return false;
    value = decimal->IsNegative ? -magnitude : magnitude;
    return true;
}

EConvertError NotValid(StringView text, StringView kind) {
    return EConvertError(Format(u"'%s' is not a valid %s value", {text, kind}));
}

constexpr int kSignificantDigits = 15;

/// A magnitude rounded for output: digits d1 d2 ... without trailing zeros, meaning d1.d2... times ten to the
/// exponent.
struct TRounded {
    std::array<char, kSignificantDigits> Room;
    int Count = 0;
    int Exponent = 0;

    [[nodiscard]] std::string_view Digits() const { return {Room.data(), static_cast<std::size_t>(Count)}; }
    void Take(char digit) { Room[static_cast<std::size_t>(Count++)] = digit; }
    void DropTrailingZeros() {
        while (Count > 0 && Room[static_cast<std::size_t>(Count - 1)] == '0') --Count;
    }
};

constexpr auto kPowersOfTen = [] {
    std::array<std::uint64_t, 20> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = powers[i - 1] * 10;
    return powers;
}();

// Magnitudes that are written without an exponent.
constexpr Extended kLeastFixed = 1e-4L, kFirstScientific = 1e15L;
constexpr int kLeastFixedExponent = -4;

/// Rounds to the nearest, and half-way cases to the even one, as the conversions of the C library do. The magnitude is
/// from kLeastFixed up and below kFirstScientific: then mantissa times power has less than 128 bits, and is exact.
TRounded RoundFixed(Extended magnitude) {
    __extension__ using TWide = unsigned __int128;
    int exponent = 0;
    const auto mantissa = static_cast<std::uint64_t>(std::ldexp(std::frexp(magnitude, &exponent), 64));
    const int fraction = 64 - exponent;  // bits after the point
    const auto scaled = [&](int power) {
        const TWide product = TWide{mantissa} * kPowersOfTen[static_cast<std::size_t>(power)];
        const TWide half = TWide{1} << (fraction - 1);
        const TWide rest = product & (2 * half - 1);
        const auto whole = static_cast<std::uint64_t>(product >> fraction);
        return whole + (rest > half || (rest == half && whole % 2 == 1) ? 1 : 0);
    };
    // A power of two bounds the number of digits but for one.
    int power = kSignificantDigits - 1 - static_cast<int>(std::floor((exponent - 1) * 0.30103));
    std::uint64_t digits = scaled(power);
    if (digits >= kPowersOfTen[kSignificantDigits]) {
        --power;  // below 0 only for what is rounded up to kFirstScientific
        digits = power < 0 ? kPowersOfTen[kSignificantDigits - 1] : scaled(power);
    }
    TRounded rounded;
    rounded.Exponent = kSignificantDigits - 1 - power;
    std::to_chars(rounded.Room.data(), rounded.Room.data() + rounded.Room.size(), digits);
    rounded.Count = kSignificantDigits;
    return rounded;
}

TRounded RoundAny(Extended magnitude) {
    std::array<char, 64> buffer;
    const char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                          std::chars_format::scientific, kSignificantDigits - 1)
                                .ptr;
    TRounded rounded;
    const char* at = buffer.data();
    for (; at != end && *at != 'e'; ++at)
        if (IsDecimalDigit(static_cast<Char>(*at))) rounded.Take(*at);
    at += at + 1 < end && at[1] == '+' ? 2 : 1;
    std::from_chars(at, end, rounded.Exponent);
    return rounded;
}

void AppendScientific(String& text, const TRounded& number, Char decimalSeparator) {
    const std::string_view digits = number.Digits();
    text += static_cast<Char>(digits.front());
    if (digits.size() > 1) text.append(1, decimalSeparator).append(digits.begin() + 1, digits.end());
    text.append(1, u'E') += IntToStr(number.Exponent);
}

void AppendFixed(String& text, const TRounded& number, Char decimalSeparator) {
    const std::string_view digits = number.Digits();
    if (number.Exponent < 0) {
        const auto zeros = static_cast<std::size_t>(-number.Exponent - 1);
        text.append(1, u'0')
            .append(1, decimalSeparator)
            .append(zeros, u'0')
            .append(digits.begin(), digits.end());
        return;
    }
    const std::size_t whole = static_cast<std::size_t>(number.Exponent) + 1;
    const std::string_view before = digits.substr(0, whole), after = digits.substr(before.size());
    text.append(before.begin(), before.end()).append(whole - before.size(), u'0');
    if (!after.empty()) text.append(1, decimalSeparator).append(after.begin(), after.end());
}

}  // namespace

bool TryStrToInt(StringView text, std::int32_t& value) {
    constexpr std::uint32_t kMinMagnitude = 0x80000000u;
    text = TrimView(text);
    const bool isNegative = TakeSign(text);
    const bool isHex = TakeHexMark(text);
    const std::optional<std::uint32_t> number = ReadUnsigned(text, isHex ? 16 : 10);
    if (!number) return false;
    if (isNegative ? *number > kMinMagnitude : !isHex && *number >= kMinMagnitude) return false;
    value = static_cast<std::int32_t>(isNegative ? 0u - *number : *number);
    return true;
}

std::int32_t StrToInt(StringView text) {
    std::int32_t value = 0;
    if (!TryStrToInt(text, value)) throw NotValid(text, u"integer");
    return value;
}

std::int32_t StrToIntDef(StringView text, std::int32_t defaultValue) {
    std::int32_t value = defaultValue;
    return TryStrToInt(text, value) ? value : defaultValue;
}

bool TryStrToFloat(StringView text, Extended& value, const TFormatSettings& settings) {
    return ReadFloat(text, value, settings);
}

bool TryStrToFloat(StringView text, double& value, const TFormatSettings& settings) {
    return ReadFloat(text, value, settings);
}

Extended StrToFloat(StringView text, const TFormatSettings& settings) {
    Extended value = 0;
    if (!TryStrToFloat(text, value, settings)) throw NotValid(text, u"floating point");
    return value;
}

void AppendInt(String& text, std::int64_t value) {
    std::array<char, 24> buffer;
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    text.append(buffer.data(), end);
}

void AppendFloat(String& text, Extended value, const TFormatSettings& settings) {
    if (std::isnan(value)) {
        text += u"NAN";
        return;
    }
    if (value < 0) text += u'-';
    const Extended magnitude = std::fabs(value);
    if (std::isinf(value)) {
        text += u"INF";
    } else if (const auto whole = static_cast<std::int64_t>(std::min(magnitude, kFirstScientific));
               static_cast<Extended>(whole) == magnitude && magnitude < kFirstScientific) {
        AppendInt(text, whole);
    } else {
        const bool isFixed = magnitude >= kLeastFixed && magnitude < kFirstScientific;
        TRounded number = isFixed ? RoundFixed(magnitude) : RoundAny(magnitude);
        number.DropTrailingZeros();
        // What is a little less may have been rounded to a power of ten.
        if (number.Exponent >= kLeastFixedExponent && number.Exponent < kSignificantDigits)
            AppendFixed(text, number, settings.DecimalSeparator);
        else
            AppendScientific(text, number, settings.DecimalSeparator);
    }
}

String IntToStr(std::int64_t value) {
    String text;
    AppendInt(text, value);
    return text;
}

String FloatToStr(Extended value, const TFormatSettings& settings) {
    String text;
    AppendFloat(text, value, settings);
    return text;
}

}  // namespace Varnholt
