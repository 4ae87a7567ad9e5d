#include "Tools/varnholt/InputOptions.h"

#include <CLI/CLI.hpp>

namespace Varnholt::Tool {

const TEncoding& TInputOptions::GetEncoding() const {
    try {
        return TEncoding::ForName(FromUtf8(Encoding));
    } catch (const EEncodingError& failure) {
        throw CLI::ValidationError("--encoding", failure.what());
    }
}

TMissingValues TInputOptions::GetMissingValues() const {
    return TMissingValues(FromUtf8(Missing));
}

void AddInputOptions(CLI::App& command, TInputOptions& options, CLI::Option* file) {
    CLI::Option* encoding = command.add_option(
        "--encoding", options.Encoding,
        "The input's encoding by its ICU name, such as windows-1252, if it is not UTF-8 and "
        "has no byte-order mark");
    CLI::Option* missing =
        command.add_option("--missing", options.Missing,
                           "Further codes for missing values, numbers or texts with commas "
                           "between, such as -9999,M");
    encoding->type_name("NAME");
    missing->type_name("CODES");
    if (file == nullptr) return;
    encoding->needs(file);
    missing->needs(file);
}

}  // namespace Varnholt::Tool
