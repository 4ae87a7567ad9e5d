#include "Platform/Controls/Control.h"

#include <algorithm>
#include <atomic>

#include "Platform/Controls/Application.h"
#include "Platform/Drawing/Canvas.h"
#include "Platform/Runtime/FlagScope.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Immortal.h"
#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/MainThread.h"

namespace Varnholt {
namespace {

constexpr std::size_t kMaxDepth = 1000;

std::shared_ptr<IControlBackend>& Backend() {
    static TImmortal<std::shared_ptr<IControlBackend>> backend;
    return *backend;
}

std::int32_t Clamped(std::int64_t value) noexcept {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
}

}  // namespace

IControlBackend* ControlBackend() noexcept {
    return Backend().get();
}

void SetControlBackend(std::shared_ptr<IControlBackend> backend) {
    SetWakeMainThread(backend == nullptr ? std::function<void()>() : [backend] { backend->Wake(); });
    Backend() = std::move(backend);
}

// --- TControl ---

TControl::TControl() = default;

TControl::~TControl() = default;

TCustomForm* TControl::GetParentForm() noexcept {
    TControl* root = this;
    while (root->FParent != nullptr) root = root->FParent;
    return dynamic_cast<TCustomForm*>(root);
}

void TControl::SetBounds(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) {
    const TSize former{FWidth, FHeight};
    const TPoint formerPlace{FLeft, FTop};
    FLeft = left;
    FTop = top;
    FWidth = std::max(width, 0);
    FHeight = std::max(height, 0);
    const bool isResized = former != TSize{FWidth, FHeight};
    if (!isResized && formerPlace == TPoint{FLeft, FTop}) return;
    Changed(caBounds);
    if (isResized) Resized(former);
    if (FParent != nullptr && FAlign != alNone) FParent->AlignControls();
}

void TControl::SetAlign(TAlign align) {
    FAlign = align;
    if (FParent != nullptr) FParent->AlignControls();
}

void TControl::SetEnabled(bool enabled) {
    if (FEnabled == enabled) return;
    FEnabled = enabled;
    Changed(caState);
    if (TCustomForm* const form = GetParentForm(); form != nullptr && !enabled) form->LeaveUnusable();
}

void TControl::SetVisible(bool visible) {
    if (FVisible == visible) return;
    FVisible = visible;
    Changed(caState);
    if (FParent != nullptr) FParent->AlignControls();
    if (TCustomForm* const form = GetParentForm(); form != nullptr && !visible) form->LeaveUnusable();
}

bool TControl::IsUsable() noexcept {
    TCustomForm* const form = GetParentForm();
    if (form == nullptr || Screen().IsBlocked(*form)) return false;
    for (const TControl* control = this; control != nullptr; control = control->FParent)
        if (!control->FEnabled || !control->FVisible) return false;
    return true;
}

void TControl::SetColor(TColor color) {
    FColor = color;
    Changed(caLook);
}

void TControl::SetFont(const TFont& font) {
    FFont = font;
    Changed(caLook);
}

void TControl::SetHint(StringView hint) {
    FHint = hint;
    Changed(caLook);
}

void TControl::Click() {
    const TNotifyEvent onClick = FOnClick;
    onClick(this);
}

bool TControl::ClickByUser() {
    if (!IsUsable()) return false;
    Click();
    return true;
}

void TControl::Repaint() {
    Changed(caRepaint);
}

void TControl::PaintTo(TCanvas& canvas, std::int32_t x, std::int32_t y) {
    if (FPeer)
        FPeer->PaintTo(canvas, x, y);
    else
        Paint(canvas, x, y);
}

TRect TControl::AreaAt(std::int32_t x, std::int32_t y) const noexcept {
    return {x, y, Clamped(std::int64_t{x} + FWidth), Clamped(std::int64_t{y} + FHeight)};
}

void TControl::Paint(TCanvas& canvas, std::int32_t x, std::int32_t y) {
    canvas.SetBrush({.Color = FColor});
    canvas.FillRect(AreaAt(x, y));
    canvas.SetFont(FFont);
    canvas.TextOut(x, y, GetPaintedText());
}

void TWinControl::Paint(TCanvas& canvas, std::int32_t x, std::int32_t y) {
    TControl::Paint(canvas, x, y);
    for (const std::unique_ptr<TControl>& child : FControls)
        if (child->GetVisible())
            child->PaintTo(canvas, Clamped(std::int64_t{x} + child->GetLeft()),
                           Clamped(std::int64_t{y} + child->GetTop()));
}

TPoint TControl::GetClientOrigin() {
    if (FPeer) return FPeer->GetClientOrigin();
    if (FParent == nullptr) return {FLeft, FTop};
    const TPoint parent = FParent->GetClientOrigin();
    return {Clamped(std::int64_t{parent.X} + FLeft), Clamped(std::int64_t{parent.Y} + FTop)};
}

void TControl::Changed(TControlAspect aspect) {
    if (FPeer) FPeer->Update(aspect);
}

void TControl::Resized(TSize) {}

void TControl::CreatePeers() {
    if (!FPeer && ControlBackend() != nullptr) FPeer = ControlBackend()->CreatePeer(*this);
}

void TControl::FreePeers() noexcept {
    FPeer.reset();
}

// --- TWinControl: children ---

TWinControl::TWinControl() {
    static std::atomic<std::uintptr_t> last{0};
    FHandle = ++last;
}

TWinControl::~TWinControl() {
    while (!FControls.empty()) {
        const std::unique_ptr<TControl> child = std::move(FControls.back());
        FControls.pop_back();
        child->FParent = nullptr;
    }
}

void TWinControl::InsertControl(std::unique_ptr<TControl> child) {
    if (child == nullptr) throw EArgumentNilException(u"child");
    if (dynamic_cast<TCustomForm*>(child.get()) != nullptr)
        throw EInvalidOperation(u"A form cannot be placed in a control");
    std::size_t depth = 1;
    for (const TWinControl* at = this; at != nullptr; at = at->GetParent()) ++depth;
    if (depth > kMaxDepth) throw EInvalidOperation(u"Controls are nested more than 1000 levels deep");
    TControl& inserted = *child;
    FControls.push_back(std::move(child));
    inserted.FParent = this;
    if (GetPeer() != nullptr) inserted.CreatePeers();
    AlignControls();
    ControlsChanged();
}

std::unique_ptr<TControl> TWinControl::Remove(TControl& child) {
    const auto found = std::ranges::find(FControls, &child, &std::unique_ptr<TControl>::get);
    if (found == FControls.end())
        throw EInvalidOperation(Format(u"Control \"%s\" has no child \"%s\"", {GetName(), child.GetName()}));
    if (TCustomForm* const form = GetParentForm()) form->ForgetFocusIn(child);
    std::unique_ptr<TControl> removed = std::move(*found);
    FControls.erase(found);
    removed->FreePeers();
    removed->FParent = nullptr;
    AlignControls();
    ControlsChanged();
    return removed;
}

std::int32_t TWinControl::GetControlCount() const noexcept {
    return static_cast<std::int32_t>(FControls.size());
}

TControl& TWinControl::GetControl(std::int32_t index) const {
    return *FControls[ListIndex(index, FControls.size())];
}

TControl* TWinControl::FindControl(StringView name) const noexcept {
    for (const std::unique_ptr<TControl>& child : FControls) {
        if (child->GetName() == name) return child.get();
        const auto* const inner = dynamic_cast<const TWinControl*>(child.get());
        TControl* const found = inner == nullptr ? nullptr : inner->FindControl(name);
        if (found != nullptr) return found;
    }
    return nullptr;
}

bool TWinControl::IsAbove(const TControl& control) const noexcept {
    const TControl* at = &control;
    while (at != nullptr && at != this) at = at->GetParent();
    return at == this;
}

void TWinControl::CreatePeers() {
    TControl::CreatePeers();
    if (GetPeer() == nullptr) return;
    for (const std::unique_ptr<TControl>& child : FControls) child->CreatePeers();
    AlignControls();
}

void TWinControl::FreePeers() noexcept {
    for (const std::unique_ptr<TControl>& child : FControls) child->FreePeers();
    TControl::FreePeers();
}

// --- TWinControl: layout ---

void TWinControl::Resized(TSize former) {
    for (const std::unique_ptr<TControl>& child : FControls) FollowAnchors(*child, former);
    AlignControls();
}

void TWinControl::FollowAnchors(TControl& child, TSize former) {
    if (child.FAlign != alNone) return;
    const auto grow = [](std::int32_t& value, std::int64_t change) { value = Clamped(value + change); };
    const TAnchors anchors = child.FAnchors;
    std::int32_t left = child.FLeft, top = child.FTop, width = child.FWidth, height = child.FHeight;
    if (anchors.Contains(akRight))
        grow(anchors.Contains(akLeft) ? width : left, std::int64_t{GetWidth()} - former.Width);
    if (anchors.Contains(akBottom))
        grow(anchors.Contains(akTop) ? height : top, std::int64_t{GetHeight()} - former.Height);
    child.SetBounds(left, top, width, height);
}

void TWinControl::AlignControls() {
    if (FAligning) return;
    const TFlagScope scope(FAligning);
    const TSize client = GetClientSize();
    TRect rest{0, 0, client.Width, client.Height};
    for (const TAlign align : {alTop, alBottom, alLeft, alRight, alClient}) {
        for (const std::unique_ptr<TControl>& child : FControls) {
            if (child->FAlign != align || !child->FVisible) continue;
            const std::int32_t width = rest.Right - rest.Left, height = rest.Bottom - rest.Top;
            if (align == alTop) {
                child->SetBounds(rest.Left, rest.Top, width, child->FHeight);
                rest.Top = std::min(rest.Top + std::min(child->FHeight, height), rest.Bottom);
            } else if (align == alBottom) {
                rest.Bottom -= std::min(child->FHeight, height);
                child->SetBounds(rest.Left, rest.Bottom, width, child->FHeight);
            } else if (align == alLeft) {
                child->SetBounds(rest.Left, rest.Top, child->FWidth, height);
                rest.Left += std::min(child->FWidth, width);
            } else if (align == alRight) {
                rest.Right -= std::min(child->FWidth, width);
                child->SetBounds(rest.Right, rest.Top, child->FWidth, height);
            } else {
                child->SetBounds(rest.Left, rest.Top, width, height);
            }
        }
    }
}

// --- TWinControl: focus and window ---

bool TWinControl::Focused() const noexcept {
    return Screen().GetActiveControl() == this;
}

bool TWinControl::CanFocus() noexcept {
    return TakesInput() && IsUsable();
}

void TWinControl::SetFocus() {
    if (!CanFocus())
        throw EInvalidOperation(
            Format(u"Cannot focus control \"%s\", which is disabled or invisible", {GetName()}));
    GetParentForm()->MoveFocus(this);
}

bool TWinControl::FocusByUser() {
    if (!CanFocus()) return false;
    TCustomForm* const form = GetParentForm();
    if (Screen().GetActiveForm() != form) form->BringToFront();
    form->MoveFocus(this);
    return true;
}

void TWinControl::FocusLost() {
    Changed(caFocus);
    const TNotifyEvent onExit = FOnExit;
    onExit(this);
}

void TWinControl::FocusReceived() {
    Changed(caFocus);
    const TNotifyEvent onEnter = FOnEnter;
    onEnter(this);
}

bool TWinControl::PressedByUser(std::int32_t) {
    return false;
}

bool TWinControl::AnswersKey(std::int32_t) const noexcept {
    return false;
}

std::uintptr_t TWinControl::GetHandle() {
    return GetPeer() == nullptr ? FHandle : GetPeer()->GetHandle();
}

bool TWinControl::GetScrollInfo(std::uint32_t bar, TScrollInfo& info) const noexcept {
    if (bar > sbVertical) return false;
    const TScrollInfo& own = FScrollInfos[bar];
    if ((info.Mask & kScrollRange) != 0) info.Min = own.Min, info.Max = own.Max;
    if ((info.Mask & kScrollPage) != 0) info.Page = own.Page;
    if ((info.Mask & kScrollPosition) != 0) info.Position = own.Position;
    if ((info.Mask & kScrollTrackPosition) != 0) info.TrackPosition = own.TrackPosition;
    return true;
}

bool TWinControl::SetScrollInfo(std::uint32_t bar, const TScrollInfo& info, bool redraw) {
    if (bar > sbVertical || info.Size != TScrollInfo().Size) return false;
    TScrollInfo& own = FScrollInfos[bar];
    if ((info.Mask & kScrollRange) != 0) own.Min = info.Min, own.Max = std::max(info.Min, info.Max);
    if ((info.Mask & kScrollPage) != 0) own.Page = info.Page;
    if ((info.Mask & kScrollPosition) != 0) own.Position = info.Position;
    const std::int64_t last = std::int64_t{own.Max} - (own.Page > 1 ? std::int64_t{own.Page} - 1 : 0);
    own.Position =
        Clamped(std::clamp<std::int64_t>(own.Position, own.Min, std::max<std::int64_t>(last, own.Min)));
    own.TrackPosition = own.Position;
    if (redraw) Changed(caScroll);
    return true;
}

bool TWinControl::TrackScrollByUser(TScrollBarKind bar, std::int32_t trackPosition) {
    if (!IsUsable()) return false;
    FScrollInfos[bar].TrackPosition = std::clamp(trackPosition, FScrollInfos[bar].Min, FScrollInfos[bar].Max);
    return true;
}

}  // namespace Varnholt
