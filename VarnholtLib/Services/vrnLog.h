#pragma once

#include <atomic>
#include <concepts>
#include <initializer_list>
#include <memory>
#include <mutex>
#include <span>
#include <utility>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Guid.h"
#include "Platform/Runtime/Types.h"

/// One text log for each program and log name.
///
///     class TImportLog : public TBaseLog {
///     public:
///         [[nodiscard]] String GetLogName() const override { return u"Import"; }
///     };
///
///     const auto log = TBaseLog::Create<TImportLog>();        // at the start of the application
///     log->Log(u"%d stations read", {count});
///
///     if (HasDefaultLog() && DefaultLog()->GetEnabled())      // anywhere in a library
///         DefaultLog()->Warning(u"The station has no name");
///
/// The file is `Varnholt\Logs\NAME (PROGRAM).log` in the user's documents (TSpecialFolders::GetPersonal), with the
/// name of the log and the file name of the running program. It is emptied at each start; a new one can be read by
/// its owner only, and a link, pipe or device of that name is not used (PrivateFile.h). Where a second process of
/// the same program runs with the same log, the file is emptied at its start, and from then on it holds the lines
/// of both.
///
/// The file is UTF-8 without a byte-order mark. Every line has the form
///
///     [THREAD, DATE AND TIME]: MESSAGE
///
/// with the identifier of the calling thread in decimal, the local time as DateTimeToStr writes it, and ends with
/// CR LF, the line end of text writers. The text of the time is made once in each second. The first three lines name
/// the log, the thread with the full path of the program, and the time.
///
/// A message is always one line, so that no text from outside can look like a line of its own or control a terminal:
/// control characters are written as their pictures of Unicode (a line feed as U+240A, an escape as U+241B) except
/// the tab, which stays. A character from U+0080 to U+009F is written as U+241B with the letter that means the
/// same after an escape, and the line separators U+2028 and U+2029 as U+2424. Other text is unchanged. An unpaired
/// surrogate becomes U+FFFD.
///
/// Lines are collected in a buffer and handed to the system as soon as there are 4096 bytes of them, at Flush and
/// by the destructor. The file ends with a whole line, unless a write was cut by a full disk. Logging never fails
/// because of the file: lines that cannot be written, as on a full disk, are lost silently, and later lines are
/// tried again.
///
/// Uses Platform.h, vrnSpecialFolders.h and Format.h. Threads: all operations may be called on any thread. A lock
/// covers reading the time, composing the line and writing, so lines are never mixed and their times are in
/// the order of the file.
namespace Varnholt {

/// A log as its callers see it. A closed log, whose file could not be created, ignores every message: nothing is
/// written, formatted or raised.
class VARNHOLT_EXPORT ILog {
public:
    static constexpr TGuid kGuid = TGuid::FromText(u"{C5ED98E0-9822-4E4C-BDA7-37AED8B07183}");

    using TValues = std::span<const TFormatArg>;
    using TTexts = std::span<const String>;

    virtual ~ILog() = default;
    ILog(const ILog&) = delete;
    ILog& operator=(const ILog&) = delete;

    /// Whether the log has a file.
    [[nodiscard]] virtual bool GetIsOpen() const = 0;
    /// The full path of the file, also if it could not be created; relative if the user has no documents folder.
    [[nodiscard]] virtual String GetLogFileName() const = 0;

    /// A flag for the callers, who test it before they log. It affects none of the operations. Setting another value
    /// logs "[LOGGING]: on" or "[LOGGING]: off". False at first.
    virtual void SetEnabled(bool value) = 0;
    /// Whether the ...Verbose operations write. False at first.
    virtual void SetVerbose(bool value) = 0;
    [[nodiscard]] virtual bool GetEnabled() const = 0;
    [[nodiscard]] virtual bool GetVerbose() const = 0;

