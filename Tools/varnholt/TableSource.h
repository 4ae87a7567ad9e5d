#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "Platform/Controls/StringGrid.h"
#include "Tools/varnholt/CsvFile.h"
#include "VarnholtLib/Data/vrnTableData.h"

/// The input of `varnholt table`: the file as a grid, and the rows and columns that the command line names.
namespace Varnholt::Tool {

/// A whole file. The grid has one fixed row, the header, so that row 1 of the data is row 1 of the grid.
struct TTableFile {
    String Name;  // for messages
    TCsvFormat Format;
    std::unique_ptr<TStringGrid> Grid;
};

/// Reads the file. Raises what TCsvInput raises, and EConvertError with the line for a row that has another
/// number of cells than the header.
[[nodiscard]] TTableFile ReadTable(StringView path, const TEncoding& encoding);

/// The row numbers of ranges such as "1 - 5, 8", in the order of the text. Raises EArgumentException for
/// any other text, "No rows are given" for an empty one, and ERangeError for a row that the file does not have.
[[nodiscard]] std::vector<std::int32_t> ReadRowNumbers(StringView text, const TTableFile& file);

/// The names of a table's columns, and lists of them as the command line gives them. Names compare exactly,
/// and of equal ones the first counts. In a list, names with commas between, the longest part that is a name
/// is taken, so a name may hold commas itself. The time is linear in the length of the list. An unknown name
/// raises what FailColumn does.
class TColumnNames {
public:
    /// The file must outlive this object.
    explicit TColumnNames(const TTableFile& file);
    TColumnNames(const TColumnNames&) = delete;
    TColumnNames& operator=(const TColumnNames&) = delete;

    [[nodiscard]] std::vector<std::int32_t> AllColumns() const;
    /// The columns of a list, in its order.
    [[nodiscard]] std::vector<std::int32_t> ReadColumns(StringView list) const;
    /// The sort keys of a list; ":desc" after a name reverses the order, unless it is part of the name.
    /// Raises what TSortOperation::Add raises, too.
    [[nodiscard]] TSortOperation ReadSortKeys(StringView list) const;

private:
    enum TListKind : std::uint8_t { lkColumns, lkSortKeys };
    struct TEntry {
        std::int32_t Column;
        bool IsAscending;
    };

    [[nodiscard]] std::vector<TEntry> ReadList(StringView list, TListKind kind) const;
    [[nodiscard]] bool TryReadEntry(StringView text, TListKind kind, TEntry& entry) const;
    [[nodiscard]] std::size_t ReadLongestEntry(StringView list, TListKind kind, TEntry& entry) const;

    const TTableFile& FFile;
    std::unordered_map<StringView, std::int32_t> FColumns;  // views of the grid's header
    std::vector<std::size_t> FLengths;  // of entries whose name holds a comma, the greatest first
};

}  // namespace Varnholt::Tool
