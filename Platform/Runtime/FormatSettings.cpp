#include "Platform/Runtime/FormatSettings.h"

#include <langinfo.h>

#include <algorithm>
#include <clocale>
#include <cstring>
#include <cwchar>
#include <optional>
#include <string_view>

#include "Platform/Runtime/Immortal.h"

namespace Varnholt {
namespace {

std::optional<Char> DecodeSeparator(const char* bytes) {
    const std::size_t length = std::strlen(bytes);
    std::mbstate_t state{};
    wchar_t character = 0;
    const std::size_t used = std::mbrtowc(&character, bytes, length, &state);  // above length: not decodable
    if (length == 0 || used != length || static_cast<unsigned long>(character) > 0xFFFF) return std::nullopt;
    return static_cast<Char>(character);
}

/// The field of a date format for a letter of strftime; empty for others.
StringView DateField(char letter) {
    switch (letter) {
        case 'd':
            return u"DD";
        case 'e':
            return u"D";
        case 'm':
            return u"MM";
        case 'y':
        case 'Y':
            return u"YYYY";
        default:
            return {};
    }
}

/// Takes order and separator from a date format of strftime such as "%d.%m.%Y"; leaves the settings as they
/// are unless it is of that form.
void TakeDateFormat(std::string_view format, TFormatSettings& settings) {
    String pattern;
    Char separator = 0;
    int fields = 0;
    for (; !format.empty(); ++fields) {
        if (fields > 0) {
            const auto c = static_cast<unsigned char>(format.front());
            if (c == '%' || c > 0x7E) return;
            if (separator == 0) separator = static_cast<Char>(c);
            format.remove_prefix(1);
            pattern += u'/';
            if (format.empty() || format == " ") break;  // a separator after the last field
        }
        if (format.size() < 2 || format[0] != '%') return;
        const std::size_t flags = format[1] == '-' ? 1 : 0;
        if (format.size() < 2 + flags) return;
        const StringView field = DateField(format[1 + flags]);
        if (field.empty() || pattern.find(field.front()) != String::npos) return;
        pattern += field;
        format.remove_prefix(2 + flags);
    }
    if (fields != 3) return;
    settings.DateSeparator = separator;
    settings.ShortDateFormat = settings.LongDateFormat = pattern;
}

TFormatSettings OfLocale() {
    TFormatSettings settings;
    const std::lconv& numbers = *std::localeconv();
    settings.DecimalSeparator = DecodeSeparator(numbers.decimal_point).value_or(u'.');
    settings.ThousandSeparator =
        DecodeSeparator(numbers.thousands_sep).value_or(settings.DecimalSeparator == u',' ? u'.' : u',');
    const char* const locale = std::setlocale(LC_TIME, nullptr);
    const std::string_view name = locale != nullptr ? locale : "C";
    if (name != "C" && name != "POSIX") TakeDateFormat(nl_langinfo(D_FMT), settings);
    return settings;
}

TFormatSettings& InvariantSettings() {
    static TImmortal<TFormatSettings> settings;
    return *settings;
}

// Both, because nothing may be created any more when FreeTexts runs.
[[maybe_unused]] const bool kCreatedAtLoad = &InvariantSettings() != &FormatSettings();

/// Frees the texts after all static destructors, also when the library is unloaded; the separators stay.
[[gnu::destructor(101)]] void FreeTexts() noexcept {
    for (TFormatSettings* const settings : {&InvariantSettings(), &FormatSettings()})
        for (const auto text : {&TFormatSettings::ShortDateFormat, &TFormatSettings::LongDateFormat,
                                &TFormatSettings::ShortTimeFormat, &TFormatSettings::LongTimeFormat})
            String().swap(settings->*text);
}

}  // namespace

const TFormatSettings& TFormatSettings::Invariant() {
    return InvariantSettings();
}

TFormatSettings& FormatSettings() {
    static TImmortal<TFormatSettings> settings(OfLocale());
    return *settings;
}

void RefreshFormatSettings() {
    FormatSettings() = OfLocale();
}

}  // namespace Varnholt
