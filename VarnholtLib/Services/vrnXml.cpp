#include "VarnholtLib/Services/vrnXml.h"

#include <algorithm>
#include <utility>

#include "Platform/Runtime/Indexes.h"
#include "VarnholtBaseLib/XmlUtils.h"
#include "VarnholtLib/Data/vrnList.h"
#include "VarnholtLib/Foundation/vrnString.h"

namespace Varnholt {
namespace {

using TNodePtr = std::shared_ptr<IXMLNode>;
using TVarnXmlPtr = std::shared_ptr<IVarnXml>;

IXMLNode& Initialized(const TNodePtr& node) {
    if (!node) throw Exception(u"Node has not been initialized");
    return *node;
}

/// A new child that is attached once it is filled, so that a text that is refused leaves no child.
template <typename TFill>
TNodePtr AddFilledChild(IXMLNode& node, StringView name, TFill fill) {
    TNodePtr child = node.GetOwnerDocument()->CreateElement(name, u"");
    fill(*child);
    node.GetChildNodes()->Add(child);
    return child;
}

/// With reuse, the first child of that name, if there is one; otherwise a new child.
template <typename TFill>
TNodePtr FillChild(const TNodePtr& node, StringView name, bool reuse, TFill fill) {
    if (reuse && XmlHasChild(node, name)) {
        TNodePtr child = XmlGetChild(node, name);
        fill(*child);
        return child;
    }
    return AddFilledChild(Initialized(node), name, fill);
}

}  // namespace

// --- Functions on nodes ---

std::shared_ptr<IXMLDocument> XmlNewDocument(StringView rootName) {
    std::shared_ptr<IXMLDocument> document = NewXMLDocument(u"1.0");
    document->GetChildNodes()->Add(document->CreateNode(rootName, ntElement, u""));
    return document;
}

std::shared_ptr<IXMLDocument> XmlLoadDocument(StringView fileName) {
    return LoadXMLDocument(fileName);
}

std::shared_ptr<IXMLNode> XmlGetRoot(const std::shared_ptr<IXMLDocument>& document, StringView name) {
    TNodePtr root = document ? document->GetDocumentElement() : nullptr;
    if (!root || root->GetNodeName() != name) throw Exception(u"Root name mismatch");
    return root;
}

TXmlNodes XmlGetChildren(const std::shared_ptr<IXMLNode>& node, StringView name) {
    IXMLNode& parent = Initialized(node);
    if (name != u"*") return TXmlUtils::GetChildNodes(node, name);
    TXmlNodes children;
    for (TNodePtr child = parent.GetChildNodes()->First(); child; child = child->NextSibling())
        children.push_back(child);
    return children;
}

String XmlReadAttribute(const std::shared_ptr<IXMLNode>& node, StringView name) {
    const Variant value = node ? node->GetAttribute(name) : Variant();
    if (value.IsEmpty()) throw Exception(u"Attribute not present");
    return value.ToText();
}

String XmlReadText(const std::shared_ptr<IXMLNode>& node) {
    return Initialized(node).GetText();
}

std::shared_ptr<IXMLNode> XmlGetChild(const std::shared_ptr<IXMLNode>& node, StringView name) {
    TNodePtr child = XmlGetChildEx(node, name);
    if (!child) throw Exception(u"Node does not exist");
    return child;
}

std::shared_ptr<IXMLNode> XmlGetChildEx(const std::shared_ptr<IXMLNode>& node, StringView name) {
    return node ? node->GetChildNodes()->FindNode(name) : nullptr;
}

bool XmlHasChild(const std::shared_ptr<IXMLNode>& node, StringView name) {
    return Initialized(node).GetChildNodes()->IndexOf(name) != -1;
}

String XmlGetChildText(const std::shared_ptr<IXMLNode>& node, StringView name, StringView defaultText) {
    const TNodePtr child = XmlGetChildEx(node, name);
    return child ? child->GetText() : String(defaultText);
}

String XmlReadChildText(const std::shared_ptr<IXMLNode>& node, StringView name) {
    return XmlGetChild(node, name)->GetText();
}

String XmlReadChildAttribute(const std::shared_ptr<IXMLNode>& node, StringView childName, StringView name) {
    return XmlReadAttribute(XmlGetChild(node, childName), name);
}

void XmlSetAttribute(const std::shared_ptr<IXMLNode>& node, StringView name, StringView value) {
    Initialized(node).SetAttribute(name, value);
}

std::shared_ptr<IXMLNode> XmlNewChild(const std::shared_ptr<IXMLNode>& node, StringView name) {
    return Initialized(node).AddChild(name);
}

std::shared_ptr<IXMLNode> XmlCreateChild(const std::shared_ptr<IXMLNode>& node, StringView name) {
    TNodePtr child = Initialized(node).GetChildNodes()->FindNode(name);
    return child ? child : XmlNewChild(node, name);
}

std::int32_t XmlCountChildren(const std::shared_ptr<IXMLNode>& node, StringView name) {
    static_cast<void>(Initialized(node));
    return static_cast<std::int32_t>(TXmlUtils::GetChildNodes(node, name).size());
}

std::shared_ptr<IXMLNode> XmlSetChildAttribute(const std::shared_ptr<IXMLNode>& node, StringView childName,
                                               StringView name, StringView value, bool reuse) {
    return FillChild(node, childName, reuse, [&](IXMLNode& child) { child.SetAttribute(name, value); });
}

std::shared_ptr<IXMLNode> XmlSetChildText(const std::shared_ptr<IXMLNode>& node, StringView name,
                                          StringView text, bool reuse) {
    return FillChild(node, name, reuse, [&](IXMLNode& child) { child.SetText(text); });
}

// --- Errors and the list of nodes ---

EVarnXml::EVarnXml(TVarnXmlError error) : Exception(ErrorToString(error)), FError(error) {}

StringView EVarnXml::ErrorToString(TVarnXmlError error) noexcept {
    switch (error) {
        case cxeAttributeDoesNotExist:
            return u"Attribute does not exist";
        case cxeChildDoesNotExist:
            return u"Child does not exist";
        case cxeInvalidCondition:
            return u"Condition is invalid";
        case cxeUnableToSaveXml:
            return u"Unable to save XML content";
    }
    return u"Unknown error";
}

const std::shared_ptr<IVarnXml>& TVarnXmlNodeList::GetNodeAt(std::int64_t index) const {
    return FNodes[ListIndex(index, FNodes.size())].Node;
}

// --- The wrapper ---

namespace {

class TVarnXml final : public IVarnXml {
public:
    explicit TVarnXml(TNodePtr node) : FNode(std::move(node)) {}

