#include "Platform/Runtime/Exceptions.h"

namespace Varnholt {

struct Exception::TTexts {
    String message;
    std::string utf8;
};

Exception::Exception(StringView message)
    : FTexts(std::make_shared<const TTexts>(TTexts{String(message), ToUtf8(message)})) {}

Exception::~Exception() = default;

const String& Exception::GetMessage() const noexcept {
    return FTexts->message;
}

const char* Exception::what() const noexcept {
    return FTexts->utf8.c_str();
}

EListError EListError::IndexOutOfBounds(std::int64_t index) {
    return EListError(u"List index out of bounds (" + FromUtf8(std::to_string(index)) + u")");
}

}  // namespace Varnholt
