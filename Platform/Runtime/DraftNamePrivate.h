#pragma once

#include <array>
#include <atomic>

#include "Platform/Runtime/Export.h"

/// Names of temporary files, in a registry that a signal handler can read.
namespace Varnholt {

/// What the file system offers; tests turn a part off to reach the other way.
struct TDraftAbilities {
    std::atomic<bool> UnnamedFiles = true;  ///< files without a name (O_TMPFILE)
    std::atomic<bool> Exchange = true;      ///< two names exchanged in one step (RENAME_EXCHANGE)
};

[[nodiscard]] VARNHOLT_EXPORT TDraftAbilities& DraftAbilities() noexcept;

/// A random name in a folder, registered as a file to be removed from the moment the object exists. The
/// folder's descriptor stays the caller's.
class TDraftName {
public:
    /// Raises std::bad_alloc, or Exception if the system gives no random bytes.
    explicit TDraftName(int folder);
    /// Removes the file of that name, unless it was released.
    ~TDraftName();
    TDraftName(const TDraftName&) = delete;
    TDraftName& operator=(const TDraftName&) = delete;

    [[nodiscard]] const char* Get() const noexcept { return FText.data(); }
    /// The file is no longer removed by RemoveDraftFiles, only with this object.
    void HideFromSignals() noexcept;
    /// The name no longer belongs to this object.
    void Release() noexcept;

    static constexpr std::size_t kSize = 32;  // with the zero at the end
    struct TSlot;

private:
    TSlot* FSlot;  // none after Release
    int FFolder;
    std::array<char, kSize> FText{};
};

}  // namespace Varnholt
