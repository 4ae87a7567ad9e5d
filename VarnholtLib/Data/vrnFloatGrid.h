#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "Platform/Runtime/Indexes.h"
#include "VarnholtLib/Data/vrnAbstractGrid.h"
#include "VarnholtLib/Data/vrnFloatArray.h"

/// A two-dimensional grid of 32-bit floats with settable first indices.
///
///     TFloatGrid covar(2, 2);                    // zeros, indices 1 to 2 both ways
///     covar.Put(2, 1, 0.5F);                     // column 2, row 1
///     TFloatArray row = covar.RowToFloatArray(1);
///
/// Threads: no lock; one thread at a time.
namespace Varnholt {

/// A value type: a copy has cells of its own. A moved-from grid keeps its shape and has no cells: it can be
/// assigned or destroyed, and Get and Put raise.
class VARNHOLT_EXPORT TFloatGrid : public TAbstractGrid {
public:
    /// `xnum` columns and `ynum` rows of zeros, indices from 1. Raises what TAbstractGrid raises.
    TFloatGrid(std::int32_t xnum, std::int32_t ynum);
    TFloatGrid(const TFloatGrid& other);
    TFloatGrid(TFloatGrid&& other) noexcept;
    TFloatGrid& operator=(TFloatGrid other) noexcept;
    ~TFloatGrid() override = default;

    /// Sets every cell.
    void Initialise(float inival) noexcept;

    /// The value of a cell. Neither Get nor Put checks x and y against their ranges: an index beyond its
    /// row gives the cell of another row, by the formula of Index. Only a position outside the grid raises:
    /// EGridException "Index out of bounds in TFloatGrid.Get", CR, "X = ", x, ", Y = ", y. Call CheckBounds
    /// first if x and y may be outside their ranges; use GetRow in hot loops.
    [[nodiscard]] float Get(std::int32_t x, std::int32_t y) const {
        return FMem[CheckedPosition(x, y, u"TFloatGrid.Get")];
    }
    /// Sets the value of a cell; the message names "TFloatGrid.Put".
    void Put(std::int32_t x, std::int32_t y, float value) {
        FMem[CheckedPosition(x, y, u"TFloatGrid.Put")] = value;
    }

    /// The cells of one row, from its first column, to read and to write: one check for the whole row, for
    /// hot loops. Valid until the grid is assigned, moved from or destroyed. Raises what Get raises, with
    /// "TFloatGrid.GetRow" and the first column.
    [[nodiscard]] std::span<float> GetRow(std::int32_t row) {
        return {FMem.data() + CheckedPosition(GetBaseX(), row, u"TFloatGrid.GetRow"), Width()};
    }
    [[nodiscard]] std::span<const float> GetRow(std::int32_t row) const {
        return {FMem.data() + CheckedPosition(GetBaseX(), row, u"TFloatGrid.GetRow"), Width()};
    }

    /// Copies the cells into `gridOut`, by position; does nothing for a null pointer. Its counts and bases
    /// are unchanged, so it should have the shape of this grid: with fewer cells it takes the first ones,
    /// with more cells EGridException "Can't copy a grid into a larger one" is raised and nothing is changed.
    void Copy(TFloatGrid* gridOut) const;

    /// Mirrors the grid top to bottom: row Y takes the cells of row BaseY + LastY - Y.
    void FlipVert() noexcept;
    /// Mirrors the grid left to right: column X takes the cells of column BaseX + LastX - X.
    void FlipHoriz() noexcept;

    /// A whole column from its first row to its last, as an array with base 1. Raises what CheckBounds
    /// raises.
    [[nodiscard]] TFloatArray ColToFloatArray(std::int32_t col) const;
    /// A whole row from its first column to its last, likewise.
    [[nodiscard]] TFloatArray RowToFloatArray(std::int32_t row) const;

private:
    [[nodiscard]] std::size_t CheckedPosition(std::int32_t x, std::int32_t y, const Char* operation) const {
        const std::int64_t position = Position(x, y);
        if (!IsIndex(position, FMem.size())) [[unlikely]]
            RaiseOutside(x, y, operation);
        return static_cast<std::size_t>(position);
    }
    [[nodiscard]] std::size_t Width() const noexcept { return static_cast<std::size_t>(GetCountX()); }
    [[noreturn]] static void RaiseOutside(std::int32_t x, std::int32_t y, const Char* operation);

    std::vector<float> FMem;
};

}  // namespace Varnholt
