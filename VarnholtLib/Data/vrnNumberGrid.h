#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <memory>
#include <memory_resource>
#include <optional>
#include <span>
#include <vector>

#include "Platform/Runtime/Indexes.h"
#include "VarnholtBaseLib/Arrays.h"
#include "VarnholtLib/Data/vrnGrid.h"

/// A small table of numbers with named columns, and queries that return new tables.
///
///     const std::shared_ptr<INumberGrid> grid = TNumberGridFactory::GetObject();
///     grid->GetColumns().AddIntColumns(TStringArray{u"Year"});
///     grid->GetColumns().AddFloatColumns(TStringArray{u"Rain"});
///     grid->AddRow({1998, 712.4L});
///     grid->AddRow({1999, 655});
///     const auto wet = grid->Where([](const auto&, const TRow& row, std::int32_t) {
///         return row.GetValueByColName(u"Rain") > 700;
///     });
///     wet->SaveCsv(u"C:\\data\\wet.csv");    // Year,Rain,  and  1998,712.4,
///
/// Every value is one 80-bit float; a column's type decides only the text of its values. Positions of rows
/// and columns count from 0. Add the columns before the rows: a row has a place for each column that exists
/// when it is made. A column added later reads as its default value in the rows before it, until a value is
/// set there.
///
/// Columns and rows belong to their grid and are destroyed with it. References to them stay valid while
/// others are added; none is ever removed. A callback must not release the last reference to its grid.
///
/// Threads: no lock; a grid serves one thread at a time.
namespace Varnholt {

enum TColumnType : std::uint8_t {
    ctInt,    ///< the text of a value is a whole number
    ctFloat,  ///< the text of a value is the general float form
};

/// Whether a text equals one of the names, case included.
[[nodiscard]] VARNHOLT_EXPORT bool IsIn(StringView value, std::span<const String> names) noexcept;

/// A named column. Names need not be unique; a search finds the first.
class VARNHOLT_EXPORT TColumn {
public:
    TColumn(StringView name, TColumnType columnType, Extended defaultValue = 0);

    [[nodiscard]] const String& GetName() const noexcept { return FName; }
    [[nodiscard]] TColumnType GetColumnType() const noexcept { return FColumnType; }
    /// The value of this column in a new row.
    [[nodiscard]] Extended GetDefaultValue() const noexcept { return FDefaultValue; }

    /// Whether the name is this one, or one of these; case counts.
    [[nodiscard]] bool NameIs(StringView name) const noexcept { return FName == name; }
    [[nodiscard]] bool NameIs(std::span<const String> names) const noexcept { return IsIn(FName, names); }

private:
    String FName;
    TColumnType FColumnType;
    Extended FDefaultValue;
};

/// The columns of a grid, in order. A copy is deep.
class VARNHOLT_EXPORT TColumns {
public:
    TColumns() = default;
    TColumns(const TColumns& source) = default;
    TColumns& operator=(const TColumns&) = delete;

    [[nodiscard]] std::int32_t GetCount() const noexcept { return static_cast<std::int32_t>(FItems.size()); }
    /// The column at a position. EListError "List index out of bounds (INDEX)".
    [[nodiscard]] const TColumn& GetItem(std::int32_t index) const;
    [[nodiscard]] const TColumn& operator[](std::int32_t index) const { return GetItem(index); }

    /// Appends a column, which may have a default value other than 0. Returns the one in the list.
    const TColumn& Add(TColumn column);
    /// Appends a new column with the default value 0.
    const TColumn& AddColumn(StringView name, TColumnType columnType);
    /// Appends a column for each name, in order; returns them.
    std::vector<const TColumn*> AddIntColumns(std::span<const String> names);
    std::vector<const TColumn*> AddFloatColumns(std::span<const String> names);

    /// First position of a column of that name, case included; -1 if there is none.
    [[nodiscard]] std::int32_t IndexOf(StringView colName) const noexcept;
    [[nodiscard]] bool Contains(StringView colName) const noexcept { return IndexOf(colName) >= 0; }
    [[nodiscard]] TStringArray ToColumnNameArray() const;

private:
    std::vector<const TColumn*> AddColumns(std::span<const String> names, TColumnType columnType);

    std::deque<TColumn> FItems;  // columns keep their place when others are added
};

/// A row of values. It reads its column list, which must outlive it: do not use a row of a grid after the
/// grid has been destroyed.
///
/// A position outside the columns raises ERangeError "Array index out of bounds (INDEX)", an unknown name
/// a plain Exception `The column "NAME" is not present in the data set`. Nothing is changed then.
class VARNHOLT_EXPORT TRow {
public:
    using TMemory = std::pmr::memory_resource;

