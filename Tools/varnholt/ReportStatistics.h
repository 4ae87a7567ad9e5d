#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "Tools/varnholt/StationSummary.h"

/// The figures of a report as texts, each with its name and what it means.
namespace Varnholt::Tool {

struct TQuantity {
    String Name;
    String Value;    // as NumberText gives it
    String Meaning;  // one line for people, or why the value is missing; empty for a fact of the station
};

/// The station's rows, missing and implausible values, dates and latitude.
[[nodiscard]] std::vector<TQuantity> StationFacts(const TStationSummary& summary);

/// The statistics. Their number and order is always the same.
[[nodiscard]] std::vector<TQuantity> Statistics(const TStationSummary& summary);

/// The count with its unit, such as "1 row" and "2 rows".
[[nodiscard]] String Counted(std::int64_t count, StringView singular, StringView plural);

/// The number with 7 significant digits; -999 for none.
[[nodiscard]] String NumberText(std::optional<double> value);

}  // namespace Varnholt::Tool
