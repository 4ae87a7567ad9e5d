#pragma once

#include "Platform/Runtime/DateTime.h"

/// Dates in fixed forms, whatever the locale.
///
///     YYYYMMDDToDate(u"20120229");                       // the same as
///     YYYYMMDDToDate(u"2012-02-29");
///     TDateTimeHelper::ParseInvariant(u"02/29/2012 12:30:00");
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// Reads year, month and day in eight digits, or with "-" after the year and the month. Raises Exception
/// `Invalid YYYY-MM-DD format` for ten characters without these two, `Invalid YYYYMMDD string length` for any other
/// length; EConvertError as StrToInt and EncodeDate.
[[nodiscard]] VARNHOLT_EXPORT TDateTime YYYYMMDDToDate(StringView text);
/// The same without raising: false, and the date unchanged, after any failure.
[[nodiscard]] VARNHOLT_EXPORT bool TryYYYYMMDDToDate(StringView text, TDateTime& date);

class VARNHOLT_EXPORT TDateTimeHelper {
public:
    TDateTimeHelper() = delete;
    /// The invariant settings with the date formats MM/DD/YYYY and the time formats HH:MM:SS.
    [[nodiscard]] static TFormatSettings GetInvariantFormatSettings();
    /// Reads a date, month first, and a time by StrToDateTime with these settings. Raises as that does.
    [[nodiscard]] static TDateTime ParseInvariant(StringView text);
};

}  // namespace Varnholt
