#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "Platform/Runtime/Guid.h"
#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/Variant.h"
#include "VarnholtBaseLib/Arrays.h"
#include "VarnholtLib/Data/vrnList.h"

/// A table of variants with typed, named columns, rows that have an identity, and a sort by several columns.
///
///     const TVarType types[] = {varString, varDouble};
///     const String names[] = {u"Station", u"Rain"};
///     TTableData table(types, names);
///     TTableDataRow& row = table.AddRow();
///     row.SetField(0, u"Aarhus");
///     row.SetField(1, u"12.5");                 // converted: the cell holds the float 12.5
///     TSortOperation byRain;
///     byRain.Add(1, false);                     // the greatest first
///     byRain.Add(0, true);
///     table.ExecuteSort(byRain);
///     for (const TTableDataRow* each : table.GetSorted()) Show(each->ToString());
///
/// The sort builds a second view of the rows and does not change their stored order. Rows, columns and sort
/// keys count from 0.
///
/// Ownership: the table owns its rows, and the sorted view refers to them. Each row points at its table, so a
/// table cannot be copied or moved. RelinquishOwnership transfers the rows to the caller.
///
/// Memory: a cell is one variant of 24 bytes, beside the storage of its text, which cells share where one was
/// copied from the other. A row takes about 100 bytes more: its object with the identity, its places in
/// the lists, and the overhead of two blocks. A table of ten columns so takes about 34 bytes for a
/// number.
///
/// Callbacks must not delete their table. Threads: no lock; one thread at a time.
namespace Varnholt {

class TStringGrid;
class TTableData;
class TTableDataRow;

/// One key of a sort.
struct TSortField {
    std::int32_t ColumnIndex = 0;
    bool OrderAscending = true;
};

/// The keys of a sort, the most significant one first.
class VARNHOLT_EXPORT TSortOperation {
public:
    /// Appends a key. Raises Exception "Unable to sort the same column multiple times" if there is one for
    /// that column.
    void Add(std::int32_t columnIndex, bool orderAscending);
    /// The key for that column, or none.
    [[nodiscard]] std::optional<TSortField> GetOperationForColumnIndex(std::int32_t columnIndex) const;

    [[nodiscard]] std::int32_t GetCount() const noexcept { return static_cast<std::int32_t>(FFields.size()); }
    /// A position outside the list raises EListError "List index out of bounds (INDEX)".
    [[nodiscard]] const TSortField& operator[](std::int32_t index) const;

private:
    std::vector<TSortField> FFields;
};

/// Compares two rows: below 0, 0 or above 0 if the first belongs before, beside or after the second.
using TSortCallback = std::function<std::int32_t(const TTableDataRow&, const TTableDataRow&)>;

/// The callback as a comparer.
class VARNHOLT_EXPORT TTableDataComparer {
public:
    /// Raises EArgumentNilException "sortCallback" for an empty callback.
    explicit TTableDataComparer(TSortCallback sortCallback);

    [[nodiscard]] std::int32_t Compare(const TTableDataRow& left, const TTableDataRow& right) const {
        return FSortCallback(left, right);
    }

private:
    TSortCallback FSortCallback;
};

/// One row: a value for each column of its table, and an identity.
///
/// A column outside the row raises ERangeError "Array index out of bounds (INDEX)" in every operation here.
/// A value that does not convert raises EVariantError, and the cell keeps what it holds.
class VARNHOLT_EXPORT TTableDataRow {
public:
    /// Empty values under a new identity. The row belongs to the caller, and the table does not list it; the
    /// table must live as long as SetField, Fill and SetFloat are called. Raises EArgumentNilException
    /// "tableData" for a missing table.
    explicit TTableDataRow(const TTableData* tableData);
    /// The identity and the values of `source`, unconverted. Raises likewise, and EArgumentException "Source
    /// row has another number of values than the table has columns".
    TTableDataRow(const TTableData* tableData, const TTableDataRow& source);
    TTableDataRow(const TTableDataRow&) = delete;
    TTableDataRow& operator=(const TTableDataRow&) = delete;

    [[nodiscard]] const TGuid& GetRowID() const noexcept { return FRowID; }
    /// The number of columns.
    [[nodiscard]] std::int32_t GetFieldCount() const noexcept {
        return static_cast<std::int32_t>(FValues.size());
    }

