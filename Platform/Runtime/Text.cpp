#include "Platform/Runtime/Text.h"

#include <algorithm>

namespace Varnholt {
namespace {

constexpr Char kLastBlank = u' ';
constexpr Char kCaseDistance = u'a' - u'A';

Char Upper(Char unit) {
    return unit >= u'a' && unit <= u'z' ? static_cast<Char>(unit - kCaseDistance) : unit;
}

Char Lower(Char unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<Char>(unit + kCaseDistance) : unit;
}

bool SameUnit(Char left, Char right) {
    return Upper(left) == Upper(right);
}

}  // namespace

StringView TrimView(StringView text) {
    while (!text.empty() && text.front() <= kLastBlank) text.remove_prefix(1);
    while (!text.empty() && text.back() <= kLastBlank) text.remove_suffix(1);
    return text;
}

String Trim(StringView text) {
    return String(TrimView(text));
}

bool SameText(StringView left, StringView right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), SameUnit);
}

int CompareText(StringView left, StringView right) {
    const auto [inLeft, inRight] =
        std::mismatch(left.begin(), left.end(), right.begin(), right.end(), SameUnit);
    if (inLeft == left.end()) return inRight == right.end() ? 0 : -1;
    if (inRight == right.end()) return 1;
    return Upper(*inLeft) < Upper(*inRight) ? -1 : 1;
}

bool StartsText(StringView prefix, StringView text) {
    return SameText(prefix, text.substr(0, prefix.size()));
}

bool EndsText(StringView suffix, StringView text) {
    return suffix.size() <= text.size() && SameText(suffix, text.substr(text.size() - suffix.size()));
}

bool ContainsText(StringView part, StringView text) {
    return part.empty() ||
           std::search(text.begin(), text.end(), part.begin(), part.end(), SameUnit) != text.end();
}

String LowerCase(StringView text) {
    String result(text);
    std::transform(result.begin(), result.end(), result.begin(), Lower);
    return result;
}

String UpperCase(StringView text) {
    String result(text);
    std::transform(result.begin(), result.end(), result.begin(), Upper);
    return result;
}

}  // namespace Varnholt
