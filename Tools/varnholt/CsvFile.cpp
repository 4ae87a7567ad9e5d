#include "Tools/varnholt/CsvFile.h"

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Files.h"

namespace Varnholt::Tool {
namespace {

constexpr std::int64_t kRowsBetweenProgress = 4096;

}  // namespace

TCsvInput::TCsvInput(StringView path) : FPath(path), FText(path), FReader(FText), FProgress(std::in_place) {
    if (FProgress->IsVisible()) FSize = FileSize(path);
}

void TCsvInput::ReadHeader(TRow& row) {
    if (!ReadRow(row)) throw Exception(FPath + u" is empty");
}

bool TCsvInput::ReadRow(TRow& row) {
    const bool isTold = ++FRowCount % kRowsBetweenProgress == 0 && FProgress && FProgress->IsVisible();
    if (isTold) FProgress->Show(FText.GetStream().GetPosition(), FSize);
    try {
        if (FReader.ReadRow(row)) return true;
    } catch (const EConvertError& failure) {
        throw EConvertError(FPath + u": " + failure.GetMessage());
    }
    FProgress.reset();
    return false;
}

TCsvOutput::TCsvOutput(StringView path) : FFile(path), FWriter(FFile) {
    FWriter.SetNewLine(u"\n");
}

void TCsvOutput::AddField(StringView field) {
    if (FFieldCount++ > 0) FLine += u',';
    FLine += CsvField(field);
}

// Readers skip an empty line, so a row of one empty field is written in quotes.
void TCsvOutput::EndRow() {
    FWriter.WriteLine(FLine.empty() && FFieldCount == 1 ? StringView(u"\"\"") : StringView(FLine));
    FLine.clear();
    FFieldCount = 0;
}

void TCsvOutput::Finish() {
    FWriter.Close();
    FFile.Commit();
}

}  // namespace Varnholt::Tool
