#include "VarnholtBaseLib/XmlUtils.h"

#include "Platform/Runtime/Format.h"

namespace Varnholt {
namespace {

using TNodePtr = std::shared_ptr<IXMLNode>;

IXMLNode& Present(const TNodePtr& node) {
    if (!node) throw EArgumentNilException(u"node");
    return *node;
}

[[noreturn]] void RaiseMissing(IXMLNode& node, StringView kind, StringView name) {
    throw EXMLDocError(Format(u"XML element \"%s\" has no %s \"%s\"", {node.GetNodeName(), kind, name}));
}

}  // namespace

std::shared_ptr<IXMLNode> TXmlUtils::GetRootNode(const std::shared_ptr<IXMLDocument>& document,
                                                 StringView name) {
    if (!document) throw EArgumentNilException(u"document");
    TNodePtr root = document->GetDocumentElement();
    if (!root || root->GetNodeName() != name)
        throw EXMLDocError(Format(u"The XML document has no root element \"%s\"", {name}));
    return root;
}

std::shared_ptr<IXMLNode> TXmlUtils::GetChild(const std::shared_ptr<IXMLNode>& node, StringView name) {
    TNodePtr child = Present(node).GetChildNodes()->FindNode(name);
    if (!child) RaiseMissing(*node, u"element", name);
    return child;
}

std::vector<std::shared_ptr<IXMLNode>> TXmlUtils::GetChildNodes(const std::shared_ptr<IXMLNode>& node,
                                                                StringView name) {
    std::vector<TNodePtr> children;
    for (TNodePtr child = Present(node).GetChildNodes()->First(); child; child = child->NextSibling())
        if (child->GetNodeName() == name) children.push_back(child);
    return children;
}

void TXmlUtils::CheckAttributes(const std::shared_ptr<IXMLNode>& node,
                                std::initializer_list<StringView> names) {
    for (const StringView name : names)
        if (!Present(node).HasAttribute(name)) RaiseMissing(*node, u"attribute", name);
}

void TXmlUtils::CheckChildNodes(const std::shared_ptr<IXMLNode>& node,
                                std::initializer_list<StringView> names) {
    for (const StringView name : names) static_cast<void>(GetChild(node, name));
}

String TXmlUtils::GetAttributeValue(const std::shared_ptr<IXMLNode>& node, StringView name) {
    const Variant value = Present(node).GetAttribute(name);
    if (value.IsEmpty()) RaiseMissing(*node, u"attribute", name);
    return value.ToText();
}

String TXmlUtils::GetValue(const std::shared_ptr<IXMLNode>& node) {
    return Present(node).GetText();
}

}  // namespace Varnholt
