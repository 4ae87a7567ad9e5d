#include "VarnholtLib/Foundation/vrnExceptions.h"

namespace Varnholt {

TSharedText::TSharedText(StringView text) : FText(std::make_shared<const String>(text)) {}

EExException::EExException(StringView typeAndMethod, StringView info)
    : Exception(info), FTypeAndMethod(typeAndMethod), FInfo(info) {}

EExArgumentNilException::EExArgumentNilException(StringView typeAndMethod, StringView argName)
    : EArgumentNilException(argName), FTypeAndMethod(typeAndMethod), FArgName(argName) {}

EExArgumentException::EExArgumentException(StringView typeAndMethod, StringView argName, StringView info)
    : EArgumentException(argName), FTypeAndMethod(typeAndMethod), FArgName(argName), FInfo(info) {}

EExObjectNotInitializedException::EExObjectNotInitializedException(StringView typeAndMethod,
                                                                   StringView itemName, StringView info)
    : Exception(String(u"Item not initialized: ").append(itemName)),
      FTypeAndMethod(typeAndMethod),
      FItemName(itemName),
      FInfo(info) {}

}  // namespace Varnholt
