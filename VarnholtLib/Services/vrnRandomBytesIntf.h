#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "Platform/Runtime/Guid.h"

/// Random bytes behind an interface. vrnRandomBytesFactory.h gives the source of the system.
///
/// Threads: an object may be used by any thread.
namespace Varnholt {

class VARNHOLT_EXPORT IRandomBytes {
public:
    static constexpr TGuid kGuid = TGuid::FromText(u"{193DA53B-9BCA-4F18-BA49-BEF36FD7D3BB}");

    virtual ~IRandomBytes() = default;
    /// So many bytes; none for a count below 1.
    [[nodiscard]] virtual std::vector<std::uint8_t> GetRandomBytes(std::int32_t count) = 0;
    /// 16 bytes, the size of an initialisation vector.
    [[nodiscard]] virtual std::vector<std::uint8_t> GetIVBytes() = 0;
};

}  // namespace Varnholt
