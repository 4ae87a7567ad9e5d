#pragma once

#include <initializer_list>
#include <memory>
#include <vector>

#include "Platform/Xml/XmlDocument.h"

/// Reading XML documents whose elements and attributes are required.
///
///     const auto root = TXmlUtils::GetRootNode(LoadXMLDocument(path), u"stations");
///     for (const auto& station : TXmlUtils::GetChildNodes(root, u"station")) {
///         TXmlUtils::CheckAttributes(station, {u"name", u"height"});
///         Show(TXmlUtils::GetAttributeValue(station, u"name"));
///     }
///
/// Names compare exactly. What is missing raises EXMLDocError with the name of the element: `The XML document has no
/// root element "%s"`, `XML element "%s" has no element "%s"`, `XML element "%s" has no attribute "%s"`. A null
/// document or node raises EArgumentNilException.
///
/// Threads: as the documents.
namespace Varnholt {

class VARNHOLT_EXPORT TXmlUtils {
public:
    TXmlUtils() = delete;
    /// The root element, which must have that name.
    [[nodiscard]] static std::shared_ptr<IXMLNode> GetRootNode(const std::shared_ptr<IXMLDocument>& document,
                                                               StringView name);
    /// The first child element of that name, which must exist.
    [[nodiscard]] static std::shared_ptr<IXMLNode> GetChild(const std::shared_ptr<IXMLNode>& node,
                                                            StringView name);
    /// The child elements of that name, in document order.
    [[nodiscard]] static std::vector<std::shared_ptr<IXMLNode>> GetChildNodes(
        const std::shared_ptr<IXMLNode>& node, StringView name);
    /// Raises for the first of the names that the node does not have.
    static void CheckAttributes(const std::shared_ptr<IXMLNode>& node,
                                std::initializer_list<StringView> names);
    static void CheckChildNodes(const std::shared_ptr<IXMLNode>& node,
                                std::initializer_list<StringView> names);
    /// The text of the attribute, which must exist.
    [[nodiscard]] static String GetAttributeValue(const std::shared_ptr<IXMLNode>& node, StringView name);
    /// The text of the node.
    [[nodiscard]] static String GetValue(const std::shared_ptr<IXMLNode>& node);
};

}  // namespace Varnholt
