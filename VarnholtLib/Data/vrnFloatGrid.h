#pragma once

#include <cstddef>
#include <span>
#include <vector>

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

/// A value type: a copy has cells of its own. A moved-from grid keeps its shape and has no cells left: it can
/// be assigned or destroyed, and Get and Put raise.
class VARNHOLT_EXPORT TFloatGrid : public TAbstractGrid {
public:
    /// `xnum` columns and `ynum` rows of zeros, indices from 1 on. Fails as TAbstractGrid does.
    TFloatGrid(std::int32_t xnum, std::int32_t ynum);
    TFloatGrid(const TFloatGrid& other);
    TFloatGrid(TFloatGrid&& other) noexcept;
    TFloatGrid& operator=(TFloatGrid other) noexcept;
    ~TFloatGrid() override = default;

    /// Sets every cell.
    void Initialise(float inival) noexcept;

    /// The value of a cell. Neither Get nor Put checks x and y against their ranges: an index that leaves its
    /// row reaches the cell of another row, as Index tells. Only a position outside the grid raises:
    /// EGridException "Index out of bounds in TFloatGrid.Get", CR, "X = ", x, ", Y = ", y. Call CheckBounds
    /// first where x and y are not known to be good; run over GetRow where every nanosecond counts.
    [[nodiscard]] float Get(std::int32_t x, std::int32_t y) const {
        return FMem[CheckedPosition(x, y, u"TFloatGrid.Get")];
    }
    /// Sets the value of a cell; the failure names "TFloatGrid.Put".
    void Put(std::int32_t x, std::int32_t y, float value) {
        FMem[CheckedPosition(x, y, u"TFloatGrid.Put")] = value;
    }

    /// The cells of one row, from its first column on, to read and to write: one check for the whole row, for
    /// loops that count their time. Good until the grid is assigned, moved from or destroyed. The failure is
    /// that of Get, with "TFloatGrid.GetRow" and the first column.
    [[nodiscard]] std::span<float> GetRow(std::int32_t row) {
        return {FMem.data() + CheckedPosition(GetBaseX(), row, u"TFloatGrid.GetRow"), Width()};
    }
    [[nodiscard]] std::span<const float> GetRow(std::int32_t row) const {
        return {FMem.data() + CheckedPosition(GetBaseX(), row, u"TFloatGrid.GetRow"), Width()};
    }

    /// Copies the cells into `gridOut`, by position; nothing happens without one. Its counts and bases stay,
    /// so it should have the shape of this grid: with fewer cells it takes the first ones, with more cells
    /// EGridException "Can't copy a grid into a larger one" is raised and nothing changed.
    void Copy(TFloatGrid* gridOut) const;

    /// Mirrors the grid top to bottom: row Y takes what row BaseY + LastY - Y held.
    void FlipVert() noexcept;
    /// Mirrors the grid left to right: column X takes what column BaseX + LastX - X held.
    void FlipHoriz() noexcept;

    /// A whole column from its first row to its last, as an array with base 1. An index outside raises as
    /// CheckBounds does.
    [[nodiscard]] TFloatArray ColToFloatArray(std::int32_t col) const;
    /// A whole row from its first column to its last, likewise.
    [[nodiscard]] TFloatArray RowToFloatArray(std::int32_t row) const;

private:
    [[nodiscard]] std::size_t CheckedPosition(std::int32_t x, std::int32_t y, const Char* operation) const {
        const auto position = static_cast<std::size_t>(Position(x, y));  // below 0 becomes huge
        if (position >= FMem.size()) [[unlikely]]
            RaiseOutside(x, y, operation);
        return position;
    }
    [[nodiscard]] std::size_t Width() const noexcept { return static_cast<std::size_t>(GetCountX()); }
    [[noreturn]] static void RaiseOutside(std::int32_t x, std::int32_t y, const Char* operation);

    std::vector<float> FMem;
};

}  // namespace Varnholt
