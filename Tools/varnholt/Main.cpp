#include <CLI/CLI.hpp>
#include <iostream>

#include "Platform/Runtime/Exceptions.h"
#include "Tools/varnholt/CalcCommand.h"

/// The command line of VarnholtLib. Each subcommand reads its arguments here and does its work in a source of its
/// own. Exit status: 0 done, 1 the library's message on standard error, 2 wrong usage.
namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("Climate-data analysis with VarnholtLib", "varnholt");
    app.require_subcommand(1);
    Varnholt::Tool::AddCalcCommand(app);
    try {
        app.parse(argc, argv);
        return 0;
    } catch (const CLI::ParseError& usage) {
        return app.exit(usage) == 0 ? 0 : kWrongUsage;
    } catch (const Varnholt::Exception& failure) {
        std::cout.flush();
        std::cerr << "varnholt: " << failure.what() << '\n';
    } catch (const std::bad_alloc&) {
        std::cerr << "varnholt: Out of memory\n";
    }
    return kFailed;
}
