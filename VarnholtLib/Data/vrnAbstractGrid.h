#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "VarnholtLib/Data/vrnGridException.h"

/// The addressing half of a two-dimensional grid, for cells of any size.
///
///     TAbstractGrid marks(360, 180);
///     marks.AllocateMem(1);                                    // a zeroed byte for each cell
///     static_cast<std::uint8_t*>(marks.GetBuffer())[marks.Index(12, 7)] = 1;
///
/// Cells are stored row by row, X fastest: the cell (X, Y) is at the 0-based position
/// (Y - BaseY) * CountX + (X - BaseX).
///
/// Threads: no lock; one thread at a time.
namespace Varnholt {

class VARNHOLT_EXPORT TAbstractGrid {
public:
    /// `xnum` columns and `ynum` rows, indices from 1, no memory yet. EGridException:
    /// - "Can't create a grid with a dimension less than 1"
    /// - "Can't create a grid of more than 2147483647 cells": positions have 32 bits
    TAbstractGrid(std::int32_t xnum, std::int32_t ynum);
    virtual ~TAbstractGrid();

    [[nodiscard]] std::int32_t GetCountX() const noexcept { return FCountX; }
    [[nodiscard]] std::int32_t GetCountY() const noexcept { return FCountY; }
    /// First and last index of each dimension; the last is base + count - 1.
    [[nodiscard]] std::int32_t GetBaseX() const noexcept { return FBaseX; }
    [[nodiscard]] std::int32_t GetBaseY() const noexcept { return FBaseY; }
    [[nodiscard]] std::int32_t GetLastX() const noexcept { return FBaseX + (FCountX - 1); }
    [[nodiscard]] std::int32_t GetLastY() const noexcept { return FBaseY + (FCountY - 1); }
    /// Bytes that AllocateMem(recSize) allocated; 0 if the memory belongs to the caller.
    [[nodiscard]] std::int32_t GetMemReq() const noexcept { return FMemReq; }
    /// The memory of the cells, or none.
    [[nodiscard]] void* GetBuffer() noexcept { return FBuffer; }
    [[nodiscard]] const void* GetBuffer() const noexcept { return FBuffer; }

    /// Moves the first index of a dimension; the cells stay. EGridException "Index range of a grid exceeds
    /// 32 bits", CR, "Base = ", the base, if the last index does not fit; the base is then unchanged.
    void SetBaseX(std::int32_t base);
    void SetBaseY(std::int32_t base);

    /// Gives the grid a zero-filled block of `recSize` bytes for each cell, aligned for any plain type and
    /// freed with the grid; none for 0 bytes. EGridException "Can't allocate a grid of more than 2147483647
    /// bytes". After that, and if allocation fails (std::bad_alloc), the grid keeps what it had.
    virtual void AllocateMem(std::uint8_t recSize);
    /// Points the grid to the caller's memory, which must outlive it, and frees a block of its own.
    void AllocateMem(void* memory) noexcept;

    /// The 0-based position of a cell. Checks nothing: an index outside its range gives the position of
    /// another cell, or none of the grid. A position that does not fit in 32 bits is taken modulo 2^32.
    [[nodiscard]] std::int32_t Index(std::int32_t x, std::int32_t y) const noexcept {
        return static_cast<std::int32_t>(Position(x, y));
    }

    /// EGridException "Index out of bounds in TAbstractGrid.CheckBounds", CR, "X = " or "Y = ", the index,
    /// if it is outside its range; X is checked first.
    void CheckBounds(std::int32_t x, std::int32_t y) const;

protected:
    /// A copy has the counts and bases, and no memory.
    TAbstractGrid(const TAbstractGrid& other);
    TAbstractGrid& operator=(const TAbstractGrid& other) noexcept;

    /// Index in 64 bits, which hold it for any x and y.
    [[nodiscard]] std::int64_t Position(std::int32_t x, std::int32_t y) const noexcept {
        return (std::int64_t{y} - FBaseY) * FCountX + (std::int64_t{x} - FBaseX);
    }
    /// Number of cells.
    [[nodiscard]] std::size_t CellCount() const noexcept {
        return static_cast<std::size_t>(FCountX) * static_cast<std::size_t>(FCountY);
    }

private:
    std::int32_t FBaseX = 1;
    std::int32_t FBaseY = 1;
    std::int32_t FCountX;
    std::int32_t FCountY;
    std::int32_t FMemReq = 0;
    void* FBuffer = nullptr;
    std::unique_ptr<std::byte[]> FOwnBlock;
};

}  // namespace Varnholt
