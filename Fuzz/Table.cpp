#include <algorithm>
#include <vector>

#include "Fuzz/FuzzInput.h"
#include "Platform/Controls/StringGrid.h"
#include "Platform/Runtime/Numbers.h"
#include "VarnholtLib/Data/vrnStringGridInfo.h"
#include "VarnholtLib/Data/vrnTableData.h"

/// A string grid of any texts: the types of its columns, the table made of it, and the orders of its sort.
/// The first byte chooses the fixed rows, the next three the keys; the rest is lines of cells separated by commas.
namespace Varnholt::Fuzz {
namespace {

constexpr std::size_t kMaxColumns = 8;

std::vector<std::vector<String>> CellsOf(StringView text) {
    std::vector<std::vector<String>> rows(1, std::vector<String>(1));
    for (const Char unit : text) {
        if (unit == u'\n') rows.emplace_back(1);
        if (unit == u',' && rows.back().size() < kMaxColumns) rows.back().emplace_back();
        if (unit != u',' && unit != u'\n') rows.back().back() += unit;
    }
    return rows;
}

void FillGrid(TStringGrid& grid, const std::vector<std::vector<String>>& rows) {
    for (std::size_t row = 0; row < rows.size(); ++row)
        for (std::size_t col = 0; col < rows[row].size(); ++col)
            grid.SetCell(static_cast<std::int32_t>(col), static_cast<std::int32_t>(row), rows[row][col]);
}

/// The highest type that a cell of the column needs, read plainly.
TVarType TypeOf(const TStringGrid& grid, std::int32_t col) {
    TVarType type = varInteger;
    for (std::int32_t row = grid.GetFixedRows(); row < grid.GetRowCount(); ++row) {
        std::int32_t integer = 0;
        double number = 0;
        const StringView cell = grid.GetCell(col, row);
        if (TryStrToInt(cell, integer)) continue;
        type = std::max(type, TryStrToFloat(cell, number) ? varDouble : varString);
    }
    return grid.GetFixedRows() == grid.GetRowCount() ? varString : type;
}

void RequireSameCells(const TStringGrid& grid, const TTableData& table) {
    Require(table.GetCount() == grid.GetRowCount() - grid.GetFixedRows(), "a table row for each data row");
    for (std::int32_t row = 0; row < table.GetCount(); ++row) {
        for (std::int32_t col = 0; col < grid.GetColCount(); ++col) {
            const StringView cell = grid.GetCell(col, row + grid.GetFixedRows());
            const Variant value = table.GetItem(row).GetField(col);
            Require(value.GetType() == table.GetColType(col), "a value has the type of its column");
            if (value.IsText()) RequireSame(value.GetTextView(), cell, "a text is taken as it is");
            if (!value.IsText())
                Require(value == Variant(Variant(cell).ToDouble()), "a number has its value");
        }
    }
}

/// Below 0, 0 or above 0, by the keys.
int CompareRows(const TTableDataRow& left, const TTableDataRow& right, const TSortOperation& keys) {
    for (std::int32_t i = 0; i < keys.GetCount(); ++i) {
        const Variant a = left.GetField(keys[i].ColumnIndex), b = right.GetField(keys[i].ColumnIndex);
        if (a != b) return (a < b) == keys[i].OrderAscending ? -1 : 1;
    }
    return 0;
}

std::vector<const TTableDataRow*> RowsOf(const TTableDataRows& rows) {
    return {rows.begin(), rows.end()};
}

void RequireSorted(TTableData& table, const TSortOperation& keys) {
    const std::vector<const TTableDataRow*> stored = RowsOf(table.GetData());
    table.ExecuteSort(keys);
    const std::vector<const TTableDataRow*> sorted = RowsOf(table.GetSorted());
    Require(RowsOf(table.GetData()) == stored, "the stored order stays");
    Require(std::ranges::is_permutation(sorted, stored), "the sorted view holds each row once");
    for (std::size_t i = 1; i < sorted.size(); ++i)
        Require(CompareRows(*sorted[i - 1], *sorted[i], keys) <= 0, "the sorted view follows the keys");
}

void RequireDescendingIsReversed(TTableData& table, std::int32_t col) {
    TSortOperation ascending, descending;
    ascending.Add(col, true);
    descending.Add(col, false);
    table.ExecuteSort(ascending);
    std::vector<const TTableDataRow*> expected = RowsOf(table.GetSorted());
    std::ranges::reverse(expected);
    table.ExecuteSort(descending);
    Require(RowsOf(table.GetSorted()) == expected, "descending is ascending read backwards");
}

}  // namespace

void RunInput(TInput input) {
    TChoices choices(input);
    const int fixedRows = choices.Below(2);
    const int keyChoices[] = {choices.Below(256), choices.Below(256), choices.Below(256)};
    const std::vector<std::vector<String>> rows = CellsOf(TextOf(choices.Rest()));
    const auto widest = std::ranges::max(rows, {}, [](const auto& row) { return row.size(); });
    const auto colCount = static_cast<std::int32_t>(widest.size());
    TStringGrid grid(colCount, static_cast<std::int32_t>(rows.size()), 0, fixedRows);
    FillGrid(grid, rows);

    const TStringGridInfo info(&grid);
    for (std::int32_t col = 0; col < colCount; ++col)
        Require(info.GetColTypeAtIndex(col) == TypeOf(grid, col), "the type of a column");
    const std::unique_ptr<TTableData> table = TTableData::FromStringGrid(&grid);
    RequireSameCells(grid, *table);

    TSortOperation keys;
    for (const int choice : keyChoices)
        if (!keys.GetOperationForColumnIndex(choice % colCount)) keys.Add(choice % colCount, choice < 128);
    RequireSorted(*table, keys);
    RequireDescendingIsReversed(*table, keys[0].ColumnIndex);

    table->Sort([&](const auto& left, const auto& right) { return CompareRows(left, right, keys); });
    for (std::int32_t i = 1; i < table->GetCount(); ++i)
        Require(CompareRows(table->GetItem(i - 1), table->GetItem(i), keys) <= 0, "the stored rows sort");
}

}  // namespace Varnholt::Fuzz
