#pragma once

#include <vector>

#include "Tools/varnholt/TableSource.h"
#include "VarnholtLib/Data/vrnTableData.h"

/// The output of `varnholt table`. Cells and names are written with the text that the file has.
namespace Varnholt::Tool {

/// The rows and columns of a file to be shown, in this order.
struct TTableView {
    const TTableFile& File;
    std::vector<std::int32_t> Rows;
    std::vector<std::int32_t> Columns;
};

/// Prints the view on standard output with its columns aligned, numbers to the right and texts to the left,
/// below a line of the columns' names and one of their types. `types` belong to the view's columns.
void PrintTable(const TTableView& view, const std::vector<TVarType>& types);

/// Writes the view as a CSV file below a line of the columns' names.
void WriteTable(StringView path, const TTableView& view);

}  // namespace Varnholt::Tool