    [[nodiscard]] Variant GetField(std::int32_t index) const { return FValues[Checked(index)]; }
    /// Stores the value, converted to the type of the column unless it has that type.
    void SetField(std::int32_t index, const Variant& value);
    /// SetField for each column, in order; values beyond the columns are ignored. Raises EArgumentException
    /// "Fill needs one value for each column", with nothing stored. If a value does not convert, those before
    /// it are stored.
    void Fill(std::span<const Variant> values);

    /// The value as a 32-bit float: Variant::ToDouble, then to the nearest.
    [[nodiscard]] float GetFloat(std::int32_t index) const;
    void SetFloat(std::int32_t index, float value) { SetField(index, value); }

    /// The value converted to a 64-bit float, to a 32-bit float by way of it, or to a 32-bit integer.
    [[nodiscard]] double FieldAsFloat(std::int32_t columnIndex) const;
    [[nodiscard]] float FieldAsSingle(std::int32_t columnIndex) const;
    [[nodiscard]] std::int32_t FieldAsInteger(std::int32_t columnIndex) const;
    /// A float as a 32-bit float with three decimals and the separator of FormatSettings(), any other value
    /// by Variant::ToText.
    [[nodiscard]] String FieldAsString(std::int32_t columnIndex) const;

    /// Copies of `count` values from a column on; the two are the same. A negative count raises ERangeError
    /// "Array length out of range (COUNT)".
    [[nodiscard]] TVariantArray GetFields(std::int32_t startIndex, std::int32_t count) const;
    [[nodiscard]] TVariantArray FieldRange(std::int32_t startIndex, std::int32_t count) const;
    /// The same values as 32-bit floats.
    [[nodiscard]] TSingleArray FloatRange(std::int32_t startIndex, std::int32_t count) const;
    /// A new list of all values.
    [[nodiscard]] TNewList<Variant> ToList() const;
    /// All values without a copy. The view is valid as long as the row lives.
    [[nodiscard]] std::span<const Variant> GetValues() const noexcept { return FValues; }

    /// FieldAsString of each column, with one blank between: "2 1.500".
    [[nodiscard]] String ToString() const;

private:
    TTableDataRow(const TTableData* tableData, const TGuid& rowID);
    [[nodiscard]] std::size_t Checked(std::int32_t index) const;

    std::vector<Variant> FValues;  // not a TVariantArray: it is not shared, and takes a block less
    TGuid FRowID;
    const TTableData* FTableData;
};

/// The rows of a table, in an order. The rows themselves are owned by the table, or by whoever took them over
/// by RelinquishOwnership; only the table changes the list.
class VARNHOLT_EXPORT TTableDataRows {
public:
    TTableDataRows(const TTableDataRows&) = delete;
    TTableDataRows& operator=(const TTableDataRows&) = delete;

    [[nodiscard]] std::int32_t GetCount() const noexcept { return static_cast<std::int32_t>(FRows.size()); }
    /// A position outside the list raises EListError "List index out of bounds (INDEX)".
    [[nodiscard]] TTableDataRow& operator[](std::int32_t index) {
        return *FRows[ListIndex(index, FRows.size())];
    }
    [[nodiscard]] const TTableDataRow& operator[](std::int32_t index) const {
        return *FRows[ListIndex(index, FRows.size())];
    }

    [[nodiscard]] const TTableDataRow* const* begin() const noexcept { return FRows.data(); }
    [[nodiscard]] const TTableDataRow* const* end() const noexcept { return FRows.data() + FRows.size(); }

private:
    friend class TTableData;
    TTableDataRows() = default;

    std::vector<TTableDataRow*> FRows;
};

class VARNHOLT_EXPORT TTableData {
public:
    /// A table without rows. The types are codes of the variant type; the columns are named Col0, Col1 and so
    /// on.
    explicit TTableData(std::span<const TVarType> columnTypes);
    /// The same with names. Raises Exception "Array length of column types does not match array length of
    /// column names in TableData()".
    TTableData(std::span<const TVarType> columnTypes, std::span<const String> columnNames);
    /// The types and names of another table, and copies of its rows under their identities; no sorted view.
    /// Raises EArgumentException "Source cannot be null".
    explicit TTableData(const TTableData* source);
    TTableData(const TTableData&) = delete;
    TTableData& operator=(const TTableData&) = delete;

