#include "Platform/Runtime/Guid.h"

#include <pthread.h>

#include <algorithm>
#include <array>
#include <atomic>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Random.h"

namespace Varnholt {

void RaiseInvalidGuid(StringView text) {
    throw EConvertError(Format(u"'%s' is not a valid GUID", {text}));
}

namespace {

std::atomic<unsigned> forks = 0;

/// Whether a fork is noticed from now on, so that the two processes do not use the same bytes.
bool NoticesForks() {
    static const bool isRegistered = pthread_atfork(nullptr, nullptr, [] { ++forks; }) == 0;
    return isRegistered;
}

/// Random bytes of one thread, taken from the system many at a time: a call of the system for each GUID takes longer than
/// reading the row that it identifies.
struct TRandomBlock {
    std::array<std::uint8_t, 1024> Bytes;
    std::size_t Used;
    unsigned Forks;
    bool IsFilled;

    void Take(std::span<std::uint8_t> target) {
        if (!NoticesForks()) return FillWithSystemRandom(target);
        if (!IsFilled || Forks != forks || Used + target.size() > Bytes.size()) {
            IsFilled = false;
            FillWithSystemRandom(Bytes);
            Forks = forks;
            Used = 0;
            IsFilled = true;
        }
        std::copy_n(Bytes.begin() + static_cast<std::ptrdiff_t>(Used), target.size(), target.begin());
        Used += target.size();
    }
};

thread_local TRandomBlock
    block;  // without constructor and destructor, so that it does not keep the library loaded

}  // namespace

TGuid CreateGuid() {
    TGuid guid;
    block.Take(guid.Bytes);
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
