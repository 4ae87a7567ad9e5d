#pragma once

#include "Platform/Runtime/FormatSettings.h"

/// Dates and times as numbers, and their texts.
///
///     const TDateTime start = EncodeDate(2012, 2, 29) + EncodeTime(12, 30);
///     DateTimeToStr(start, TFormatSettings::Invariant());       // "2012-02-29 12:30:00"
///     const TDateTimeFields fields = DecodeDateTime(start);     // .Year is 2012, .Minute is 30
///
/// A date-time is the number of days since 30 December 1899, 0:00, in the proleptic Gregorian calendar; the
/// fraction is the time of day. Before that day the fraction still counts forwards from midnight: -1.25 is 29
/// December 1899, 6:00. So the day is the integer part, and a date before it with a time is `date - time`;
/// JoinDateTime does it for all dates. Values of one day do not all compare in the order of time there.
///
/// Dates are from 1 January of the year 1 to 31 December 9999. A time is taken to the nearest millisecond.
///
/// Errors raise EConvertError: `Invalid date (%d-%d-%d)` with year, month and day, `Invalid time (%d:%d:%d.%d)`,
/// `%s is not a date-time` for a NaN or a value outside the range, and for texts `'%s' is not a valid date`,
/// `'%s' is not a valid time` and `'%s' is not a valid date and time`.
///
/// Threads: the functions keep no state; for the process's settings see FormatSettings.h.
namespace Varnholt {

using TDateTime = double;

struct TDateTimeFields {
    int Year = 0;
    int Month = 0;  ///< from 1
    int Day = 0;    ///< from 1
    int Hour = 0;
    int Minute = 0;
    int Second = 0;
    int Millisecond = 0;

    bool operator==(const TDateTimeFields&) const = default;
};

[[nodiscard]] VARNHOLT_EXPORT TDateTime EncodeDate(int year, int month, int day);
/// False, and the value unchanged, if there is no such date.
[[nodiscard]] VARNHOLT_EXPORT bool TryEncodeDate(int year, int month, int day, TDateTime& value);
/// The fraction of a day, from 0:00:00.000 to 23:59:59.999.
[[nodiscard]] VARNHOLT_EXPORT TDateTime EncodeTime(int hour, int minute, int second = 0, int millisecond = 0);
/// The date-time of a date, a whole number, and a time, from 0 to below 1.
[[nodiscard]] VARNHOLT_EXPORT TDateTime JoinDateTime(TDateTime date, TDateTime time) noexcept;
[[nodiscard]] VARNHOLT_EXPORT TDateTimeFields DecodeDateTime(TDateTime value);

/// The value in a format. Letters of either case stand for a field: D and DD the day, M and MM the month, YY and
/// YYYY the year, H and HH the hour (0 to 23), N and NN the minute, S and SS the second, ZZZ the millisecond; M and MM
/// after an hour are the minute, too. Other numbers of a letter count as the nearest of these. "/" is the
/// date separator, ":" the time separator; text in single or double quotes, and any other character, stands for
/// itself.
[[nodiscard]] VARNHOLT_EXPORT String FormatDateTime(StringView format, TDateTime value,
                                                    const TFormatSettings& settings = FormatSettings());
/// ShortDateFormat.
[[nodiscard]] VARNHOLT_EXPORT String DateToStr(TDateTime value,
                                               const TFormatSettings& settings = FormatSettings());
/// LongTimeFormat.
[[nodiscard]] VARNHOLT_EXPORT String TimeToStr(TDateTime value,
                                               const TFormatSettings& settings = FormatSettings());
/// Date and time with a blank between them, at midnight too.
[[nodiscard]] VARNHOLT_EXPORT String DateTimeToStr(TDateTime value,
                                                   const TFormatSettings& settings = FormatSettings());

/// Reads three numbers of digits with the date separator between them, in the order in which day, month and year
/// are in ShortDateFormat. The year has one to four digits; of two digits, 00 to 49 are 2000 to 2049 and 50 to 99
/// are 1950 to 1999. Here and below, blanks around the text are ignored.
[[nodiscard]] VARNHOLT_EXPORT TDateTime StrToDate(StringView text,
                                                  const TFormatSettings& settings = FormatSettings());
/// Reads hour, minute and, if present, second with the time separator between them, each of one or two digits; a
/// second may have a fraction of one to three digits after the decimal separator.
[[nodiscard]] VARNHOLT_EXPORT TDateTime StrToTime(StringView text,
                                                  const TFormatSettings& settings = FormatSettings());
/// Reads a date and, if present, a time after blanks.
[[nodiscard]] VARNHOLT_EXPORT TDateTime StrToDateTime(StringView text,
                                                      const TFormatSettings& settings = FormatSettings());
/// The same without raising: false, and the value unchanged, for a text that is not valid.
[[nodiscard]] VARNHOLT_EXPORT bool TryStrToDate(StringView text, TDateTime& value,
                                                const TFormatSettings& settings = FormatSettings());
[[nodiscard]] VARNHOLT_EXPORT bool TryStrToTime(StringView text, TDateTime& value,
                                                const TFormatSettings& settings = FormatSettings());
[[nodiscard]] VARNHOLT_EXPORT bool TryStrToDateTime(StringView text, TDateTime& value,
                                                    const TFormatSettings& settings = FormatSettings());

}  // namespace Varnholt
