#include "VarnholtLib/Foundation/vrnDebugUtils.h"

namespace Varnholt {

void DebugWrite(StringView /*text*/) {}

void DebugWrite(StringView /*format*/, std::span<const TFormatArg> /*values*/) {}

void DebugWrite(StringView /*format*/, std::initializer_list<TFormatArg> /*values*/) {}

}  // namespace Varnholt
