#include "Platform/Runtime/FormatSettings.h"

#include <clocale>
#include <cstring>
#include <cwchar>
#include <optional>

namespace Varnholt {
namespace {

constinit TFormatSettings processSettings;

std::optional<Char> DecodeSeparator(const char* bytes) {
    const std::size_t length = std::strlen(bytes);
    std::mbstate_t state{};
    wchar_t character = 0;
    const std::size_t used = std::mbrtowc(&character, bytes, length, &state);  // above length: not decodable
    if (length == 0 || used != length || static_cast<unsigned long>(character) > 0xFFFF) return std::nullopt;
    return static_cast<Char>(character);
}

[[maybe_unused]] const bool kTakenAtLoad = (RefreshFormatSettings(), true);

}  // namespace

TFormatSettings TFormatSettings::Invariant() {
    return TFormatSettings{};
}

TFormatSettings& FormatSettings() {
    return processSettings;
}

void RefreshFormatSettings() {
    const std::lconv& locale = *std::localeconv();
    const Char decimal = DecodeSeparator(locale.decimal_point).value_or(u'.');
    const Char thousand = DecodeSeparator(locale.thousands_sep).value_or(decimal == u',' ? u'.' : u',');
    processSettings = {decimal, thousand};
}

}  // namespace Varnholt
