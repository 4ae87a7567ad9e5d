#include <CLI/CLI.hpp>
#include <cstdio>

#include "Platform/Runtime/Exceptions.h"
#include "Tools/varnholt/CalcCommand.h"
#include "Tools/varnholt/Output.h"
#include "Tools/varnholt/ReportCommand.h"
#include "Tools/varnholt/TableCommand.h"

/// The command line of VarnholtLib. Each subcommand reads its arguments here and does its work in a source of
/// its own. Exit status: 0 done, 1 the library's message on standard error, 2 wrong usage.
namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Climate-data analysis with VarnholtLib", "varnholt");
    app.require_subcommand(1);
    Varnholt::Tool::AddCalcCommand(app);
    Varnholt::Tool::AddReportCommand(app);
    Varnholt::Tool::AddTableCommand(app);
    try {
        app.parse(argc, argv);
        return 0;
    } catch (const CLI::ParseError& usage) {
        return app.exit(usage) == 0 ? 0 : kWrongUsage;
    } catch (const Varnholt::Exception& failure) {
        std::fflush(stdout);
        Varnholt::Tool::Warn(failure.GetMessage());
    } catch (const std::exception& failure) {  // such as memory that is short
        std::fflush(stdout);
        Varnholt::Tool::Warn(Varnholt::FromUtf8(failure.what()));
    }
    return kFailed;
}
