#pragma once

#include <array>
#include <compare>
#include <cstddef>

#include "Platform/Runtime/Text.h"

/// Identifiers of 128 bits (RFC 4122) for interfaces and stored objects.
///
///     static constexpr TGuid kId = TGuid::FromText(u"{6F9619FF-8B86-4D11-B42D-00C04FC964FF}");
///     node.SetAttribute(u"id", GuidToString(CreateGuid()));
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// Raises EConvertError "'TEXT' is not a valid GUID".
[[noreturn]] VARNHOLT_EXPORT void RaiseInvalidGuid(StringView text);

struct VARNHOLT_EXPORT TGuid {
    std::array<std::uint8_t, 16> Bytes{};  ///< in the order of the text

    /// The identifier of a text of 32 hexadecimal digits of either case, in groups of 8, 4, 4, 4 and 12
    /// separated by dashes, with or without braces. Anything else raises EConvertError "'TEXT' is not a valid
    /// GUID", and does not compile in a constant expression.
    [[nodiscard]] static constexpr TGuid FromText(StringView text);

    /// Equality, and the order of the texts.
    auto operator<=>(const TGuid&) const = default;
};

/// A new random identifier (version 4) from the system's random source. Raises Exception
/// "The system returns no random bytes: REASON" if that fails.
[[nodiscard]] VARNHOLT_EXPORT TGuid CreateGuid();

/// The text "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}", in upper case.
[[nodiscard]] VARNHOLT_EXPORT String GuidToString(const TGuid& guid);

/// The same as TGuid::FromText.
[[nodiscard]] VARNHOLT_EXPORT TGuid StringToGuid(StringView text);

constexpr TGuid TGuid::FromText(StringView text) {
    constexpr std::size_t kLength = 36;
    StringView inner = text;
    if (inner.size() == kLength + 2 && inner.front() == u'{' && inner.back() == u'}')
        inner = inner.substr(1, kLength);
    if (inner.size() != kLength) RaiseInvalidGuid(text);
    TGuid guid;
    std::size_t at = 0;
    for (std::size_t i = 0; i < guid.Bytes.size(); ++i, at += 2) {
        const bool beginsGroup = i == 4 || i == 6 || i == 8 || i == 10;
        if (beginsGroup && inner[at++] != u'-') RaiseInvalidGuid(text);
        const unsigned high = HexDigitValue(inner[at]);
        const unsigned low = HexDigitValue(inner[at + 1]);
        if (high > 15 || low > 15) RaiseInvalidGuid(text);
        guid.Bytes[i] = static_cast<std::uint8_t>(high * 16 + low);
    }
    return guid;
}

}  // namespace Varnholt
