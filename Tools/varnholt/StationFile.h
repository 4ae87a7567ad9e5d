#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

#include "Platform/Runtime/Types.h"
#include "Tools/varnholt/CalcRows.h"

/// The daily values of a station, read from a CSV file.
namespace Varnholt::Tool {

/// The names of the columns that are read.
struct TStationColumns {
    String Date = u"date";
    String TMax = u"temp_max";
    String TMin = u"temp_min";
    String Precipitation = u"precipitation";
};

/// A day's maximum and minimum temperature in degrees Celsius and its precipitation in mm. All that is
/// missing is kMissing.
struct TStationDay {
    std::chrono::year_month_day Date;
    float TMax = static_cast<float>(kMissing);
    float TMin = static_cast<float>(kMissing);
    float Precipitation = static_cast<float>(kMissing);
};

[[nodiscard]] constexpr bool IsKnown(float value) {
    return value != static_cast<float>(kMissing);
}

struct TStation {
    std::vector<TStationDay> Days;  // one at least, in the order of their dates, none twice
    std::int64_t WordCount = 0;     // cells with something else than a number
    String FirstWord;               // the first of them and its place, for a message
};

/// Reads the file. Dates are YYYY-MM-DD or YYYYMMDD in the Gregorian calendar, from the year 1 on. Missing is
/// a cell that is absent, blank, no number, no finite 32-bit number, or from -1000 to -999. Raises Exception
/// with the path, and with the line of the file for a row: for a file without header, column or row, a text
/// that is no date, and a date that does not come after the one before.
[[nodiscard]] TStation ReadStation(StringView path, const TStationColumns& columns);

/// The date as YYYY-MM-DD.
[[nodiscard]] String DateText(std::chrono::year_month_day date);

}  // namespace Varnholt::Tool
