#include <libxml/tree.h>

#include "Platform/Runtime/Format.h"
#include "Platform/Xml/XmlDocument.h"
#include "Platform/Xml/XmlTextPrivate.h"

namespace Varnholt {
namespace {

bool IsHighSurrogate(Char c) {
    return (c & 0xFC00) == 0xD800;
}

bool IsLowSurrogate(Char c) {
    return (c & 0xFC00) == 0xDC00;
}

/// Whether a character of the basic plane belongs to the production Char of XML 1.0.
bool IsXmlChar(Char c) {
    return (c >= 0x20 && c < 0xD800) || (c >= 0xE000 && c <= 0xFFFD) || c == u'\t' || c == u'\n' ||
           c == u'\r';
}

void CheckCharacters(StringView text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (IsXmlChar(text[i])) continue;
        if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            ++i;
            continue;
        }
        throw EXMLDocError(
            Format(u"XML cannot hold character U+%.4x", {static_cast<std::uint16_t>(text[i])}));
    }
}

void CheckSize(const std::string& utf8, std::size_t limit, StringView kind) {
    if (utf8.size() > limit)
        throw EXMLDocError(Format(u"An XML %s cannot have more than %d bytes", {kind, limit}));
}

}  // namespace

std::string CheckedXmlText(StringView text) {
    CheckCharacters(text);
    std::string utf8 = ToUtf8(text);
    CheckSize(utf8, kMaxXmlText, u"text");
    return utf8;
}

std::string CheckedXmlAttribute(StringView text) {
    std::string utf8 = CheckedXmlText(text);
    CheckSize(utf8, kMaxXmlAttribute, u"attribute");
    return utf8;
}

std::string CheckedXmlName(StringView name) {
    std::string utf8 = ToUtf8(name);
    CheckSize(utf8, kMaxXmlName, u"name");
    const auto* const bytes = reinterpret_cast<const xmlChar*>(utf8.c_str());
    const bool hasZero = utf8.find('\0') != std::string::npos;
    if (hasZero || xmlValidateQName(bytes, 0) != 0)
        throw EXMLDocError(Format(u"\"%s\" is not an XML name", {name}));
    if (name == u"xmlns" || name.starts_with(u"xmlns:"))
        throw EXMLDocError(Format(u"\"%s\" declares an XML namespace", {name}));
    return utf8;
}

}  // namespace Varnholt
