#include "Platform/Runtime/Exceptions.h"

#include "Platform/Runtime/Format.h"

namespace Varnholt {

struct Exception::TTexts {
    String Message;
    std::string Utf8;
};

Exception::Exception(StringView message)
    : FTexts(std::make_shared<const TTexts>(TTexts{String(message), ToUtf8(message)})) {}

Exception::~Exception() = default;

const String& Exception::GetMessage() const noexcept {
    return FTexts->Message;
}

const char* Exception::what() const noexcept {
    return FTexts->Utf8.c_str();
}

EListError EListError::IndexOutOfBounds(std::int64_t index) {
    return EListError(Format(u"List index out of bounds (%d)", {index}));
}

}  // namespace Varnholt
