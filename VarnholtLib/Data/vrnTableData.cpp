#include "VarnholtLib/Data/vrnTableData.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "Platform/Runtime/Encoding.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "VarnholtLib/Data/vrnSafeSortPrivate.h"
#include "VarnholtLib/Data/vrnStringGridInfo.h"
#include "VarnholtLib/Data/vrnTableSortPrivate.h"

namespace Varnholt {
namespace {

std::vector<String> DefaultNames(std::size_t count) {
    std::vector<String> names;
    names.reserve(count);
    for (std::size_t i = 0; i < count; ++i) names.push_back(Format(u"Col%d", {i}));
    return names;
}

const TTableData& CheckedSource(const TTableData* source) {
    if (source == nullptr) throw EArgumentException(u"Source cannot be null");
    return *source;
}

std::size_t ColumnCount(const TTableData* tableData) {
    if (tableData == nullptr) throw EArgumentNilException(u"tableData");
    return static_cast<std::size_t>(tableData->GetNumOfColumns());
}

/// The index of an array element as a position. Raises ERangeError "Array index out of bounds (INDEX)".
std::size_t ArrayIndex(std::int32_t index, std::size_t count) {
    if (!IsIndex(index, count)) RaiseArrayIndex(index);
    return static_cast<std::size_t>(index);
}

}  // namespace

// --- TSortOperation ---

void TSortOperation::Add(std::int32_t columnIndex, bool orderAscending) {
    if (GetOperationForColumnIndex(columnIndex)) {
        throw Exception(u"Unable to sort the same column multiple times");
    }
    FFields.push_back({columnIndex, orderAscending});
}

std::optional<TSortField> TSortOperation::GetOperationForColumnIndex(std::int32_t columnIndex) const {
    const auto found = std::ranges::find(FFields, columnIndex, &TSortField::ColumnIndex);
    if (found == FFields.end()) return std::nullopt;
    return *found;
}

const TSortField& TSortOperation::operator[](std::int32_t index) const {
    return FFields[ListIndex(index, FFields.size())];
}

// --- TTableDataComparer ---

TTableDataComparer::TTableDataComparer(TSortCallback sortCallback) : FSortCallback(std::move(sortCallback)) {
    if (!FSortCallback) throw EArgumentNilException(u"sortCallback");
}

// --- TTableDataRow ---

TTableDataRow::TTableDataRow(const TTableData* tableData, const TGuid& rowID)
    : FValues(ColumnCount(tableData)), FRowID(rowID), FTableData(tableData) {}

TTableDataRow::TTableDataRow(const TTableData* tableData) : TTableDataRow(tableData, CreateGuid()) {}

TTableDataRow::TTableDataRow(const TTableData* tableData, const TTableDataRow& source)
    : TTableDataRow(tableData, source.FRowID) {
    if (source.FValues.size() != FValues.size()) {
        throw EArgumentException(u"Source row has another number of values than the table has columns");
    }
    FValues = source.FValues;
}

std::size_t TTableDataRow::Checked(std::int32_t index) const {
    return ArrayIndex(index, FValues.size());
}

void TTableDataRow::SetField(std::int32_t index, const Variant& value) {
    Variant& cell = FValues[Checked(index)];
    const TVarType type = FTableData->GetColType(index);
    if (value.GetType() == type) {
        cell = value;
    } else {
        cell = value.ConvertTo(type);
    }
}

void TTableDataRow::Fill(std::span<const Variant> values) {
    if (values.size() < FValues.size()) throw EArgumentException(u"Fill needs one value for each column");
    for (std::int32_t i = 0; i < GetFieldCount(); ++i) SetField(i, values[static_cast<std::size_t>(i)]);
}

float TTableDataRow::GetFloat(std::int32_t index) const {
    return FieldAsSingle(index);
}

double TTableDataRow::FieldAsFloat(std::int32_t columnIndex) const {
    return FValues[Checked(columnIndex)].ToDouble();
}

float TTableDataRow::FieldAsSingle(std::int32_t columnIndex) const {
    return static_cast<float>(FieldAsFloat(columnIndex));
}

std::int32_t TTableDataRow::FieldAsInteger(std::int32_t columnIndex) const {
    return FValues[Checked(columnIndex)].ToInt32();
}

String TTableDataRow::FieldAsString(std::int32_t columnIndex) const {
    const Variant& value = FValues[Checked(columnIndex)];
    const TVarType type = value.GetType();
    if (type != varDouble && type != varSingle) return value.ToText();
    return Format(u"%.3f", {FieldAsSingle(columnIndex)});
}

TVariantArray TTableDataRow::GetFields(std::int32_t startIndex, std::int32_t count) const {
    if (count < 0) RaiseArrayLength(count);
    if (count == 0) return {};
    const std::size_t first = Checked(startIndex);
    const auto size = static_cast<std::size_t>(count);
    if (size > FValues.size() - first) RaiseArrayIndex(GetFieldCount());
    return TVariantArray(GetValues().subspan(first, size));
}

TVariantArray TTableDataRow::FieldRange(std::int32_t startIndex, std::int32_t count) const {
    return GetFields(startIndex, count);
}

TSingleArray TTableDataRow::FloatRange(std::int32_t startIndex, std::int32_t count) const {
    return ToSingleArray(GetFields(startIndex, count));
}

TNewList<Variant> TTableDataRow::ToList() const {
    return TInterfacedList<Variant>::CreateFromArray(FValues);
}

String TTableDataRow::ToString() const {
    String text;
    for (std::int32_t i = 0; i < GetFieldCount(); ++i) {
        if (i > 0) text += u' ';
        text += FieldAsString(i);
    }
    return text;
}

// --- TTableData ---

TTableData::TTableData(std::span<const TVarType> columnTypes)
    : TTableData(columnTypes, DefaultNames(columnTypes.size())) {}

TTableData::TTableData(std::span<const TVarType> columnTypes, std::span<const String> columnNames)
    : FColumnTypes(columnTypes.begin(), columnTypes.end()),
      FColumnNames(columnNames.begin(), columnNames.end()) {
    if (FColumnTypes.size() != FColumnNames.size()) {
        throw Exception(
            u"Array length of column types does not match array length of column names in TableData()");
    }
}

TTableData::TTableData(const TTableData* source)
    : TTableData(CheckedSource(source).FColumnTypes, CheckedSource(source).FColumnNames) {
    for (const TTableDataRow* const row : source->FData) {
        Add(std::make_unique<TTableDataRow>(this, *row));
    }
}

std::unique_ptr<TTableData> TTableData::FromStringGrid(const TStringGrid* grid) {
    const TStringGridInfo info(grid);
    std::vector<TVarType> types;
    info.GetColumnTypesAsArray(types);
    auto table = std::make_unique<TTableData>(types);
    TVariantArray values;
    for (std::int32_t row = info.GetFirstDataRow(); row < info.GetNumRows(); ++row) {
        info.GetRowDataAsArray(row, values);
        table->AddRow().Fill(values);
    }
    return table;
}

TTableDataRow& TTableData::AddRow() {
    return Add(std::make_unique<TTableDataRow>(this));
}

TTableDataRow& TTableData::Add(std::unique_ptr<TTableDataRow> row) {
    FData.FRows.push_back(row.get());
    try {
        FOwners.push_back(std::move(row));
    } catch (...) {
        FData.FRows.pop_back();
        throw;
    }
    return *FData.FRows.back();
}

const String& TTableData::GetColName(std::int32_t index) const {
    return FColumnNames[ArrayIndex(index, FColumnNames.size())];
}

TVarType TTableData::GetColType(std::int32_t index) const {
    return FColumnTypes[ArrayIndex(index, FColumnTypes.size())];
}

TNewList<String> TTableData::GetColumnNames() const {
    return TInterfacedList<String>::CreateFromArray(FColumnNames);
}

TVariantArray TTableData::GetColumnValues(std::int32_t colIndex) const {
    if (!IsIndex(colIndex, FColumnTypes.size())) throw Exception(u"Invalid column index");
    const auto position = static_cast<std::size_t>(colIndex);
    std::vector<Variant> values;
    values.reserve(FData.FRows.size());
    for (const TTableDataRow* const row : FData) values.push_back(row->GetValues()[position]);
    return TVariantArray(std::move(values));
}

void TTableData::ExecuteSort(const TSortOperation& sortOp) {
    FSorted.FRows = FData.FRows;
    if (GetCount() < 2) return;
    if (sortOp.GetCount() == 0) throw EListError::IndexOutOfBounds(0);
    for (std::int32_t k = 0; k < sortOp.GetCount(); ++k) {
        const std::int32_t column = sortOp[k].ColumnIndex;
        if (!IsIndex(column, FColumnTypes.size())) {
            throw ERangeError(Format(u"Column index out of range (%d)", {column}));
        }
    }
    SortRowsByKeys(FSorted.FRows, sortOp);
}

void TTableData::Sort(const TSortCallback& sortCallback) {
    const TTableDataComparer comparer(sortCallback);
    const std::vector<TTableDataRow*> before = FData.FRows;
    const std::vector<std::uint32_t> order =
        SortedPositions(before.size(), [&](std::uint32_t left, std::uint32_t right) {
            return comparer.Compare(*before[left], *before[right]) < 0;
        });
    if (FData.FRows != before) throw EInvalidOperation(u"The table changed while it was sorted");
    std::vector<std::unique_ptr<TTableDataRow>> owners;
    owners.reserve(order.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        FData.FRows[i] = before[order[i]];
        owners.push_back(std::move(FOwners[order[i]]));
    }
    FOwners = std::move(owners);
}

std::vector<std::unique_ptr<TTableDataRow>> TTableData::RelinquishOwnership() {
    std::vector<std::unique_ptr<TTableDataRow>> rows;
    rows.reserve(FOwners.size());
    for (std::unique_ptr<TTableDataRow>& owner : FOwners) {
        if (owner != nullptr) rows.push_back(std::move(owner));
    }
    return rows;
}

void TTableData::Dump(StringView fileName, bool useSortedData) const {
    String text;
    for (const TTableDataRow* const row : useSortedData ? FSorted : FData) {
        text += row->ToString();
        text += u"\r\n";
    }
    WriteFileInOneGo(fileName, TEncoding::Default().GetBytes(text));
}

}  // namespace Varnholt
