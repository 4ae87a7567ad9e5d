#include "VarnholtLib/Files/vrnUACHelper.h"

#include <gtest/gtest.h>

#include "Platform/Runtime/Files.h"
#include "Platform/System/Platform.h"
#include "Tests/Support/TemporaryFolder.h"
#include "VarnholtLib/Services/vrnRandomBytesFactory.h"
#include "VarnholtLib/Services/vrnSystemInfo.h"
#include "VarnholtLib/Services/vrnWindows.h"

namespace Varnholt::Test {
namespace {

struct TSteeredProcess : IProcess {
    String GetExecutablePath() override { return {}; }
    std::uint32_t GetProcessId() override { return 0; }
    std::uint32_t GetThreadId() override { return 0; }
    String GetMachineName() override { return u"ombrix"; }
    bool GetIsSuperUser() override { return IsSuperUser; }
    std::vector<String> GetGroups() override { return Groups; }
    std::vector<String> GetCommandLine() override { return Arguments; }

    bool IsSuperUser = false;
    std::vector<String> Groups, Arguments;
};

TEST(UACHelper, ProbesTheFolder) {
    const TTemporaryDrive drive(u'T');
    TUACHelperToken token;
    TUACHelper::InitToken(token, u"T:\\new\\below");
    TUACHelper::FreeToken(token);
    EXPECT_EQ(TUACHelper::CheckForCreate(token), cfcFolderDoesNotExist);
    EXPECT_FALSE(DirectoryExists(u"T:\\new"));
    TUACHelper::InitToken(token, u"T:\\new\\below", true);
    EXPECT_EQ(TUACHelper::CheckForWrite(token), cfcOK);
    const String probe = token.Filename;
    EXPECT_TRUE(probe.starts_with(u"T:\\new\\below\\TestFile") && FileExists(probe));
    EXPECT_EQ(TUACHelper::CheckForWrite(token), cfcOK);
    TUACHelper::FreeToken(token);
    EXPECT_TRUE(token.Filename.empty() && !FileExists(probe));
    ForceDirectories(probe);
    EXPECT_EQ(TUACHelper::CheckForWrite(token), cfcFileCreateFailed);
    token.Path = u"Q:\\x";
    EXPECT_EQ(TUACHelper::CheckForCreate(token), cfcFolderCouldNotBeCreated);
}

TEST(SystemFacts, ComeFromThePlatform) {
    const TPlatformScope scope;
    const auto process = std::make_shared<TSteeredProcess>();
    Platform().Process = process;
    EXPECT_EQ(TSystemInfo::GetMachineName(), u"ombrix");
    EXPECT_FALSE(TUACHelper::StartedFromRelaunch() || IsWindowsAdmin());
    process->Arguments = {u"-uacrelaunch", u"-UACRelaunch"};
    process->Groups = {u"users", u"Sudo"};
    EXPECT_FALSE(TUACHelper::StartedFromRelaunch() || IsWindowsAdmin());
    process->Arguments.push_back(u"-uacrelaunch");
    process->Groups.push_back(u"sudo");
    EXPECT_TRUE(TUACHelper::StartedFromRelaunch() && IsWindowsAdmin());
    process->Groups.clear();
    process->IsSuperUser = true;
    EXPECT_TRUE(IsWindowsAdmin());
}

TEST(RandomBytes, AreThoseOfOneSource) {
    const auto source = TRandomBytesFactory::GetObject();
    EXPECT_EQ(source, TRandomBytesFactory::GetObject());
    EXPECT_TRUE(source->GetRandomBytes(-1).empty());
    EXPECT_EQ(source->GetIVBytes().size(), 16U);
    EXPECT_NE(source->GetRandomBytes(1000), source->GetRandomBytes(1000));
}

TEST(IncPtr, CountsBytes) {
    const std::uint16_t values[] = {1, 2, 3};
    const std::uint16_t* pointer = values;
    IncPtr(pointer, 4);
    EXPECT_EQ(*pointer, 3);
}

}  // namespace
}  // namespace Varnholt::Test
