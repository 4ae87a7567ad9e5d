#pragma once

#include <unordered_map>

#include "Platform/Controls/Control.h"

/// A table of cells. Its first columns and rows may be fixed, as headings of the data.
///
/// Columns and rows count from 0, fixed ones included, and the column comes first. Either count may be 0, and all
/// columns or rows may be fixed: a grid of only headings has no data.
///
/// Threads: main thread only while the grid is in a form; otherwise one thread at a time, or any number that only
/// read it.
namespace Varnholt {

enum TAlignment : std::uint8_t { taLeftJustify, taRightJustify, taCenter };

/// The cells of the columns from Left to Right in the rows from Top to Bottom, both included; none if Right is below Left
/// or Bottom below Top.
struct TGridRect {
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Right = -1;
    std::int32_t Bottom = -1;
    [[nodiscard]] bool IsEmpty() const noexcept { return Right < Left || Bottom < Top; }
    bool operator==(const TGridRect&) const = default;
};

/// A fixed cell, by its column and row, and whether Shift is held down.
using TFixedCellEvent = TEvent<TObject*, std::int32_t, std::int32_t, bool>;

class VARNHOLT_EXPORT TDrawGrid : public TWinControl {
public:
    /// Raises what SetColCount, SetRowCount, SetFixedCols and SetFixedRows raise.
    explicit TDrawGrid(std::int32_t colCount = 5, std::int32_t rowCount = 5, std::int32_t fixedCols = 1,
                       std::int32_t fixedRows = 1);
    ~TDrawGrid() override;

    /// All columns and rows, the fixed ones included.
    [[nodiscard]] virtual std::int32_t GetColCount() const { return FColCount; }
    [[nodiscard]] virtual std::int32_t GetRowCount() const { return FRowCount; }
    /// The leading columns and rows that are fixed.
    [[nodiscard]] virtual std::int32_t GetFixedCols() const { return FFixedCols; }
    [[nodiscard]] virtual std::int32_t GetFixedRows() const { return FFixedRows; }

    /// Changes a count. The fixed counts are reduced to the new count if they exceed it. A count below 0 raises
    /// ERangeError "Grid count out of range (COUNT)".
    void SetColCount(std::int32_t colCount);
    void SetRowCount(std::int32_t rowCount);
    /// Fixes that many leading columns or rows. A number below 0 or above the count raises ERangeError "Fixed
    /// count out of range (COUNT)".
    void SetFixedCols(std::int32_t fixedCols);
    void SetFixedRows(std::int32_t fixedRows);

    /// In pixels; 24 and 64 at first.
    [[nodiscard]] std::int32_t GetDefaultRowHeight() const noexcept { return FDefaultRowHeight; }
    void SetDefaultRowHeight(std::int32_t height);
    [[nodiscard]] std::int32_t GetDefaultColWidth() const noexcept { return FDefaultColWidth; }
    void SetDefaultColWidth(std::int32_t width);
    /// The width of a column, which need not be there yet; a width below 0 gives it the default one again.
    [[nodiscard]] std::int32_t GetColWidth(std::int32_t col) const;
    void SetColWidth(std::int32_t col, std::int32_t width);
    /// Where the texts of a column are, left at first.
    [[nodiscard]] TAlignment GetColAlignment(std::int32_t col) const;
    void SetColAlignment(std::int32_t col, TAlignment alignment);

    // --- The user ---

    /// The selected cells, none at first; of the data, what is beyond it is left out. Setting it raises no event.
    [[nodiscard]] TGridRect GetSelection() const;
    void SetSelection(const TGridRect& selection);
    /// A person selects cells, which raises OnSelect.
    bool SelectByUser(const TGridRect& selection);
    [[nodiscard]] const TNotifyEvent& GetOnSelect() const noexcept { return FOnSelect; }
    void SetOnSelect(TNotifyEvent onSelect) { FOnSelect = std::move(onSelect); }
    /// A person clicks on a fixed cell. False for one that is not fixed or not there.
    bool ClickFixedByUser(std::int32_t col, std::int32_t row, bool isShiftDown);
    [[nodiscard]] const TFixedCellEvent& GetOnFixedCellClick() const noexcept { return FOnFixedCellClick; }
    void SetOnFixedCellClick(TFixedCellEvent onClick) { FOnFixedCellClick = std::move(onClick); }

protected:
    /// The number of columns or rows is about to change. It may raise, and then nothing changes.
    virtual void BeforeResize(std::int32_t colCount, std::int32_t rowCount);
    /// The counts of this grid itself, also where a derived class presents others.
    [[nodiscard]] std::int32_t OwnColCount() const noexcept { return FColCount; }
    [[nodiscard]] std::int32_t OwnRowCount() const noexcept { return FRowCount; }

private:
    std::unordered_map<std::int32_t, std::int32_t> FColWidths;
    std::unordered_map<std::int32_t, TAlignment> FColAlignments;
    TNotifyEvent FOnSelect;
    TFixedCellEvent FOnFixedCellClick;
    TGridRect FSelection;
    std::int32_t FColCount = 0;
    std::int32_t FRowCount = 0;
    std::int32_t FFixedCols = 0;
    std::int32_t FFixedRows = 0;
    std::int32_t FDefaultRowHeight = 24;
    std::int32_t FDefaultColWidth = 64;
};

}  // namespace Varnholt
