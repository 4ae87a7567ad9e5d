#include "Platform/System/Platform.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <thread>

#include "Platform/Runtime/Files.h"
#include "Platform/System/LocalTime.h"
#include "Platform/System/PrivateFile.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {
namespace {

TEST(PlatformTest, KnowsItsProcess) {
    IProcess& process = *Platform().Process;
    const auto isRight = [&] { return process.GetThreadId() == static_cast<std::uint32_t>(gettid()); };
    EXPECT_TRUE(isRight() && process.GetThreadId() == process.GetProcessId());
    std::thread([&] { EXPECT_TRUE(isRight()); }).join();
    const pid_t child = fork();
    if (child == 0) _exit(isRight() ? 0 : 1);
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << "the forked process";

    EXPECT_TRUE(FileExists(process.GetExecutablePath()));
    EXPECT_EQ(ToUtf8(process.GetMachineName()) + "\n", ReadWholeFile(u"/proc/sys/kernel/hostname"));
    const std::vector<String> arguments = process.GetCommandLine();
    EXPECT_EQ(arguments.size(), ::testing::internal::GetArgvs().size());
    EXPECT_EQ(Platform().Screen->GetActiveFormHandle(), 0U);
}

TEST(PlatformTest, TimesAreLocal) {
    setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    tzset();
    constexpr double kSecond = 1.0 / 86400;
    const std::pair<std::int64_t, TDateTime> cases[] = {
        // seconds since 1970, days since 30 December 1899
        {1700000000, 45244 + (23 * 3600 + 13 * 60 + 20) * kSecond},  // 14 November 2023, 23:13:20
        {1719835200, 45474 + 14 * 3600 * kSecond},                   // 1 July 2024, 14:00, summer time
        {-86400, 25568 + 3600 * kSecond},
    };
    for (const auto& [seconds, days] : cases) {
        const std::chrono::sys_seconds time{std::chrono::seconds(seconds)};
        EXPECT_NEAR(ToLocalDateTime(time), days, kSecond / 1000) << seconds;
    }
    const TDateTime before = ToLocalDateTime(std::chrono::system_clock::now());
    const TDateTime now = Platform().Clock->Now();
    EXPECT_TRUE(before <= now && now <= ToLocalDateTime(std::chrono::system_clock::now()));
}

TEST(PrivateFileTest, IsAnewAndOnlyTheOwners) {
    const TTemporaryDrive drive(u'D');
    umask(0);
    TPrivateFileStream first(u"D:\\a.log");
    first.WriteBuffer(BytesOf("lost"));
    TPrivateFileStream second(u"D:\\a.log");
    second.WriteBuffer(BytesOf("1"));
    first.WriteBuffer(BytesOf("2"));
    struct stat facts {};
    ASSERT_EQ(stat(drive.GetNativePath("a.log").c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777U, 0600U);

    std::filesystem::create_hard_link(drive.GetNativePath("a.log"), drive.GetNativePath("twin"));
    std::filesystem::create_symlink("a.log", drive.GetNativePath("link"));
    ASSERT_EQ(mkfifo(drive.GetNativePath("pipe").c_str(), 0600), 0);
    const auto open = [](StringView path) { return [path] { TPrivateFileStream file(path); }; };
    ExpectRaised<EFCreateError>(
        {{open(u"D:\\twin"), u"Cannot create file \"D:\\twin\": It has another name"},
         {open(u"D:\\link"), u"Cannot create file \"D:\\link\": Too many levels of symbolic links"},
         {open(u"D:\\pipe"), u"Cannot create file \"D:\\pipe\": No such device or address"},
         {open(u"C:\\dev\\null"), u"Cannot create file \"C:\\dev\\null\": It is not a regular file"},
         {open(u"Q:\\x"), u"Cannot create file \"Q:\\x\": Drive Q: is not known"}});
    EXPECT_EQ(ReadWholeFile(u"D:\\a.log"), "12");
}

}  // namespace
}  // namespace Varnholt::Test
