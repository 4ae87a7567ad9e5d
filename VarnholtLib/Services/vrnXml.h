#pragma once

#include <memory>
#include <span>
#include <vector>

#include "Platform/Runtime/Guid.h"
#include "Platform/Xml/XmlDocument.h"
#include "VarnholtLib/Data/vrnListInterfaces.h"

/// Two layers over the XML document service: functions that work on its nodes and raise on misuse, and a wrapper of
/// a node whose error level chooses between exceptions and empty results.
///
///     const auto root = XmlGetRoot(XmlLoadDocument(u"C:\\data\\net.xml"), u"network");
///     for (const auto& station : XmlGetChildren(root, u"station"))
///         Show(XmlReadAttribute(station, u"name"));
///
///     const auto network = TVarnXmlFactory::CreateDocument(u"network");
///     network->AddChild(u"station")->SetAttributeValue(u"name", u"Graz");
///     if (!network->SaveToFile(path)) Warn();
///
/// Names compare exactly. In names "*" has no special meaning except in XmlGetChildren. "An empty node" below is a
/// null pointer. What the service itself refuses or fails at raises as XmlDocument.h says.
///
/// Threads: as the documents: one thread at a time for each document.
namespace Varnholt {

// --- Functions on nodes; they raise Exception with the text given ---

using TXmlNodes = std::vector<std::shared_ptr<IXMLNode>>;

/// A new document of version 1.0 with a root element of that name.
[[nodiscard]] VARNHOLT_EXPORT std::shared_ptr<IXMLDocument> XmlNewDocument(StringView rootName);

/// Parses a file (LoadXMLDocument).
[[nodiscard]] VARNHOLT_EXPORT std::shared_ptr<IXMLDocument> XmlLoadDocument(StringView fileName);

/// The document element. Raises `Root name mismatch` if its name differs or there is none.
[[nodiscard]] VARNHOLT_EXPORT std::shared_ptr<IXMLNode> XmlGetRoot(
    const std::shared_ptr<IXMLDocument>& document, StringView name);

/// The children of that name in document order; "*" selects all. Raises `Node has not been initialized` for an
/// empty node.
[[nodiscard]] VARNHOLT_EXPORT TXmlNodes XmlGetChildren(const std::shared_ptr<IXMLNode>& node,
                                                       StringView name = u"*");

/// The value of an attribute. Raises `Attribute not present` if the node is empty or has no such attribute.
[[nodiscard]] VARNHOLT_EXPORT String XmlReadAttribute(const std::shared_ptr<IXMLNode>& node, StringView name);

/// The node's text. Raises `Node has not been initialized` for an empty node.
[[nodiscard]] VARNHOLT_EXPORT String XmlReadText(const std::shared_ptr<IXMLNode>& node);

/// The first child of that name. Raises `Node does not exist` if the node is empty or has no such child.
[[nodiscard]] VARNHOLT_EXPORT std::shared_ptr<IXMLNode> XmlGetChild(const std::shared_ptr<IXMLNode>& node,
                                                                    StringView name);

/// The first child of that name; null where XmlGetChild raises.
[[nodiscard]] VARNHOLT_EXPORT std::shared_ptr<IXMLNode> XmlGetChildEx(const std::shared_ptr<IXMLNode>& node,
                                                                      StringView name);

/// Raises `Node has not been initialized` for an empty node.
[[nodiscard]] VARNHOLT_EXPORT bool XmlHasChild(const std::shared_ptr<IXMLNode>& node, StringView name);

/// The text of the first child of that name; the default if the node is empty or has no such child.
[[nodiscard]] VARNHOLT_EXPORT String XmlGetChildText(const std::shared_ptr<IXMLNode>& node, StringView name,
                                                     StringView defaultText);

/// The text of XmlGetChild.
[[nodiscard]] VARNHOLT_EXPORT String XmlReadChildText(const std::shared_ptr<IXMLNode>& node, StringView name);

/// XmlReadAttribute of XmlGetChild.
[[nodiscard]] VARNHOLT_EXPORT String XmlReadChildAttribute(const std::shared_ptr<IXMLNode>& node,
                                                           StringView childName, StringView name);

/// Sets an attribute, which is appended if it is absent. Raises `Node has not been initialized` for an empty node.
VARNHOLT_EXPORT void XmlSetAttribute(const std::shared_ptr<IXMLNode>& node, StringView name,
                                     StringView value);

/// Appends a child, also if one of that name exists. Raises `Node has not been initialized` for an empty node.
VARNHOLT_EXPORT std::shared_ptr<IXMLNode> XmlNewChild(const std::shared_ptr<IXMLNode>& node, StringView name);

/// The first child of that name, or else a new one. Raises as XmlNewChild.
VARNHOLT_EXPORT std::shared_ptr<IXMLNode> XmlCreateChild(const std::shared_ptr<IXMLNode>& node,
                                                         StringView name);

/// How many children have exactly that name. Raises `Node has not been initialized` for an empty node.
[[nodiscard]] VARNHOLT_EXPORT std::int32_t XmlCountChildren(const std::shared_ptr<IXMLNode>& node,
                                                            StringView name);

/// Sets an attribute of a child, which is returned: with reuse that of XmlCreateChild, otherwise of XmlNewChild.
VARNHOLT_EXPORT std::shared_ptr<IXMLNode> XmlSetChildAttribute(const std::shared_ptr<IXMLNode>& node,
                                                               StringView childName, StringView name,
                                                               StringView value, bool reuse);

/// Sets the text of a child, chosen as by XmlSetChildAttribute, and returns the child.
VARNHOLT_EXPORT std::shared_ptr<IXMLNode> XmlSetChildText(const std::shared_ptr<IXMLNode>& node,
                                                          StringView name, StringView text, bool reuse);

// --- The wrapper ---

enum TVarnXmlError : std::uint8_t {
    cxeAttributeDoesNotExist,
    cxeChildDoesNotExist,
    cxeInvalidCondition,
    cxeUnableToSaveXml
};
/// Whether a wrapper raises EVarnXml for an error or continues with an empty result.
enum TVarnXmlErrorLevel : std::uint8_t { cxelException, cxelContinue };
enum TVarnXmlNodeType : std::uint8_t { cxAttribute, cxElement };

/// An error of a wrapper at cxelException. The message is the text of its code.
class VARNHOLT_EXPORT EVarnXml : public Exception {
public:
    explicit EVarnXml(TVarnXmlError error);
    [[nodiscard]] TVarnXmlError GetError() const noexcept { return FError; }
    /// "Attribute does not exist", "Child does not exist", "Condition is invalid", "Unable to save XML content";
    /// "Unknown error" for any other code.
    [[nodiscard]] static StringView ErrorToString(TVarnXmlError error) noexcept;

private:
    TVarnXmlError FError;
};

class TVarnXmlNodeList;

/// A node with an error level. A wrapper holds nothing but a reference to its node: several may stand for one
/// node, and each call that returns a child makes a new wrapper. Every wrapper starts at cxelContinue; the level
/// is not inherited by the wrappers that it returns. "Reports" means: raises EVarnXml at cxelException, and
/// otherwise returns the result that is named.
class VARNHOLT_EXPORT IVarnXml {
public:
    static constexpr TGuid kGuid = TGuid::FromText(u"{A3A0D553-B9BE-496E-A57F-564F141694BA}");

