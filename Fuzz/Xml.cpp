#include <cstdio>
#include <string>

#include <unistd.h>

#include "Fuzz/FuzzInput.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/Xml/XmlDocument.h"

/// A file of a stranger: refused with a message, or a document that is saved, loaded again and still the same.
namespace Varnholt::Fuzz {
namespace {

using TNodePtr = std::shared_ptr<IXMLNode>;

const String& FilePath() {
    static const String path = FromNativePath("/tmp/varnholt-fuzz-" + std::to_string(getpid()) + ".xml");
    return path;
}

std::shared_ptr<IXMLDocument> Load(std::string_view bytes) {
    WriteFileInOneGo(FilePath(), bytes);
    return LoadXMLDocument(FilePath());
}

void RequireSameNodes(const TNodePtr& a, const TNodePtr& b) {
    RequireSame(a->GetNodeName(), b->GetNodeName(), "the name is read back");
    RequireSame(a->GetText(), b->GetText(), "the text is read back");
    const auto attributes = a->GetAttributeNodes();
    Require(attributes->GetCount() == b->GetAttributeNodes()->GetCount(), "the attributes are read back");
    for (std::int32_t i = 0; i < attributes->GetCount(); ++i) {
        const String name = attributes->GetNode(i)->GetNodeName();
        Require(b->HasAttribute(name), "an attribute is found by its name");
        RequireSame(attributes->GetNode(i)->GetText(), b->GetAttributeNodes()->GetNode(i)->GetText(),
                    "the value is read back");
    }
    const auto children = a->GetChildNodes();
    Require(children->GetCount() == b->GetChildNodes()->GetCount(), "the elements are read back");
    for (std::int32_t i = 0; i < children->GetCount(); ++i) {
        const String name = children->GetNode(i)->GetNodeName();
        const std::int32_t first = children->IndexOf(name);
        Require(first >= 0 && first <= i && children->GetNode(first)->GetNodeName() == name,
                "an element is found by its name");
        RequireSameNodes(children->GetNode(i), b->GetChildNodes()->GetNode(i));
    }
}

/// Changes each element, so that nodes are detached and lists are made anew.
void Change(const TNodePtr& node) {
    node->SetText(node->GetText() + u"\r\n<");
    node->SetAttribute(u"a", node->GetChildNodes()->GetCount());
    node->AddChild(u"first", 0)->AddChild(u"inner");
    node->GetChildNodes()->Add(node->GetChildNodes()->First());
    const TNodePtr next = node->GetChildNodes()->First();
    if (next->GetNodeName() != u"first") Change(next);
}

void RequireReadBack(IXMLDocument& document) {
    document.SaveToFile(FilePath());
    const std::string bytes = ReadWholeFile(FilePath());
    const auto again = LoadXMLDocument(FilePath());
    RequireSameNodes(document.GetDocumentElement(), again->GetDocumentElement());
    again->SaveToFile(FilePath());
    Require(ReadWholeFile(FilePath()) == bytes, "the same document is the same bytes");
}

}  // namespace

void RunInput(TInput input) {
    std::shared_ptr<IXMLDocument> document;
    const std::string bytes(input.begin(), input.end());
    const String failure = FailureOf([&] { document = Load(bytes); });
    Require(failure.empty() == (document != nullptr), "a refusal has a message");
    if (!document) return;
    RequireReadBack(*document);
    static_cast<void>(FailureOf([&] { Change(document->GetDocumentElement()); }));
    RequireReadBack(*document);
}

}  // namespace Varnholt::Fuzz