    /// Writes a line, unless the message is empty.
    virtual void Log(StringView message) = 0;
    /// Log of the message formatted with the values. Raises EConvertError as Format does, before the lock is taken.
    virtual void Log(StringView message, TValues args) = 0;
    /// "[METHOD]: NAME()". Nothing if the name is empty, here and in the other two.
    virtual void Method(StringView message) = 0;
    /// "[METHOD]: NAME(ARGUMENTS)", the arguments separated by ", ".
    virtual void Method(StringView message, TTexts args) = 0;
    /// "[METHOD]: NAME@ADDRESS(ARGUMENTS)", with the object's address in hexadecimal digits.
    virtual void Method(StringView name, TTexts params, const void* object) = 0;
    /// Method if Verbose is set, otherwise nothing.
    virtual void MethodVerbose(StringView message) = 0;
    virtual void MethodVerbose(StringView message, TTexts args) = 0;
    virtual void MethodVerbose(StringView name, TTexts params, const void* object) = 0;
    /// Log if Verbose is set, otherwise nothing; the format is then not read.
    virtual void LogVerbose(StringView message) = 0;
    virtual void LogVerbose(StringView message, TValues args) = 0;
    /// "[ERROR]: MESSAGE", which is a format here, too: a text that may contain "%" is written by
    /// Error(u"%s", {text}). Nothing if the message is empty. Raises as Log with values.
    virtual void Error(StringView message) = 0;
    virtual void Error(StringView message, TValues args) = 0;
    /// "[WARNING]: MESSAGE", "[USERSELECTED]: ITEM", "[FILENOTFOUND]: ITEM" and "[CLICKED]: NAME". The text is not a
    /// format.
    virtual void Warning(StringView message) = 0;
    virtual void UserSelected(StringView item) = 0;
    virtual void UnableToFind(StringView item) = 0;
    virtual void Clicked(StringView name) = 0;
    /// Hands all lines to the system.
    virtual void Flush() = 0;

    // The same with values or texts in braces.
    void Log(StringView message, std::initializer_list<TFormatArg> args) { Log(message, TValues(args)); }
    void LogVerbose(StringView message, std::initializer_list<TFormatArg> args) {
        LogVerbose(message, TValues(args));
    }
    void Error(StringView message, std::initializer_list<TFormatArg> args) { Error(message, TValues(args)); }
    void Method(StringView message, std::initializer_list<String> args) { Method(message, TTexts(args)); }
    void Method(StringView name, std::initializer_list<String> params, const void* object) {
        Method(name, TTexts(params), object);
    }
    void MethodVerbose(StringView message, std::initializer_list<String> args) {
        MethodVerbose(message, TTexts(args));
    }
    void MethodVerbose(StringView name, std::initializer_list<String> params, const void* object) {
        MethodVerbose(name, TTexts(params), object);
    }

protected:
    ILog() = default;
};

/// The log of an application, which derives a class that names it and makes it with Create. All messages pass through
/// Log(message).
class VARNHOLT_EXPORT TBaseLog : public ILog {
public:
    /// Makes a log and opens its file:
    ///
    /// - The name and the full path of the file are determined. What GetLogName raises is raised.
    /// - The folder of the file is created if it is missing, with its parents, and the file is created or
    ///   emptied. If that fails, or the user has no documents folder, the log stays closed for its whole life.
    /// - The three header lines are logged.
    /// - If there is no default log, this one becomes it, whether it is open or not.
    ///
    /// The name must be known before the file is opened, and a constructor of this class could not call
    /// GetLogName of the derived one: hence this function. A log made in another way stays closed.
    template <std::derived_from<TBaseLog> TLog, typename... TArguments>
    [[nodiscard]] static std::shared_ptr<TLog> Create(TArguments&&... arguments) {
        auto log = std::make_shared<TLog>(std::forward<TArguments>(arguments)...);
        Open(log);
        return log;
    }

    /// Writes out the buffer and closes the file.
    ~TBaseLog() override;

