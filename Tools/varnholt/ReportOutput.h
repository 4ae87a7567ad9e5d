#pragma once

#include "Tools/varnholt/StationSummary.h"

namespace Varnholt::Tool {

/// Prints the report on standard output, with plain words for each statistic.
void PrintReport(StringView title, const TStationSummary& summary);

/// Writes monthly.csv, yearly.csv and summary.csv into the folder, which is made where it is missing. Numbers
/// have 7 significant digits; what can not be worked out is -999. Each file appears, or is replaced, whole.
/// Raises what the file operations raise.
void WriteReportFiles(StringView folder, const TStationSummary& summary);

}  // namespace Varnholt::Tool
