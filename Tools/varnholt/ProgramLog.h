#pragma once

#include <optional>

#include "VarnholtLib/Services/vrnLog.h"

namespace Varnholt::Tool {

/// The log of `varnholt --log NAME COMMAND ...`.
class TProgramLog : public TBaseLog {
public:
    explicit TProgramLog(StringView name) : FName(name) {}
    [[nodiscard]] String GetLogName() const override { return FName; }

private:
    String FName;
};

/// What is said of a log before the command.
struct TLogArgument {
    std::optional<String> Name;  ///< none without --log and a name
    int Next = 1;                ///< position of the argument after it
};

[[nodiscard]] TLogArgument ReadLogArgument(int argc, const char* const* argv);

/// The log of the arguments, enabled, with the arguments as its first line; none if they name none. It is the default
/// log as long as the result exists. A log whose file cannot be created is reported on standard error. Raises
/// CLI::ValidationError for a name that cannot be part of a file name.
[[nodiscard]] std::shared_ptr<TProgramLog> OpenProgramLog(int argc, const char* const* argv);

}  // namespace Varnholt::Tool
