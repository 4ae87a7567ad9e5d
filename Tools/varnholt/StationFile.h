#pragma once

#include <array>
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

/// A day's maximum and minimum temperature in degrees Celsius and its precipitation in mm. A missing value is
/// kMissing.
struct TStationDay {
    std::chrono::year_month_day Date;
    float TMax = static_cast<float>(kMissing);
    float TMin = static_cast<float>(kMissing);
    float Precipitation = static_cast<float>(kMissing);
};

[[nodiscard]] constexpr bool IsKnown(float value) {
    return value != static_cast<float>(kMissing);
}

/// Values that no weather has. A temperature on record is from -89.2 to 56.7 degrees, a day's precipitation up
/// to 1,825 mm (World Meteorological Organization). A maximum and a minimum are compared if both are possible.
enum class TImplausible { Temperature, MaximumBelowMinimum, NegativePrecipitation, GreatPrecipitation };
inline constexpr std::size_t kImplausibleKinds = 4;

/// How often something was found in a file, and the first place, such as `"wet" in line 36, column temp_max`.
struct TFinding {
    std::int64_t Count = 0;
    String First;
};

struct TStation {
    std::vector<TStationDay> Days;  // one at least, in the order of their dates, none twice
    TFinding Words;                 // cells with something else than a number
    std::array<TFinding, kImplausibleKinds> Implausible;  // by TImplausible; the values are in Days
    std::vector<String> PossibleCodes;  // implausible cells of nines such as -9999 and -99.9, each text once
};

/// Reads the file. Dates are YYYY-MM-DD or YYYYMMDD in the Gregorian calendar, from the year 1 on. Missing is
/// a cell that is absent, blank, no number, no finite 32-bit number, or from -1000 to -999. Raises Exception
/// with the path, and with the line of the file for a row: for a file without header, column or row, a text
/// that is no date, and a date that is not after the one before.
[[nodiscard]] TStation ReadStation(StringView path, const TStationColumns& columns);

/// Prints a warning on standard error for each kind of finding, with the first place, and the codes that
/// may stand for missing values.
void WarnOfFindings(StringView path, const TStation& station);

/// The date as YYYY-MM-DD.
[[nodiscard]] String DateText(std::chrono::year_month_day date);

}  // namespace Varnholt::Tool