    /// A table of what a grid holds from its first data row on. The columns, fixed ones included, get the
    /// types that TStringGridInfo finds and the names Col0, Col1 and so on. Raises Exception "Grid object
    /// cannot be NULL".
    [[nodiscard]] static std::unique_ptr<TTableData> FromStringGrid(const TStringGrid* grid);

    /// Appends a row of empty values under a new identity. It is not in the sorted view before the next
    /// ExecuteSort.
    TTableDataRow& AddRow();

    /// The row at a position of the stored order. Raises EListError "List index out of bounds (INDEX)".
    [[nodiscard]] TTableDataRow& GetItem(std::int32_t index) { return FData[index]; }
    [[nodiscard]] const TTableDataRow& GetItem(std::int32_t index) const { return FData[index]; }
    /// The rows in their stored order.
    [[nodiscard]] TTableDataRows& GetData() noexcept { return FData; }
    [[nodiscard]] const TTableDataRows& GetData() const noexcept { return FData; }
    /// The rows in the order of the last ExecuteSort; none before the first one.
    [[nodiscard]] TTableDataRows& GetSorted() noexcept { return FSorted; }
    [[nodiscard]] const TTableDataRows& GetSorted() const noexcept { return FSorted; }

    [[nodiscard]] std::int32_t GetCount() const noexcept { return FData.GetCount(); }
    [[nodiscard]] std::int32_t GetNumOfColumns() const noexcept {
        return static_cast<std::int32_t>(FColumnTypes.size());
    }
    /// The name and the type of a column. Raise ERangeError "Array index out of bounds (INDEX)".
    [[nodiscard]] const String& GetColName(std::int32_t index) const;
    [[nodiscard]] TVarType GetColType(std::int32_t index) const;
    /// A new list of all names.
    [[nodiscard]] TNewList<String> GetColumnNames() const;
    /// A column's value from every row, in stored order. Raises Exception "Invalid column index".
    [[nodiscard]] TVariantArray GetColumnValues(std::int32_t colIndex) const;

    /// Builds the sorted view: the rows in stored order, sorted by the first key as TSmartArray::Sort does;
    /// then each run of equal values by the next key, and so on. A descending order is the ascending one read
    /// backwards. The sort is not stable: rows that are equal on all keys are in an order that only
    /// these steps define.
    ///
    /// With fewer than two rows there is nothing to sort, and the keys are not checked. Otherwise raises
    /// EListError "List index out of bounds (0)" without keys, and ERangeError "Column index out of range
    /// (INDEX)" for a key outside the table. The sorted view is in stored order then, and also if
    /// allocation fails.
    void ExecuteSort(const TSortOperation& sortOp);

    /// Sorts the stored order itself; the sorted view is unchanged. The order of rows that compare equal is
    /// unspecified, and a callback that contradicts itself gives some order of the same rows. If the callback
    /// raises, the order is unchanged. If it adds a row or sorts this table, that is kept, and the sort
    /// raises EInvalidOperation "The table changed while it was sorted". Raises EArgumentNilException
    /// "sortCallback" for an empty callback.
    void Sort(const TSortCallback& sortCallback);

    /// Hands the rows over, in stored order; they survive the table. The table still lists them, so read its
    /// rows and sort only while they live. They still point at the table, which must live as long as
    /// SetField, SetFloat and Fill are called. A second call returns only the rows that were added since.
    [[nodiscard]] std::vector<std::unique_ptr<TTableDataRow>> RelinquishOwnership();

    /// Writes the ToString of each row of the sorted view or of the stored order, one per line. Lines end in
    /// CR LF; the text is in the platform's default 8-bit encoding and the file is replaced as a whole.
    /// Raises what WriteFileInOneGo raises.
    void Dump(StringView fileName, bool useSortedData) const;

private:
    TTableDataRow& Add(std::unique_ptr<TTableDataRow> row);

    std::vector<TVarType> FColumnTypes;
    std::vector<String> FColumnNames;
    std::vector<std::unique_ptr<TTableDataRow>> FOwners;  // for each row of FData, null once handed over
    TTableDataRows FData;
    TTableDataRows FSorted;
};

}  // namespace Varnholt
