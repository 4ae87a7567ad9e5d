#include "VarnholtLib/Services/vrnVersionNumber.h"

#include <array>
#include <tuple>
#include <vector>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/System/FileVersion.h"
#include "Platform/System/Platform.h"
#include "VarnholtLib/Foundation/vrnString.h"

namespace Varnholt {
namespace {

auto PartsOf(const IVersionNumber& version) {
    return std::tuple(version.Get_Major(), version.Get_Minor(), version.Get_Release(), version.Get_Build());
}

}  // namespace

EInvalidVersionNumberString::EInvalidVersionNumberString(StringView verString)
    : Exception(Format(u"Invalid version string \"%s\"", {verString})), FVerString(verString) {}

TVersionNumber::TVersionNumber(StringView verString) {
    std::array<std::int32_t, 4> numbers = {};
    const std::vector<String> parts = SplitString(verString, u'.', true);
    bool valid = parts.size() == numbers.size();
    for (std::size_t i = 0; valid && i < numbers.size(); ++i) valid = TryStrToInt(parts[i], numbers[i]);
    if (!valid) throw EInvalidVersionNumberString(verString);
    std::tie(FMajor, FMinor, FRelease, FBuild) = std::tuple_cat(numbers);
}

TVersionNumber::TVersionNumber(std::int32_t major, std::int32_t minor, std::int32_t release,
                               std::int32_t build) noexcept
    : FMajor(major), FMinor(minor), FRelease(release), FBuild(build) {}

std::int32_t TVersionNumber::CompareTo(const IVersionNumber& versionNumber) const {
    const auto order = PartsOf(*this) <=> PartsOf(versionNumber);
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

String TVersionNumber::ToString() const {
    return Format(u"%d.%d.%d.%d", {FMajor, FMinor, FRelease, FBuild});
}

std::shared_ptr<IVersionNumber> TVersionNumberFactory::GetInstance(StringView verString) {
    return std::make_shared<TVersionNumber>(verString);
}

std::shared_ptr<IVersionNumber> TVersionNumberFactory::GetInstance(std::int32_t major, std::int32_t minor,
                                                                   std::int32_t release, std::int32_t build) {
    return std::make_shared<TVersionNumber>(major, minor, release, build);
}

std::shared_ptr<IVersionNumber> TVersionNumberFactory::GetInstanceWithFileVersion(StringView fileName) {
    const String version = GetVersion(fileName);
    return version.empty() ? nullptr : GetInstance(version);
}

std::shared_ptr<IVersionNumber> TVersionNumberFactory::GetInstanceWithAppVersion() {
    return GetInstanceWithFileVersion({});
}

String GetVersion(StringView fileName) {
    return ReadFileVersion(fileName.empty() ? Platform().Process->GetExecutablePath() : String(fileName));
}

}  // namespace Varnholt
