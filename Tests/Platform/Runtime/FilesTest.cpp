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

TEST_F(FilesTest, FilesAndFoldersComeAndGo) {
    using namespace std::string_view_literals;
    // clang-format off
    const std::tuple<bool, bool, std::vector<StringView>> cases[] = {
        {true, false, {u"D:\\file", u"/dev/null"}}, {false, true, {u"D:\\folder", u"D:\\folder\\", u"D:"}},
        {false, false, {u"D:\\FILE", u"D:\\file\\x", u"Q:\\x", u"\\\\server\\x", u"D:\\file\0"sv, u""}}};
    // clang-format on
    for (const auto& [isFile, isFolder, paths] : cases)
        for (StringView path : paths)
            EXPECT_TRUE(FileExists(path) == isFile && DirectoryExists(path) == isFolder) << ToUtf8(path);
    ForceDirectories(u"D:\\a\\b\\c\\");
    ForceDirectories(u"D:\\a\\b");
    WriteFileInOneGo(u"D:\\a\\b\\c\\x.csv", "1,2,");
    EXPECT_EQ(FileSize(u"D:\\a\\b\\c\\x.csv"), 4);
    RenameFile(u"D:\\a\\b\\c\\x.csv", u"D:\\file");
    EXPECT_EQ(ReadWholeFile(u"D:\\file"), "1,2,");
    RemoveDirectory(u"D:\\a\\b\\c");  // possible, as the file has gone
    DeleteFile(u"D:\\file");
    EXPECT_FALSE(DirectoryExists(u"D:\\a\\b\\c") || FileExists(u"D:\\file"));
}

TEST_F(FilesTest, FailuresNameThePathAndTheReason) {
    const StringView none = u"No such file or directory", notOne = u"Not a directory",
                     isOne = u"Is a directory";
    const auto sizeOf = [](StringView path) { (void)FileSize(path); };
    // clang-format off
    const std::tuple<void (*)(StringView), StringView, StringView, StringView> cases[] = {
        {DeleteFile, u"delete file", u"D:\\no", none}, {DeleteFile, u"delete file", u"D:\\folder", isOne},
        {DeleteFile, u"delete file", u"Q:\\x", u"Drive Q: is not known"},
        {sizeOf, u"read size of file", u"D:\\no", none}, {sizeOf, u"read size of file", u"D:\\folder", isOne},
        {ForceDirectories, u"create folder", u"D:\\file", notOne},
        {ForceDirectories, u"create folder", u"", u"Invalid argument"},
        {ForceDirectories, u"create folder", u"D:\\file\\x", notOne},
        {ForceDirectories, u"create folder", u"Q:\\x", u"Drive Q: is not known"},
        {RemoveDirectory, u"delete folder", u"D:\\", u"Directory not empty"},
        {RemoveDirectory, u"delete folder", u"D:\\file", notOne}};
    // clang-format on
    for (const auto& [act, what, path, reason] : cases)
        EXPECT_EQ(Raised<EInOutError>([&, act = act, path = path] { act(path); }),
                  u"Cannot " + String(what) + u" \"" + String(path) + u"\": " + String(reason));
    ExpectRaised<EInOutError>({{[] { RenameFile(u"D:\\no", u"D:\\x"); },
                                u"Cannot rename \"D:\\no\" to \"D:\\x\": No such file or directory"},
                               {[] { RenameFile(u"D:\\file", u"D:\\folder"); },
                                u"Cannot rename \"D:\\file\" to \"D:\\folder\": Is a directory"}});
}

TEST_F(FilesTest, ReadsAndWritesWholeFiles) {
    for (const auto& bytes : {std::string(300'000, 'x'), std::string("a\0\r\n\xFF", 5), std::string()}) {
        WriteFileInOneGo(u"D:\\file", bytes);
        EXPECT_TRUE(ReadWholeFile(u"D:\\file") == bytes) << bytes.size();
    }
    EXPECT_FALSE(ReadWholeFile(u"/proc/self/status").empty());  // has a size of 0
}

TEST_F(FilesTest, SameFileIsFoundThroughLinks) {
    WriteFileInOneGo(u"D:\\other", "abc");
    std::filesystem::create_symlink("file", FDrive.GetNativePath("link"));
    std::filesystem::create_hard_link(FDrive.GetNativePath("file"), FDrive.GetNativePath("twin"));
    const std::pair<StringView, bool> cases[] = {
        {u"D:\\file", true},     {u"D:\\folder\\..\\file", true}, {u"D:\\link", true}, {u"D:\\twin", true},
        {u"D:\\file\\x", false}, {u"D:\\other", false},           {u"Q:\\x", false},   {u"", false}};
    for (const auto& [path, isSame] : cases) EXPECT_EQ(IsSameFile(u"D:\\file", path), isSame) << ToUtf8(path);
    EXPECT_FALSE(IsSameFile(u"D:\\no", u"D:\\no"));
    EXPECT_TRUE(IsSameFile(u"D:", u"D:\\folder\\.."));
}

TEST_F(FilesTest, FailedWritesLeaveNothingOpen) {
    const auto countOpen = [] {
        const std::filesystem::directory_iterator all("/proc/self/fd");
        return std::distance(begin(all), end(all));
    };
    const auto before = countOpen();
    EXPECT_THROW(WriteFileInOneGo(u"/dev/full", "x"), EWriteError);
    for (StringView path : {u"D:\\folder", u"D:\\no\\x"}) {
        EXPECT_THROW(WriteFileInOneGo(path, "x"), EFCreateError);
        EXPECT_THROW((void)ReadWholeFile(path), EFOpenError);
    }
    EXPECT_EQ(countOpen(), before);
}

}  // namespace Varnholt::Test
