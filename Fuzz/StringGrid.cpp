#include "Platform/Controls/StringGrid.h"

#include <vector>

#include "Fuzz/FuzzInput.h"

/// Any order of operations on a string grid beside a plain table of texts.
namespace Varnholt::Fuzz {
namespace {

constexpr std::int32_t kMaxCount = 7;

struct TModel {
    std::vector<std::vector<String>> Rows;  // each as wide as the grid
    std::int32_t ColCount = 0;
    std::int32_t FixedCols = 0;
    std::int32_t FixedRows = 0;

    [[nodiscard]] std::int32_t RowCount() const { return static_cast<std::int32_t>(Rows.size()); }
    [[nodiscard]] bool HasCell(std::int32_t col, std::int32_t row) const {
        return col >= 0 && col < ColCount && row >= 0 && row < RowCount();
    }
    String& Cell(std::int32_t col, std::int32_t row) {
        return Rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)];
    }
    void Resize(std::int32_t colCount, std::int32_t rowCount) {
        ColCount = colCount;
        Rows.resize(static_cast<std::size_t>(rowCount));
        for (std::vector<String>& row : Rows) row.resize(static_cast<std::size_t>(colCount));
        FixedCols = std::min(FixedCols, colCount);
        FixedRows = std::min(FixedRows, rowCount);
    }
};

void RequireSameGrid(const TStringGrid& grid, TModel& model) {
    Require(grid.GetColCount() == model.ColCount && grid.GetRowCount() == model.RowCount(), "the counts");
    Require(grid.GetFixedCols() == model.FixedCols && grid.GetFixedRows() == model.FixedRows,
            "the fixed counts");
    for (std::int32_t row = 0; row < model.RowCount(); ++row)
        for (std::int32_t col = 0; col < model.ColCount; ++col)
            RequireSame(grid.GetCell(col, row), model.Cell(col, row), "the text of a cell");
}

/// Sets a cell to a new text or to that of another cell. Returns whether the grid accepts it.
bool SetCell(TStringGrid& grid, TModel& model, TChoices& choices) {
    const std::int32_t col = choices.Index(model.ColCount), row = choices.Index(model.RowCount());
    const std::int32_t otherCol = choices.Index(model.ColCount);
    const bool isCopy = model.HasCell(otherCol, row) && choices.Below(3) == 0;
    const String text = isCopy ? model.Cell(otherCol, row) : choices.Text();
    const bool isFine =
        FailureOf([&] { grid.SetCell(col, row, isCopy ? grid.GetCell(otherCol, row) : text); }).empty();
    Require(isFine == model.HasCell(col, row), "a cell of the grid, and no other, is set");
    if (isFine) model.Cell(col, row) = text;
    return isFine;
}

void RunOperation(TStringGrid& grid, TModel& model, TChoices& choices) {
    const int operation = choices.Below(8);
    if (operation < 4) return static_cast<void>(SetCell(grid, model, choices));
    const std::int32_t count = choices.Index(kMaxCount);
    bool isFine = count >= 0;
    if (operation >= 6) isFine &= count <= (operation == 6 ? model.ColCount : model.RowCount());
    const String failure = FailureOf([&] {
        if (operation == 4) grid.SetColCount(count);
        if (operation == 5) grid.SetRowCount(count);
        if (operation == 6) grid.SetFixedCols(count);
        if (operation == 7) grid.SetFixedRows(count);
    });
    Require(failure.empty() == isFine, "a possible count, and no other, is taken");
    if (!isFine) return;
    if (operation == 4) model.Resize(count, model.RowCount());
    if (operation == 5) model.Resize(model.ColCount, count);
    if (operation == 6) model.FixedCols = count;
    if (operation == 7) model.FixedRows = count;
}

}  // namespace

void RunInput(TInput input) {
    TChoices choices(input);
    TStringGrid grid(3, 2, 1, 1);
    TModel model;
    model.Resize(3, 2);
    model.FixedCols = model.FixedRows = 1;
    while (!choices.AtEnd()) {
        RunOperation(grid, model, choices);
        RequireSameGrid(grid, model);
    }
}

}  // namespace Varnholt::Fuzz
