#include "Platform/Controls/Application.h"

#include <algorithm>
#include <utility>

#include "Platform/Runtime/Immortal.h"
#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/MainThread.h"
#include "Platform/System/Platform.h"

namespace Varnholt {
namespace {

/// Gives the exception that is being handled to a reader; one of another family as an Exception with its text.
template <typename T>
void ReadHandled(const T& reader) {
    try {
        throw;
    } catch (const Exception& exception) {
        reader(exception);
    } catch (const std::exception& exception) {
        reader(Exception(FromUtf8(exception.what())));
    } catch (...) {
        reader(Exception(u"Unknown exception"));
    }
}

}  // namespace

TApplication& Application() {
    struct TTheApplication final : TApplication {};
    static TImmortal<TTheApplication> application;
    return *application;
}

TApplication::TApplication() = default;

TApplication::~TApplication() = default;

// --- Messages ---

void TApplication::Post(std::function<void()> step) {
    Queue(std::move(step));
}

TTimer* TApplication::NextTimer() const noexcept {
    TTimer* next = nullptr;
    for (TTimer* const timer : FTimers)
        if (timer->IsRunning() && (next == nullptr || timer->GetDueTime() < next->GetDueTime())) next = timer;
    return next;
}

bool TApplication::FireTimer() {
    TTimer* const next = NextTimer();
    if (next == nullptr || next->GetDueTime() > std::chrono::steady_clock::now()) return false;
    next->Fire();
    return true;
}

/// Waits for a message. False if nothing can send one.
bool TApplication::Wait() {
    using namespace std::chrono;
    std::int32_t rest = -1;
    if (const TTimer* const next = NextTimer()) {
        const auto time = ceil<milliseconds>(next->GetDueTime() - steady_clock::now());
        rest = static_cast<std::int32_t>(std::clamp<std::int64_t>(time.count(), 0, INT32_MAX));
    }
    if (IControlBackend* const backend = ControlBackend()) return backend->HandleMessage(rest), true;
    if (rest < 0) return false;
    HandleStep(rest);
    return true;
}

bool TApplication::HandleMessage(bool mayWait) {
    struct TDepthScope {
        std::int32_t& Depth;
        ~TDepthScope() { --Depth; }
    };
    if (FDepth == 0) FReleased.clear();
    ++FDepth;
    const TDepthScope scope{FDepth};
    try {
        if (HandleStep() || FireTimer()) return true;
        if (mayWait) return Wait();
        IControlBackend* const backend = ControlBackend();
        return backend != nullptr && backend->HandleMessage(0);
    } catch (...) {
        HandleException(this);
    }
    return true;
}

void TApplication::ProcessMessages() {
    while (HandleMessage(false)) {
    }
}

void TApplication::Terminate() noexcept {
    FTerminated = true;
    ++FTerminations;
}

void TApplication::Run(TCustomForm& mainForm) {
    FMainForm = &mainForm;
    FTerminated = false;
    mainForm.Show();
    while (!FTerminated && FMainForm && HandleMessage(true)) {
    }
    if (TCustomForm* const form = FMainForm.Get()) form->Hide();
    FMainForm = {};
}

// --- Exceptions ---

void TApplication::HandleException(TObject* sender) noexcept try {
    try {
        ReadHandled([&](const Exception& exception) {
            const TExceptionEvent onException = FOnException;
            onException ? onException(sender, exception) : ShowException(exception);
        });
    } catch (...) {
        ReadHandled([&](const Exception& exception) { ShowException(exception); });  // of the event itself
    }
} catch (...) {
    // Nothing is left that could report it.
}

void TApplication::ShowException(const Exception& exception) {
    MessageBox(exception.GetMessage(), FTitle, 16);
}

// --- Message boxes ---

TModalResult TApplication::MessageBox(StringView text, StringView title, std::uint32_t flags) {
    static const std::vector<TModalResult> kButtons[] = {
        {mrOk},        {mrOk, mrCancel},   {mrAbort, mrRetry, mrIgnore}, {mrYes, mrNo, mrCancel},
        {mrYes, mrNo}, {mrRetry, mrCancel}};
    constexpr TMessageIcon kIcons[] = {miNone, miStop, miQuestion, miWarning, miInformation};
    const std::uint32_t buttons = flags & 15, icon = flags >> 4 & 15, first = flags >> 8 & 3;
    TMessageBox box;
    box.Text = text;
    box.Title = title;
    box.Buttons = kButtons[buttons < std::size(kButtons) ? buttons : 0];
    box.Icon = icon < std::size(kIcons) ? kIcons[icon] : miNone;
    box.DefaultButton = std::min<std::size_t>(first, box.Buttons.size() - 1);
    box.Owner = Platform().Screen->GetActiveFormHandle();
    return Platform().MessageBoxes->Show(box);
}

// --- TScreen ---

TScreen& Screen() {
    static TImmortal<TScreen> screen;
    return *screen;
}

std::int32_t TScreen::GetFormCount() const noexcept {
    return static_cast<std::int32_t>(FForms.size());
}

TCustomForm& TScreen::GetForm(std::int32_t index) const {
    return *FForms[ListIndex(index, FForms.size())];
}

TCustomForm* TScreen::GetActiveForm() const noexcept {
    return FStack.empty() ? nullptr : FStack.back();
}

TWinControl* TScreen::GetActiveControl() const noexcept {
    const TCustomForm* const form = GetActiveForm();
    return form == nullptr ? nullptr : form->GetActiveControl();
}

std::int16_t TScreen::GetCursor() const {
    return Platform().Screen->GetCursor();
}

void TScreen::SetCursor(std::int16_t cursor) {
    Platform().Screen->SetCursor(cursor);
}

std::int32_t TScreen::GetPixelsPerInch() const {
    return Platform().Screen->GetPixelsPerInch();
}

/// Whether a modal form that was shown later keeps the user out of this one. Hidden forms are blocked, too.
bool TScreen::IsBlocked(const TCustomForm& form) const noexcept {
    for (std::size_t i = FForms.size(); i > 0; --i) {
        if (FForms[i - 1] == &form) return false;
        if (FForms[i - 1]->IsModal()) return true;
    }
    return true;
}

void TScreen::Activate(TCustomForm& form) {
    if (GetActiveForm() == &form || IsBlocked(form)) return;
    std::erase(FStack, &form);
    FStack.push_back(&form);
    Platform().Screen->SetActiveFormHandle(form.GetHandle());
    form.Changed(caFocus);
    form.SettleFocus();
}

void TScreen::FormShown(TCustomForm& form) {
    FForms.push_back(&form);
    Activate(form);
}

void TScreen::FormHidden(TCustomForm& form) noexcept {
    if (std::erase(FForms, &form) == 0) return;
    std::erase(FStack, &form);
    TCustomForm* const active = GetActiveForm();
    Platform().Screen->SetActiveFormHandle(active == nullptr ? 0 : active->GetHandle());
    if (active != nullptr) active->Changed(caFocus);
}

}  // namespace Varnholt
