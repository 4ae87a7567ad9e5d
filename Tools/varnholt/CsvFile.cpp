#include "Tools/varnholt/CsvFile.h"

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Guid.h"
#include "Platform/Runtime/Paths.h"

namespace Varnholt::Tool {
namespace {

namespace fs = std::filesystem;

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

TCsvOutput::TCsvOutput(StringView path) : FTarget(ToNativePath(path)) {
    std::error_code none;
    FDraft = FTarget;
    const fs::file_status present = fs::symlink_status(FTarget, none);
    if (!fs::exists(present) || fs::is_regular_file(present)) {
        FDraft += ToUtf8(u"." + GuidToString(CreateGuid()) + u".part");
    }
    FWriter = std::make_unique<TStreamWriter>(FromNativePath(FDraft.string()));
    FWriter->SetNewLine(u"\n");
}

TCsvOutput::~TCsvOutput() {
    if (!FWriter) return;
    FWriter.reset();
    std::error_code none;
    if (FDraft != FTarget) fs::remove(FDraft, none);
}

void TCsvOutput::AddField(StringView field) {
    if (FFieldCount++ > 0) FLine += u',';
    FLine += CsvField(field);
}

// Readers skip an empty line, so a row of one empty field is written in quotes.
void TCsvOutput::EndRow() {
    FWriter->WriteLine(FLine.empty() && FFieldCount == 1 ? StringView(u"\"\"") : StringView(FLine));
    FLine.clear();
    FFieldCount = 0;
}

void TCsvOutput::Finish() {
    FWriter->Close();
    if (FDraft != FTarget) {
        std::error_code none;
        const fs::file_status former = fs::status(FTarget, none);
        if (fs::exists(former)) fs::permissions(FDraft, former.permissions(), none);
        RenameFile(FromNativePath(FDraft.string()), FromNativePath(FTarget.string()));
    }
    FWriter.reset();
}

}  // namespace Varnholt::Tool
