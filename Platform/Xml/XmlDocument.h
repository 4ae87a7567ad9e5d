#pragma once

#include <cstdint>
#include <memory>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Variant.h"

/// The XML document service: documents as trees of nodes, read from files and written to files.
///
///     const std::shared_ptr<IXMLDocument> document = NewXMLDocument(u"1.0");
///     const std::shared_ptr<IXMLNode> station = document->AddChild(u"station");
///     station->SetAttribute(u"name", u"Z\u00FCrich");
///     station->AddChild(u"height")->SetText(u"408");
///     document->SaveToFile(u"C:\\data\\station.xml");
///
/// Nodes. The tree has element nodes and attribute nodes. Comments, processing instructions and the white space
/// between elements are kept and written as they were read, but no list shows them. Names are those of the file,
/// prefix included (`p:name`), and compare exactly; declarations of namespaces are kept but are not attributes.
///
/// Lifetime. Any node, attribute, list or owner document that a caller holds keeps the whole document alive,
/// nodes that are not attached included. A node is freed with its document, not before.
///
/// Text. What XML cannot hold is refused when it is written, and nothing changes. EXMLDocError says `XML cannot hold
/// character U+0001` (zero, most control characters, U+FFFE, U+FFFF, unpaired surrogates), `"%s" is not an XML name`,
/// `"%s" declares an XML namespace`, or for the limits below `An XML %s cannot have more than %d bytes` (text,
/// attribute, name), `An element cannot have more than 256 attributes` or `The elements are nested more than 256 levels
/// deep`. Carriage return, line feed and tab survive a round trip.
///
/// Files are treated as data of strangers. A document with a DOCTYPE is refused, no entity but the five of XML and
/// character references is known, and nothing but the file itself is ever opened. Limits, for files and for
/// documents that are built: 64 MiB for a file, 256 levels of elements, 256 attributes of an element (declarations of
/// namespaces among them), in UTF-8 10,000,000 bytes for a text, 1,000,000 for an attribute and 50,000 for a name.
///
/// A file may be in UTF-8, UTF-16, UTF-32 with a byte-order mark, US-ASCII, or one of ISO-8859 and windows-125x that it
/// declares. It is saved in UTF-8, whatever it was. No white space is added. The same document always gives the
/// same bytes.
///
/// Uses DraftFile.h. Threads: a document with all its nodes serves one thread at a time; different documents are
/// independent.
namespace Varnholt {

class IXMLDocument;
class IXMLNode;
class IXMLNodeList;

/// A file that cannot be parsed, or a change that the document refuses.
class VARNHOLT_EXPORT EXMLDocError : public Exception {
public:
    using Exception::Exception;
};

/// The kinds of node that a caller can create.
enum TXMLNodeType : std::uint8_t { ntElement, ntAttribute };

/// The child elements or the attributes of a node, or the child elements of a document: a live view, in document
/// order. Indexes count from 0.
class IXMLNodeList {
public:
    virtual ~IXMLNodeList() = default;
    [[nodiscard]] virtual std::int32_t GetCount() = 0;
    /// Raises EListError (`List index out of bounds (%d)`).
    [[nodiscard]] virtual std::shared_ptr<IXMLNode> GetNode(std::int64_t index) = 0;
    /// The first node of that name; null if there is none.
    [[nodiscard]] virtual std::shared_ptr<IXMLNode> FindNode(StringView name) = 0;
    /// The first node; null if the list is empty.
    [[nodiscard]] virtual std::shared_ptr<IXMLNode> First() = 0;
    /// The index of the first node of that name; -1 if there is none.
    [[nodiscard]] virtual std::int32_t IndexOf(StringView name) = 0;
    /// Appends a node and attaches it to the owner of the list; a node that is attached elsewhere in the document
    /// is moved. An attribute replaces the one of its name in place, which becomes detached. Raises EXMLDocError:
    /// `An XML document has only one root element`, `An element cannot be added to itself`,
    /// `The node belongs to another XML document`, `The list takes only elements`, `The list takes only
    /// attributes`, `An attribute has no child elements`; EArgumentNilException for null.
    virtual void Add(const std::shared_ptr<IXMLNode>& node) = 0;
};

class IXMLNode {
public:
    virtual ~IXMLNode() = default;
    /// The name, prefix included.
    [[nodiscard]] virtual String GetNodeName() = 0;
    /// The text of the node itself, that of child elements excluded. If an element has child elements, only white
    /// space counts as no text, since it is formatting. Of an attribute, its value.
    [[nodiscard]] virtual String GetText() = 0;
    /// Replaces the node's own text; child elements stay, in their order, after the text.
    virtual void SetText(StringView text) = 0;
    /// The same as a variant: a text.
    [[nodiscard]] virtual Variant GetNodeValue() = 0;
    /// Sets the text to the value as ToText writes it.
    virtual void SetNodeValue(const Variant& value) = 0;
    /// The value of an attribute, a text; an empty variant if there is none.
    [[nodiscard]] virtual Variant GetAttribute(StringView name) = 0;
    /// Sets the attribute to the value as ToText writes it; creates it if it is absent. Raises EXMLDocError
    /// (`An attribute has no attributes`) on an attribute.
    virtual void SetAttribute(StringView name, const Variant& value) = 0;
    [[nodiscard]] virtual bool HasAttribute(StringView name) = 0;
    /// The lists of an attribute node are always empty.
    [[nodiscard]] virtual std::shared_ptr<IXMLNodeList> GetAttributeNodes() = 0;
    [[nodiscard]] virtual std::shared_ptr<IXMLNodeList> GetChildNodes() = 0;
    /// Creates an element and inserts it before the child of that index; -1 appends it. Raises EListError.
    virtual std::shared_ptr<IXMLNode> AddChild(StringView name, std::int64_t index = -1) = 0;
    /// The text of the first child element of that name; an empty variant if there is none.
    [[nodiscard]] virtual Variant GetChildValue(StringView name) = 0;
    /// Sets the text of the first child element of that name; creates it if it is absent.
    virtual void SetChildValue(StringView name, const Variant& value) = 0;
    /// The next element of the same parent; null after the last one and for an attribute.
    [[nodiscard]] virtual std::shared_ptr<IXMLNode> NextSibling() = 0;
    /// Never null.
    [[nodiscard]] virtual std::shared_ptr<IXMLDocument> GetOwnerDocument() = 0;
};

class IXMLDocument {
public:
    virtual ~IXMLDocument() = default;
    /// The root element; null in a new document.
    [[nodiscard]] virtual std::shared_ptr<IXMLNode> GetDocumentElement() = 0;
    /// The root element as a list; adding a node here makes it the root.
    [[nodiscard]] virtual std::shared_ptr<IXMLNodeList> GetChildNodes() = 0;
    /// Creates the root element.
    virtual std::shared_ptr<IXMLNode> AddChild(StringView name) = 0;
    /// A detached element. Raises EArgumentException (`XML namespaces are not supported`) unless the namespace is empty:
    /// prefixes are part of the name.
    [[nodiscard]] virtual std::shared_ptr<IXMLNode> CreateElement(StringView name, StringView nameSpace) = 0;
    /// A detached node of that kind with a text. Raises EArgumentException (`The kind of XML node is unknown`).
    [[nodiscard]] virtual std::shared_ptr<IXMLNode> CreateNode(StringView name, TXMLNodeType kind,
                                                               StringView text) = 0;
    /// Writes the document, replacing the file as a whole or not at all (DraftFile.h). Raises EFCreateError,
    /// EWriteError and EInOutError as TDraftFileStream does, and EXMLDocError (`The XML document has more than %d
    /// bytes`).
    virtual void SaveToFile(StringView fileName) = 0;
};

/// A new empty document. Raises EXMLDocError (`XML version "%s" is not supported`) unless the version is 1.0.
[[nodiscard]] VARNHOLT_EXPORT std::shared_ptr<IXMLDocument> NewXMLDocument(StringView version = u"1.0");

/// Parses a file. Raises EFOpenError and EReadError as TFileStream does, and EXMLDocError: `%s: line %d: %s` with the
/// path, the line and the parser's reason, or `%s: %s` with the reason. Reasons of this service: `A document type
/// declaration (DOCTYPE) is not accepted`, `The encoding is not supported`, `The file has more than 67108864 bytes`,
/// and the texts of the other limits.
[[nodiscard]] VARNHOLT_EXPORT std::shared_ptr<IXMLDocument> LoadXMLDocument(StringView fileName);

}  // namespace Varnholt
