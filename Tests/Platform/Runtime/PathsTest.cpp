#include "Platform/Runtime/Paths.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "Tests/Support/Raised.h"

namespace Varnholt::Test {

using namespace std::string_view_literals;

TEST(PathsTest, TextIsCut) {
    // clang-format off
    const StringView cases[][4] = {  // path, folder, name, without a separator at its end
        {u"C:\\a\\x.csv", u"C:\\a\\", u"x.csv", u"C:\\a\\x.csv"}, {u"C:x.t", u"C:", u"x.t", u"C:x.t"},
        {u"C:\\", u"C:\\", u"", u"C:"}, {u"a/b\\c", u"a/b\\", u"c", u"a/b\\c"}, {u"a/", u"a/", u"", u"a"},
        {u"", u"", u"", u""}, {u"/a/b\\c", u"/a/", u"b\\c", u"/a/b\\c"}, {u"/a\\", u"/", u"a\\", u"/a\\"},
        {u"ab:c", u"", u"ab:c", u"ab:c"}};
    // clang-format on
    for (const auto& [path, folder, name, bare] : cases) {
        EXPECT_EQ(ExtractFilePath(path), folder) << ToUtf8(path);
        EXPECT_EQ(ExtractFileName(path), name) << ToUtf8(path);
        EXPECT_EQ(ExcludeTrailingPathDelimiter(path), bare) << ToUtf8(path);
    }
}

TEST(PathsTest, LibraryPathsBecomeNative) {
    const TDriveTableScope scope;
    SetDrive(u'd', "/mnt/data/");
    // clang-format off
    const std::pair<StringView, std::string_view> cases[] = {
        {u"C:\\home\\ann\\x.csv", "/home/ann/x.csv"}, {u"c:/home\\ann", "/home/ann"}, {u"C:\\", "/"},
        {u"C:", "/"}, {u"C:x\\y", "/x/y"}, {u"\\x", "/x"}, {u"D:\\\u00FC.csv", "/mnt/data/\xC3\xBC.csv"},
        {u"D:", "/mnt/data"}, {u"D:\\", "/mnt/data/"}, {u"D:x", "/mnt/data/x"}, {u"a\\b/..\\c", "a/b/../c"},
        {u"/tmp/a\\b", "/tmp/a\\b"}, {u"", ""},
    };
    const std::pair<StringView, StringView> rejected[] = {
        {u"Q:\\x.csv", u"Cannot use path \"Q:\\x.csv\": Drive Q: is not known"},
        {u"\\\\server\\x", u"Cannot use path \"\\\\server\\x\": Network paths are not supported"},
        {u"/a\0"sv, u"Cannot use path \"/a\0\": It holds a zero character"sv},
    };
    // clang-format on
    for (const auto& [path, native] : cases) EXPECT_EQ(ToNativePath(path), native) << ToUtf8(path);
    for (const auto& [path, message] : rejected)
        EXPECT_EQ(Raised<EInOutError>([&path = path] { static_cast<void>(ToNativePath(path)); }), message);
}

TEST(PathsTest, NativePathsBecomeLibraryPathsAndLeadBack) {
    const TDriveTableScope scope;
    SetDrive(u'D', "/mnt/data");
    SetDrive(u'E', "/mnt/data/deep");
    // clang-format off
    const std::pair<std::string_view, StringView> cases[] = {
        {"/home/ann/x.csv", u"C:\\home\\ann\\x.csv"}, {"/", u"C:\\"}, {"/mnt/data", u"D:\\"},
        {"/mnt/data/x", u"D:\\x"}, {"/mnt/database", u"C:\\mnt\\database"}, {"/mnt/data/deep/x", u"E:\\x"},
        {"a/b", u"a\\b"}, {"/tmp/a\\b", u"/tmp/a\\b"},
    };
    // clang-format on
    for (const auto& [native, path] : cases) {
        EXPECT_EQ(FromNativePath(native), path);
        EXPECT_EQ(std::filesystem::path(ToNativePath(path)) / "", std::filesystem::path(native) / "");
    }
    RemoveDrive(u'C');
    EXPECT_EQ(FromNativePath("/home/x"), u"/home/x");
    const std::string folder = std::filesystem::current_path().native();
    for (const char* odd : {"a\\b", "D:x"}) EXPECT_EQ(ToNativePath(FromNativePath(odd)), folder + "/" + odd);
}

TEST(PathsTest, DrivesComeBackAtTheEndOfTheScope) {
    {
        const TDriveTableScope scope;
        SetDrive(u'C', "/tmp");
        SetDrive(u'D', "/");
        for (StringView path : {u"C:\\x", u"\\x"}) EXPECT_EQ(ToNativePath(path), "/tmp/x");
    }
    EXPECT_EQ(ToNativePath(u"C:\\x"), "/x");
    EXPECT_THROW(static_cast<void>(ToNativePath(u"D:\\x")), EInOutError);
    EXPECT_THROW(SetDrive(u'D', "relative"), EArgumentException);
    for (Char letter : {u'1', u'\u00C4'}) EXPECT_THROW(SetDrive(letter, "/tmp"), EArgumentException);
}

}  // namespace Varnholt::Test
