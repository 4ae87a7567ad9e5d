#include "VarnholtLib/Services/vrnSystemRandomBytes.h"

#include <algorithm>

#include "Platform/Runtime/Random.h"
#include "VarnholtLib/Foundation/vrnModuleState.h"
#include "VarnholtLib/Services/vrnSystemRandomBytesLoadPrivate.h"

namespace Varnholt {
namespace {

constexpr std::int32_t kIVSize = 16;

class TSystemRandomBytes final : public IRandomBytes {
public:
    std::vector<std::uint8_t> GetRandomBytes(std::int32_t count) override {
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(std::max(count, 0)));
        FillWithSystemRandom(bytes);
        return bytes;
    }
    std::vector<std::uint8_t> GetIVBytes() override { return GetRandomBytes(kIVSize); }
};

constinit TModuleState<std::shared_ptr<IRandomBytes>> instance;

}  // namespace

std::shared_ptr<IRandomBytes> TSystemRandomBytesFactory::GetObject() {
    if (const std::shared_ptr<IRandomBytes>* const shared = instance.Get()) return *shared;
    return std::make_shared<TSystemRandomBytes>();  // before the load of the library, or after its unload
}

void CreateSystemRandomBytes() noexcept {
    instance.Create(std::make_shared<TSystemRandomBytes>());
}

void ReleaseSystemRandomBytes() noexcept {
    instance.Destroy();
}

}  // namespace Varnholt
