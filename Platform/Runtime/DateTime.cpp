#include "Platform/Runtime/DateTime.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <optional>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Text.h"

namespace Varnholt {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr sys_days kDayZero = std::chrono::year(1899) / 12 / 30;
constexpr sys_days kFirstDay = std::chrono::year(1) / 1 / 1;
constexpr sys_days kLastDay = std::chrono::year(9999) / 12 / 31;
constexpr int kMillisecondsInDay = 86'400'000;

year_month_day CalendarDate(int year, int month, int day) {
    return {std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
            std::chrono::day(static_cast<unsigned>(day))};
}

bool IsDate(int year, int month, int day) {
    const bool isInRange = year >= 1 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 && day <= 31;
    return isInRange && CalendarDate(year, month, day).ok();
}

bool IsTime(int hour, int minute, int second, int millisecond) {
    const auto isBelow = [](int value, int limit) { return value >= 0 && value < limit; };
    return isBelow(hour, 24) && isBelow(minute, 60) && isBelow(second, 60) && isBelow(millisecond, 1000);
}

TDateTime TimeFraction(int hour, int minute, int second, int millisecond) {
    const int milliseconds = ((hour * 60 + minute) * 60 + second) * 1000 + millisecond;
    return static_cast<double>(milliseconds) / kMillisecondsInDay;
}

[[noreturn]] void RaiseNotValid(StringView text, StringView kind) {
    throw EConvertError(Format(u"'%s' is not a valid %s", {text, kind}));
}

// --- Writing ---

Char LowerAscii(Char c) {
    return c >= u'A' && c <= u'Z' ? static_cast<Char>(c + 32) : c;
}

String Padded(int value, std::size_t digits) {
    const String text = IntToStr(value);
    return String(digits - std::min(digits, text.size()), u'0') + text;
}

/// Writes the fields of a format one after the other.
class TFormatWriter {
public:
    TFormatWriter(StringView format, const TDateTimeFields& fields, const TFormatSettings& settings)
        : FFormat(format), FFields(fields), FSettings(settings) {}

    String Write() {
        while (FAt < FFormat.size()) WriteNext();
        return FText;
    }

private:
    void WriteNext() {
        const Char c = FFormat[FAt];
        if (c == u'\'' || c == u'"') return WriteQuoted(c);
        const Char letter = LowerAscii(c);
        std::size_t end = FAt;
        while (end < FFormat.size() && LowerAscii(FFormat[end]) == letter) ++end;
        if (WriteField(letter, end - FAt)) {
            FAt = end;
            return;
        }
        FText += c == u'/' ? FSettings.DateSeparator : c == u':' ? FSettings.TimeSeparator : c;
        ++FAt;
    }

    void WriteQuoted(Char quote) {
        const std::size_t end = std::min(FFormat.find(quote, FAt + 1), FFormat.size());
        FText += FFormat.substr(FAt + 1, end - FAt - 1);
        FAt = end + 1;
    }

    /// Whether the letter is that of a field.
    bool WriteField(Char letter, std::size_t count) {
        const std::size_t digits = std::min<std::size_t>(count, 2);
        const bool isMinute = letter == u'n' || (letter == u'm' && FIsAfterHour);
        switch (letter) {
            case u'd':
                FText += Padded(FFields.Day, digits);
                break;
            case u'm':
            case u'n':
                FText += Padded(isMinute ? FFields.Minute : FFields.Month, digits);
                break;
            case u'y':
                FText += count > 2 ? Padded(FFields.Year, 4) : Padded(FFields.Year % 100, 2);
                break;
            case u'h':
                FText += Padded(FFields.Hour, digits);
                break;
            case u's':
                FText += Padded(FFields.Second, digits);
                break;
            case u'z':
                FText += Padded(FFields.Millisecond, 3);
                break;
            default:
                return false;
        }
        FIsAfterHour = letter == u'h';
        return true;
    }

