#include "Tools/varnholt/Process.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <exception>
#include <new>
#include <string>
#include <string_view>

#include "Platform/Runtime/DraftFile.h"
#include "Platform/Runtime/Exceptions.h"

namespace Varnholt::Tool {
namespace {

constexpr std::size_t kMaxPassword = 1000;

bool wasPipeIgnored = false;

void PrintRaw(std::string_view line) noexcept {
    static_cast<void>(!write(STDERR_FILENO, line.data(), line.size()));
}

/// An allocation may fail where nothing can be raised: in a destructor, or while an exception is thrown.
[[noreturn]] void EndOnTerminate() {
    RemoveDraftFiles();
    try {
        if (const std::exception_ptr failure = std::current_exception()) std::rethrow_exception(failure);
    } catch (const std::bad_alloc&) {
        ReportOutOfMemory();
        _exit(1);
    } catch (...) {
    }
    PrintRaw("varnholt: Internal error\n");
    std::abort();
}

/// Runs before the program's static objects, whose constructors allocate.
[[gnu::constructor(101), gnu::used]] void HandleTerminate() {
    std::set_terminate(EndOnTerminate);
}

termios visible{};  // the terminal before ReadPassword
volatile sig_atomic_t isInvisible = 0;

void ShowTyping() {
    if (isInvisible != 0) tcsetattr(STDIN_FILENO, TCSANOW, &visible);
    isInvisible = 0;
}

void EndOnSignal(int number) {
    RemoveDraftFiles();
    ShowTyping();
    static_cast<void>(raise(number));  // takes its usual course after this handler
}

void HandleSignal(int number) {
    struct sigaction action {};
    if (sigaction(number, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) return;
    action.sa_handler = EndOnSignal;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    sigaction(number, &action, nullptr);
}

/// Opened the wrong way round, so that reading or writing fails as with a closed descriptor.
void OpenIfClosed(int descriptor, int mode) {
    if (fcntl(descriptor, F_GETFD) == -1) static_cast<void>(open("/dev/null", mode));
}

}  // namespace

void PrepareProcess() {
    OpenIfClosed(STDIN_FILENO, O_WRONLY);
    OpenIfClosed(STDOUT_FILENO, O_RDONLY);
    OpenIfClosed(STDERR_FILENO, O_RDONLY);
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) HandleSignal(number);
    wasPipeIgnored = std::signal(SIGPIPE, SIG_IGN) == SIG_IGN;
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
}

String ReadPassword(StringView prompt) {
    if (tcgetattr(STDIN_FILENO, &visible) == 0) {
        PrintRaw(ToUtf8(prompt));
        termios hidden = visible;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        isInvisible = 1;
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
    }
    std::string line;
    char byte = 0;
    ssize_t count = 0;
    while (line.size() <= kMaxPassword && (count = read(STDIN_FILENO, &byte, 1)) > 0 && byte != '\n')
        line += byte;
    if (isInvisible != 0) PrintRaw("\n");
    ShowTyping();
    if (line.size() > kMaxPassword) throw Exception(u"The password is too long");
    if (count <= 0 && line.empty()) throw Exception(u"No password was given");
    if (line.ends_with('\r')) line.pop_back();
    return FromUtf8(line);
}

void EndByBrokenPipe() {
    if (wasPipeIgnored) return;
    static_cast<void>(std::signal(SIGPIPE, SIG_DFL));
    static_cast<void>(raise(SIGPIPE));
}

void ReportOutOfMemory() noexcept {
    PrintRaw("varnholt: Out of memory\n");
}

}  // namespace Varnholt::Tool
