#pragma once

#include <cstdint>
#include <memory>

#include "Platform/Drawing/Bitmap.h"

/// Reading and writing single pixels of a bitmap, fast along rows.
///
///     TBitmapPixels pixels(photo, true);                       // a copy, converted to 24 bits
///     for (std::int32_t y = 0; y < pixels.GetHeight(); ++y)
///         for (std::int32_t x = 0; x < pixels.GetWidth(); ++x)
///             pixels.Set_Pixel(x, y, DarkenColour(pixels.Get_Pixel(x, y), 40));
///
/// Columns and rows count from 0. The address of a row is fetched once for accesses in that row, so walk along rows.
///
/// Threads: as the bitmap.
namespace Varnholt {

class VARNHOLT_EXPORT TBitmapPixels {
public:
    /// Owns a bitmap of that size. Errors as TBitmap::SetSize.
    TBitmapPixels(std::int32_t width, std::int32_t height);
    /// With `copy` owns a copy of the bitmap, otherwise works on the bitmap itself, which must outlive this object.
    ///
    /// A bitmap that has not 24 bits a pixel is converted to 24 bits; to 16, then 15, if it refuses; to the format of
    /// the device if it refuses these too. Without `copy` this changes the bitmap of the caller.
    TBitmapPixels(TBitmap& bitmap, bool copy);
    TBitmapPixels(const TBitmapPixels&) = delete;
    TBitmapPixels& operator=(const TBitmapPixels&) = delete;

    /// The colour of a pixel. Outside the bitmap it is black, and in debug builds EArgumentException `Pixel (%d, %d) is
    /// outside the bitmap` is raised.
    [[nodiscard]] TColor Get_Pixel(std::int32_t x, std::int32_t y);
    /// Sets it, with the lowest bits dropped in formats of 15 and 16 bits. The fourth byte of a pixel of 32 bits becomes
    /// 0. Outside the bitmap nothing is set; debug builds raise as Get_Pixel does. System colours become plain
    /// ones.
    void Set_Pixel(std::int32_t x, std::int32_t y, TColor value);

    /// Forgets the row. To be called when the pixels or the canvas have been used by other means; a new size or format
    /// is noticed without it.
    void Reset() noexcept { FRow = -1; }

    [[nodiscard]] std::int32_t GetWidth() const noexcept { return FBitmap->GetWidth(); }
    void SetWidth(std::int32_t width);
    [[nodiscard]] std::int32_t GetHeight() const noexcept { return FBitmap->GetHeight(); }
    void SetHeight(std::int32_t height);
    [[nodiscard]] TPixelFormat GetPixelFormat() const noexcept { return FBitmap->GetPixelFormat(); }
    /// Raises Exception `Pixel format is not supported`, with the former format in place, if the bitmap refuses it.
    void SetPixelFormat(TPixelFormat format);
    /// Call Reset after drawing.
    [[nodiscard]] TCanvas& GetCanvas() { return FBitmap->GetCanvas(); }
    [[nodiscard]] TBitmap& GetBitmap() noexcept { return *FBitmap; }

private:
    /// Whether the pixel is in the row whose address is held.
    [[nodiscard]] bool IsInRow(std::int32_t x, std::int32_t y) const noexcept {
        return y == FRow && static_cast<std::uint32_t>(x) < FRowWidth &&
               FGeneration == FBitmap->GetGeneration();
    }
    void SetUp();
    bool Fetch(std::int32_t x, std::int32_t y);
    TColor GetOther(std::int32_t x, std::int32_t y);
    void SetOther(std::int32_t x, std::int32_t y, TColor value);

    std::uint8_t* FBytes = nullptr;  // of the row
    TBitmap* FBitmap;
    std::int32_t FRow = -1;
    std::uint32_t FRowWidth = 0;
    std::uint32_t FGeneration = 0;
    TPixelFormat FFormat = pfDevice;  // of the row
    std::unique_ptr<TBitmap> FCreated;
};

inline TColor TBitmapPixels::Get_Pixel(std::int32_t x, std::int32_t y) {
    if (!IsInRow(x, y) || FFormat != pf24bit) [[unlikely]]
        return GetOther(x, y);
    const std::uint8_t* const pixel = FBytes + static_cast<std::size_t>(x) * 3;
    return static_cast<TColor>(pixel[2] | pixel[1] << 8 | pixel[0] << 16);
}

inline void TBitmapPixels::Set_Pixel(std::int32_t x, std::int32_t y, TColor value) {
    if (!IsInRow(x, y) || FFormat != pf24bit || value > 0xFFFFFF) [[unlikely]]
        return SetOther(x, y, value);
    std::uint8_t* const pixel = FBytes + static_cast<std::size_t>(x) * 3;
    pixel[0] = static_cast<std::uint8_t>(value >> 16);
    pixel[1] = static_cast<std::uint8_t>(value >> 8);
    pixel[2] = static_cast<std::uint8_t>(value);
}

}  // namespace Varnholt
