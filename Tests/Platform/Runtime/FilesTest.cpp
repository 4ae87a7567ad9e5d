#include "Platform/Runtime/Files.h"

#include <filesystem>

#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {

class FilesTest : public testing::Test {
protected:
    FilesTest() {
        WriteFileInOneGo(u"D:\\file", "abc");
        ForceDirectories(u"D:\\folder");
    }
    const TTemporaryDrive FDrive{u'D'};
};

TEST_F(FilesTest, FilesAndFoldersAreCreatedMovedAndDeleted) {
    ForceDirectories(u"D:\\a\\b\\c\\");
    ForceDirectories(u"D:\\a\\b");
    for (const auto& bytes : {std::string(300'000, 'x'), std::string("a\0\r\n\xFF", 5), std::string()}) {
        WriteFileInOneGo(u"D:\\a\\b\\c\\x.csv", bytes);
        EXPECT_EQ(FileSize(u"D:\\a\\b\\c\\x.csv"), std::ssize(bytes));
        RenameFile(u"D:\\a\\b\\c\\x.csv", u"D:\\file");
        EXPECT_TRUE(ReadWholeFile(u"D:\\file") == bytes) << bytes.size();
    }
    EXPECT_FALSE(ReadWholeFile(u"/proc/self/status").empty());  // has a size of 0
    RemoveDirectory(u"D:\\a\\b\\c");                            // possible, as the file was moved
    DeleteFile(u"D:\\file");
    EXPECT_FALSE(DirectoryExists(u"D:\\a\\b\\c") || FileExists(u"D:\\file"));
}

TEST_F(FilesTest, QuestionsNeverFail) {
    using namespace std::string_view_literals;
    std::filesystem::create_symlink("file", FDrive.GetNativePath("link"));
    std::filesystem::create_hard_link(FDrive.GetNativePath("file"), FDrive.GetNativePath("twin"));
    WriteFileInOneGo(u"D:\\other", "abc");
    // clang-format off
    const std::tuple<StringView, bool, bool, bool> cases[] = {  // path, file, folder, same as D:\file
        {u"D:\\file", true, false, true}, {u"D:\\folder\\..\\file", true, false, true},
        {u"D:\\link", true, false, true}, {u"D:\\twin", true, false, true},
        {u"D:\\other", true, false, false},
        {u"/dev/null", true, false, false}, {u"D:\\folder", false, true, false},
        {u"D:\\folder\\", false, true, false}, {u"D:", false, true, false},
        {u"D:\\FILE", false, false, false},
        {u"D:\\file\\x", false, false, false}, {u"Q:\\x", false, false, false}, {u"", false, false, false},
        {u"\\\\server\\x", false, false, false}, {u"D:\\file\0"sv, false, false, false}};
    // clang-format on
    for (const auto& [path, isFile, isFolder, isSame] : cases) {
        EXPECT_TRUE(FileExists(path) == isFile && DirectoryExists(path) == isFolder) << ToUtf8(path);
        EXPECT_EQ(IsSameFile(path, u"D:\\file"), isSame) << ToUtf8(path);
    }
    EXPECT_FALSE(IsSameFile(u"D:\\no", u"D:\\no"));
}

TEST_F(FilesTest, FailuresNameThePathAndTheReason) {
    const auto sizeOf = [](StringView path) { static_cast<void>(FileSize(path)); };
    // clang-format off
    ExpectRaised<EInOutError>({
        {[] { DeleteFile(u"D:\\no"); }, u"Cannot delete file \"D:\\no\": No such file or directory"},
        {[] { DeleteFile(u"D:\\folder"); }, u"Cannot delete file \"D:\\folder\": Is a directory"},
        {[] { DeleteFile(u"Q:\\x"); }, u"Cannot delete file \"Q:\\x\": Drive Q: is not known"},
        {[&] { sizeOf(u"D:\\no"); }, u"Cannot read size of file \"D:\\no\": No such file or directory"},
        {[&] { sizeOf(u"D:\\folder"); }, u"Cannot read size of file \"D:\\folder\": Is a directory"},
        {[] { ForceDirectories(u"D:\\file"); }, u"Cannot create folder \"D:\\file\": Not a directory"},
        {[] { ForceDirectories(u""); }, u"Cannot create folder \"\": Invalid argument"},
        {[] { ForceDirectories(u"D:\\file\\x"); }, u"Cannot create folder \"D:\\file\\x\": Not a directory"},
        {[] { RemoveDirectory(u"D:\\"); }, u"Cannot delete folder \"D:\\\": Directory not empty"},
        {[] { RemoveDirectory(u"D:\\file"); }, u"Cannot delete folder \"D:\\file\": Not a directory"},
        {[] { RenameFile(u"D:\\no", u"D:\\x"); },
         u"Cannot rename \"D:\\no\" to \"D:\\x\": No such file or directory"},
        {[] { RenameFile(u"D:\\file", u"D:\\folder"); },
         u"Cannot rename \"D:\\file\" to \"D:\\folder\": Is a directory"}});
    // clang-format on
}

}  // namespace Varnholt::Test
