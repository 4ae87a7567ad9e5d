#include "Platform/Runtime/Format.h"

#include <cmath>
#include <cstdio>
#include <optional>
#include <vector>

#include "Fuzz/FuzzInput.h"

/// Format texts with fitting arguments, beside a plain formatter over snprintf.
namespace Varnholt::Fuzz {
namespace {

constexpr std::int64_t kIntegers[] = {0, -1, 42, 255, INT64_MIN, INT64_MAX};
constexpr Extended kFloats[] = {0, -0.004L, 0.125L, -2.5L, 1e300L, 1e-5L, INFINITY, -INFINITY, NAN};
constexpr StringView kTexts[] = {u"", u"abc", u"\u00c4\U0001f600b", u"\U0001f600"};
constexpr std::size_t kMaxFieldSize = 10000;

/// Formats plainly and makes up the arguments on the way. Fails with no value.
class TPlainFormatter {
public:
    explicit TPlainFormatter(StringView format) : FFormat(format) {}

    std::optional<String> Run() {
        String result;
        while (FAt < FFormat.size()) {
            if (FFormat[FAt] != u'%') {
                result += FFormat[FAt++];
            } else if (FFormat.substr(FAt).starts_with(u"%%")) {
                result += u'%';
                FAt += 2;
            } else if (const std::optional<String> field = Field()) {
                result += *field;
            } else {
                return std::nullopt;
            }
        }
        return result;
    }

    [[nodiscard]] const std::vector<TFormatArg>& GetArgs() const { return FArgs; }

private:
    bool Skip(Char unit) {
        const bool isThere = FAt < FFormat.size() && FFormat[FAt] == unit;
        if (isThere) ++FAt;
        return isThere;
    }

    std::optional<std::size_t> Size() {
        std::optional<std::size_t> size;
        for (; FAt < FFormat.size() && FFormat[FAt] >= u'0' && FFormat[FAt] <= u'9'; ++FAt)
            size = std::min(kMaxFieldSize + 1, size.value_or(0) * 10 + (FFormat[FAt] - u'0'));
        return size;
    }

    std::optional<String> Field() {
        ++FAt;
        const bool isLeft = Skip(u'-');
        const std::size_t width = Size().value_or(0);
        const bool hasPrecision = Skip(u'.');
        const std::optional<std::size_t> precision = hasPrecision ? Size() : std::nullopt;
        const bool isWrong = hasPrecision && !precision;
        if (isWrong || width > kMaxFieldSize || precision.value_or(0) > kMaxFieldSize) return std::nullopt;
        std::optional<String> text = Value(precision);
        if (text && text->size() < width) text->insert(isLeft ? text->size() : 0, width - text->size(), u' ');
        return text;
    }

    std::optional<String> Value(std::optional<std::size_t> precision) {
        const std::size_t which = FArgs.size();
        if (Skip(u's')) {
            StringView text = kTexts[which % std::size(kTexts)];
            FArgs.emplace_back(text);
            if (precision && *precision < text.size()) text = text.substr(0, *precision);
            if (!text.empty() && text.back() >= 0xD800 && text.back() < 0xDC00) text.remove_suffix(1);
            return String(text);
        }
        if (Skip(u'f')) return Float(kFloats[which % std::size(kFloats)], precision.value_or(2));
        const bool isHex = Skip(u'x');
        if (!isHex && !Skip(u'd')) return std::nullopt;
        const std::int64_t value = kIntegers[which % std::size(kIntegers)];
        FArgs.emplace_back(value);
        char digits[32];
        std::snprintf(digits, sizeof digits, isHex ? "%llX" : "%lld", static_cast<long long>(value));
        String text = FromUtf8(digits);
        const std::size_t sign = text.starts_with(u'-') ? 1 : 0;
        const std::size_t count = text.size() - sign;
        if (precision.value_or(1) > count) text.insert(sign, *precision - count, u'0');
        return text;
    }

    String Float(Extended value, std::size_t decimals) {
        FArgs.emplace_back(value);
        if (std::isnan(value)) return u"NAN";
        if (std::isinf(value)) return value < 0 ? u"-INF" : u"INF";
        std::string text(kMaxFieldSize + 5000, '\0');
        const int length =
            std::snprintf(text.data(), text.size(), "%.*Lf", static_cast<int>(decimals), value);
        text.resize(static_cast<std::size_t>(length));
        if (text.find_first_of("123456789") == std::string::npos && text[0] == '-') text.erase(0, 1);
        return FromUtf8(text);
    }

    StringView FFormat;
    std::size_t FAt = 0;
    std::vector<TFormatArg> FArgs;
};

}  // namespace

void RunInput(TInput input) {
    const String format = TextOf(input);
    TPlainFormatter plain(format);
    const std::optional<String> expected = plain.Run();
    String found;
    const String failure = FailureOf([&] { found = Format(format, plain.GetArgs()); });
    Require(failure.empty() == expected.has_value(), "the plain formatter accepts the same formats");
    if (expected) RequireSame(found, *expected, "the text of the plain formatter");

    std::vector<TFormatArg> args = plain.GetArgs();
    args.emplace_back(1);
    Require(!FailureOf([&] { static_cast<void>(Format(format, args)); }).empty(), "no argument is left over");
    if (args.size() == 1) return;
    args.resize(args.size() - 2, 0);
    Require(!FailureOf([&] { static_cast<void>(Format(format, args)); }).empty(), "no argument is missing");
}

}  // namespace Varnholt::Fuzz
