#pragma once

#include <memory>
#include <vector>

#include "Platform/Controls/StringGrid.h"
#include "VarnholtBaseLib/Arrays.h"
#include "VarnholtLib/Data/vrnTableData.h"

/// Where the rows of `varnholt table` come from: the file as a grid, the rows and columns asked for.
namespace Varnholt::Tool {

/// Reads a CSV file into a grid; its header is the grid's one fixed row, so row 1 of the data is row 1 of the
/// grid. Raises Exception with the path for an empty file, and with the line for a row that has not as many
/// cells as the header.
[[nodiscard]] std::unique_ptr<TStringGrid> ReadGrid(StringView path);

/// The row numbers that ranges such as "1 - 5, 8" stand for, in the order of the text. Raises what
/// TRangeParser raises, EArgumentException "No row is asked for" for an empty text, and ERangeError for a row
/// that the grid has not.
[[nodiscard]] TIntegerArray ReadRowNumbers(StringView text, const TStringGrid& grid);

/// The header of a grid with some of its rows below, as a grid of their own that holds no texts.
class TPickedRows final : public TStringGrid {
public:
    /// The source must outlive this grid.
    TPickedRows(const TStringGrid& source, const TIntegerArray& rows)
        : TStringGrid(0, 0, 0, 0), FSource(source), FRows(rows) {}

    [[nodiscard]] std::int32_t GetColCount() const override { return FSource.GetColCount(); }
    [[nodiscard]] std::int32_t GetRowCount() const override { return FRows.GetLength() + 1; }
    [[nodiscard]] std::int32_t GetFixedCols() const override { return FSource.GetFixedCols(); }
    [[nodiscard]] std::int32_t GetFixedRows() const override { return FSource.GetFixedRows(); }
    [[nodiscard]] StringView GetCell(std::int32_t col, std::int32_t row) const override {
        return FSource.GetCell(col, row == 0 ? 0 : FRows[std::int64_t{row} - 1]);
    }

private:
    const TStringGrid& FSource;
    TIntegerArray FRows;
};

/// The names of a table's columns, and lists of them as the command line gives them. Names compare exactly,
/// and of equal ones the first counts. In a list, names with commas between, the longest part that is a name
/// wins over shorter ones, so a name may hold commas itself. An unknown name raises EArgumentException
/// "Column "NAME" not found".
class TColumnNames {
public:
    /// Takes the names from row 0 of the grid.
    explicit TColumnNames(const TStringGrid& grid);

    [[nodiscard]] const String& operator[](std::int32_t column) const {
        return FNames[static_cast<std::size_t>(column)];
    }
    [[nodiscard]] std::vector<std::int32_t> AllColumns() const;
    /// The columns of a list, in its order.
    [[nodiscard]] std::vector<std::int32_t> ReadColumns(StringView list) const;
    /// The sort keys of a list; ":desc" behind a name turns the order round, unless it belongs to the name.
    /// Raises what TSortOperation::Add raises, too.
    [[nodiscard]] TSortOperation ReadSortKeys(StringView list) const;

private:
    [[nodiscard]] std::int32_t IndexOf(StringView name) const;
    template <typename TTake>
    void ReadList(StringView list, TTake take) const;

    std::vector<String> FNames;
    std::size_t FLongest = 0;  // length of the longest name
};

}  // namespace Varnholt::Tool
