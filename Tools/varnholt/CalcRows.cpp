#include "Tools/varnholt/CalcRows.h"

#include <algorithm>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Numbers.h"
#include "Tools/varnholt/Output.h"

namespace Varnholt::Tool {
namespace {

constexpr std::int64_t kRowsBetweenProgress = 4096;

// Missing is also a cell that is empty or no number. Files write the decimal point, whatever the locale.
bool ReadCell(const TRow& row, std::size_t index, double& value) {
    static const TFormatSettings settings = TFormatSettings::Invariant();
    if (index >= row.size() || !TryStrToFloat(row[index], value, settings)) return false;
    return !(value >= -1000 && value <= -999);
}

}  // namespace

void TPrintedRowSink::TakeRow(const TRow&, Extended value) {
    PrintLine(FloatToStr(value));
}

TCsvRowSink::TCsvRowSink(String path) : FPath(std::move(path)), FDraft(FPath + u".part") {
    FWriter = std::make_unique<TStreamWriter>(FDraft);
    FWriter->SetNewLine(u"\n");
}

TCsvRowSink::~TCsvRowSink() {
    if (!FWriter) return;
    FWriter.reset();
    try {
        DeleteFile(FDraft);
    } catch (const Exception&) {  // the failure that led here is the one to tell
    }
}

void TCsvRowSink::TakeHeader(const TRow& header) {
    FColumnCount = header.size();
    Write(header, u"value");
}

void TCsvRowSink::TakeRow(const TRow& row, Extended value) {
    Write(row, FloatToStr(value, TFormatSettings::Invariant()));
}

// A short row is filled up, so that the value stands in its column.
void TCsvRowSink::Write(const TRow& row, StringView last) {
    String line;
    for (const String& cell : row) line.append(CsvField(cell)).append(1, u',');
    if (row.size() < FColumnCount) line.append(FColumnCount - row.size(), u',');
    FWriter->WriteLine(line.append(last));
}

void TCsvRowSink::Finish() {
    FWriter->Close();
    RenameFile(FDraft, FPath);
    FWriter.reset();
}

void TRowSummary::Add(double value) {
    Min = Calculated == 0 ? value : std::min(Min, value);
    Max = Calculated == 0 ? value : std::max(Max, value);
    Sum += value;
    ++Calculated;
}

double TRowSummary::Mean() const {
    return Calculated == 0 ? kMissing : Sum / static_cast<double>(Calculated);
}

TRowCalculator::TRowCalculator(TCalc& calc, StringView path)
    : FCalc(calc), FPath(path), FText(path), FReader(FText) {
    FReader.ReadRow(FHeader);
    for (std::size_t i = 0; i < FHeader.size(); ++i) {
        FColumns.push_back(std::make_unique<TColumn>(TColumn{i}));
        FCalc.RegisterKeyword(FHeader[i], FColumns.back().get(), [](TCalc&, const String&, void* param) {
            return static_cast<Extended>(static_cast<const TColumn*>(param)->Value);
        });
    }
}

TRowCalculator::~TRowCalculator() = default;

std::vector<TRowCalculator::TColumn*> TRowCalculator::UsedColumns() const {
    std::vector<TKeyword*> keywords;
    try {
        FCalc.GetKeywordsUsed(keywords, true, true);
    } catch (const ECalcException&) {
        // A keyword is unknown. The message of a calculation also names it.
        static_cast<void>(FCalc.Calculate());
        throw;
    }
    std::vector<TColumn*> used;
    for (const TKeyword* keyword : keywords) {
        auto* column = static_cast<TColumn*>(keyword->GetParam());
        if (column != nullptr) used.push_back(column);
    }
    std::ranges::sort(used);
    used.erase(std::ranges::unique(used).begin(), used.end());
    return used;
}

TRowSummary TRowCalculator::Run(TRowSink& sink) {
    const std::vector<TColumn*> used = UsedColumns();
    TProgress progress(FileSize(FPath));
    TRowSummary summary;
    sink.TakeHeader(FHeader);
    while (FReader.ReadRow(FRow)) {
        if (summary.Rows++ % kRowsBetweenProgress == 0) progress.Show(FText.GetStream().GetPosition());
        sink.TakeRow(FRow, Calculate(used, summary));
    }
    return summary;
}

// The value of the row, or the missing code.
Extended TRowCalculator::Calculate(const std::vector<TColumn*>& used, TRowSummary& summary) {
    for (TColumn* column : used) {
        if (!ReadCell(FRow, column->Index, column->Value)) return kMissing;
    }
    try {
        const Extended value = FCalc.Calculate();
        summary.Add(static_cast<double>(value));
        return value;
    } catch (const ECalcException& failure) {
        if (failure.GetMessage() != ECalcException::CDivideByZero) throw;
        ++summary.DivisionsByZero;
        return kMissing;
    }
}

}  // namespace Varnholt::Tool
