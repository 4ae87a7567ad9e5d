#include "Platform/System/LocalTime.h"

#include <ctime>

#include "Platform/System/LocalTimePrivate.h"

namespace Varnholt {

std::chrono::seconds ZoneOffset(std::chrono::sys_seconds time) {
    const std::time_t seconds = time.time_since_epoch().count();
    std::tm parts{};
    // Fails only where the year does not fit in an int.
    return std::chrono::seconds(localtime_r(&seconds, &parts) != nullptr ? parts.tm_gmtoff : 0);
}

TDateTime ToDateTime(std::chrono::system_clock::time_point time, std::chrono::seconds offset) {
    constexpr TDateTime kEpoch = 25569;  // 1 January 1970
    using TDays = std::chrono::duration<double, std::chrono::days::period>;
    const auto local = time + offset;
    const auto day = std::chrono::floor<std::chrono::days>(local);
    return JoinDateTime(kEpoch + TDays(day.time_since_epoch()).count(), TDays(local - day).count());
}

TDateTime ToUtcDateTime(std::chrono::system_clock::time_point time) {
    return ToDateTime(time, std::chrono::seconds(0));
}

TDateTime ToLocalDateTime(std::chrono::system_clock::time_point time) {
    return ToDateTime(time, ZoneOffset(std::chrono::floor<std::chrono::seconds>(time)));
}

}  // namespace Varnholt
