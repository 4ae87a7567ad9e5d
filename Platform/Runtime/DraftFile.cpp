#include "Platform/Runtime/DraftFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <optional>

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

/// The path of a new file beside that one; empty where the file is to be written directly.
String CreateDraft(StringView path) {
    String reason;
    const auto native = TryToNativePath(path, reason);
    if (!native || native->empty()) return {};
    const auto former = FactsOfEntry(*native);
    if (former && (!S_ISREG(former->st_mode) || access(native->c_str(), W_OK) != 0)) return {};
    String draft = String(path).append(u".").append(GuidToString(CreateGuid())).append(u".part");
    try {
        TFileStream file(draft, fmRewrite);
        if (former) chmod(ToNativePath(draft).c_str(), former->st_mode & 07777);
    } catch (const EFCreateError&) {
        return {};
    }
    return draft;
}

}  // namespace

TDraftFileStream::TDraftFileStream(StringView path) : TDraftFileStream(path, CreateDraft(path)) {}

TDraftFileStream::TDraftFileStream(StringView path, String draft)
    : TFileStream(draft.empty() ? path : draft, fmRewrite, path), FDraft(std::move(draft)) {}

TDraftFileStream::~TDraftFileStream() {
    if (!FDraft.empty()) unlink(ToNativePath(FDraft).c_str());
}

void TDraftFileStream::Commit() {
    Flush();
    Close();
    if (FDraft.empty()) return;
    RenameFile(FDraft, GetFileName());
    FDraft.clear();
}

}  // namespace Varnholt
