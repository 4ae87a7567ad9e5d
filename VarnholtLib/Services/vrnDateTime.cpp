#include "VarnholtLib/Services/vrnDateTime.h"

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Numbers.h"

namespace Varnholt {

TDateTime YYYYMMDDToDate(StringView text) {
    const bool hasDashes = text.size() == 10;
    if (hasDashes && (text[4] != u'-' || text[7] != u'-')) throw Exception(u"Invalid YYYY-MM-DD format");
    if (!hasDashes && text.size() != 8) throw Exception(u"Invalid YYYYMMDD string length");
    const std::size_t dash = hasDashes ? 1 : 0;
    const std::int32_t year = StrToInt(text.substr(0, 4));
    const std::int32_t month = StrToInt(text.substr(4 + dash, 2));
    return EncodeDate(year, month, StrToInt(text.substr(6 + 2 * dash, 2)));
}

bool TryYYYYMMDDToDate(StringView text, TDateTime& date) {
    try {
        date = YYYYMMDDToDate(text);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

TFormatSettings TDateTimeHelper::GetInvariantFormatSettings() {
    TFormatSettings settings = TFormatSettings::Invariant();
    settings.DateSeparator = u'/';
    settings.TimeSeparator = u':';
    settings.ShortDateFormat = settings.LongDateFormat = u"MM/DD/YYYY";
    settings.ShortTimeFormat = settings.LongTimeFormat = u"HH:MM:SS";
    return settings;
}

TDateTime TDateTimeHelper::ParseInvariant(StringView text) {
    return StrToDateTime(text, GetInvariantFormatSettings());
}

}  // namespace Varnholt
