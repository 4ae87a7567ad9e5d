#pragma once

#include <cstdint>
#include <initializer_list>
#include <map>
#include <span>

#include "Platform/Runtime/Types.h"

/// Reads texts such as "Server=db1;Port=80;Options=a=b" into a dictionary.
///
///     const TSemicolonValueReader settings(u"Server=db1;Port=80");
///     if (settings.ContainsKeys({u"Server", u"Port"})) Connect(settings[u"Server"], settings[u"Port"]);
///     for (const auto& [key, value] : settings) Show(key, value);
///
/// Threads: an object serves one thread at a time, or any number of threads that only read.
namespace Varnholt {

/// A dictionary from text to text that can be filled from semicolon-separated pairs. Keys are compared
/// exactly, case included. A loop runs over the pairs in the order of their keys by code unit.
class VARNHOLT_EXPORT TSemicolonValueReader {
    using TItems = std::map<String, String, std::less<>>;

public:
    /// The pairs of the text, as Parse reads them.
    explicit TSemicolonValueReader(StringView text);

    /// Adds the pairs of the text. It is split at each ";", and each entry at its first "=": the key is to
    /// the left, the value to the right, which may contain further "=". Nothing is trimmed. An entry without
    /// "=" is a key with an empty value; an empty entry, such as after a ";" at the end, is skipped. A key
    /// that exists already, or occurs twice, raises EListError "Duplicate key: KEY", and then nothing is
    /// added.
    void Parse(StringView text);

    /// Adds a pair. A key that exists already raises EListError "Duplicate key: KEY".
    void Add(StringView key, StringView value);
    /// Adds a pair, or replaces the value of the key.
    void AddOrSetValue(StringView key, StringView value);
    /// Removes a pair; does nothing if there is no such key.
    void Remove(StringView key);
    /// Removes all pairs.
    void Clear() noexcept;

    [[nodiscard]] std::int32_t GetCount() const noexcept;
    [[nodiscard]] bool ContainsKey(StringView key) const;
    /// True if every key is present; also true for no keys.
    [[nodiscard]] bool ContainsKeys(std::span<const String> keys) const;
    [[nodiscard]] bool ContainsKeys(std::initializer_list<StringView> keys) const;

    /// Sets `value` to the value of the key and returns true; if there is no such key, empties it and returns
    /// false.
    [[nodiscard]] bool TryGetValue(StringView key, String& value) const;
    /// The value of the key. A missing key raises EListError "Key not found: KEY".
    [[nodiscard]] const String& operator[](StringView key) const;

    /// The pairs, each a std::pair of key and value, valid until the dictionary changes.
    [[nodiscard]] TItems::const_iterator begin() const noexcept { return FItems.begin(); }
    [[nodiscard]] TItems::const_iterator end() const noexcept { return FItems.end(); }

private:
    TItems FItems;
};

}  // namespace Varnholt
