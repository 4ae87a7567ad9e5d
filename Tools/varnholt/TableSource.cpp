#include "Tools/varnholt/TableSource.h"

#include <algorithm>
#include <numeric>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Tools/varnholt/CsvFile.h"
#include "VarnholtLib/Data/vrnRangeParser.h"

namespace Varnholt::Tool {
namespace {

constexpr StringView kDescending = u":desc";

void AddGridRow(TStringGrid& grid, const TRow& cells) {
    const std::int32_t row = grid.GetRowCount();
    if (row == std::numeric_limits<std::int32_t>::max()) throw ERangeError(u"Too many rows");
    grid.SetRowCount(row + 1);
    std::int32_t col = 0;
    for (const String& cell : cells) grid.SetCell(col++, row, cell);
}

}  // namespace

std::unique_ptr<TStringGrid> ReadGrid(StringView path) {
    TCsvInput file(path);
    const std::size_t width = file.GetHeader().size();
    auto grid = std::make_unique<TStringGrid>(static_cast<std::int32_t>(width), 0, 0, 0);
    AddGridRow(*grid, file.GetHeader());
    grid->SetFixedRows(1);
    TRow row;
    while (file.ReadRow(row)) {
        if (row.size() != width) {
            file.Fail(
                Format(u"Row %d has %d cells, the header has %d", {grid->GetRowCount(), row.size(), width}));
        }
        AddGridRow(*grid, row);
    }
    return grid;
}

TIntegerArray ReadRowNumbers(StringView text, const TStringGrid& grid) {
    const TRangeParser ranges(text);
    if (ranges.GetCount() == 0) throw EArgumentException(u"No row is asked for");
    const std::int32_t last = grid.GetRowCount() - 1;
    for (const TRange& range : ranges.ToArray()) {
        if (range.First >= 1 && range.Last <= last) continue;
        const std::int32_t missing = range.First < 1 ? range.First : range.Last;
        throw ERangeError(Format(u"Row %d not found, the file has %d rows", {missing, last}));
    }
    return ranges.ToValuesArray();
}

TColumnNames::TColumnNames(const TStringGrid& grid) {
    for (std::int32_t col = 0; col < grid.GetColCount(); ++col) {
        FNames.emplace_back(grid.GetCell(col, 0));
        FLongest = std::max(FLongest, FNames.back().size());
    }
}

std::int32_t TColumnNames::IndexOf(StringView name) const {
    const auto found = std::ranges::find(FNames, name);
    return found == FNames.end() ? -1 : static_cast<std::int32_t>(found - FNames.begin());
}

std::vector<std::int32_t> TColumnNames::AllColumns() const {
    std::vector<std::int32_t> columns(FNames.size());
    std::iota(columns.begin(), columns.end(), 0);
    return columns;
}

/// Calls take for each part of the list. It answers whether the part is a name, and is asked from the longest
/// part that could be one down to the next comma.
template <typename TTake>
void TColumnNames::ReadList(StringView list, TTake take) const {
    for (std::size_t start = 0; start <= list.size();) {
        const StringView rest = list.substr(start);
        const std::size_t longest = FLongest + kDescending.size();
        std::size_t length = rest.size() <= longest ? rest.size() : rest.rfind(u',', longest);
        while (length != StringView::npos && !take(rest.substr(0, length))) {
            length = length == 0 ? StringView::npos : rest.rfind(u',', length - 1);
        }
        if (length == StringView::npos) {
            throw EArgumentException(Format(u"Column \"%s\" not found", {rest.substr(0, rest.find(u','))}));
        }
        start += length + 1;
    }
}

std::vector<std::int32_t> TColumnNames::ReadColumns(StringView list) const {
    std::vector<std::int32_t> columns;
    ReadList(list, [&](StringView name) {
        const std::int32_t column = IndexOf(name);
        if (column >= 0) columns.push_back(column);
        return column >= 0;
    });
    return columns;
}

TSortOperation TColumnNames::ReadSortKeys(StringView list) const {
    TSortOperation keys;
    ReadList(list, [&](StringView name) {
        std::int32_t column = IndexOf(name);
        const bool isAscending = column >= 0;
        if (!isAscending && name.ends_with(kDescending)) {
            column = IndexOf(name.substr(0, name.size() - kDescending.size()));
        }
        if (column >= 0) keys.Add(column, isAscending);
        return column >= 0;
    });
    return keys;
}

}  // namespace Varnholt::Tool
