#include "VarnholtLib/Services/vrnLog.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "Platform/Runtime/DateTime.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Immortal.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/System/Platform.h"
#include "Platform/System/PrivateFile.h"
#include "VarnholtLib/Foundation/vrnModuleState.h"
#include "VarnholtLib/Services/vrnLogLoadPrivate.h"
#include "VarnholtLib/Services/vrnSpecialFolders.h"

namespace Varnholt {
namespace {

// --- The null log and the default log ---

constinit TModuleState<std::shared_ptr<ILog>> nullLog;

struct TDefaultLog {
    std::mutex Lock;
    std::weak_ptr<ILog> Log;
};

TDefaultLog& TheDefaultLog() {
    static TImmortal<TDefaultLog> log;
    return *log;
}

std::shared_ptr<ILog> FindDefaultLog() {
    TDefaultLog& held = TheDefaultLog();
    const std::lock_guard guard(held.Lock);
    return held.Log.lock();
}

void TakeAsDefaultLog(const std::shared_ptr<ILog>& log) {
    TDefaultLog& held = TheDefaultLog();
    const std::lock_guard guard(held.Lock);
    if (held.Log.expired()) held.Log = log;
}

/// Frees the memory that a weak reference holds after the log itself.
void ForgetExpiredDefaultLog() noexcept {
    TDefaultLog& held = TheDefaultLog();
    const std::lock_guard guard(held.Lock);
    if (held.Log.expired()) held.Log.reset();
}

// --- Texts ---

String Joined(ILog::TTexts texts) {
    String list;
    for (const String& text : texts) {
        if (&text != texts.data()) list += u", ";
        list += text;
    }
    return list;
}

String FileNameOf(StringView logName) {
    const String program = ExtractFileName(Platform().Process->GetExecutablePath());
    const String folder = TSpecialFolders::GetPersonal();
    String name = Format(u"Varnholt\\Logs\\%s (%s).log", {logName, program});
    // A native path has slashes.
    if (folder.starts_with(u'/')) std::ranges::replace(name, u'\\', u'/');
    return folder + name;
}

/// The message with its control characters as vrnLog.h says.
String WithVisibleControls(StringView message) {
    constexpr Char kPictures = 0x2400, kDeletePicture = 0x2421, kNewLinePicture = 0x2424;
    constexpr Char kEscapePicture = kPictures + 0x1B;
    String visible;
    visible.reserve(message.size());
    for (const Char c : message) {
        if (c < u' ' && c != u'\t') {
            visible += static_cast<Char>(kPictures + c);
        } else if (c == 0x7F) {
            visible += kDeletePicture;
        } else if (c >= 0x80 && c <= 0x9F) {
            visible += {kEscapePicture, static_cast<Char>(c - 0x40)};
        } else if (c == 0x2028 || c == 0x2029) {
            visible += kNewLinePicture;
        } else {
            visible += c;
        }
    }
    return visible;
}

/// Appends the message in UTF-8, with visible controls.
void AppendMessage(StringView message, std::string& bytes) {
    bool isPlain = true;
    for (const Char c : message) isPlain &= c >= u' ' && c < 0x7F;
    if (!isPlain) {
        bytes += ToUtf8(WithVisibleControls(message));
        return;
    }
    const std::size_t used = bytes.size();
    bytes.resize(used + message.size());
    std::ranges::transform(message, bytes.begin() + static_cast<std::ptrdiff_t>(used),
                           [](Char c) { return static_cast<char>(c); });
}

}  // namespace

// --- The writer ---

/// The file and its buffer. Used under the lock of the log.
class TBaseLog::TWriter {
public:
    explicit TWriter(StringView path) : FFile(path) { FBytes.reserve(2 * kBufferSize); }

    void WriteLine(StringView message) {
        const std::size_t start = FBytes.size();
        try {
            AppendLine(message);
        } catch (...) {  // memory is exhausted
            FBytes.resize(start);
            throw;
        }
        if (FBytes.size() >= kBufferSize) Flush();
    }

    void Flush() noexcept {
        if (FBytes.empty()) return;
        try {
            if (FHasFailed) FFile.WriteBuffer(BytesOf(kLineEnd));  // a line may have been cut
            FHasFailed = true;
            FFile.WriteBuffer(BytesOf(FBytes));
            FHasFailed = false;
        } catch (const Exception&) {
        }
        FBytes.clear();
        if (FBytes.capacity() > kMaxKeptCapacity) FBytes = std::string();
    }

private:
    static constexpr std::size_t kBufferSize = 4096;
    static constexpr std::size_t kMaxKeptCapacity = 1 << 16;
    static constexpr std::string_view kLineEnd = "\r\n";

    void AppendLine(StringView message) {
        const std::uint32_t thread = Platform().Process->GetThreadId();
        ReadTime();
        std::array<char, 10> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), thread).ptr;
        FBytes += '[';
        FBytes.append(digits.data(), end);
        FBytes += ", ";
        FBytes += FTimeText;
        FBytes += "]: ";
        AppendMessage(message, FBytes);
        FBytes += kLineEnd;
    }

    void ReadTime() {
        constexpr double kMillisecondsPerDay = 86'400'000;
        const TDateTime now = Platform().Clock->Now();
        // DateTimeToStr rounds to milliseconds and then drops them.
        const double second = std::trunc(std::round(now * kMillisecondsPerDay) / 1000);
        if (second == FSecond) return;
        FTimeText = ToUtf8(DateTimeToStr(now));
        FSecond = second;
    }

    TPrivateFileStream FFile;
    std::string FBytes;
    bool FHasFailed = false;
    double FSecond = std::numeric_limits<double>::quiet_NaN();
    std::string FTimeText;  // of that second
};

