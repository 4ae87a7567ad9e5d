#pragma once

#include <deque>
#include <memory>
#include <memory_resource>
#include <unordered_map>
#include <vector>

#include "Platform/Xml/XmlDocument.h"
#include "Platform/Xml/XmlParsePrivate.h"

/// The document service over the tree of libxml2. Each node of the tree that a caller has seen has one TNode, found
/// through its `_private` member and owned by the document. The interfaces that callers hold are shared pointers
/// to the document that point at a TNode, so nothing but the document is counted, and nodes form no cycles.
///
/// Names are interned in the dictionary of the tree, so that equal names are equal pointers.
namespace Varnholt {

class TXmlTree;
class TXmlNode;

/// The child elements of a node.
class TXmlChildren final : public IXMLNodeList {
public:
    explicit TXmlChildren(TXmlNode& owner) : FOwner(owner) {}
    std::int32_t GetCount() override;
    std::shared_ptr<IXMLNode> GetNode(std::int64_t index) override;
    std::shared_ptr<IXMLNode> FindNode(StringView name) override;
    std::shared_ptr<IXMLNode> First() override;
    std::int32_t IndexOf(StringView name) override;
    void Add(const std::shared_ptr<IXMLNode>& node) override;

    /// Inserts a detached element before the child of that index, -1 for the end.
    void Insert(TXmlNode& node, std::int64_t index);
    /// Called when a child was taken out.
    void Forget() noexcept { FListed.reset(); }
    /// The first child of an interned name and its index; null and -1 if there is none.
    TXmlNode* Find(const xmlChar* name, std::int32_t& index);

private:
    /// The elements of the tree.
    struct TListed {
        std::vector<xmlNode*> Elements;
        std::unordered_map<const xmlChar*, std::int32_t> First;  // of each name, once there are many children
    };

    TListed& List();
    void Append(TListed& listed, xmlNode* element);

    TXmlNode& FOwner;
    std::unique_ptr<TListed> FListed;  // most elements of a large document are never asked for their list
};

/// The attributes of a node.
class TXmlAttributes final : public IXMLNodeList {
public:
    explicit TXmlAttributes(TXmlNode& owner) : FOwner(owner) {}
    std::int32_t GetCount() override;
    std::shared_ptr<IXMLNode> GetNode(std::int64_t index) override;
    std::shared_ptr<IXMLNode> FindNode(StringView name) override;
    std::shared_ptr<IXMLNode> First() override;
    std::int32_t IndexOf(StringView name) override;
    void Add(const std::shared_ptr<IXMLNode>& node) override;

    [[nodiscard]] xmlAttr* Find(StringView name);

private:
    TXmlNode& FOwner;
};

class TXmlNode final : public IXMLNode {
public:
    TXmlNode(TXmlTree& tree, xmlNode* node)
        : FTree(tree), FNode(node), FChildren(*this), FAttributes(*this) {}
    TXmlNode(const TXmlNode&) = delete;
    TXmlNode& operator=(const TXmlNode&) = delete;

    String GetNodeName() override;
    String GetText() override;
    void SetText(StringView text) override;
    Variant GetNodeValue() override { return GetText(); }
    void SetNodeValue(const Variant& value) override { SetText(value.ToText()); }
    Variant GetAttribute(StringView name) override;
    void SetAttribute(StringView name, const Variant& value) override;
    bool HasAttribute(StringView name) override { return FAttributes.Find(name) != nullptr; }
    std::shared_ptr<IXMLNodeList> GetAttributeNodes() override;
    std::shared_ptr<IXMLNodeList> GetChildNodes() override;
    std::shared_ptr<IXMLNode> AddChild(StringView name, std::int64_t index) override;
    Variant GetChildValue(StringView name) override;
    void SetChildValue(StringView name, const Variant& value) override;
    std::shared_ptr<IXMLNode> NextSibling() override;
    std::shared_ptr<IXMLDocument> GetOwnerDocument() override;

    [[nodiscard]] TXmlTree& Tree() const noexcept { return FTree; }
    [[nodiscard]] xmlNode* Raw() const noexcept { return FNode; }
    [[nodiscard]] xmlAttr* RawAttribute() const noexcept { return reinterpret_cast<xmlAttr*>(FNode); }
    [[nodiscard]] bool IsElement() const noexcept { return FNode->type == XML_ELEMENT_NODE; }
    [[nodiscard]] TXmlChildren& Children() noexcept { return FChildren; }
    /// Takes the node out of its place in the tree.
    void Detach() noexcept;

private:
    TXmlTree& FTree;
    xmlNode* const FNode;
    TXmlChildren FChildren;
    TXmlAttributes FAttributes;
};

/// The root element as a list.
class TXmlRoots final : public IXMLNodeList {
public:
    explicit TXmlRoots(TXmlTree& tree) : FTree(tree) {}
    std::int32_t GetCount() override;
    std::shared_ptr<IXMLNode> GetNode(std::int64_t index) override;
    std::shared_ptr<IXMLNode> FindNode(StringView name) override;
    std::shared_ptr<IXMLNode> First() override;
    std::int32_t IndexOf(StringView name) override;
    void Add(const std::shared_ptr<IXMLNode>& node) override;

private:
    TXmlTree& FTree;
};

class TXmlTree final : public IXMLDocument, public std::enable_shared_from_this<TXmlTree> {
public:
    explicit TXmlTree(TXmlDocPtr document) : FDocument(std::move(document)), FRoots(*this) {}
    ~TXmlTree() override;
    TXmlTree(const TXmlTree&) = delete;
    TXmlTree& operator=(const TXmlTree&) = delete;

    std::shared_ptr<IXMLNode> GetDocumentElement() override;
    std::shared_ptr<IXMLNodeList> GetChildNodes() override;
    std::shared_ptr<IXMLNode> AddChild(StringView name) override;
    std::shared_ptr<IXMLNode> CreateElement(StringView name, StringView nameSpace) override;
    std::shared_ptr<IXMLNode> CreateNode(StringView name, TXMLNodeType kind, StringView text) override;
    void SaveToFile(StringView fileName) override;

    [[nodiscard]] xmlDoc* Raw() const noexcept { return FDocument.get(); }
    [[nodiscard]] TXmlNode& NodeOf(xmlNode* node);
    [[nodiscard]] TXmlNode& NewElement(StringView name);
    [[nodiscard]] TXmlNode& NewAttribute(StringView name, StringView text);
    /// The interned form of a name; null if no node of the document can have it.
    [[nodiscard]] const xmlChar* Interned(StringView name) const;
    /// The interned name of a node, prefix included.
    [[nodiscard]] const xmlChar* NameOf(const xmlNode* node) const;
    /// A reference for callers; it keeps the document alive.
    [[nodiscard]] std::shared_ptr<IXMLNode> Share(TXmlNode& node) { return {shared_from_this(), &node}; }
    [[nodiscard]] std::shared_ptr<IXMLNode> Share(xmlNode* node);
    /// The node behind a reference of a caller, checked for being an element or attribute of this document.
    [[nodiscard]] TXmlNode& Own(const std::shared_ptr<IXMLNode>& node, bool isElement);

private:
    TXmlNode& NewNode(xmlNode* node);
    [[nodiscard]] const xmlChar* InternedWithPrefix(const std::string& name) const;

    TXmlDocPtr FDocument;
    std::pmr::monotonic_buffer_resource
        FNodeMemory;  // in blocks that grow, so that a large document is freed fast
    std::pmr::deque<TXmlNode> FNodes{&FNodeMemory};
    TXmlRoots FRoots;
};

}  // namespace Varnholt
