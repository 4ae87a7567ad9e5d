#pragma once

#include "Platform/Runtime/Types.h"
#include "VarnholtBaseLib/Months.h"

/// Days, hours and ten-minute steps of a year as months and dates, on the calendar of the time series: 365 days a
/// year (MonthLength, MonthAccLength).
///
///     CalcMonth(false, 60);                     // moMarch
///     DayToDate(60);                            // 1 March of the year 1
///     DaysBetween({28, 2, 2012}, {1, 3, 2012}); // 1
///
/// A month outside 1 to 12 raises ERangeError "Month out of range (MONTH)", unless DaysBetween needs no month length: for
/// two dates of one month.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// The month of a day of the year, from 1, in a year of 365 days, or 366 if it is a leap year. A greater day continues
/// in the next year of that length; a day of 0 or below is in January.
[[nodiscard]] VARNHOLT_EXPORT TMonth CalcMonth(bool leap, std::int32_t day) noexcept;
/// The same for an hour of the year, from 1.
[[nodiscard]] VARNHOLT_EXPORT TMonth CalcMonthFromHour(bool leap, std::int32_t hour) noexcept;
/// The same for a step of ten minutes, from 1.
[[nodiscard]] VARNHOLT_EXPORT TMonth CalcMonthFromTenMinutes(bool leap, std::int32_t step) noexcept;
/// The month of the last day of a week, from 1, in a year that is not a leap year.
[[nodiscard]] VARNHOLT_EXPORT TMonth CalcMonthFromWeek(std::uint8_t week) noexcept;

/// The day of the year, from 1, of a day of a month. Only the low seven bits of the arguments count; the day is not
/// checked.
[[nodiscard]] VARNHOLT_EXPORT std::uint16_t CalcDay(std::int8_t day, std::int8_t month);
/// The hour of the year of an hour of that day: (CalcDay - 1) * 24 + hour, in 16 bits.
[[nodiscard]] VARNHOLT_EXPORT std::uint16_t CalcHour(std::int8_t day, std::int8_t month, std::int8_t hour);

/// The date, in the year 1, of a day of the year. Raises EArgumentException (`Day %d is not from 1 to 365`).
[[nodiscard]] VARNHOLT_EXPORT TDateType DayToDate(std::uint16_t day);
/// The day of the month of DayToDate.
[[nodiscard]] VARNHOLT_EXPORT std::uint8_t CalcDate(std::uint16_t day);

/// The number of days from the earlier of two dates to the later; never negative for dates that exist.
[[nodiscard]] VARNHOLT_EXPORT std::int32_t DaysBetween(const TDateType& a, const TDateType& b);

/// Day, month and year with "/" between them, without leading zeros.
[[nodiscard]] VARNHOLT_EXPORT String DateToStr(const TDateType& date);

/// The day of the year, from 1, of a date that StrToDate reads with the process's format settings; the year does not
/// matter. Raises Exception `"%s" is not a valid date string` with the text, and `February 29 is not supported
/// by this function`.
[[nodiscard]] VARNHOLT_EXPORT std::uint16_t MaskEditToJulian(StringView text);

}  // namespace Varnholt
