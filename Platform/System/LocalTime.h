#pragma once

#include <chrono>

#include "Platform/Runtime/DateTime.h"
#include "Platform/Runtime/Export.h"

/// Points in time as date-times, of the user's time zone or in UTC.
///
///     const TDateTime modified = ToLocalDateTime(time);
///
/// Threads: may be called on any thread.
namespace Varnholt {

/// The date-time in the time zone of the process ($TZ, else /etc/localtime), with the offset that the zone has at
/// that time.
[[nodiscard]] VARNHOLT_EXPORT TDateTime ToLocalDateTime(std::chrono::system_clock::time_point time);

/// The date-time in UTC.
[[nodiscard]] VARNHOLT_EXPORT TDateTime ToUtcDateTime(std::chrono::system_clock::time_point time);

}  // namespace Varnholt
