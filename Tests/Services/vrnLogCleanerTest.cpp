#include "VarnholtLib/Services/vrnLogCleaner.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "Platform/Runtime/Files.h"
#include "Platform/System/LocalTime.h"
#include "Tests/Services/LogTestSupport.h"

namespace Varnholt::Test {
namespace {

using namespace std::chrono_literals;

/// A folder of logs at noon, local time.
class vrnLogCleaner : public ::testing::Test {
protected:
    vrnLogCleaner() {
        Machine.Clock->Time = ToLocalDateTime(
            std::chrono::time_point_cast<std::chrono::microseconds>(std::chrono::file_clock::to_sys(FNow)));
    }

    void Write(const String& name, std::chrono::file_clock::duration age) {
        WriteFileInOneGo(Folder + name, "");
        std::filesystem::last_write_time(ToNativePath(Folder + name), FNow - age);
    }
    void WriteTenYoungerOldOnes() {
        for (int i = 0; i < 10; ++i) Write(u"kept" + String(1, static_cast<Char>(u'0' + i)) + u".log", 120h);
    }
    /// The names of the files to delete, each with a comma.
    static String Names(ILogCleaner& cleaner) {
        String names;
        for (const String& path : cleaner.GetFilesToDelete()) names += ExtractFileName(path) + u",";
        return names;
    }

    TLogMachine Machine;
    const std::shared_ptr<TNamedLog> Log = TBaseLog::Create<TNamedLog>(u"own");
    const String Folder = ExtractFilePath(Log->GetLogFileName());
    const std::shared_ptr<ILogCleaner> Cleaner = TLogCleanerFactory::GetObject();

private:
    const std::chrono::file_clock::time_point FNow = std::chrono::file_clock::now();
};

TEST_F(vrnLogCleaner, OnlyOldLogFilesBeyondTenAreFound) {
    WriteTenYoungerOldOnes();
    EXPECT_EQ(Names(*Cleaner), u"");
    const std::tuple<StringView, std::chrono::minutes, bool> cases[] = {
        {u"a.log", 130h, true},      {u"a.log", 120h + 1min, true}, {u"a.log", 120h - 1min, false},
        {u"a.log", -2400h, false},   {u".log", 130h, true},         {u"a.LOG", 130h, false},
        {u"a.log.txt", 130h, false}, {u"alog", 130h, false},
    };
    for (const auto& [name, age, isFound] : cases) {
        Write(String(name), age);
        EXPECT_EQ(Names(*Cleaner), isFound ? String(name) + u"," : u"") << ToUtf8(name) << age.count();
        DeleteFile(Folder + String(name));
    }
    ForceDirectories(Folder + u"folder.log\\a.log");
    std::filesystem::last_write_time(ToNativePath(Folder + u"folder.log"), {});
    std::filesystem::create_symlink("nowhere", ToNativePath(Folder + u"link.log"));
    EXPECT_EQ(Names(*Cleaner), u"");
}

TEST_F(vrnLogCleaner, TheNewestComeFirstAlsoWithinADate) {
    WriteTenYoungerOldOnes();
    const std::pair<StringView, std::chrono::minutes> files[] = {{u"c.log", 144h + 2min},
                                                                 {u"e.log", 400h},
                                                                 {u"b.log", 144h + 1min},
                                                                 {u"d.log", 145h},
                                                                 {u"a.log", 145h}};
    for (const auto& [name, age] : files) Write(String(name), age);
    EXPECT_EQ(Names(*Cleaner), u"b.log,c.log,a.log,d.log,e.log,");
}

TEST_F(vrnLogCleaner, CleanLeavesTheNewestAndWhatCannotBeDeleted) {
    WriteTenYoungerOldOnes();
    Write(u"old.log", 130h);
    Write(String(u"\uFFFD.log"), 131h);
    std::filesystem::rename(ToNativePath(Folder + u"\uFFFD.log"), ToNativePath(Folder) + "\xFF.log");
    Cleaner->Clean();
    EXPECT_FALSE(FileExists(Folder + u"old.log"));
    EXPECT_EQ(Names(*Cleaner), u"\uFFFD.log,") << "a name that has no text";
    EXPECT_TRUE(FileExists(Folder + u"kept9.log") && FileExists(Log->GetLogFileName()));
}

TEST_F(vrnLogCleaner, WithoutALogOrFolderNothingIsFound) {
    std::filesystem::remove_all(ToNativePath(Folder));
    const std::shared_ptr<ILog> none;
    for (const auto& cleaner : {Cleaner, TLogCleanerFactory::GetObject(none),
                                TLogCleanerFactory::GetObject(std::make_shared<TNullLog>())}) {
        EXPECT_TRUE(cleaner->GetFilesToDelete()->GetIsEmpty());
        cleaner->Clean();
    }
}

}  // namespace
}  // namespace Varnholt::Test
