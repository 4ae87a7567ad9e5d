#pragma once

#include <vector>

#include "VarnholtLib/Data/vrnTableData.h"

namespace Varnholt {

/// Puts the rows in the order described at TTableData::ExecuteSort. There must be at least one key, and every
/// key must be a column of the rows. If allocation fails (std::bad_alloc), the order is unchanged.
void SortRowsByKeys(std::vector<TTableDataRow*>& rows, const TSortOperation& keys);

}  // namespace Varnholt