    String GetName() override { return FNode->GetNodeName(); }
    std::int32_t GetAttributeCount() override { return FNode->GetAttributeNodes()->GetCount(); }
    std::int32_t GetChildCount() override { return FNode->GetChildNodes()->GetCount(); }
    String GetValue() override { return FNode->GetText(); }
    void SetValue(StringView value) override { FNode->SetText(value); }
    String GetAttributeValue(StringView name) override;
    void SetAttributeValue(StringView name, StringView value) override { FNode->SetAttribute(name, value); }
    void ReportError(TVarnXmlError error) override;
    TVarnXmlPtr GetChild(StringView name) override;
    String GetChildValue(StringView name) override;
    String GetChildValueWithFallback(StringView name, StringView fallback) override;
    TNodePtr GetPure() override { return FNode; }
    std::shared_ptr<IXMLDocument> GetDocument() override { return FNode->GetOwnerDocument(); }
    TVarnXmlErrorLevel GetErrorLevel() override { return FErrorLevel; }
    void SetErrorLevel(TVarnXmlErrorLevel level) override { FErrorLevel = level; }
    TVarnXmlPtr GetChildAt(std::int64_t index) override;
    TVarnXmlPtr AddChild(StringView name) override;
    TVarnXmlPtr AddChildAndSetValue(StringView name, StringView value) override;
    TVarnXmlPtr ForceGetChild(StringView name) override;
    std::int32_t GetChildrenWithName(StringView name, TVarnXmlNodeList& nodeList) override;
    TNewList<TVarnXmlPtr> GetChildrenWithNameAsList(StringView name) override;
    std::int32_t CountChildrenWithName(StringView name) override { return XmlCountChildren(FNode, name); }
    std::int32_t IndexOfFirst(TVarnXmlNodeType nodeType, StringView withName) override;
    bool Verify(std::span<const String> conditions) override;
    bool HasAttribute(StringView name) override { return FNode->HasAttribute(name); }
    bool SaveToFile(StringView fileName) override;

private:
    const TNodePtr FNode;
    TVarnXmlErrorLevel FErrorLevel = cxelContinue;
};

TVarnXmlPtr Wrapped(TNodePtr node) {
    return std::make_shared<TVarnXml>(std::move(node));
}

bool HasCount(StringView multiplicity, std::int32_t count) {
    if (multiplicity == u"1") return count == 1;
    return multiplicity == u"m" || count >= 1;
}

String TVarnXml::GetAttributeValue(StringView name) {
    const std::int32_t index = IndexOfFirst(cxAttribute, name);
    if (index != -1) return FNode->GetAttributeNodes()->GetNode(index)->GetNodeValue().ToText();
    ReportError(cxeAttributeDoesNotExist);
    return {};
}

void TVarnXml::ReportError(TVarnXmlError error) {
    if (FErrorLevel == cxelException) throw EVarnXml(error);
}

TVarnXmlPtr TVarnXml::GetChild(StringView name) {
    const std::int32_t index = IndexOfFirst(cxElement, name);
    if (index != -1) return GetChildAt(index);
    ReportError(cxeChildDoesNotExist);
    return nullptr;
}

String TVarnXml::GetChildValue(StringView name) {
    const TVarnXmlPtr child = GetChild(name);
    return child ? child->GetValue() : String();
}

String TVarnXml::GetChildValueWithFallback(StringView name, StringView fallback) {
    try {
        if (const TVarnXmlPtr child = GetChild(name)) return child->GetValue();
    } catch (const std::exception&) {  // the fallback stands for every failure
    }
    return String(fallback);
}

TVarnXmlPtr TVarnXml::GetChildAt(std::int64_t index) {
    return Wrapped(FNode->GetChildNodes()->GetNode(index));
}

TVarnXmlPtr TVarnXml::AddChild(StringView name) {
    return Wrapped(FNode->AddChild(name));
}

TVarnXmlPtr TVarnXml::AddChildAndSetValue(StringView name, StringView value) {
    return Wrapped(AddFilledChild(*FNode, name, [&](IXMLNode& child) { child.SetText(value); }));
}

TVarnXmlPtr TVarnXml::ForceGetChild(StringView name) {
    return Wrapped(XmlCreateChild(FNode, name));
}

std::int32_t TVarnXml::GetChildrenWithName(StringView name, TVarnXmlNodeList& nodeList) {
    for (const TNodePtr& child : TXmlUtils::GetChildNodes(FNode, name)) nodeList.AddNode(Wrapped(child));
    return nodeList.GetCount();
}

TNewList<TVarnXmlPtr> TVarnXml::GetChildrenWithNameAsList(StringView name) {
    TNewList<TVarnXmlPtr> list = std::make_shared<TInterfacedList<TVarnXmlPtr>>();
    for (const TNodePtr& child : TXmlUtils::GetChildNodes(FNode, name)) list->Add(Wrapped(child));
    return list;
}

std::int32_t TVarnXml::IndexOfFirst(TVarnXmlNodeType nodeType, StringView withName) {
    switch (nodeType) {
        case cxAttribute:
            return FNode->GetAttributeNodes()->IndexOf(withName);
        case cxElement:
            return FNode->GetChildNodes()->IndexOf(withName);
    }
    return -1;
}

bool TVarnXml::Verify(std::span<const String> conditions) {
    static constexpr StringView kKinds[] = {u"e", u"a"};
    static constexpr StringView kMultiplicities[] = {u"1", u"m", u"mr"};
    for (const String& condition : conditions) {
        const std::vector<String> fields = SplitString(condition, u':', true);
        if (fields.size() != 3 || std::ranges::find(kKinds, fields[0]) == std::end(kKinds) ||
            std::ranges::find(kMultiplicities, fields[2]) == std::end(kMultiplicities)) {
            ReportError(cxeInvalidCondition);
            return false;
        }
        const bool holds = fields[0] == u"a" ? HasAttribute(fields[1])
                                             : HasCount(fields[2], CountChildrenWithName(fields[1]));
        if (!holds) return false;
    }
    return true;
}

bool TVarnXml::SaveToFile(StringView fileName) {
    try {
        GetDocument()->SaveToFile(fileName);
        return true;
    } catch (const std::exception&) {  // reported as one error, whatever failed
    }
    ReportError(cxeUnableToSaveXml);
    return false;
}

}  // namespace

std::shared_ptr<IVarnXml> TVarnXmlFactory::GetObject(std::shared_ptr<IXMLNode> node) {
    if (!node) throw EArgumentNilException(u"node");
    return Wrapped(std::move(node));
}

std::shared_ptr<IVarnXml> TVarnXmlFactory::CreateDocument(StringView rootName) {
    return Wrapped(NewXMLDocument(u"1.0")->AddChild(rootName));
}

std::shared_ptr<IVarnXml> TVarnXmlFactory::LoadDocument(StringView fileName) {
    return Wrapped(LoadXMLDocument(fileName)->GetDocumentElement());
}

}  // namespace Varnholt
