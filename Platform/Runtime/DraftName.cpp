#include "Platform/Runtime/DraftNamePrivate.h"

#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <string_view>

#include "Platform/Runtime/DraftFile.h"
#include "Platform/Runtime/Guid.h"

namespace Varnholt {

/// One registered name. Slots are reused and never freed, so a signal handler can always walk the list.
struct TDraftName::TSlot {
    std::atomic<pid_t> Owner;  // the process whose handlers remove the file; kFree or kTaken for none
    std::atomic<int> Folder;
    std::array<std::atomic<char>, kSize> Name;
    TSlot* Next;  // set once
};

namespace {

static_assert(std::atomic<pid_t>::is_always_lock_free && std::atomic<void*>::is_always_lock_free);

constexpr pid_t kFree = 0;
constexpr pid_t kTaken = -1;

std::atomic<TDraftName::TSlot*> firstSlot = nullptr;

TDraftName::TSlot* TakeSlot() {
    for (TDraftName::TSlot* slot = firstSlot; slot != nullptr; slot = slot->Next) {
        pid_t expected = kFree;
        if (slot->Owner.compare_exchange_strong(expected, kTaken)) return slot;
    }
    auto* slot = new TDraftName::TSlot{};
    slot->Owner = kTaken;
    slot->Next = firstSlot;
    while (!firstSlot.compare_exchange_weak(slot->Next, slot)) continue;
    return slot;
}

}  // namespace

TDraftAbilities& DraftAbilities() noexcept {
    static TDraftAbilities abilities;
    return abilities;
}

TDraftName::TDraftName(int folder) : FSlot(nullptr), FFolder(folder) {
    constexpr std::string_view kStart = "varnholt-";
    constexpr std::string_view kEnd = ".part";
    constexpr std::size_t kRandomBytes = 8;
    static_assert(kStart.size() + 2 * kRandomBytes + kEnd.size() < kSize);
    const TGuid guid = CreateGuid();
    char* to = FText.data() + kStart.copy(FText.data(), kStart.size());
    for (std::size_t i = guid.Bytes.size() - kRandomBytes; i < guid.Bytes.size(); ++i) {
        *to++ = "0123456789abcdef"[guid.Bytes[i] / 16];
        *to++ = "0123456789abcdef"[guid.Bytes[i] % 16];
    }
    kEnd.copy(to, kEnd.size());
    FSlot = TakeSlot();
    for (std::size_t i = 0; i < kSize; ++i) FSlot->Name[i] = FText[i];
    FSlot->Folder = folder;
    FSlot->Owner = getpid();
}

TDraftName::~TDraftName() {
    if (FSlot == nullptr) return;
    unlinkat(FFolder, Get(), 0);
    Release();
}

void TDraftName::HideFromSignals() noexcept {
    if (FSlot != nullptr) FSlot->Owner = kTaken;
}

void TDraftName::Release() noexcept {
    if (FSlot != nullptr) FSlot->Owner = kFree;
    FSlot = nullptr;
}

void RemoveDraftFiles() noexcept {
    const int formerError = errno;
    const pid_t process = getpid();
    for (TDraftName::TSlot* slot = firstSlot; slot != nullptr; slot = slot->Next) {
        if (slot->Owner != process) continue;
        char name[TDraftName::kSize];
        for (std::size_t i = 0; i < TDraftName::kSize; ++i) name[i] = slot->Name[i];
        unlinkat(slot->Folder, name, 0);
    }
    errno = formerError;
}

}  // namespace Varnholt
