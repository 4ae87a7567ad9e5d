#pragma once

#include <cstdint>
#include <vector>

#include "Platform/Runtime/Encoding.h"
#include "Platform/Runtime/Exceptions.h"

/// Reading delimited text files field by field. A file is loaded whole; a cursor walks over its lines and fields.
///
///     TTextFileParser parser(u"C:\\data\\rain.txt", u';');
///     while (true) {
///         while (!parser.GetEndOfLine()) Use(parser.GetNextItem());
///         if (parser.GetEndOfFile()) break;
///         parser.Next();
///     }
///
/// Each line is split as by SplitStringEx (vrnString.h) with double quotes and trimming: quotes protect separators
/// and are removed, blanks around a field are removed, and an empty line has no fields. A quote does not protect a
/// line end. CR, LF and CR LF end a line. Lines and fields count from 0.
///
/// A line is split when it is read. In memory a file takes two bytes for each character, and eight for each line.
///
/// With an enabled default log (vrnLog.h), loading is logged, and GotoRecord if the log is verbose.
///
/// Threads: a parser serves one thread at a time.
namespace Varnholt {

/// A step of the cursor to a line or field that does not exist.
class VARNHOLT_EXPORT EParserError : public Exception {
public:
    using Exception::Exception;
};

class VARNHOLT_EXPORT TTextFileParser {
public:
    /// Loads a file, with the cursor at the first field of the first line. A byte-order mark overrides the
    /// encoding; bytes that are not valid become U+FFFD. Raises EFOpenError or EReadError.
    TTextFileParser(StringView filename, Char parseChar, const TEncoding& encoding = TEncoding::Utf8());

    /// The number of lines.
    [[nodiscard]] std::int32_t GetCount() const noexcept {
        return static_cast<std::int32_t>(FLineEnds.size());
    }
    /// All fields of a line. Raises EListError.
    [[nodiscard]] std::vector<String> GetItemArray(std::int32_t index) const;
    /// Whether the cursor is on the last line, which may not have been read yet, or there are no lines.
    [[nodiscard]] bool GetEndOfFile() const noexcept { return GetCount() - 1 <= FEnumLine; }
    /// Whether all fields of the cursor's line have been returned. Raises EListError if there are no lines.
    [[nodiscard]] bool GetEndOfLine() const;
    /// The next field of the cursor's line. Raises EParserError `Item does not contain expected number of
    /// entries` if there is none, and EListError if there are no lines.
    String GetNextItem();
    /// Moves the cursor to the beginning of the next line and returns its number of fields. Raises EParserError
    /// `An item doesn't exist at this position` on the last line; the cursor stays.
    std::int32_t Next();
    /// Moves the cursor to the beginning of a line. Raises as Next; 0 does nothing if there are no lines.
    void GotoRecord(std::int32_t reccordNo);

private:
    void MoveToLine(std::int32_t line);
    [[nodiscard]] StringView GetLine(std::int32_t index) const;
    const std::vector<String>& GetFields() const;

    Char FParseChar;
    String FText;                        // the lines without their ends
    std::vector<std::size_t> FLineEnds;  // where each line ends in FText
    std::int32_t FEnumLine = 0;
    std::size_t FEnumItem = 0;
    mutable std::vector<String> FFields;  // of the line FSplitLine
    mutable std::int32_t FSplitLine = -1;
};

}  // namespace Varnholt
