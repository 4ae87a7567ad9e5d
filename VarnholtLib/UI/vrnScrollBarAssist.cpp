#include "VarnholtLib/UI/vrnScrollBarAssist.h"

#include <algorithm>

#include "Platform/Runtime/FlagScope.h"

namespace Varnholt {
TScrollBarAssist::TScrollBarAssist(TWinControl& control, std::uint32_t scrollBarType, std::int32_t min,
                                   std::int32_t max)
    : FControl(&control), FScrollBarType(scrollBarType), FMin(min), FMax(max) {}

void TScrollBarAssist::HandleScrollMessage(std::uint32_t message) {
    const std::int64_t line = FLineChange, page = FPageChange;
    switch (message & 0xFFFF) {
        case 0:
            return ChangeBy(-line);
        case 1:
            return ChangeBy(line);
        case 2:
            return ChangeBy(-page);
        case 3:
            return ChangeBy(page);
        case 4:
            return SetPosition(PullScrollInfo(kScrollPosition).Position);
        case 5:
            return SetPosition(PullScrollInfo(kScrollTrackPosition).TrackPosition);
        case 6:
            return SetPosition(FMin);
        case 7:
            return SetPosition(FMax);
        default:
            return;
    }
}

void TScrollBarAssist::ChangeBy(std::int64_t delta) {
    SetPosition(static_cast<std::int32_t>(std::clamp<std::int64_t>(FPos + delta, INT32_MIN, INT32_MAX)));
}

void TScrollBarAssist::SetPosition(std::int32_t position) {
    FPos = position;
    UpdatePosition();
}

void TScrollBarAssist::SetMin(std::int32_t min) {
    FMin = min;
    UpdateRange();
}

void TScrollBarAssist::SetMax(std::int32_t max) {
    FMax = max;
    UpdateRange();
}

void TScrollBarAssist::UpdatePosition() {
    if (FInUpdatePos) return;
    const TFlagScope scope(FInUpdatePos);
    TScrollInfo info;
    info.Mask = kScrollPosition;
    info.Position = std::min(FMax, std::max(FPos, FMin));
    PushScrollInfo(info);
}

void TScrollBarAssist::UpdateRange() {
    if (FInUpdateRange) return;
    const TFlagScope scope(FInUpdateRange);
    TScrollInfo info;
    info.Mask = kScrollRange;
    info.Min = std::min(FMin, FMax);
    info.Max = std::max(FMin, FMax);
    if (FPos > info.Max) {
        FPos = info.Max;
        info.Mask |= kScrollPosition;
        info.Position = FPos;
    }
    PushScrollInfo(info);
}

void TScrollBarAssist::PushScrollInfo(const TScrollInfo& info) {
    if (TWinControl* const control = FControl.Get()) control->SetScrollInfo(FScrollBarType, info, true);
    const TScrollBarChange onChange = FOnChange;
    onChange(*this);
}

TScrollInfo TScrollBarAssist::PullScrollInfo(std::uint32_t mask) const {
    TScrollInfo info;
    info.Mask = mask;
    if (const TWinControl* const control = FControl.Get()) control->GetScrollInfo(FScrollBarType, info);
    return info;
}

}  // namespace Varnholt
