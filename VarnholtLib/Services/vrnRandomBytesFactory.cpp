#include "VarnholtLib/Services/vrnRandomBytesFactory.h"

#include "VarnholtLib/Services/vrnSystemRandomBytes.h"

namespace Varnholt {

std::shared_ptr<IRandomBytes> TRandomBytesFactory::GetObject() {
    return TSystemRandomBytesFactory::GetObject();
}

}  // namespace Varnholt
