#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "Platform/Controls/StringGrid.h"
#include "VarnholtLib/Data/vrnTableData.h"
#include "VarnholtLib/Numerics/vrnMissingValues.h"

/// The rows of a station's file: typed columns, an order, a filter and computed columns.
///
///     const std::unique_ptr<TStationTable> table = TStationTable::Load(u"C:\\data\\seattle.csv");
///     table->Sort({{1, false}, {0, true}});
///     table->SetFilter(u"@gt($temp_max,25)");
///     for (std::int32_t i = 0; i < table->GetRowCount(); ++i) Show(table->GetText(0, i));
///
/// Cells are kept as they were read. Rows that are shown count from 0, columns too.
namespace Varnholt::Station {

enum TColumnType : std::uint8_t { ctText, ctNumber, ctDate };

class TStationTable {
public:
    /// Reads a CSV file with a header, in UTF-8 or UTF-16. Raises what opening and reading raise, Exception
    /// `"%s" is empty`, and EConvertError `"%s", line %d: The row has %d cells, the header has %d` for a longer row; a
    /// shorter one is filled up with empty cells.
    [[nodiscard]] static std::unique_ptr<TStationTable> Load(StringView path);
    /// The same from a text; the name is for messages.
    [[nodiscard]] static std::unique_ptr<TStationTable> FromText(StringView text, StringView name);

    // --- Columns ---

    [[nodiscard]] std::int32_t GetColumnCount() const noexcept {
        return static_cast<std::int32_t>(FColumns.size());
    }
    [[nodiscard]] const String& GetName(std::int32_t column) const { return ColumnAt(column).Name; }
    /// What all cells are that are not missing; dates are YYYY-MM-DD.
    [[nodiscard]] TColumnType GetType(std::int32_t column) const { return ColumnAt(column).Type; }
    /// The column of that exact name, -1 if there is none.
    [[nodiscard]] std::int32_t FindColumn(StringView name) const;
    /// Appends a column with the value of an expression in each row, empty where it has none. EArgumentException
    /// `There is a column "%s" already`, `The column needs a name`, and what TRowExpression raises.
    void AddComputed(StringView name, StringView expression);
    /// Whether that was called since the table was read or saved.
    [[nodiscard]] bool IsChanged() const noexcept { return FIsChanged; }

    // --- Rows ---

    /// The rows that are shown, and all.
    [[nodiscard]] std::int32_t GetRowCount() const noexcept {
        return static_cast<std::int32_t>(FShown.size());
    }
    [[nodiscard]] std::int32_t GetAllRowCount() const noexcept { return FRowCount; }
    /// A cell of a row that is shown. EListError outside the table, here and below.
    [[nodiscard]] StringView GetText(std::int32_t column, std::int32_t row) const;
    /// Its number, or the days of its date since 30 December 1899; none for a missing or other value.
    [[nodiscard]] std::optional<double> GetNumber(std::int32_t column, std::int32_t row) const;
    /// The number in a row of the file.
    [[nodiscard]] std::optional<double> GetFileNumber(std::int32_t column, std::int32_t fileRow) const;

    /// Sorts the rows by the keys, the first one above all; without keys they return to the order of the file. Rows
    /// that are equal keep the order of the file, and missing values follow all others in either direction.
    void Sort(std::vector<TSortField> keys);
    [[nodiscard]] const std::vector<TSortField>& GetSortKeys() const noexcept { return FKeys; }
    /// Shows only the rows in which an expression is other than 0; all for an empty one. Raises what TRowExpression
    /// raises, and then leaves the filter as it was.
    void SetFilter(StringView expression);
    [[nodiscard]] const String& GetFilter() const noexcept { return FFilter; }

    /// The cells of some rows as CSV with a header. With all rows it is the file with its computed columns, as it is
    /// shown.
    [[nodiscard]] String ToCsv(const TGridRect& cells) const;
    [[nodiscard]] String ToCsv() const { return ToCsv({0, 0, GetColumnCount() - 1, GetRowCount() - 1}); }
    void SetIsSaved() noexcept { FIsChanged = false; }

private:
    struct TColumn {
        String Name = {};
        TColumnType Type = ctText;
        std::vector<double> Numbers = {};   // of each row of the file; NaN for none
        std::vector<String> Computed = {};  // the texts of a computed column
    };

    TStationTable() = default;
    [[nodiscard]] const TColumn& ColumnAt(std::int32_t column) const;
    [[nodiscard]] std::int32_t FileRow(std::int32_t row) const;
    [[nodiscard]] StringView FileText(std::int32_t column, std::int32_t fileRow) const;
    void FindTypes();
    void Arrange(const std::vector<std::int32_t>& rows, std::vector<TSortField> keys);
    [[nodiscard]] std::vector<std::int32_t> RowsOf(StringView filter) const;

    std::unique_ptr<TStringGrid> FCells;  // of the file, without its header
    std::int32_t FRowCount = 0;
    std::vector<TColumn> FColumns;
    std::vector<std::int32_t> FShown;  // rows of the file, in the order in which they are shown
    std::vector<TSortField> FKeys;
    String FFilter;
    bool FIsChanged = false;
};

}  // namespace Varnholt::Station
