#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "Platform/Runtime/DraftFile.h"
#include "Platform/Runtime/TextStreams.h"
#include "Tools/varnholt/Output.h"
#include "VarnholtBaseLib/CsvReader.h"

/// CSV files as every command reads and writes them: UTF-8, comma-separated, with a header row.
namespace Varnholt::Tool {

using TRow = std::vector<String>;

/// Reads a file row by row, and shows how far it has come.
class TCsvInput {
public:
    /// Opens the file; raises EFOpenError.
    explicit TCsvInput(StringView path);

    /// Reads the first row; raises Exception "PATH is empty".
    void ReadHeader(TRow& row);
    /// Reads the next row; false at the end of the file. Raises EConvertError "PATH: The quote opened in line
    /// LINE is never closed".
    bool ReadRow(TRow& row);
    /// The line of the file in which the row read last began.
    [[nodiscard]] std::int64_t GetLineNumber() const noexcept { return FReader.GetLineNumber(); }
    [[nodiscard]] const String& GetPath() const noexcept { return FPath; }

private:
    String FPath;
    TStreamReader FText;
    TCSVRowReader FReader;
    std::optional<TProgress> FProgress;  // none at the end of the file
    std::int64_t FSize = 0;
    std::int64_t FRowCount = 0;
};

/// Writes a file field by field. The file appears, or is replaced, when all rows have come.
class TCsvOutput {
public:
    /// Raises what TDraftFileStream raises.
    explicit TCsvOutput(StringView path);

    void AddField(StringView field);
    void EndRow();
    /// All rows have come.
    void Finish();

private:
    TDraftFileStream FFile;
    TStreamWriter FWriter;
    String FLine;
    std::int64_t FFieldCount = 0;  // in FLine
};

}  // namespace Varnholt::Tool