    /// The name of the log. It is part of a file name.
    [[nodiscard]] virtual String GetLogName() const = 0;

    /// Enter and leave the lock that guards a line, to keep several lines together. A thread may enter it again.
    void Lock();
    void Unlock();

    [[nodiscard]] bool GetIsOpen() const override;
    [[nodiscard]] String GetLogFileName() const override;
    void SetEnabled(bool value) override;
    void SetVerbose(bool value) override;
    [[nodiscard]] bool GetEnabled() const override;
    [[nodiscard]] bool GetVerbose() const override;
    using ILog::Error;
    using ILog::Log;
    using ILog::LogVerbose;
    using ILog::Method;
    using ILog::MethodVerbose;
    void Log(StringView message) override;
    void Log(StringView message, TValues args) override;
    void Method(StringView message) override;
    void Method(StringView message, TTexts args) override;
    void Method(StringView name, TTexts params, const void* object) override;
    void MethodVerbose(StringView message) override;
    void MethodVerbose(StringView message, TTexts args) override;
    void MethodVerbose(StringView name, TTexts params, const void* object) override;
    void LogVerbose(StringView message) override;
    void LogVerbose(StringView message, TValues args) override;
    void Error(StringView message) override;
    void Error(StringView message, TValues args) override;
    void Warning(StringView message) override;
    void UserSelected(StringView item) override;
    void UnableToFind(StringView item) override;
    void Clicked(StringView name) override;
    void Flush() override;

protected:
    TBaseLog();

private:
    class TWriter;

    static void Open(const std::shared_ptr<TBaseLog>& log);
    void OpenFile() noexcept;
    void LogHeader();

    std::unique_ptr<TWriter> FWriter;  // none on a closed log
    String FFileName;
    std::recursive_mutex FLock;
    std::atomic<bool> FEnabled{false};
    std::atomic<bool> FVerbose{false};
};

/// The log that stands in when there is none: it is not open and not enabled, has no file name and ignores every call.
class VARNHOLT_EXPORT TNullLog final : public ILog {
public:
    [[nodiscard]] bool GetIsOpen() const override { return false; }
    [[nodiscard]] String GetLogFileName() const override { return {}; }
    void SetEnabled(bool) override {}
    void SetVerbose(bool) override {}
    [[nodiscard]] bool GetEnabled() const override { return false; }
    [[nodiscard]] bool GetVerbose() const override { return false; }
    using ILog::Error;
    using ILog::Log;
    using ILog::LogVerbose;
    using ILog::Method;
    using ILog::MethodVerbose;
    void Log(StringView) override {}
    void Log(StringView, TValues) override {}
    void Method(StringView) override {}
    void Method(StringView, TTexts) override {}
    void Method(StringView, TTexts, const void*) override {}
    void MethodVerbose(StringView) override {}
    void MethodVerbose(StringView, TTexts) override {}
    void MethodVerbose(StringView, TTexts, const void*) override {}
    void LogVerbose(StringView) override {}
    void LogVerbose(StringView, TValues) override {}
    void Error(StringView) override {}
    void Error(StringView, TValues) override {}
    void Warning(StringView) override {}
    void UserSelected(StringView) override {}
    void UnableToFind(StringView) override {}
    void Clicked(StringView) override {}
    void Flush() override {}
};

/// The default log, or the TNullLog if there is none; never null. The default log is the first that was made; a later
/// one does not replace it. The library holds no reference to it that counts: the application keeps it alive. Once
/// the application has released it there is no default log, until the next log is made.
[[nodiscard]] VARNHOLT_EXPORT std::shared_ptr<ILog> DefaultLog();

/// Whether there is a default log.
[[nodiscard]] VARNHOLT_EXPORT bool HasDefaultLog();

/// The default log if it is enabled; otherwise null. For library code that logs.
[[nodiscard]] VARNHOLT_EXPORT std::shared_ptr<ILog> EnabledDefaultLog();

}  // namespace Varnholt
