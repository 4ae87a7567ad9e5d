#pragma once

#include <functional>
#include <span>
#include <vector>

#include "VarnholtBaseLib/Arrays.h"

/// Tables of text with a separator between the columns: CSV files as RFC 4180 describes them.
///
///     TCSVReader table = TCSVReader::FromFile(u"C:\\data\\stations.csv", u',');
///     TIntegerArray columns;
///     table.GetColumnIndexes({u"NAME", u"LON"}, columns);
///     String firstName = table.GetRows().at(1)[columns[0]];
///
/// and row by row, for a file of any size:
///
///     TStreamReader file(path, TEncoding::Utf8(), true);
///     TCSVRowReader reader(file);
///     std::vector<String> row;
///     while (reader.ReadRow(row)) Use(row, reader.GetLineNumber());
///
/// What is read: lines end with CR LF, LF or CR. A field that begins with a quote ends at its closing quote;
/// it may contain line ends and separators, and a doubled quote in it is one quote. Text between the closing
/// quote and the next separator is appended as it is. A quote elsewhere is an ordinary character. Blanks
/// belong to the field. Rows may differ in their number of fields. An empty line is skipped. A byte-order
/// mark at the start is not part of the table.
///
/// Uses Platform/Runtime/TextStreams.h.
///
/// Threads: a reader may be used by one thread at a time.
namespace Varnholt {

class TStreamReader;

/// Reads a table row by row, in memory that does not grow with the table.
class VARNHOLT_EXPORT TCSVRowReader {
public:
    /// Fills the span with the next characters of a text and returns their number; 0 at the end.
    using TSource = std::function<std::size_t(std::span<Char>)>;

    /// Reads from the current position of the stream reader, which must outlive this reader. A quote, CR or
    /// LF as separator raises EArgumentException "A quote or line end cannot separate columns".
    explicit TCSVRowReader(TStreamReader& text, Char separator = u',');
    explicit TCSVRowReader(TSource source, Char separator = u',');

    /// Reads the next row into row, whose strings are used again; false at the end of the text, with row
    /// empty. Raises EConvertError "The quote opened in line LINE is never closed" for a quoted field without
    /// its closing quote, and "The row in line LINE is longer than LENGTH characters" (see SetMaxRowLength);
    /// row is then not to be used, and further calls return false. Errors of the source pass through.
    bool ReadRow(std::vector<String>& row);

    /// The line, from 1, in which the row read last began. 0 before the first row.
    [[nodiscard]] std::int64_t GetLineNumber() const noexcept { return FRowLine; }
    /// The line, from 1, of the next character to be read. After an error of the source, such as bytes that
    /// are not valid in the encoding, it is the line of that error.
    [[nodiscard]] std::int64_t GetCurrentLine() const noexcept { return FLine; }
    /// The line end of the row read last: CR LF, LF or CR, or nothing where the text ended without one.
    [[nodiscard]] StringView GetRowEnd() const noexcept { return FRowEnd; }

    /// Sets the length of the longest row, so that a file without line ends cannot fill the memory. What
    /// counts is the code units of all fields, and 16 more for each field. At least 1, else
    /// EArgumentException.
    static constexpr std::int64_t kDefaultMaxRowLength = std::int64_t{1} << 26;
    void SetMaxRowLength(std::int64_t length);

private:
    bool Refill();
    bool HasMore() { return FPosition < FFilled || Refill(); }
    bool NextIs(Char c) { return HasMore() && FBuffer[FPosition] == c; }
    template <typename TStop>
    bool AppendUntil(TStop isStop, String& field);
    bool SkipEmptyLines();
    bool ReadField(String& field);
    void ReadQuoted(String& field);
    StringView TakeLineEnd();
    void CountLength(std::size_t length);
    [[noreturn]] void RaiseTooLong();

    TSource FSource;
    Char FSeparator;
    std::vector<Char> FBuffer;
    std::size_t FPosition = 0;  // of the next character in FBuffer
    std::size_t FFilled = 0;    // characters in FBuffer
    bool FAtStart = true;
    std::int64_t FLine = 1;
    std::int64_t FRowLine = 0;
    StringView FRowEnd;  // a literal
    std::size_t FRowLength = 0;
    std::size_t FMaxRowLength = kDefaultMaxRowLength;
};

/// A table in memory, with its header row first.
class VARNHOLT_EXPORT TCSVReader {
public:
    /// Reads a file in UTF-8, or in UTF-16 with a byte-order mark. Raises what opening and reading the
    /// file raises, EArgumentException for the separator as TCSVRowReader does, and for a quote that is never
    /// closed EConvertError "PATH: The quote opened in line LINE is never closed".
    [[nodiscard]] static TCSVReader FromFile(StringView path, Char separator);

    /// All rows in the order of the file; row 0 is the header. Empty for an empty file.
    [[nodiscard]] const std::vector<TStringArray>& GetRows() const noexcept { return FRows; }

    /// The 0-based position in the header of each name, in the order of the names. Names compare exactly, and
    /// of equal columns the first is taken. A name that the header does not hold raises EArgumentException
    /// "Column "NAME" not found", and then indexes is unchanged.
    void GetColumnIndexes(const TStringArray& names, TIntegerArray& indexes) const;

private:
    TCSVReader() = default;

    std::vector<TStringArray> FRows;
};

/// The text as one field of a row: in quotes, with its quotes doubled, where it holds the separator, a quote
/// or a line end, otherwise unchanged. A row of one empty field must be written as two quotes, since an empty
/// line is skipped.
[[nodiscard]] VARNHOLT_EXPORT String CsvField(StringView text, Char separator = u',');
/// The same, written after what the line holds already.
VARNHOLT_EXPORT void AppendCsvField(String& line, StringView text, Char separator = u',');

}  // namespace Varnholt
