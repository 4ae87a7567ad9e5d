#pragma once

#include "Desktop/Station/StationTable.h"

namespace Varnholt::Station {

/// Shows a table: a heading with the place of each column in the sort, a column with the numbers of the rows, and the rows
/// as they are asked for.
class TStationGrid final : public TStringGrid {
public:
    TStationGrid();
    ~TStationGrid() override;

    /// The table, or null for an empty grid; it must live until another one is set.
    void SetTable(const TStationTable* table);
    /// The rows or columns of the table have changed.
    void TableChanged();
    /// The selected cells in the table's own columns and rows; empty if there are none.
    [[nodiscard]] TGridRect GetTableSelection() const;

    [[nodiscard]] std::int32_t GetColCount() const override;
    [[nodiscard]] std::int32_t GetRowCount() const override;
    [[nodiscard]] std::int32_t GetFixedCols() const override { return 1; }
    [[nodiscard]] std::int32_t GetFixedRows() const override { return 1; }
    [[nodiscard]] StringView GetCell(std::int32_t col, std::int32_t row) const override;

private:
    [[nodiscard]] String Heading(std::int32_t column) const;

    const TStationTable* FTable = nullptr;
    mutable String FText;  // of the cell that was asked for last and is not in the table
};

}  // namespace Varnholt::Station
