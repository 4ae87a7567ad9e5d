#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>

#include "Platform/Runtime/Encoding.h"
#include "Platform/Runtime/Streams.h"
#include "Platform/Runtime/Types.h"

/// Reading and writing text files, by line or in pieces of any size.
///
///     TStreamReader reader(u"C:\\data\\rain.txt");
///     for (String line; reader.ReadLine(line);) Use(line);
///
///     TStreamWriter writer(u"C:\\data\\out.csv");
///     writer.WriteLine(u"Year,Rain");
///     writer.Close();                     // raises if the text did not reach the file
///
/// A reader or writer opens the file of a path and owns it, or works on a stream of the caller, which must
/// outlive it. A file is shared: others may read and write it at the same time.
///
/// Uses Streams.h and Encoding.h. Threads: a reader or writer may be used by one thread at a time.
namespace Varnholt {

/// Reads text. The encoding is that of the preamble before the text, if it has one, otherwise the given one.
/// With `detectPreamble` false it is always the given one, and only its own preamble is skipped.
/// Bytes that are not valid in the encoding become U+FFFD, or with ibRefuse raise EEncodingError as
/// TDecoder does: once all text before them has been read, and again at each further attempt. A line that
/// ends before them is still returned. All operations may raise EReadError.
class VARNHOLT_EXPORT TStreamReader {
public:
    static constexpr std::size_t kBufferSize = 1 << 16;

    /// Opens the file. Raises EFOpenError. The buffer size counts bytes; 0 raises EArgumentException.
    explicit TStreamReader(StringView path, const TEncoding& encoding = TEncoding::Utf8(),
                           bool detectPreamble = true, std::size_t bufferSize = kBufferSize,
                           TInvalidBytes invalid = ibReplace);
    /// Reads from the stream's current position. The stream's position may be ahead of the text returned.
    explicit TStreamReader(TStream& stream, const TEncoding& encoding = TEncoding::Utf8(),
                           bool detectPreamble = true, std::size_t bufferSize = kBufferSize,
                           TInvalidBytes invalid = ibReplace);
    ~TStreamReader();
    TStreamReader(const TStreamReader&) = delete;
    TStreamReader& operator=(const TStreamReader&) = delete;

    /// The next line without its line end: CR, LF or CR LF. A last line needs none. False at the end of the
    /// text, with an empty line. This is the fast form, as a reused line keeps its memory.
    bool ReadLine(String& line);
    /// The same; empty at the end of the text. GetEndOfStream distinguishes the end from an empty line.
    String ReadLine();
    /// The rest of the text.
    String ReadToEnd();
    /// Fills the chunk. Returns the number of code units; fewer than fit only at the end of the text or
    /// before invalid bytes.
    std::size_t Read(std::span<Char> chunk);
    /// The next code unit, without reading it; nothing at the end of the text.
    [[nodiscard]] std::optional<Char> Peek();
    /// True if all of the text has been read.
    [[nodiscard]] bool GetEndOfStream() { return !Peek().has_value(); }

    /// The encoding of the text. Reads the first bytes, if nothing has been read.
    [[nodiscard]] const TEncoding& GetEncoding();
    /// Whether the text begins with the preamble of its encoding. Reads the first bytes, if nothing has been
    /// read.
    [[nodiscard]] bool GetHasPreamble();
    /// The stream that is read from.
    [[nodiscard]] TStream& GetStream() noexcept { return *FStream; }

private:
    TStreamReader(std::unique_ptr<TStream> owned, TStream* stream, const TEncoding& encoding,
                  bool detectPreamble, std::size_t bufferSize, TInvalidBytes invalid);
    void Start();
    void Decode(std::string_view bytes, bool last);
    bool TryFill();
    bool Fill();

    std::unique_ptr<TStream> FOwned;
    TStream* FStream;
    const TEncoding* FEncoding;
    bool FDetectPreamble;
    TInvalidBytes FInvalid;
    std::unique_ptr<TDecoder> FDecoder;  // none before the first bytes are read
    std::string FBytes;
    String FText;  // decoded; from FPosition on not yet returned
    std::size_t FPosition = 0;
    bool FFinished = false;
    bool FHasPreamble = false;
    std::optional<EEncodingError> FFailure;  // raised after the text before the invalid bytes
};

/// Writes text through a buffer. No preamble is written unless WritePreamble is called. Any operation may
/// raise EWriteError; the text in the buffer is then lost and not written again.
/// After Close every operation but Close raises EInvalidOperation ("Text writer is closed").
class VARNHOLT_EXPORT TStreamWriter {
public:
    static constexpr std::size_t kBufferSize = 4096;

    /// Creates the file or replaces its content, or with `append` continues at its end. Raises EFCreateError,
    /// or EFOpenError with `append`. The buffer size counts bytes.
    explicit TStreamWriter(StringView path, const TEncoding& encoding = TEncoding::Utf8(),
                           std::size_t bufferSize = kBufferSize, bool append = false);
    /// Writes from the stream's current position.
    explicit TStreamWriter(TStream& stream, const TEncoding& encoding = TEncoding::Utf8(),
                           std::size_t bufferSize = kBufferSize);
    /// Writes the text in the buffer. It cannot report a failure: call Close before.
    ~TStreamWriter();
    TStreamWriter(const TStreamWriter&) = delete;
    TStreamWriter& operator=(const TStreamWriter&) = delete;

    /// Writes the text as it is.
    void Write(StringView text);
    /// Writes the text and a line end.
    void WriteLine(StringView text = {});
    /// Writes the encoding's preamble; belongs before any text of a new file.
    void WritePreamble();

    /// The line end: CR LF at first.
    [[nodiscard]] const String& GetNewLine() const noexcept { return FNewLine; }
    void SetNewLine(StringView newLine) { FNewLine = newLine; }

    /// Hands what is in the buffer to the stream. Half of a surrogate pair waits for the other half.
    void Flush();
    /// Flushes, and closes a file that the writer opened. Nothing happens if that has been done.
    void Close();

    [[nodiscard]] const TEncoding& GetEncoding() const noexcept { return *FEncoding; }
    /// The stream that is written to, without the text that is still in the buffer.
    [[nodiscard]] TStream& GetStream() noexcept { return *FStream; }

private:
    void CheckOpen() const;
    void Empty();
    void CloseQuietly() noexcept;

    std::unique_ptr<TFileStream> FOwned;
    TStream* FStream;
    const TEncoding* FEncoding;
    TEncoder FEncoder;
    std::size_t FBufferSize;
    std::string FBytes;
    String FNewLine = u"\r\n";
    bool FClosed = false;
};

}  // namespace Varnholt