    StringView FFormat;
    const TDateTimeFields& FFields;
    const TFormatSettings& FSettings;
    std::size_t FAt = 0;
    bool FIsAfterHour = false;
    String FText;
};

// --- Reading ---

/// Takes numbers and separators off the front of a text.
class TDateReader {
public:
    explicit TDateReader(StringView text) : FText(text) {}

    [[nodiscard]] bool IsAtEnd() const { return FText.empty(); }
    bool Take(Char c) {
        const bool isThere = FText.starts_with(c);
        if (isThere) FText.remove_prefix(1);
        return isThere;
    }
    /// A number of one to maxDigits digits, and how many it has.
    bool TakeNumber(std::size_t maxDigits, int& number, std::size_t& digits) {
        number = 0;
        for (digits = 0; digits < maxDigits && digits < FText.size(); ++digits) {
            const Char c = FText[digits];
            if (c < u'0' || c > u'9') break;
            number = number * 10 + (c - u'0');
        }
        FText.remove_prefix(digits);
        return digits > 0;
    }
    bool TakeNumber(std::size_t maxDigits, int& number) {
        std::size_t digits = 0;
        return TakeNumber(maxDigits, number, digits);
    }
    bool TakeYear(int& year) {
        std::size_t digits = 0;
        if (!TakeNumber(4, year, digits)) return false;
        if (digits == 2) year += year < 50 ? 2000 : 1900;
        return true;
    }

private:
    StringView FText;
};

/// The letters d, m and y in the order of a date format; other orders than those of all three are year first.
std::array<Char, 3> FieldOrder(StringView format) {
    String order;
    for (const Char c : format) {
        const Char letter = LowerAscii(c);
        const bool isField = letter == u'd' || letter == u'm' || letter == u'y';
        if (isField && order.find(letter) == String::npos) order += letter;
    }
    if (order.size() != 3) return {u'y', u'm', u'd'};
    return {order[0], order[1], order[2]};
}

std::optional<TDateTime> ReadDate(StringView text, const TFormatSettings& settings) {
    TDateReader reader(text);
    int year = 0, month = 0, day = 0;
    bool isFirst = true;
    for (const Char field : FieldOrder(settings.ShortDateFormat)) {
        if (!isFirst && !reader.Take(settings.DateSeparator)) return std::nullopt;
        isFirst = false;
        const bool isRead =
            field == u'y' ? reader.TakeYear(year) : reader.TakeNumber(2, field == u'm' ? month : day);
        if (!isRead) return std::nullopt;
    }
    TDateTime date = 0;
    if (!reader.IsAtEnd() || !TryEncodeDate(year, month, day, date)) return std::nullopt;
    return date;
}

std::optional<TDateTime> ReadTime(StringView text, const TFormatSettings& settings) {
    TDateReader reader(text);
    int hour = 0, minute = 0, second = 0, millisecond = 0;
    if (!reader.TakeNumber(2, hour) || !reader.Take(settings.TimeSeparator) || !reader.TakeNumber(2, minute))
        return std::nullopt;
    if (reader.Take(settings.TimeSeparator)) {
        if (!reader.TakeNumber(2, second)) return std::nullopt;
        if (reader.Take(settings.DecimalSeparator)) {
            std::size_t digits = 0;
            if (!reader.TakeNumber(3, millisecond, digits)) return std::nullopt;
            for (; digits < 3; ++digits) millisecond *= 10;
        }
    }
    if (!reader.IsAtEnd() || !IsTime(hour, minute, second, millisecond)) return std::nullopt;
    return TimeFraction(hour, minute, second, millisecond);
}

std::optional<TDateTime> ReadDateTime(StringView text, const TFormatSettings& settings) {
    const std::size_t dateEnd = std::min(text.find(u' '), text.size());
    const std::optional<TDateTime> date = ReadDate(text.substr(0, dateEnd), settings);
    if (!date || dateEnd == text.size()) return date;
    const std::optional<TDateTime> time = ReadTime(Trim(text.substr(dateEnd)), settings);
    if (!time) return std::nullopt;
    return JoinDateTime(*date, *time);
}

bool Take(const std::optional<TDateTime>& read, TDateTime& value) {
    if (read) value = *read;
    return read.has_value();
}

}  // namespace

