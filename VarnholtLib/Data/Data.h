#pragma once

/// The data containers in one header: arrays, grids, tables, lists, ranges.
///
/// For applications. Code of the library includes the headers that it uses.
#include "VarnholtLib/Data/vrnAbstractGrid.h"
#include "VarnholtLib/Data/vrnBasedArray.h"
#include "VarnholtLib/Data/vrnDoubleArrayUtils.h"
#include "VarnholtLib/Data/vrnFloatArray.h"
#include "VarnholtLib/Data/vrnFloatGrid.h"
#include "VarnholtLib/Data/vrnFloatSort.h"
#include "VarnholtLib/Data/vrnGrid.h"
#include "VarnholtLib/Data/vrnGridException.h"
#include "VarnholtLib/Data/vrnIntArray.h"
#include "VarnholtLib/Data/vrnList.h"
#include "VarnholtLib/Data/vrnListBodies.h"
#include "VarnholtLib/Data/vrnListInterfaces.h"
#include "VarnholtLib/Data/vrnNotifyEventList.h"
#include "VarnholtLib/Data/vrnNumberGrid.h"
#include "VarnholtLib/Data/vrnRangeParser.h"
#include "VarnholtLib/Data/vrnSmartArray.h"
#include "VarnholtLib/Data/vrnStringGridInfo.h"
#include "VarnholtLib/Data/vrnTableData.h"
