#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <span>

#include "Platform/Runtime/Export.h"

/// Months, and values by month, on the calendar of the time series: 365 days a year, February has 28.
///
///     for (TMonth month : kMonths) days += MonthLength[month];
///     int dayOfYear = MonthAccLength[date.Month] + date.Day;   // 1 to 365
///     TMonthSet summer = MonthSetOf({moJune, moJuly, moAugust});
///
/// Threads: the values keep no hidden state; the tables are constant.
namespace Varnholt {

/// Month number, 1 to 12, in one byte. A month converts to a number implicitly; ToMonth converts a number
/// to a month.
enum TMonth : std::uint8_t {
    moJanuary = 1,
    moFebruary,
    moMarch,
    moApril,
    moMay,
    moJune,
    moJuly,
    moAugust,
    moSeptember,
    moOctober,
    moNovember,
    moDecember
};

/// All months in calendar order.
inline constexpr std::array<TMonth, 12> kMonths = {moJanuary,   moFebruary, moMarch,    moApril,
                                                   moMay,       moJune,     moJuly,     moAugust,
                                                   moSeptember, moOctober,  moNovember, moDecember};

/// Raises ERangeError "Month out of range (MONTH)".
[[noreturn]] VARNHOLT_EXPORT void RaiseMonthOutOfRange(std::int64_t month);

/// The month of a number from 1 to 12. Any other number raises ERangeError "Month out of range (NUMBER)".
[[nodiscard]] constexpr TMonth ToMonth(std::int64_t number) {
    if (number < moJanuary || number > moDecember) RaiseMonthOutOfRange(number);
    return static_cast<TMonth>(number);
}

/// Twelve values by month, January first.
template <typename T>
class TMonthArray {
public:
    /// Twelve zeros, or false.
    constexpr TMonthArray() = default;
    constexpr explicit TMonthArray(const std::array<T, 12>& values) : FValues(values) {}

    /// The value of the month with that number. Outside 1 to 12 raises ERangeError "Month out of range
    /// (MONTH)".
    [[nodiscard]] constexpr T& operator[](std::int64_t month) { return FValues[IndexOf(month)]; }
    [[nodiscard]] constexpr const T& operator[](std::int64_t month) const { return FValues[IndexOf(month)]; }

    /// The values, January first.
    [[nodiscard]] constexpr std::span<T, 12> GetSpan() noexcept { return FValues; }
    [[nodiscard]] constexpr std::span<const T, 12> GetSpan() const noexcept { return FValues; }
    [[nodiscard]] constexpr auto begin() noexcept { return FValues.begin(); }
    [[nodiscard]] constexpr auto end() noexcept { return FValues.end(); }
    [[nodiscard]] constexpr auto begin() const noexcept { return FValues.begin(); }
    [[nodiscard]] constexpr auto end() const noexcept { return FValues.end(); }

    friend constexpr bool operator==(const TMonthArray&, const TMonthArray&) = default;

private:
    static constexpr std::size_t IndexOf(std::int64_t month) {
        return static_cast<std::size_t>(ToMonth(month) - moJanuary);
    }

    std::array<T, 12> FValues{};
};

/// A set of months: a Boolean for each.
using TMonthSet = TMonthArray<bool>;

/// The set of these months. A month outside 1 to 12 raises ERangeError "Month out of range (MONTH)".
[[nodiscard]] VARNHOLT_EXPORT TMonthSet MonthSetOf(std::initializer_list<TMonth> months);

/// A date of a time series: day of the month from 1, month from 1, year.
struct TDateType {
    std::uint8_t Day = 1;
    std::uint8_t Month = 1;
    std::uint16_t Year = 1;

    friend constexpr bool operator==(const TDateType&, const TDateType&) = default;
};

/// The days of each month.
inline constexpr TMonthArray<std::int32_t> MonthLength{{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31}};

/// The days before each month: added to the day of the month, the day of the year.
inline constexpr TMonthArray<std::int32_t> MonthAccLength{
    {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334}};

}  // namespace Varnholt
