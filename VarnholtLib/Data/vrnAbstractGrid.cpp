#include "VarnholtLib/Data/vrnAbstractGrid.h"

#include <limits>
#include <utility>

#include "Platform/Runtime/Format.h"

namespace Varnholt {
namespace {

constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();

void CheckIndexRange(std::int32_t base, std::int32_t count) {
    if (std::int64_t{base} + count - 1 > kMost) {
        throw EGridException(Format(u"Index range of a grid exceeds 32 bits\rBase = %d", {base}));
    }
}

void CheckIndex(StringView label, std::int32_t index, std::int32_t first, std::int32_t last) {
    if (index >= first && index <= last) return;
    throw EGridException(
        Format(u"Index out of bounds in TAbstractGrid.CheckBounds\r%s = %d", {label, index}));
}

}  // namespace

TAbstractGrid::TAbstractGrid(std::int32_t xnum, std::int32_t ynum) : FCountX(xnum), FCountY(ynum) {
    if (xnum < 1 || ynum < 1) throw EGridException(u"Can't create a grid with a dimension less than 1");
    if (std::int64_t{xnum} * ynum > kMost) {
        throw EGridException(u"Can't create a grid of more than 2147483647 cells");
    }
}

TAbstractGrid::~TAbstractGrid() = default;

TAbstractGrid::TAbstractGrid(const TAbstractGrid& other)
    : FBaseX(other.FBaseX), FBaseY(other.FBaseY), FCountX(other.FCountX), FCountY(other.FCountY) {}

TAbstractGrid& TAbstractGrid::operator=(const TAbstractGrid& other) noexcept {
    if (this == &other) return *this;
    FBaseX = other.FBaseX;
    FBaseY = other.FBaseY;
    FCountX = other.FCountX;
    FCountY = other.FCountY;
    AllocateMem(nullptr);
    return *this;
}

void TAbstractGrid::SetBaseX(std::int32_t base) {
    CheckIndexRange(base, FCountX);
    FBaseX = base;
}

void TAbstractGrid::SetBaseY(std::int32_t base) {
    CheckIndexRange(base, FCountY);
    FBaseY = base;
}

void TAbstractGrid::AllocateMem(std::uint8_t recSize) {
    const std::int64_t bytes = recSize * static_cast<std::int64_t>(CellCount());
    if (bytes > kMost) throw EGridException(u"Can't allocate a grid of more than 2147483647 bytes");
    FOwnBlock = bytes > 0 ? std::make_unique<std::byte[]>(static_cast<std::size_t>(bytes)) : nullptr;
    FMemReq = static_cast<std::int32_t>(bytes);
    FBuffer = FOwnBlock.get();
}

void TAbstractGrid::AllocateMem(void* memory) noexcept {
    FOwnBlock.reset();
    FMemReq = 0;
    FBuffer = memory;
}

void TAbstractGrid::CheckBounds(std::int32_t x, std::int32_t y) const {
    CheckIndex(u"X", x, FBaseX, GetLastX());
    CheckIndex(u"Y", y, FBaseY, GetLastY());
}

}  // namespace Varnholt
