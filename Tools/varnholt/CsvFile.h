#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "Platform/Runtime/DraftFile.h"
#include "Platform/Runtime/TextStreams.h"
#include "Tools/varnholt/Output.h"
#include "VarnholtBaseLib/CsvReader.h"

/// CSV files as every command reads and writes them: comma-separated, with a header row. A file is written in
/// UTF-8, with quotes where a field needs them.
namespace Varnholt::Tool {

using TRow = std::vector<String>;

/// What an output takes over from the input that it was made of.
struct TCsvFormat {
    String LineEnd = u"\n";
    bool HasByteOrderMark = false;
};

/// Raises EArgumentException "FILE: Column "COLUMN" not found".
[[noreturn]] void FailColumn(StringView file, StringView column);

/// Reads a file row by row, and shows its progress.
class TCsvInput {
public:
    /// Opens the file, or standard input for "-", and reads its header. A byte-order mark in the file
    /// overrides the encoding. Raises EFOpenError, what ReadRow raises, and Exception "PATH is empty".
    explicit TCsvInput(StringView path, const TEncoding& encoding = TEncoding::Utf8());

    /// The path for messages, or "standard input".
    [[nodiscard]] const String& GetName() const noexcept { return FName; }
    /// The first row of the file.
    [[nodiscard]] const TRow& GetHeader() const noexcept { return FHeader; }
    /// The first column of that name, from 0. An unknown name raises what FailColumn does.
    [[nodiscard]] std::size_t ColumnIndex(StringView name) const;
    /// The line end of the header row, and whether the file begins with a byte-order mark.
    [[nodiscard]] const TCsvFormat& GetFormat() const noexcept { return FFormat; }

    /// Reads the next row; false at the end of the file. Raises EEncodingError "PATH, line LINE: ..." for bytes
    /// that are not valid in the encoding, and EConvertError "PATH: ..." for a quote that is never closed.
    bool ReadRow(TRow& row);
    /// Raises EConvertError "PATH, line LINE: Row NUMBER has COUNT cells, the header has COUNT" if the row read
    /// last has more cells than the header. One with fewer is counted.
    void CheckWidth(const TRow& row);
    /// Warns 'PATH, line LINE: The row has fewer cells than the header, and the others count as missing; rows:
    /// COUNT' if CheckWidth counted any.
    void ReportShortRows() const;
    /// Raises as CheckWidth does, also for fewer cells.
    [[noreturn]] void FailWidth(const TRow& row) const;
    /// The line of the file in which the row read last began.
    [[nodiscard]] std::int64_t GetLineNumber() const noexcept { return FReader.GetLineNumber(); }

    /// Raises EConvertError "PATH, line LINE: WHAT", with the line of the row read last.
    [[noreturn]] void Fail(StringView what) const;
    /// "PATH, line LINE: WHAT".
    [[nodiscard]] String AtRow(StringView what) const;

private:
    bool ReadNext(TRow& row);

    String FName;
    std::unique_ptr<TFileStream> FFile;
    TStreamReader FText;
    TCSVRowReader FReader;
    TRow FHeader;
    TCsvFormat FFormat;
    std::optional<TProgress> FProgress;  // none where nobody sees it, and at the end of the file
    std::int64_t FSize = 0;
    std::int64_t FRowCount = 0;  // with the header
    std::int64_t FShortRows = 0;
    String FFirstShortRow;
};

/// Counts cells that hold a text where a number is needed, and keeps the place of the first one.
class TTextCells {
public:
    /// Counts a cell of the row read last.
    void Add(const TCsvInput& file, StringView cell, StringView column);
    /// Warns 'PATH, line LINE: "CELL" in column COLUMN is not a number and counts as missing; cells: COUNT'
    /// if any were counted.
    void Report() const;

private:
    std::int64_t FCount = 0;
    String FFirst;
};

/// Writes a file field by field. An existing file is replaced when all rows are written, by a
/// TDraftFileStream; "-" is standard output, which is written row by row.
class TCsvOutput {
public:
    /// Raises what TDraftFileStream raises.
    explicit TCsvOutput(StringView path, const TCsvFormat& format = {});

    void AddField(StringView field);
    void EndRow();
    /// Completes the file after its last row.
    void Finish();
    /// Completes several files, all of them or none; see TDraftFileStream::CommitTogether.
    /// With another file that is written, unless it is null.
    static void FinishTogether(std::initializer_list<TCsvOutput*> files, TDraftFileStream* other = nullptr);

private:
    void Write(StringView text);

    std::optional<TDraftFileStream> FFile;  // neither for standard output
    std::optional<TStreamWriter> FWriter;
    String FLineEnd;
    String FLine;
    std::int64_t FFieldCount = 0;  // in FLine
};

/// Raises Exception if writing an output would destroy an input that is still being read: if both are the same
/// file, by whatever path, and no draft can replace it (TDraftFileStream::IsWrittenDirectly). Also raises if two
/// outputs are the same file. "-" is standard input and output; among the outputs it stands for all that is
/// printed. Call it before anything is opened.
void CheckOutputs(std::span<const String> inputs, std::span<const String> outputs);

}  // namespace Varnholt::Tool
