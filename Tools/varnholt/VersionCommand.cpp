#include "Tools/varnholt/VersionCommand.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "Platform/Runtime/Format.h"
#include "Tools/varnholt/Output.h"
#include "VarnholtLib/Services/vrnVersionNumber.h"

namespace Varnholt::Tool {
namespace {

void PrintVersion(const std::string& file) {
    const String path = FromUtf8(file), version = path.empty() ? String() : GetVersion(path);
    if (version.empty()) throw Exception(Format(u"File \"%s\" has no version", {path}));
    PrintLine(version);
}

}  // namespace

void AddVersionCommand(CLI::App& app) {
    const auto file = std::make_shared<std::string>();
    CLI::App* const version =
        app.add_subcommand("version", "Print the version that a program or library carries");
    version->add_option("file", *file, "Program or library, for Linux or Windows")->required()->type_name("");
    version->callback([file] { PrintVersion(*file); });
}

}  // namespace Varnholt::Tool
