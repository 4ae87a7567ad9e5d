#pragma once

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Platform/Runtime/Paths.h"

namespace Varnholt::Test {

/// How many file descriptors the process has open.
[[nodiscard]] inline std::ptrdiff_t OpenDescriptors() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return std::distance(begin(all), end(all));
}

/// A folder of its own for a test, below the system's temporary folder. It is deleted with all that is in it:
///
///     const TTemporaryFolder folder;
///     WriteFileInOneGo(folder.GetPath(u"a.csv"), "1,2");
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

    /// The library path of a name in the folder; without a name, the folder itself with a trailing backslash.
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

/// A temporary folder that is a drive while the object lives, so that a test can use literal paths:
///
///     const TTemporaryDrive drive(u'D');
///     WriteFileInOneGo(u"D:\\a.csv", "1,2");
class TTemporaryDrive : public TTemporaryFolder {
public:
    explicit TTemporaryDrive(Char letter) { SetDrive(letter, GetNativePath()); }

private:
    const TDriveTableScope FScope;
};

}  // namespace Varnholt::Test
