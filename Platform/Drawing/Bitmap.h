#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "Platform/Drawing/Canvas.h"

/// Pixels in memory, in one of several formats.
///
///     TBitmap bitmap(640, 480);
///     bitmap.GetCanvas().TextOut(10, 10, u"Station 7");
///     const std::uint8_t* row = bitmap.ScanLine(0).data();     // blue, green, red, 0, blue, ...
///
/// Threads: a bitmap belongs to one thread at a time.
namespace Varnholt {

enum TPixelFormat : std::uint8_t {
    pfDevice,  ///< as pf32bit
    pf1bit,    ///< not held
    pf4bit,    ///< not held
    pf8bit,    ///< a grey level
    pf15bit,   ///< a little-endian word: 5 bits each of red, green and blue, blue in the low bits
    pf16bit,   ///< a little-endian word: 5 bits of red, 6 of green, 5 of blue in the low bits
    pf24bit,   ///< bytes blue, green, red
    pf32bit,   ///< bytes blue, green, red and one that is not used
    pfCustom,  ///< not held
};

/// A byte of a pixel. Unlike a plain byte it shares no memory with other types, so that a compiler can keep other variables
/// in registers while pixels are written.
enum TPixelByte : std::uint8_t {};

class VARNHOLT_EXPORT TBitmap {
public:
    /// An empty bitmap, or a white one. Errors as SetSize.
    TBitmap();
    TBitmap(std::int32_t width, std::int32_t height, TPixelFormat format = pf32bit);
    virtual ~TBitmap();
    TBitmap(const TBitmap&) = delete;
    TBitmap& operator=(const TBitmap&) = delete;

    /// Takes the size, format and pixels of another bitmap.
    void Assign(const TBitmap& source);

    [[nodiscard]] std::int32_t GetWidth() const noexcept { return FWidth; }
    [[nodiscard]] std::int32_t GetHeight() const noexcept { return FHeight; }
    void SetWidth(std::int32_t width) { SetSize(width, FHeight); }
    void SetHeight(std::int32_t height) { SetSize(FWidth, height); }
    /// Pixels that the former size has too stay, others are white; the clipping of the canvas is lifted. Raises
    /// EArgumentException `Size %d x %d of a bitmap is not between 0 and 32767` and leaves the bitmap as it is.
    void SetSize(std::int32_t width, std::int32_t height);

    [[nodiscard]] TPixelFormat GetPixelFormat() const noexcept { return FFormat; }
    /// Converts the pixels. Nothing changes for a format that the bitmap does not hold. Colours become the nearest below
    /// in formats with fewer bits, and their luminance in pf8bit.
    void SetPixelFormat(TPixelFormat format);

    /// The bytes of a row from 0, the upper one; they may be read and written until the bitmap or its canvas is
    /// used otherwise. A row ends at a multiple of 4 bytes. EListError as a list.
    [[nodiscard]] std::span<std::uint8_t> ScanLine(std::int32_t row);
    /// A row whose address was asked for.
    struct TRow {
        TPixelByte* Bytes = nullptr;
        std::int32_t Number = -1;     ///< -1 for none
        std::uint32_t WidthOf24 = 0;  ///< in pixels; 0 if the bitmap has not 24 bits a pixel
    };
    /// The row that was fetched last; none as soon as its address is no longer right, or the canvas has drawn. The
    /// reference lives as long as the bitmap.
    [[nodiscard]] const TRow& GetFetchedRow() const noexcept { return FRow; }
    /// Fetches a row. Errors as ScanLine.
    void FetchRow(std::int32_t row);
    void ForgetRow() noexcept { FRow.Number = -1; }

    /// Lives as long as the bitmap.
    [[nodiscard]] TCanvas& GetCanvas();

protected:
    /// Whether the bitmap holds a format; a derived bitmap may refuse more.
    [[nodiscard]] virtual bool Holds(TPixelFormat format) const noexcept;

private:
    class TTarget;

    void Replace(std::int32_t width, std::int32_t height, TPixelFormat format,
                 std::vector<TPixelByte>&& pixels) noexcept;
    void TakeDrawing() const;

    std::int32_t FWidth = 0;
    std::int32_t FHeight = 0;
    TPixelFormat FFormat = pf32bit;
    mutable std::vector<TPixelByte> FPixels;
    std::unique_ptr<TTarget> FTarget;
    std::unique_ptr<TCanvas> FCanvas;
    TRow FRow;
};

}  // namespace Varnholt
