#include "VarnholtLib/Services/vrnLog.h"

#include <sys/resource.h>

#include <csignal>
#include <map>
#include <thread>

#include "Platform/Runtime/DateTime.h"
#include "Platform/Runtime/Files.h"
#include "Tests/Services/ServiceTest.h"
#include "Tests/Support/Raised.h"
#include "VarnholtLib/Foundation/vrnString.h"

namespace Varnholt::Test {
namespace {

class vrnLog : public TServiceTest {
protected:
    String Prefix() const {
        return Format(u"[%d, %s]: ", {Platform().Process->GetThreadId(), DateTimeToStr(Time)});
    }
    /// The file, with a bar for the line end of one line and the beginning of the next.
    String Lines(ILog& log) const {
        log.Flush();
        const String text = u"\r\n" + FromUtf8(ReadWholeFile(log.GetLogFileName()));
        return StrReplace2(text, u"\r\n" + Prefix(), u"|", true);
    }
    String Header() const {
        return Format(u"|x log|Thread ID: %d, running from: %s|Date: %s",
                      {Platform().Process->GetThreadId(), FProgram, DateTimeToStr(Time)});
    }

    const String FProgram = Platform().Process->GetExecutablePath();
    std::shared_ptr<TNamedLog> Log = TBaseLog::Create<TNamedLog>(u"x");
    const String Path = u"D:\\Varnholt\\Logs\\x (" + ExtractFileName(FProgram) + u").log";
};

TEST_F(vrnLog, EachOperationHasItsLine) {
    const auto* const object = reinterpret_cast<const void*>(0x1AB);
    for (const bool isVerbose : {false, true}) {
        Log->SetVerbose(isVerbose);
        Log->LogVerbose(u"100 %d");
        Log->LogVerbose(u"%d%%", {5});
        Log->MethodVerbose(u"A");
        Log->MethodVerbose(u"B", {u"%d"});
        Log->MethodVerbose(u"C", {}, object);
    }
    Log->Log(u"");
    Log->Method(u"");
    Log->Method(u"", {u"a"}, object);
    Log->Method(u"D", {u"a", u"b"}, object);
    Log->Error(u"");
    Log->Error(u"bad");
    Log->Warning(u"%d");
    Log->UserSelected(u"%s");
    Log->UnableToFind(u"C:\\new %x");
    Log->Clicked(u"");
    for (const bool isEnabled : {false, true, true, false}) Log->SetEnabled(isEnabled);
    ExpectRaised<EConvertError>(
        {{[&] { Log->Log(u"%d", {u"x"}); }, u"Format '%d', position 1: '%d' takes an integer"},
         {[&] { Log->Error(u"5%"); }, u"Format '[ERROR]: 5%', position 11: unfinished placeholder '%'"}});
    EXPECT_TRUE(Log->GetIsOpen() && Log->GetLogFileName() == Path);
    const String expected = Header() +
                            u"|100 %d|5%|[METHOD]: A()|[METHOD]: B(%d)|[METHOD]: C@1AB()"
                            u"|[METHOD]: D@1AB(a, b)|[ERROR]: bad|[WARNING]: %d|[USERSELECTED]: %s"
                            u"|[FILENOTFOUND]: C:\\new %x|[CLICKED]: |[LOGGING]: on|[LOGGING]: off\r\n";
    EXPECT_EQ(Lines(*Log), expected);
    EXPECT_EQ(Lines(*TBaseLog::Create<TNamedLog>(u"x")), Header() + u"\r\n") << "a new start";
}

TEST_F(vrnLog, AMessageIsOneVisibleLine) {
    Log->Log(u"a\r\n[1, x]: b\n" + String{u'\0', 0x1B, 0x7F, u'\t', 0x1F, u'~', u'\u00FC'});
    Log->Log(u"\u0085\u009B2J\u2028\u2029\U0001F327" + String(600, u'\u00FC'));
    Log->Log(String{0xD800} + String(600, u'c'));
    const String third = u"|\uFFFD" + String(600, u'c') + u"\r\n";
    EXPECT_EQ(Lines(*Log), Header() + u"|a\u240D\u240A[1, x]: b\u240A\u2400\u241B\u2421\t\u241F~\u00FC" +
                               u"|\u241BE\u241B[2J\u2424\u2424\U0001F327" + String(600, u'\u00FC') + third);
}

TEST_F(vrnLog, BufferHoldsWholeLinesAndAFullDiskLosesOnlyLines) {
    Log->Flush();
    const std::int64_t header = FileSize(Path), line = static_cast<std::int64_t>(Prefix().size()) + 4002;
    const String text(4000, u'a');
    Log->Log(text);
    EXPECT_EQ(FileSize(Path), header);
    Log->Log(text);
    EXPECT_EQ(FileSize(Path), header + 2 * line);

    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit full{static_cast<rlim_t>(header + 2 * line + 100), limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    for (int i = 0; i < 4; ++i) Log->Log(text);
    setrlimit(RLIMIT_FSIZE, &limit);
    Log->Log(u"again");
    Log.reset();
    const std::string all = ReadWholeFile(Path);
    EXPECT_TRUE(all.ends_with("a\r\n" + ToUtf8(Prefix()) + "again\r\n")) << all.substr(all.size() - 200);
}

TEST_F(vrnLog, WithoutAFileItIsSilent) {
    WriteFileInOneGo(u"D:\\file", "");
    for (const StringView folder : {u"D:\\file", u"", u"Q:\\"}) {
        Folder = folder;
        Log.reset();
        Log = TBaseLog::Create<TNamedLog>(u"x");
        EXPECT_TRUE(!Log->GetIsOpen() && DefaultLog() == Log) << ToUtf8(Folder);
        EXPECT_TRUE(Log->GetLogFileName().starts_with(Folder)) << ToUtf8(Folder);
        Log->Log(u"%d", {u"not read"});
        Log->SetEnabled(true);
        Log->Flush();
    }
    EXPECT_FALSE(FileExists(u"Varnholt"));
    Folder = FromNativePath(Drive.GetNativePath("a\\b"));
    EXPECT_TRUE(TBaseLog::Create<TNamedLog>(u"x")->GetIsOpen());
    EXPECT_TRUE(DirectoryExists(FromUtf8(Drive.GetNativePath("a\\b/Varnholt/Logs"))));
}

TEST_F(vrnLog, TheFirstIsTheDefaultUntilItIsReleased) {
    const auto second = TBaseLog::Create<TNamedLog>(u"2");
    EXPECT_TRUE(HasDefaultLog() && DefaultLog() == Log && second->GetLogFileName() != Path);
    Log.reset();
    EXPECT_TRUE(!HasDefaultLog() && DefaultLog()->GetLogFileName().empty() && DefaultLog() == DefaultLog());
    const auto third = TBaseLog::Create<TNamedLog>(u"3");
    EXPECT_EQ(DefaultLog(), third);
}

/// Advances by a second at each reading, which only the lock of the log guards.
class TTickingLogTest : public vrnLog {
protected:
    TDateTime Now() override { return Time += 1.0 / 86400; }
};

TEST_F(TTickingLogTest, LinesOfThreadsAreWholeAndInOrder) {
    constexpr int kLines = 200'000;
    const auto write = [log = Log.get()] {
        for (int i = 0; i < kLines; ++i) log->Log(u"line %d \u00FC", {i});
        log->Lock();
        for (int i = 0; i < 2; ++i) log->Log(u"together");
        log->Unlock();
    };
    TDateTime time = Time;
    std::thread other(write);
    write();
    other.join();
    Log->Flush();
    std::map<String, int> next;  // by thread
    String last;
    const std::vector<String> lines = SplitString(FromUtf8(ReadWholeFile(Path)), u'\n', false);
    ASSERT_EQ(lines.size(), 3 + 2 * (kLines + 2) + 1);
    for (const String& line : std::span(lines).subspan(3, 2 * (kLines + 2))) {
        const String thread = line.substr(0, line.find(u','));
        const int i = next[thread]++;
        const String text = i < kLines ? Format(u"line %d \u00FC", {i}) : u"together";
        const String stamp = DateTimeToStr(time += 1.0 / 86400);
        ASSERT_EQ(line, Format(u"%s, %s]: %s\r", {thread, stamp, text}));
        ASSERT_TRUE(i <= kLines || last == thread) << "locked lines";
        last = thread;
    }
}

}  // namespace
}  // namespace Varnholt::Test
