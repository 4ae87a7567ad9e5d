#include "VarnholtLib/Services/vrnLog.h"

#include <array>
#include <cmath>

#include "Platform/Runtime/DateTime.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Immortal.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/System/Platform.h"
#include "Platform/System/PrivateFile.h"
#include "VarnholtLib/Foundation/vrnModuleState.h"
#include "VarnholtLib/Foundation/vrnPathText.h"
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
    return PathBelow(TSpecialFolders::GetPersonal(),
                     Format(u"Varnholt\\Logs\\%s (%s).log", {logName, program}));
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

/// A message in UTF-8 with visible controls. Short plain ones, which most are, take no allocation.
class TMessageText {
public:
    explicit TMessageText(StringView message) {
        bool isPlain = message.size() <= kMaxShort;
        if (isPlain) {
            // One loop without an exit, which compilers turn into vector instructions.
            std::uint16_t odd = 0;
            for (std::size_t i = 0; i < message.size(); ++i) {
                const std::uint16_t c = message[i];
                FShort[i] = static_cast<char>(c);
                odd = static_cast<std::uint16_t>(odd | (c - u' ') | (u'~' - c));
            }
            isPlain = odd < 0x8000;
        }
        if (!isPlain) {
            FLong = ToUtf8(WithVisibleControls(message));
            FText = FLong;
            return;
        }
        FText = std::string_view(FShort.data(), message.size());
    }
    TMessageText(const TMessageText&) = delete;
    TMessageText& operator=(const TMessageText&) = delete;

    [[nodiscard]] std::string_view Get() const noexcept { return FText; }

private:
    static constexpr std::size_t kMaxShort = 512;

    std::array<char, kMaxShort> FShort;
    std::string FLong;
    std::string_view FText;
};

}  // namespace

// --- The writer ---

/// The file and its buffer. Used under the lock of the log.
class TBaseLog::TWriter {
public:
    explicit TWriter(StringView path) : FFile(path) { FBytes.reserve(2 * kBufferSize); }
    ~TWriter() { Flush(); }
    TWriter(const TWriter&) = delete;
    TWriter& operator=(const TWriter&) = delete;

    void WriteLine(std::string_view message) {
        UpdatePrefix();
        // If allocation fails, the buffer still holds whole lines only.
        FBytes.reserve(FBytes.size() + FPrefix.size() + message.size() + kLineEnd.size());
        FBytes += FPrefix;
        FBytes += message;
        FBytes += kLineEnd;
        if (FBytes.size() >= kBufferSize) Flush();
    }

    void Flush() noexcept {
        if (FBytes.empty()) return;
        try {
            if (FIsCut) FBytes.insert(0, kLineEnd);
            FSize = FFile.GetSize();
            FFile.WriteBuffer(BytesOf(FBytes));
            FIsCut = false;
        } catch (...) {  // the lines are lost
            FIsCut = IsLongerThanBefore();
        }
        FBytes.clear();
        if (FBytes.capacity() > kMaxKeptCapacity) FBytes = std::string();
    }

private:
    static constexpr std::size_t kBufferSize = 4096;
    static constexpr std::size_t kMaxKeptCapacity = 1 << 16;
    static constexpr std::string_view kLineEnd = "\r\n";

    /// Whether a write that failed left a part of a line.
    [[nodiscard]] bool IsLongerThanBefore() const noexcept {
        try {
            return FIsCut || FFile.GetSize() > FSize;
        } catch (...) {
            return true;
        }
    }

    /// The beginning of a line, made anew for another thread or second.
    void UpdatePrefix() {
        const std::uint32_t thread = Platform().Process->GetThreadId();
        const TDateTime now = Platform().Clock->Now();
        const bool isSameSecond = now >= FFirstTime && now < FEndTime;
        if (isSameSecond && thread == FThread) return;
        if (!isSameSecond) ReadTime(now);
        FThread = 0;  // none, if allocation fails
        FPrefix = "[" + std::to_string(thread) + ", " + FTimeText + "]: ";
        FThread = thread;
    }

    void ReadTime(TDateTime now) {
        constexpr double kSecondsPerDay = 86'400;
        constexpr double kHalfMillisecond =
            0.0005;             // DateTimeToStr rounds to milliseconds and then drops them
        FEndTime = FFirstTime;  // none, if allocation fails
        FTimeText = ToUtf8(DateTimeToStr(now));
        const double day = std::floor(now);
        const double second = std::floor((now - day) * kSecondsPerDay + kHalfMillisecond);
        FFirstTime = now;
        FEndTime = day + (second + 1 - kHalfMillisecond) / kSecondsPerDay;
    }

    TPrivateFileStream FFile;
    std::string FBytes;
    bool FIsCut = false;     // whether the file ends with a part of a line
    std::int64_t FSize = 0;  // before the last write
    std::string FPrefix;     // of this thread and FTimeText
    std::uint32_t FThread = 0;
    std::string FTimeText;  // of the times from the first to before the end
    TDateTime FFirstTime = 0;
    TDateTime FEndTime = 0;
};

// --- TBaseLog ---

TBaseLog::TBaseLog() = default;

TBaseLog::~TBaseLog() {
    FWriter.reset();
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
    const TMessageText text(message);
    const std::lock_guard guard(FLock);
    FWriter->WriteLine(text.Get());
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

std::shared_ptr<ILog> EnabledDefaultLog() {
    std::shared_ptr<ILog> log = HasDefaultLog() ? DefaultLog() : nullptr;
    return log && log->GetEnabled() ? log : nullptr;
}

}  // namespace Varnholt
