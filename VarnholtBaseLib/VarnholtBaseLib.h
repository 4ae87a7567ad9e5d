#pragma once

/// The base library in one header: shared arrays, months, CSV reader.
///
/// For applications. Code of the library includes the headers that it uses.
#include "VarnholtBaseLib/Arrays.h"
#include "VarnholtBaseLib/Ascii.h"
#include "VarnholtBaseLib/CsvReader.h"
#include "VarnholtBaseLib/Extremes.h"
#include "VarnholtBaseLib/Months.h"
#include "VarnholtBaseLib/XmlUtils.h"
