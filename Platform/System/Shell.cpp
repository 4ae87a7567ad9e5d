#include "Platform/System/Shell.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Platform/Runtime/Paths.h"
#include "Platform/Runtime/Text.h"

namespace Varnholt {
namespace {

using TArguments = std::vector<std::string>;

/// The parameters one by one; nothing if a quote or backslash is left open.
std::optional<TArguments> SplitParameters(std::string_view text) {
    TArguments arguments;
    std::string current;
    bool isInside = false;
    char quote = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool isEscape =
            c == '\\' && quote != '\'' &&
            (quote == 0 || (i + 1 < text.size() && (text[i + 1] == '"' || text[i + 1] == '\\')));
        if (isEscape) {
            if (++i == text.size()) return std::nullopt;
            current += text[i];
            isInside = true;
        } else if (quote != 0 ? c == quote : c == '"' || c == '\'') {
            quote = quote == 0 ? c : 0;
            isInside = true;
        } else if (quote == 0 && (c == ' ' || c == '\t' || c == '\n' || c == '\r')) {
            if (isInside) arguments.push_back(std::move(current));
            current.clear();
            isInside = false;
        } else {
            current += c;
            isInside = true;
        }
    }
    if (quote != 0) return std::nullopt;
    if (isInside) arguments.push_back(std::move(current));
    return arguments;
}

/// Whether the text begins with a scheme of at least two letters, so that a drive is none.
bool IsAddress(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || colon < 2) return false;
    const std::string_view scheme = text.substr(0, colon);
    const auto isSchemeChar = [](unsigned char c) {
        return c < 0x80 && (std::isalnum(c) != 0 || c == '+' || c == '-' || c == '.');
    };
    return std::isalpha(static_cast<unsigned char>(scheme[0])) != 0 &&
           std::ranges::all_of(scheme, isSchemeChar);
}

/// The executable file of that name in the folders of $PATH. Relative folders, which depend on the working directory, do not count.
std::optional<std::string> FindInPath(const std::string& name) {
    const char* const variable = std::getenv("PATH");
    std::string_view rest = variable == nullptr ? "/usr/local/bin:/usr/bin:/bin" : variable;
    while (!rest.empty()) {
        const std::string_view folder = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(folder.size() + 1, rest.size()));
        const std::string path = std::string(folder) + "/" + name;
        struct stat facts {};
        const bool isFile = stat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode);
        if (folder.starts_with('/') && isFile && access(path.c_str(), X_OK) == 0) return path;
    }
    return std::nullopt;
}

enum class TKind { Program, Document };

/// What is to be started, in the form for the system; nothing for a path that has none.
std::optional<std::pair<TKind, std::string>> Recognise(StringView file) {
    const std::string text = ToUtf8(file);
    if (text.empty() || text.find('\0') != std::string::npos) return std::nullopt;
    if (IsAddress(text)) return std::pair(TKind::Document, text);
    if (file.find_first_of(u"\\/:") == StringView::npos)
        if (const auto found = FindInPath(text)) return std::pair(TKind::Program, *found);
    String reason;
    const auto native = TryToNativePath(file, reason);
    struct stat facts {};
    if (!native || stat(native->c_str(), &facts) != 0) return std::nullopt;
    const bool isProgram = S_ISREG(facts.st_mode) && access(native->c_str(), X_OK) == 0;
    // A relative path must neither look like an option nor be looked for in $PATH.
    const std::string path = native->starts_with('/') ? *native : "./" + *native;
    return std::pair(isProgram ? TKind::Program : TKind::Document, path);
}

[[noreturn]] void EndWithReport(int report, int error) {
    const ssize_t written = write(report, &error, sizeof error);
    _exit(written < 0 ? 126 : 127);
}

/// In the child: becomes the program, or reports the reason.
[[noreturn]] void Become(char* const* arguments, int report) {
    setsid();
    const int null = open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (null >= 0) dup2(null, STDIN_FILENO);
    // What this process ignores or has blocked is no affair of the program.
    for (const int number : {SIGPIPE, SIGXFSZ}) static_cast<void>(signal(number, SIG_DFL));
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    execv(arguments[0], arguments);
    EndWithReport(report, errno);
}

/// Starts a program, given by its path, as a grandchild, whose end nobody has to wait for. Returns 0 or the system's reason.
int Start(TArguments arguments) {
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    int pipe[2];
    if (pipe2(pipe, O_CLOEXEC) != 0) return errno;
    const pid_t child = fork();
    if (child == 0) {
        const pid_t grandchild = fork();
        if (grandchild == 0) Become(pointers.data(), pipe[1]);
        if (grandchild < 0) EndWithReport(pipe[1], errno);
        _exit(0);
    }
    close(pipe[1]);
    int error = child < 0 ? errno : 0;
    // The pipe closes without a report once the program has started.
    while (child > 0 && read(pipe[0], &error, sizeof error) < 0 && errno == EINTR) {
    }
    close(pipe[0]);
    while (child > 0 && waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    return error;
}

bool StartWith(const char* opener, TArguments arguments) {
    const auto path = FindInPath(opener);
    if (!path) return false;
    arguments.insert(arguments.begin(), *path);
    return Start(std::move(arguments)) == 0;
}

}  // namespace

bool ShellExecute(StringView operation, StringView file, StringView parameters) {
    const bool isAdmin = SameText(operation, u"runas");
    if (!isAdmin && !operation.empty() && !SameText(operation, u"open")) return false;
    const auto target = Recognise(file);
    const auto split = SplitParameters(ToUtf8(parameters));
    if (!target || !split) return false;
    const bool isDocument = target->first == TKind::Document;
    if (isDocument && (isAdmin || !split->empty())) return false;
    TArguments arguments = {target->second};
    arguments.insert(arguments.end(), split->begin(), split->end());
    if (isDocument) return StartWith("xdg-open", std::move(arguments));
    if (isAdmin) return StartWith("pkexec", std::move(arguments));
    const int error = Start(arguments);
    // Where every file counts as executable, as on some file systems, one without a program in it is a document.
    return error == ENOEXEC && split->empty() ? StartWith("xdg-open", {target->second}) : error == 0;
}

}  // namespace Varnholt
