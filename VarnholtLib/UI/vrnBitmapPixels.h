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

    /// Forgets the row. Not needed after drawing, a new size or a new format, which are noticed.
    void Reset() noexcept { FBitmap->ForgetRow(); }

    [[nodiscard]] std::int32_t GetWidth() const noexcept { return FBitmap->GetWidth(); }
    void SetWidth(std::int32_t width);
    [[nodiscard]] std::int32_t GetHeight() const noexcept { return FBitmap->GetHeight(); }
    void SetHeight(std::int32_t height);
    [[nodiscard]] TPixelFormat GetPixelFormat() const noexcept { return FBitmap->GetPixelFormat(); }
    /// Raises Exception `Pixel format is not supported`, with the former format in place, if the bitmap refuses it.
    void SetPixelFormat(TPixelFormat format);
    [[nodiscard]] TCanvas& GetCanvas() { return FBitmap->GetCanvas(); }
    [[nodiscard]] TBitmap& GetBitmap() noexcept { return *FBitmap; }

private:
    /// Whether the pixel is in the row that was fetched, and this has 24 bits a pixel.
    [[nodiscard]] bool IsIn24BitRow(std::int32_t x, std::int32_t y) const noexcept {
        return y == FRow->Number && static_cast<std::uint32_t>(x) < FRow->WidthOf24;
    }
    static TPixelByte PixelByte(TColor value, int index) noexcept {
        return TPixelByte{static_cast<std::uint8_t>(value >> (8 * index))};
    }
    void SetUp();
    bool Fetch(std::int32_t x, std::int32_t y);
    TColor GetOther(std::int32_t x, std::int32_t y);
    void SetOther(std::int32_t x, std::int32_t y, TColor value);

    TBitmap* FBitmap;
    const TBitmap::TRow* FRow = nullptr;  // of the bitmap
    std::unique_ptr<TBitmap> FCreated;
};

inline TColor TBitmapPixels::Get_Pixel(std::int32_t x, std::int32_t y) {
    if (!IsIn24BitRow(x, y)) [[unlikely]]
        return GetOther(x, y);
    const TPixelByte* const pixel = FRow->Bytes + static_cast<std::size_t>(x) * 3;
    return static_cast<TColor>(pixel[2] | pixel[1] << 8 | pixel[0] << 16);
}

inline void TBitmapPixels::Set_Pixel(std::int32_t x, std::int32_t y, TColor value) {
    if (!IsIn24BitRow(x, y) || value > 0xFFFFFF) [[unlikely]]
        return SetOther(x, y, value);
    TPixelByte* const pixel = FRow->Bytes + static_cast<std::size_t>(x) * 3;
    pixel[0] = PixelByte(value, 2);
    pixel[1] = PixelByte(value, 1);
    pixel[2] = PixelByte(value, 0);
}

}  // namespace Varnholt
