#pragma once

/// The numeric containers of the library: single-precision arrays and grids with a settable first index.
///
///     TFloatArray rain(12);                     // indices 1 to 12
///     rain.WriteFloat(1, 48.5F);
///     rain.SetBase(0);                          // the same cells, indices 0 to 11
///
///     TFloatGrid stations(3, 2);                // 3 columns, 2 rows
///     stations.Put(2, 1, 7.25F);                // column 2, row 1
///
/// This header includes the whole family: TFloatArray, TIntArray, TAbstractGrid, TFloatGrid, EGridException.
///
/// Threads: no class takes a lock; one thread at a time uses an object.
#include "VarnholtLib/Data/vrnAbstractGrid.h"
#include "VarnholtLib/Data/vrnFloatArray.h"
#include "VarnholtLib/Data/vrnFloatGrid.h"
#include "VarnholtLib/Data/vrnGridException.h"
#include "VarnholtLib/Data/vrnIntArray.h"
