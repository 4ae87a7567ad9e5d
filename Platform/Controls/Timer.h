#pragma once

#include <chrono>

#include "Platform/Controls/Component.h"

/// A timer that raises an event again and again while the application handles messages.
///
/// Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT TTimer : public TComponent {
public:
    TTimer();
    ~TTimer() override;

    /// Milliseconds between two events, 1000 at first. Setting it starts the wait anew. A timer of 0 or less never fires.
    [[nodiscard]] std::int32_t GetInterval() const noexcept { return FInterval; }
    void SetInterval(std::int32_t interval);
    /// False at first.
    [[nodiscard]] bool GetEnabled() const noexcept { return FEnabled; }
    void SetEnabled(bool enabled);
    [[nodiscard]] const TNotifyEvent& GetOnTimer() const noexcept { return FOnTimer; }
    void SetOnTimer(TNotifyEvent onTimer) { FOnTimer = std::move(onTimer); }

    /// When the timer fires next; nothing if it does not.
    using TTime = std::chrono::steady_clock::time_point;
    [[nodiscard]] bool IsRunning() const noexcept { return FEnabled && FInterval > 0; }
    [[nodiscard]] TTime GetDueTime() const noexcept { return FDueTime; }
    /// Raises OnTimer and starts the next wait.
    void Fire();

private:
    void Restart();

    TNotifyEvent FOnTimer;
    TTime FDueTime;
    std::int32_t FInterval = 1000;
    bool FEnabled = false;
};

}  // namespace Varnholt
