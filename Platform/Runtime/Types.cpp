#include "Platform/Runtime/Types.h"

#include <unicode/ustring.h>

#include "Platform/Runtime/Exceptions.h"

namespace Varnholt {
namespace {

constexpr UChar32 kReplacement = 0xFFFD;
constexpr std::size_t kMaxLength = std::numeric_limits<std::int32_t>::max() / 3;

std::int32_t CheckedLength(std::size_t length) {
    if (length > kMaxLength) throw EArgumentException(u"Text is too long to convert");
    return static_cast<std::int32_t>(length);
}

}  // namespace

std::string ToUtf8(StringView text) {
    const std::int32_t length = CheckedLength(text.size());
    std::string bytes(text.size() * 3, '\0');  // a code unit takes three bytes at most
    std::int32_t used = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8WithSub(bytes.data(), static_cast<std::int32_t>(bytes.size()), &used, text.data(), length,
                       kReplacement, nullptr, &status);
    bytes.resize(static_cast<std::size_t>(used));
    return bytes;
}

String FromUtf8(std::string_view bytes) {
    const std::int32_t length = CheckedLength(bytes.size());
    String text(bytes.size(), u'\0');  // a byte becomes at most one code unit
    std::int32_t used = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(text.data(), static_cast<std::int32_t>(text.size()), &used, bytes.data(), length,
                         kReplacement, nullptr, &status);
    text.resize(static_cast<std::size_t>(used));
    return text;
}

}  // namespace Varnholt
