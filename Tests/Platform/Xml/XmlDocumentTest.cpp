#include "Platform/Xml/XmlDocument.h"

#include <gtest/gtest.h>

#include "Platform/Runtime/Encoding.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {
namespace {

using TNodePtr = std::shared_ptr<IXMLNode>;

class XmlDocument : public testing::Test {
protected:
    std::shared_ptr<IXMLDocument> Load(std::string_view bytes) const {
        WriteFileInOneGo(FPath, bytes);
        return LoadXMLDocument(FPath);
    }
    std::string Saved(IXMLDocument& document) const {
        document.SaveToFile(FPath);
        return ReadWholeFile(FPath);
    }
    /// The message without the path.
    String Refusal(std::string_view bytes) const {
        const String message = Raised<EXMLDocError>([&] { static_cast<void>(Load(bytes)); });
        return message.starts_with(FPath) ? message.substr(FPath.size() + 2) : message;
    }

    const TTemporaryDrive FDrive{u'T'};
    const String FPath = u"T:\\x.xml";
};

/// The contract holds for a document that was built and for one that was loaded.
class XmlContract : public XmlDocument, public testing::WithParamInterface<bool> {
protected:
    void SetUp() override {
        FDocument = NewXMLDocument();
        const TNodePtr root = FDocument->AddChild(u"root");
        root->SetAttribute(u"id", 7);
        root->AddChild(u"a")->SetText(u"one");
        root->AddChild(u"b");
        root->AddChild(u"a")->SetText(u"two");
        if (GetParam()) FDocument = Load(Saved(*FDocument));
        FRoot = FDocument->GetDocumentElement();
    }

