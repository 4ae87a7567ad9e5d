#include <zlib.h>

#include <limits>
#include <memory>
#include <new>

#include "Platform/Runtime/Format.h"
#include "VarnholtLib/Files/ArchiveFormatPrivate.h"

namespace Varnholt {
namespace {

constexpr std::size_t kBlockSize = std::size_t{1} << 18;
constexpr std::int64_t kMaxFileSize = std::numeric_limits<std::int32_t>::max();
constexpr int kZlibLevels[] = {Z_NO_COMPRESSION, Z_BEST_SPEED, Z_DEFAULT_COMPRESSION, Z_BEST_COMPRESSION};

Bytef* BytesOf(std::span<const std::byte> bytes) {
    return const_cast<Bytef*>(reinterpret_cast<const Bytef*>(bytes.data()));
}

/// A zlib stream in either direction; the function ends it.
template <int (*kEnd)(z_stream*)>
struct TZlib : z_stream {
    TZlib() : z_stream{} {}
    ~TZlib() { kEnd(this); }
    TZlib(const TZlib&) = delete;
    TZlib& operator=(const TZlib&) = delete;

    void SetInput(std::span<const std::byte> bytes) {
        next_in = BytesOf(bytes);
        avail_in = static_cast<uInt>(bytes.size());
    }
    void SetOutput(std::span<std::byte> bytes) {
        next_out = BytesOf(bytes);
        avail_out = static_cast<uInt>(bytes.size());
    }
};

[[noreturn]] void RaiseTooLarge(const TFileStream& source) {
    throw Exception(Format(u"%s: The file has more than %d bytes", {source.GetFileName(), kMaxFileSize}));
}

/// A buffer whose bytes are not set first.
class TBlock {
public:
    [[nodiscard]] std::span<std::byte> GetBytes() const { return {FBytes.get(), kBlockSize}; }

private:
    std::unique_ptr<std::byte[]> FBytes = std::make_unique_for_overwrite<std::byte[]>(kBlockSize);
};

/// Takes all input, with the end of the stream after the last.
void Append(TZlib<deflateEnd>& zlib, int flush, std::span<std::byte> block, std::vector<std::byte>& bytes) {
    do {
        zlib.SetOutput(block);
        deflate(&zlib, flush);  // fails only for a wrong call
        const auto written = block.first(block.size() - zlib.avail_out);
        bytes.insert(bytes.end(), written.begin(), written.end());
    } while (zlib.avail_out == 0);
}

}  // namespace

void CheckCompressionLevel(std::uint8_t level) {
    if (level >= std::size(kZlibLevels))
        throw EArgumentException(Format(u"Compression level %d is not from 0 to 3", {level}));
}

TCompressed Compress(TFileStream& source, std::uint8_t level) {
    CheckCompressionLevel(level);
    TZlib<deflateEnd> zlib;
    if (deflateInit(&zlib, kZlibLevels[level]) != Z_OK) throw std::bad_alloc();
    TCompressed compressed;
    const TBlock input, output;
    std::int64_t size = 0;
    for (bool isLast = false; !isLast;) {
        const std::size_t count = source.Read(input.GetBytes());
        isLast = count == 0;
        size += static_cast<std::int64_t>(count);
        zlib.SetInput(input.GetBytes().first(count));
        Append(zlib, isLast ? Z_FINISH : Z_NO_FLUSH, output.GetBytes(), compressed.Bytes);
        if (size > kMaxFileSize || std::ssize(compressed.Bytes) > kMaxFileSize) RaiseTooLarge(source);
    }
    compressed.OriginalSize = static_cast<std::int32_t>(size);
    return compressed;
}

void Decompress(std::span<const std::byte> compressed, TStream& dest, std::int64_t maxSize) {
    TZlib<inflateEnd> zlib;
    if (inflateInit(&zlib) != Z_OK) throw std::bad_alloc();
    zlib.SetInput(compressed);
    const TBlock block;
    std::int64_t size = 0;
    for (int state = Z_OK; state != Z_STREAM_END;) {
        zlib.SetOutput(block.GetBytes());
        state = inflate(&zlib, Z_NO_FLUSH);
        const std::size_t count = kBlockSize - zlib.avail_out;
        size += static_cast<std::int64_t>(count);
        if (size > maxSize)
            throw EZDecompressionError(u"The compressed data contain more than the size of the file");
        dest.WriteBuffer(block.GetBytes().first(count));
        if (state == Z_MEM_ERROR) throw std::bad_alloc();
        if (state != Z_OK && state != Z_STREAM_END)
            throw EZDecompressionError(state == Z_BUF_ERROR ? u"The compressed data end early"
                                                            : u"The compressed data are damaged");
    }
}

}  // namespace Varnholt
