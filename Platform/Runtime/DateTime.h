#pragma once

#include "Platform/Runtime/Types.h"

/// Dates and times as numbers.
namespace Varnholt {

/// Days since 30 December 1899, 0:00, in the proleptic Gregorian calendar; the fraction is the time of day.
using TDateTime = double;

}  // namespace Varnholt
