#include "Platform/Controls/Application.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>

#include "Platform/Runtime/Immortal.h"
#include "Platform/Runtime/Indexes.h"
#include "Platform/System/Platform.h"

namespace Varnholt {

struct TApplication::TQueue {
    std::mutex Mutex;
    std::condition_variable Filled;
    std::deque<std::function<void()>> Steps;
};

TApplication& Application() {
    struct TTheApplication final : TApplication {};
    static TImmortal<TTheApplication> application;
    return *application;
}

TApplication::TApplication() : FQueue(std::make_unique<TQueue>()) {}

TApplication::~TApplication() = default;

// --- Messages ---

void TApplication::Post(std::function<void()> step) {
    {
        const std::lock_guard lock(FQueue->Mutex);
        FQueue->Steps.push_back(std::move(step));
    }
    FQueue->Filled.notify_one();
    if (IControlBackend* const backend = ControlBackend()) backend->Wake();
}

bool TApplication::RunStep() {
    std::function<void()> step;
    {
        const std::lock_guard lock(FQueue->Mutex);
        if (FQueue->Steps.empty()) return false;
        step = std::move(FQueue->Steps.front());
        FQueue->Steps.pop_front();
    }
    if (step) step();
    return true;
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

/// Waits until there may be a message. False if nothing can send one.
bool TApplication::Wait() {
    const TTimer* const next = NextTimer();
    if (IControlBackend* const backend = ControlBackend()) {
        using namespace std::chrono;
        const auto rest = next == nullptr
                              ? milliseconds(-1)
                              : duration_cast<milliseconds>(next->GetDueTime() - steady_clock::now());
        backend->HandleMessage(
            next == nullptr ? -1 : static_cast<std::int32_t>(std::max<std::int64_t>(rest.count(), 0)));
        return true;
    }
    std::unique_lock lock(FQueue->Mutex);
    if (next == nullptr) return !FQueue->Steps.empty();
    FQueue->Filled.wait_until(lock, next->GetDueTime(), [&] { return !FQueue->Steps.empty(); });
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
        if (RunStep() || FireTimer()) return true;
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
    const auto report = [&](const Exception& exception) {
        const TExceptionEvent onException = FOnException;
        onException ? onException(sender, exception) : ShowException(exception);
    };
    try {
        try {
            throw;
        } catch (const Exception& exception) {
            report(exception);
        } catch (const std::exception& exception) {
            report(Exception(FromUtf8(exception.what())));
        } catch (...) {
            report(Exception(u"Unknown exception"));
        }
    } catch (const Exception& exception) {
        ShowException(exception);  // of the event itself
    }
} catch (...) {
    // Nothing is left that could report it.
}

void TApplication::ShowException(const Exception& exception) {
    MessageBox(exception.GetMessage(), {}, 16);
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
    box.Title = title.empty() ? StringView(FTitle) : title;
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
