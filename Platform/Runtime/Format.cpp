#include "Platform/Runtime/Format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <utility>

#include "Platform/Runtime/Characters.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/FormatSettings.h"
#include "Platform/Runtime/Numbers.h"

namespace Varnholt {
namespace {

constexpr std::size_t kMaxFieldSize = 10'000;  // of width and precision
constexpr std::size_t kDefaultDecimals = 2;

/// The digits of an unsigned number, with zeros in front up to the least count.
String DigitText(std::uint64_t number, int base, std::size_t leastCount) {
    std::array<char, 64> buffer;
    const char* end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, base).ptr;
    const auto count = static_cast<std::size_t>(end - buffer.data());
    String text(leastCount > count ? leastCount - count : 0, u'0');
    for (const char* at = buffer.data(); at != end; ++at) {
        text.push_back(static_cast<Char>(*at >= 'a' ? *at - 'a' + 'A' : *at));
    }
    return text;
}

template <typename T>
std::string FixedAscii(T magnitude, std::size_t decimals) {
    std::string text(std::numeric_limits<T>::max_exponent10 + 2 + decimals + 1,
                     '\0');  // all digits and the point
    const char* end = std::to_chars(text.data(), text.data() + text.size(), magnitude,
                                    std::chars_format::fixed, static_cast<int>(decimals))
                          .ptr;
    text.resize(static_cast<std::size_t>(end - text.data()));
    return text;
}

String FixedText(Extended value, std::size_t decimals) {
    if (!std::isfinite(value)) return FloatToStr(value);
    const Extended magnitude = std::fabs(value);
    // The conversion of double is the faster one and rounds the same exact value.
    const double narrow = static_cast<double>(magnitude);
    const std::string digits = static_cast<Extended>(narrow) == magnitude ? FixedAscii(narrow, decimals)
                                                                          : FixedAscii(magnitude, decimals);
    const bool isZero = digits.find_first_not_of("0.") == std::string::npos;
    String text(value < 0 && !isZero ? u"-" : u"");
    text.append(digits.begin(), digits.end());
    if (const std::size_t point = text.find(u'.'); point != String::npos) {
        text[point] = FormatSettings().DecimalSeparator;
    }
    return text;
}

/// At most that many units from the start of the text, without half of a surrogate pair at the end.
StringView CutText(StringView text, std::size_t count) {
    if (count >= text.size()) return text;
    if (count > 0 && CharacterLength(CharacterAt(text, count - 1)) > 1) --count;
    return text.substr(0, count);
}

struct TPlaceholder {
    std::size_t Position = 0;  // of the "%", from 0
    bool IsLeftAligned = false;
    std::size_t Width = 0;
    std::optional<std::size_t> Precision;
    Char Letter = 0;
};

class TFormatter {
public:
    TFormatter(StringView format, std::span<const TFormatArg> args) : FFormat(format), FArgs(args) {}

    String Run() {
        constexpr std::size_t kUsualValues = 48;  // code units, so that one allocation is enough
        FResult.reserve(FFormat.size() + kUsualValues);
        while (FAt < FFormat.size()) {
            const std::size_t percent = std::min(FFormat.find(u'%', FAt), FFormat.size());
            FResult.append(FFormat, FAt, percent - FAt);
            FAt = percent;
            if (FAt < FFormat.size()) WritePlaceholder();
        }
        if (FUsedArgs != FArgs.size()) {
            throw EConvertError(String(u"Format '").append(FFormat) + u"' takes " + CountText(FUsedArgs) +
                                u" arguments, not " + CountText(FArgs.size()));
        }
        return std::move(FResult);
    }

private:
    static String CountText(std::size_t count) { return DigitText(count, 10, 1); }

    [[noreturn]] void Fail(const TPlaceholder& placeholder, StringView reason) const {
        throw EConvertError(String(u"Format '").append(FFormat) + u"', position " +
                            CountText(placeholder.Position + 1) + u": " + String(reason));
    }

    /// The placeholder as written, up to the position reached.
    String Written(const TPlaceholder& placeholder) const {
        const StringView text = FFormat.substr(placeholder.Position, FAt - placeholder.Position);
        return String(u"'").append(text).append(u"'");
    }

