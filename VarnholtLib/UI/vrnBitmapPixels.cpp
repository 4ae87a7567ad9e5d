#include "VarnholtLib/UI/vrnBitmapPixels.h"

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Indexes.h"

namespace Varnholt {
namespace {

/// A channel in `depth` + 1 steps: truncate(channel / (255 / depth)).
std::uint32_t LowerPixel(TColor channel, std::uint32_t depth) noexcept {
    return (channel & 0xFF) * depth / 255;
}

/// A channel of 5 bits.
std::uint32_t Low5(TColor value, int index) noexcept {
    return LowerPixel(value >> (8 * index), 31);
}

void StoreWord(TPixelByte* pixel, std::uint32_t word) noexcept {
    pixel[0] = TPixelByte{static_cast<std::uint8_t>(word)};
    pixel[1] = TPixelByte{static_cast<std::uint8_t>(word >> 8)};
}

}  // namespace

TBitmapPixels::TBitmapPixels(std::int32_t width, std::int32_t height)
    : FBitmap(nullptr), FCreated(std::make_unique<TBitmap>(width, height)) {
    FBitmap = FCreated.get();
    SetUp();
}

TBitmapPixels::TBitmapPixels(TBitmap& bitmap, bool copy) : FBitmap(&bitmap) {
    if (copy) {
        FCreated = std::make_unique<TBitmap>();
        FCreated->Assign(bitmap);
        FBitmap = FCreated.get();
    }
    SetUp();
}

void TBitmapPixels::SetUp() {
    FRow = &FBitmap->GetFetchedRow();
    for (const TPixelFormat format : {pf24bit, pf16bit, pf15bit, pfDevice}) {
        FBitmap->SetPixelFormat(format);
        if (FBitmap->GetPixelFormat() == format) return;
    }
}

/// Makes the row that of a pixel. False if the pixel is outside.
bool TBitmapPixels::Fetch(std::int32_t x, std::int32_t y) {
    if (!IsIndex(x, static_cast<std::size_t>(GetWidth())) ||
        !IsIndex(y, static_cast<std::size_t>(GetHeight()))) {
#ifndef NDEBUG
        throw EArgumentException(Format(u"Pixel (%d, %d) is outside the bitmap", {x, y}));
#else
        return false;
#endif
    }
    // What is not stored in bytes that are known here goes through the canvas.
    const TPixelFormat format = GetPixelFormat();
    if (format != pfDevice && format != pf8bit && FRow->Number != y) FBitmap->FetchRow(y);
    return true;
}

TColor TBitmapPixels::GetOther(std::int32_t x, std::int32_t y) {
    if (!Fetch(x, y)) return clBlack;
    const TPixelFormat format = GetPixelFormat();
    if (format != pf24bit && format != pf32bit) return GetCanvas().GetPixel(x, y);
    const TPixelByte* const pixel = FRow->Bytes + static_cast<std::size_t>(x) * (format == pf24bit ? 3 : 4);
    return static_cast<TColor>(pixel[2] | pixel[1] << 8 | pixel[0] << 16);
}

void TBitmapPixels::SetOther(std::int32_t x, std::int32_t y, TColor value) {
    if (!Fetch(x, y)) return;
    value = ColorToRGB(value);
    const auto column = static_cast<std::size_t>(x);
    const TPixelFormat format = GetPixelFormat();
    switch (format) {
        case pf15bit:
            return StoreWord(FRow->Bytes + 2 * column,
                             Low5(value, 0) << 10 | Low5(value, 1) << 5 | Low5(value, 2));
        case pf16bit:
            return StoreWord(FRow->Bytes + 2 * column,
                             Low5(value, 0) << 11 | LowerPixel(value >> 8, 63) << 5 | Low5(value, 2));
        case pf24bit:
        case pf32bit: {
            TPixelByte* const pixel = FRow->Bytes + column * (format == pf24bit ? 3 : 4);
            pixel[0] = PixelByte(value, 2);
            pixel[1] = PixelByte(value, 1);
            pixel[2] = PixelByte(value, 0);
            if (format == pf32bit) pixel[3] = TPixelByte{0};
            return;
        }
        default:
            GetCanvas().SetPixel(x, y, value);
    }
}

void TBitmapPixels::SetWidth(std::int32_t width) {
    FBitmap->SetWidth(width);
    Reset();
}

void TBitmapPixels::SetHeight(std::int32_t height) {
    FBitmap->SetHeight(height);
    Reset();
}

void TBitmapPixels::SetPixelFormat(TPixelFormat format) {
    const TPixelFormat former = GetPixelFormat();
    FBitmap->SetPixelFormat(format);
    if (GetPixelFormat() != format) {
        FBitmap->SetPixelFormat(former);
        throw Exception(u"Pixel format is not supported");
    }
    Reset();
}

}  // namespace Varnholt
