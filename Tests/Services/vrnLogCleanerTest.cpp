#include "VarnholtLib/Services/vrnLogCleaner.h"

#include <chrono>
#include <filesystem>

#include "Platform/Runtime/Files.h"
#include "Platform/System/LocalTime.h"
#include "Tests/Services/ServiceTest.h"

namespace Varnholt::Test {
namespace {

using namespace std::chrono_literals;

class vrnLogCleaner : public TServiceTest {
protected:
    vrnLogCleaner() {
        const auto now = std::chrono::file_clock::to_sys(FNow);
        Time = ToUtcDateTime(std::chrono::time_point_cast<std::chrono::microseconds>(now));
        for (const Char c : StringView(u"0123456789")) Write(String{c} + u".log", 120h);
    }

    void Write(const String& name, std::chrono::file_clock::duration age) {
        WriteFileInOneGo(Logs + name, "");
        std::filesystem::last_write_time(ToNativePath(Logs + name), FNow - age);
    }
    /// The names of the files to delete, each with a comma.
    String Found() {
        String names;
        for (const String& path : Cleaner->GetFilesToDelete()) names += ExtractFileName(path) + u",";
        return names;
    }

    std::shared_ptr<TNamedLog> Log = TBaseLog::Create<TNamedLog>(u"own");
    const String Logs = ExtractFilePath(Log->GetLogFileName());
    std::shared_ptr<ILogCleaner> Cleaner = TLogCleanerFactory::GetObject();

private:
    const std::chrono::file_clock::time_point FNow = std::chrono::file_clock::now();
};

TEST_F(vrnLogCleaner, OnlyOldLogsBeyondTenAreFoundTheNewestFirst) {
    EXPECT_EQ(Found(), u"");
    // clang-format off
    const std::pair<StringView, std::chrono::minutes> files[] = {
        {u"c.log", 144h + 2min}, {u"young.log", 120h - 1min},
        {u"future.log", -2400h}, {u"b.log", 144h + 1min},
        {u"upper.LOG", 130h},    {u"other.log.txt", 130h},
        {u"d.log", 145h},        {u"e.log", 400h},
        {u".log", 145h},         {u"a.log", 120h + 1min},
        {u"nolog", 130h}};
    // clang-format on
    for (const auto& [name, age] : files) Write(String(name), age);
    ForceDirectories(Logs + u"folder.log\\x.log");
    std::filesystem::last_write_time(ToNativePath(Logs + u"folder.log"), {});
    EXPECT_EQ(Found(), u"a.log,b.log,c.log,.log,d.log,e.log,");
}

TEST_F(vrnLogCleaner, CleanLeavesTheNewestAndWhatCannotBeDeleted) {
    Write(u"odd.log", 129h);
    std::filesystem::rename(ToNativePath(Logs) + "odd.log", ToNativePath(Logs) + "\xFF.log");
    Write(u"old.log", 130h);
    WriteFileInOneGo(u"D:\\precious.log", "");
    std::filesystem::rename(ToNativePath(Logs) + "old.log", ToNativePath(Logs) + "..\\..\\precious.log");
    Write(u"target", 500h);
    std::filesystem::create_symlink("target", ToNativePath(Logs) + "link.log");
    Cleaner->Clean();
    EXPECT_EQ(Found(), u"");
    EXPECT_TRUE(FileExists(u"D:\\precious.log") && FileExists(Logs + u"link.log"));
    EXPECT_FALSE(std::filesystem::exists(ToNativePath(Logs) + "..\\..\\precious.log"));
    EXPECT_TRUE(FileExists(Logs + u"9.log") && FileExists(Log->GetLogFileName()));
    std::filesystem::remove_all(ToNativePath(Logs));
    EXPECT_EQ(Found(), u"");
    Log.reset();
    Cleaner.reset();
    Cleaner = TLogCleanerFactory::GetObject();
    EXPECT_EQ(Found(), u"") << "no default log";
}

}  // namespace
}  // namespace Varnholt::Test
