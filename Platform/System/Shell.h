#pragma once

#include "Platform/Runtime/Types.h"

/// Starting programs, and opening documents and addresses with the program that the user has chosen for them.
///
///     ShellExecute(u"open", u"https://example.org/", u"");            // in the browser
///     ShellExecute(u"open", u"C:\\home\\ann\\rain.csv", u"");         // in the spreadsheet
///     ShellExecute(u"open", u"gnuplot", u"-p 'two words.gp'");        // a program, found in $PATH
///     ShellExecute(u"runas", u"C:\\usr\\sbin\\setup", u"--all");      // after the system has asked for a password
///
/// Threads: the function may be called on any thread.
namespace Varnholt {

/// Starts a program and does not wait for it. Returns whether that succeeded; raises nothing.
///
/// - "open" or an empty operation: an address (`scheme:...`), a folder, or a file that is not executable is opened by
///   xdg-open. Anything else is a program or script, which is started by itself; a name without a folder is looked for in the
///   absolute folders of $PATH first, and then in the working directory. An executable file that the system cannot run, as a text
///   without an interpreter line, is opened by xdg-open.
/// - "runas": the same for programs, through pkexec, which asks for a password.
/// - Any other operation fails.
///
/// The parameters are split as a shell does: at blanks, tabs and line ends; single quotes protect all, double
/// quotes all but `\"`, `\\`, and a backslash the next character. Nothing is expanded, and no command interpreter
/// is involved. A quote that is not closed fails. Parameters of a document or address fail, too.
///
/// The program has no standard input and runs in a session of its own, so it outlives its caller.
VARNHOLT_EXPORT bool ShellExecute(StringView operation, StringView file, StringView parameters);

}  // namespace Varnholt
