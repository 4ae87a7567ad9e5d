#pragma once

#include <span>
#include <vector>

#include "Platform/Controls/StringGrid.h"
#include "VarnholtLib/Data/vrnTableData.h"
#include "VarnholtLib/Numerics/vrnMissingValues.h"

/// The types of a grid's columns, and the order of its rows. Both are worked out from the cells that are not
/// missing; no cell is changed.
namespace Varnholt::Tool {

/// The type of a column in these rows: varInteger, varDouble or varString, as TStringGridInfo has them, without
/// the missing cells. A column of nothing else is varString.
[[nodiscard]] TVarType TypeOfColumn(const TStringGrid& grid, std::span<const std::int32_t> rows,
                                    std::int32_t column, const TMissingValues& missing);

/// The rows in the order of the keys, which TTableData::ExecuteSort works out. Rows whose cell is missing follow
/// all others, in either direction of the key.
[[nodiscard]] std::vector<std::int32_t> SortRows(const TStringGrid& grid, std::span<const std::int32_t> rows,
                                                 const TSortOperation& keys, const TMissingValues& missing);

}  // namespace Varnholt::Tool
