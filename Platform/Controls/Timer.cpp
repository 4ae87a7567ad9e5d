#include "Platform/Controls/Timer.h"

#include <algorithm>

#include "Platform/Controls/Application.h"

namespace Varnholt {

TTimer::TTimer() {
    Application().FTimers.push_back(this);
}

TTimer::~TTimer() {
    std::erase(Application().FTimers, this);
}

void TTimer::SetInterval(std::int32_t interval) {
    FInterval = interval;
    Restart();
}

void TTimer::SetEnabled(bool enabled) {
    FEnabled = enabled;
    Restart();
}

void TTimer::Restart() {
    FDueTime = std::chrono::steady_clock::now() + std::chrono::milliseconds(std::max(FInterval, 0));
}

void TTimer::Fire() {
    Restart();
    const TNotifyEvent onTimer = FOnTimer;
    onTimer(this);
}

}  // namespace Varnholt
