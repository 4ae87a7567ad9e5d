#include "Tools/varnholt/CalcRows.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Tools/varnholt/Output.h"

namespace Varnholt::Tool {
namespace {

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

void TCsvRowSink::TakeHeader(const TRow& header) {
    FColumnCount = header.size();
    Write(header, u"value");
}

void TCsvRowSink::TakeRow(const TRow& row, Extended value) {
    ++FRowNumber;
    Write(row, FloatToStr(value, TFormatSettings::Invariant()));
}

// A short row is filled up, so that the value stands in its column.
void TCsvRowSink::Write(const TRow& row, StringView last) {
    if (row.size() > FColumnCount) {
        throw EConvertError(
            Format(u"Row %d has %d cells, the header has %d", {FRowNumber, row.size(), FColumnCount}));
    }
    for (const String& cell : row) FFile.AddField(cell);
    for (std::size_t missing = row.size(); missing < FColumnCount; ++missing) FFile.AddField({});
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
    Min = isFirst || std::isnan(value) ? value : std::min(Min, value);
    Max = isFirst || std::isnan(value) ? value : std::max(Max, value);
    Sum += value;
}

double TRowSummary::Mean() const {
    return Calculated == 0 ? kMissing : Sum / static_cast<double>(Calculated);
}

TRowCalculator::TRowCalculator(TCalc& calc, StringView path) : FCalc(calc), FFile(path) {
    for (std::size_t i = 0; i < FFile.GetHeader().size(); ++i) {
        FColumns.push_back(std::make_unique<TColumn>(TColumn{i}));
        FCalc.RegisterKeyword(FFile.GetHeader()[i], FColumns.back().get(), [](TCalc&, const String&, void* param) {
            return static_cast<Extended>(static_cast<const TColumn*>(param)->Value);
        });
    }
}

TRowCalculator::~TRowCalculator() = default;

std::vector<TRowCalculator::TColumn*> TRowCalculator::UsedColumns() const {
    std::vector<TColumn*> used;
    for (const TKeyword* keyword : KeywordsOf(FCalc)) {
        auto* column = static_cast<TColumn*>(keyword->GetParam());  // a keyword of --set has none
        if (column != nullptr) used.push_back(column);
    }
    return used;
}

TRowSummary TRowCalculator::Run(TRowSink& sink) {
    const std::vector<TColumn*> used = UsedColumns();
    TRowSummary summary;
    sink.TakeHeader(FFile.GetHeader());
    while (FFile.ReadRow(FRow)) {
        ++summary.Rows;
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
