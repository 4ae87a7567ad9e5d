#include <cmath>
#include <vector>

#include "Fuzz/FuzzInput.h"
#include "Platform/Runtime/Numbers.h"
#include "VarnholtLib/Data/vrnNumberGrid.h"

/// Any order of operations on a number grid beside plain vectors.
namespace Varnholt::Fuzz {
namespace {

constexpr StringView kNames[] = {u"a", u"b", u"", u"a b"};
constexpr Extended kValues[] = {0, 1, -2.5L, 3.5L, 1e300L, -0.1L, INFINITY, NAN};
constexpr std::int32_t kMaxColumns = 6;
constexpr std::int32_t kMaxRows = 40;

struct TModel {
    struct TColumnOf {
        String Name;
        TColumnType Type;
        Extended Default;
    };
    std::vector<TColumnOf> Columns;
    std::vector<std::vector<Extended>> Rows;  // each as wide as the grid

    [[nodiscard]] std::int32_t ColCount() const { return static_cast<std::int32_t>(Columns.size()); }
    [[nodiscard]] std::int32_t RowCount() const { return static_cast<std::int32_t>(Rows.size()); }
    void AddRows(std::int32_t count) {
        std::vector<Extended> defaults;
        for (const TColumnOf& column : Columns) defaults.push_back(column.Default);
        while (RowCount() < count) Rows.push_back(defaults);
    }
};

class TSession {
public:
    void RunOperation(TChoices& choices) {
        switch (choices.Below(10)) {
            case 0:
                return AddColumn(choices);
            case 1:
                return AddRow(choices);
            case 2:
                return GetRow(choices);
            case 3:
                return SetValue(choices);
            case 4:
                return AddArrayToRow(choices);
            case 5:
                return RemoveColumns(choices);
            case 6:
                return KeepRows(choices);
            case 7:
                return ChangeRows(choices);
            case 8:
                return NarrowColumn(choices);
            default:
                FGrid = TNumberGridFactory::GetObject(FGrid, true);
        }
    }

    void RequireSameGrid() {
        Require(FGrid->GetCount() == FModel.RowCount(), "the number of rows");
        Require(FGrid->GetColumns().GetCount() == FModel.ColCount(), "the number of columns");
        for (std::int32_t row = 0; row < FModel.RowCount(); ++row) {
            TRow& found = FGrid->GetRow(row);
            for (std::int32_t col = 0; col < FModel.ColCount(); ++col) {
                const Extended value = ModelRow(row)[static_cast<std::size_t>(col)];
                Require(SameValue(found.GetValue(col), value), "a value of the grid");
                if (FModel.Columns[static_cast<std::size_t>(col)].Type == ctFloat)
                    RequireSame(found.GetValueAsString(col), FloatToStr(value), "the text of a value");
            }
        }
    }

private:
    std::vector<Extended>& ModelRow(std::int32_t row) { return FModel.Rows[static_cast<std::size_t>(row)]; }

    static Extended Value(TChoices& choices) {
        return kValues[static_cast<std::size_t>(choices.Below(std::size(kValues)))];
    }
    static String Name(TChoices& choices) {
        return String(kNames[static_cast<std::size_t>(choices.Below(std::size(kNames)))]);
    }

    void AddColumn(TChoices& choices) {
        const TModel::TColumnOf column{Name(choices), choices.Below(2) == 0 ? ctInt : ctFloat,
                                       Value(choices)};
        if (FModel.ColCount() == kMaxColumns) return;
        FGrid->GetColumns().Add(TColumn(column.Name, column.Type, column.Default));
        FModel.Columns.push_back(column);
        for (std::vector<Extended>& row : FModel.Rows) row.push_back(column.Default);
    }

    void AddRow(TChoices& choices) {
        if (FModel.RowCount() == kMaxRows) return;
        std::vector<Extended> values(static_cast<std::size_t>(choices.Below(kMaxColumns)));
        for (Extended& value : values) value = Value(choices);
        const bool fits = values.size() == FModel.Columns.size();
        const String failure = FailureOf([&] { FGrid->AddRow(values); });
        RequireSame(failure, fits ? u"" : u"Number of values does not match number of columns", "AddRow");
        FModel.AddRows(FModel.RowCount() + 1);
        if (fits) FModel.Rows.back() = values;
    }

