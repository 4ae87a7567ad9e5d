#pragma once

#include <cstddef>
#include <string>

#include "Platform/Runtime/Types.h"

/// Names and texts on their way into a document: UTF-8, checked against the rules of XML and the parser's limits.
namespace Varnholt {

inline constexpr std::size_t kMaxXmlFile = std::size_t{64} << 20;  // bytes
inline constexpr int kMaxXmlDepth = 256;                           // elements
inline constexpr std::size_t kMaxXmlText = 10'000'000;             // bytes in UTF-8
inline constexpr std::size_t kMaxXmlAttribute =
    1'000'000;                                      // bytes in UTF-8; escaped, the parser takes 10 times that
inline constexpr int kMaxXmlAttributes = 256;       // of an element; the parser compares each with each
inline constexpr std::size_t kMaxXmlName = 50'000;  // bytes in UTF-8

/// The text in UTF-8. Raises EXMLDocError.
[[nodiscard]] std::string CheckedXmlText(StringView text);

/// The same for the value of an attribute.
[[nodiscard]] std::string CheckedXmlAttribute(StringView text);

/// The name in UTF-8. Raises EXMLDocError.
[[nodiscard]] std::string CheckedXmlName(StringView name);

}  // namespace Varnholt
