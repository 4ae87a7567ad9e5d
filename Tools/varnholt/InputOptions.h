#pragma once

#include <string>

#include "Platform/Runtime/Encoding.h"
#include "VarnholtLib/Numerics/vrnMissingValues.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace Varnholt::Tool {

/// The options of every command that reads CSV files.
///
///     TInputOptions input;
///     AddInputOptions(command, input);
///     ...                                    // in the command's callback
///     TCsvInput file(path, input.GetEncoding());
///     const TMissingValues missing = input.GetMissingValues();
struct TInputOptions {
    std::string Encoding = "UTF-8";
    std::string Missing;

    /// Raises CLI::ValidationError (wrong usage) for an unknown name.
    [[nodiscard]] const TEncoding& GetEncoding() const;
    [[nodiscard]] TMissingValues GetMissingValues() const;
};

/// Adds --encoding and --missing, which need `file` unless that is a null pointer. The options must live as
/// long as the command.
void AddInputOptions(CLI::App& command, TInputOptions& options, CLI::Option* file = nullptr);

}  // namespace Varnholt::Tool
