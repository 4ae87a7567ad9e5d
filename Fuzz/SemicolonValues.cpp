#include <map>

#include "Fuzz/FuzzInput.h"
#include "VarnholtLib/Foundation/vrnSemicolonValueReader.h"

/// Semicolon-separated pairs beside a plain split into a map.
namespace Varnholt::Fuzz {
namespace {

/// The pairs of the text; false where a key comes twice.
bool ReadPlainly(StringView text, std::map<String, String>& pairs) {
    bool isUnique = true;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(u';', at), text.size());
        const StringView entry = text.substr(at, end - at);
        const std::size_t equals = std::min(entry.find(u'='), entry.size());
        const StringView value = entry.substr(std::min(equals + 1, entry.size()));
        if (!entry.empty()) isUnique &= pairs.emplace(entry.substr(0, equals), value).second;
        at = end + 1;
    }
    return isUnique;
}

}  // namespace

void RunInput(TInput input) {
    const String text = TextOf(input);
    std::map<String, String> expected;
    const bool isUnique = ReadPlainly(text, expected);

    TSemicolonValueReader reader(u"");
    const String failure = FailureOf([&] { reader.Parse(text); });
    Require(failure.empty() == isUnique, "a key that comes twice is refused, all else is read");
    if (!isUnique) return Require(reader.GetCount() == 0, "a refused text adds nothing");

    String written;
    for (const auto& [key, value] : reader) {
        const auto found = expected.find(key);
        Require(found != expected.end() && found->second == value, "the pairs of a plain split");
        RequireSame(reader[key], value, "a key finds its value");
        written += key + u"=" + value + u";";
    }
    Require(reader.GetCount() == static_cast<std::int32_t>(expected.size()),
            "as many pairs as a plain split");
    const TSemicolonValueReader again(written);
    Require(std::equal(again.begin(), again.end(), reader.begin(), reader.end()), "pairs are read back");
    if (reader.GetCount() > 0)
        Require(!FailureOf([&] { reader.Parse(written); }).empty(), "a key that is present is refused");
}

}  // namespace Varnholt::Fuzz
