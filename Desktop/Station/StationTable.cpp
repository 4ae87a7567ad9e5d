#include "Desktop/Station/StationTable.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "Desktop/Station/RowExpression.h"
#include "Platform/Runtime/DateTime.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Text.h"
#include "Platform/Runtime/TextStreams.h"
#include "VarnholtBaseLib/CsvReader.h"

namespace Varnholt::Station {
namespace {

/// The days of a date YYYY-MM-DD since 30 December 1899; NaN for any other text.
double DateOf(StringView cell) {
    TDateTime date = 0;
    const String text(TrimView(cell));
    return text.size() == 10 && TryStrToDateTime(text, date, TFormatSettings::Invariant()) ? date : NAN;
}

/// Reads the rows into a grid without fixed cells that has room for them, twice as many each time.
class TRowReader {
public:
    TRowReader(TCSVRowReader& reader, StringView name) : FReader(reader), FName(name) {}

    std::vector<String> ReadHeader() {
        std::vector<String> header;
        if (!FReader.ReadRow(header)) throw Exception(Format(u"\"%s\" is empty", {FName}));
        FWidth = static_cast<std::int32_t>(header.size());
        return header;
    }

    std::unique_ptr<TStringGrid> ReadRows() {
        auto grid = std::make_unique<TStringGrid>(FWidth, 1024, 0, 0);
        std::vector<String> row;
        std::int32_t count = 0;
        while (FReader.ReadRow(row)) {
            CheckWidth(row);
            if (count == grid->GetRowCount()) grid->SetRowCount(2 * count);
            for (std::size_t i = 0; i < row.size(); ++i)
                grid->SetCell(static_cast<std::int32_t>(i), count, row[i]);
            ++count;
        }
        grid->SetRowCount(count);
        return grid;
    }

private:
    void CheckWidth(const std::vector<String>& row) const {
        if (row.size() <= static_cast<std::size_t>(FWidth)) return;
        throw EConvertError(
            Format(u"\"%s\", line %d: The row has %d cells, the header has %d",
                   {FName, FReader.GetLineNumber(), static_cast<std::int64_t>(row.size()), FWidth}));
    }

