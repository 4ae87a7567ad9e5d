#include "VarnholtBaseLib/XmlUtils.h"

#include <gtest/gtest.h>

#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

TEST(XmlUtils, RaisesForWhatIsMissing) {
    const auto document = NewXMLDocument();
    const auto root = document->AddChild(u"root");
    root->SetAttribute(u"id", 7);
    root->AddChild(u"a")->SetText(u"one");
    root->AddChild(u"b");
    root->AddChild(u"a")->SetText(u"two");
    EXPECT_EQ(TXmlUtils::GetRootNode(document, u"root"), root);
    EXPECT_EQ(TXmlUtils::GetValue(TXmlUtils::GetChild(root, u"a")), u"one");
    EXPECT_EQ(TXmlUtils::GetValue(TXmlUtils::GetChildNodes(root, u"a").at(1)), u"two");
    EXPECT_TRUE(TXmlUtils::GetChildNodes(root, u"c").empty());
    EXPECT_EQ(TXmlUtils::GetAttributeValue(root, u"id"), u"7");
    TXmlUtils::CheckAttributes(root, {u"id"});
    TXmlUtils::CheckChildNodes(root, {u"a", u"b"});
    const std::initializer_list<StringView> twoChildren = {u"a", u"c"}, twoAttributes = {u"id", u"x"};
    ExpectRaised<EXMLDocError>({
        {[&] { static_cast<void>(TXmlUtils::GetRootNode(document, u"Root")); },
         u"The XML document has no root element \"Root\""},
        {[&] { static_cast<void>(TXmlUtils::GetRootNode(NewXMLDocument(), u"root")); },
         u"The XML document has no root element \"root\""},
        {[&] { TXmlUtils::CheckChildNodes(root, twoChildren); },
         u"XML element \"root\" has no element \"c\""},
        {[&] { TXmlUtils::CheckAttributes(root, twoAttributes); },
         u"XML element \"root\" has no attribute \"x\""},
        {[&] { static_cast<void>(TXmlUtils::GetAttributeValue(root, u"x")); },
         u"XML element \"root\" has no attribute \"x\""},
    });
    EXPECT_EQ(Raised<EArgumentNilException>([] { return TXmlUtils::GetChildNodes(nullptr, u"a"); }), u"node");
}

}  // namespace
}  // namespace Varnholt::Test
