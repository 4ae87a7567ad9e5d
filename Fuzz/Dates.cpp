#include "Fuzz/FuzzInput.h"
#include "VarnholtLib/Services/vrnDateTime.h"
#include "VarnholtLib/Services/vrnDateUtils.h"

/// Texts of dates in any form and order: refused, or a value that is written and read back.
namespace Varnholt::Fuzz {

void RunInput(TInput input) {
    TChoices choices(input);
    TFormatSettings settings;
    const StringView formats[] = {u"YYYY/MM/DD", u"DD/MM/YYYY", u"M/D/YYYY", u"YYYY/DD/MM"};
    settings.ShortDateFormat = formats[choices.Below(4)];
    settings.DateSeparator = StringView(u"-./ 1")[static_cast<std::size_t>(choices.Below(5))];
    const bool isPlain = settings.DateSeparator != u' ' && settings.DateSeparator != u'1';
    settings.LongTimeFormat = u"HH:NN:SS.ZZZ";
    const String text = TextOf(choices.Rest());

    TDateTime value = 7;
    if (!TryStrToDateTime(text, value, settings)) {
        Require(value == 7, "a refusal changes nothing");
    } else if (isPlain) {
        TDateTime again = 0;
        Require(TryStrToDateTime(DateTimeToStr(value, settings), again, settings) && again == value,
                "a date and time is read back");
    }
    static_cast<void>(FailureOf([&] { static_cast<void>(FormatDateTime(text, 45000.25, settings)); }));
    static_cast<void>(FailureOf([&] { static_cast<void>(MaskEditToJulian(text)); }));
    if (TryYYYYMMDDToDate(text, value)) {
        TDateTime again = 0;
        const String digits = FormatDateTime(u"yyyymmdd", value);
        Require(TryYYYYMMDDToDate(digits, again) && again == value, "eight digits are read back");
    }
}

}  // namespace Varnholt::Fuzz
