#pragma once

#include "Platform/Controls/Form.h"
#include "Platform/Controls/Labels.h"
#include "Platform/Controls/Timer.h"

/// Bringing another window to the top after a short wait, as a second instance of a program does with the first.
///
///     if (!TSwitchToHelper::Execute(handle)) Report(u"The program runs already");
///
/// Threads: main thread only.
namespace Varnholt {

/// A panel with a text that brings the window to the top 500 ms after it was shown, and closes.
class VARNHOLT_EXPORT TSwitchToHelper : public TForm {
public:
    /// Makes this the form of SwitchToHelper.
    explicit TSwitchToHelper(std::uintptr_t switchToHandle);
    ~TSwitchToHelper() override;

    /// Shows the form, waits for it, and returns whether the window is at the top. Raises as ShowModal.
    [[nodiscard]] static bool Execute(std::uintptr_t switchToHandle);

    /// Whether the window was brought to the top.
    [[nodiscard]] bool GetSwitchResult() const noexcept { return FSwitchResult; }
    [[nodiscard]] TTimer& GetSwitchTimer() noexcept { return FSwitchTimer; }

protected:
    void DoShow() override;

private:
    void SwitchTimerTimer();

    TTimer FSwitchTimer;
    std::uintptr_t FSwitchToHandle;
    bool FSwitchResult = false;
};

/// The form made last, while it exists; otherwise null.
[[nodiscard]] VARNHOLT_EXPORT TSwitchToHelper* SwitchToHelper() noexcept;

}  // namespace Varnholt
