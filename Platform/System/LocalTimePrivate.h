#pragma once

#include "Platform/System/LocalTime.h"

namespace Varnholt {

/// The offset from UTC of the user's time zone at that time.
[[nodiscard]] std::chrono::seconds ZoneOffset(std::chrono::sys_seconds time);

/// The date-time of a time in a zone of that offset.
[[nodiscard]] TDateTime ToDateTime(std::chrono::system_clock::time_point time, std::chrono::seconds offset);

}  // namespace Varnholt
