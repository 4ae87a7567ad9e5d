#include "VarnholtLib/Services/vrnDateUtils.h"

#include <tuple>
#include <utility>

#include "Platform/Runtime/DateTime.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"

namespace Varnholt {
namespace {

constexpr std::int32_t kDaysInYear = 365;

/// A number from 1 that continues in later years, as a number in one year of that length.
std::int64_t InOneYear(std::int64_t number, std::int64_t length) {
    return number > length ? (number - 1) % length + 1 : number;
}

/// The month of a step of the year, from 1, with that many steps a day.
TMonth MonthOfStep(bool leap, std::int64_t step, std::int64_t stepsPerDay) {
    const std::int64_t steps = (leap ? kDaysInYear + 1 : kDaysInYear) * stepsPerDay;
    return CalcMonth(leap, static_cast<std::int32_t>((InOneYear(step, steps) - 1) / stepsPerDay + 1));
}

/// The days of the months from the first to the last, both included.
std::int32_t DaysOfMonths(int first, int last) {
    std::int32_t days = 0;
    for (int month = first; month <= last; ++month) days += MonthLength[month];
    return days;
}

}  // namespace

TMonth CalcMonth(bool leap, std::int32_t day) noexcept {
    std::int64_t left = InOneYear(day, leap ? kDaysInYear + 1 : kDaysInYear);
    for (const TMonth month : kMonths) {
        left -= MonthLength[month] + (leap && month == moFebruary ? 1 : 0);
        if (left <= 0) return month;
    }
    return moDecember;
}

TMonth CalcMonthFromHour(bool leap, std::int32_t hour) noexcept {
    return MonthOfStep(leap, hour, 24);
}

TMonth CalcMonthFromTenMinutes(bool leap, std::int32_t step) noexcept {
    return MonthOfStep(leap, step, 144);
}

TMonth CalcMonthFromWeek(std::uint8_t week) noexcept {
    return CalcMonth(false, week * 7);
}

std::uint16_t CalcDay(std::int8_t day, std::int8_t month) {
    return static_cast<std::uint16_t>(MonthAccLength[month & 0x7F] + (day & 0x7F));
}

std::uint16_t CalcHour(std::int8_t day, std::int8_t month, std::int8_t hour) {
    return static_cast<std::uint16_t>((CalcDay(day, month) - 1) * 24 + hour);
}

TDateType DayToDate(std::uint16_t day) {
    if (day < 1 || day > kDaysInYear) throw EArgumentException(Format(u"Day %d is not from 1 to 365", {day}));
    TDateType date;
    std::int32_t left = day;
    for (; left > MonthLength[date.Month]; ++date.Month) left -= MonthLength[date.Month];
    date.Day = static_cast<std::uint8_t>(left);
    return date;
}

std::uint8_t CalcDate(std::uint16_t day) {
    return DayToDate(day).Day;
}

std::int32_t DaysBetween(const TDateType& a, const TDateType& b) {
    const auto order = [](const TDateType& date) { return std::tuple(date.Year, date.Month, date.Day); };
    const auto& [early, late] = order(b) < order(a) ? std::tie(b, a) : std::tie(a, b);
    if (early.Year == late.Year && early.Month == late.Month) return late.Day - early.Day;
    const std::int32_t ends = MonthLength[early.Month] - early.Day + late.Day;
    if (early.Year == late.Year) return ends + DaysOfMonths(early.Month + 1, late.Month - 1);
    return ends + DaysOfMonths(early.Month + 1, moDecember) + kDaysInYear * (late.Year - early.Year - 1) +
           DaysOfMonths(moJanuary, late.Month - 1);
}

String DateToStr(const TDateType& date) {
    return Format(u"%d/%d/%d", {date.Day, date.Month, date.Year});
}

std::uint16_t MaskEditToJulian(StringView text) {
    TDateTime value = 0;
    if (!TryStrToDate(text, value)) throw Exception(Format(u"\"%s\" is not a valid date string", {text}));
    const TDateTimeFields date = DecodeDateTime(value);
    if (date.Month == moFebruary && date.Day == 29)
        throw Exception(u"February 29 is not supported by this function");
    return CalcDay(static_cast<std::int8_t>(date.Day), static_cast<std::int8_t>(date.Month));
}

}  // namespace Varnholt
