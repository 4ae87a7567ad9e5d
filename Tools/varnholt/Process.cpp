#include "Tools/varnholt/Process.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <exception>
#include <new>
#include <string_view>

#include "Platform/Runtime/DraftFile.h"

namespace Varnholt::Tool {
namespace {

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

void EndOnSignal(int number) {
    RemoveDraftFiles();
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
    for (const int number : {SIGHUP, SIGINT, SIGTERM}) HandleSignal(number);
    wasPipeIgnored = std::signal(SIGPIPE, SIG_IGN) == SIG_IGN;
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
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
