#include "Platform/Controls/StringGrid.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Indexes.h"

namespace Varnholt {
namespace {

constexpr std::size_t kTextLimit = std::numeric_limits<std::uint32_t>::max();

void CheckSize(std::size_t size, std::size_t limit) {
    if (size > limit) throw ERangeError(u"Grid too large");
}

}  // namespace

TStringGrid::TStringGrid(std::int32_t colCount, std::int32_t rowCount, std::int32_t fixedCols,
                         std::int32_t fixedRows)
    : TDrawGrid(colCount, rowCount, fixedCols, fixedRows) {}

TStringGrid::~TStringGrid() = default;

std::size_t TStringGrid::CheckedPosition(std::int32_t col, std::int32_t row) const {
    const auto colCount = static_cast<std::size_t>(OwnColCount());
    if (!IsIndex(col, colCount) || !IsIndex(row, static_cast<std::size_t>(OwnRowCount()))) {
        throw ERangeError(Format(u"Grid cell out of range (column %d, row %d)", {col, row}));
    }
    return static_cast<std::size_t>(row) * colCount + static_cast<std::size_t>(col);
}

StringView TStringGrid::GetCell(std::int32_t col, std::int32_t row) const {
    const std::size_t position = CheckedPosition(col, row);
    if (position >= FCells.size()) return {};
    const TCell cell = FCells[position];
    return {FText.data() + cell.Start, cell.Length};
}

void TStringGrid::SetCell(std::int32_t col, std::int32_t row, StringView text) {
    const std::size_t position = CheckedPosition(col, row);
    if (position >= FCells.size()) {
        if (text.empty()) return;
        CheckSize(position + 1, FCells.max_size());
        FCells.resize(position + 1);
    }
    TCell& cell = FCells[position];
    const auto length = static_cast<std::uint32_t>(text.size());
    if (text.size() <= cell.Length) {
        std::char_traits<Char>::move(FText.data() + cell.Start, text.data(), text.size());
        FDropped += cell.Length - length;
        cell.Length = length;
    } else {
        // The sum cannot overflow: both are lengths of texts in memory.
        CheckSize(FText.size() + text.size(), kTextLimit);
        const auto start = static_cast<std::uint32_t>(FText.size());
        FText.append(text);
        FDropped += cell.Length;
        cell = {start, length};
    }
    PackTexts();
    Changed(caItems);
}

void TStringGrid::BeforeResize(std::int32_t colCount, std::int32_t rowCount) {
    colCount == OwnColCount() ? KeepRows(rowCount) : KeepColumns(colCount);
    PackTexts();
}

void TStringGrid::KeepColumns(std::int32_t colCount) {
    const auto oldWidth = static_cast<std::size_t>(OwnColCount());
    const auto newWidth = static_cast<std::size_t>(colCount);
    const std::size_t rowCount = oldWidth == 0 ? 0 : (FCells.size() + oldWidth - 1) / oldWidth;
    CheckSize(rowCount * newWidth, FCells.max_size());
    std::vector<TCell> cells(rowCount * newWidth);
    const std::size_t kept = std::min(oldWidth, newWidth);
    for (std::size_t row = 0; row < rowCount; ++row) {
        const std::size_t start = row * oldWidth;
        const std::size_t end = std::min(start + oldWidth, FCells.size());
        const std::size_t keptEnd = std::min(start + kept, end);
        for (std::size_t at = start; at < keptEnd; ++at) cells[row * newWidth + at - start] = FCells[at];
        DropTexts(keptEnd, end);
    }
    FCells = std::move(cells);
}

void TStringGrid::KeepRows(std::int32_t rowCount) {
    const std::size_t cellCount =
        static_cast<std::size_t>(rowCount) * static_cast<std::size_t>(OwnColCount());
    if (cellCount >= FCells.size()) return;
    DropTexts(cellCount, FCells.size());
    FCells.resize(cellCount);
}

/// The texts of these cells are no longer needed.
void TStringGrid::DropTexts(std::size_t from, std::size_t to) {
    for (std::size_t at = from; at < to; ++at) FDropped += FCells[at].Length;
}

/// Compacts FText once more than half of it, and more code units than there are cells, belong to no cell: a
/// change takes constant time on average.
void TStringGrid::PackTexts() {
    if (FDropped <= std::max(FText.size() / 2, FCells.size())) return;
    String packed;
    try {
        packed.reserve(FText.size() - FDropped);
    } catch (const std::bad_alloc&) {
        return;  // the change itself is done; the next one tries again
    }
    for (TCell& cell : FCells) {
        const StringView text(FText.data() + cell.Start, cell.Length);
        cell.Start = static_cast<std::uint32_t>(packed.size());
        packed.append(text);
    }
    FText = std::move(packed);
    FDropped = 0;
}

}  // namespace Varnholt