    TCSVRowReader& FReader;
    const String FName;
    std::int32_t FWidth = 0;
};

}  // namespace

// --- Reading ---

std::unique_ptr<TStationTable> TStationTable::Load(StringView path) {
    TStreamReader file(path, TEncoding::Utf8(), true, TStreamReader::kBufferSize, ibRefuse);
    return FromText(file.ReadToEnd(), path);
}

std::unique_ptr<TStationTable> TStationTable::FromText(StringView text, StringView name) {
    TCSVRowReader reader([rest = text](std::span<Char> chunk) mutable {
        const std::size_t count = std::min(rest.size(), chunk.size());
        std::copy_n(rest.begin(), count, chunk.begin());
        rest.remove_prefix(count);
        return count;
    });
    TRowReader rows(reader, name);
    std::unique_ptr<TStationTable> table(new TStationTable);
    for (String& column : rows.ReadHeader()) table->FColumns.push_back({.Name = std::move(column)});
    table->FCells = rows.ReadRows();
    table->FRowCount = table->FCells->GetRowCount();
    table->FindTypes();
    table->Arrange(table->RowsOf({}), {});
    return table;
}

void TStationTable::FindTypes() {
    const TMissingValues missing;
    for (std::int32_t c = 0; c < GetColumnCount(); ++c) {
        std::vector<double> numbers(static_cast<std::size_t>(FRowCount), NAN), dates = numbers;
        bool areNumbers = true, areDates = true, isEmpty = true;
        for (std::int32_t row = 0; row < FRowCount && (areNumbers || areDates); ++row) {
            const auto at = static_cast<std::size_t>(row);
            const StringView cell = FCells->GetCell(c, row);
            const TCellKind kind = missing.Read(cell, numbers[at]);
            if (kind == ckMissing) continue;
            if (areDates) dates[at] = DateOf(cell);
            areNumbers = areNumbers && kind == ckNumber;
            areDates = areDates && !std::isnan(dates[at]);
            isEmpty = false;
        }
        TColumn& column = FColumns[static_cast<std::size_t>(c)];
        if (isEmpty || (!areNumbers && !areDates)) continue;
        column.Type = areNumbers ? ctNumber : ctDate;
        column.Numbers = std::move(areNumbers ? numbers : dates);
    }
}

// --- Columns ---

const TStationTable::TColumn& TStationTable::ColumnAt(std::int32_t column) const {
    return FColumns[ListIndex(column, FColumns.size())];
}

std::int32_t TStationTable::FindColumn(StringView name) const {
    const auto found = std::ranges::find(FColumns, name, &TColumn::Name);
    return found == FColumns.end() ? -1 : static_cast<std::int32_t>(found - FColumns.begin());
}

void TStationTable::AddComputed(StringView name, StringView expression) {
    if (name.empty()) throw EArgumentException(u"The column needs a name");
    if (FindColumn(name) >= 0) throw EArgumentException(Format(u"There is a column \"%s\" already", {name}));
    TRowExpression calculation(*this, expression);
    TColumn column{.Name = String(name), .Type = ctNumber};
    for (std::int32_t row = 0; row < FRowCount; ++row) {
        const std::optional<double> value = calculation.At(row);
        column.Numbers.push_back(value.value_or(NAN));
        column.Computed.push_back(value ? FloatToStr(*value, TFormatSettings::Invariant()) : String());
    }
    FColumns.push_back(std::move(column));
    FIsChanged = true;
}

// --- Rows ---

std::int32_t TStationTable::FileRow(std::int32_t row) const {
    return FShown[ListIndex(row, FShown.size())];
}

StringView TStationTable::FileText(std::int32_t column, std::int32_t fileRow) const {
    const TColumn& found = ColumnAt(column);
    if (!found.Computed.empty()) return found.Computed[static_cast<std::size_t>(fileRow)];
    return FCells->GetCell(column, fileRow);
}

StringView TStationTable::GetText(std::int32_t column, std::int32_t row) const {
    return FileText(column, FileRow(row));
}

std::optional<double> TStationTable::GetNumber(std::int32_t column, std::int32_t row) const {
    return GetFileNumber(column, FileRow(row));
}

std::optional<double> TStationTable::GetFileNumber(std::int32_t column, std::int32_t fileRow) const {
    const TColumn& found = ColumnAt(column);
    if (found.Type == ctText) return std::nullopt;
    const double number = found.Numbers[ListIndex(fileRow, found.Numbers.size())];
    return std::isnan(number) ? std::nullopt : std::optional(number);
}

void TStationTable::Sort(std::vector<TSortField> keys) {
    for (const TSortField& key : keys) static_cast<void>(ColumnAt(key.ColumnIndex));
    Arrange(RowsOf(FFilter), std::move(keys));
}

void TStationTable::SetFilter(StringView expression) {
    String filter(TrimView(expression));
    Arrange(RowsOf(filter), FKeys);
    FFilter = std::move(filter);
}

std::vector<std::int32_t> TStationTable::RowsOf(StringView filter) const {
    std::vector<std::int32_t> rows(static_cast<std::size_t>(FRowCount));
    std::iota(rows.begin(), rows.end(), 0);
    if (filter.empty()) return rows;
    TRowExpression condition(*this, filter);
    std::erase_if(rows, [&](std::int32_t row) { return condition.At(row).value_or(0) == 0; });
    return rows;
}

void TStationTable::Arrange(const std::vector<std::int32_t>& rows, std::vector<TSortField> keys) {
    std::vector<std::int32_t> sorted = rows;
    const auto isMissing = [this](std::int32_t column, std::int32_t row) {
        return GetType(column) == ctText ? FileText(column, row).empty() : !GetFileNumber(column, row);
    };
    const auto compare = [&](std::int32_t column, std::int32_t a, std::int32_t b) {
        if (GetType(column) == ctText) return FileText(column, a).compare(FileText(column, b));
        const double first = *GetFileNumber(column, a), second = *GetFileNumber(column, b);
        return first < second ? -1 : first > second ? 1 : 0;
    };
    if (!keys.empty())
        std::ranges::stable_sort(sorted, [&](std::int32_t a, std::int32_t b) {
            for (const auto& [column, isAscending] : keys) {
                const bool isMissingA = isMissing(column, a), isMissingB = isMissing(column, b);
                if (isMissingA != isMissingB) return isMissingB;
                const int order = isMissingA ? 0 : compare(column, a, b);
                if (order != 0) return isAscending ? order < 0 : order > 0;
            }
            return false;
        });
    FShown = std::move(sorted);
    FKeys = std::move(keys);
}

String TStationTable::ToCsv(const TGridRect& cells) const {
    String csv;
    const auto append = [&](std::int32_t column, StringView text) {
        AppendCsvField(csv, text);
        csv += column == cells.Right ? u'\n' : u',';
    };
    for (std::int32_t column = cells.Left; column <= cells.Right; ++column) append(column, GetName(column));
    for (std::int32_t row = cells.Top; row <= cells.Bottom; ++row)
        for (std::int32_t column = cells.Left; column <= cells.Right; ++column)
            append(column, GetText(column, row));
    return csv;
}

}  // namespace Varnholt::Station
