#pragma once

#include <string>

#include "Platform/Runtime/Types.h"

namespace Varnholt::Tool {

/// Prints a line on standard output, in UTF-8. Raises EWriteError if it can not be written, as on a full
/// disk.
void PrintLine(StringView line);

/// Hands everything printed so far to the system; raises as PrintLine does.
void FlushOutput();

/// The text with its control characters, line ends among them, made blanks.
[[nodiscard]] String OnOneLine(StringView text);

/// Prints OnOneLine "varnholt: MESSAGE" on standard error.
void Warn(StringView message);

/// How far long work has come, on a terminal's standard error; silent anywhere else.
class TProgress {
public:
    TProgress();
    ~TProgress();
    TProgress(const TProgress&) = delete;
    TProgress& operator=(const TProgress&) = delete;

    [[nodiscard]] bool IsVisible() const { return FVisible; }
    /// How much is done, and the size of the whole work, in any unit.
    void Show(std::int64_t done, std::int64_t whole);

private:
    bool FVisible;
    std::int64_t FShown = -1;  // percent
};

}  // namespace Varnholt::Tool
