#pragma once

#include "Tools/varnholt/StationSummary.h"

namespace Varnholt::Tool {

/// Prints the report on standard output, with a line in plain words for each statistic. Raises EWriteError as
/// PrintLine does.
void PrintReport(StringView title, const TStationSummary& summary);

}  // namespace Varnholt::Tool
