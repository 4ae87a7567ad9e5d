#pragma once

#include <span>
#include <vector>

#include "Tools/varnholt/TableSource.h"

/// Where the rows of `varnholt table` go. Values are written as Variant::ToText does.
namespace Varnholt::Tool {

/// What of a table is shown, in this order.
struct TTableView {
    std::span<const TTableDataRow* const> Rows;
    std::vector<std::int32_t> Columns;
};

/// Prints the view on standard output with its columns aligned, numbers to the right and texts to the left,
/// below a line of the columns' names and one of their types.
void PrintTable(const TColumnNames& names, const TTableData& table, const TTableView& view);

/// Writes the view as a CSV file below a line of the columns' names.
void WriteTable(StringView path, const TColumnNames& names, const TTableView& view);

}  // namespace Varnholt::Tool
