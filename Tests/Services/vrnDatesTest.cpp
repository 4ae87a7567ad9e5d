#include <gtest/gtest.h>

#include <chrono>

#include "Tests/Support/FormatSettingsScope.h"
#include "Tests/Support/Raised.h"
#include "VarnholtLib/Services/vrnDateTime.h"
#include "VarnholtLib/Services/vrnDateUtils.h"

namespace Varnholt::Test {
namespace {

/// The month of a day of the year 2012 or 2013.
unsigned MonthOf(bool leap, int day) {
    const std::chrono::sys_days first = std::chrono::year(leap ? 2012 : 2013) / 1 / 1;
    return static_cast<unsigned>(std::chrono::year_month_day(first + std::chrono::days(day - 1)).month());
}

TEST(DateUtils, MonthsOfDaysHoursAndSteps) {
    for (const bool leap : {false, true}) {
        const int length = leap ? 366 : 365;
        for (int day = 1; day <= length; ++day) {
            const unsigned month = MonthOf(leap, day);
            ASSERT_EQ(CalcMonth(leap, day), month) << day;
            ASSERT_EQ(CalcMonth(leap, day + 7 * length), month) << day;
            for (const int hour : {day * 24 - 23, day * 24})
                ASSERT_EQ(CalcMonthFromHour(leap, hour + length * 24), month) << day;
            for (const int step : {day * 144 - 143, day * 144})
                ASSERT_EQ(CalcMonthFromTenMinutes(leap, step + length * 144), month) << day;
            if (leap) continue;
            const TDateType date = DayToDate(static_cast<std::uint16_t>(day));
            ASSERT_EQ(date.Month, month);
            ASSERT_EQ(CalcDay(static_cast<std::int8_t>(date.Day), static_cast<std::int8_t>(date.Month)), day);
            ASSERT_EQ(CalcDate(static_cast<std::uint16_t>(day)), date.Day);
        }
    }
    EXPECT_EQ(CalcMonth(false, 0), 1);
    EXPECT_EQ(CalcMonth(true, INT32_MIN), 1);
    EXPECT_EQ(CalcMonthFromHour(false, INT32_MIN), 1);
    EXPECT_EQ(CalcMonthFromWeek(52), 12);
    EXPECT_EQ(CalcMonthFromWeek(53), 1);
    EXPECT_EQ(CalcHour(2, 1, 5), 29);
    EXPECT_EQ(CalcDay(static_cast<std::int8_t>(1 | 0x80), static_cast<std::int8_t>(3 | 0x80)), 60);
    ExpectRaised<EArgumentException>({
        {[] { static_cast<void>(DayToDate(0)); }, u"Day 0 is not from 1 to 365"},
        {[] { static_cast<void>(CalcDate(366)); }, u"Day 366 is not from 1 to 365"},
    });
    ExpectRaised<ERangeError>({{[] { static_cast<void>(CalcDay(1, 0)); }, u"Month out of range (0)"}});
}

TEST(DateUtils, DaysBetweenCountsYearsOf365Days) {
    const struct {
        TDateType A, B;
        std::int32_t Days;
    } cases[] = {
        {{1, 3, 2012}, {1, 3, 2012}, 0},      {{1, 3, 2012}, {31, 3, 2012}, 30},
        {{28, 2, 2012}, {1, 3, 2012}, 1},     {{31, 1, 2012}, {1, 12, 2012}, 304},
        {{31, 12, 2012}, {1, 1, 2013}, 1},    {{28, 2, 2012}, {1, 3, 2013}, 366},
        {{15, 6, 2000}, {15, 6, 2010}, 3650}, {{1, 1, 0}, {31, 12, 65535}, 65535 * 365 + 364},
    };
    for (const auto& [a, b, days] : cases) {
        EXPECT_EQ(DaysBetween(a, b), days) << ToUtf8(DateToStr(a));
        EXPECT_EQ(DaysBetween(b, a), days) << ToUtf8(DateToStr(a));
    }
}

TEST(DateUtils, MaskEditFollowsTheSettings) {
    const TFormatSettingsScope scope;
    FormatSettings().DateSeparator = u'.';
    FormatSettings().ShortDateFormat = u"DD/MM/YYYY";
    EXPECT_EQ(MaskEditToJulian(u"1.3.2012"), 60);
    ExpectRaised<Exception>({
        {[] { static_cast<void>(MaskEditToJulian(u"3/1/2012")); },
         u"\"3/1/2012\" is not a valid date string"},
        {[] { static_cast<void>(MaskEditToJulian(u"29.2.2012")); },
         u"February 29 is not supported by this function"},
    });
}

TEST(DateTimeForms, AreFixed) {
    const TDateTime day = EncodeDate(2012, 2, 29);
    EXPECT_EQ(YYYYMMDDToDate(u"20120229"), day);
    EXPECT_EQ(YYYYMMDDToDate(u"2012-02-29"), day);
    EXPECT_EQ(TDateTimeHelper::ParseInvariant(u"02/29/2012 12:00:00"), day + 0.5);
    TDateTime kept = 7;
    EXPECT_FALSE(TryYYYYMMDDToDate(u"20130229", kept));
    EXPECT_EQ(kept, 7);
    ExpectRaised<Exception>({
        {[] { static_cast<void>(YYYYMMDDToDate(u"2012/02/29")); }, u"Invalid YYYY-MM-DD format"},
        {[] { static_cast<void>(YYYYMMDDToDate(u"2012022")); }, u"Invalid YYYYMMDD string length"},
    });
    ExpectRaised<EConvertError>({
        {[] { static_cast<void>(YYYYMMDDToDate(u"2012x229")); }, u"'x2' is not a valid integer value"},
        {[] { static_cast<void>(YYYYMMDDToDate(u"20130229")); }, u"Invalid date (2013-2-29)"},
    });
}

}  // namespace
}  // namespace Varnholt::Test
