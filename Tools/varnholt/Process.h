#pragma once

#include "Platform/Runtime/Types.h"

/// How the program handles signals, closed standard streams and exhausted memory. From the time it is loaded,
/// std::terminate removes drafts and prints a line; it exits with status 1 if an allocation failed and aborts
/// otherwise.
namespace Varnholt::Tool {

/// Must be called first in main:
/// - A closed standard input, output or error is replaced by a descriptor on which each read or write fails, so
///   that no file of a command receives its number.
/// - SIGHUP, SIGINT, SIGQUIT and SIGTERM remove the drafts of unfinished files and then end the process by default
///   action, unless they were ignored before (as under nohup).
/// - A write to a closed pipe or beyond the file-size limit returns an error instead of ending the process.
void PrepareProcess();

/// A line from standard input without its end, for a secret. On a terminal the prompt is printed on standard error,
/// and what is typed is invisible; a signal that ends the process makes it visible again. Raises Exception `No
/// password was given` at the end of the input, and `The password is too long` beyond 1,000 bytes.
[[nodiscard]] String ReadPassword(StringView prompt);

/// Ends the process by SIGPIPE, as is usual for a filter whose output pipe is closed. Returns if that signal was ignored
/// before PrepareProcess.
void EndByBrokenPipe();

/// Prints "varnholt: Out of memory" on standard error without allocating anything.
void ReportOutOfMemory() noexcept;

}  // namespace Varnholt::Tool
