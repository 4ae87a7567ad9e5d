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

}  // namespace Varnholt
