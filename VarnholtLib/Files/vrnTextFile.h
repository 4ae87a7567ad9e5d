#pragma once

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/TextStreams.h"

/// Reading text files by line, and writing them with an indent.
///
///     TTextFileReader reader(u"C:\\data\\rain.txt");
///     while (!reader.GetEndOfFile()) Use(reader.ReadLine());
///
///     TTextFileWriter writer(u"C:\\data\\tree.txt");
///     writer.WriteLine(u"Stations");
///     writer.Indent();
///     writer.WriteLineFmt(u"%s: %d m", {name, height});       // two blanks before it
///     writer.UnIndent();
///     writer.GetStream().Close();                             // raises if the text did not reach the file
///
/// The indent is one value for all writers of the process and is not reset by any of them, so nested routines can
/// indent each other's output; each Indent needs its UnIndent, also after a failure.
///
/// Errors are those of TextStreams.h: EFOpenError, EFCreateError, EReadError, EWriteError. A destructor cannot report
/// that the rest of the text was not written; close the stream before.
///
/// Threads: a reader or writer serves one thread at a time, and all writers that indent the same one.
namespace Varnholt {

class VARNHOLT_EXPORT TTextFileReader {
public:
    /// Opens a file, which others may read and write at the same time. A byte-order mark decides the encoding;
    /// without one it is UTF-8, and bytes that are not valid become U+FFFD.
    explicit TTextFileReader(StringView filename) : FReader(filename) {}
    /// The same from the stream's current position. The stream must outlive the reader.
    explicit TTextFileReader(TStream& stream) : FReader(stream) {}

    [[nodiscard]] bool GetEndOfFile() { return FReader.GetEndOfStream(); }
    /// The next line without its line end, which is CR, LF or CR LF; empty at the end of the text.
    String ReadLine() { return FReader.ReadLine(); }
    [[nodiscard]] TStreamReader& GetStream() noexcept { return FReader; }

private:
    TStreamReader FReader;
};

class VARNHOLT_EXPORT TTextFileWriter {
public:
    /// Creates a file or replaces the content of an existing one. No byte-order mark is written. Without an
    /// encoding it is UTF-8.
    explicit TTextFileWriter(StringView filename, const TEncoding& encoding = TEncoding::Utf8())
        : FWriter(filename, encoding) {}
    /// The same at the stream's current position. The stream must outlive the writer.
    explicit TTextFileWriter(TStream& stream, const TEncoding& encoding = TEncoding::Utf8())
        : FWriter(stream, encoding) {}

    /// Adds one level to the indent, for all writers.
    static void Indent() noexcept;
    /// Takes one level off; nothing at level 0.
    static void UnIndent() noexcept;
    /// Two blanks for each level.
    [[nodiscard]] static String GetIndentString();

    /// Writes the indent, the text and CR LF.
    void WriteLine(StringView line);
    /// WriteLine of the text that Format makes; raises EConvertError as that.
    void WriteLineFmt(StringView format, std::initializer_list<TFormatArg> values);
    /// Writes the text as it is.
    void Write(StringView data) { FWriter.Write(data); }
    /// Write of the text that Format makes.
    void WriteFmt(StringView format, std::initializer_list<TFormatArg> values);
    [[nodiscard]] TStreamWriter& GetStream() noexcept { return FWriter; }

private:
    TStreamWriter FWriter;
};

}  // namespace Varnholt
