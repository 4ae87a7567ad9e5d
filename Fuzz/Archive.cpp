#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "Fuzz/FuzzInput.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/System/Platform.h"
#include "VarnholtLib/Files/vrnCompress.h"

/// An archive of a stranger: refused, or extracted only below its folder, each entry whole or not at all.
namespace Varnholt::Fuzz {
namespace {

namespace fs = std::filesystem;

struct TSilence : IDebugOutput {
    void Write(StringView) override {}
};

/// A folder with nothing but the archive and the folder for its files.
const std::string& Root() {
    static const std::string root = [] {
        Platform().DebugOutput = std::make_shared<TSilence>();
        std::string folder =
            fs::temp_directory_path() / ("varnholt-fuzz-archive-" + std::to_string(getpid()));
        fs::create_directories(folder);
        return folder;
    }();
    return root;
}

}  // namespace

void RunInput(TInput input) {
    const String path = FromNativePath(Root() + "/x.vrn"), folder = FromNativePath(Root() + "/out");
    WriteFileInOneGo(path, {reinterpret_cast<const char*>(input.data()), input.size()});
    fs::create_directory(Root() + "/out");
    static_cast<void>(FailureOf([&] {
        TVarnDecompressor archive(path);
        std::vector<String> errors;
        archive.ExtractAllTo(folder, errors);
        for (std::int32_t i = 0; i < archive.GetFileEntryCount(); ++i) {
            std::vector<std::byte> bytes;
            const TFileEntry entry = archive.GetFileEntryAt(i);
            const String failure = FailureOf([&] { archive.Extract(i, bytes); });
            Require(std::ssize(bytes) <= entry.OriginalSize, "no more comes out than the entry says");
            Require(archive.GetEntryIndex(entry.FileName) == i, "a name finds its entry");
            Require(failure.empty() || !errors.empty(), "an entry that cannot be read is not extracted");
        }
    }));
    fs::remove_all(Root() + "/out");
    const fs::directory_iterator left(Root());
    Require(std::distance(begin(left), end(left)) == 1, "nothing is written outside the folder");
}

}  // namespace Varnholt::Fuzz
