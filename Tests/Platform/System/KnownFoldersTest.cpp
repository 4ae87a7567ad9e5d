#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

#include "Platform/Runtime/Files.h"
#include "Platform/System/Platform.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {
namespace {

/// A user whose home folder is the root of the drive H:.
class KnownFoldersTest : public ::testing::Test {
protected:
    KnownFoldersTest() {
        for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) unsetenv(name);
        setenv("HOME", Home.GetNativePath().c_str(), 1);
        setenv("VARNHOLT_COMMON_DATA", Home.GetNativePath("common").c_str(), 1);
    }

    static String Find(TKnownFolder folder) { return Platform().KnownFolders->Find(folder); }

    const TTemporaryDrive Home{u'H'};
};

TEST_F(KnownFoldersTest, AreBelowHomeAndCreatedForTheUser) {
    // clang-format off
    const std::tuple<TKnownFolder, StringView, const char*, mode_t> cases[] = {
        {kfAppData, u"H:\\.config", ".config", 0700}, {kfLocalAppData, u"H:\\.local\\share", ".local", 0700},
        {kfPersonal, u"H:\\Documents", "Documents", 0700}, {kfMyPictures, u"H:\\Pictures", "Pictures", 0700},
        {kfCommonDocuments, u"H:\\common\\documents", "common", 0755}, {kfCommonAppData, u"H:\\common", "common", 0755},
        {kfWindows, u"", "", 0700}};
    // clang-format on
    umask(0);
    for (const auto& [folder, path, name, mode] : cases) {
        EXPECT_EQ(Find(folder), path);
        struct stat facts {};
        EXPECT_EQ(stat(Home.GetNativePath(name).c_str(), &facts), 0) << name;
        EXPECT_EQ(facts.st_mode & 0777U, mode) << name;
    }
}

TEST_F(KnownFoldersTest, FollowTheEnvironmentIfItIsAbsolute) {
    setenv("XDG_DATA_HOME", "relative", 1);
    EXPECT_EQ(Find(kfLocalAppData), u"H:\\.local\\share");
    WriteFileInOneGo(u"H:\\file", "");
    const std::pair<std::string, StringView> cases[] = {
        {"a/b//", u"H:\\a\\b"}, {"file", u""}, {"file/below", u""}, {"\xFF", u""}};
    for (const auto& [name, path] : cases) {
        setenv("XDG_CONFIG_HOME", Home.GetNativePath(name).c_str(), 1);
        EXPECT_EQ(Find(kfAppData), path) << name;
    }
    setenv("HOME", Home.GetNativePath("none").c_str(), 1);
    EXPECT_TRUE(Find(kfPersonal).empty() && !DirectoryExists(u"H:\\none"));
}

TEST_F(KnownFoldersTest, DocumentsFollowUserDirectories) {
    const std::string root = Home.GetNativePath();
    const std::string key = "XDG_DOCUMENTS_DIR", nul(1, '\0');
    // clang-format off
    const std::pair<std::string, StringView> cases[] = {
        {key + "=\"$HOME/Meine Texte\"\n", u"Meine Texte"}, {" \t" + key + " = \"" + root + "/abs/\" # note", u"abs"},
        {key + "=\"$HOME/a\\\"b\\$c\"", u"a\"b$c"}, {key + "=\"$HOME/x\"\n" + key + "=\"$HOME/y\"\nXDG_X_DIR=\"$HOME/z\"", u"y"},
        {key + "=\"$HOMER/x\"", u"Documents"}, {key + "=\"relative\"", u"Documents"},
        {key + "=\"$HOME/open\\", u"Documents"}, {key + "=\"$HOME/" + nul + "x\"", u"Documents"},
        {std::string(1 << 20, '\n') + key + "=\"$HOME/late\"", u"Documents"}};
    // clang-format on
    setenv("XDG_CONFIG_HOME", root.c_str(), 1);
    for (const auto& [text, name] : cases) {
        WriteFileInOneGo(u"H:\\user-dirs.dirs", text);
        EXPECT_EQ(Find(kfPersonal), u"H:\\" + String(name)) << text.substr(0, 80);
    }
    const passwd* const user = getpwuid(getuid());
    if (user == nullptr || access(user->pw_dir, F_OK) != 0) GTEST_SKIP() << "the user has no home folder";
    WriteFileInOneGo(u"H:\\user-dirs.dirs", key + "=\"$HOME\"");
    setenv("HOME", "relative", 1);
    EXPECT_EQ(Find(kfPersonal), FromNativePath(user->pw_dir));
}

}  // namespace
}  // namespace Varnholt::Test
