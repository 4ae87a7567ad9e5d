#include "Platform/Controls/Form.h"

#include <algorithm>

#include "Platform/Controls/Application.h"
#include "Platform/Runtime/FlagScope.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Indexes.h"
#include "Platform/System/Platform.h"

namespace Varnholt {
namespace {

constexpr int kMaxMoves = 200;  // a loss and a gain each

/// Appends the control's children that take input, each followed by its own.
void AppendInputs(const TWinControl& control, std::vector<TWinControl*>& inputs) {
    for (std::int32_t i = 0; i < control.GetControlCount(); ++i) {
        auto* const child = dynamic_cast<TWinControl*>(&control.GetControl(i));
        if (child == nullptr) continue;
        inputs.push_back(child);
        AppendInputs(*child, inputs);
    }
}

}  // namespace

TForm::TForm() = default;

TForm::~TForm() = default;

TCustomForm::TCustomForm() {
    TControl::SetVisible(false);
    SetColor(clBtnFace);
    SetBounds(0, 0, 320, 240);
}

TCustomForm::~TCustomForm() {
    Screen().FormHidden(*this);
    while (!FMDIChildren.empty()) FMDIChildren.pop_back();
    FreePeers();
}

void TCustomForm::SetCaption(StringView caption) {
    FCaption = caption;
    Changed(caText);
}

void TCustomForm::SetBorderStyle(TFormBorderStyle style) {
    FBorderStyle = style;
    Changed(caState);
}

void TCustomForm::SetBorderIcons(TBorderIcons icons) {
    FBorderIcons = icons;
    Changed(caState);
}

// --- Showing ---

void TCustomForm::Show() {
    if (GetVisible()) return BringToFront();
    Place();
    DoShow();
    CreatePeers();
    TControl::SetVisible(true);
    {
        const TFlagScope scope(FIsSettling);  // until the control is chosen
        Screen().FormShown(*this);
        TWinControl* const active = FActiveControl.Get();
        if (active == nullptr || !active->CanFocus()) FActiveControl = {};
        if (!FActiveControl) MoveFocusByTab(false);
    }
    SettleFocus();
}

void TCustomForm::Place() {
    if (FPosition == poDesigned) return;
    const TCustomForm* const main = Application().GetMainForm();
    TRect around{0, 0, Platform().Screen->GetWidth(), Platform().Screen->GetHeight()};
    if (FPosition == poMainFormCenter && main != nullptr)
        around = {main->GetLeft(), main->GetTop(), main->GetWidth(), main->GetHeight()};
    const auto middle = [](std::int64_t start, std::int64_t outer, std::int64_t inner) {
        return static_cast<std::int32_t>(
            std::clamp<std::int64_t>(start + (outer - inner) / 2, INT32_MIN, INT32_MAX));
    };
    SetLeft(middle(around.Left, around.Right, GetWidth()));
    SetTop(middle(around.Top, around.Bottom, GetHeight()));
}

void TCustomForm::DoShow() {
    const TNotifyEvent onShow = FOnShow;
    onShow(this);
}

void TCustomForm::Hide() {
    if (!GetVisible()) return;
    TControl::SetVisible(false);
    FEntered = {};
    Screen().FormHidden(*this);
    const TNotifyEvent onHide = FOnHide;
    onHide(this);
}

void TCustomForm::SetVisible(bool visible) {
    visible ? Show() : Hide();
}

TModalResult TCustomForm::ShowModal() {
    if (GetVisible()) throw EInvalidOperation(Format(u"Form \"%s\" is visible already", {GetName()}));
    struct TModalScope {
        TCustomForm& Form;
        ~TModalScope() { Form.FIsModal = false; }
    };
    FModalResult = mrNone;
    FIsModal = true;
    {
        const TModalScope scope{*this};
        try {
            Show();
            WaitForAnswer();
        } catch (...) {
            Hide();
            throw;
        }
        Hide();
    }
    return FModalResult;
}

void TCustomForm::WaitForAnswer() {
    const std::int64_t terminations = Application().FTerminations;
    for (;;) {
        if (FModalResult != mrNone && MayClose()) return;
        FModalResult = mrNone;
        if (Application().FTerminations != terminations) {
            FModalResult = mrCancel;
            return;
        }
        if (!Application().HandleMessage(true))
            throw EInvalidOperation(
                Format(u"Form \"%s\" waits for an answer, but nothing can give one", {GetName()}));
    }
}

void TCustomForm::SetModalResult(TModalResult result) {
    FModalResult = result;
}

/// A query that raises keeps the form open.
bool TCustomForm::MayClose() {
    const TCloseQueryEvent onCloseQuery = FOnCloseQuery;
    bool mayClose = true;
    try {
        onCloseQuery(this, mayClose);
    } catch (...) {
        if (!FIsModal) throw;
        Application().HandleException(this);
        return false;
    }
    return mayClose;
}

void TCustomForm::Close() {
    if (FIsModal) return SetModalResult(mrCancel);
    if (!MayClose()) return;
    TCloseAction action = FMDIParent != nullptr ? caFree : caHide;
    const TCloseEvent onClose = FOnClose;
    onClose(this, action);
    if (action == caNone) return;
    Hide();
    if (Application().GetMainForm() == this) Application().Terminate();
    if (action == caFree && FMDIParent != nullptr) FMDIParent->DropMDIChild(*this);
}

bool TCustomForm::CloseByUser() {
    if (!FBorderIcons.Contains(biSystemMenu) || !IsUsable()) return false;
    Close();
    return true;
}

void TCustomForm::BringToFront() {
    if (GetVisible()) Screen().Activate(*this);
}

// --- Keys and focus ---

bool TCustomForm::KeyByUser(std::int32_t virtualKey, bool isShiftDown) {
    if (!IsUsable()) return false;
    TWinControl* const active = FActiveControl.Get();
    if (active != nullptr && active->IsUsable() && active->PressedByUser(virtualKey)) return true;
    if (virtualKey == kKeyTab) return MoveFocusByTab(isShiftDown);
    std::vector<TWinControl*> inputs;
    AppendInputs(*this, inputs);
    for (TWinControl* const input : inputs)
        if (input->AnswersKey(virtualKey) && input->ClickByUser()) return true;
    return false;
}

std::vector<TWinControl*> TCustomForm::TabOrder() {
    std::vector<TWinControl*> order;
    AppendInputs(*this, order);
    std::erase_if(order, [](TWinControl* control) { return !control->GetTabStop() || !control->CanFocus(); });
    return order;
}

bool TCustomForm::MoveFocusByTab(bool isBackward) {
    std::vector<TWinControl*> order = TabOrder();
    if (order.empty()) return false;
    if (isBackward) std::ranges::reverse(order);
    const auto at = std::ranges::find(order, FActiveControl.Get());
    const bool isLast = at == order.end() || at + 1 == order.end();
    MoveFocus(isLast ? order.front() : *(at + 1));
    return true;
}

void TCustomForm::SetActiveControl(TWinControl* control) {
    if (control != nullptr && !IsAbove(*control))
        throw EInvalidOperation(
            Format(u"Control \"%s\" has no child \"%s\"", {GetName(), control->GetName()}));
    if (GetVisible() && control != nullptr) return control->SetFocus();
    MoveFocus(control);
}

void TCustomForm::MoveFocus(TWinControl* to) {
    FActiveControl = to;
    SettleFocus();
}

/// Tells the controls who has lost and who has received the focus. Their handlers may move it on.
void TCustomForm::SettleFocus() {
    if (FIsSettling || Screen().GetActiveForm() != this) return;
    const TFlagScope scope(FIsSettling);
    for (int moves = 0; moves < kMaxMoves && FEntered.Get() != FActiveControl.Get(); ++moves) {
        if (TWinControl* const from = FEntered.Get()) {
            FEntered = {};
            from->FocusLost();
        } else {
            FEntered = FActiveControl;
            FEntered.Get()->FocusReceived();
        }
    }
}

/// Moves the focus on if its control can no longer have it.
void TCustomForm::LeaveUnusable() {
    const TWinControl* const active = FActiveControl.Get();
    if (active == nullptr || !GetVisible() || FActiveControl.Get()->CanFocus()) return;
    const std::vector<TWinControl*> order = TabOrder();
    MoveFocus(order.empty() ? nullptr : order.front());
}

void TCustomForm::ForgetFocusIn(const TControl& control) noexcept {
    const TControl* at = FActiveControl.Get();
    while (at != nullptr && at != &control) at = at->GetParent();
    if (at != nullptr) FActiveControl = {};
}

// --- Menu and files ---

void TCustomForm::SetMenu(TMainMenu* menu) {
    FMenu = menu;
    Changed(caItems);
}

bool TCustomForm::ChooseMenuByUser(TMenuItem& item) {
    return FMenu && IsUsable() && FMenu.Get()->ChooseByUser(item);
}

bool TCustomForm::DropFilesByUser(const std::vector<String>& files) {
    const TDropFilesEvent onDropFiles = FOnDropFiles;
    if (!onDropFiles || !IsUsable()) return false;
    onDropFiles(this, files);
    return true;
}

// --- Forms inside this one ---

TCustomForm& TCustomForm::AddMDIChild(std::unique_ptr<TCustomForm> child) {
    if (child == nullptr) throw EArgumentNilException(u"child");
    TCustomForm& added = *child;
    FMDIChildren.push_back(std::move(child));
    added.FMDIParent = this;
    CreatePeers();  // the place of the child
    added.Show();
    return added;
}

std::int32_t TCustomForm::GetMDIChildCount() const noexcept {
    return static_cast<std::int32_t>(FMDIChildren.size());
}

TCustomForm& TCustomForm::GetMDIChild(std::int32_t index) const {
    return *FMDIChildren[ListIndex(index, FMDIChildren.size())];
}

void TCustomForm::DropMDIChild(TCustomForm& child) {
    const auto found = std::ranges::find(FMDIChildren, &child, &std::unique_ptr<TCustomForm>::get);
    if (found == FMDIChildren.end()) return;
    child.FMDIParent = nullptr;
    Application().FReleased.push_back(std::move(*found));
    FMDIChildren.erase(found);
}

}  // namespace Varnholt