    std::shared_ptr<IXMLDocument> FDocument;
    TNodePtr FRoot;
};

INSTANTIATE_TEST_SUITE_P(, XmlContract, testing::Bool(),
                         [](const auto& loaded) { return loaded.param ? "Loaded" : "Built"; });

constexpr const char* kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

TEST_P(XmlContract, ListsAreLiveViews) {
    const auto children = FRoot->GetChildNodes();
    EXPECT_EQ(children->GetCount(), 3);
    EXPECT_EQ(children->IndexOf(u"b"), 1);
    EXPECT_EQ(children->IndexOf(u"B"), -1);
    EXPECT_EQ(children->FindNode(u"a")->GetText(), u"one");
    EXPECT_EQ(children->First()->NextSibling()->NextSibling()->GetText(), u"two");
    EXPECT_EQ(children->GetNode(2)->NextSibling(), nullptr);
    FRoot->AddChild(u"first", 0);
    EXPECT_EQ(children->First()->GetNodeName(), u"first");
    EXPECT_EQ(children->IndexOf(u"b"), 2);
    children->Add(children->First());  // moved to the end
    EXPECT_EQ(children->IndexOf(u"first"), 3);
    // Beyond the size from which names are looked up in a table.
    for (int i = 0; i < 40; ++i) FRoot->AddChild(Format(u"n%d", {i % 20}))->SetText(IntToStr(i));
    EXPECT_EQ(children->IndexOf(u"n19"), 23);
    EXPECT_EQ(FRoot->GetChildValue(u"n7").ToText(), u"7");
    FRoot->AddChild(u"n7", 0)->SetText(u"new");
    EXPECT_EQ(FRoot->GetChildValue(u"n7").ToText(), u"new");
    ExpectRaised<EListError>(
        {{[&] { static_cast<void>(children->GetNode(-1)); }, u"List index out of bounds (-1)"},
         {[&] { FRoot->AddChild(u"z", 46); }, u"List index out of bounds (46)"}});
}

TEST_P(XmlContract, AttributesAreReplacedInPlace) {
    FRoot->SetAttribute(u"unit", u"mm");
    const auto attributes = FRoot->GetAttributeNodes();
    const TNodePtr former = attributes->First();
    const TNodePtr added = FDocument->CreateNode(u"id", ntAttribute, u"");
    added->SetNodeValue(u"<&\">");
    attributes->Add(added);
    EXPECT_EQ(attributes->GetCount(), 2);
    EXPECT_EQ(attributes->IndexOf(u"unit"), 1);
    EXPECT_EQ(FRoot->GetAttribute(u"id").ToText(), u"<&\">");
    EXPECT_TRUE(FRoot->GetAttribute(u"none").IsEmpty());
    EXPECT_EQ(former->GetText(), u"7");  // detached
    FRoot->GetChildNodes()->First()->GetAttributeNodes()->Add(added);
    EXPECT_FALSE(FRoot->HasAttribute(u"id"));
    EXPECT_EQ(Saved(*FDocument),
              std::string(kHead) +
                  "<root unit=\"mm\"><a id=\"&lt;&amp;&quot;&gt;\">one</a><b/><a>two</a></root>\n");
}

TEST_P(XmlContract, TextIsTheNodesOwn) {
    FRoot->SetText(u"own");
    EXPECT_EQ(FRoot->GetText(), u"own");
    EXPECT_EQ(FRoot->GetChildNodes()->GetCount(), 3);
    FRoot->SetText(u"");
    FRoot->SetChildValue(u"a", 1.5);
    FRoot->SetChildValue(u"c", true);
    EXPECT_TRUE(FRoot->GetChildValue(u"d").IsEmpty());
    EXPECT_EQ(Saved(*FDocument),
              std::string(kHead) + "<root id=\"7\"><a>1.5</a><b/><a>two</a><c>True</c></root>\n");
}

TEST_P(XmlContract, EveryTextSurvives) {
    String text = u"\t\r\n \u00E4\u20AC\U0001F327\uFFFD]]>&lt;";
    FRoot->SetAttribute(u"t", text);
    FRoot->GetChildNodes()->First()->SetText(text);
    const TNodePtr root = Load(Saved(*FDocument))->GetDocumentElement();
    EXPECT_EQ(root->GetAttribute(u"t").ToText(), text);
    EXPECT_EQ(root->GetChildNodes()->First()->GetText(), text);
}

TEST_P(XmlContract, RefusalsChangeNothing) {
    const std::string before = Saved(*FDocument);
    const auto other = NewXMLDocument()->AddChild(u"other");
    const auto children = FRoot->GetChildNodes();
    const TNodePtr first = children->First();
    const TNodePtr attribute = FRoot->GetAttributeNodes()->First();
    TNodePtr deep = FDocument->CreateElement(u"deep", u"");
    const TNodePtr top = deep, many = FDocument->CreateElement(u"many", u"");
    for (int level = 1; level < 255; ++level) deep = deep->AddChild(u"deep");
    ExpectRaised<EXMLDocError>({
        {[&] {
             first->SetText({u"a\0b", 3});
         },
         u"XML cannot hold character U+0000"},
        {[&] { first->SetText(u"\x1B"); }, u"XML cannot hold character U+001B"},
        {[&] { FRoot->SetAttribute(u"id", String(1, 0xD800) + u"x"); }, u"XML cannot hold character U+D800"},
        {[&] { FRoot->SetChildValue(u"new", String(1, 0xDC00)); }, u"XML cannot hold character U+DC00"},
        {[&] { FRoot->SetAttribute(u"new", u"\uFFFE"); }, u"XML cannot hold character U+FFFE"},
        {[&] { first->SetText(String(10'000'001, u'x')); },
         u"An XML text cannot have more than 10000000 bytes"},
        {[&] { FRoot->SetAttribute(u"id", String(1'000'001, u'x')); },
         u"An XML attribute cannot have more than 1000000 bytes"},
        {[&] {
             for (int i = 0; i <= 256; ++i) many->SetAttribute(u"a" + IntToStr(i), i);
         },
         u"An element cannot have more than 256 attributes"},
        {[&] { FRoot->AddChild(u"1a"); }, u"\"1a\" is not an XML name"},
        {[&] { FRoot->AddChild(u""); }, u"\"\" is not an XML name"},
        {[&] {
             FRoot->AddChild({u"a\0", 2});
         },
         Format(u"\"%s\" is not an XML name", {StringView(u"a\0", 2)})},
        {[&] { FRoot->SetAttribute(u"xmlns:a", u"b"); }, u"\"xmlns:a\" declares an XML namespace"},
        {[&] { children->Add(other); }, u"The node belongs to another XML document"},
        {[&] { first->GetChildNodes()->Add(FRoot); }, u"An element cannot be added to itself"},
        {[&] { children->Add(attribute); }, u"The list takes only elements"},
        {[&] { FRoot->GetAttributeNodes()->Add(first); }, u"The list takes only attributes"},
        {[&] { FDocument->GetChildNodes()->Add(first); }, u"An XML document has only one root element"},
        {[&] { FDocument->AddChild(u"b"); }, u"An XML document has only one root element"},
        {[&] { attribute->AddChild(u"b"); }, u"An attribute has no child elements"},
        {[&] { attribute->SetAttribute(u"b", 1); }, u"An attribute has no attributes"},
        {[&] { first->GetChildNodes()->Add(top); }, u"The elements are nested more than 256 levels deep"},
        {[&] { static_cast<void>(NewXMLDocument(u"1.1")); }, u"XML version \"1.1\" is not supported"},
    });
    EXPECT_EQ(Saved(*FDocument), before);
    children->Add(top);  // the 256th level
    EXPECT_NO_THROW(static_cast<void>(Load(Saved(*FDocument))));
}

TEST_P(XmlContract, AnyReferenceKeepsTheDocument) {
    const auto list = FRoot->GetChildNodes();
    TNodePtr detached = FDocument->CreateElement(u"d", u"");
    detached->AddChild(u"e")->SetText(u"kept");
    const TNodePtr inner = detached->GetChildNodes()->First();
    const std::weak_ptr<IXMLDocument> document = FDocument;
    FDocument.reset();
    FRoot.reset();
    detached.reset();
    EXPECT_EQ(list->GetNode(2)->GetText(), u"two");
    EXPECT_EQ(inner->GetText(), u"kept");
    EXPECT_EQ(inner->GetOwnerDocument(), document.lock());
}

TEST_F(XmlDocument, WhatNoListShowsIsKept) {
    const auto bytes = [](std::string_view encoding, std::string_view letter) {
        return "<?xml version=\"1.0\" encoding=\"" + std::string(encoding) +
               "\"?>\n<!--top <a ' -->\n<r xmlns:p=\"urn:x\" p:a=\"1\">\n  <p:e q:b=\"2\"><![CDATA[<" +
               std::string(letter) + ">]]></p:e><!--in-->\n  <?pi x?>\n</r>\n";
    };
    const auto document = Load(bytes("ISO-8859-1", "\xE4"));
    const TNodePtr root = document->GetDocumentElement();
    EXPECT_EQ(root->GetText(), u"");
    EXPECT_EQ(root->GetChildNodes()->GetCount(), 1);
    EXPECT_EQ(root->GetChildValue(u"p:e").ToText(), u"<\u00E4>");
    EXPECT_EQ(root->GetAttribute(u"p:a").ToText(), u"1");
    EXPECT_EQ(root->GetAttributeNodes()->GetCount(), 1);
    EXPECT_TRUE(root->GetChildNodes()->First()->HasAttribute(u"q:b"));  // undeclared
    EXPECT_EQ(Saved(*document), bytes("UTF-8", "\xC3\xA4"));
    const TEncoding& wide = TEncoding::Utf16LE();
    for (const std::string& mark : {std::string(wide.GetPreamble()), std::string()}) {
        const auto other = Load(mark + wide.GetBytes(FromUtf8(bytes("UTF-16", "\xC3\xA4"))));
        EXPECT_EQ(Saved(*other), bytes("UTF-8", "\xC3\xA4"));
    }
}

TEST_F(XmlDocument, HostileFilesAreRefused) {
    const std::string head(kHead);
    const auto nested = [](int levels) {
        std::string text;
        for (int i = 0; i < levels; ++i) text += "<a>";
        return text;
    };
    std::string attributes;
    for (int i = 0; i < 300'000; ++i) attributes += " a" + std::to_string(i) + "='>'";
    const StringView docType = u"A document type declaration (DOCTYPE) is not accepted";
    const std::pair<std::string, StringView> files[] = {
        {"<!DOCTYPE a><a/>", docType},
        {"<!DOCTYPE a [<!ENTITY x SYSTEM \"file:///etc/passwd\">]><a>&x;</a>", docType},
        {"<!DOCTYPE a [<!ENTITY b \"bb\"><!ENTITY c \"&b;&b;\">]><a>&c;</a>", docType},
        {nested(1'000'000), u"The elements are nested more than 256 levels deep"},
        {"<a b=\"" + std::string(1'000'001, 'x') + "\"/>",
         u"An XML attribute cannot have more than 1000000 bytes"},
        {"<!-- ' --><a" + attributes + "/>", u"An element cannot have more than 256 attributes"},
        {"<?xml version='1.0' encoding='Shift_JIS'?><a/>", u"The encoding is not supported"},
        {"<a>" + std::string(std::size_t{64} << 20, 'x') + "</a>", u"The file has more than 67108864 bytes"},
        {"<a>\xFF\xFE</a>", u"line 1: Input is not proper UTF-8"},
        {"<a>&x;</a>", u"line 1: Entity 'x' not defined"},
        {"<a>&#0;</a>", u"line 1: "},
        {"<a></b>", u"line 1: "},
        {"<a/><b/>", u"line 1: "},
        {"", u""},
        {std::string(5, '\0'), u""},
        {"a,b\n1,2\n", u"line 1: "},
    };
    testing::internal::CaptureStderr();
    for (const auto& [bytes, reason] : files) {
        const String message = Refusal(bytes);
        EXPECT_TRUE(!message.empty() && message.starts_with(reason))
            << bytes.substr(0, 40) << ": " << ToUtf8(message);
        EXPECT_FALSE(message.starts_with(u"(")) << bytes.substr(0, 40) << ": " << ToUtf8(message);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_NE(Raised<EFOpenError>([] { static_cast<void>(LoadXMLDocument(u"T:\\none.xml")); }), u"");
    EXPECT_NE(Raised<EFOpenError>([] { static_cast<void>(LoadXMLDocument(u"T:\\")); }), u"");
}

}  // namespace
}  // namespace Varnholt::Test
