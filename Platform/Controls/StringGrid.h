#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Platform/Controls/DrawGrid.h"

/// A table of cell texts, held in memory.
///
///     TStringGrid grid(2, 3, 0, 1);                  // two columns, a row of headings and two rows of data
///     grid.SetCell(0, 0, u"date");
///     grid.SetCell(0, 1, u"2012-01-01");
///     for (std::int32_t row = grid.GetFixedRows(); row < grid.GetRowCount(); ++row) {
///         Use(grid.GetCell(0, row));
///     }
///
/// Columns and rows count as in a draw grid, and as there the counts may be changed.
///
/// Readers of a grid use only the virtual operations, so that a derived class can present any other table as
/// a grid.
///
/// Memory: 8 bytes for each cell, in the order of rows up to the last one ever written, and 2 bytes for each
/// code unit of text.
///
/// Threads: a grid may be used by one thread at a time, or by any number of threads that only read it.
namespace Varnholt {

class VARNHOLT_EXPORT TStringGrid : public TDrawGrid {
public:
    /// A grid of empty cells. Raises as TDrawGrid.
    explicit TStringGrid(std::int32_t colCount = 5, std::int32_t rowCount = 5, std::int32_t fixedCols = 1,
                         std::int32_t fixedRows = 1);
    ~TStringGrid() override;

    /// The text of a cell, empty for a cell never written; valid until the grid changes. Raises ERangeError
    /// "Grid cell out of range (column COL, row ROW)".
    [[nodiscard]] virtual StringView GetCell(std::int32_t col, std::int32_t row) const;

    /// Replaces the text of a cell; it may be a view of another cell. Raises ERangeError as GetCell does, and
    /// "Grid too large" beyond 4294967295 code units of text in all, a part of the replaced texts among them,
    /// or more cells than can be addressed.
    void SetCell(std::int32_t col, std::int32_t row, StringView text);

protected:
    /// The cells in the columns and rows that stay keep their texts, new ones are empty.
    void BeforeResize(std::int32_t colCount, std::int32_t rowCount) override;

private:
    struct TCell {  // a piece of FText
        std::uint32_t Start = 0;
        std::uint32_t Length = 0;
    };

    [[nodiscard]] std::size_t CheckedPosition(std::int32_t col, std::int32_t row) const;
    void KeepColumns(std::int32_t colCount);
    void KeepRows(std::int32_t rowCount);
    void DropTexts(std::size_t from, std::size_t to);
    void PackTexts();

    std::vector<TCell> FCells;  // in the order of rows; those after the last one are empty
    String FText;               // the cells' texts, and between them former texts
    std::size_t FDropped = 0;   // code units of FText that belong to no cell
};

}  // namespace Varnholt
