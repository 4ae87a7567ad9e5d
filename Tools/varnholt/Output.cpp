#include "Tools/varnholt/Output.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "Platform/Runtime/Streams.h"
#include "VarnholtLib/Services/vrnLog.h"

namespace Varnholt::Tool {
namespace {

bool hasPrinted = false;

[[noreturn]] void RaiseWriteError(int error) {
    const String message = u"Cannot write standard output: " + SystemReason(error);
    if (error == EPIPE) throw EOutputClosed(message);
    throw EWriteError(message);
}

}  // namespace

void Print(StringView text) {
    PrintBytes(BytesOf(ToUtf8(text)));
}

void PrintBytes(std::span<const std::byte> bytes) {
    hasPrinted = true;
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size()) RaiseWriteError(errno);
}

void PrintLine(StringView line) {
    std::string bytes = ToUtf8(line);
    bytes += '\n';
    PrintBytes(BytesOf(bytes));
}

void FlushOutput() {
    if (std::fflush(stdout) != 0) RaiseWriteError(errno);
}

String OnOneLine(StringView text) {
    String line(text);
    std::ranges::replace_if(
        line, [](Char c) { return c < u' ' || (c >= 0x7F && c <= 0x9F); }, u' ');
    return line;
}

void PrintMessage(StringView message) {
    std::fprintf(stderr, "varnholt: %s\n", ToUtf8(OnOneLine(message)).c_str());
}

void Warn(StringView message) {
    PrintMessage(message);
    if (HasDefaultLog() && DefaultLog()->GetEnabled()) DefaultLog()->Warning(message);
}

void LogError(StringView message) {
    if (!HasDefaultLog() || !DefaultLog()->GetEnabled()) return;
    DefaultLog()->Error(u"%s", {message});
    DefaultLog()->Flush();
}

TProgress::TProgress() : FVisible(isatty(STDERR_FILENO) == 1) {}

TProgress::~TProgress() {
    if (FShown >= 0) std::fputs("\r      \r", stderr);
}

void TProgress::Show(std::int64_t done, std::int64_t whole) {
    const std::int64_t percent =
        std::clamp<std::int64_t>(done * 100 / std::max<std::int64_t>(whole, 1), 0, 100);
    const bool isAmongOutput = hasPrinted && isatty(STDOUT_FILENO) == 1;
    if (!FVisible || percent == FShown || isAmongOutput) return;
    FShown = percent;
    std::fprintf(stderr, "\r%3d %%", static_cast<int>(percent));
}

}  // namespace Varnholt::Tool
