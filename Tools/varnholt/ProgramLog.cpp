#include "Tools/varnholt/ProgramLog.h"

#include <CLI/CLI.hpp>
#include <string_view>

#include "Platform/Runtime/Paths.h"
#include "Tools/varnholt/Output.h"

namespace Varnholt::Tool {
namespace {

void CheckName(const String& name) {
    const bool isValid =
        !name.empty() && name.find_first_of(u"/\\") == String::npos && OnOneLine(name) == name;
    if (isValid) return;
    throw CLI::ValidationError("--log", "\"" + ToUtf8(OnOneLine(name)) + "\" cannot be part of a file name");
}

}  // namespace

TLogArgument ReadLogArgument(int argc, const char* const* argv) {
    constexpr std::string_view kOption = "--log";
    const std::string_view first = argc > 1 ? argv[1] : "";
    if (first == kOption && argc > 2 && argv[2][0] != '-') return {FromUtf8(argv[2]), 3};
    if (first.starts_with(kOption) && first.substr(kOption.size()).starts_with('=')) {
        return {FromUtf8(first.substr(kOption.size() + 1)), 2};
    }
    return {};
}

std::shared_ptr<TProgramLog> OpenProgramLog(int argc, const char* const* argv) {
    const TLogArgument argument = ReadLogArgument(argc, argv);
    if (!argument.Name) return nullptr;
    CheckName(*argument.Name);
    auto log = TBaseLog::Create<TProgramLog>(*argument.Name);
    if (!log->GetIsOpen()) Warn(u"Cannot create the log \"" + log->GetLogFileName() + u"\"");
    std::vector<String> arguments;
    for (int i = 1; i < argc; ++i) arguments.push_back(FromUtf8(argv[i]));
    log->Method(u"varnholt", arguments);
    log->SetEnabled(true);
    log->Flush();
    return log;
}

}  // namespace Varnholt::Tool
