#pragma once

#include "Platform/Controls/Control.h"

/// Range and position of a scroll bar in one object, which scroll messages drive.
///
///     TScrollBarAssist rows(grid, sbVertical, 0, 99);
///     rows.SetOnChange([&](TScrollBarAssist&) { ScrollTo(rows.GetPosition()); });
///     ...
///     rows.HandleScrollMessage(message);
///
/// The position is the one asked for. It may be outside the range, while the bar is at the nearest end: after a
/// step beyond the end, a step back starts from there. Sums that leave 32 bits stay at the end of these.
///
/// The control is not owned. The assist must not be destroyed by its own OnChange. Once it is destroyed, only the
/// values here change.
///
/// Threads: main thread only.
namespace Varnholt {

class TScrollBarAssist;

using TScrollBarChange = TEvent<TScrollBarAssist&>;

class VARNHOLT_EXPORT TScrollBarAssist {
public:
    /// Does not change the control. `scrollBarType` is the bar, as sbVertical. The minimum may be above the maximum.
    TScrollBarAssist(TWinControl& control, std::uint32_t scrollBarType, std::int32_t min, std::int32_t max);
    TScrollBarAssist(const TScrollBarAssist&) = delete;
    TScrollBarAssist& operator=(const TScrollBarAssist&) = delete;

    /// The low 16 bits of the message are the scroll code: 0 and 1 a line up and down, 2 and 3 a page up and down,
    /// 4 the box was released and 5 it is being dragged (both read the position from the control), 6 to the
    /// minimum, 7 to the maximum. Others are ignored.
    void HandleScrollMessage(std::uint32_t message);

    /// 0 at first. Setting it moves the bar and raises OnChange, except within an OnChange of such a move.
    [[nodiscard]] std::int32_t GetPosition() const noexcept { return FPos; }
    void SetPosition(std::int32_t position);
    /// Setting a limit sends the range, in rising order, and raises OnChange, except within an OnChange of such a
    /// change. A position above the range becomes its maximum.
    [[nodiscard]] std::int32_t GetMin() const noexcept { return FMin; }
    void SetMin(std::int32_t min);
    [[nodiscard]] std::int32_t GetMax() const noexcept { return FMax; }
    void SetMax(std::int32_t max);
    /// The steps of a line and of a page; 1 and 5 at first.
    [[nodiscard]] std::int32_t GetLineChange() const noexcept { return FLineChange; }
    void SetLineChange(std::int32_t change) noexcept { FLineChange = change; }
    [[nodiscard]] std::int32_t GetPageChange() const noexcept { return FPageChange; }
    void SetPageChange(std::int32_t change) noexcept { FPageChange = change; }
    [[nodiscard]] const TScrollBarChange& GetOnChange() const noexcept { return FOnChange; }
    void SetOnChange(TScrollBarChange onChange) { FOnChange = std::move(onChange); }

private:
    void ChangeBy(std::int64_t delta);
    void UpdatePosition();
    void UpdateRange();
    void PushScrollInfo(const TScrollInfo& info);
    [[nodiscard]] TScrollInfo PullScrollInfo(std::uint32_t mask) const;

    TComponentRef<TWinControl> FControl;
    std::uint32_t FScrollBarType;
    std::int32_t FMin;
    std::int32_t FMax;
    std::int32_t FPos = 0;
    std::int32_t FLineChange = 1;
    std::int32_t FPageChange = 5;
    TScrollBarChange FOnChange;
    bool FInUpdateRange = false;
    bool FInUpdatePos = false;
};

}  // namespace Varnholt
