#include "VarnholtLib/Services/vrnLog.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <functional>
#include <map>
#include <sstream>
#include <thread>

#include "Platform/Runtime/DateTime.h"
#include "Platform/Runtime/Files.h"
#include "Tests/Services/LogTestSupport.h"
#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

constexpr std::size_t kHeaderLines = 3;

class vrnLog : public ::testing::Test {
protected:
    static std::shared_ptr<TNamedLog> Create(StringView name) { return TBaseLog::Create<TNamedLog>(name); }

    std::string Prefix(std::uint32_t thread = Platform().Process->GetThreadId()) {
        return "[" + std::to_string(thread) + ", " + ToUtf8(DateTimeToStr(Machine.Clock->Time)) + "]: ";
    }
    /// The lines of the file, without their ends.
    static std::vector<std::string> Lines(ILog& log) {
        log.Flush();
        std::istringstream file(ReadWholeFile(log.GetLogFileName()));
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);) {
            EXPECT_TRUE(line.ends_with('\r')) << line;
            lines.push_back(line.substr(0, line.size() - 1));
        }
        return lines;
    }

    TLogMachine Machine;
};

TEST_F(vrnLog, FileBeginsWithItsHeader) {
    const String program = Platform().Process->GetExecutablePath();
    const auto log = Create(u"Import");
    EXPECT_TRUE(log->GetIsOpen());
    EXPECT_EQ(log->GetLogFileName(), u"D:\\Varnholt\\Logs\\Import (" + ExtractFileName(program) + u").log");
    const std::vector<std::string> expected = {
        Prefix() + "Import log",
        Prefix() + "Thread ID: " + std::to_string(Platform().Process->GetThreadId()) +
            ", running from: " + ToUtf8(program),
        Prefix() + "Date: " + ToUtf8(DateTimeToStr(Machine.Clock->Time))};
    EXPECT_EQ(Lines(*log), expected);
    log->Log(u"more");
    EXPECT_EQ(Lines(*log).size(), kHeaderLines + 1);
    EXPECT_EQ(Lines(*Create(u"Import")), expected) << "a new start";
}

TEST_F(vrnLog, EachOperationHasItsLine) {
    const auto log = Create(u"x");
    const auto* const object = reinterpret_cast<const void*>(0x1AB);
    const std::pair<std::function<void(ILog&)>, const char*> cases[] = {
        {[](ILog& l) { l.Log(u"100 %d"); }, "100 %d"},
        {[](ILog& l) {
             l.Log(u"%d of %s", {2, u"3"});
         },
         "2 of 3"},
        {[](ILog& l) { l.Log(u""); }, ""},
        {[](ILog& l) { l.Method(u"Go"); }, "[METHOD]: Go()"},
        {[](ILog& l) {
             l.Method(u"Go", {u"a", u"%d"});
         },
         "[METHOD]: Go(a, %d)"},
        {[&](ILog& l) { l.Method(u"Go", {u"a"}, object); }, "[METHOD]: Go@1AB(a)"},
        {[](ILog& l) { l.Method(u"", {u"a"}); }, ""},
        {[&](ILog& l) { l.Method(u"", {u"a"}, object); }, ""},
        {[](ILog& l) { l.Error(u"%d%%", {5}); }, "[ERROR]: 5%"},
        {[](ILog& l) { l.Error(u"bad"); }, "[ERROR]: bad"},
        {[](ILog& l) { l.Error(u""); }, ""},
        {[](ILog& l) { l.Warning(u"%d"); }, "[WARNING]: %d"},
        {[](ILog& l) { l.UserSelected(u"%s"); }, "[USERSELECTED]: %s"},
        {[](ILog& l) { l.UnableToFind(u"C:\\new %x"); }, "[FILENOTFOUND]: C:\\new %x"},
        {[](ILog& l) { l.Clicked(u""); }, "[CLICKED]: "},
        {[](ILog& l) { l.SetEnabled(true); }, "[LOGGING]: on"},
        {[](ILog& l) { l.SetEnabled(true); }, ""},
        {[](ILog& l) { l.SetEnabled(false); }, "[LOGGING]: off"},
        {[](ILog& l) { l.LogVerbose(u"no"); }, ""},
        {[](ILog& l) { l.LogVerbose(u"%d", {u"no"}); }, ""},
        {[&](ILog& l) { l.MethodVerbose(u"no", {u"a"}, object); }, ""},
        {[](ILog& l) { l.SetVerbose(true); }, ""},
        {[](ILog& l) { l.LogVerbose(u"yes"); }, "yes"},
        {[](ILog& l) { l.LogVerbose(u"%d", {1}); }, "1"},
        {[](ILog& l) { l.MethodVerbose(u"Go"); }, "[METHOD]: Go()"},
        {[](ILog& l) { l.MethodVerbose(u"Go", {u"a"}); }, "[METHOD]: Go(a)"},
        {[&](ILog& l) { l.MethodVerbose(u"Go", {}, object); }, "[METHOD]: Go@1AB()"},
    };
    std::vector<std::string> expected = Lines(*log);
    TNullLog nothing;
    for (const auto& [call, line] : cases) {
        Machine.Clock->Time += 1.0 / 86400;
        call(*log);
        call(nothing);
        if (*line != '\0') expected.push_back(Prefix() + line);
        EXPECT_EQ(Lines(*log), expected) << line;
    }
    EXPECT_TRUE(log->GetVerbose() && !log->GetEnabled());
    ExpectRaised<EConvertError>(
        {{[&] { log->Log(u"%d", {u"x"}); }, u"Format '%d', position 1: '%d' takes an integer"},
         {[&] { log->Error(u"50 %"); },
          u"Format '[ERROR]: 50 %', position 13: unfinished placeholder '%'"}});
    EXPECT_EQ(Lines(*log), expected);
}

