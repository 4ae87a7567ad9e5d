#include "VarnholtLib/Numerics/vrnCoordinates.h"

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Text.h"
#include "VarnholtLib/Foundation/vrnString.h"

namespace Varnholt {

namespace {

/// Removes the letter of the hemisphere from the end of the text; true for the negative hemisphere.
using TCutHemisphere = bool (*)(String& text);

bool CutLatitudeLetter(String& text) {
    if (text.ends_with(u'S')) {
        text.pop_back();
        return true;
    }
    if (text.size() > 1 && text.ends_with(u'N') && !text.ends_with(u"IN")) text.pop_back();
    return false;
}

bool CutLongitudeLetter(String& text) {
    const bool isWest = text.ends_with(u'W');
    if (isWest || text.ends_with(u'E')) text.pop_back();
    return isWest;
}

StringView TextBefore(StringView text, Char character) {
    return text.substr(0, text.find(character));
}

/// The number of degrees in a text of upper-case letters without a hemisphere.
Extended ReadDegrees(const String& text) {
    String degrees = text;
    String minutes = u"0";
    String seconds = u"0";
    if (text.find(u"DEG") != String::npos) degrees = TextBefore(text, u'D');
    if (text.find(u"MIN") != String::npos) minutes = TextBefore(TrimString(text, u'G'), u'M');
    if (text.find(u"SEC") != String::npos) seconds = TextBefore(TrimString(text, u'N'), u'S');
    const Extended wholeDegrees = StrToFloat(degrees);
    const Extended wholeMinutes = StrToFloat(minutes);
    return wholeDegrees + wholeMinutes / 60 + StrToFloat(seconds) / 60 / 60;
}

float ReadCoordinate(StringView text, TCutHemisphere cutHemisphere) {
    try {
        String rest = UpperCase(StripChars(text, u",;"));
        if (rest.empty()) throw Exception(u"String is empty");
        const bool isNegative = cutHemisphere(rest);
        const Extended value = ReadDegrees(rest);
        return static_cast<float>(isNegative ? -value : value);
    } catch (const Exception& failure) {
        throw Exception(u"Problem parsing the string: " + failure.GetMessage());
    }
}

}  // namespace

float GetLatitudeValue(StringView text) {
    return ReadCoordinate(text, CutLatitudeLetter);
}

float GetLongitudeValue(StringView text) {
    return ReadCoordinate(text, CutLongitudeLetter);
}

float LongitudeVal(float value) {
    return value < 0 ? value + 360 : value;
}

}  // namespace Varnholt
