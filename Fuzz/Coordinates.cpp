#include "Fuzz/FuzzInput.h"
#include "Platform/Runtime/Numbers.h"
#include "VarnholtLib/Numerics/vrnCoordinates.h"

/// Latitudes and longitudes beside a plain reading of the same rules.
namespace Varnholt::Fuzz {
namespace {

constexpr StringView kPrefix = u"Problem parsing the string: ";

String CleanText(StringView text) {
    String clean;
    for (Char unit : text) {
        if (unit == u',' || unit == u';') continue;
        clean += unit >= u'a' && unit <= u'z' ? static_cast<Char>(unit - u'a' + u'A') : unit;
    }
    return clean;
}

/// What is between the first `from` and the first `to` after it, if the text contains the word.
String PartOf(const String& text, StringView word, Char from, Char to) {
    if (text.find(word) == String::npos) return u"0";
    const std::size_t start = text.find(from) + 1;
    return text.substr(start, text.find(to, start) - start);
}

bool CutHemisphere(String& text, bool isLatitude) {
    const Char last = text.back();
    const bool isNegative = last == (isLatitude ? u'S' : u'W');
    const bool isNorth = isLatitude && last == u'N' && text.size() > 1 && text[text.size() - 2] != u'I';
    if (isNegative || isNorth || (!isLatitude && last == u'E')) text.pop_back();
    return isNegative;
}

float ReadPlainly(StringView original, bool isLatitude) {
    String text = CleanText(original);
    if (text.empty()) throw Exception(String(kPrefix) + u"String is empty");
    const bool isNegative = CutHemisphere(text, isLatitude);
    try {
        const bool hasWord = text.find(u"DEG") != String::npos;
        Extended value = StrToFloat(hasWord ? text.substr(0, text.find(u'D')) : text);
        value += StrToFloat(PartOf(text, u"MIN", u'G', u'M')) / 60;
        value += StrToFloat(PartOf(text, u"SEC", u'N', u'S')) / 60 / 60;
        return static_cast<float>(isNegative ? -value : value);
    } catch (const EConvertError& failure) {
        throw Exception(String(kPrefix) + failure.GetMessage());
    }
}

}  // namespace

void RunInput(TInput input) {
    const String text = TextOf(input);
    for (const bool isLatitude : {true, false}) {
        float expected = 0, found = 0;
        const String expectedFailure = FailureOf([&] { expected = ReadPlainly(text, isLatitude); });
        const String failure =
            FailureOf([&] { found = isLatitude ? GetLatitudeValue(text) : GetLongitudeValue(text); });
        RequireSame(failure, expectedFailure, "the failure of a plain reading");
        Require(SameValue(found, expected), "the value of a plain reading");
        const float eastwards = LongitudeVal(found);
        Require(found >= 0 ? eastwards == found : eastwards >= found, "a longitude counted eastwards");
    }
}

}  // namespace Varnholt::Fuzz
