#pragma once

#include <vector>

#include "Platform/Controls/StringGrid.h"
#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/Variant.h"
#include "VarnholtBaseLib/Arrays.h"

/// What the columns of a string grid hold: integers, floats or text.
///
///     const TStringGridInfo info(&grid);
///     TVariantArray values;
///     for (std::int32_t row = info.GetFirstDataRow(); row < info.GetNumRows(); ++row) {
///         info.GetRowDataAsArray(row, values);     // integers, floats and texts, by column type
///     }
///
/// A column's type is the highest that a cell of its data rows needs, in the order varInteger (3), varDouble
/// (5), varString (256); a fixed column is varString. The analysis runs once, in the constructor, and
/// reads each cell at most once; a column of text is read up to its first text. Later changes of the grid are
/// not seen.
///
/// Number texts follow FormatSettings(), as TryStrToInt and TryStrToFloat read them. The grid is not owned
/// and has to outlive the object.
///
/// Threads: the thread that owns the grid.
namespace Varnholt {

class VARNHOLT_EXPORT TStringGridInfo {
public:
    /// Reads the grid's dimensions and finds the type of each column. Raises Exception "Grid object cannot
    /// be NULL", and what reading a cell raises.
    explicit TStringGridInfo(const TStringGrid* grid);

    /// Columns and rows of the grid, all and without the fixed ones; the first of the latter, from 0.
    [[nodiscard]] std::int32_t GetNumColumns() const noexcept { return FNumColumns; }
    [[nodiscard]] std::int32_t GetNumDataColumns() const noexcept { return FNumDataColumns; }
    [[nodiscard]] std::int32_t GetFirstDataColumn() const noexcept { return FFirstDataColumn; }
    [[nodiscard]] std::int32_t GetNumRows() const noexcept { return FNumRows; }
    [[nodiscard]] std::int32_t GetNumDataRows() const noexcept { return FNumDataRows; }
    [[nodiscard]] std::int32_t GetFirstDataRow() const noexcept { return FFirstDataRow; }

    /// Finds the types of all columns again.
    void DiscoverColumnTypes();
    /// Finds the type of one column from 0 again. At least one cell is tested: in a grid without data rows
    /// the one below the last row, which counts as empty if reading it raises ERangeError. Raises Exception
    /// "ColumnIndex is out of range".
    void DiscoverColumnType(std::int32_t columnIndex);

    /// The type that a text needs: varInteger if it is a 32-bit integer, otherwise varDouble if it is a
    /// number that a 64-bit float can hold, otherwise varString, as for an empty text.
    [[nodiscard]] static TVarType GetTypeOfValueString(StringView value);

    /// The type of a column from 0. Raises ERangeError "ColumnIndex is out of range".
    [[nodiscard]] TVarType GetColTypeAtIndex(std::int32_t index) const;
    /// The types of all columns, the fixed ones included.
    void GetColumnTypesAsArray(std::vector<TVarType>& columnTypes) const { columnTypes = FColumnTypes; }

    /// Makes data a new array of the row's values, one for each column, the fixed ones included: 32-bit
    /// integers, 64-bit floats or texts by the columns' types. rowIndex counts from 0 over all rows. A cell
    /// that has changed since the analysis and does not convert raises EConvertError as StrToInt and
    /// StrToFloat do, a row outside the grid what reading its cells raises; data is then unchanged.
    void GetRowDataAsArray(std::int32_t rowIndex, TVariantArray& data) const;

private:
    [[nodiscard]] TVarType TypeOfColumn(std::int32_t columnIndex) const;
    [[nodiscard]] bool HasColumn(std::int32_t index) const noexcept {
        return IsIndex(index, FColumnTypes.size());
    }

    const TStringGrid* FGrid;
    std::int32_t FNumColumns = 0;
    std::int32_t FNumDataColumns = 0;
    std::int32_t FFirstDataColumn = 0;
    std::int32_t FNumRows = 0;
    std::int32_t FNumDataRows = 0;
    std::int32_t FFirstDataRow = 0;
    std::vector<TVarType> FColumnTypes;
};

}  // namespace Varnholt
