#include "Tools/varnholt/CsvFile.h"

#include <algorithm>
#include <filesystem>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Paths.h"

namespace Varnholt::Tool {
namespace {

constexpr std::int64_t kRowsBetweenProgress = 4096;
constexpr StringView kStandard = u"-";

std::unique_ptr<TFileStream> OpenInput(StringView path) {
    if (path == kStandard) return TFileStream::StandardInput();
    return std::make_unique<TFileStream>(path, fmOpenRead);
}

// --- Files that are the same ---

String Quoted(StringView path) {
    return Format(u"\"%s\"", {path});
}

bool IsRegularFile(StringView path) {
    String reason;
    std::error_code error;
    const auto native = TryToNativePath(path, reason);
    return native && std::filesystem::is_regular_file(*native, error);
}

StringView OutputPath(StringView output) {
    return output == kStandard ? u"/dev/stdout" : output;
}

void CheckOutput(StringView input, StringView output) {
    const bool isStandard = output == kStandard;
    const StringView source = input == kStandard ? u"/dev/stdin" : input;
    if (!IsRegularFile(source) || !IsSameFile(source, OutputPath(output))) return;  // a terminal may be both
    if (!isStandard && !TDraftFileStream::IsWrittenDirectly(output)) return;
    throw Exception(Format(u"Cannot write %s: It is also the input, and cannot be replaced as a whole",
                           {isStandard ? String(u"standard output") : u"file " + Quoted(output)}));
}

}  // namespace

void FailColumn(StringView file, StringView column) {
    throw EArgumentException(Format(u"%s: Column \"%s\" not found", {file, column}));
}

// --- TCsvInput ---

TCsvInput::TCsvInput(StringView path, const TEncoding& encoding)
    : FName(path == kStandard ? StringView(u"standard input") : path),
      FFile(OpenInput(path)),
      FText(*FFile, encoding, true, TStreamReader::kBufferSize, ibRefuse),
      FReader(FText) {
    if (IsRegularFile(path) && FProgress.emplace().IsVisible()) FSize = FileSize(path);
    if (!ReadRow(FHeader)) throw Exception(FName + u" is empty");
    if (!FReader.GetRowEnd().empty()) FFormat.LineEnd = FReader.GetRowEnd();
    FFormat.HasByteOrderMark = FText.GetHasPreamble();
}

std::size_t TCsvInput::ColumnIndex(StringView name) const {
    const auto found = std::ranges::find(FHeader, name);
    if (found == FHeader.end()) FailColumn(FName, name);
    return static_cast<std::size_t>(found - FHeader.begin());
}

bool TCsvInput::ReadRow(TRow& row) {
    const bool isShown = ++FRowCount % kRowsBetweenProgress == 0 && FProgress && FProgress->IsVisible();
    if (isShown) FProgress->Show(FFile->GetPosition(), FSize);
    if (ReadNext(row)) return true;
    FProgress.reset();
    return false;
}

bool TCsvInput::ReadNext(TRow& row) {
    try {
        return FReader.ReadRow(row);
    } catch (const EConvertError& failure) {
        throw EConvertError(FName + u": " + failure.GetMessage());
    } catch (const EEncodingError& failure) {
        throw EEncodingError(Format(u"%s, line %d: %s; --encoding names another encoding",
                                    {FName, FReader.GetCurrentLine(), failure.GetMessage()}));
    }
}

String TCsvInput::AtRow(StringView what) const {
    return Format(u"%s, line %d: %s", {FName, GetLineNumber(), what});
}

void TCsvInput::CheckWidth(const TRow& row) {
    if (row.size() > FHeader.size()) FailWidth(row);
    if (row.size() == FHeader.size() || FShortRows++ > 0) return;
    FFirstShortRow = AtRow(u"The row has fewer cells than the header, and the others count as missing");
}

void TCsvInput::ReportShortRows() const {
    if (FShortRows > 0) Warn(Format(u"%s; rows: %d", {FFirstShortRow, FShortRows}));
}

void TCsvInput::FailWidth(const TRow& row) const {
    Fail(Format(u"Row %d has %d cells, the header has %d", {FRowCount - 1, row.size(), FHeader.size()}));
}

void TCsvInput::Fail(StringView what) const {
    throw EConvertError(AtRow(what));
}

// --- TTextCells ---

void TTextCells::Add(const TCsvInput& file, StringView cell, StringView column) {
    if (FCount++ > 0) return;
    FFirst =
        file.AtRow(Format(u"%s in column %s is not a number and counts as missing", {Quoted(cell), column}));
}

void TTextCells::Report() const {
    if (FCount > 0) Warn(Format(u"%s; cells: %d", {FFirst, FCount}));
}

// --- TCsvOutput ---

TCsvOutput::TCsvOutput(StringView path, const TCsvFormat& format) : FLineEnd(format.LineEnd) {
    if (path != kStandard) FWriter.emplace(FFile.emplace(path));
    if (format.HasByteOrderMark) Write(u"\xFEFF");
}

void TCsvOutput::Write(StringView text) {
    if (FWriter) {
        FWriter->Write(text);
    } else {
        Print(text);
    }
}

void TCsvOutput::AddField(StringView field) {
    if (FFieldCount++ > 0) FLine += u',';
    AppendCsvField(FLine, field);
}

// Readers skip an empty line, so a row of one empty field is written in quotes.
void TCsvOutput::EndRow() {
    if (FLine.empty() && FFieldCount == 1) FLine = u"\"\"";
    Write(FLine += FLineEnd);
    FLine.clear();
    FFieldCount = 0;
}

void TCsvOutput::Finish() {
    FinishTogether({this});
}

void TCsvOutput::FinishTogether(std::initializer_list<TCsvOutput*> files, TDraftFileStream* other) {
    std::vector<TDraftFileStream*> drafts;
    if (other != nullptr) drafts.push_back(other);
    for (TCsvOutput* const file : files) {
        if (!file->FFile) {
            FlushOutput();
            continue;
        }
        file->FWriter->Close();
        drafts.push_back(&*file->FFile);
    }
    TDraftFileStream::CommitTogether(drafts);
}

// --- CheckOutputs ---

void CheckOutputs(std::span<const String> inputs, std::span<const String> outputs) {
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        for (const String& input : inputs) CheckOutput(input, outputs[i]);
        for (const String& other : outputs.subspan(i + 1)) {
            const StringView target = OutputPath(outputs[i]);
            if (!IsRegularFile(target) || !IsSameFile(target, OutputPath(other))) continue;
            throw Exception(
                Format(u"Cannot write both %s and %s: They are the same file", {target, OutputPath(other)}));
        }
    }
}

}  // namespace Varnholt::Tool
