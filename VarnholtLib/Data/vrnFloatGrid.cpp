#include "VarnholtLib/Data/vrnFloatGrid.h"

#include <algorithm>
#include <utility>

#include "Platform/Runtime/Format.h"

namespace Varnholt {

TFloatGrid::TFloatGrid(std::int32_t xnum, std::int32_t ynum) : TAbstractGrid(xnum, ynum), FMem(CellCount()) {
    AllocateMem(FMem.data());
}

TFloatGrid::TFloatGrid(const TFloatGrid& other) : TAbstractGrid(other), FMem(other.FMem) {
    AllocateMem(FMem.data());
}

TFloatGrid::TFloatGrid(TFloatGrid&& other) noexcept : TAbstractGrid(other), FMem(std::move(other.FMem)) {
    AllocateMem(FMem.data());
    other.AllocateMem(nullptr);
}

TFloatGrid& TFloatGrid::operator=(TFloatGrid other) noexcept {
    TAbstractGrid::operator=(other);
    FMem.swap(other.FMem);
    AllocateMem(FMem.data());
    return *this;
}

void TFloatGrid::Initialise(float inival) noexcept {
    std::ranges::fill(FMem, inival);
}

void TFloatGrid::Copy(TFloatGrid* gridOut) const {
    if (gridOut == nullptr || gridOut == this) return;
    if (gridOut->FMem.size() > FMem.size()) throw EGridException(u"Can't copy a grid into a larger one");
    std::copy_n(FMem.begin(), gridOut->FMem.size(), gridOut->FMem.begin());
}

void TFloatGrid::FlipVert() noexcept {
    const std::size_t width = Width();
    std::size_t bottom = FMem.size();
    for (std::size_t top = 0; top + width < bottom; top += width) {
        bottom -= width;
        std::swap_ranges(FMem.data() + top, FMem.data() + top + width, FMem.data() + bottom);
    }
}

void TFloatGrid::FlipHoriz() noexcept {
    const std::size_t width = Width();
    for (std::size_t start = 0; start < FMem.size(); start += width) {
        std::reverse(FMem.data() + start, FMem.data() + start + width);
    }
}

TFloatArray TFloatGrid::ColToFloatArray(std::int32_t col) const {
    CheckBounds(col, GetBaseY());
    TFloatArray cells(GetCountY());
    for (std::int32_t i = 0; i < GetCountY(); ++i) cells.WriteFloat(i + 1, Get(col, GetBaseY() + i));
    return cells;
}

TFloatArray TFloatGrid::RowToFloatArray(std::int32_t row) const {
    CheckBounds(GetBaseX(), row);
    TFloatArray cells(GetCountX());
    std::ranges::copy(GetRow(row), cells.GetBuffer().begin());
    return cells;
}

void TFloatGrid::RaiseOutside(std::int32_t x, std::int32_t y, const Char* operation) {
    throw EGridException(Format(u"Index out of bounds in %s\rX = %d, Y = %d", {operation, x, y}));
}

}  // namespace Varnholt