// --- TBaseLog ---

TBaseLog::TBaseLog() = default;

TBaseLog::~TBaseLog() {
    Flush();
    ForgetExpiredDefaultLog();
}

void TBaseLog::Open(const std::shared_ptr<TBaseLog>& log) {
    log->FFileName = FileNameOf(log->GetLogName());
    log->OpenFile();
    log->LogHeader();
    TakeAsDefaultLog(log);
}

void TBaseLog::OpenFile() noexcept {
    try {
        // Without a documents folder the path is relative, and the file would be wherever the program runs.
        if (TSpecialFolders::GetPersonal().empty()) return;
        const String folder = ExtractFilePath(FFileName);
        if (!DirectoryExists(folder)) ForceDirectories(folder);
        FWriter = std::make_unique<TWriter>(FFileName);
    } catch (...) {  // the log stays closed
    }
}

void TBaseLog::LogHeader() {
    if (!GetIsOpen()) return;
    Log(u"%s log", {GetLogName()});
    Log(u"Thread ID: %d, running from: %s",
        {Platform().Process->GetThreadId(), Platform().Process->GetExecutablePath()});
    Log(u"Date: %s", {DateTimeToStr(Platform().Clock->Now())});
}

void TBaseLog::Lock() {
    FLock.lock();
}

void TBaseLog::Unlock() {
    FLock.unlock();
}

bool TBaseLog::GetIsOpen() const {
    return FWriter != nullptr;
}

String TBaseLog::GetLogFileName() const {
    return FFileName;
}

void TBaseLog::SetEnabled(bool value) {
    if (FEnabled.exchange(value) != value) Log(value ? u"[LOGGING]: on" : u"[LOGGING]: off");
}

void TBaseLog::SetVerbose(bool value) {
    FVerbose = value;
}

bool TBaseLog::GetEnabled() const {
    return FEnabled;
}

bool TBaseLog::GetVerbose() const {
    return FVerbose;
}

void TBaseLog::Log(StringView message) {
    if (!GetIsOpen() || message.empty()) return;
    const std::lock_guard guard(FLock);
    FWriter->WriteLine(message);
}

void TBaseLog::Log(StringView message, TValues args) {
    if (GetIsOpen()) Log(Format(message, args));
}

void TBaseLog::Method(StringView message) {
    Method(message, TTexts());
}

void TBaseLog::Method(StringView message, TTexts args) {
    if (!message.empty()) Log(u"[METHOD]: %s(%s)", {message, Joined(args)});
}

void TBaseLog::Method(StringView name, TTexts params, const void* object) {
    if (name.empty()) return;
    const auto address = reinterpret_cast<std::uintptr_t>(object);
    Log(u"[METHOD]: %s@%x(%s)", {name, address, Joined(params)});
}

void TBaseLog::MethodVerbose(StringView message) {
    if (GetVerbose()) Method(message);
}

void TBaseLog::MethodVerbose(StringView message, TTexts args) {
    if (GetVerbose()) Method(message, args);
}

void TBaseLog::MethodVerbose(StringView name, TTexts params, const void* object) {
    if (GetVerbose()) Method(name, params, object);
}

void TBaseLog::LogVerbose(StringView message) {
    if (GetVerbose()) Log(message);
}

void TBaseLog::LogVerbose(StringView message, TValues args) {
    if (GetVerbose()) Log(message, args);
}

void TBaseLog::Error(StringView message) {
    Error(message, TValues());
}

void TBaseLog::Error(StringView message, TValues args) {
    if (!message.empty()) Log(u"[ERROR]: " + String(message), args);
}

void TBaseLog::Warning(StringView message) {
    Log(u"[WARNING]: %s", {message});
}

void TBaseLog::UserSelected(StringView item) {
    Log(u"[USERSELECTED]: %s", {item});
}

void TBaseLog::UnableToFind(StringView item) {
    Log(u"[FILENOTFOUND]: %s", {item});
}

void TBaseLog::Clicked(StringView name) {
    Log(u"[CLICKED]: %s", {name});
}

void TBaseLog::Flush() {
    if (!GetIsOpen()) return;
    const std::lock_guard guard(FLock);
    FWriter->Flush();
}

// --- Free functions ---

std::shared_ptr<ILog> DefaultLog() {
    if (std::shared_ptr<ILog> log = FindDefaultLog()) return log;
    if (const std::shared_ptr<ILog>* const log = nullLog.Get()) return *log;
    return std::make_shared<TNullLog>();  // before the load of the library, or after its unload
}

bool HasDefaultLog() {
    return FindDefaultLog() != nullptr;
}

void CreateNullLog() noexcept {
    nullLog.Create(std::make_shared<TNullLog>());
}

void ReleaseNullLog() noexcept {
    nullLog.Destroy();
}

}  // namespace Varnholt
