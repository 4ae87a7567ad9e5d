#include "Platform/Runtime/DraftFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>

#include "Platform/Runtime/DraftNamePrivate.h"
#include "Platform/Runtime/DraftTargetPrivate.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/Runtime/SystemCallsPrivate.h"

namespace Varnholt {
namespace {

constexpr mode_t kPrivateRights = 0600;
constexpr mode_t kNewFileRights = 0666;

std::string PathOfHandle(int handle) {
    return "/proc/self/fd/" + std::to_string(handle);
}

/// Holds back all signals to the thread that can be held back.
class TSignalBlock {
public:
    TSignalBlock() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &FFormer);
    }
    ~TSignalBlock() { pthread_sigmask(SIG_SETMASK, &FFormer, nullptr); }
    TSignalBlock(const TSignalBlock&) = delete;
    TSignalBlock& operator=(const TSignalBlock&) = delete;

private:
    sigset_t FFormer{};
};

}  // namespace

/// A draft and the file that it replaces. The functions that return bool set errno on failure.
struct TDraftFileStream::TDraft {
    /// How the file was replaced, and so how that is undone.
    enum class TWay { None, Created, Exchanged, Copied };

    /// Opens the draft of a path. Nothing where the file is to be written directly, or, with the reason,
    /// where it cannot be created.
    static std::unique_ptr<TDraft> Open(StringView path, String& reason);

    bool OpenFile();
    void OpenUnnamed(mode_t rights);
    void OpenNamed(mode_t rights);

    [[nodiscard]] bool HasTargetOf(const TDraft& other) const noexcept;
    [[nodiscard]] bool GiveName(int handle);
    [[nodiscard]] bool Replace() noexcept;
    [[nodiscard]] bool ReplaceSoThatItCanBeUndone();
    void Undo() noexcept;
    void RemoveFormer() noexcept;

    [[nodiscard]] bool Rename(const TDraftName& from, unsigned flags = 0) const noexcept {
        return renameat2(Target.Folder.Get(), from.Get(), Target.Folder.Get(), Target.Name.c_str(), flags) ==
               0;
    }

    TDraftTarget Target;
    TDescriptor File;                  // until the stream takes it over
    std::optional<TDraftName> Name;    // none as long as the draft has no name
    std::optional<TDraftName> Former;  // a second name of the former file
    TWay Way = TWay::None;
};

std::unique_ptr<TDraftFileStream::TDraft> TDraftFileStream::TDraft::Open(StringView path, String& reason) {
    const auto native = TryToNativePath(path, reason);
    if (!native) return nullptr;
    int error = 0;
    auto target = FindDraftTarget(*native, error);
    if (target) {
        auto draft = std::make_unique<TDraft>();
        draft->Target = *std::move(target);
        error = draft->OpenFile() ? 0 : errno;
        const int handle = draft->File.Get();
        if (error == 0 && (!draft->Target.Former || KeepAttributes(handle, draft->Target, error)))
            return draft;
    }
    if (!CallsForDirectWriting(error)) reason = SystemReason(error);
    return nullptr;
}

bool TDraftFileStream::TDraft::OpenFile() {
    const mode_t rights = Target.Former ? kPrivateRights : kNewFileRights;
    if (DraftAbilities().UnnamedFiles) OpenUnnamed(rights);
    if (!File.IsOpen()) OpenNamed(rights);
    return File.IsOpen();
}

void TDraftFileStream::TDraft::OpenUnnamed(mode_t rights) {
    constexpr int kFlags = O_TMPFILE | O_WRONLY | O_CLOEXEC;
    File = TDescriptor(Uninterrupted([&] { return openat(Target.Folder.Get(), ".", kFlags, rights); }));
    // Without that path the file could never get a name.
    if (File.IsOpen() && access(PathOfHandle(File.Get()).c_str(), F_OK) != 0) File = TDescriptor();
}

void TDraftFileStream::TDraft::OpenNamed(mode_t rights) {
    constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    Name.emplace(Target.Folder.Get());
    File =
        TDescriptor(Uninterrupted([&] { return openat(Target.Folder.Get(), Name->Get(), kFlags, rights); }));
}

bool TDraftFileStream::TDraft::HasTargetOf(const TDraft& other) const noexcept {
    struct stat own {};
    struct stat others {};
    return Target.Name == other.Target.Name && fstat(Target.Folder.Get(), &own) == 0 &&
           fstat(other.Target.Folder.Get(), &others) == 0 && own.st_dev == others.st_dev &&
           own.st_ino == others.st_ino;
}

bool TDraftFileStream::TDraft::GiveName(int handle) {
    if (Name) return true;
    const std::string path = PathOfHandle(handle);
    Name.emplace(Target.Folder.Get());
    return linkat(AT_FDCWD, path.c_str(), Target.Folder.Get(), Name->Get(), AT_SYMLINK_FOLLOW) == 0;
}

bool TDraftFileStream::TDraft::Replace() noexcept {
    if (!Rename(*Name)) return false;
    Name->Release();
    return true;
}

