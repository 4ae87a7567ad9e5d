#pragma once

#include "VarnholtLib/Services/vrnRandomBytesIntf.h"

/// The random bytes of the operating system, which are fit for keys.
///
/// Threads: the functions may be called on any thread while the library is loaded.
namespace Varnholt {

class VARNHOLT_EXPORT TSystemRandomBytesFactory {
public:
    TSystemRandomBytesFactory() = delete;
    /// The one source of the process, which exists while the library is loaded. Its operations raise Exception `The
    /// system returns no random bytes: %s` with the reason if that fails.
    [[nodiscard]] static std::shared_ptr<IRandomBytes> GetObject();
};

}  // namespace Varnholt
