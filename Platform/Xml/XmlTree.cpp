#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/Text.h"
#include "Platform/Xml/XmlTextPrivate.h"
#include "Platform/Xml/XmlTreePrivate.h"

namespace Varnholt {
namespace {

template <typename T>
T* Allocated(T* object) {
    if (object == nullptr) throw std::bad_alloc();
    return object;
}

const xmlChar* Bytes(const std::string& text) {
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

String TextOf(const xmlChar* bytes) {
    return FromUtf8(reinterpret_cast<const char*>(bytes));
}

bool IsText(const xmlNode* node) {
    return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

xmlNode* FirstElement(xmlNode* node) {
    while (node != nullptr && node->type != XML_ELEMENT_NODE) node = node->next;
    return node;
}

/// The texts of a list of nodes, one after the other.
String JoinedText(const xmlNode* first) {
    String text;
    for (const xmlNode* node = first; node != nullptr; node = node->next) {
        if (!IsText(node) || node->content == nullptr) continue;
        String part = TextOf(node->content);
        if (text.empty())
            text = std::move(part);
        else
            text += part;
    }
    return text;
}

bool IsWhiteSpace(StringView text) {
    return text.find_first_not_of(u" \t\r\n") == StringView::npos;
}

/// How many levels of elements a tree has; never more than kMaxXmlDepth.
int HeightOf(xmlNode* element) {
    int height = 0;
    for (xmlNode* child = FirstElement(element->children); child != nullptr;
         child = FirstElement(child->next))
        height = std::max(height, HeightOf(child));
    return height + 1;
}

/// How many elements a node is inside, itself included.
int DepthOf(const xmlNode* node) {
    int depth = 0;
    for (; node != nullptr && node->type == XML_ELEMENT_NODE; node = node->parent) ++depth;
    return depth;
}

}  // namespace

// --- Child elements ---

void TXmlChildren::Append(TListed& listed, xmlNode* element) {
    constexpr std::size_t kMany = 16;
    listed.Elements.push_back(element);
    const auto enter = [&](std::size_t index) {
        listed.First.try_emplace(FOwner.Tree().NameOf(listed.Elements[index]),
                                 static_cast<std::int32_t>(index));
    };
    if (listed.Elements.size() == kMany)
        for (std::size_t i = 0; i < kMany; ++i) enter(i);
    else if (listed.Elements.size() > kMany)
        enter(listed.Elements.size() - 1);
}

TXmlChildren::TListed& TXmlChildren::List() {
    if (FListed) return *FListed;
    auto listed = std::make_unique<TListed>();
    if (FOwner.IsElement())
        for (xmlNode* node = FirstElement(FOwner.Raw()->children); node; node = FirstElement(node->next))
            Append(*listed, node);
    FListed = std::move(listed);
    return *FListed;
}

std::int32_t TXmlChildren::GetCount() {
    return static_cast<std::int32_t>(List().Elements.size());
}

std::shared_ptr<IXMLNode> TXmlChildren::GetNode(std::int64_t index) {
    const std::vector<xmlNode*>& elements = List().Elements;
    return FOwner.Tree().Share(elements[ListIndex(index, elements.size())]);
}

TXmlNode* TXmlChildren::Find(const xmlChar* name, std::int32_t& index) {
    index = -1;
    if (name == nullptr) return nullptr;
    TXmlTree& tree = FOwner.Tree();
    const auto& [elements, first] = List();
    if (!first.empty()) {
        const auto found = first.find(name);
        if (found != first.end()) index = found->second;
    } else {
        const auto found =
            std::ranges::find(elements, name, [&](xmlNode* node) { return tree.NameOf(node); });
        if (found != elements.end()) index = static_cast<std::int32_t>(found - elements.begin());
    }
    return index < 0 ? nullptr : &tree.NodeOf(elements[static_cast<std::size_t>(index)]);
}

std::shared_ptr<IXMLNode> TXmlChildren::FindNode(StringView name) {
    std::int32_t index = 0;
    TXmlNode* const found = Find(FOwner.Tree().Interned(name), index);
    return found == nullptr ? nullptr : FOwner.Tree().Share(*found);
}

std::shared_ptr<IXMLNode> TXmlChildren::First() {
    return FOwner.Tree().Share(FirstElement(FOwner.Raw()->children));
}

std::int32_t TXmlChildren::IndexOf(StringView name) {
    std::int32_t index = 0;
    Find(FOwner.Tree().Interned(name), index);
    return index;
}

void TXmlChildren::Insert(TXmlNode& node, std::int64_t index) {
    const std::vector<xmlNode*>& elements = List().Elements;
    if (!FOwner.IsElement()) throw EXMLDocError(u"An attribute has no child elements");
    if (DepthOf(FOwner.Raw()) + HeightOf(node.Raw()) > kMaxXmlDepth)
        throw EXMLDocError(u"The elements are nested more than 256 levels deep");
    const bool isLast = index == -1 || index == std::ssize(elements);
    xmlNode* const next = isLast ? nullptr : elements[ListIndex(index, elements.size())];
    node.Detach();  // which may forget the list
    std::unique_ptr<TListed> listed = std::move(FListed);
    Allocated(isLast ? xmlAddChild(FOwner.Raw(), node.Raw()) : xmlAddPrevSibling(next, node.Raw()));
    if (!isLast || !listed) return;
    Append(*listed, node.Raw());
    FListed = std::move(listed);
}

void TXmlChildren::Add(const std::shared_ptr<IXMLNode>& node) {
    TXmlNode& added = FOwner.Tree().Own(node, true);
    for (const xmlNode* above = FOwner.Raw(); above != nullptr; above = above->parent)
        if (above == added.Raw()) throw EXMLDocError(u"An element cannot be added to itself");
    Insert(added, -1);
}

// --- Attributes ---

xmlAttr* TXmlAttributes::Find(StringView name) {
    const xmlChar* const interned = FOwner.Tree().Interned(name);
    if (interned == nullptr || !FOwner.IsElement()) return nullptr;
    for (xmlAttr* attribute = FOwner.Raw()->properties; attribute != nullptr; attribute = attribute->next)
        if (FOwner.Tree().NameOf(reinterpret_cast<xmlNode*>(attribute)) == interned) return attribute;
    return nullptr;
}

std::int32_t TXmlAttributes::GetCount() {
    std::int32_t count = 0;
    if (FOwner.IsElement())
        for (const xmlAttr* attribute = FOwner.Raw()->properties; attribute; attribute = attribute->next)
            ++count;
    return count;
}

std::shared_ptr<IXMLNode> TXmlAttributes::GetNode(std::int64_t index) {
    std::size_t left = ListIndex(index, static_cast<std::size_t>(GetCount()));
    xmlAttr* attribute = FOwner.Raw()->properties;
    while (left-- > 0) attribute = attribute->next;
    return FOwner.Tree().Share(reinterpret_cast<xmlNode*>(attribute));
}

std::shared_ptr<IXMLNode> TXmlAttributes::FindNode(StringView name) {
    return FOwner.Tree().Share(reinterpret_cast<xmlNode*>(Find(name)));
}

std::shared_ptr<IXMLNode> TXmlAttributes::First() {
    return GetCount() == 0 ? nullptr : GetNode(0);
}

std::int32_t TXmlAttributes::IndexOf(StringView name) {
    const xmlAttr* found = Find(name);
    if (found == nullptr) return -1;
    std::int32_t index = 0;
    for (; found->prev != nullptr; found = found->prev) ++index;
    return index;
}

void TXmlAttributes::Add(const std::shared_ptr<IXMLNode>& node) {
    TXmlTree& tree = FOwner.Tree();
    TXmlNode& added = tree.Own(node, false);
    if (!FOwner.IsElement()) throw EXMLDocError(u"An attribute has no attributes");
    xmlAttr* former = Find(added.GetNodeName());
    if (former == added.RawAttribute()) return;
    if (former == nullptr && GetCount() >= kMaxXmlAttributes)
        throw EXMLDocError(Format(u"An element cannot have more than %d attributes", {kMaxXmlAttributes}));
    added.Detach();
    xmlAttr* const attribute = added.RawAttribute();
    attribute->parent = FOwner.Raw();
    if (former != nullptr) {
        attribute->prev = former->prev;
        attribute->next = former->next;
        tree.NodeOf(reinterpret_cast<xmlNode*>(former)).Detach();
    } else {
        attribute->prev = FOwner.Raw()->properties;
        while (attribute->prev != nullptr && attribute->prev->next != nullptr)
            attribute->prev = attribute->prev->next;
    }
    (attribute->prev != nullptr ? attribute->prev->next : FOwner.Raw()->properties) = attribute;
    if (attribute->next != nullptr) attribute->next->prev = attribute;
}

// --- The root element ---

std::int32_t TXmlRoots::GetCount() {
    return xmlDocGetRootElement(FTree.Raw()) == nullptr ? 0 : 1;
}

std::shared_ptr<IXMLNode> TXmlRoots::GetNode(std::int64_t index) {
    static_cast<void>(ListIndex(index, static_cast<std::size_t>(GetCount())));
    return FTree.GetDocumentElement();
}

std::shared_ptr<IXMLNode> TXmlRoots::FindNode(StringView name) {
    return IndexOf(name) == 0 ? First() : nullptr;
}

std::shared_ptr<IXMLNode> TXmlRoots::First() {
    return FTree.GetDocumentElement();
}

std::int32_t TXmlRoots::IndexOf(StringView name) {
    return GetCount() == 1 && First()->GetNodeName() == name ? 0 : -1;
}

void TXmlRoots::Add(const std::shared_ptr<IXMLNode>& node) {
    TXmlNode& added = FTree.Own(node, true);
    xmlNode* const root = xmlDocGetRootElement(FTree.Raw());
    if (root == added.Raw()) return;
    if (root != nullptr) throw EXMLDocError(u"An XML document has only one root element");
    added.Detach();
    xmlDocSetRootElement(FTree.Raw(), added.Raw());
}

// --- Nodes ---

String TXmlNode::GetNodeName() {
    return TextOf(FTree.NameOf(FNode));
}

String TXmlNode::GetText() {
    String text = JoinedText(FNode->children);
    if (IsWhiteSpace(text) && FirstElement(FNode->children) != nullptr) text.clear();
    return text;
}

void TXmlNode::SetText(StringView text) {
    const std::string utf8 = IsElement() ? CheckedXmlText(text) : CheckedXmlAttribute(text);
    xmlNode* const added = utf8.empty() ? nullptr : Allocated(xmlNewDocText(FTree.Raw(), Bytes(utf8)));
    for (xmlNode *child = FNode->children, *next = nullptr; child != nullptr; child = next) {
        next = child->next;
        if (!IsText(child)) continue;
        xmlUnlinkNode(child);
        xmlFreeNode(child);
    }
    if (added == nullptr) return;
    // By hand: the functions of the tree would read entities, or merge and free what they are given.
    added->parent = FNode;
    added->next = FNode->children;
    (added->next != nullptr ? added->next->prev : FNode->last) = added;
    FNode->children = added;
}

Variant TXmlNode::GetAttribute(StringView name) {
    const xmlAttr* const found = FAttributes.Find(name);
    return found == nullptr ? Variant() : Variant(JoinedText(found->children));
}

void TXmlNode::SetAttribute(StringView name, const Variant& value) {
    const String text = value.ToText();
    if (xmlAttr* const found = FAttributes.Find(name))
        FTree.NodeOf(reinterpret_cast<xmlNode*>(found)).SetText(text);
    else
        FAttributes.Add(FTree.Share(FTree.NewAttribute(name, text)));
}

std::shared_ptr<IXMLNodeList> TXmlNode::GetAttributeNodes() {
    return {FTree.shared_from_this(), &FAttributes};
}

std::shared_ptr<IXMLNodeList> TXmlNode::GetChildNodes() {
    return {FTree.shared_from_this(), &FChildren};
}

std::shared_ptr<IXMLNode> TXmlNode::AddChild(StringView name, std::int64_t index) {
    TXmlNode& added = FTree.NewElement(name);
    FChildren.Insert(added, index);
    return FTree.Share(added);
}

Variant TXmlNode::GetChildValue(StringView name) {
    const std::shared_ptr<IXMLNode> found = FChildren.FindNode(name);
    return found ? found->GetNodeValue() : Variant();
}

void TXmlNode::SetChildValue(StringView name, const Variant& value) {
    const String text = value.ToText();
    static_cast<void>(CheckedXmlText(text));  // a text that is refused leaves no new child
    const std::shared_ptr<IXMLNode> found = FChildren.FindNode(name);
    (found ? found : AddChild(name, -1))->SetText(text);
}

std::shared_ptr<IXMLNode> TXmlNode::NextSibling() {
    return IsElement() ? FTree.Share(FirstElement(FNode->next)) : nullptr;
}

std::shared_ptr<IXMLDocument> TXmlNode::GetOwnerDocument() {
    return FTree.shared_from_this();
}

void TXmlNode::Detach() noexcept {
    xmlNode* const parent = FNode->parent;
    if (parent == nullptr) return;
    if (parent->type == XML_ELEMENT_NODE && parent->_private != nullptr)
        static_cast<TXmlNode*>(parent->_private)->FChildren.Forget();
    xmlUnlinkNode(FNode);
}

// --- The document ---

TXmlTree::~TXmlTree() {
    // The tree frees only what is attached to it. The tops of the rest are chained before any is freed, because
    // FNodes also has nodes below them.
    xmlNode* top = nullptr;
    for (const TXmlNode& node : FNodes) {
        if (node.Raw()->parent != nullptr) continue;
        node.Raw()->next = top;
        top = node.Raw();
    }
    while (top != nullptr) {
        xmlNode* const next = std::exchange(top->next, nullptr);
        xmlFreeNode(top);
        top = next;
    }
}

std::shared_ptr<IXMLNode> TXmlTree::GetDocumentElement() {
    return Share(xmlDocGetRootElement(FDocument.get()));
}

std::shared_ptr<IXMLNodeList> TXmlTree::GetChildNodes() {
    return {shared_from_this(), &FRoots};
}

std::shared_ptr<IXMLNode> TXmlTree::AddChild(StringView name) {
    std::shared_ptr<IXMLNode> root = CreateElement(name, u"");
    FRoots.Add(root);
    return root;
}

std::shared_ptr<IXMLNode> TXmlTree::CreateElement(StringView name, StringView nameSpace) {
    if (!nameSpace.empty()) throw EArgumentException(u"XML namespaces are not supported");
    return Share(NewElement(name));
}

std::shared_ptr<IXMLNode> TXmlTree::CreateNode(StringView name, TXMLNodeType kind, StringView text) {
    if (kind == ntAttribute) return Share(NewAttribute(name, text));
    if (kind != ntElement) throw EArgumentException(u"The kind of XML node is unknown");
    static_cast<void>(CheckedXmlText(text));
    TXmlNode& element = NewElement(name);
    element.SetText(text);
    return Share(element);
}

void TXmlTree::SaveToFile(StringView fileName) {
    xmlChar* bytes = nullptr;
    int size = 0;
    xmlDocDumpMemoryEnc(FDocument.get(), &bytes, &size, "UTF-8");
    const std::unique_ptr<xmlChar, void (*)(xmlChar*)> freed(bytes, [](xmlChar* block) { xmlFree(block); });
    if (bytes == nullptr) throw std::bad_alloc();
    if (static_cast<std::size_t>(size) > kMaxXmlFile)
        throw EXMLDocError(Format(u"The XML document has more than %d bytes", {kMaxXmlFile}));
    WriteFileInOneGo(fileName, {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size)});
}

TXmlNode& TXmlTree::NodeOf(xmlNode* node) {
    if (node->_private == nullptr) node->_private = &FNodes.emplace_back(*this, node);
    return *static_cast<TXmlNode*>(node->_private);
}

TXmlNode& TXmlTree::NewNode(xmlNode* node) {
    std::unique_ptr<xmlNode, void (*)(xmlNode*)> owner(Allocated(node),
                                                       [](xmlNode* lost) { xmlFreeNode(lost); });
    TXmlNode& created = NodeOf(node);
    static_cast<void>(owner.release());
    return created;
}

TXmlNode& TXmlTree::NewElement(StringView name) {
    const std::string utf8 = CheckedXmlName(name);
    return NewNode(xmlNewDocNode(Raw(), nullptr, Bytes(utf8), nullptr));
}

TXmlNode& TXmlTree::NewAttribute(StringView name, StringView text) {
    static_cast<void>(CheckedXmlAttribute(text));
    const std::string utf8 = CheckedXmlName(name);
    TXmlNode& node = NewNode(reinterpret_cast<xmlNode*>(xmlNewDocProp(Raw(), Bytes(utf8), nullptr)));
    node.SetText(text);
    return node;
}

const xmlChar* TXmlTree::Interned(StringView name) const {
    const std::string utf8 = ToUtf8(name);
    const bool isWhole = utf8.size() == name.size() || FromUtf8(utf8) == name;  // no unpaired surrogate
    if (utf8.size() > kMaxXmlName || !isWhole) return nullptr;
    if (utf8.find(':') != std::string::npos) return InternedWithPrefix(utf8);
    return xmlDictExists(FDocument->dict, Bytes(utf8), static_cast<int>(utf8.size()));
}

const xmlChar* TXmlTree::InternedWithPrefix(const std::string& name) const {
    return Allocated(xmlDictLookup(FDocument->dict, Bytes(name), static_cast<int>(name.size())));
}

const xmlChar* TXmlTree::NameOf(const xmlNode* node) const {
    const auto text = [](const xmlChar* bytes) { return reinterpret_cast<const char*>(bytes); };
    const xmlNs* const ns = node->ns;  // at the same offset in elements and attributes
    if (ns != nullptr && ns->prefix != nullptr)
        return InternedWithPrefix(std::string(text(ns->prefix)) + ":" + text(node->name));
    // The parser interns a name with an undeclared prefix in another way.
    const bool hasPrefix = std::strchr(text(node->name), ':') != nullptr;
    return hasPrefix ? InternedWithPrefix(text(node->name)) : node->name;
}

std::shared_ptr<IXMLNode> TXmlTree::Share(xmlNode* node) {
    return node == nullptr ? nullptr : Share(NodeOf(node));
}

TXmlNode& TXmlTree::Own(const std::shared_ptr<IXMLNode>& node, bool isElement) {
    if (!node) throw EArgumentNilException(u"node");
    auto* const own = dynamic_cast<TXmlNode*>(node.get());
    if (own == nullptr || &own->Tree() != this)
        throw EXMLDocError(u"The node belongs to another XML document");
    if (own->IsElement() != isElement)
        throw EXMLDocError(isElement ? u"The list takes only elements" : u"The list takes only attributes");
    return *own;
}

}  // namespace Varnholt
