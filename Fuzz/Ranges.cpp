#include <functional>

#include "Fuzz/FuzzInput.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/StringList.h"
#include "Platform/Runtime/Text.h"
#include "VarnholtLib/Data/vrnRangeParser.h"

/// Ranges of numbers and of names, beside a plain reading of the same rules.
namespace Varnholt::Fuzz {
namespace {

using TRanges = std::vector<TRange>;
using TReadValue = std::function<std::int32_t(StringView)>;

constexpr std::int64_t kMaxExpanded = 100'000;

std::vector<String> TrimmedParts(StringView text, Char separator) {
    std::vector<String> parts;
    if (text.empty()) return parts;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find(separator, at), text.size());
        parts.push_back(Trim(text.substr(at, end - at)));
        at = end + 1;
    }
    return parts;
}

void RequireApart(const TRanges& ranges) {
    for (std::size_t i = 0; i < ranges.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (ranges[i].First <= ranges[j].Last && ranges[j].First <= ranges[i].Last)
                throw Exception(u"Syntax error");
}

TRanges ReadPlainly(String text, const TReadValue& readValue) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i)
        if (text[i] == u'-' && text[i + 1] == u' ') text[i] = u'_';
    TRanges ranges;
    for (const String& part : TrimmedParts(text, u',')) {
        const std::vector<String> ends = TrimmedParts(part, u'_');
        TRange range;
        if (ends.size() == 1 || ends.size() == 2) {
            range.First = readValue(ends[0]);
            range.Last = readValue(ends.back());
            if (range.Last < range.First) throw Exception(u"Syntax Error");
            if (range.First == -1 || range.Last == -1) throw Exception(u"Syntax error");
        }
        ranges.push_back(range);
    }
    RequireApart(ranges);
    return ranges;
}

void RequireValues(const TRangeParser& parser, const TRanges& ranges) {
    std::int64_t count = 0;
    for (const TRange& range : ranges) count += std::int64_t{range.Last} - range.First + 1;
    TIntegerArray values;
    if (count > kMaxRangeValues) Require(!parser.TryToValuesArray(values), "too many values are refused");
    if (count > kMaxExpanded) return;
    std::vector<std::int32_t> expected;
    for (const TRange& range : ranges)
        for (std::int64_t value = range.First; value <= range.Last; ++value)
            expected.push_back(static_cast<std::int32_t>(value));
    values = parser.ToValuesArray();
    Require(std::vector<std::int32_t>(values.begin(), values.end()) == expected, "the values of the ranges");
}

void RequireTextIsReadBack(const TRanges& ranges) {
    String text;
    for (const TRange& range : ranges) text += (text.empty() ? u"" : u", ") + range.ToString();
    const TDynArray<TRange> again = TRangeParser(text).ToArray();
    Require(TRanges(again.begin(), again.end()) == ranges, "the text of ranges is read back");
}

/// Reads the text with the library and plainly. Returns the ranges, none after a failure.
template <typename TMake>
TRanges RequireSameRanges(const String& text, TMake make, const TReadValue& readValue) {
    TRanges expected;
    const String expectedFailure = FailureOf([&] { expected = ReadPlainly(text, readValue); });
    const String failure = FailureOf([&] {
        const TRangeParser parser = make();
        const TDynArray<TRange> ranges = parser.ToArray();
        Require(TRanges(ranges.begin(), ranges.end()) == expected, "the ranges of a plain reading");
        RequireValues(parser, expected);
    });
    RequireSame(failure, expectedFailure, "the failure of a plain reading");
    return expected;
}

}  // namespace

void RunInput(TInput input) {
    const String text = TextOf(input);
    RequireTextIsReadBack(RequireSameRanges(
        text, [&] { return TRangeParser(text); }, [](StringView value) { return StrToInt(value); }));

    TStringList names;
    for (const StringView name : {u"Jan", u"Feb", u"Mar", u"a b", u"5", u"x-y"}) names.Add(name);
    RequireSameRanges(
        text, [&] { return TRangeParser(text, names); },
        [&](StringView value) { return names.IndexOf(value); });
}

}  // namespace Varnholt::Fuzz