    /// A row of the columns' default values. The values are allocated from `memory`, which must outlive the
    /// row.
    explicit TRow(const TColumns& columns, TMemory* memory = std::pmr::get_default_resource());
    /// The same, then the values of `source` by position, as many as both have.
    TRow(const TColumns& columns, const TRow& source, TMemory* memory = std::pmr::get_default_resource());
    /// The same as SetValues on a new row.
    TRow(const TColumns& columns, std::span<const Extended> values,
         TMemory* memory = std::pmr::get_default_resource());
    TRow(const TRow&) = delete;
    TRow& operator=(const TRow&) = delete;

    /// Number of columns.
    [[nodiscard]] std::int32_t GetCount() const noexcept { return FColumns->GetCount(); }
    /// Type of the column at a position. EListError "List index out of bounds (INDEX)".
    [[nodiscard]] TColumnType GetColumnType(std::int32_t index) const {
        return FColumns->GetItem(index).GetColumnType();
    }

    [[nodiscard]] Extended GetValue(std::int32_t index) const {
        return IsIndex(index, FValues.size()) ? FValues[static_cast<std::size_t>(index)]
                                              : DefaultValue(index);
    }
    [[nodiscard]] Extended operator[](std::int32_t index) const { return GetValue(index); }
    void SetValue(std::int32_t index, Extended value) {
        if (!IsIndex(index, FValues.size())) Widen(index);
        FValues[static_cast<std::size_t>(index)] = value;
    }
    /// The value in the first column of a name. Each call searches the columns; in a loop over rows, look up
    /// the position before the loop.
    [[nodiscard]] Extended GetValueByColName(StringView colName) const;
    void SetValueByColName(StringView colName, Extended value);
    /// The value rounded to the nearest integer, a tie to the even one. ERangeError "VALUE does not fit in a
    /// 32-bit integer", for a NaN too.
    [[nodiscard]] std::int32_t GetValueAsInt(std::int32_t index) const;
    /// ctFloat: the text of FloatToStr, with the decimal separator of FormatSettings(). ctInt: the digits of
    /// GetValueAsInt, with its error.
    [[nodiscard]] String GetValueAsString(std::int32_t index) const;
    /// The values at those positions, in their order.
    [[nodiscard]] std::vector<Extended> GetValuesAtIndexes(std::span<const std::int32_t> indexes) const;
    /// Sets all values. Exception "Number of values does not match number of columns".
    void SetValues(std::span<const Extended> values);

private:
    [[nodiscard]] Extended DefaultValue(std::int32_t index) const;
    void AddDefaults();
    void Widen(std::int32_t index);

    const TColumns* FColumns;            // not owned
    std::pmr::vector<Extended> FValues;  // may be shorter than the columns: some were added after the row
};

/// Rows in order, for the columns that must outlive them. The list owns its rows and releases their memory
/// when it is destroyed.
///
/// ERangeError, with nothing changed: "Array length out of range (COUNT)" beyond 2147483647 rows, "Out of
/// memory for COUNT rows" if allocation fails.
class VARNHOLT_EXPORT TRows {
public:
    explicit TRows(const TColumns& columns) : FColumns(&columns) {}
    /// Copies each row of `source`.
    TRows(const TColumns& columns, const TRows& source);
    TRows(const TRows&) = delete;
    TRows& operator=(const TRows&) = delete;

    [[nodiscard]] std::int32_t GetCount() const noexcept { return static_cast<std::int32_t>(FItems.size()); }
    /// The row at a position. EListError "List index out of bounds (INDEX)".
    [[nodiscard]] TRow& GetItem(std::int32_t index) { return *FItems[ListIndex(index, FItems.size())]; }
    [[nodiscard]] const TRow& GetItem(std::int32_t index) const {
        return *FItems[ListIndex(index, FItems.size())];
    }

    /// Appends a row of default values; `count` of them, 0 or more.
    TRow& AddRow();
    void AddRows(std::int32_t count);
    /// Appends a copy of each row, bound to this list's columns; rows of this list may be among them.
    /// EArgumentNilException "rows" if one is missing.
    void AddRowsViaCopy(std::span<const TRow* const> rows);

private:
    friend class TNumberGrid;
    template <typename TMake>
    void Append(std::size_t count, TMake make);

