#include "Platform/Runtime/DraftFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <optional>
#include <utility>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Guid.h"
#include "Platform/Runtime/Paths.h"

namespace Varnholt {
namespace {

std::optional<struct stat> FactsOfEntry(const std::string& native) {
    struct stat facts {};
    if (lstat(native.c_str(), &facts) != 0) return std::nullopt;
    return facts;
}

bool MayBeReplaced(const std::string& native, const struct stat& facts) {
    return S_ISREG(facts.st_mode) && facts.st_nlink == 1 && facts.st_uid == geteuid() &&
           access(native.c_str(), W_OK) == 0;
}

}  // namespace

TDraftFileStream::TDraftFileStream(StringView path) : TFileStream(path) {
    if (!OpenDraft()) Open(path, fmRewrite);
}

// False where the file is to be written directly.
bool TDraftFileStream::OpenDraft() {
    String reason;
    const auto native = TryToNativePath(GetFileName(), reason);
    if (!native || native->empty()) return false;
    const auto former = FactsOfEntry(*native);
    if (former && !MayBeReplaced(*native, *former)) return false;
    const String ending = u"." + GuidToString(CreateGuid()) + u".part";
    String draft = GetFileName() + ending;
    try {
        Open(draft, fmRewrite);
    } catch (const EFCreateError&) {
        return false;
    }
    FDraft = std::move(draft);
    if (former) chmod((*native + ToUtf8(ending)).c_str(), former->st_mode & 07777);
    return true;
}

TDraftFileStream::~TDraftFileStream() {
    String reason;
    if (FDraft.empty()) return;
    if (const auto native = TryToNativePath(FDraft, reason)) unlink(native->c_str());
}

void TDraftFileStream::Commit() {
    Flush();
    Close();
    if (FDraft.empty()) return;
    RenameFile(FDraft, GetFileName());
    FDraft.clear();
}

}  // namespace Varnholt
