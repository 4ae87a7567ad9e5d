#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <new>
#include <numeric>
#include <utility>
#include <vector>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Tools/varnholt/CalcCommand.h"
#include "Tools/varnholt/ConfigCommand.h"
#include "Tools/varnholt/FetchCommand.h"
#include "Tools/varnholt/FoldersCommand.h"
#include "Tools/varnholt/Output.h"
#include "Tools/varnholt/PackCommand.h"
#include "Tools/varnholt/PlotCommand.h"
#include "Tools/varnholt/Process.h"
#include "Tools/varnholt/ProgramLog.h"
#include "Tools/varnholt/ProxyCommand.h"
#include "Tools/varnholt/ReportCommand.h"
#include "Tools/varnholt/TableCommand.h"
#include "Tools/varnholt/UnpackCommand.h"
#include "Tools/varnholt/VersionCommand.h"

/// The command line of VarnholtLib. Each subcommand reads its arguments and does its work in a source of its
/// own. Exit status: 0 done, 1 the library's message on standard error, 2 wrong usage.
namespace Varnholt::Tool {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

/// The number of letters to insert, delete or replace to make one word the other (Levenshtein 1966).
std::size_t EditDistance(const std::string& from, const std::string& to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

/// A hint at the name that is most like the one given, or nothing if less than half of it is.
std::string NearestHint(const std::string& given, const std::vector<std::string>& names) {
    const auto withoutDashes = [](const std::string& text) {
        return text.substr(std::min(text.find_first_not_of('-'), text.size()));
    };
    std::string nearest;
    std::size_t least = withoutDashes(given).size() / 2 + 1;
    for (const std::string& name : names) {
        const std::size_t distance = EditDistance(withoutDashes(given), withoutDashes(name));
        if (distance < least) nearest = name;
        least = std::min(least, distance);
    }
    return nearest.empty() ? "" : "; the nearest is " + nearest;
}

/// Bytes that are not UTF-8 would be replaced, and another file be read or written. Raises CLI::ValidationError.
void CheckEncoding(int argc, const char* const* argv) {
    for (int i = 1; i < argc; ++i) {
        if (ToUtf8(FromUtf8(argv[i])) == argv[i]) continue;
        throw CLI::ValidationError("Argument " + std::to_string(i) + " is not valid UTF-8");
    }
}

std::vector<std::string> CommandNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(command->get_name());
    }
    return names;
}

/// The argument after the log, if it is neither an option nor a command, raises CLI::ValidationError.
void CheckCommand(const CLI::App& app, int argc, const char* const* argv) {
    const int at = ReadLogArgument(argc, argv).Next;
    if (argc <= at || argv[at][0] == '-') return;
    const std::string given = argv[at];
    const std::vector<std::string> names = CommandNames(app);
    if (std::ranges::find(names, given) != names.end()) return;
    throw CLI::ValidationError("\"" + given + "\" is not a command" + NearestHint(given, names));
}

/// Raises CLI::ValidationError if the arguments held no command.
void RequireCommand(const CLI::App& app) {
    if (!app.get_subcommands().empty()) return;
    std::string list;
    const std::vector<std::string> names = CommandNames(app);
    for (const std::string& name : names) {
        list += (list.empty() ? "" : name == names.back() ? " or " : ", ") + name;
    }
    throw CLI::ValidationError("A command is required: " + list);
}

/// A hint at the option that was meant by an unknown one.
std::string OptionHint(const CLI::App& command) {
    const std::vector<std::string> unknown = command.remaining();
    const auto given =
        std::ranges::find_if(unknown, [](const std::string& text) { return text.starts_with("--"); });
    if (given == unknown.end()) return "";
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options()) names.push_back(option->get_name());
    return NearestHint(*given, names);
}

void Fail(StringView message) {
    LogError(message);
    PrintMessage(message);
}

int ReportUsage(const CLI::App& app, const CLI::ParseError& usage) {
    const std::vector<CLI::App*> commands = app.get_subcommands();
    const CLI::App& command = commands.empty() ? app : *commands.front();
    Fail(FromUtf8(usage.what() + OptionHint(command)));
    const std::string name = commands.empty() ? "" : " " + command.get_name();
    std::fprintf(stderr, "Try 'varnholt%s --help'.\n", name.c_str());
    return kWrongUsage;
}

/// The log is opened as soon as the arguments can be read.
int RunCommand(int argc, char** argv, std::shared_ptr<TProgramLog>& log) {
    CLI::App app("Climate-data analysis with VarnholtLib", "varnholt");
    app.require_subcommand(0, 1);
    app.set_version_flag("--version", "varnholt " VARNHOLT_VERSION, "Print the version and exit");
    app.add_option("--log", "Keep a log of this name; must be the first argument")
        ->type_name("NAME")
        ->expected(1);
    AddCalcCommand(app);
    AddConfigCommand(app);
    AddFetchCommand(app);
    AddFoldersCommand(app);
    AddPackCommand(app);
    AddPlotCommand(app);
    AddProxyCommand(app);
    AddReportCommand(app);
    AddTableCommand(app);
    AddUnpackCommands(app);
    AddVersionCommand(app);
    try {
        CheckEncoding(argc, argv);
        log = OpenProgramLog(argc, argv);
        CheckCommand(app, argc, argv);
        app.parse(argc, argv);
        RequireCommand(app);
    } catch (const CLI::CallForHelp&) {
        Print(FromUtf8(app.help()));
    } catch (const CLI::CallForVersion& version) {
        PrintLine(FromUtf8(version.what()));
    } catch (const CLI::ParseError& usage) {
        return ReportUsage(app, usage);
    }
    FlushOutput();
    return kDone;
}

/// The message, with that of the cause, if there is one, in brackets.
String MessageOf(const Exception& failure) {
    try {
        std::rethrow_if_nested(failure);
    } catch (const Exception& cause) {
        return Format(u"%s (%s)", {failure.GetMessage(), MessageOf(cause)});
    }
    return failure.GetMessage();
}

/// Raises only when memory is exhausted.
int RunAndReport(int argc, char** argv, std::shared_ptr<TProgramLog>& log) {
    try {
        return RunCommand(argc, argv, log);
    } catch (const EOutputClosed& failure) {
        LogError(failure.GetMessage());
        EndByBrokenPipe();
        PrintMessage(failure.GetMessage());
    } catch (const Exception& failure) {
        std::fflush(stdout);
        Fail(MessageOf(failure));
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& failure) {
        std::fflush(stdout);
        Fail(FromUtf8(failure.what()));
    }
    return kFailed;
}

/// The same, with the exit status in the log.
int RunWithLog(int argc, char** argv) {
    std::shared_ptr<TProgramLog> log;
    const int status = RunAndReport(argc, argv, log);
    if (log) log->Log(u"Exit status: %d", {status});
    return status;
}

}  // namespace
}  // namespace Varnholt::Tool

int main(int argc, char** argv) {
    Varnholt::Tool::PrepareProcess();
    try {
        return Varnholt::Tool::RunWithLog(argc, argv);
    } catch (...) {
        std::fflush(stdout);
        Varnholt::Tool::ReportOutOfMemory();
    }
    return 1;
}
