#include "VarnholtLib/Services/vrnXml.h"

#include <gtest/gtest.h>

#include "Platform/Runtime/Files.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {
namespace {

using TNodePtr = std::shared_ptr<IXMLNode>;

/// A root with the children a ("one"), b and a ("two"), and the attribute id.
TNodePtr Tree() {
    const TNodePtr root = XmlGetRoot(XmlNewDocument(u"root"), u"root");
    XmlSetAttribute(root, u"id", u"7");
    XmlSetChildText(root, u"a", u"one", false);
    XmlNewChild(root, u"b");
    XmlSetChildText(root, u"a", u"two", false);
    return root;
}

TEST(XmlFunctions, ReadAndWriteNodes) {
    const TNodePtr root = Tree();
    EXPECT_EQ(XmlGetChildren(root).size(), 3U);
    EXPECT_EQ(XmlReadText(XmlGetChildren(root, u"a").at(1)), u"two");
    EXPECT_EQ(XmlCountChildren(root, u"*"), 0);
    EXPECT_EQ(XmlCountChildren(root, u"a"), 2);
    EXPECT_EQ(XmlReadAttribute(root, u"id"), u"7");
    EXPECT_EQ(XmlReadChildText(root, u"a"), u"one");
    EXPECT_EQ(XmlGetChildText(root, u"b", u"default"), u"");
    EXPECT_EQ(XmlGetChildText(root, u"c", u"default"), u"default");
    EXPECT_EQ(XmlGetChildText(nullptr, u"c", u"default"), u"default");
    EXPECT_EQ(XmlGetChildEx(root, u"c"), nullptr);
    EXPECT_EQ(XmlGetChildEx(nullptr, u"c"), nullptr);
    EXPECT_FALSE(XmlHasChild(root, u"A"));
    EXPECT_EQ(XmlCreateChild(root, u"b"), XmlGetChild(root, u"b"));
    XmlSetChildText(root, u"a", u"new", true);
    XmlSetChildAttribute(root, u"a", u"unit", u"mm", true);
    XmlSetChildAttribute(root, u"a", u"unit", u"cm", false);
    EXPECT_EQ(XmlReadChildText(root, u"a"), u"new");
    EXPECT_EQ(XmlReadChildAttribute(root, u"a", u"unit"), u"mm");
    EXPECT_EQ(XmlReadAttribute(XmlGetChildren(root, u"a").at(2), u"unit"), u"cm");
    // What is refused leaves no child.
    EXPECT_NE(Raised<EXMLDocError>([&] { XmlSetChildText(root, u"d", u"\x01", false); }), u"");
    EXPECT_FALSE(XmlHasChild(root, u"d"));
}

TEST(XmlFunctions, RaiseOnMisuse) {
    const TNodePtr root = Tree();
    const TNodePtr none;
    const StringView empty = u"Node has not been initialized";
    ExpectRaised<Exception>({
        {[&] { static_cast<void>(XmlGetRoot(root->GetOwnerDocument(), u"Root")); }, u"Root name mismatch"},
        {[&] { static_cast<void>(XmlGetRoot(NewXMLDocument(), u"root")); }, u"Root name mismatch"},
        {[&] { static_cast<void>(XmlReadAttribute(root, u"ID")); }, u"Attribute not present"},
        {[&] { static_cast<void>(XmlReadAttribute(none, u"id")); }, u"Attribute not present"},
        {[&] { static_cast<void>(XmlGetChild(root, u"c")); }, u"Node does not exist"},
        {[&] { static_cast<void>(XmlGetChild(none, u"c")); }, u"Node does not exist"},
        {[&] { static_cast<void>(XmlGetChildren(none)); }, empty},
        {[&] { static_cast<void>(XmlReadText(none)); }, empty},
        {[&] { static_cast<void>(XmlHasChild(none, u"a")); }, empty},
        {[&] { static_cast<void>(XmlCountChildren(none, u"a")); }, empty},
        {[&] { XmlSetAttribute(none, u"a", u"b"); }, empty},
        {[&] { XmlNewChild(none, u"a"); }, empty},
        {[&] { XmlCreateChild(none, u"a"); }, empty},
        {[&] { XmlSetChildText(none, u"a", u"b", true); }, empty},
        {[&] { XmlSetChildAttribute(none, u"a", u"b", u"c", false); }, empty},
    });
}

TEST(XmlWrapper, LevelDecidesAndIsNotInherited) {
    const auto root = TVarnXmlFactory::GetObject(Tree());
    EXPECT_EQ(root->GetAttributeValue(u"none"), u"");
    EXPECT_EQ(root->GetChild(u"none"), nullptr);
    EXPECT_EQ(root->GetChildValue(u"none"), u"");
    EXPECT_FALSE(root->Verify(std::vector<String>{u"x:a:1"}));
    EXPECT_FALSE(root->SaveToFile(u"Q:\\x.xml"));
    root->SetErrorLevel(cxelException);
    ExpectRaised<EVarnXml>({
        {[&] { static_cast<void>(root->GetAttributeValue(u"none")); }, u"Attribute does not exist"},
        {[&] { static_cast<void>(root->GetChild(u"none")); }, u"Child does not exist"},
        {[&] { static_cast<void>(root->GetChildValue(u"none")); }, u"Child does not exist"},
        {[&] { static_cast<void>(root->Verify(std::vector<String>{u"x:a:1"})); }, u"Condition is invalid"},
        {[&] { root->SaveToFile(u"Q:\\x.xml"); }, u"Unable to save XML content"},
        {[&] { root->ReportError(static_cast<TVarnXmlError>(9)); }, u"Unknown error"},
    });
    EXPECT_EQ(root->GetChildValueWithFallback(u"none", u"fallback"), u"fallback");
    EXPECT_EQ(root->GetChildValueWithFallback(u"a", u"fallback"), u"one");
    EXPECT_EQ(root->GetChild(u"a")->GetErrorLevel(), cxelContinue);
    ExpectRaised<EListError>(
        {{[&] { static_cast<void>(root->GetChildAt(3)); }, u"List index out of bounds (3)"}});
}

TEST(XmlWrapper, FindsAndAddsChildren) {
    const auto root = TVarnXmlFactory::GetObject(Tree());
    EXPECT_EQ(root->ForceGetChild(u"c")->GetPure(), root->ForceGetChild(u"c")->GetPure());
    root->AddChild(u"c");
    root->AddChildAndSetValue(u"c", u"text");
    EXPECT_EQ(root->CountChildrenWithName(u"c"), 3);
    EXPECT_EQ(root->GetChildCount(), 6);
    EXPECT_EQ(root->IndexOfFirst(cxElement, u"b"), 1);
    EXPECT_EQ(root->IndexOfFirst(cxAttribute, u"id"), 0);
    EXPECT_EQ(root->IndexOfFirst(static_cast<TVarnXmlNodeType>(2), u"b"), -1);
    TVarnXmlNodeList list;
    EXPECT_EQ(root->GetChildrenWithName(u"b", list), 1);
    EXPECT_EQ(root->GetChildrenWithName(u"c", list), 4);
    EXPECT_EQ(list.GetNodeAt(3)->GetValue(), u"text");
    EXPECT_EQ(root->GetChildrenWithNameAsList(u"a")->GetItem(1)->GetValue(), u"two");
}

TEST(XmlWrapper, VerifyStopsAtTheFirstConditionThatDoesNotHold) {
    const auto root = TVarnXmlFactory::GetObject(Tree());
    root->SetErrorLevel(cxelException);
    const std::pair<std::vector<String>, bool> cases[] = {
        {{}, true},
        {{u"a:id:1", u" e : b : 1 ", u"e:a:mr", u"e:none:m"}, true},
        {{u"e:a:1"}, false},
        {{u"e:none:mr"}, false},
        {{u"a:none:m"}, false},
        {{u"e:none:1", u"invalid"}, false},
    };
    for (const auto& [conditions, holds] : cases)
        EXPECT_EQ(root->Verify(conditions), holds) << (conditions.empty() ? "none" : ToUtf8(conditions[0]));
    for (const StringView invalid : {u"", u"e:a", u"e:a:1:", u"E:a:1", u"e:a:2", u"a:id:"})
        EXPECT_EQ(Raised<EVarnXml>([&] { static_cast<void>(root->Verify(std::vector{String(invalid)})); }),
                  u"Condition is invalid")
            << ToUtf8(invalid);
}

TEST(XmlWrapper, SavesTheWholeDocument) {
    const TTemporaryDrive drive(u'T');
    const auto root = TVarnXmlFactory::CreateDocument(u"root");
    EXPECT_TRUE(root->AddChildAndSetValue(u"a", u"b")->SaveToFile(u"T:\\x.xml"));
    EXPECT_EQ(ReadWholeFile(u"T:\\x.xml"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root><a>b</a></root>\n");
    EXPECT_EQ(TVarnXmlFactory::LoadDocument(u"T:\\x.xml")->GetChildValue(u"a"), u"b");
}

}  // namespace
}  // namespace Varnholt::Test
