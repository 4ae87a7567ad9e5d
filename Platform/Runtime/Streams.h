#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Types.h"

/// Streams of bytes: one interface for files and memory.
///
///     TFileStream file(u"C:\\data\\rain.vrn", fmCreate);
///     file.WriteBuffer(BytesOf("rain"));
///     file.Close();                       // raises if the system could not keep the bytes
///
/// Positions count bytes from 0 and have 64 bits. Every failure raises an exception; for a file it names the
/// path as given and the system's reason, as in
/// `Cannot open file "C:\x\y.csv": No such file or directory`.
///
/// Uses Paths.h. Threads: a stream may be used by one thread at a time.
namespace Varnholt {

/// Where an offset starts.
enum TSeekOrigin : std::uint8_t { soBeginning, soCurrent, soEnd };

/// How a file is opened.
enum TFileMode : std::uint8_t {
    fmCreate,         ///< for reading and writing; created, or emptied if it exists
    fmRewrite,        ///< as fmCreate, for writing only: also for pipes and devices
    fmAppend,         ///< for writing only; created if missing, and every write appends
    fmOpenRead,       ///< the file must exist in this and the following modes
    fmOpenWrite,      ///< keeps the content
    fmOpenReadWrite,  ///< keeps the content
};

/// The bytes of a text, for writing.
[[nodiscard]] inline std::span<const std::byte> BytesOf(std::string_view text) noexcept {
    return std::as_bytes(std::span(text));
}

/// The bytes of a text, as a buffer to read into.
[[nodiscard]] inline std::span<std::byte> WritableBytesOf(std::string& text) noexcept {
    return std::as_writable_bytes(std::span(text));
}

/// The system's description of an error number (`errno`), in English whatever the locale.
[[nodiscard]] VARNHOLT_EXPORT String SystemReason(int errorNumber);

/// Base of the streams.
class VARNHOLT_EXPORT TStream {
public:
    virtual ~TStream();
    TStream(const TStream&) = delete;
    TStream& operator=(const TStream&) = delete;

    /// Reads up to the size of the buffer and advances the position. Returns the number of bytes read; 0 at
    /// the end. Raises EReadError.
    virtual std::size_t Read(std::span<std::byte> buffer) = 0;
    /// Writes all bytes and advances the position. Returns their number. Raises EWriteError.
    virtual std::size_t Write(std::span<const std::byte> bytes) = 0;
    /// Moves to a position, which may be beyond the end, and returns it. Raises EStreamError for a position
    /// before the start, and for a stream without positions, such as a pipe.
    virtual std::int64_t Seek(std::int64_t offset, TSeekOrigin origin) = 0;
    [[nodiscard]] virtual std::int64_t GetPosition() const = 0;
    [[nodiscard]] virtual std::int64_t GetSize() const = 0;
    /// Truncates the stream or extends it with zeros. A position beyond the new end moves to the end. Raises
    /// EStreamError or EWriteError.
    virtual void SetSize(std::int64_t size) = 0;

    /// The same as Seek from the beginning.
    void SetPosition(std::int64_t position) { Seek(position, soBeginning); }

    /// Fills the whole buffer. Raises EReadError if the stream ends before.
    void ReadBuffer(std::span<std::byte> buffer);
    /// Writes all bytes. Raises EWriteError.
    void WriteBuffer(std::span<const std::byte> bytes);

    /// Copies exactly `count` bytes, from the source's position to this stream's. Raises EReadError if the
    /// source ends before, once its bytes are copied; EArgumentException for a negative count or if the
    /// source is this stream.
    void CopyFrom(TStream& source, std::int64_t count);
    /// Copies from the source's position up to its end. Returns the number of bytes. Raises as CopyFrom.
    std::int64_t CopyRestFrom(TStream& source);

protected:
    TStream() = default;
    /// The message for a stream that ends before ReadBuffer or CopyFrom has all bytes.
    [[nodiscard]] virtual String UnexpectedEndMessage() const;

private:
    std::int64_t CopyUpTo(TStream& source, std::int64_t count);
};

/// A stream in memory of up to 1 TiB. Writing beyond the end fills the gap with zeros.
class VARNHOLT_EXPORT TMemoryStream : public TStream {
public:
    TMemoryStream() = default;
    /// A stream with a copy of the bytes, positioned at their start.
    explicit TMemoryStream(std::span<const std::byte> bytes);

