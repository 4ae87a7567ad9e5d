#pragma once

#include <vector>

#include "VarnholtLib/Data/vrnTableData.h"

namespace Varnholt {

/// Puts the rows in the order told at TTableData::ExecuteSort. There is at least one key, and every key is a column
/// of the rows. When memory is short (std::bad_alloc), the order stays.
void SortRowsByKeys(std::vector<TTableDataRow*>& rows, const TSortOperation& keys);

}  // namespace Varnholt
