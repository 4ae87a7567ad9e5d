#include "VarnholtLib/Services/vrnSpecialFolders.h"

#include "Tests/Services/ServiceTest.h"
#include "VarnholtLib/Services/vrnWindowUtils.h"

namespace Varnholt::Test {
namespace {

using vrnSpecialFolders = TServiceTest;

TEST_F(vrnSpecialFolders, EachOperationNamesItsFolder) {
    using TGet = TSpecialFolders;
    // clang-format off
    const std::tuple<String (*)(), TKnownFolder, StringView, StringView> cases[] = {
        {TGet::GetAppData, kfAppData, u"C:\\x", u"C:\\x\\"}, {TGet::GetCommonAppData, kfCommonAppData, u"C:\\", u"C:\\"},
        {TGet::GetCommonDocuments, kfCommonDocuments, u"/a\\b", u"/a\\b/"}, {TGet::GetLocalAppData, kfLocalAppData, u"/", u"/"},
        {TGet::GetMyPictures, kfMyPictures, u"C:\\p", u"C:\\p\\"}, {TGet::GetPersonal, kfPersonal, u"C:\\d", u"C:\\d\\"},
        {TGet::GetProgramFiles, kfProgramFiles, u"C:\\o", u"C:\\o\\"}, {TGet::GetSystem, kfSystem, u"C:\\s", u"C:\\s\\"},
        {TGet::GetWindows, kfWindows, u"", u""}};
    // clang-format on
    for (const auto& [get, known, found, expected] : cases) {
        Known = known;
        Folder = found;
        EXPECT_EQ(get(), expected);
    }
    String path = u"kept";
    for (const std::int32_t unknown : {0, 6, 36, 47})
        EXPECT_FALSE(TSpecialFolders::GetSpecialFolderString(path, unknown)) << unknown;
    EXPECT_EQ(path, u"kept");
    Platform().Screen->SetActiveFormHandle(7);
    EXPECT_EQ(GetActiveScreenHandle(), 7U);
    Platform().Screen->SetActiveFormHandle(0);
}

}  // namespace
}  // namespace Varnholt::Test