TEST_F(vrnLog, AMessageIsOneVisibleLine) {
    const auto log = Create(u"x");
    const std::pair<StringView, const char*> cases[] = {
        {u"a\r\n[1, x]: b\n", "a\u240D\u240A[1, x]: b\u240A"},
        {StringView(u"\0\x1B[2J\x7F\t\x1F", 8), "\u2400\u241B[2J\u2421\t\u241F"},
        {u"\u0085\u009B2J\u2028\u2029", "\u241BE\u241B[2J\u2424\u2424"},
        {u"\u00FC \U0001F327 ~", "\u00FC \U0001F327 ~"},
    };
    for (const auto& [message, line] : cases) {
        log->Log(message);
        EXPECT_EQ(Lines(*log).back(), Prefix() + line);
    }
    for (const Char half : {Char{0xD800}, Char{0xDFFF}}) {
        log->Log(String{u'a', half});
        EXPECT_EQ(Lines(*log).back(), Prefix() + "a\uFFFD");
    }
}

TEST_F(vrnLog, BufferHoldsWholeLinesUpToItsSize) {
    auto log = Create(u"x");
    log->Flush();
    const String path = log->GetLogFileName();
    const std::int64_t header = FileSize(path);
    log->Log(String(4000, u'a'));
    EXPECT_EQ(FileSize(path), header);
    log->Log(String(4000, u'b'));
    EXPECT_EQ(FileSize(path), header + 2 * static_cast<std::int64_t>(Prefix().size() + 4002));
    log->Log(u"last");
    log.reset();
    EXPECT_TRUE(ReadWholeFile(path).ends_with("last\r\n"));
}