    void GetRow(TChoices& choices) {
        const std::int32_t row = choices.Below(kMaxRows) - 1;
        const String failure = FailureOf([&] { static_cast<void>(FGrid->GetRow(row)); });
        Require(failure.empty() == (row >= 0), "a negative row, and no other, is refused");
        FModel.AddRows(row + 1);
    }

    void SetValue(TChoices& choices) {
        const std::int32_t row = choices.Index(FModel.RowCount()), col = choices.Index(FModel.ColCount());
        const Extended value = Value(choices);
        if (row < 0 || row >= FModel.RowCount()) return;
        const bool isFine = col >= 0 && col < FModel.ColCount();
        const String failure = FailureOf([&] { FGrid->GetRow(row).SetValue(col, value); });
        Require(failure.empty() == isFine, "a position of the row, and no other, is set");
        if (isFine) ModelRow(row)[static_cast<std::size_t>(col)] = value;
    }

    void AddArrayToRow(TChoices& choices) {
        const std::int32_t row = choices.Below(kMaxRows) - 1, start = choices.Index(FModel.ColCount());
        std::vector<Extended> values(static_cast<std::size_t>(choices.Below(4)));
        for (Extended& value : values) value = Value(choices);
        const auto count = static_cast<std::int32_t>(values.size());
        const bool isFine = row >= 0 && (count == 0 || (start >= 0 && start + count <= FModel.ColCount()));
        const String failure = FailureOf([&] { FGrid->AddArrayToRow(values, row, start); });
        Require(failure.empty() == isFine, "values that fit, and no others, are set");
        if (!isFine) return;
        FModel.AddRows(row + 1);
        if (count > 0) std::ranges::copy(values, ModelRow(row).begin() + start);
    }

    void RemoveColumns(TChoices& choices) {
        const String names[] = {Name(choices), Name(choices)};
        FGrid = FGrid->RemoveColumns(names);
        TModel kept;
        std::vector<std::size_t> positions;
        for (std::size_t i = 0; i < FModel.Columns.size(); ++i) {
            if (IsIn(FModel.Columns[i].Name, names)) continue;
            positions.push_back(i);
            kept.Columns.push_back(FModel.Columns[i]);
        }
        if (positions.size() == FModel.Columns.size()) return;
        if (!positions.empty()) {
            for (const std::vector<Extended>& row : FModel.Rows) {
                std::vector<Extended>& values = kept.Rows.emplace_back();
                for (const std::size_t position : positions) values.push_back(row[position]);
            }
        }
        FModel = kept;
    }

    void KeepRows(TChoices& choices) {
        const std::int32_t divisor = choices.Below(3) + 1;
        FGrid = FGrid->Where([&](const auto&, const TRow&, std::int32_t row) { return row % divisor == 0; });
        std::int32_t row = 0;
        std::erase_if(FModel.Rows, [&](const auto&) { return row++ % divisor != 0; });
    }

    void ChangeRows(TChoices& choices) {
        const Extended value = Value(choices);
        const bool hasColumn = FModel.ColCount() > 0;
        FGrid =
            FGrid->Select([&](const auto&, const auto& target, const TRow&, TRow& row, std::int32_t index) {
                Require(target->GetCount() == index, "the target holds the rows of the earlier rounds");
                if (hasColumn) row.SetValue(0, value);
            });
        for (std::vector<Extended>& row : FModel.Rows)
            if (hasColumn) row[0] = value;
    }

    void NarrowColumn(TChoices& choices) {
        const std::int32_t col = choices.Index(FModel.ColCount());
        const bool isFine = col >= 0 && col < FModel.ColCount() && FModel.RowCount() > 0;
        const String failure = FailureOf([&] {
            const TFloatArray values = FGrid->GetColumnAsFloatArray(col);
            for (std::int32_t row = 0; row < FModel.RowCount(); ++row) {
                const Extended value = ModelRow(row)[static_cast<std::size_t>(col)];
                Require(SameValue(values.GetFloat(row), static_cast<float>(value)), "a narrowed value");
            }
        });
        Require(failure.empty() == isFine, "a column with rows, and no other, is narrowed");
    }

    std::shared_ptr<INumberGrid> FGrid = TNumberGridFactory::GetObject();
    TModel FModel;
};

}  // namespace

void RunInput(TInput input) {
    TChoices choices(input);
    TSession session;
    while (!choices.AtEnd()) {
        session.RunOperation(choices);
        session.RequireSameGrid();
    }
}

}  // namespace Varnholt::Fuzz
