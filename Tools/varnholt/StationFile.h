#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <vector>

#include "Platform/Runtime/Types.h"
#include "Tools/varnholt/CsvFile.h"
#include "VarnholtLib/Numerics/vrnMissingValues.h"

/// The daily values of a station, read from a CSV file.
namespace Varnholt::Tool {

/// The names of the columns to read.
struct TStationColumns {
    String Date = u"date";
    String TMax = u"temp_max";
    String TMin = u"temp_min";
    String Precipitation = u"precipitation";
};

/// A day's maximum and minimum temperature in degrees Celsius and its precipitation in mm. A missing value is
/// kMissing.
struct TStationDay {
    std::chrono::year_month_day Date;
    float TMax = kMissing;
    float TMin = kMissing;
    float Precipitation = kMissing;
};

[[nodiscard]] constexpr bool IsKnown(float value) {
    return value != kMissing;
}

/// Kinds of values that no weather has: a temperature outside -95 to 65 degrees, a maximum below its minimum
/// (of temperatures within these limits), and precipitation below 0 or above 2,000 mm a day. The records of
/// the World Meteorological Organization are -89.2 and 56.7 degrees and 1,825 mm.
enum class TImplausible { Temperature, MaximumBelowMinimum, NegativePrecipitation, ExcessivePrecipitation };
inline constexpr std::size_t kImplausibleKinds = 4;

/// How many cells have something in common, and the first of them: PATH, line LINE: "CELL" in column COLUMN.
struct TFinding {
    std::int64_t Count = 0;
    String First;
};

struct TStation {
    std::vector<TStationDay> Days;  // at least one, in the order of their dates, none twice
    TTextCells Texts;               // cells that are neither a number nor a missing value
    std::array<TFinding, kImplausibleKinds> Implausible;  // by TImplausible; the values are in Days
    // Implausible cells of nines, such as -9999 and -99.9: the first four that differ as numbers.
    std::vector<String> PossibleCodes;
};

/// Reads the rows of the file. Dates are YYYY-MM-DD or YYYYMMDD in the Gregorian calendar, from the year 1
/// on. A cell is missing if TMissingValues says so, if the row has no such cell, and if it holds no number or
/// one that is not a finite 32-bit float.
///
/// Raises what TCsvInput raises, Exception "PATH has a header and no rows", and by TCsvInput::Fail:
/// - "TEXT" is not a date YYYY-MM-DD or YYYYMMDD
/// - DATE appears twice
/// - DATE comes after DATE; rows must be in the order of their dates
[[nodiscard]] TStation ReadStation(TCsvInput& file, const TStationColumns& columns,
                                   const TMissingValues& missing);

/// Prints on standard error a warning for each kind of finding, with the first place, and the codes that may
/// stand for missing values.
void WarnOfFindings(const TStation& station);

/// The date as YYYY-MM-DD.
[[nodiscard]] String DateText(std::chrono::year_month_day date);

}  // namespace Varnholt::Tool
