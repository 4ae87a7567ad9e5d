#include "Platform/Runtime/Files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "Tests/Foundation/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt {
namespace {

class FilesTest : public testing::Test {
protected:
    FilesTest() {
        SetDrive(u'D', FFolder.GetNativePath());
        WriteFileInOneGo(u"D:\\file", "abc");
        ForceDirectories(u"D:\\folder");
    }
    const Tests::TTemporaryFolder FFolder;
    const TDriveTableScope FScope;
};

TEST_F(FilesTest, FilesAndFoldersComeAndGo) {
    using namespace std::string_view_literals;
    const StringView files[] = {u"D:\\file", u"/dev/null"},
                     folders[] = {u"D:\\folder", u"D:\\folder\\", u"D:"};
    const StringView neither[] = {u"D:\\FILE",      u"D:\\file\\x",  u"Q:\\x",
                                  u"\\\\server\\x", u"D:\\file\0"sv, u""};
    for (StringView path : files) EXPECT_TRUE(FileExists(path) && !DirectoryExists(path)) << ToUtf8(path);
    for (StringView path : folders) EXPECT_TRUE(!FileExists(path) && DirectoryExists(path)) << ToUtf8(path);
    for (StringView path : neither) EXPECT_FALSE(FileExists(path) || DirectoryExists(path)) << ToUtf8(path);

    ForceDirectories(u"D:\\a\\b\\c\\");
    ForceDirectories(u"D:\\a\\b");
    WriteFileInOneGo(u"D:\\a\\b\\c\\x.csv", "1,2");
    EXPECT_EQ(FileSize(u"D:\\a\\b\\c\\x.csv"), 3);
    RenameFile(u"D:\\a\\b\\c\\x.csv", u"D:\\file");
    EXPECT_EQ(ReadWholeFile(u"D:\\file"), "1,2");
    EXPECT_FALSE(FileExists(u"D:\\a\\b\\c\\x.csv"));
    RemoveDirectory(u"D:\\a\\b\\c");
    EXPECT_FALSE(DirectoryExists(u"D:\\a\\b\\c"));
    DeleteFile(u"D:\\file");
    EXPECT_FALSE(FileExists(u"D:\\file"));
}

TEST_F(FilesTest, FailuresNameThePathAndTheReason) {
    // clang-format off
    const std::pair<std::function<void()>, StringView> cases[] = {
        {[] { DeleteFile(u"D:\\no"); }, u"Cannot delete file \"D:\\no\": No such file or directory"},
        {[] { DeleteFile(u"D:\\folder"); }, u"Cannot delete file \"D:\\folder\": Is a directory"},
        {[] { DeleteFile(u"Q:\\x"); }, u"Cannot delete file \"Q:\\x\": Drive Q: is not known"},
        {[] { (void)FileSize(u"D:\\no"); },
         u"Cannot read size of file \"D:\\no\": No such file or directory"},
        {[] { (void)FileSize(u"D:\\folder"); }, u"Cannot read size of file \"D:\\folder\": Is a directory"},
        {[] { RenameFile(u"D:\\no", u"D:\\x"); },
         u"Cannot rename \"D:\\no\" to \"D:\\x\": No such file or directory"},
        {[] { RenameFile(u"D:\\file", u"D:\\folder"); },
         u"Cannot rename \"D:\\file\" to \"D:\\folder\": Is a directory"},
        {[] { ForceDirectories(u"D:\\file"); }, u"Cannot create folder \"D:\\file\": Not a directory"},
        {[] { ForceDirectories(u"D:\\file\\x"); }, u"Cannot create folder \"D:\\file\\x\": Not a directory"},
        {[] { ForceDirectories(u"Q:\\x"); }, u"Cannot create folder \"Q:\\x\": Drive Q: is not known"},
        {[] { RemoveDirectory(u"D:\\"); }, u"Cannot delete folder \"D:\\\": Directory not empty"},
        {[] { RemoveDirectory(u"D:\\file"); }, u"Cannot delete folder \"D:\\file\": Not a directory"},
    };
    // clang-format on
    for (const auto& [action, message] : cases) EXPECT_EQ(Raised<EInOutError>(action), message);
    EXPECT_THROW(ForceDirectories(u""), EInOutError);
}

TEST_F(FilesTest, WritingInOneGoReplacesTheWholeContent) {
    for (const std::string& bytes :
         {std::string(300'000, 'x'), std::string("a\0\r\n\xFF", 5), std::string()}) {
        WriteFileInOneGo(u"D:\\file", bytes);
        EXPECT_TRUE(ReadWholeFile(u"D:\\file") == bytes) << bytes.size();
    }
    EXPECT_FALSE(ReadWholeFile(u"/proc/self/status").empty());  // tells a size of 0
}

TEST_F(FilesTest, WritingInOneGoKeepsPermissionsAndLinks) {
    namespace fs = std::filesystem;
    const fs::path file = FFolder.GetNativePath("file"), link = FFolder.GetNativePath("link");
    const fs::perms rights = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
    fs::permissions(file, rights);
    fs::create_symlink("file", link);
    WriteFileInOneGo(u"D:\\link", "through the link");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(ReadWholeFile(u"D:\\file"), "through the link");
    WriteFileInOneGo(u"D:\\file", "replaced");
    EXPECT_EQ(ReadWholeFile(u"D:\\link"), "replaced");
    EXPECT_EQ(fs::status(file).permissions(), rights);
}

TEST_F(FilesTest, FailedWritesLeaveNothingOpen) {
    const auto countOpen = [] {
        const std::filesystem::directory_iterator all("/proc/self/fd");
        return std::distance(begin(all), end(all));
    };
    const auto before = countOpen();
    EXPECT_THROW(WriteFileInOneGo(u"/dev/full", "x"), EWriteError);
    EXPECT_THROW(WriteFileInOneGo(u"D:\\folder", "x"), EFCreateError);
    EXPECT_THROW(WriteFileInOneGo(u"D:\\file\\x", "x"), EFCreateError);
    EXPECT_THROW((void)ReadWholeFile(u"D:\\folder"), EFOpenError);
    EXPECT_THROW((void)ReadWholeFile(u"D:\\no"), EFOpenError);
    EXPECT_EQ(countOpen(), before);
    EXPECT_EQ(ReadWholeFile(u"D:\\file"), "abc");
}

}  // namespace
}  // namespace Varnholt
