#include "Tools/varnholt/CalcRows.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Tools/varnholt/Output.h"

namespace Varnholt::Tool {

String ValueText(Extended value) {
    return FloatToStr(value, TFormatSettings::Invariant());
}

void TPrintedRowSink::TakeRow(const TRow&, Extended value) {
    PrintLine(ValueText(value));
}

TCsvRowSink::TCsvRowSink(StringView path, const TCsvInput& input, StringView name)
    : FFile(path, input.GetFormat()), FColumnCount(input.GetHeader().size()) {
    Write(input.GetHeader(), name);
}

void TCsvRowSink::TakeRow(const TRow& row, Extended value) {
    Write(row, ValueText(value));
}

void TCsvRowSink::Write(const TRow& row, StringView last) {
    for (const String& cell : row) FFile.AddField(cell);
    for (std::size_t absent = row.size(); absent < FColumnCount; ++absent) FFile.AddField({});
    FFile.AddField(last);
    FFile.EndRow();
}

std::vector<TKeyword*> KeywordsOf(const TCalc& calc) {
    std::vector<const TCalc*> pending{&calc};
    std::vector<TKeyword*> keywords;
    while (!pending.empty()) {
        const TCalc& next = *pending.back();
        pending.pop_back();
        for (int i = 0; i < next.Get_Count(); ++i) {
            const TCalcObj& item = next.GetItems(i);
            if (const auto* named = dynamic_cast<const TKeywordNum*>(&item)) {
                if (named->GetKeywordObject() == nullptr)
                    throw ECalcException(ceKeyword, named->GetKeyword());
            } else if (const auto* group = dynamic_cast<const TBrackets*>(&item)) {
                pending.push_back(&group->GetNewCalc());
            } else if (const auto* call = dynamic_cast<const TFunctionNum*>(&item)) {
                pending.insert(pending.end(), call->GetParams().begin(), call->GetParams().end());
            }
        }
    }
    calc.GetKeywordsUsed(keywords, true, true);
    std::set<const TKeyword*> seen;
    std::erase_if(keywords, [&](const TKeyword* keyword) { return !seen.insert(keyword).second; });
    return keywords;
}

void TRowSummary::Add(double value) {
    const bool isFirst = Calculated++ == 0;
    if (std::isnan(value)) ++NotNumbers;
    if (std::isinf(value) || IsMissing(value)) ++ReadAsMissing;
    Min = isFirst || std::isnan(value) ? value : std::min(Min, value);
    Max = isFirst || std::isnan(value) ? value : std::max(Max, value);
    Sum += value;
}

double TRowSummary::Mean() const {
    return Calculated == 0 ? kMissing : Sum / static_cast<double>(Calculated);
}

TRowCalculator::TRowCalculator(TCalc& calc, TCsvInput& file, const TMissingValues& missing,
                               const std::vector<TColumnAlias>& aliases)
    : FCalc(calc), FFile(file), FMissing(missing) {
    const TRow& header = file.GetHeader();
    for (std::size_t i = 0; i < header.size(); ++i) FColumns.push_back(std::make_unique<TColumn>(TColumn{i}));
    for (const TColumnAlias& alias : aliases) {
        Register(alias.Name, *FColumns[file.ColumnIndex(alias.Column)]);
    }
    for (std::size_t i = 0; i < header.size(); ++i) Register(header[i], *FColumns[i]);
}

TRowCalculator::~TRowCalculator() = default;

void TRowCalculator::Register(StringView name, TColumn& column) {
    FCalc.RegisterVariable(name, &column.Value);
}

std::vector<TRowCalculator::TColumn*> TRowCalculator::UsedColumns() const {
    std::vector<TColumn*> used;
    std::map<const double*, TColumn*> unused;
    for (const auto& column : FColumns) unused.emplace(&column->Value, column.get());
    for (const TKeyword* keyword : KeywordsOf(FCalc)) {
        const auto found = unused.find(keyword->GetVariable());  // a keyword of --set is no variable
        if (found == unused.end()) continue;
        used.push_back(found->second);
        unused.erase(found);  // two keywords may mean the same column
    }
    return used;
}

TRowSummary TRowCalculator::Run(TRowSink& sink) {
    const std::vector<TColumn*> used = UsedColumns();
    TRowSummary summary;
    while (FFile.ReadRow(FRow)) {
        FFile.CheckWidth(FRow);
        ++summary.Rows;
        sink.TakeRow(FRow, Calculate(used, summary));
    }
    return summary;
}

/// False for a missing value. A cell that the row does not have is missing.
bool TRowCalculator::ReadCell(TColumn& column) {
    if (column.Index >= FRow.size()) return false;
    const String& cell = FRow[column.Index];
    const TCellKind kind = FMissing.Read(cell, column.Value);
    if (kind == ckText) FTextCells.Add(FFile, cell, FFile.GetHeader()[column.Index]);
    return kind == ckNumber;
}

/// The value of the row, or the missing code.
Extended TRowCalculator::Calculate(const std::vector<TColumn*>& used, TRowSummary& summary) {
    bool isKnown = true;
    for (TColumn* column : used) isKnown = ReadCell(*column) && isKnown;
    if (!isKnown) return kMissing;
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
