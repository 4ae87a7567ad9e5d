#pragma once

#include <libxml/tree.h>

#include <memory>
#include <string_view>

#include "Platform/Runtime/Types.h"

namespace Varnholt {

struct TXmlDocFree {
    void operator()(xmlDoc* document) const noexcept { xmlFreeDoc(document); }
};
using TXmlDocPtr = std::unique_ptr<xmlDoc, TXmlDocFree>;

/// Starts the parser library; any number of calls.
void StartXmlLibrary();

/// The tree of a document, names interned in its dictionary. Raises EXMLDocError with the path in its message.
[[nodiscard]] TXmlDocPtr ParseXml(std::string_view bytes, StringView path);

}  // namespace Varnholt
