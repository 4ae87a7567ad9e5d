#pragma once

#include "Platform/Runtime/Types.h"

/// How numbers, dates and times are read and written as text.
///
///     FormatSettings().DecimalSeparator = u',';        // for the whole process
///     StrToFloat(text, TFormatSettings::Invariant());  // for a file whose format is fixed
///
/// The conversions of Numbers.h, Format.h and DateTime.h follow these settings and never the C locale itself.
///
/// Threads: the process-wide settings have no lock. Set or refresh them while no other thread converts
/// numbers or dates, ideally before threads start.
namespace Varnholt {

struct VARNHOLT_EXPORT TFormatSettings {
    Char DecimalSeparator = u'.';
    Char ThousandSeparator = u',';
    Char DateSeparator = u'-';  ///< stands for each "/" of a date format
    Char TimeSeparator = u':';  ///< stands for each ":" of a time format
    // The formats are those of FormatDateTime (DateTime.h).
    String ShortDateFormat = u"YYYY/MM/DD";
    String LongDateFormat = u"YYYY/MM/DD";
    String ShortTimeFormat = u"HH:NN";
    String LongTimeFormat = u"HH:NN:SS";

    /// Whatever the process's locale: a point for decimals, a comma for thousands, dates as 2012-01-31 and times as
    /// 23:59:00.
    [[nodiscard]] static const TFormatSettings& Invariant();

    bool operator==(const TFormatSettings&) const = default;
};

/// The settings of the process, taken from the C locale (LC_NUMERIC, LC_TIME) when the library is loaded: the
/// invariant ones, those of "C", unless the program called setlocale before. The fields may be set.
[[nodiscard]] VARNHOLT_EXPORT TFormatSettings& FormatSettings();

/// Takes the process's settings from the current C locale.
///
/// A separator that the locale lacks, or that is not one character of the basic plane, becomes a point for decimals
/// and a comma for thousands (a point if the decimal separator is a comma). Dates are numbers with day, month and
/// year in the order of the locale, with its first separator between them; the year always has four digits. Times
/// have 24 hours. What the locale writes in another way, and dates and times of the locales "C" and "POSIX",
/// become the invariant form.
VARNHOLT_EXPORT void RefreshFormatSettings();

}  // namespace Varnholt
