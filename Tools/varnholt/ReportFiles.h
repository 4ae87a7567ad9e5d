#pragma once

#include <optional>
#include <string>

#include "Tools/varnholt/StationSummary.h"

namespace Varnholt::Tool {

/// A picture that belongs to a report.
struct TReportChart {
    String Path;
    std::string Bytes;
};

/// The files of a report: monthly.csv, yearly.csv and summary.csv in a folder, and the chart if there is one.
///
/// Raises Exception if the station's file or standard output is one of them, by whatever path, if two of them are
/// the same file, or if one cannot be replaced as a whole (see TDraftFileStream::IsWrittenDirectly). To be called
/// before the station is read.
void CheckReportFiles(StringView folder, StringView stationPath, const std::optional<String>& chartPath);

/// Writes the files: all appear, or are replaced, or none is. A missing folder is created, and removed again after a
/// failure. Numbers have 7 significant digits; what cannot be calculated is -999. Raises what
/// the file operations raise.
void WriteReportFiles(StringView folder, const TStationSummary& summary,
                      const std::optional<TReportChart>& chart);

}  // namespace Varnholt::Tool