bool TDraftFileStream::TDraft::ReplaceSoThatItCanBeUndone() {
    const int folder = Target.Folder.Get();
    struct stat facts {};
    if (fstatat(folder, Target.Name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(facts.st_mode)) {
        errno = EISDIR;  // an exchange would succeed
        return false;
    }
    if (DraftAbilities().Exchange && Rename(*Name, RENAME_EXCHANGE)) {
        Name->HideFromSignals();  // the name of the former file now
        Way = TWay::Exchanged;
        return true;
    }
    Former.emplace(folder);
    Former->HideFromSignals();
    const bool hasFormer = linkat(folder, Target.Name.c_str(), folder, Former->Get(), 0) == 0;
    if (!hasFormer && errno != ENOENT) return false;
    if (!Replace()) return false;
    Way = hasFormer ? TWay::Copied : TWay::Created;
    return true;
}

/// Puts the former file back. Where that fails, it stays under the name of the draft.
void TDraftFileStream::TDraft::Undo() noexcept {
    if (Way == TWay::Created) unlinkat(Target.Folder.Get(), Target.Name.c_str(), 0);
    if (Way == TWay::Exchanged && !Rename(*Name, RENAME_EXCHANGE)) Name->Release();
    if (Way == TWay::Copied) {
        static_cast<void>(Rename(*Former));
        Former->Release();
    }
    Way = TWay::None;
}

void TDraftFileStream::TDraft::RemoveFormer() noexcept {
    Name.reset();
    Former.reset();
}

TDraftFileStream::TDraftFileStream(StringView path) : TFileStream(path) {
    String reason;
    FDraft = TDraft::Open(path, reason);
    if (FDraft) {
        Attach(FDraft->File.Release());
    } else {
        if (!reason.empty()) RaiseCannotCreate(path, reason);
        Open(path, fmRewrite);
    }
}

TDraftFileStream::~TDraftFileStream() = default;

bool TDraftFileStream::IsWrittenDirectly(StringView path) {
    String reason;
    return TDraft::Open(path, reason) == nullptr && reason.empty();
}

void TDraftFileStream::Commit() {
    TDraftFileStream* const file = this;
    CommitTogether({&file, 1});
}

/// Leaves a closed file that only needs its rename.
void TDraftFileStream::Prepare() {
    if (FDraft && !FDraft->GiveName(Handle())) RaiseNotReplaced(errno);
    Close();
}

void TDraftFileStream::Discard() noexcept {
    FDraft.reset();
    Abandon();
}

void TDraftFileStream::RaiseNotReplaced(int error) const {
    throw EInOutError(FileMessage(u"Cannot replace", GetFileName(), SystemReason(error)));
}

/// Replaces all files, or puts back those that were replaced.
void TDraftFileStream::ReplaceAll(std::span<TDraftFileStream* const> files) {
    const TSignalBlock block;
    try {
        for (TDraftFileStream* file : files) file->Prepare();
        for (std::size_t i = 0; i < files.size(); ++i) {
            TDraft* draft = files[i]->FDraft.get();
            if (draft == nullptr) continue;
            const bool isLast = i + 1 == files.size();  // after which nothing can fail
            const bool isReplaced = isLast ? draft->Replace() : draft->ReplaceSoThatItCanBeUndone();
            if (!isReplaced) files[i]->RaiseNotReplaced(errno);
        }
    } catch (...) {
        for (std::size_t i = files.size(); i > 0; --i)
            if (files[i - 1]->FDraft) files[i - 1]->FDraft->Undo();
        throw;
    }
    for (TDraftFileStream* file : files)
        if (file->FDraft) file->FDraft->RemoveFormer();
}

/// Refuses two files that lead to one target, by whatever links.
void TDraftFileStream::CheckTargets(std::span<TDraftFileStream* const> files) {
    for (std::size_t i = 0; i < files.size(); ++i) {
        for (const TDraftFileStream* other : files.subspan(i + 1)) {
            if (!files[i]->FDraft || !other->FDraft || !files[i]->FDraft->HasTargetOf(*other->FDraft))
                continue;
            throw EInOutError(FileMessage(u"Cannot replace", other->GetFileName(),
                                          u"Another of the files has the same target"));
        }
    }
}

void TDraftFileStream::CommitTogether(std::span<TDraftFileStream* const> files) {
    try {
        CheckTargets(files);
        for (TDraftFileStream* file : files) file->Flush();
        ReplaceAll(files);
    } catch (...) {
        for (TDraftFileStream* file : files) file->Discard();
        throw;
    }
    const TDraftFileStream* failed = nullptr;
    int error = 0;
    for (TDraftFileStream* file : files) {
        // A folder that may not be read is open without the right to flush it.
        const bool isOnDisk =
            !file->FDraft || SyncToDisk(file->FDraft->Target.Folder.Get()) || errno == EBADF;
        if (!isOnDisk && failed == nullptr) {
            failed = file;
            error = errno;
        }
        file->FDraft.reset();
    }
    if (failed != nullptr)
        throw EWriteError(FileMessage(u"Cannot write", failed->GetFileName(), SystemReason(error)));
}

}  // namespace Varnholt
