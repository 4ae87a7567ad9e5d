#include <gmock/gmock.h>

#include "Platform/Runtime/Files.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"
#include "VarnholtLib/Files/vrnPathArray.h"
#include "VarnholtLib/Files/vrnPathBreadcrumb.h"
#include "VarnholtLib/Files/vrnPathElements.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;

std::vector<String> Elements(StringView path) {
    const TPathArray array(path);
    return {array.begin(), array.end()};
}

TEST(PathArray, SplitsAndBuilds) {
    EXPECT_THAT(Elements(u"C:\\a\\b/"), ElementsAre(u"C:", u"a", u"b"));
    EXPECT_THAT(Elements(u"\\a//b"), ElementsAre(u"", u"a", u"", u"b"));
    EXPECT_THAT(Elements(u"\\"), ElementsAre(u""));
    EXPECT_TRUE(Elements(u"").empty());
    TPathArray path(u"a\\b/c");
    path.AddElement(u"C:");
    EXPECT_EQ(path.Build() + path.Build(1) + path.Build(2, 1) + path.Build(2, 2), u"C:\\a\\b\\c\\C:\\a\\b\\");
    EXPECT_EQ(path.IndexOf(u"B"), 2);
    ExpectRaised<EListError>(
        {{[&] { static_cast<void>(path.Build(4)); }, u"List index out of bounds (4)"},
         {[&] { static_cast<void>(path.Build(-1, 0)); }, u"List index out of bounds (-1)"}});
}

class PathSearch : public testing::Test {
protected:
    PathSearch() {
        ForceDirectories(u"T:\\a\\b");
        WriteFileInOneGo(u"T:\\both", "");
        WriteFileInOneGo(u"T:\\a\\both", "");
        WriteFileInOneGo(u"T:\\a\\b\\x.txt", "");
    }
    const TTemporaryDrive FDrive{u'T'};
};

TEST_F(PathSearch, BreadcrumbFindsFilesAlongThePath) {
    const auto path = TPathBreadcrumbFactory::GetObject();
    path->SetPath(u"T:\\a\\b\\");
    EXPECT_EQ(path->GetCount(), 4);
    EXPECT_EQ(path->GetItem(3), u"");
    EXPECT_EQ(path->BuildPath(1) + path->BuildPath(9), u"T:\\a\\T:\\a\\b\\\\");
    EXPECT_EQ(path->GetPath(), u"T:\\a\\b\\");
    String found = u"former";
    EXPECT_FALSE(path->FindFileFromEnd(u"none", found));
    EXPECT_EQ(found, u"former");
    EXPECT_TRUE(path->FindFileFromEnd(u"both", found));
    EXPECT_EQ(found, u"T:\\a\\both");
    EXPECT_TRUE(path->FindFileFromStart(u"both", found));
    EXPECT_EQ(found, u"T:\\both");
    EXPECT_TRUE(path->FindFileFromStart(u"T:\\a\\b\\x.txt", found));
    EXPECT_EQ(found, u"T:\\a\\b\\x.txt");
}

TEST_F(PathSearch, ElementsFindFilesAlongThePath) {
    TPathElements path(u"T:\\a\\ b\\x.txt", false);
    EXPECT_EQ(path.ToString(), u"T:\\a\\b\\x.txt");
    EXPECT_EQ(TPathElements(u"T:\\a\\b\\x.txt", true).ToString(), u"T:\\a\\b");
    EXPECT_EQ(TPathElements(u"T:\\none\\x.txt", true).GetCount(), 3);
    path.SetElement(3, u"A");
    EXPECT_EQ(path.IndexFromStart(u"A"), 1);
    EXPECT_EQ(path.IndexFromEnd(u"a"), 3);
    EXPECT_EQ(path.IndexFromEnd(u"z"), -1);
    EXPECT_EQ(path.ToStringUpToIndex(-1) + path.ToStringUpToIndex(1), u"T:\\a");
    String result = u"former";
    EXPECT_FALSE(path.PathContainsFile(1, u"x.txt", true, result));
    EXPECT_EQ(result, u"");
    EXPECT_TRUE(path.PathContainsFile(2, u"x.txt"));
    EXPECT_EQ(path.PathContainingFileFromEnd(u"both", false), u"T:\\a");
    EXPECT_EQ(path.PathContainingFileFromStart(u"both", true), u"T:\\both");
    EXPECT_EQ(TPathElements::PathContainingFileFromEnd(u"T:\\a\\b\\x.txt", u"both", true), u"T:\\a\\both");
    EXPECT_EQ(TPathElements::PathContainingFileFromStart(u"T:\\a", u"both", false), u"T:");
    EXPECT_TRUE(path.TryPathContainingFileFromEnd(u"x.txt", true, result));
    EXPECT_EQ(result, u"T:\\a\\b\\x.txt");
    EXPECT_FALSE(path.TryPathContainingFileFromStart(u"none", true, result));
    EXPECT_EQ(result, u"");
    ExpectRaised<EFileNotFound>({{[&] { static_cast<void>(path.PathContainingFileFromEnd(u"none", true)); },
                                  u"The file \"none\" could not be found"}});
    ExpectRaised<EListError>(
        {{[&] { static_cast<void>(path.GetElement(4)); }, u"List index out of bounds (4)"},
         {[&] { static_cast<void>(path.ToStringUpToIndex(4)); }, u"List index out of bounds (4)"}});
}

}  // namespace
}  // namespace Varnholt::Test
