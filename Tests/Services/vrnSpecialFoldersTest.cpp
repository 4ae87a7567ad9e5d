#include "VarnholtLib/Services/vrnSpecialFolders.h"

#include <gtest/gtest.h>

#include "Platform/System/Platform.h"
#include "VarnholtLib/Services/vrnWindowUtils.h"

namespace Varnholt::Test {
namespace {

class TNamedFolders : public IKnownFolders {
public:
    String Find(TKnownFolder folder) override { return Paths[folder]; }

    String Paths[kfWindows + 1];
};

class TOpenForm : public IScreen {
public:
    std::uintptr_t GetActiveFormHandle() override { return 7; }
};

TEST(vrnSpecialFolders, EachOperationNamesItsFolder) {
    const TPlatformScope scope;
    const auto folders = std::make_shared<TNamedFolders>();
    Platform().KnownFolders = folders;
    const std::tuple<String (*)(), TKnownFolder, std::int32_t> cases[] = {
        {TSpecialFolders::GetAppData, kfAppData, 26},
        {TSpecialFolders::GetCommonAppData, kfCommonAppData, 35},
        {TSpecialFolders::GetCommonDocuments, kfCommonDocuments, 46},
        {TSpecialFolders::GetLocalAppData, kfLocalAppData, 28},
        {TSpecialFolders::GetMyPictures, kfMyPictures, 39},
        {TSpecialFolders::GetPersonal, kfPersonal, 5},
        {TSpecialFolders::GetProgramFiles, kfProgramFiles, 38},
        {TSpecialFolders::GetSystem, kfSystem, 37},
        {TSpecialFolders::GetWindows, kfWindows, 36},
    };
    const std::pair<StringView, StringView> paths[] = {
        {u"C:\\x", u"C:\\x\\"}, {u"C:\\", u"C:\\"}, {u"/a\\b", u"/a\\b/"}};
    for (const auto& [get, folder, number] : cases) {
        String path = u"kept";
        EXPECT_EQ(get(), u"") << number;
        EXPECT_FALSE(TSpecialFolders::GetSpecialFolderString(path, number));
        EXPECT_EQ(path, u"kept");
        for (const auto& [found, expected] : paths) {
            folders->Paths[folder] = found;
            EXPECT_EQ(get(), expected) << number;
            EXPECT_TRUE(TSpecialFolders::GetSpecialFolderString(path, number));
            EXPECT_EQ(path, expected) << number;
        }
        folders->Paths[folder].clear();
    }
    String path;
    for (const std::int32_t unknown : {0, 6, -1, 47})
        EXPECT_FALSE(TSpecialFolders::GetSpecialFolderString(path, unknown)) << unknown;
}

TEST(vrnWindowUtils, ActiveFormIsTheScreens) {
    const TPlatformScope scope;
    EXPECT_EQ(GetActiveScreenHandle(), 0U);
    Platform().Screen = std::make_shared<TOpenForm>();
    EXPECT_EQ(GetActiveScreenHandle(), 7U);
}

}  // namespace
}  // namespace Varnholt::Test
