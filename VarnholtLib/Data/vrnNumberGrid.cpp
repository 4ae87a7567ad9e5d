#include "VarnholtLib/Data/vrnNumberGrid.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include "Platform/Runtime/DraftFile.h"
#include "Platform/Runtime/FloatMath.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/TextStreams.h"

namespace Varnholt {
namespace {

std::int32_t RequiredColumn(const TColumns& columns, StringView colName) {
    const std::int32_t index = columns.IndexOf(colName);
    if (index >= 0) return index;
    throw Exception(u"The column \"" + String(colName) + u"\" is not present in the data set");
}

}  // namespace

bool IsIn(StringView value, std::span<const String> names) noexcept {
    return std::ranges::find(names, value) != names.end();
}

// --- Columns ---

TColumn::TColumn(StringView name, TColumnType columnType, Extended defaultValue)
    : FName(name), FColumnType(columnType), FDefaultValue(defaultValue) {}

const TColumn& TColumns::GetItem(std::int32_t index) const {
    return FItems[ListIndex(index, FItems.size())];
}

const TColumn& TColumns::Add(TColumn column) {
    return FItems.emplace_back(std::move(column));
}

const TColumn& TColumns::AddColumn(StringView name, TColumnType columnType) {
    return FItems.emplace_back(name, columnType);
}

std::vector<const TColumn*> TColumns::AddIntColumns(std::span<const String> names) {
    return AddColumns(names, ctInt);
}

std::vector<const TColumn*> TColumns::AddFloatColumns(std::span<const String> names) {
    return AddColumns(names, ctFloat);
}

std::vector<const TColumn*> TColumns::AddColumns(std::span<const String> names, TColumnType columnType) {
    std::vector<const TColumn*> added;
    added.reserve(names.size());
    for (const String& name : names) added.push_back(&AddColumn(name, columnType));
    return added;
}

std::int32_t TColumns::IndexOf(StringView colName) const noexcept {
    const auto found = std::ranges::find(FItems, colName, &TColumn::GetName);
    return found == FItems.end() ? -1 : static_cast<std::int32_t>(found - FItems.begin());
}

TStringArray TColumns::ToColumnNameArray() const {
    std::vector<String> names;
    names.reserve(FItems.size());
    for (const TColumn& column : FItems) names.push_back(column.GetName());
    return TStringArray(std::move(names));
}

// --- One row ---

TRow::TRow(const TColumns& columns, TMemory* memory) : FColumns(&columns), FValues(memory) {
    AddDefaults();
}

TRow::TRow(const TColumns& columns, const TRow& source, TMemory* memory)
    : FColumns(&columns), FValues(memory) {
    const auto width = static_cast<std::size_t>(GetCount());
    FValues.reserve(width);
    const std::span<const Extended> values(source.FValues);
    const auto held = values.first(std::min(values.size(), width));
    FValues.assign(held.begin(), held.end());
    if (held.size() == width) return;
    const auto end = static_cast<std::size_t>(std::min(source.GetCount(), GetCount()));
    for (std::size_t i = held.size(); i < end; ++i) {
        FValues.push_back(source.GetValue(static_cast<std::int32_t>(i)));
    }
    AddDefaults();
}

TRow::TRow(const TColumns& columns, std::span<const Extended> values, TMemory* memory)
    : FColumns(&columns), FValues(memory) {
    SetValues(values);
}

/// Gives each column that has no value in the row yet its default value.
void TRow::AddDefaults() {
    const auto width = static_cast<std::size_t>(GetCount());
    FValues.reserve(width);
    for (std::size_t i = FValues.size(); i < width; ++i) {
        FValues.push_back(FColumns->GetItem(static_cast<std::int32_t>(i)).GetDefaultValue());
    }
}

/// What the row reads as in a column that was added after the row.
Extended TRow::DefaultValue(std::int32_t index) const {
    if (!IsIndex(index, static_cast<std::size_t>(GetCount()))) RaiseArrayIndex(index);
    return FColumns->GetItem(index).GetDefaultValue();
}

void TRow::Widen(std::int32_t index) {
    if (!IsIndex(index, static_cast<std::size_t>(GetCount()))) RaiseArrayIndex(index);
    AddDefaults();
}

Extended TRow::GetValueByColName(StringView colName) const {
    return GetValue(RequiredColumn(*FColumns, colName));
}

void TRow::SetValueByColName(StringView colName, Extended value) {
    SetValue(RequiredColumn(*FColumns, colName), value);
}

std::int32_t TRow::GetValueAsInt(std::int32_t index) const {
    return RoundToInt(GetValue(index));
}

String TRow::GetValueAsString(std::int32_t index) const {
    const Extended value = GetValue(index);
    return GetColumnType(index) == ctInt ? IntToStr(RoundToInt(value)) : FloatToStr(value);
}

std::vector<Extended> TRow::GetValuesAtIndexes(std::span<const std::int32_t> indexes) const {
    std::vector<Extended> values;
    values.reserve(indexes.size());
    for (const std::int32_t index : indexes) values.push_back(GetValue(index));
    return values;
}

void TRow::SetValues(std::span<const Extended> values) {
    if (std::ssize(values) != GetCount()) {
        throw Exception(u"Number of values does not match number of columns");
    }
    FValues.assign(values.begin(), values.end());
}

// --- Rows ---

TRows::TRows(const TColumns& columns, const TRows& source) : TRows(columns) {
    AddRowsViaCopy(source.FItems);
}

/// Appends the rows that `make` returns for 0 to count - 1, or none of them.
template <typename TMake>
void TRows::Append(std::size_t count, TMake make) {
    const std::size_t before = FItems.size(), total = before + count, held = FStore.size();
    if (total > std::numeric_limits<std::int32_t>::max()) RaiseArrayLength(static_cast<std::int64_t>(total));
    try {
        if (total > FItems.capacity()) FItems.reserve(std::max(total, 2 * FItems.capacity()));
        for (std::size_t i = 0; i < count; ++i) FItems.push_back(&make(i));
    } catch (const std::bad_alloc&) {
        FItems.resize(before);
        while (FStore.size() > held) FStore.pop_back();
        throw ERangeError(Format(u"Out of memory for %d rows", {total}));
    }
}

TRow& TRows::AddRow() {
    AddRows(1);
    return *FItems.back();
}

void TRows::AddRows(std::int32_t count) {
    if (count < 0) RaiseArrayLength(count);
    Append(static_cast<std::size_t>(count),
           [this](std::size_t) -> TRow& { return FStore.emplace_back(*FColumns, &FMemory); });
}

void TRows::AddRowsViaCopy(std::span<const TRow* const> rows) {
    if (std::ranges::find(rows, nullptr) != rows.end()) throw EArgumentNilException(u"rows");
    Append(rows.size(),
           [&](std::size_t i) -> TRow& { return FStore.emplace_back(*FColumns, *rows[i], &FMemory); });
}

// --- The grid ---

class TNumberGrid final : public INumberGrid, public std::enable_shared_from_this<TNumberGrid> {
public:
    TNumberGrid() : FRows(FColumns) {}
    TNumberGrid(INumberGrid& source, bool populateRows);

