#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "Platform/Runtime/Files.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"
#include "VarnholtLib/Files/vrnFileIO.h"
#include "VarnholtLib/Files/vrnIO.h"
#include "VarnholtLib/Files/vrnUACHelper.h"
#include "VarnholtLib/Files/vrnZipUtils.h"

namespace Varnholt::Test {
namespace {

class FileHelpers : public testing::Test {
protected:
    FileHelpers() {
        setenv("TMPDIR", FDrive.GetNativePath().c_str(), 1);
        setenv("PATH", FDrive.GetNativePath().c_str(), 1);
    }
    ~FileHelpers() override {
        unsetenv("TMPDIR");
        setenv("PATH", FPath.c_str(), 1);
    }

    /// A program in the PATH that leaves its arguments, one a line, in the file "called".
    void Install(const std::string& name) {
        const std::string path = FDrive.GetNativePath(name);
        WriteFileInOneGo(FromNativePath(path), "#!/bin/sh\nprintf '%s\\n' \"${0##*/}\" \"$@\" >'" +
                                                   FDrive.GetNativePath("draft") + "'\n/bin/mv '" +
                                                   FDrive.GetNativePath("draft") + "' '" +
                                                   FDrive.GetNativePath("called") + "'\n");
        std::filesystem::permissions(path, std::filesystem::perms(0700));
    }
    /// What the program left; it runs at the same time.
    std::string Called() {
        for (int i = 0; i < 500 && !FileExists(u"T:\\called"); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        const std::string lines = ReadWholeFile(u"T:\\called");
        DeleteFile(u"T:\\called");
        return lines;
    }

    const std::string FPath = getenv("PATH");
    const TTemporaryDrive FDrive{u'T'};
};

TEST_F(FileHelpers, ProgramsDocumentsAndAddressesAreStarted) {
    for (const char* name : {"xdg-open", "pkexec", "tool"}) Install(name);
    WriteFileInOneGo(u"T:\\-a b.txt", "");
    const std::string folder = FDrive.GetNativePath();
    EXPECT_TRUE(TFileUtils::Execute(u"https://example.org/?a=b c"));
    EXPECT_EQ(Called(), "xdg-open\nhttps://example.org/?a=b c\n");
    EXPECT_TRUE(TFileUtils::Execute(u"T:\\-a b.txt"));
    EXPECT_EQ(Called(), "xdg-open\n" + folder + "/-a b.txt\n");
    EXPECT_TRUE(TFileUtils::Execute(u"tool", u" a 'b  c'\"d\\\"e\" \\$HOME\\\\ '' $(x);*", u"unused"));
    EXPECT_EQ(Called(), "tool\na\nb  cd\"e\n$HOME\\\n\n$(x);*\n");
    EXPECT_TRUE(TFileUtils::ExecuteAdmin(u"T:\\tool", u"-x", u""));
    EXPECT_EQ(Called(), "pkexec\n" + folder + "/tool\n-x\n");
    const String parameters[] = {u"a", u"b c"};
    EXPECT_TRUE(TUACHelper::LaunchAsAdmin(u"tool", parameters));
    EXPECT_EQ(Called(), "pkexec\n" + folder + "/tool\na\nb c\n-uacrelaunch\n");
    WriteFileInOneGo(u"T:\\rain.csv", "touch pwned\n");  // executable, but no program
    std::filesystem::permissions(folder + "/rain.csv", std::filesystem::perms(0700));
    EXPECT_TRUE(TFileUtils::Execute(u"T:\\rain.csv"));
    EXPECT_EQ(Called(), "xdg-open\n" + folder + "/rain.csv\n");
    EXPECT_FALSE(TFileUtils::Execute(u"T:\\rain.csv", u"x", u""));
    for (const StringView wrong : {u"'open", u"\"open", u"open\\"})
        EXPECT_FALSE(TFileUtils::Execute(u"tool", wrong, u"")) << ToUtf8(wrong);
    EXPECT_FALSE(TFileUtils::Execute(u"no-such-tool") || TFileUtils::Execute(u"T:\\none\\x") ||
                 TFileUtils::Execute(u"print", u"tool") || TFileUtils::Execute(u"") ||
                 TFileUtils::Execute(u"T:\\-a b.txt", u"x", u""));
    EXPECT_THROW(static_cast<void>(TFileUtils::GetVersion(u"T:\\tool")), EInvalidVersionNumberString);
}

TEST_F(FileHelpers, MasksDeleteFiles) {
    const auto names = [&] {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(FDrive.GetNativePath("d")))
            found.push_back(entry.path().filename());
        return found;
    };
    ForceDirectories(u"T:\\d\\a.folder");
    for (const StringView name : {u"a.tmp", u"ab.tmp", u"\u00E4.tmp", u"A.TMP", u"plain"})
        WriteFileInOneGo(u"T:\\d\\" + String(name), "");
    EXPECT_FALSE(DelFiles(u"T:\\d\\none*") || DelFiles(u"T:\\none\\*"));
    EXPECT_TRUE(DelFiles(u"T:\\d\\?.tmp"));
    EXPECT_THAT(names(), testing::UnorderedElementsAre("ab.tmp", "A.TMP", "plain", "a.folder"));
    EXPECT_TRUE(DelFiles(u"T:\\d\\a*b*.t*p*"));
    std::filesystem::permissions(FDrive.GetNativePath("d/plain"), std::filesystem::perms(0444));
    EXPECT_TRUE(DelFiles(u"T:\\d\\*.*"));
    EXPECT_THAT(names(), testing::UnorderedElementsAre("plain", "a.folder"));
    std::filesystem::permissions(FDrive.GetNativePath("d/plain"), std::filesystem::perms(0644));
    EXPECT_TRUE(DelFiles(u"T:\\d\\*.*"));
    EXPECT_THAT(names(), testing::ElementsAre("a.folder"));
    EXPECT_TRUE(DelFiles(u"T:\\d\\*"));
}

TEST_F(FileHelpers, TemporaryNamesAreFree) {
    EXPECT_THAT(ToUtf8(GetTempFileName(u"x", u"a*b*.tmp")),
                testing::MatchesRegex("T:\\\\x\\\\a[0-9]+b[0-9]+\\.tmp"));
    EXPECT_TRUE(DirectoryExists(u"T:\\x"));
    EXPECT_EQ(GetTempFileName(u"x", u""), u"T:\\x");
    EXPECT_EQ(GetTempFileName(u"", u"one"), u"T:\\one");
    WriteFileInOneGo(u"T:\\one", "");
    const StringView taken = u"No free name for \"one\"";
    ExpectRaised<EInOutError>(
        {{[] { static_cast<void>(GetTempFileName(u"", u"one")); }, taken},
         {[] { static_cast<void>(GetTempFolder(u"", u"one")); }, taken},
         {[] { static_cast<void>(GetTempFolder(u"x", u"")); }, u"No free name for \"\""}});
    EXPECT_FALSE(DirectoryExists(GetTempFolder(u"x", u"f*")));
}

TEST_F(FileHelpers, PartsOfPaths) {
    WriteFileInOneGo(u"T:\\f", "");
    const std::tuple<StringView, StringView, StringView> cases[] = {
        {u"C:\\a\\b\\", u"b", u"b"}, {u"C:\\", u"C:", u"C:"}, {u"ab", u"ab", u""},  {u"a\\", u"", u""},
        {u"\\", u"", u""},           {u"T:\\f", u"T:", u"f"}, {u"a\\b", u"b", u"b"}};
    for (const auto& [path, fromDisk, fromText] : cases) {
        EXPECT_EQ(GetFinalDirectoryName(path), fromDisk) << ToUtf8(path);
        EXPECT_EQ(TPathUtils::GetFinalDirectoryName(path), fromText) << ToUtf8(path);
    }
    EXPECT_EQ(TPathUtils::GetFullFileNameWithoutExt(u"C:\\a.b\\c.d.e"), u"C:\\a.b\\c.d");
    EXPECT_EQ(TPathUtils::GetFullFileNameWithoutExt(u"C:\\a.b\\c"), u"C:\\a.b\\c");
    EXPECT_TRUE(TPathUtils::IsEqual(u"C:\\Data\\", u"c:\\data"));
    EXPECT_FALSE(TPathUtils::IsEqual(u"C:\\Data\\\\", u"C:\\Data"));
}

TEST_F(FileHelpers, ZipEntriesAreFoundWithEitherSeparator) {
    // Two empty entries, a/b.txt and c\d, stored by hand.
    const auto entry = [](std::string_view name, bool isCentral, char offset) {
        const std::string size{static_cast<char>(name.size()), 0};
        const std::string zeros(12, '\0');
        return (isCentral ? std::string("PK\1\2\12\0\12\0\0\0\0\0\0\0!\0", 16)
                          : std::string("PK\3\4\12\0\0\0\0\0\0\0!\0", 14)) +
               zeros + size + (isCentral ? zeros + offset + std::string(3, '\0') : std::string(2, '\0')) +
               std::string(name);
    };
    const std::string local = entry("a/b.txt", false, 0) + entry("c\\d", false, 0);
    const std::string central = entry("a/b.txt", true, 0) + entry("c\\d", true, 37);
    const std::string end = std::string("PK\5\6\0\0\0\0\2\0\2\0", 12) + static_cast<char>(central.size()) +
                            std::string(3, '\0') + static_cast<char>(local.size()) + std::string(5, '\0');
    WriteFileInOneGo(u"T:\\x.zip", local + central + end);
    const TZipFile zip(u"T:\\x.zip");
    EXPECT_EQ(zip.GetFileCount(), 2);
    for (const auto& [name, index] :
         {std::pair(u"a\\b.txt", 0), {u"a/b.txt", 0}, {u"c/d", 1}, {u"A/b.txt", -1}})
        EXPECT_EQ(ZipFileIndexOf(zip, name), index) << ToUtf8(name);
    EXPECT_EQ(Raised<EZipException>([] { const TZipFile none(u"T:\\none"); }), u"T:\\none: No such file");
}

}  // namespace
}  // namespace Varnholt::Test