    const TColumns* FColumns;                     // not owned
    std::pmr::monotonic_buffer_resource FMemory;  // of rows and values, released with the list
    std::pmr::deque<TRow> FStore{&FMemory};       // rows keep their place when others are added
    std::vector<TRow*> FItems;                    // the rows of the list, in order
};

class INumberGrid;

/// Returns whether a row belongs to the result: takes the grid, the row and its index.
using TNumberGridValueCallback =
    std::function<bool(const std::shared_ptr<INumberGrid>& grid, const TRow& row, std::int32_t index)>;

/// Changes a row of the result: takes the source grid, the new grid, the source row, the new row and the
/// index.
using TNumberGridSelectCallback =
    std::function<void(const std::shared_ptr<INumberGrid>& source, const std::shared_ptr<INumberGrid>& target,
                       const TRow& sourceRow, TRow& newRow, std::int32_t index)>;

class VARNHOLT_EXPORT INumberGrid {
public:
    virtual ~INumberGrid();
    INumberGrid(const INumberGrid&) = delete;
    INumberGrid& operator=(const INumberGrid&) = delete;

    /// The grid's columns, to define and to read.
    [[nodiscard]] virtual TColumns& GetColumns() = 0;
    /// Number of rows.
    [[nodiscard]] virtual std::int32_t GetCount() const = 0;
    /// The row at a position. One beyond the last row appends rows of default values up to it; if allocation
    /// fails, none is appended and the ERangeError of TRows is raised. A negative position raises
    /// EListError "List index out of bounds (INDEX)".
    virtual TRow& GetRow(std::int32_t index) = 0;
    /// Sets the values from a column, in the row that GetRow returns. A position outside the columns raises
    /// ERangeError "Array index out of bounds (INDEX)" with the first such position; no row is made then and
    /// no value set.
    virtual void AddArrayToRow(std::span<const Extended> values, std::int32_t rowIndex,
                               std::int32_t startColIndex) = 0;
    /// Appends a row of default values.
    virtual TRow& AddRow() = 0;
    /// Appends a row, then TRow::SetValues. If that raises, the row stays with its default values.
    virtual TRow& AddRow(std::span<const Extended> values) = 0;
    TRow& AddRow(std::initializer_list<Extended> values) {
        return AddRow(std::span(values.begin(), values.size()));
    }
    /// A new grid with the columns whose names are not among these, case included, and their values; with no
    /// columns and no rows if none is left. This same grid if no column is removed.
    [[nodiscard]] virtual std::shared_ptr<INumberGrid> RemoveColumns(std::span<const String> colNames) = 0;
    /// Writes a line of column names, then a line of GetValueAsString for each row. Each name and value is
    /// followed by a comma, the last one too; nothing is quoted, so that a decimal comma looks like a
    /// separator. UTF-8 without a byte-order mark, lines ended by CR LF; an existing file is replaced. Values
    /// of ctInt columns that do not fit in a 32-bit integer raise ERangeError before the file is opened;
    /// raises EFCreateError and EWriteError as TDraftFileStream does. Returns this grid.
    virtual std::shared_ptr<INumberGrid> SaveCsv(StringView fileName) = 0;
    /// A new grid with copies of the columns and of the rows for which `func` returns true. It is called for
    /// the rows that exist at the start, in order; they are copied after the last call.
    /// EArgumentNilException "func" for an empty callback.
    [[nodiscard]] virtual std::shared_ptr<INumberGrid> Where(const TNumberGridValueCallback& func) = 0;
    /// A new grid with copies of the columns and, for each row in order, a copy that `func` may change. The
    /// copy is added to the new grid after `func` has returned; until then that grid holds the rows of the
    /// earlier calls. It is called for the rows that exist at the start. EArgumentNilException "func".
    [[nodiscard]] virtual std::shared_ptr<INumberGrid> Select(const TNumberGridSelectCallback& func) = 0;
    /// The values of a column narrowed to 32 bits, one for each row, with base 0: row 0 at index 0. A grid
    /// without rows raises EGridException "Can't create a float array with a dimension less than 1", a
    /// position outside the columns ERangeError "Array index out of bounds (INDEX)".
    [[nodiscard]] virtual TFloatArray GetColumnAsFloatArray(std::int32_t index) = 0;
    /// The same for the first column of a name; nothing if there is none.
    [[nodiscard]] virtual std::optional<TFloatArray> GetColumnAsFloatArray(StringView name) = 0;

protected:
    INumberGrid() = default;
};

class VARNHOLT_EXPORT TNumberGridFactory {
public:
    TNumberGridFactory() = delete;

    /// A new grid without columns.
    [[nodiscard]] static std::shared_ptr<INumberGrid> GetObject();
    /// A new grid with copies of the columns of `source` and, with `populateRows`, of its rows.
    /// EArgumentNilException "source".
    [[nodiscard]] static std::shared_ptr<INumberGrid> GetObject(const std::shared_ptr<INumberGrid>& source,
                                                                bool populateRows);
};

}  // namespace Varnholt
