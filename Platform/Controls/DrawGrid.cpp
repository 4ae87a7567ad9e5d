#include "Platform/Controls/DrawGrid.h"

#include <algorithm>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Indexes.h"

namespace Varnholt {
namespace {

void CheckCount(std::int32_t count) {
    if (count < 0) throw ERangeError(Format(u"Grid count out of range (%d)", {count}));
}

void CheckFixed(std::int32_t fixed, std::int32_t count) {
    if (!IsIndex(fixed, static_cast<std::size_t>(count) + 1))
        throw ERangeError(Format(u"Fixed count out of range (%d)", {fixed}));
}

}  // namespace

TDrawGrid::TDrawGrid(std::int32_t colCount, std::int32_t rowCount, std::int32_t fixedCols,
                     std::int32_t fixedRows) {
    SetBounds(0, 0, 320, 120);
    CheckCount(colCount);
    CheckCount(rowCount);
    FColCount = colCount;
    FRowCount = rowCount;
    SetFixedCols(fixedCols);
    SetFixedRows(fixedRows);
}

TDrawGrid::~TDrawGrid() = default;

void TDrawGrid::BeforeResize(std::int32_t, std::int32_t) {}

void TDrawGrid::SetColCount(std::int32_t colCount) {
    CheckCount(colCount);
    if (colCount == FColCount) return;
    BeforeResize(colCount, FRowCount);
    FColCount = colCount;
    FFixedCols = std::min(FFixedCols, colCount);
    Changed(caItems);
}

void TDrawGrid::SetRowCount(std::int32_t rowCount) {
    CheckCount(rowCount);
    if (rowCount == FRowCount) return;
    BeforeResize(FColCount, rowCount);
    FRowCount = rowCount;
    FFixedRows = std::min(FFixedRows, rowCount);
    Changed(caItems);
}

void TDrawGrid::SetFixedCols(std::int32_t fixedCols) {
    CheckFixed(fixedCols, FColCount);
    FFixedCols = fixedCols;
    Changed(caItems);
}

void TDrawGrid::SetFixedRows(std::int32_t fixedRows) {
    CheckFixed(fixedRows, FRowCount);
    FFixedRows = fixedRows;
    Changed(caItems);
}

void TDrawGrid::SetDefaultRowHeight(std::int32_t height) {
    FDefaultRowHeight = height;
    Changed(caLook);
}

void TDrawGrid::SetDefaultColWidth(std::int32_t width) {
    FDefaultColWidth = width;
    Changed(caLook);
}

std::int32_t TDrawGrid::GetColWidth(std::int32_t col) const {
    const auto found = FColWidths.find(col);
    return found == FColWidths.end() ? FDefaultColWidth : found->second;
}

void TDrawGrid::SetColWidth(std::int32_t col, std::int32_t width) {
    if (width < 0)
        FColWidths.erase(col);
    else
        FColWidths[col] = width;
    Changed(caLook);
}

TAlignment TDrawGrid::GetColAlignment(std::int32_t col) const {
    const auto found = FColAlignments.find(col);
    return found == FColAlignments.end() ? taLeftJustify : found->second;
}

void TDrawGrid::SetColAlignment(std::int32_t col, TAlignment alignment) {
    FColAlignments[col] = alignment;
    Changed(caLook);
}

// --- The user ---

TGridRect TDrawGrid::GetSelection() const {
    return {std::max(FSelection.Left, GetFixedCols()), std::max(FSelection.Top, GetFixedRows()),
            std::min(FSelection.Right, GetColCount() - 1), std::min(FSelection.Bottom, GetRowCount() - 1)};
}

void TDrawGrid::SetSelection(const TGridRect& selection) {
    FSelection = selection;
    Changed(caSelection);
}

bool TDrawGrid::SelectByUser(const TGridRect& selection) {
    if (!FocusByUser() || !CanFocus()) return false;
    SetSelection(selection);
    const TNotifyEvent onSelect = FOnSelect;
    onSelect(this);
    return true;
}

bool TDrawGrid::ClickFixedByUser(std::int32_t col, std::int32_t row, bool isShiftDown) {
    const bool isThere = IsIndex(col, static_cast<std::size_t>(GetColCount())) &&
                         IsIndex(row, static_cast<std::size_t>(GetRowCount()));
    if (!isThere || (col >= GetFixedCols() && row >= GetFixedRows()) || !FocusByUser() || !CanFocus())
        return false;
    const TFixedCellEvent onClick = FOnFixedCellClick;
    onClick(this, col, row, isShiftDown);
    return true;
}

}  // namespace Varnholt
