#include "VarnholtLib/Data/vrnRangeParser.h"

#include <gmock/gmock.h>

#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/StringList.h"
#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;

/// The ranges as text, or what happened instead.
template <typename... TNames>
std::string Parsed(StringView text, const TNames&... names) {
    String result;
    try {
        for (const TRange& range : TRangeParser(text, names...).ToArray()) {
            result += (result.empty() ? u"" : u", ") + range.ToString();
        }
    } catch (const Exception& failure) {
        result = (typeid(failure) == typeid(Exception) ? u"! " : u"!! ") + failure.GetMessage();
    }
    return ToUtf8(result);
}

// clang-format off
const std::pair<StringView, const char*> numbers[] = {
    {u"1 - 5, 8", "1 - 5, 8"},                   {u" 8 ,1 -  3,$A- 11", "8, 1 - 3, 10 - 11"},
    {u"1 - 3, 4 - 5", "1 - 3, 4 - 5"},           {u"-5, -4 - -2, 3_4", "-5, -4 - -2, 3 - 4"},
    {u"7 - 7", "7"},                             {u"2147483647, -9 - -2", "2147483647, -9 - -2"},
    {u"", ""},                                   {u" ", "0"},
    {u"1,,3", "1, 0, 3"},                        {u"1 - 2 - 3", "0"},
    {u"1 - 2 - 3, 0", "! Syntax error"},         {u",", "! Syntax error"},
    {u"-1", "! Syntax error"},                   {u"-1 - 5", "! Syntax error"},
    {u"-3 - -1", "! Syntax error"},              {u"5 - -1", "! Syntax Error"},
    {u"1 - 3, 3 - 5", "! Syntax error"},         {u"-1, 5 - 1", "! Syntax error"},
    {u"5 - 1", "! Syntax Error"},                {u"9 - 20, 30, 1 - 9", "! Syntax error"},
    {u"20, 4 - 5, 30, 1 - 9", "! Syntax error"}, {u"10 - 20, 30, 1 - 9", "10 - 20, 30, 1 - 9"},
    {u"1-5", "!! '1-5' is not a valid integer value"},
    {u"- 5", "!! '' is not a valid integer value"},
    {u"x - -1", "!! 'x' is not a valid integer value"},
    {u"2147483648", "!! '2147483648' is not a valid integer value"},
};
const std::pair<StringView, const char*> months[] = {
    {u"Jan - Mar, Mid Apr", "0 - 2, 3"},         {u"A-B", "4"},
    {u"Jun", "! Syntax error"},                  {u"Jun - Jan", "! Syntax error"},
    {u"Jan - Jun", "! Syntax Error"},            {u"Mar - Jan", "! Syntax Error"},
    {u"A_B", "! Syntax error"},                  {u"Jan, Feb - Mar, Feb", "! Syntax error"},
};
// clang-format on

TEST(RangeParser, TakesAndRefuses) {
    for (const auto& [text, result] : numbers) {
        EXPECT_EQ(Parsed(text), result) << ToUtf8(text);
        EXPECT_EQ(TRangeParser::TestRangeString(text), *result != '!') << ToUtf8(text);
    }
    TStringList names;
    for (const StringView name : {u"Jan", u"Feb", u"Mar", u"Mid Apr", u"A-B", u"A_B"}) names.Add(name);
    for (const auto& [text, result] : months) EXPECT_EQ(Parsed(text, names), result) << ToUtf8(text);
}

TEST(RangeParser, Values) {
    EXPECT_THAT(TRangeParser::Parse(u"8, -3 - -2, 1 - 3"), ElementsAre(8, -3, -2, 1, 2, 3));
    EXPECT_THAT(TRangeParser::Parse(u"2147483646 - 2147483647"), ElementsAre(2'147'483'646, 2'147'483'647));
    TIntegerArray values;
    for (const StringView text : {u"", u"1 - x", u"1 - 2000000000", u"-2147483648 - -2, 0 - 2147483647"}) {
        values = {7};
        EXPECT_EQ(TRangeParser::TryParse(text, values), text.empty()) << ToUtf8(text);
        EXPECT_TRUE(values.IsEmpty()) << ToUtf8(text);
    }
    const TRangeParser wide(u"5, 0 - 4, 10 - 268435460");
    EXPECT_FALSE(wide.TryToValuesArray(values));
    ExpectRaised<ERangeError>(
        {{[&] { static_cast<void>(wide.ToValuesArray()); },
          u"The ranges cover 268435457 values, more than 268435456"},
         {[&] { static_cast<void>(wide.GetRange(3)); }, u"Array index out of bounds (3)"}});
    String many;  // in descending order; comparing all pairs would take minutes
    for (int i = 100'000; i > 0; --i) many += IntToStr(10 * i) + u" - " + IntToStr(10 * i + 9) + u", ";
    EXPECT_EQ(TRangeParser(many + u"7").ToValuesArray().GetLength(), 1'000'001);
}

}  // namespace
}  // namespace Varnholt::Test