TEST_F(vrnLog, WithoutAFileItIsSilentButTheDefault) {
    WriteFileInOneGo(u"D:\\Varnholt", "in the way");
    for (const StringView documents : {u"D:\\", u"", u"Q:\\"}) {
        Machine.Documents->Path = documents;
        const auto log = Create(u"x");
        EXPECT_FALSE(log->GetIsOpen());
        EXPECT_TRUE(log->GetLogFileName().starts_with(String(documents) + u"Varnholt\\Logs\\x ("));
        log->Log(u"%d", {u"not read"});
        log->SetEnabled(true);
        log->Flush();
        EXPECT_EQ(DefaultLog(), log);
    }
    EXPECT_FALSE(FileExists(u"Varnholt"));
    Machine.Documents->Path = FromNativePath(Machine.Drive.GetNativePath("a\\b"));
    EXPECT_TRUE(Create(u"x")->GetIsOpen()) << "documents without a form with a drive letter";
    EXPECT_TRUE(DirectoryExists(FromUtf8(Machine.Drive.GetNativePath("a\\b/Varnholt/Logs"))));
}

TEST_F(vrnLog, AFullDiskLosesOnlyLines) {
    const auto log = Create(u"x");
    log->Flush();
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit full{static_cast<rlim_t>(FileSize(log->GetLogFileName())) + 5000, limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    for (int i = 0; i < 3; ++i) log->Log(String(4096, u'a'));
    setrlimit(RLIMIT_FSIZE, &limit);
    log->Log(u"again");
    const std::vector<std::string> lines = Lines(*log);
    EXPECT_EQ(lines.back(), Prefix() + "again");
    EXPECT_EQ(lines[kHeaderLines], Prefix() + std::string(4096, 'a'));
}

TEST_F(vrnLog, TheFirstLogIsTheDefaultUntilItIsReleased) {
    EXPECT_FALSE(HasDefaultLog());
    ASSERT_NE(DefaultLog(), nullptr);
    EXPECT_EQ(DefaultLog(), DefaultLog());
    DefaultLog()->SetEnabled(true);
    EXPECT_TRUE(DefaultLog()->GetLogFileName().empty() && !DefaultLog()->GetEnabled());
    auto first = Create(u"1"), second = Create(u"2");
    EXPECT_TRUE(HasDefaultLog() && DefaultLog() == first);
    EXPECT_NE(first->GetLogFileName(), second->GetLogFileName());
    first.reset();
    EXPECT_FALSE(HasDefaultLog());
    EXPECT_TRUE(DefaultLog()->GetLogFileName().empty());
    const auto third = Create(u"3");
    EXPECT_EQ(DefaultLog(), third);
}

/// Advances by a second at each reading, which the lock of the log must guard.
class TTickingClock : public IClock {
public:
    TDateTime Now() override { return 45000 + ++FTicks / 86400.0; }

private:
    int FTicks = 0;
};

TEST_F(vrnLog, LinesOfThreadsAreWholeAndInOrder) {
    constexpr int kLines = 200'000;
    Platform().Clock = std::make_shared<TTickingClock>();
    const auto log = Create(u"x");
    const auto write = [&] {
        for (int i = 0; i < kLines; ++i) log->Log(u"line %d, %s", {i, u"\u00FC"});
        log->Lock();
        for (const StringView text : {u"together", u"together"}) log->Log(text);
        log->Unlock();
    };
    std::thread other(write);
    write();
    log->SetVerbose(!log->GetVerbose());
    other.join();
    const std::vector<std::string> lines = Lines(*log);
    ASSERT_EQ(lines.size(), kHeaderLines + 2 * (kLines + 2));
    std::map<std::string, int> next;  // by thread
    double tick = 4;                  // the header read the clock once more, for its own text
    for (std::size_t i = kHeaderLines; i < lines.size(); ++i) {
        const std::string thread = lines[i].substr(1, lines[i].find(',') - 1);
        const std::string time = ToUtf8(DateTimeToStr(45000 + ++tick / 86400));
        const std::string start = "[" + thread + ", " + time + "]: ";
        const int line = next[thread]++;
        const std::string text = line < kLines ? "line " + std::to_string(line) + ", \u00FC" : "together";
        ASSERT_EQ(lines[i], start + text) << i;
        const bool isLast = line == kLines + 1;
        ASSERT_TRUE(!isLast || lines[i - 1].starts_with("[" + thread)) << "locked lines";
    }
    EXPECT_EQ(next.size(), 2U);
}

}  // namespace
}  // namespace Varnholt::Test
