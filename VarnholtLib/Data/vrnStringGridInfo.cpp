#include "VarnholtLib/Data/vrnStringGridInfo.h"

#include <algorithm>
#include <utility>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Numbers.h"

namespace Varnholt {
namespace {

constexpr StringView kColumnOutOfRange = u"ColumnIndex is out of range";

/// The text of a cell, empty if the grid has no such cell.
StringView CellIfAny(const TStringGrid& grid, std::int32_t column, std::int32_t row) {
    try {
        return grid.GetCell(column, row);
    } catch (const ERangeError&) {
        return {};
    }
}

/// A column of floats may hold integers in a form that only TryStrToInt reads, as "$1F".
double CellToFloat(StringView cell) {
    double value = 0;
    if (TryStrToFloat(cell, value)) return value;
    std::int32_t integer = 0;
    if (TryStrToInt(cell, integer)) return integer;
    throw EConvertError(u"'" + String(cell) + u"' is not a valid floating point value");
}

Variant CellToVariant(StringView cell, TVarType type) {
    switch (type) {
        case varSmallint:
        case varInteger:
        case varBoolean:
        case varShortInt:
        case varByte:
        case varWord:
        case varLongWord:
        case varInt64:
            return StrToInt(cell);
        case varSingle:
        case varDouble:
        case varCurrency:
            return CellToFloat(cell);
        default:
            return cell;
    }
}

}  // namespace

TStringGridInfo::TStringGridInfo(const TStringGrid* grid) : FGrid(grid) {
    if (grid == nullptr) throw Exception(u"Grid object cannot be NULL");
    FNumColumns = grid->GetColCount();
    FFirstDataColumn = grid->GetFixedCols();
    FNumDataColumns = FNumColumns - FFirstDataColumn;
    FNumRows = grid->GetRowCount();
    FFirstDataRow = grid->GetFixedRows();
    FNumDataRows = FNumRows - FFirstDataRow;
    FColumnTypes.resize(static_cast<std::size_t>(std::max(FNumColumns, 0)), varString);
    DiscoverColumnTypes();
}

void TStringGridInfo::DiscoverColumnTypes() {
    for (std::int32_t column = 0; column < FNumColumns; ++column) DiscoverColumnType(column);
}

void TStringGridInfo::DiscoverColumnType(std::int32_t columnIndex) {
    if (!HasColumn(columnIndex)) throw Exception(kColumnOutOfRange);
    FColumnTypes[static_cast<std::size_t>(columnIndex)] = TypeOfColumn(columnIndex);
}

/// At least one cell is tested. In a grid without data rows that is the one below the last row.
TVarType TStringGridInfo::TypeOfColumn(std::int32_t columnIndex) const {
    if (columnIndex < FFirstDataColumn) return varString;
    if (FFirstDataRow >= FNumRows) return GetTypeOfValueString(CellIfAny(*FGrid, columnIndex, FFirstDataRow));
    TVarType type = varInteger;
    for (std::int32_t row = FFirstDataRow; row < FNumRows && type != varString; ++row) {
        type = std::max(type, GetTypeOfValueString(FGrid->GetCell(columnIndex, row)));
    }
    return type;
}

TVarType TStringGridInfo::GetTypeOfValueString(StringView value) {
    std::int32_t integer = 0;
    if (TryStrToInt(value, integer)) return varInteger;
    double number = 0;
    return TryStrToFloat(value, number) ? varDouble : varString;
}

TVarType TStringGridInfo::GetColTypeAtIndex(std::int32_t index) const {
    if (!HasColumn(index)) throw ERangeError(kColumnOutOfRange);
    return FColumnTypes[static_cast<std::size_t>(index)];
}

void TStringGridInfo::GetRowDataAsArray(std::int32_t rowIndex, TVariantArray& data) const {
    std::vector<Variant> values;
    values.reserve(FColumnTypes.size());
    for (std::int32_t column = 0; column < FNumColumns; ++column) {
        const TVarType type = FColumnTypes[static_cast<std::size_t>(column)];
        values.push_back(CellToVariant(FGrid->GetCell(column, rowIndex), type));
    }
    data = TVariantArray(std::move(values));
}

}  // namespace Varnholt
