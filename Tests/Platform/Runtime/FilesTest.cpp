#include "Platform/Runtime/Files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt {
namespace {

using testing::StrEq;
using testing::ThrowsMessage;
using Tests::TTemporaryFolder;

class FilesTest : public testing::Test {
protected:
    FilesTest() {
        SetDrive(u'D', FFolder.GetNativePath());
        WriteFileInOneGo(u"D:\\file", "abc");
        ForceDirectories(u"D:\\folder");
    }

    const TTemporaryFolder FFolder;

private:
    const TDriveTableScope FScope;
};

std::size_t OpenDescriptors() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

TEST_F(FilesTest, QuestionsTellFilesFromFolders) {
    struct TCase {
        StringView path;
        bool isFile, isFolder;
    };
    using namespace std::string_view_literals;
    const TCase cases[] = {
        {u"D:\\file", true, false},
        {u"D:\\folder", false, true},
        {u"D:\\folder\\", false, true},
        {u"D:", false, true},
        {u"D:\\FILE", false, false},
        {u"D:\\file\\x", false, false},
        {u"/dev/null", true, false},
        {u"Q:\\x", false, false},
        {u"\\\\server\\x", false, false},
        {u"D:\\file\0"sv, false, false},
        {u"", false, false},
    };
    for (const TCase& c : cases) {
        EXPECT_EQ(FileExists(c.path), c.isFile) << ToUtf8(c.path);
        EXPECT_EQ(DirectoryExists(c.path), c.isFolder) << ToUtf8(c.path);
    }
}

TEST_F(FilesTest, FilesAndFoldersComeAndGo) {
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
    const std::pair<std::function<void()>, StringView> cases[] = {
        {[] { DeleteFile(u"D:\\no"); }, u"Cannot delete file \"D:\\no\": No such file or directory"},
        {[] { DeleteFile(u"D:\\folder"); }, u"Cannot delete file \"D:\\folder\": Is a directory"},
        {[] { DeleteFile(u"Q:\\x"); }, u"Cannot delete file \"Q:\\x\": Drive Q: is not known"},
        {[] { static_cast<void>(FileSize(u"D:\\no")); },
         u"Cannot read size of file \"D:\\no\": No such file or directory"},
        {[] { static_cast<void>(FileSize(u"D:\\folder")); },
         u"Cannot read size of file \"D:\\folder\": Is a directory"},
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
    for (const auto& [action, message] : cases)
        EXPECT_THAT(action, (ThrowsMessage<EInOutError>(StrEq(ToUtf8(message)))));
    EXPECT_THROW(ForceDirectories(u""), EInOutError);
}

TEST_F(FilesTest, WritingInOneGoReplacesTheWholeContent) {
    for (const std::string& bytes :
         {std::string("longer than before"), std::string("a\0\r\n\xFF", 5), std::string()}) {
        WriteFileInOneGo(u"D:\\file", bytes);
        EXPECT_EQ(ReadWholeFile(u"D:\\file"), bytes);
    }
    const std::string large(300'000, 'x');
    WriteFileInOneGo(u"D:\\file", large);
    EXPECT_TRUE(ReadWholeFile(u"D:\\file") == large);
    EXPECT_FALSE(ReadWholeFile(u"/proc/self/status").empty());  // tells a size of 0
}

TEST_F(FilesTest, FailedWritesLeaveNothingOpen) {
    const std::size_t before = OpenDescriptors();
    EXPECT_THROW(WriteFileInOneGo(u"/dev/full", "x"), EWriteError);
    EXPECT_THROW(WriteFileInOneGo(u"D:\\folder", "x"), EFCreateError);
    EXPECT_THROW(WriteFileInOneGo(u"D:\\file\\x", "x"), EFCreateError);
    EXPECT_THROW(static_cast<void>(ReadWholeFile(u"D:\\folder")), EFOpenError);
    EXPECT_THROW(static_cast<void>(ReadWholeFile(u"D:\\no")), EFOpenError);
    EXPECT_EQ(OpenDescriptors(), before);
    EXPECT_EQ(ReadWholeFile(u"D:\\file"), "abc");
}

}  // namespace
}  // namespace Varnholt
