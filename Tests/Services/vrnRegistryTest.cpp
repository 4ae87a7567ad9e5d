#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "Platform/Runtime/Files.h"
#include "Platform/System/Platform.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"
#include "VarnholtLib/Services/vrnFileTypeAssociation.h"
#include "VarnholtLib/Services/vrnRegistryUtils.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;

struct TOneFolder : IKnownFolders {
    String Find(TKnownFolder) override { return u"T:\\"; }
};

class Registry : public testing::Test {
protected:
    Registry() { Platform().KnownFolders = std::make_shared<TOneFolder>(); }

    const TTemporaryDrive FDrive{u'T'};
    const TPlatformScope FScope;
    const String FPath = u"T:\\Varnholt\\Registry.sqlite";
};

TEST_F(Registry, KeysKeepTheirSpellingAndIgnoreCase) {
    TRegistry registry;
    EXPECT_FALSE(registry.OpenKey(u"a", false) || registry.OpenKeyReadOnly(u"a"));
    EXPECT_TRUE(registry.OpenKeyReadOnly(u"") && registry.GetKeyNames().empty() &&
                registry.ReadString(u"").empty());
    EXPECT_FALSE(FileExists(FPath));
    EXPECT_TRUE(registry.OpenKey(u"\\\u00C4b\\C\\", true));
    registry.WriteString(u"Name", u"1");
    registry.WriteString(u"NAME", String(u"two\0\U0001F327", 6));
    registry.WriteString(u"", u"default");
    EXPECT_EQ(registry.ReadString(u"name") + registry.ReadString(u"none"), String(u"two\0\U0001F327", 6));
    EXPECT_FALSE(registry.OpenKey(u"a\\\\b", true));
    EXPECT_EQ(registry.GetCurrentPath(), u"\u00C4b\\C");
    struct stat facts {};
    EXPECT_EQ(stat(FDrive.GetNativePath("Varnholt/Registry.sqlite").c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777U, 0600U);

    TRegistry other;
    EXPECT_TRUE(other.OpenKeyReadOnly(u"\u00E4B\\c"));
    EXPECT_EQ(other.ReadString(u""), u"default");
    ExpectRaised<ERegistryException>({
        {[&] { other.WriteString(u"", u"x"); }, u"The registry key is open only for reading"},
        {[&] { static_cast<void>(TRegistry().GetKeyNames()); }, u"No registry key is open"},
    });
    EXPECT_TRUE(registry.OpenKey(u"", false));
    EXPECT_THAT(registry.GetKeyNames(), ElementsAre(u"\u00C4b"));
    EXPECT_FALSE(registry.DeleteKey(u"\u00E4b") || registry.DeleteKey(u"none") || registry.DeleteKey(u""));
    EXPECT_TRUE(registry.DeleteKey(u"\u00E4b\\c"));
    ExpectRaised<ERegistryException>(
        {{[&] { static_cast<void>(other.ReadString(u"")); }, u"The registry key was deleted"}});
    registry.SetRootKey(HKEY_CLASSES_ROOT);
    EXPECT_TRUE(registry.OpenKeyReadOnly(u"") && registry.GetKeyNames().empty());
}

TEST_F(Registry, FoldersMayBeLinks) {
    ForceDirectories(u"T:\\real");
    ASSERT_EQ(symlink(FDrive.GetNativePath("real").c_str(), FDrive.GetNativePath("Varnholt").c_str()), 0);
    EXPECT_TRUE(TRegistry().OpenKey(u"a", true) && FileExists(u"T:\\real\\Registry.sqlite"));
    String deep(u"a");
    for (int i = 1; i < 512; ++i) deep += u"\\a";
    EXPECT_TRUE(TRegistry().OpenKey(deep, true) && !TRegistry().OpenKey(deep + u"\\a", true));
    TRegistryUtils::DeleteKey(HKEY_CURRENT_USER, u"", u"a", true);
    EXPECT_FALSE(TRegistry().OpenKey(u"a", false));
}

TEST_F(Registry, DamagedAndForeignStoresStay) {
    ForceDirectories(u"T:\\Varnholt");
    const std::string damaged(5000, 'x');
    WriteFileInOneGo(FPath, damaged);
    const auto open = [] { TRegistry().OpenKey(u"a", true); };
    EXPECT_EQ(Raised<ERegistryException>(open), FPath + u": file is not a database");
    EXPECT_EQ(ReadWholeFile(FPath), damaged);
}

TEST_F(Registry, AKilledWriterLeavesAReadableStore) {
    for (int kills = 0; kills < 40; ++kills) {
        const pid_t child = fork();
        if (child == 0) {
            TRegistry registry;
            for (int i = 0; registry.OpenKey(u"a\\b" + String(1, static_cast<Char>(u'a' + i % 20)), true);
                 ++i)
                registry.WriteString(u"x", String(3000, u'y'));
        }
        ASSERT_GT(child, 0);
        usleep(static_cast<useconds_t>(500 * kills));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        TRegistry registry;
        ASSERT_TRUE(registry.OpenKey(u"a", true)) << kills;
        for (const String& name : registry.GetKeyNames()) {
            TRegistry key;
            ASSERT_TRUE(key.OpenKeyReadOnly(u"a\\" + name));
            const String value = key.ReadString(u"x");
            ASSERT_TRUE(value.empty() || value == String(3000, u'y')) << kills;
        }
    }
}

TEST_F(Registry, AssociationsAreSavedLoadedAndDeleted) {
    TFileTypeAssociation type;
    type.SetExt(u".vrn");
    type.SetFileTypeName(u"Station.Archive");
    type.SetName(u"Station archive");
    type.SetDefaultIcon(u"a.png,1");
    type.SetDefaultAction(u"open");
    type.SetAction(u"open", u"wrong");
    type.SetAction(u"open", u"station \"%1\"");
    type.SetAction(u"print", u"lpr");
    type.Save();
    TFileTypeAssociation loaded;
    loaded.SetAction(u"former", u"");
    loaded.Load(u".VRN");
    EXPECT_EQ(
        loaded.GetFileTypeName() + loaded.GetName() + loaded.GetDefaultIcon() + loaded.GetDefaultAction(),
        u"Station.ArchiveStation archivea.png,1open");
    EXPECT_EQ(loaded.GetActions(), type.GetActions());
    EXPECT_EQ(
        TRegistryUtils::ReadChildKeyString(*TRegistryUtils::OpenKey(HKEY_CLASSES_ROOT, u"", okmReadOnly),
                                           u"Station.Archive\\shell\\print\\Command", u""),
        u"lpr");
    TFileTypeAssociation::Delete(u".vrn");
    EXPECT_TRUE(TRegistryUtils::GetChildKeyNames(HKEY_CLASSES_ROOT, u"").empty());
    const StringView failed = u"Failed to open registry key";
    ExpectRaised<Exception>({{[&] { loaded.Load(u".vrn"); }, failed}, {[&] { type.Delete(); }, failed}});
    EXPECT_EQ(loaded.GetExt(), u".vrn");
    TFileTypeAssociation().Delete();
}

}  // namespace
}  // namespace Varnholt::Test
