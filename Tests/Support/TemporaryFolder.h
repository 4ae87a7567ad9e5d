#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Platform/Runtime/Paths.h"

/// A folder of its own for a test, below the system's temporary folder; it goes with all that is in it.
///
///     const TTemporaryFolder folder;
///     WriteFileInOneGo(folder.GetPath(u"a.csv"), "1,2");
namespace Varnholt::Tests {

class TTemporaryFolder {
public:
    TTemporaryFolder() : FNative(std::filesystem::temp_directory_path() / "varnholt-test-XXXXXX") {
        if (mkdtemp(FNative.data()) == nullptr) throw std::runtime_error("cannot make " + FNative);
    }
    ~TTemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(FNative, ignored);
    }
    TTemporaryFolder(const TTemporaryFolder&) = delete;
    TTemporaryFolder& operator=(const TTemporaryFolder&) = delete;

    /// The library path of a name in the folder; without a name, the folder itself with a backslash behind
    /// it.
    [[nodiscard]] String GetPath(StringView name = {}) const {
        return FromNativePath(FNative) + u"\\" + String(name);
    }
    /// The native path of a name in the folder; without a name, the folder itself.
    [[nodiscard]] std::string GetNativePath(std::string_view name = {}) const {
        return name.empty() ? FNative : FNative + "/" + std::string(name);
    }

private:
    std::string FNative;
};

}  // namespace Varnholt::Tests
