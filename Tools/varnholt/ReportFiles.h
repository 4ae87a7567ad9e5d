#pragma once

#include "Tools/varnholt/StationSummary.h"

namespace Varnholt::Tool {

/// The files of a report: monthly.csv, yearly.csv and summary.csv in a folder.
///
/// Raises Exception if the station's file or standard output is one of them, by whatever path, if two of them are
/// the same file, or if one cannot be replaced as a whole (see TDraftFileStream::IsWrittenDirectly). To be called
/// before the station is read.
void CheckReportFiles(StringView folder, StringView stationPath);

/// Writes the files: all three appear, or are replaced, or none is. A missing folder is created, and removed
/// again after a failure. Numbers have 7 significant digits; what cannot be calculated is -999. Raises what
/// the file operations raise.
void WriteReportFiles(StringView folder, const TStationSummary& summary);

}  // namespace Varnholt::Tool
