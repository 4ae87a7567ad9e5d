#include "VarnholtLib/Foundation/vrnSemicolonValueReader.h"

#include <algorithm>

#include "Platform/Runtime/Exceptions.h"
#include "VarnholtLib/Foundation/vrnString.h"

namespace Varnholt {
namespace {

EListError DuplicateKey(StringView key) {
    return EListError(String(u"Duplicate key: ").append(key));
}

}  // namespace

TSemicolonValueReader::TSemicolonValueReader(StringView text) {
    Parse(text);
}

void TSemicolonValueReader::Parse(StringView text) {
    TItems parsed;
    for (const StringView entry : SplitString(text, u';', false)) {
        if (entry.empty()) continue;
        const std::size_t keyLength = std::min(entry.find(u'='), entry.size());
        const StringView key = entry.substr(0, keyLength);
        const StringView value = entry.substr(std::min(keyLength + 1, entry.size()));
        if (ContainsKey(key) || !parsed.try_emplace(String(key), value).second) throw DuplicateKey(key);
    }
    FItems.merge(parsed);
}

void TSemicolonValueReader::Add(StringView key, StringView value) {
    if (!FItems.try_emplace(String(key), value).second) throw DuplicateKey(key);
}

void TSemicolonValueReader::AddOrSetValue(StringView key, StringView value) {
    FItems.insert_or_assign(String(key), String(value));
}

void TSemicolonValueReader::Remove(StringView key) {
    const auto found = FItems.find(key);
    if (found != FItems.end()) FItems.erase(found);
}

void TSemicolonValueReader::Clear() noexcept {
    FItems.clear();
}

std::int32_t TSemicolonValueReader::GetCount() const noexcept {
    return static_cast<std::int32_t>(FItems.size());
}

bool TSemicolonValueReader::ContainsKey(StringView key) const {
    return FItems.contains(key);
}

bool TSemicolonValueReader::ContainsKeys(std::span<const String> keys) const {
    return std::ranges::all_of(keys, [this](StringView key) { return ContainsKey(key); });
}

bool TSemicolonValueReader::ContainsKeys(std::initializer_list<StringView> keys) const {
    return std::ranges::all_of(keys, [this](StringView key) { return ContainsKey(key); });
}

bool TSemicolonValueReader::TryGetValue(StringView key, String& value) const {
    const auto found = FItems.find(key);
    value = found == FItems.end() ? String() : found->second;
    return found != FItems.end();
}

const String& TSemicolonValueReader::operator[](StringView key) const {
    const auto found = FItems.find(key);
    if (found == FItems.end()) throw EListError(String(u"Key not found: ").append(key));
    return found->second;
}

}  // namespace Varnholt