// --- Numbers ---

TDateTime EncodeDate(int year, int month, int day) {
    TDateTime date = 0;
    if (!TryEncodeDate(year, month, day, date))
        throw EConvertError(Format(u"Invalid date (%d-%d-%d)", {year, month, day}));
    return date;
}

bool TryEncodeDate(int year, int month, int day, TDateTime& value) {
    if (!IsDate(year, month, day)) return false;
    value = static_cast<double>((sys_days(CalendarDate(year, month, day)) - kDayZero).count());
    return true;
}

TDateTime EncodeTime(int hour, int minute, int second, int millisecond) {
    if (!IsTime(hour, minute, second, millisecond))
        throw EConvertError(Format(u"Invalid time (%d:%d:%d.%d)", {hour, minute, second, millisecond}));
    return TimeFraction(hour, minute, second, millisecond);
}

TDateTime JoinDateTime(TDateTime date, TDateTime time) noexcept {
    return date < 0 ? date - time : date + time;
}

TDateTimeFields DecodeDateTime(TDateTime value) {
    constexpr auto kFirst = static_cast<double>((kFirstDay - kDayZero).count());
    constexpr auto kLast = static_cast<double>((kLastDay - kDayZero).count());
    const auto raise = [&] {
        throw EConvertError(
            Format(u"%s is not a date-time", {FloatToStr(value, TFormatSettings::Invariant())}));
    };
    if (!(value > kFirst - 1 && value < kLast + 1)) raise();
    auto day = static_cast<int>(value);
    auto time = static_cast<int>(std::lround(std::fabs(value - day) * kMillisecondsInDay));
    if (time == kMillisecondsInDay) {
        ++day;
        time = 0;
    }
    if (day > kLast) raise();
    const year_month_day date(kDayZero + days(day));
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            time / 3'600'000,
            time / 60'000 % 60,
            time / 1000 % 60,
            time % 1000};
}

// --- Texts ---

String FormatDateTime(StringView format, TDateTime value, const TFormatSettings& settings) {
    const TDateTimeFields fields = DecodeDateTime(value);
    return TFormatWriter(format, fields, settings).Write();
}

String DateToStr(TDateTime value, const TFormatSettings& settings) {
    return FormatDateTime(settings.ShortDateFormat, value, settings);
}

String TimeToStr(TDateTime value, const TFormatSettings& settings) {
    return FormatDateTime(settings.LongTimeFormat, value, settings);
}

String DateTimeToStr(TDateTime value, const TFormatSettings& settings) {
    return DateToStr(value, settings) + u' ' + TimeToStr(value, settings);
}

TDateTime StrToDate(StringView text, const TFormatSettings& settings) {
    TDateTime value = 0;
    if (!TryStrToDate(text, value, settings)) RaiseNotValid(text, u"date");
    return value;
}

TDateTime StrToTime(StringView text, const TFormatSettings& settings) {
    TDateTime value = 0;
    if (!TryStrToTime(text, value, settings)) RaiseNotValid(text, u"time");
    return value;
}

TDateTime StrToDateTime(StringView text, const TFormatSettings& settings) {
    TDateTime value = 0;
    if (!TryStrToDateTime(text, value, settings)) RaiseNotValid(text, u"date and time");
    return value;
}

bool TryStrToDate(StringView text, TDateTime& value, const TFormatSettings& settings) {
    return Take(ReadDate(Trim(text), settings), value);
}

bool TryStrToTime(StringView text, TDateTime& value, const TFormatSettings& settings) {
    return Take(ReadTime(Trim(text), settings), value);
}

bool TryStrToDateTime(StringView text, TDateTime& value, const TFormatSettings& settings) {
    return Take(ReadDateTime(Trim(text), settings), value);
}

}  // namespace Varnholt
