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
    mode_t Mode(const char* name) {
        struct stat facts {};
        return stat(Home.GetNativePath(name).c_str(), &facts) == 0 ? facts.st_mode & 0777U : 0;
    }
    void WriteUserDirectories(std::string_view text) {
        ForceDirectories(u"H:\\.config");
        WriteFileInOneGo(u"H:\\.config\\user-dirs.dirs", text);
    }

    const TTemporaryDrive Home{u'H'};
};

TEST_F(KnownFoldersTest, AreBelowHomeAndCreatedForTheUser) {
    const std::tuple<TKnownFolder, StringView, const char*, mode_t> cases[] = {
        {kfAppData, u"H:\\.config", ".config", 0700},
        {kfLocalAppData, u"H:\\.local\\share", ".local", 0700},
        {kfPersonal, u"H:\\Documents", "Documents", 0700},
        {kfMyPictures, u"H:\\Pictures", "Pictures", 0700},
        {kfCommonDocuments, u"H:\\common\\documents", "common", 0755},
        {kfCommonAppData, u"H:\\common", "common", 0755},
        {kfSystem, u"C:\\usr\\bin", "none", 0},
        {kfWindows, u"", "none", 0},
    };
    umask(0);
    for (const auto& [folder, path, name, mode] : cases) {
        EXPECT_EQ(Find(folder), path);
        EXPECT_EQ(Mode(name), mode) << name;
    }
}

TEST_F(KnownFoldersTest, FollowTheEnvironmentIfItIsAbsolute) {
    setenv("XDG_CONFIG_HOME", Home.GetNativePath("a/b//").c_str(), 1);
    setenv("XDG_DATA_HOME", "relative", 1);
    EXPECT_EQ(Find(kfAppData), u"H:\\a\\b");
    EXPECT_EQ(Find(kfLocalAppData), u"H:\\.local\\share");
    WriteFileInOneGo(u"H:\\file", "");
    for (const std::string bad : {"file", "file/below", "\xFF"}) {
        setenv("XDG_CONFIG_HOME", Home.GetNativePath(bad).c_str(), 1);
        EXPECT_EQ(Find(kfAppData), u"") << bad;
    }
    setenv("HOME", Home.GetNativePath("none").c_str(), 1);
    EXPECT_EQ(Find(kfPersonal), u"");
    EXPECT_FALSE(DirectoryExists(u"H:\\none"));
}

TEST_F(KnownFoldersTest, WithoutHomeComeFromThePasswordDatabase) {
    const passwd* const user = getpwuid(getuid());
    if (user == nullptr || access(user->pw_dir, W_OK) != 0) GTEST_SKIP() << "the user has no home folder";
    WriteUserDirectories("XDG_DOCUMENTS_DIR=\"$HOME\"");
    setenv("XDG_CONFIG_HOME", Home.GetNativePath(".config").c_str(), 1);
    for (const char* home : {"relative", "", "unset"}) {
        setenv("HOME", home, 1);
        if (home == std::string("unset")) unsetenv("HOME");
        EXPECT_EQ(Find(kfPersonal), FromNativePath(user->pw_dir)) << home;
    }
}

TEST_F(KnownFoldersTest, DocumentsFollowUserDirectories) {
    const std::string root = Home.GetNativePath();
    const std::pair<std::string, StringView> cases[] = {
        {"XDG_DOCUMENTS_DIR=\"$HOME/Meine Texte\"\n", u"Meine Texte"},
        {" \tXDG_DOCUMENTS_DIR = \"" + root + "/abs/\" # note", u"abs"},
        {"XDG_DOCUMENTS_DIR=\"$HOME/a\\\"b\\$c\"", u"a\"b$c"},
        {"XDG_DOCUMENTS_DIR=\"$HOME/x\"\nXDG_DOCUMENTS_DIR=\"$HOME/y\"\nXDG_DESKTOP_DIR=\"$HOME/z\"", u"y"},
        {"XDG_DOCUMENTS_DIR=\"$HOMER/x\"", u"Documents"},
        {"XDG_DOCUMENTS_DIR=\"relative\"", u"Documents"},
        {"XDG_DOCUMENTS_DIR=\"$HOME/open", u"Documents"},
        {"XDG_DOCUMENTS_DIR=\"$HOME/open\\", u"Documents"},
        {"XDG_DOCUMENTS_DIR=$HOME/bare", u"Documents"},
        {"XDG_DOCUMENTS_DIR=\"$HOME/\0x\"" + std::string(1, '\0'), u"Documents"},
        {std::string(1 << 20, '\n') + "XDG_DOCUMENTS_DIR=\"$HOME/late\"", u"Documents"},
    };
    for (const auto& [text, name] : cases) {
        WriteUserDirectories(text);
        EXPECT_EQ(Find(kfPersonal), u"H:\\" + String(name)) << text.substr(0, 80);
    }
}

}  // namespace
}  // namespace Varnholt::Test
