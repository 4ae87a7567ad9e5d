#include "VarnholtLib/Services/vrnHttpRequest.h"

#include "VarnholtLib/Services/vrnIndyHttpRequest.h"

namespace Varnholt {

std::shared_ptr<IHttpRequest> THttpRequestFactory::GetObject() {
    return std::make_shared<TIndyHttpRequest>();
}

std::shared_ptr<IHttpRequest> THttpRequestFactory::Create() {
    return GetObject();
}

}  // namespace Varnholt
