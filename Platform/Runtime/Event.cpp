#include "Platform/Runtime/Event.h"

namespace Varnholt {

TObject::~TObject() = default;

}  // namespace Varnholt
