#include "VarnholtLib/UI/vrnWaitCursor.h"

#include "Platform/Controls/Application.h"

namespace Varnholt {
namespace {

constexpr std::int16_t kHourglass = -11;

constinit std::int32_t count = 0;
constinit std::int16_t kept = 0;

}  // namespace

void TWaitCursor::Wait() {
    if (count == 0) SetCursor(kHourglass);
    ++count;
}

void TWaitCursor::Restore() {
    if (count == 0) return;
    if (--count == 0) Screen().SetCursor(kept);
}

void TWaitCursor::Reset() {
    count = 0;
    Screen().SetCursor(kept);
}

void TWaitCursor::SetCursor(std::int16_t cur) {
    kept = Screen().GetCursor();
    Screen().SetCursor(cur);
}

std::int32_t TWaitCursor::GetCount() noexcept {
    return count;
}

std::int16_t TWaitCursor::GetCursor() noexcept {
    return kept;
}

}  // namespace Varnholt
