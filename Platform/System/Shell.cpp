#include "Platform/System/Shell.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <optional>
#include <string>
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

enum class TKind { Program, Document };

/// What is to be started, in the form for the system; nothing for a path that has none.
std::optional<std::pair<TKind, std::string>> Recognise(StringView file) {
    const std::string text = ToUtf8(file);
    if (text.empty() || text.find('\0') != std::string::npos) return std::nullopt;
    if (IsAddress(text)) return std::pair(TKind::Document, text);
    if (file.find_first_of(u"\\/:") == StringView::npos && access(text.c_str(), F_OK) != 0)
        return std::pair(TKind::Program, text);  // looked for in $PATH
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
    execvp(arguments[0], arguments);
    EndWithReport(report, errno);
}

/// Starts a program as a grandchild, whose end nobody has to wait for.
bool Start(TArguments arguments) {
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    int pipe[2];
    if (pipe2(pipe, O_CLOEXEC) != 0) return false;
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
    return error == 0;
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
    TArguments arguments;
    if (isDocument || isAdmin) arguments.emplace_back(isDocument ? "xdg-open" : "pkexec");
    arguments.push_back(target->second);
    arguments.insert(arguments.end(), split->begin(), split->end());
    return Start(std::move(arguments));
}

}  // namespace Varnholt