    virtual ~IVarnXml() = default;
    [[nodiscard]] virtual String GetName() = 0;
    [[nodiscard]] virtual std::int32_t GetAttributeCount() = 0;
    [[nodiscard]] virtual std::int32_t GetChildCount() = 0;
    /// The text of the node.
    [[nodiscard]] virtual String GetValue() = 0;
    virtual void SetValue(StringView value) = 0;
    /// The value of an attribute. Reports cxeAttributeDoesNotExist; empty.
    [[nodiscard]] virtual String GetAttributeValue(StringView name) = 0;
    /// As XmlSetAttribute.
    virtual void SetAttributeValue(StringView name, StringView value) = 0;
    /// Raises EVarnXml at cxelException, does nothing at cxelContinue.
    virtual void ReportError(TVarnXmlError error) = 0;
    /// The first child of that name. Reports cxeChildDoesNotExist; null.
    [[nodiscard]] virtual std::shared_ptr<IVarnXml> GetChild(StringView name) = 0;
    /// The text of GetChild. Reports cxeChildDoesNotExist; empty.
    [[nodiscard]] virtual String GetChildValue(StringView name) = 0;
    /// The text of the first child of that name; the fallback if there is none or anything raises.
    [[nodiscard]] virtual String GetChildValueWithFallback(StringView name, StringView fallback) = 0;
    /// The wrapped node itself.
    [[nodiscard]] virtual std::shared_ptr<IXMLNode> GetPure() = 0;
    [[nodiscard]] virtual std::shared_ptr<IXMLDocument> GetDocument() = 0;
    [[nodiscard]] virtual TVarnXmlErrorLevel GetErrorLevel() = 0;
    virtual void SetErrorLevel(TVarnXmlErrorLevel level) = 0;
    /// The child of that index, from 0. Raises EListError.
    [[nodiscard]] virtual std::shared_ptr<IVarnXml> GetChildAt(std::int64_t index) = 0;
    /// Appends a child, also if one of that name exists.
    virtual std::shared_ptr<IVarnXml> AddChild(StringView name) = 0;
    /// AddChild with a text.
    virtual std::shared_ptr<IVarnXml> AddChildAndSetValue(StringView name, StringView value) = 0;
    /// The first child of that name, or else a new one.
    virtual std::shared_ptr<IVarnXml> ForceGetChild(StringView name) = 0;
    /// Appends a wrapper of each child of that name to the list. Returns the count of the list after that.
    virtual std::int32_t GetChildrenWithName(StringView name, TVarnXmlNodeList& nodeList) = 0;
    /// The children of that name in a new list.
    [[nodiscard]] virtual TNewList<std::shared_ptr<IVarnXml>> GetChildrenWithNameAsList(StringView name) = 0;
    [[nodiscard]] virtual std::int32_t CountChildrenWithName(StringView name) = 0;
    /// The index, from 0, of the first attribute or child of that name; -1 if there is none or for any other type.
    [[nodiscard]] virtual std::int32_t IndexOfFirst(TVarnXmlNodeType nodeType, StringView withName) = 0;
    /// Checks the structure of the node. Each condition is `kind:name:multiplicity`; white space around the parts is
    /// ignored. The kind "e" is a child element, "a" an attribute. The multiplicity is "1" for exactly one child,
    /// "m" for any number, "mr" for at least one; an attribute has to exist with any of the three. The
    /// first condition that does not hold ends the check with false and is no error. A condition that cannot be
    /// read reports cxeInvalidCondition; false. Conditions after the end of the check are not read.
    [[nodiscard]] virtual bool Verify(std::span<const String> conditions) = 0;
    [[nodiscard]] virtual bool HasAttribute(StringView name) = 0;
    /// Saves the whole document, not only this node. Reports cxeUnableToSaveXml for any failure; false.
    virtual bool SaveToFile(StringView fileName) = 0;
};

/// A node in a TVarnXmlNodeList.
struct TVarnXmlNode {
    std::shared_ptr<IVarnXml> Node;
};

/// The list that GetChildrenWithName fills.
class VARNHOLT_EXPORT TVarnXmlNodeList {
public:
    void AddNode(std::shared_ptr<IVarnXml> node) { FNodes.push_back({std::move(node)}); }
    [[nodiscard]] std::int32_t GetCount() const noexcept { return static_cast<std::int32_t>(FNodes.size()); }
    /// The node at that index, from 0. Raises EListError.
    [[nodiscard]] const std::shared_ptr<IVarnXml>& GetNodeAt(std::int64_t index) const;

private:
    std::vector<TVarnXmlNode> FNodes;
};

/// A list of nodes for classes of applications; nothing in the library implements or takes it.
class VARNHOLT_EXPORT IVarnXmlNodeList {
public:
    static constexpr TGuid kGuid = TGuid::FromText(u"{CE651AA7-A72C-4D81-8581-4722813A982B}");

    virtual ~IVarnXmlNodeList() = default;
    virtual void AddNode(std::shared_ptr<IVarnXml> node) = 0;
    [[nodiscard]] virtual std::int32_t GetCount() = 0;
    [[nodiscard]] virtual std::shared_ptr<IVarnXml> GetNodeAt(std::int64_t index) = 0;
};

class VARNHOLT_EXPORT TVarnXmlFactory {
public:
    TVarnXmlFactory() = delete;
    /// A wrapper of the node. Raises EArgumentNilException for null.
    [[nodiscard]] static std::shared_ptr<IVarnXml> GetObject(std::shared_ptr<IXMLNode> node);
    /// A wrapper of the root element of a new document.
    [[nodiscard]] static std::shared_ptr<IVarnXml> CreateDocument(StringView rootName);
    /// A wrapper of the document element of a file. Raises as LoadXMLDocument.
    [[nodiscard]] static std::shared_ptr<IVarnXml> LoadDocument(StringView fileName);
};

}  // namespace Varnholt