    Char Next() const { return FAt < FFormat.size() ? FFormat[FAt] : u'\0'; }

    std::optional<std::size_t> ReadFieldSize(const TPlaceholder& placeholder) {
        std::optional<std::size_t> size;
        for (; Next() >= u'0' && Next() <= u'9'; ++FAt) {
            size = size.value_or(0) * 10 + (Next() - u'0');
            if (*size > kMaxFieldSize)
                Fail(placeholder, u"a width or precision is above " + CountText(kMaxFieldSize));
        }
        return size;
    }

    TPlaceholder ReadPlaceholder() {
        TPlaceholder placeholder;
        placeholder.Position = FAt++;
        placeholder.IsLeftAligned = Next() == u'-';
        if (placeholder.IsLeftAligned) ++FAt;
        placeholder.Width = ReadFieldSize(placeholder).value_or(0);
        if (Next() == u'.') {
            ++FAt;
            placeholder.Precision = ReadFieldSize(placeholder);
        }
        if (FAt == FFormat.size()) Fail(placeholder, u"unfinished placeholder " + Written(placeholder));
        const bool lacksPrecision = FFormat[FAt - 1] == u'.';
        const bool isPercent = Next() == u'%' && FAt == placeholder.Position + 1;
        placeholder.Letter = Next();
        FAt += CharacterLength(CharacterAt(FFormat, FAt));
        const bool isKnown = StringView(u"dxsf").find(placeholder.Letter) != StringView::npos;
        if (lacksPrecision || (!isKnown && !isPercent)) {
            Fail(placeholder, u"unknown placeholder " + Written(placeholder));
        }
        return placeholder;
    }

    /// The next argument, which must be of the kind that the placeholder takes.
    template <typename T>
    const T& TakeArg(const TPlaceholder& placeholder, StringView kind) {
        if (FUsedArgs == FArgs.size()) Fail(placeholder, u"no argument for " + Written(placeholder));
        const T* value = std::get_if<T>(&FArgs[FUsedArgs].GetValue());
        if (value == nullptr) Fail(placeholder, Written(placeholder) + u" takes " + String(kind));
        ++FUsedArgs;
        return *value;
    }

    void WritePlaceholder() {
        const TPlaceholder placeholder = ReadPlaceholder();
        switch (placeholder.Letter) {
            case u'd': {
                const auto& value = TakeArg<TFormatArg::TInteger>(placeholder, u"an integer");
                const String digits = DigitText(value.Magnitude, 10, placeholder.Precision.value_or(1));
                return WriteField(placeholder, value.IsNegative ? u"-" + digits : digits);
            }
            case u'x': {
                const auto& value = TakeArg<TFormatArg::TInteger>(placeholder, u"an integer");
                return WriteField(placeholder, DigitText(value.Bits, 16, placeholder.Precision.value_or(1)));
            }
            case u's': {
                const StringView text = TakeArg<StringView>(placeholder, u"a text");
                return WriteField(placeholder, CutText(text, placeholder.Precision.value_or(text.size())));
            }
            case u'f': {
                const Extended value = TakeArg<Extended>(placeholder, u"a float");
                return WriteField(placeholder,
                                  FixedText(value, placeholder.Precision.value_or(kDefaultDecimals)));
            }
            default:
                FResult.push_back(u'%');
        }
    }

    void WriteField(const TPlaceholder& placeholder, StringView text) {
        const std::size_t blanks = placeholder.Width > text.size() ? placeholder.Width - text.size() : 0;
        if (!placeholder.IsLeftAligned) FResult.append(blanks, u' ');
        FResult.append(text);
        if (placeholder.IsLeftAligned) FResult.append(blanks, u' ');
    }

    StringView FFormat;
    std::span<const TFormatArg> FArgs;
    std::size_t FAt = 0;
    std::size_t FUsedArgs = 0;
    String FResult;
};

}  // namespace

String Format(StringView format, std::span<const TFormatArg> args) {
    return TFormatter(format, args).Run();
}

String Format(StringView format, std::initializer_list<TFormatArg> args) {
    return Format(format, std::span<const TFormatArg>(args.begin(), args.size()));
}

}  // namespace Varnholt
