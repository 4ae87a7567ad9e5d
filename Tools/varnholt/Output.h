#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "Platform/Runtime/Exceptions.h"

namespace Varnholt::Tool {

/// The reader of standard output has closed it, as `head` does once it has its lines.
class EOutputClosed : public EWriteError {
public:
    using EWriteError::EWriteError;
};

/// Prints a text on standard output, in UTF-8. Raises EWriteError "Cannot write standard output: REASON", as on
/// a full disk, and EOutputClosed.
void Print(StringView text);

/// The same for bytes as they are.
void PrintBytes(std::span<const std::byte> bytes);

/// Prints the text and a line end.
void PrintLine(StringView line);

/// Hands everything printed so far to the system; raises as Print does.
void FlushOutput();

/// The text with its control characters, line ends among them, replaced by blanks.
[[nodiscard]] String OnOneLine(StringView text);

/// Prints OnOneLine "varnholt: MESSAGE" on standard error.
void PrintMessage(StringView message);

/// PrintMessage, and a warning in the log, if there is one.
void Warn(StringView message);

/// An error in the log, if there is one. It is handed to the system.
void LogError(StringView message);

/// The progress of long work on a terminal's standard error. Silent anywhere else, and once something has been
/// printed on a terminal.
class TProgress {
public:
    TProgress();
    ~TProgress();
    TProgress(const TProgress&) = delete;
    TProgress& operator=(const TProgress&) = delete;

    [[nodiscard]] bool IsVisible() const { return FVisible; }
    /// The work done and the size of the whole work, in any unit.
    void Show(std::int64_t done, std::int64_t whole);

private:
    bool FVisible;
    std::int64_t FShown = -1;  // percent
};

}  // namespace Varnholt::Tool
