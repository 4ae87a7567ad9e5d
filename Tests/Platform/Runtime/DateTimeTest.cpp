#include "Platform/Runtime/DateTime.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <limits>

#include "Platform/Runtime/Exceptions.h"
#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

TEST(DateTime, EveryDayIsThatOfTheSystem) {
    constexpr TDateTime kEpoch = 25569;  // 1 January 1970
    for (int day = -200'000; day < 200'000; ++day) {
        const std::time_t seconds = std::time_t{day} * 86400;
        std::tm parts{};
        gmtime_r(&seconds, &parts);
        const TDateTimeFields expected{
            .Year = parts.tm_year + 1900, .Month = parts.tm_mon + 1, .Day = parts.tm_mday};
        ASSERT_EQ(DecodeDateTime(kEpoch + day), expected) << day;
        ASSERT_EQ(EncodeDate(expected.Year, expected.Month, expected.Day), kEpoch + day);
    }
}

TEST(DateTime, TimesRoundToMillisecondsOnBothSidesOfDayZero) {
    const TDateTimeFields six{1899, 12, 29, 6, 0, 0, 0};
    EXPECT_EQ(DecodeDateTime(-1.25), six);
    EXPECT_EQ(JoinDateTime(EncodeDate(1899, 12, 29), EncodeTime(6, 0)), -1.25);
    for (const TDateTime day : {-1000.0, 0.0, 45000.0, 2958465.0}) {
        for (int ms = 0; ms < 86'400'000; ms += 99'991) {
            const TDateTimeFields fields = DecodeDateTime(JoinDateTime(day, ms / 86'400'000.0));
            ASSERT_EQ(((fields.Hour * 60 + fields.Minute) * 60 + fields.Second) * 1000 + fields.Millisecond,
                      ms)
                << day;
        }
    }
    EXPECT_EQ(DecodeDateTime(std::nextafter(2.0, 0.0)), DecodeDateTime(2));
    EXPECT_EQ(DecodeDateTime(std::nextafter(-2.0, 0.0)), DecodeDateTime(0));
    EXPECT_EQ(DecodeDateTime(-693593.5).Year, 1);
    ExpectRaised<EConvertError>({
        {[] { static_cast<void>(DecodeDateTime(-693594)); }, u"-693594 is not a date-time"},
        {[] { static_cast<void>(DecodeDateTime(std::nextafter(2958466.0, 0.0))); },
         u"2958466 is not a date-time"},
        {[] { static_cast<void>(DecodeDateTime(std::numeric_limits<double>::quiet_NaN())); },
         u"NAN is not a date-time"},
        {[] { static_cast<void>(EncodeDate(2013, 2, 29)); }, u"Invalid date (2013-2-29)"},
        {[] { static_cast<void>(EncodeDate(0, 1, 1)); }, u"Invalid date (0-1-1)"},
        {[] { static_cast<void>(EncodeDate(2013, 257, 1)); }, u"Invalid date (2013-257-1)"},
        {[] { static_cast<void>(EncodeTime(23, 59, 60)); }, u"Invalid time (23:59:60.0)"},
    });
}

TEST(DateTime, FormatsFollowTheSettings) {
    TFormatSettings settings;
    settings.DateSeparator = u'.';
    settings.ShortDateFormat = u"D/M/YYYY";
    settings.LongTimeFormat = u"hh:mm:ss";
    const TDateTime value = EncodeDate(812, 3, 4) - EncodeTime(5, 6, 7, 89);
    EXPECT_EQ(DateTimeToStr(value, settings), u"4.3.0812 05:06:07");
    EXPECT_EQ(DateTimeToStr(value, TFormatSettings::Invariant()), u"0812-03-04 05:06:07");
    EXPECT_EQ(FormatDateTime(u"yy MMM h:n:s.z 'day' \"/\" hH:m /x'd", value, settings),
              u"12 03 5:6:7.089 day / 05:6 .xd");
}

TEST(DateTime, TextsAreReadInTheOrderOfTheFormat) {
    TFormatSettings german;
    german.DateSeparator = u'.';
    german.DecimalSeparator = u',';
    german.ShortDateFormat = u"DD/MM/YYYY";
    const struct {
        StringView Text;
        StringView Result;  // in the invariant form; empty for a refusal
    } cases[] = {
        {u" 31.1.2012 ", u"2012-01-31 00:00:00.000"},
        {u"1.2.49", u"2049-02-01 00:00:00.000"},
        {u"1.2.50", u"1950-02-01 00:00:00.000"},
        {u"1.2.850  6:07", u"0850-02-01 06:07:00.000"},
        {u"1.2.2012 6:7:8,5", u"2012-02-01 06:07:08.500"},
        {u"1.13.2012", u""},
        {u"29.2.2013", u""},
        {u"1.2", u""},
        {u"1-2-2012", u""},
        {u"1.2.20123", u""},
        {u"001.2.2012", u""},
        {u"", u""},
        {u"1.2.2012 24:00", u""},
        {u"1.2.2012 6", u""},
        {u"1.2.2012 6:07:08.5", u""},
        {u"1.2.2012 6:07:", u""},
        {u"1.2.2012 6:07 x", u""},
        {u"+1.2.2012", u""},
    };
    for (const auto& [text, result] : cases) {
        TDateTime value = 0;
        const bool isRead = TryStrToDateTime(text, value, german);
        EXPECT_EQ(isRead, !result.empty()) << ToUtf8(text);
        const String back = FormatDateTime(u"YYYY-MM-DD HH:NN:SS.ZZZ", value);
        EXPECT_EQ(back, isRead ? result : u"1899-12-30 00:00:00.000") << ToUtf8(text);
    }
    ExpectRaised<EConvertError>({
        {[&] { static_cast<void>(StrToDate(u"1.2.2012 3:04", german)); },
         u"'1.2.2012 3:04' is not a valid date"},
        {[&] { static_cast<void>(StrToTime(u"3", german)); }, u"'3' is not a valid time"},
        {[&] { static_cast<void>(StrToDateTime(u"x", german)); }, u"'x' is not a valid date and time"},
    });
}

}  // namespace
}  // namespace Varnholt::Test
