#include "VarnholtLib/Data/vrnRangeParser.h"

#include <algorithm>
#include <functional>
#include <new>
#include <utility>
#include <vector>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/StringList.h"
#include "VarnholtLib/Foundation/vrnString.h"

namespace Varnholt {
namespace {

constexpr Char kRangeMark = u'_';

/// The text with each range dash, a minus followed by a blank, replaced by the mark.
String WithRangeMarks(StringView text) {
    String marked(text);
    for (std::size_t at = 0; at + 1 < marked.size(); ++at) {
        if (marked[at] == u'-' && marked[at + 1] == u' ') marked[at] = kRangeMark;
    }
    return marked;
}

template <typename TReadValue>
TRange ReadRange(StringView part, TReadValue readValue) {
    constexpr std::int32_t kRefused = -1;
    const std::vector<String> ends = SplitString(part, kRangeMark, true);
    if (ends.empty() || ends.size() > 2) return {};
    const std::int32_t first = readValue(ends.front());
    const TRange range{first, ends.size() == 1 ? first : readValue(ends.back())};
    if (range.Last < range.First) throw Exception(u"Syntax Error");
    if (range.First == kRefused || range.Last == kRefused) throw Exception(u"Syntax error");
    return range;
}

/// Raises if of any two ranges the one with the greater First does not begin beyond the Last of the other, or
/// both have the same First. It suffices to compare neighbours in the order of First: no range runs
/// backwards, so with a, b, c in this order c.First > b.Last >= b.First > a.Last; and every failure has the
/// same text.
void CheckApart(std::vector<TRange> ranges) {
    std::ranges::sort(ranges, std::less<>(), &TRange::First);
    const auto overlap = [](const TRange& a, const TRange& b) { return b.First <= a.Last; };
    if (std::ranges::adjacent_find(ranges, overlap) != ranges.end()) throw Exception(u"Syntax error");
}

/// Whether the call that fills the values passed; if not, they are empty.
template <typename TFill>
bool Try(TIntegerArray& values, TFill fill) noexcept {
    try {
        values = fill();
        return true;
    } catch (...) {
        values = TIntegerArray();
        return false;
    }
}

}  // namespace

String TRange::ToString() const {
    return First == Last ? IntToStr(First) : Format(u"%d - %d", {First, Last});
}

TRangeParser::TRangeParser(StringView text) {
    Read(text, [](StringView value) { return StrToInt(value); });
}

TRangeParser::TRangeParser(StringView text, const TStringList& names) {
    Read(text, [&names](StringView name) { return names.IndexOf(name); });
}

template <typename TReadValue>
void TRangeParser::Read(StringView text, TReadValue readValue) {
    std::vector<TRange> ranges;
    for (const String& part : SplitString(WithRangeMarks(text), u',', true)) {
        ranges.push_back(ReadRange(part, readValue));
    }
    CheckApart(ranges);
    FRanges = TDynArray<TRange>(std::move(ranges));
}

TIntegerArray TRangeParser::ToValuesArray() const {
    std::int64_t count = 0;
    for (const TRange& range : FRanges) count += std::int64_t{range.Last} - range.First + 1;
    if (count > kMaxRangeValues) {
        throw ERangeError(Format(u"The ranges cover %d values, more than %d", {count, kMaxRangeValues}));
    }
    try {
        TIntegerArray values = TIntegerArray::WithLength(count);
        std::int32_t* next = values.begin();
        for (const TRange& range : FRanges) {
            // Counted in 64 bits: a range may end at the greatest 32-bit integer.
            for (std::int64_t value = range.First; value <= range.Last; ++value) {
                *next++ = static_cast<std::int32_t>(value);
            }
        }
        return values;
    } catch (const std::bad_alloc&) {
        throw ERangeError(Format(u"Not enough memory for %d values", {count}));
    }
}

bool TRangeParser::TryToValuesArray(TIntegerArray& values) const noexcept {
    return Try(values, [this] { return ToValuesArray(); });
}

TIntegerArray TRangeParser::Parse(StringView text) {
    return TRangeParser(text).ToValuesArray();
}

bool TRangeParser::TryParse(StringView text, TIntegerArray& values) noexcept {
    return Try(values, [text] { return Parse(text); });
}

bool TRangeParser::TestRangeString(StringView text) noexcept {
    try {
        const TRangeParser ranges(text);
        return true;
    } catch (...) {
        return false;
    }
}

}  // namespace Varnholt
