#include "Platform/Runtime/Guid.h"

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Random.h"

namespace Varnholt {

void RaiseInvalidGuid(StringView text) {
    throw EConvertError(Format(u"'%s' is not a valid GUID", {text}));
}

TGuid CreateGuid() {
    TGuid guid;
    FillWithSystemRandom(guid.Bytes);
    guid.Bytes[6] = static_cast<std::uint8_t>((guid.Bytes[6] & 0x0F) | 0x40);  // version 4
    guid.Bytes[8] = static_cast<std::uint8_t>((guid.Bytes[8] & 0x3F) | 0x80);  // variant of RFC 4122
    return guid;
}

String GuidToString(const TGuid& guid) {
    constexpr StringView kDigits = u"0123456789ABCDEF";
    String text = u"{";
    for (std::size_t i = 0; i < guid.Bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) text.push_back(u'-');
        text.push_back(kDigits[guid.Bytes[i] >> 4]);
        text.push_back(kDigits[guid.Bytes[i] & 15]);
    }
    return text + u"}";
}

TGuid StringToGuid(StringView text) {
    return TGuid::FromText(text);
}

}  // namespace Varnholt
