#include "VarnholtLib/Data/vrnNumberGrid.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include "Platform/Runtime/DraftFile.h"
#include "Platform/Runtime/FloatMath.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/TextStreams.h"

namespace Varnholt {
namespace {

std::int32_t RequiredColumn(const TColumns& columns, StringView colName) {
    const std::int32_t index = columns.IndexOf(colName);
    if (index >= 0) return index;
    throw Exception(u"The column \"" + String(colName) + u"\" is not present in the data set");
}

ERangeError OutOfMemory(std::size_t count) {
    return ERangeError(u"Out of memory for " + IntToStr(static_cast<std::int64_t>(count)) + u" rows");
}

}  // namespace

bool IsIn(StringView value, std::span<const String> names) noexcept {
    return std::ranges::find(names, value) != names.end();
}

// ---- columns ----

TColumn::TColumn(StringView name, TColumnType columnType, Extended defaultValue)
    : FName(name), FColumnType(columnType), FDefaultValue(defaultValue) {}

const TColumn& TColumns::GetItem(std::int32_t index) const {
    const auto position = static_cast<std::size_t>(index);  // a negative index becomes a huge position
    if (position >= FItems.size()) throw EListError::IndexOutOfBounds(index);
    return FItems[position];
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

// ---- one row ----

TRow::TRow(const TColumns& columns) : FColumns(&columns) {
    TakePlace(static_cast<std::size_t>(GetCount()));
    FillDefaults();
}

TRow::TRow(const TColumns& columns, const TRow& source) : FColumns(&columns) {
    TakePlace(static_cast<std::size_t>(GetCount()));
    Fill(source);
}

TRow::TRow(const TColumns& columns, std::span<const Extended> values) : TRow(columns) {
    SetValues(values);
}

TRow::TRow(TRow&& other) noexcept
    : FColumns(other.FColumns),
      FOwned(std::move(other.FOwned)),
      FValues(std::exchange(other.FValues, std::span<Extended>())) {}

/// A place of the row's own, which starts with the values of the old one.
void TRow::TakePlace(std::size_t count) {
    auto place = std::make_unique_for_overwrite<Extended[]>(count);
    std::ranges::copy(FValues, place.get());
    FOwned = std::move(place);
    FValues = {FOwned.get(), count};
}

void TRow::FillDefaults(std::size_t from) noexcept {
    for (std::size_t i = from; i < FValues.size(); ++i) {
        FValues[i] = FColumns->GetItem(static_cast<std::int32_t>(i)).GetDefaultValue();
    }
}

void TRow::Fill(const TRow& source) noexcept {
    const std::size_t count = std::min(FValues.size(), static_cast<std::size_t>(source.GetCount()));
    const std::size_t held = std::min(count, source.FValues.size());
    std::copy_n(source.FValues.begin(), held, FValues.begin());
    for (std::size_t i = held; i < count; ++i) FValues[i] = source.GetValue(static_cast<std::int32_t>(i));
    FillDefaults(count);
}

void TRow::RequireColumn(std::int32_t index) const {
    if (index < 0 || index >= GetCount()) RaiseArrayIndex(index);
}

Extended TRow::ValueWithoutPlace(std::int32_t index) const {
    RequireColumn(index);
    return FColumns->GetItem(index).GetDefaultValue();
}

/// Makes places for the columns that were added after the row.
void TRow::Widen(std::int32_t index) {
    RequireColumn(index);
    const std::size_t held = FValues.size();
    TakePlace(static_cast<std::size_t>(GetCount()));
    FillDefaults(held);
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
    const auto count = static_cast<std::size_t>(GetCount());
    if (values.size() != count) throw Exception(u"Number of values does not match number of columns");
    if (FValues.size() < count) TakePlace(count);
    std::ranges::copy(values, FValues.begin());
}

// ---- rows ----

TRows::TRows(const TColumns& columns, const TRows& source) : TRows(columns) {
    AddRowsViaCopy(source.FItems);
}

std::size_t TRows::CheckedPosition(std::int32_t index) const {
    const auto position = static_cast<std::size_t>(index);
    if (position >= FItems.size()) throw EListError::IndexOutOfBounds(index);
    return position;
}

TRow& TRows::AddRow() {
    AddRows(1);
    return *FItems.back();
}

void TRows::AddRows(std::int32_t count) {
    if (count < 0) RaiseArrayLength(count);
    Reserve(static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; ++i) {
        TRow& row = NewRow();
        row.FillDefaults();
        FItems.push_back(&row);
    }
}

void TRows::AddRowsViaCopy(std::span<const TRow* const> rows) {
    if (std::ranges::find(rows, nullptr) != rows.end()) throw EArgumentNilException(u"rows");
    Reserve(rows.size());
    for (const TRow* source : rows) {
        TRow& row = NewRow();
        row.Fill(*source);
        FItems.push_back(&row);
    }
}

/// Gets all the memory that as many further rows take, or raises.
void TRows::Reserve(std::size_t count) {
    if (count > Room()) AddBlock(count);
    if (count > FItems.capacity() - FItems.size()) ReserveItems(count);
}

/// Rows that can be made in the last block.
std::size_t TRows::Room() const noexcept {
    if (FBlocks.empty()) return 0;
    const TBlock& block = FBlocks.back();
    const bool isFit = block.Width == static_cast<std::size_t>(FColumns->GetCount());
    return isFit ? block.Rows.capacity() - block.Rows.size() : 0;
}

void TRows::ReserveItems(std::size_t count) {
    const std::size_t total = CheckedTotal(count);
    try {
        FItems.reserve(std::max(total, 2 * FItems.capacity()));
    } catch (const std::bad_alloc&) {
        throw OutOfMemory(total);
    }
}

std::size_t TRows::CheckedTotal(std::size_t count) const {
    const std::size_t total = FItems.size() + count;
    if (total > std::numeric_limits<std::int32_t>::max()) RaiseArrayLength(static_cast<std::int64_t>(total));
    return total;
}

/// Blocks grow with the list: a small one wastes little, a large one is made of few.
void TRows::AddBlock(std::size_t count) {
    constexpr std::size_t kSmallest = 16, kLargest = 4096;
    const std::size_t total = CheckedTotal(count);
    const std::size_t capacity = std::max(count, std::clamp(FItems.size(), kSmallest, kLargest));
    const auto width = static_cast<std::size_t>(FColumns->GetCount());
    try {
        TBlock block;
        block.Rows.reserve(capacity);
        block.Values = std::make_unique_for_overwrite<Extended[]>(block.Rows.capacity() * width);
        block.Width = width;
        FBlocks.push_back(std::move(block));
    } catch (const std::bad_alloc&) {
        throw OutOfMemory(total);
    }
}

/// A row that does not stand in the list yet, in memory that Reserve got. Its values are not set.
TRow& TRows::NewRow() noexcept {
    TBlock& block = FBlocks.back();
    const std::span<Extended> place(block.Values.get() + block.Rows.size() * block.Width, block.Width);
    block.Rows.push_back(TRow(place, *FColumns));
    return block.Rows.back();
}

/// A copy of a row that does not stand in the list yet.
TRow& TRows::NewCopy(const TRow& source) {
    Reserve(1);
    TRow& row = NewRow();
    row.Fill(source);
    return row;
}

void TRows::Append(TRow& row) {
    if (FItems.size() == FItems.capacity())
        ReserveItems(1);  // the list may have grown since the row was made
    FItems.push_back(&row);
}

// ---- the grid ----

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
    TRows FRows;  // reads the columns and goes before them
};

INumberGrid::~INumberGrid() = default;

TNumberGrid::TNumberGrid(INumberGrid& source, bool populateRows)
    : FColumns(source.GetColumns()), FRows(FColumns) {
    if (!populateRows) return;
    std::vector<const TRow*> rows;
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
    grid->FRows.Reserve(static_cast<std::size_t>(GetCount()));
    for (std::int32_t i = 0; i < GetCount(); ++i) grid->AddRow(GetRow(i).GetValuesAtIndexes(remaining));
    return grid;
}

void TNumberGrid::RequireIntegers() const {
    for (std::int32_t column = 0; column < FColumns.GetCount(); ++column) {
        if (FColumns[column].GetColumnType() != ctInt) continue;
        for (std::int32_t i = 0; i < GetCount(); ++i) (void)FRows.GetItem(i).GetValueAsInt(column);
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
    grid->FRows.Reserve(static_cast<std::size_t>(count));
    for (std::int32_t index = 0; index < count; ++index) {
        const TRow& row = FRows.GetItem(index);
        TRow& newRow = grid->FRows.NewCopy(row);
        func(self, target, row, newRow, index);
        grid->FRows.Append(newRow);
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

// ---- the factory ----

std::shared_ptr<INumberGrid> TNumberGridFactory::GetObject() {
    return std::make_shared<TNumberGrid>();
}

std::shared_ptr<INumberGrid> TNumberGridFactory::GetObject(const std::shared_ptr<INumberGrid>& source,
                                                           bool populateRows) {
    if (source == nullptr) throw EArgumentNilException(u"source");
    return std::make_shared<TNumberGrid>(*source, populateRows);
}

}  // namespace Varnholt
