#include "VarnholtLib/Numerics/vrnCoordinates.h"

#include <gtest/gtest.h>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Numbers.h"
#include "Tests/Support/FormatSettingsScope.h"

namespace Varnholt::Test {
namespace {

constexpr StringView kHead = u"Problem parsing the string: ", kTail = u" is not a valid floating point value";

/// The value in decimal digits, or the part of the text that is refused, in quotes. Any other message comes
/// back whole.
String Outcome(float (*read)(StringView), StringView text) {
    try {
        return FloatToStr(read(text));
    } catch (const Exception& failure) {
        const String message = failure.GetMessage();
        if (!message.starts_with(kHead) || !message.ends_with(kTail)) return message;
        return message.substr(kHead.size(), message.size() - kHead.size() - kTail.size());
    }
}

TEST(vrnCoordinates, ReadsOrRefuses) {
    // The longitude has no use for what follows DEG. The long s, 017F, is no S.
    const StringView empty = u"Problem parsing the string: String is empty";
    const std::tuple<StringView, StringView, StringView> cases[] = {
        // clang-format off
        {u"33.5", u"33.5", u"33.5"}, {u"33.5S", u"-33.5", u"'33.5S'"}, {u"33.5s", u"-33.5", u"'33.5S'"},
        {u" 33.5 n", u"33.5", u"' 33.5 N'"}, {u"170.25W", u"'170.25W'", u"-170.25"},
        {u"170.25 e", u"'170.25 E'", u"170.25"}, {u"1e1E", u"'1E1E'", u"10"},
        {u"-33.5S", u"33.5", u"'-33.5S'"}, {u"33,5", u"335", u"335"}, {u";3;3.5,W;", u"'33.5W'", u"-33.5"},
        {u"1E300", u"INF", u"INF"}, {u"33 DEG", u"33", u"33"}, {u"33 deg s", u"-33", u"33"},
        {u"33 DEG 30 MIN", u"33.5", u"33.5"}, {u"33deg30minn", u"33.5", u"33.5"},
        {u"33 DEG 30 MINS", u"-33.5", u"33.5"}, {u"-33 deg, 30 min w", u"-32.5", u"32.5"},
        {u"1 DEG 15 MIN 225 SEC", u"1.3125", u"1.3125"}, {u"33 DEG 30 MIN 0 SEC S", u"-33.5", u"33.5"},
        {u"33 deg 30 min x sec", u"' X '", u"' X '"}, {u"33 deg 30 sec", u"'33 DEG 30 '", u"'33 DEG 30 '"},
        {u"30 min 33 deg", u"'30 MIN 33 '", u"'30 MIN 33 '"}, {u"30 min", u"'30 MIN'", u"'30 MIN'"},
        {u"33 deg min", u"' '", u"' '"}, {u"33.5 S ", u"'33.5 S '", u"'33.5 S '"},
        {u"33.5SS", u"'33.5S'", u"'33.5SS'"}, {u"33.5IN", u"'33.5IN'", u"'33.5IN'"},
        {u"33.5\u017F", u"'33.5\u017F'", u"'33.5\u017F'"}, {u"N", u"'N'", u"'N'"}, {u"S", u"''", u"'S'"},
        {u"E", u"'E'", u"''"}, {u"", empty, empty}, {u",", empty, empty}, {u";,;", empty, empty}};
    // clang-format on
    for (const auto& [text, latitude, longitude] : cases) {
        EXPECT_EQ(Outcome(GetLatitudeValue, text), latitude) << ToUtf8(text);
        EXPECT_EQ(Outcome(GetLongitudeValue, text), longitude) << ToUtf8(text);
    }
    const TFormatSettingsScope comma(u',');
    EXPECT_EQ(Outcome(GetLatitudeValue, u"33.5") + Outcome(GetLatitudeValue, u"33,5"), u"'33.5'335");
    for (const auto& [value, eastwards] : {std::pair{-170.0f, 190.0f}, {170, 170}, {0, 0}})
        EXPECT_EQ(LongitudeVal(value), eastwards);
}

}  // namespace
}  // namespace Varnholt::Test