    std::size_t Read(std::span<std::byte> buffer) override;
    std::size_t Write(std::span<const std::byte> bytes) override;
    std::int64_t Seek(std::int64_t offset, TSeekOrigin origin) override;
    [[nodiscard]] std::int64_t GetPosition() const override { return FPosition; }
    [[nodiscard]] std::int64_t GetSize() const override { return static_cast<std::int64_t>(FBytes.size()); }
    void SetSize(std::int64_t size) override;

    /// All bytes, whatever the position. Valid until the stream changes.
    [[nodiscard]] std::span<const std::byte> GetBytes() const noexcept { return FBytes; }
    void Clear() noexcept;

private:
    std::vector<std::byte> FBytes;
    std::int64_t FPosition = 0;
};

/// An unbuffered file: each read or write is a system call.
class VARNHOLT_EXPORT TFileStream : public TStream {
public:
    /// Opens the file. Raises EFCreateError (`Cannot create file "%s": %s`) in the modes fmCreate and
    /// fmRewrite, otherwise EFOpenError (`Cannot open file "%s": %s`); also for a folder.
    TFileStream(StringView path, TFileMode mode);
    /// Closes the file if it is open. It cannot report a failure: call Close before.
    ~TFileStream() override;

    /// The standard input or output of the process, named "standard input" or "standard output" in messages
    /// and by GetFileName. The stream has a descriptor of its own, so Close reports what the system could not
    /// keep and leaves the descriptor of the process open. Nothing is buffered. Raises EFOpenError
    /// (`Cannot open standard input: %s`) or EFCreateError (`Cannot create standard output: %s`) if the
    /// process has none.
    [[nodiscard]] static std::unique_ptr<TFileStream> StandardInput();
    [[nodiscard]] static std::unique_ptr<TFileStream> StandardOutput();

    std::size_t Read(std::span<std::byte> buffer) override;
    std::size_t Write(std::span<const std::byte> bytes) override;
    std::int64_t Seek(std::int64_t offset, TSeekOrigin origin) override;
    [[nodiscard]] std::int64_t GetPosition() const override;
    [[nodiscard]] std::int64_t GetSize() const override;
    void SetSize(std::int64_t size) override;

    /// The path as given, which messages contain.
    [[nodiscard]] const String& GetFileName() const noexcept { return FFileName; }

    /// Waits until the bytes are on the disk. Raises EWriteError.
    void Flush();
    /// Closes the file, if it is open. Raises EWriteError. Any further use of the stream raises EStreamError.
    void Close();

protected:
    /// A stream without a file yet, with the path for messages.
    explicit TFileStream(StringView path) : FFileName(path) {}
    /// Opens its file, once; raises as the constructor does, with this path.
    void Open(StringView path, TFileMode mode);
    /// Takes over an open descriptor of the system, once.
    void Attach(int handle) noexcept { FHandle = handle; }
    /// The system's descriptor; raises EStreamError if the stream is closed.
    [[nodiscard]] int Handle() const;
    /// Closes the file, if it is open, without reporting a failure.
    void Abandon() noexcept;

    [[nodiscard]] String UnexpectedEndMessage() const override;

private:
    [[nodiscard]] static std::unique_ptr<TFileStream> OpenStandard(int handle, StringView name);
    [[nodiscard]] String Message(StringView action, StringView reason) const;

    String FFileName;
    int FHandle = -1;
    bool FIsStandard = false;  // FFileName is no path
};

}  // namespace Varnholt
