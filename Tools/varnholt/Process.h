#pragma once

/// What the program settles with the system before it does anything else. From its load on, std::terminate prints
/// a line, and exits with status 1 if an allocation failed.
namespace Varnholt::Tool {

/// Call it first in main:
/// - Standard input, output and error are made to exist, so that no file of a command takes their place; what
///   was closed fails when it is used.
/// - SIGHUP, SIGINT and SIGTERM remove the drafts of unfinished files and then end the process as usual, unless
///   they were ignored before (as under nohup).
/// - A write to a closed pipe or beyond the file-size limit fails, as other writes do, instead of ending the
///   process.
void PrepareProcess();

/// Ends the process by SIGPIPE, as a filter does whose reader has left. Returns if that signal was ignored
/// before PrepareProcess.
void EndByBrokenPipe();

/// Prints "varnholt: Out of memory" on standard error without allocating anything.
void ReportOutOfMemory() noexcept;

}  // namespace Varnholt::Tool
