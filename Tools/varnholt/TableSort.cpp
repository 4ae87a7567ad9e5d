#include "Tools/varnholt/TableSort.h"

#include <algorithm>

#include "VarnholtLib/Data/vrnStringGridInfo.h"

namespace Varnholt::Tool {
namespace {

/// The type that a cell calls for: text also where the statistics read no number, as in "$1F".
TVarType TypeOfCell(StringView cell, const TMissingValues& missing) {
    double value = 0;
    switch (missing.Read(cell, value)) {
        case ckMissing:
            return varEmpty;
        case ckText:
            return varString;
        case ckNumber:
            break;
    }
    return TStringGridInfo::GetTypeOfValueString(cell);
}

bool IsMissingCell(StringView cell, const TMissingValues& missing) {
    double value = 0;
    return missing.Read(cell, value) == ckMissing;
}

/// A sort key and its columns in the table that is sorted. A key with missing cells has one before its own that
/// is 1 for these: the order of that one is always ascending.
struct TKey {
    TSortField Field;
    TVarType Type = varString;
    bool HasMissing = false;
};

TKey ReadKey(const TStringGrid& grid, std::span<const std::int32_t> rows, const TSortField& field,
             const TMissingValues& missing) {
    const std::int32_t column = field.ColumnIndex;
    const bool hasMissing = std::ranges::any_of(
        rows, [&](std::int32_t row) { return IsMissingCell(grid.GetCell(column, row), missing); });
    return {field, TypeOfColumn(grid, rows, column, missing), hasMissing};
}

std::vector<Variant> KeyValues(const TStringGrid& grid, std::int32_t row, const std::vector<TKey>& keys,
                               const TMissingValues& missing) {
    std::vector<Variant> values;
    for (const TKey& key : keys) {
        const StringView cell = grid.GetCell(key.Field.ColumnIndex, row);
        const bool isMissing = key.HasMissing && IsMissingCell(cell, missing);
        if (key.HasMissing) values.emplace_back(std::int32_t{isMissing});
        values.push_back(isMissing ? Variant(0) : Variant(cell));
    }
    values.emplace_back(row);
    return values;
}

}  // namespace

TVarType TypeOfColumn(const TStringGrid& grid, std::span<const std::int32_t> rows, std::int32_t column,
                      const TMissingValues& missing) {
    TVarType type = varEmpty;
    for (const std::int32_t row : rows) {
        type = std::max(type, TypeOfCell(grid.GetCell(column, row), missing));
        if (type == varString) break;
    }
    return type == varEmpty ? varString : type;
}

std::vector<std::int32_t> SortRows(const TStringGrid& grid, std::span<const std::int32_t> rows,
                                   const TSortOperation& keys, const TMissingValues& missing) {
    std::vector<TKey> tableKeys;
    std::vector<TVarType> types;
    TSortOperation order;
    const auto addColumn = [&](TVarType type, bool isAscending) {
        order.Add(static_cast<std::int32_t>(types.size()), isAscending);
        types.push_back(type);
    };
    for (std::int32_t i = 0; i < keys.GetCount(); ++i) {
        const TKey& key = tableKeys.emplace_back(ReadKey(grid, rows, keys[i], missing));
        if (key.HasMissing) addColumn(varInteger, true);
        addColumn(key.Type, key.Field.OrderAscending);
    }
    const auto rowColumn = types.size();
    types.push_back(varInteger);

    TTableData table(types);
    for (const std::int32_t row : rows) table.AddRow().Fill(KeyValues(grid, row, tableKeys, missing));
    table.ExecuteSort(order);
    std::vector<std::int32_t> sorted;
    sorted.reserve(rows.size());
    for (const TTableDataRow* row : table.GetSorted())
        sorted.push_back(row->GetValues()[rowColumn].ToInt32());
    return sorted;
}

}  // namespace Varnholt::Tool
