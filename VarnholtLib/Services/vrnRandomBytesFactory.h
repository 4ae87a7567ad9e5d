#pragma once

#include "VarnholtLib/Services/vrnRandomBytesIntf.h"

/// The library's source of random bytes.
///
///     const std::vector<std::uint8_t> key = TRandomBytesFactory::GetObject()->GetRandomBytes(32);
///
/// Threads: the function may be called on any thread.
namespace Varnholt {

class VARNHOLT_EXPORT TRandomBytesFactory {
public:
    TRandomBytesFactory() = delete;
    /// That of TSystemRandomBytesFactory.
    [[nodiscard]] static std::shared_ptr<IRandomBytes> GetObject();
};

}  // namespace Varnholt
