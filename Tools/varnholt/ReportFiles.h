#pragma once

#include "Tools/varnholt/StationSummary.h"

namespace Varnholt::Tool {

/// Writes monthly.csv, yearly.csv and summary.csv into the folder: all three appear, or are replaced, or none is.
/// A missing folder is created, and removed again after a failure. Numbers have 7 significant digits; what
/// cannot be calculated is -999.
///
/// Raises what the file operations raise, and EFCreateError for a file that cannot be replaced as a whole (see
/// TDraftFileStream::IsWrittenDirectly).
void WriteReportFiles(StringView folder, const TStationSummary& summary);

}  // namespace Varnholt::Tool
