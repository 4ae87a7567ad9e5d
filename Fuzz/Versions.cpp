#include "Fuzz/FuzzInput.h"
#include "Platform/System/FileVersion.h"
#include "VarnholtLib/Services/vrnVersionNumber.h"

/// Executable files and texts of versions: nothing, or a version that is read back.
namespace Varnholt::Fuzz {

void RunInput(TInput input) {
    for (const String& text : {ReadFileVersion(std::as_bytes(input)), TextOf(input)}) {
        std::shared_ptr<IVersionNumber> version;
        const String failure = FailureOf([&] { version = TVersionNumberFactory::GetInstance(text); });
        Require(failure.empty() == (version != nullptr), "a refusal has a message");
        if (!version) continue;
        const auto again = TVersionNumberFactory::GetInstance(version->ToString());
        Require(version->CompareTo(*again) == 0, "a version is read back");
    }
}

}  // namespace Varnholt::Fuzz