    TColumns& GetColumns() override { return FColumns; }
    std::int32_t GetCount() const override { return FRows.GetCount(); }
    TRow& GetRow(std::int32_t index) override;
    void AddArrayToRow(std::span<const Extended> values, std::int32_t rowIndex,
                       std::int32_t startColIndex) override;
    TRow& AddRow() override { return FRows.AddRow(); }
    TRow& AddRow(std::span<const Extended> values) override;
    std::shared_ptr<INumberGrid> RemoveColumns(std::span<const String> colNames) override;
    std::shared_ptr<INumberGrid> SaveCsv(StringView fileName) override;
    std::shared_ptr<INumberGrid> Where(const TNumberGridValueCallback& func) override;
    std::shared_ptr<INumberGrid> Select(const TNumberGridSelectCallback& func) override;
    TFloatArray GetColumnAsFloatArray(std::int32_t index) override;
    std::optional<TFloatArray> GetColumnAsFloatArray(StringView name) override;

private:
    void RequireIntegers() const;

    TColumns FColumns;
    TRows FRows;  // reads the columns, so it is destroyed first
};

INumberGrid::~INumberGrid() = default;

TNumberGrid::TNumberGrid(INumberGrid& source, bool populateRows)
    : FColumns(source.GetColumns()), FRows(FColumns) {
    if (!populateRows) return;
    std::vector<const TRow*> rows;
    rows.reserve(static_cast<std::size_t>(std::max(source.GetCount(), 0)));
    for (std::int32_t i = 0; i < source.GetCount(); ++i) rows.push_back(&source.GetRow(i));
    FRows.AddRowsViaCopy(rows);
}

TRow& TNumberGrid::GetRow(std::int32_t index) {
    const std::int64_t missing = std::int64_t{index} + 1 - GetCount();
    if (missing > std::numeric_limits<std::int32_t>::max()) RaiseArrayLength(missing);
    if (missing > 0) FRows.AddRows(static_cast<std::int32_t>(missing));
    return FRows.GetItem(index);
}

void TNumberGrid::AddArrayToRow(std::span<const Extended> values, std::int32_t rowIndex,
                                std::int32_t startColIndex) {
    const std::int64_t count = FColumns.GetCount();
    const std::int64_t end = startColIndex + std::ssize(values);
    if (!values.empty() && startColIndex < 0) RaiseArrayIndex(startColIndex);
    if (!values.empty() && end > count) RaiseArrayIndex(std::max<std::int64_t>(startColIndex, count));
    TRow& row = GetRow(rowIndex);
    for (std::int32_t column = startColIndex; const Extended value : values) row.SetValue(column++, value);
}

TRow& TNumberGrid::AddRow(std::span<const Extended> values) {
    TRow& row = FRows.AddRow();
    row.SetValues(values);
    return row;
}

std::shared_ptr<INumberGrid> TNumberGrid::RemoveColumns(std::span<const String> colNames) {
    std::vector<std::int32_t> remaining;
    for (std::int32_t i = 0; i < FColumns.GetCount(); ++i) {
        if (!FColumns[i].NameIs(colNames)) remaining.push_back(i);
    }
    if (std::ssize(remaining) == FColumns.GetCount()) return shared_from_this();
    auto grid = std::make_shared<TNumberGrid>();
    if (remaining.empty()) return grid;
    for (const std::int32_t index : remaining) grid->FColumns.Add(FColumns[index]);
    TRows& rows = grid->FRows;
    rows.Append(FRows.FItems.size(), [&](std::size_t i) -> TRow& {
        return rows.FStore.emplace_back(grid->FColumns, FRows.FItems[i]->GetValuesAtIndexes(remaining),
                                        &rows.FMemory);
    });
    return grid;
}

void TNumberGrid::RequireIntegers() const {
    for (std::int32_t column = 0; column < FColumns.GetCount(); ++column) {
        if (FColumns[column].GetColumnType() != ctInt) continue;
        for (std::int32_t i = 0; i < GetCount(); ++i)
            static_cast<void>(FRows.GetItem(i).GetValueAsInt(column));
    }
}

std::shared_ptr<INumberGrid> TNumberGrid::SaveCsv(StringView fileName) {
    RequireIntegers();
    constexpr std::size_t kBufferSize = 1 << 16;
    TDraftFileStream file(fileName);
    TStreamWriter writer(file, TEncoding::Utf8(), kBufferSize);
    for (std::int32_t column = 0; column < FColumns.GetCount(); ++column) {
        writer.Write(FColumns[column].GetName() + u",");
    }
    writer.WriteLine();
    for (std::int32_t i = 0; i < GetCount(); ++i) {
        const TRow& row = FRows.GetItem(i);
        for (std::int32_t column = 0; column < FColumns.GetCount(); ++column) {
            writer.Write(row.GetValueAsString(column) + u",");
        }
        writer.WriteLine();
    }
    writer.Close();
    file.Commit();
    return shared_from_this();
}

std::shared_ptr<INumberGrid> TNumberGrid::Where(const TNumberGridValueCallback& func) {
    if (!func) throw EArgumentNilException(u"func");
    const std::shared_ptr<INumberGrid> self = shared_from_this();
    const std::int32_t count = GetCount();
    std::vector<const TRow*> found;
    for (std::int32_t index = 0; index < count; ++index) {
        const TRow& row = FRows.GetItem(index);
        if (func(self, row, index)) found.push_back(&row);
    }
    auto grid = std::make_shared<TNumberGrid>(*this, false);
    grid->FRows.AddRowsViaCopy(found);
    return grid;
}

std::shared_ptr<INumberGrid> TNumberGrid::Select(const TNumberGridSelectCallback& func) {
    if (!func) throw EArgumentNilException(u"func");
    const std::shared_ptr<INumberGrid> self = shared_from_this();
    const auto grid = std::make_shared<TNumberGrid>(*this, false);
    const std::shared_ptr<INumberGrid> target = grid;
    const std::int32_t count = GetCount();
    for (std::int32_t index = 0; index < count; ++index) {
        const TRow& row = FRows.GetItem(index);
        TRow& newRow = grid->FRows.FStore.emplace_back(grid->FColumns, row, &grid->FRows.FMemory);
        func(self, target, row, newRow, index);
        grid->FRows.Append(1, [&](std::size_t) -> TRow& { return newRow; });
    }
    return grid;
}

TFloatArray TNumberGrid::GetColumnAsFloatArray(std::int32_t index) {
    TFloatArray values(GetCount());
    values.SetBase(0);
    for (std::int32_t i = 0; i < GetCount(); ++i) {
        values.WriteFloat(i, static_cast<float>(FRows.GetItem(i).GetValue(index)));
    }
    return values;
}

std::optional<TFloatArray> TNumberGrid::GetColumnAsFloatArray(StringView name) {
    const std::int32_t index = FColumns.IndexOf(name);
    if (index < 0) return std::nullopt;
    return GetColumnAsFloatArray(index);
}

// --- The factory ---

std::shared_ptr<INumberGrid> TNumberGridFactory::GetObject() {
    return std::make_shared<TNumberGrid>();
}

std::shared_ptr<INumberGrid> TNumberGridFactory::GetObject(const std::shared_ptr<INumberGrid>& source,
                                                           bool populateRows) {
    if (source == nullptr) throw EArgumentNilException(u"source");
    return std::make_shared<TNumberGrid>(*source, populateRows);
}

}  // namespace Varnholt
