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

class TVersionNumber final : public IVersionNumber {
public:
    using TParts = std::array<std::int32_t, 4>;

    explicit TVersionNumber(const TParts& parts) : FParts(parts) {}
    std::int32_t Get_Major() const override { return FParts[0]; }
    std::int32_t Get_Minor() const override { return FParts[1]; }
    std::int32_t Get_Release() const override { return FParts[2]; }
    std::int32_t Get_Build() const override { return FParts[3]; }
    std::int32_t CompareTo(const IVersionNumber& versionNumber) const override {
        const auto order = PartsOf(*this) <=> PartsOf(versionNumber);
        return order < 0 ? -1 : order > 0 ? 1 : 0;
    }
    String ToString() const override {
        return Format(u"%d.%d.%d.%d", {FParts[0], FParts[1], FParts[2], FParts[3]});
    }

private:
    const TParts FParts;
};

}  // namespace

EInvalidVersionNumberString::EInvalidVersionNumberString(StringView verString)
    : Exception(Format(u"Invalid version string \"%s\"", {verString})), FVerString(verString) {}

std::shared_ptr<IVersionNumber> TVersionNumberFactory::GetInstance(StringView verString) {
    TVersionNumber::TParts numbers = {};
    const std::vector<String> parts = SplitString(verString, u'.', true);
    bool isValid = parts.size() == numbers.size();
    for (std::size_t i = 0; isValid && i < numbers.size(); ++i) isValid = TryStrToInt(parts[i], numbers[i]);
    if (!isValid) throw EInvalidVersionNumberString(verString);
    return std::make_shared<TVersionNumber>(numbers);
}

std::shared_ptr<IVersionNumber> TVersionNumberFactory::GetInstance(std::int32_t major, std::int32_t minor,
                                                                   std::int32_t release, std::int32_t build) {
    return std::make_shared<TVersionNumber>(TVersionNumber::TParts{major, minor, release, build});
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
