#include "Platform/Drawing/Bitmap.h"

#include <algorithm>
#include <cstring>

#include "Platform/Drawing/CairoTargetPrivate.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Indexes.h"

namespace Varnholt {
namespace {

constexpr std::int32_t kMaxSize = 32767;  // of an image of Cairo

std::size_t BytesOfPixel(TPixelFormat format) noexcept {
    switch (format) {
        case pf8bit:
            return 1;
        case pf15bit:
        case pf16bit:
            return 2;
        case pf24bit:
            return 3;
        default:
            return 4;
    }
}

std::size_t Stride(std::int32_t width, TPixelFormat format) noexcept {
    return (static_cast<std::size_t>(width) * BytesOfPixel(format) + 3) / 4 * 4;
}

/// A channel of so many bits as one of 8.
std::uint32_t Widened(std::uint32_t value, unsigned bits) noexcept {
    value &= (1U << bits) - 1;
    return value << (8 - bits) | value >> (2 * bits - 8);
}

/// The pixel as 0xRRGGBB.
std::uint32_t Load(const std::uint8_t* pixel, TPixelFormat format) noexcept {
    const auto word = [&] { return static_cast<std::uint32_t>(pixel[0] | pixel[1] << 8); };
    switch (format) {
        case pf8bit:
            return pixel[0] * 0x010101U;
        case pf15bit:
            return Widened(word() >> 10, 5) << 16 | Widened(word() >> 5, 5) << 8 | Widened(word(), 5);
        case pf16bit:
            return Widened(word() >> 11, 5) << 16 | Widened(word() >> 5, 6) << 8 | Widened(word(), 5);
        default:
            return static_cast<std::uint32_t>(pixel[0] | pixel[1] << 8 | pixel[2] << 16);
    }
}

void Store(std::uint32_t rgb, std::uint8_t* pixel, TPixelFormat format) noexcept {
    const std::uint32_t r = rgb >> 16 & 0xFF, g = rgb >> 8 & 0xFF, b = rgb & 0xFF;
    const auto word = [&](std::uint32_t value) {
        pixel[0] = static_cast<std::uint8_t>(value);
        pixel[1] = static_cast<std::uint8_t>(value >> 8);
    };
    switch (format) {
        case pf8bit:
            pixel[0] = static_cast<std::uint8_t>((299 * r + 587 * g + 114 * b + 500) / 1000);
            return;
        case pf15bit:
            return word(r >> 3 << 10 | g >> 3 << 5 | b >> 3);
        case pf16bit:
            return word(r >> 3 << 11 | g >> 2 << 5 | b >> 3);
        case pf24bit:
            pixel[0] = static_cast<std::uint8_t>(b);
            pixel[1] = static_cast<std::uint8_t>(g);
            pixel[2] = static_cast<std::uint8_t>(r);
            return;
        default:
            std::memcpy(pixel, &rgb, sizeof rgb);
    }
}

std::uint8_t* BytesOf(std::vector<TPixelByte>& pixels) noexcept {
    return reinterpret_cast<std::uint8_t*>(pixels.data());
}

/// A block of pixels in one format.
struct TBlock {
    std::uint8_t* Pixels;
    std::size_t Stride;
    TPixelFormat Format;
};

void Convert(const TBlock& from, const TBlock& to, std::int32_t width, std::int32_t height) noexcept {
    const std::size_t step = BytesOfPixel(from.Format), toStep = BytesOfPixel(to.Format);
    for (std::int32_t y = 0; y < height; ++y) {
        const std::uint8_t* source = from.Pixels + static_cast<std::size_t>(y) * from.Stride;
        std::uint8_t* target = to.Pixels + static_cast<std::size_t>(y) * to.Stride;
        if (from.Format == to.Format) {
            std::memcpy(target, source, static_cast<std::size_t>(width) * step);
            continue;
        }
        for (std::int32_t x = 0; x < width; ++x, source += step, target += toStep)
            Store(Load(source, from.Format), target, to.Format);
    }
}

}  // namespace

/// Draws on an image of its own, which takes the pixels of the bitmap before a drawing and returns them when somebody
/// asks for them.
class TBitmap::TTarget final : public ICanvasTarget {
public:
    explicit TTarget(TBitmap& bitmap) noexcept : FBitmap(bitmap) {}

    void Line(TPoint from, TPoint to, const TPen& pen) override { Drawn().Line(from, to, pen); }
    void Polyline(std::span<const TPoint> points, const TPen& pen) override { Drawn().Polyline(points, pen); }
    void Polygon(std::span<const TPoint> points, const TPen& pen, const TBrush& brush) override {
        Drawn().Polygon(points, pen, brush);
    }
    void Rectangle(const TRect& rect, const TPen& pen, const TBrush& brush) override {
        Drawn().Rectangle(rect, pen, brush);
    }
    void FillRect(const TRect& rect, const TBrush& brush) override { Drawn().FillRect(rect, brush); }
    void Ellipse(const TRect& rect, const TPen& pen, const TBrush& brush) override {
        Drawn().Ellipse(rect, pen, brush);
    }
    void Text(TPoint at, StringView text, const TFont& font) override { Drawn().Text(at, text, font); }
    void Gradient(const TGradientVertex& upperLeft, const TGradientVertex& lowerRight,
                  std::uint32_t mode) override {
        Drawn().Gradient(upperLeft, lowerRight, mode);
    }
    void StrokePath(const TGPGraphicsPath& path, const TGPPen& pen) override {
        Drawn().StrokePath(path, pen);
    }
    void Clip(const std::optional<TRect>& rect) override { Image().Clip(rect); }
    TSize MeasureText(StringView text, const TFont& font) override { return Image().MeasureText(text, font); }

    TColor GetPixel(TPoint at) override {
        std::uint8_t* const pixel = PixelAt(at);
        if (pixel == nullptr) return clWhite;
        const std::uint32_t rgb = Load(pixel, FBitmap.FFormat);
        return (rgb & 0xFF) << 16 | (rgb & 0xFF00) | rgb >> 16;
    }
    void SetPixel(TPoint at, TColor color) override {
        std::uint8_t* const pixel = PixelAt(at);
        if (pixel == nullptr) return;
        const TColor plain = ColorToRGB(color);
        Store((plain & 0xFF) << 16 | (plain & 0xFF00) | plain >> 16, pixel, FBitmap.FFormat);
        FIsStale = true;
    }

    /// Gives what was drawn to the pixels of the bitmap, which may change from now on.
    void Release() {
        if (FHasDrawn) {
            cairo_surface_flush(FSurface.get());
            Convert(ImageBlock(), BitmapBlock(), FBitmap.FWidth, FBitmap.FHeight);
        }
        FHasDrawn = false;
        FIsStale = true;
    }
    /// Forgets the image.
    void Reset() noexcept {
        FCairo.reset();
        FSurface.reset();
        FHasDrawn = false;
    }

private:
    [[nodiscard]] TBlock ImageBlock() const noexcept {
        return {cairo_image_surface_get_data(FSurface.get()),
                static_cast<std::size_t>(cairo_image_surface_get_stride(FSurface.get())), pf32bit};
    }
    [[nodiscard]] TBlock BitmapBlock() const noexcept {
        return {BytesOf(FBitmap.FPixels), Stride(FBitmap.FWidth, FBitmap.FFormat), FBitmap.FFormat};
    }

    TCairoTarget& Image() {
        if (FCairo == nullptr) {
            FSurface.reset(cairo_image_surface_create(CAIRO_FORMAT_RGB24, FBitmap.FWidth, FBitmap.FHeight));
            CheckCairo(cairo_surface_status(FSurface.get()));
            FCairo = std::make_unique<TCairoTarget>(*FSurface);
            FIsStale = true;
        }
        return *FCairo;
    }
    TCairoTarget& Drawn() {
        TCairoTarget& image = Image();
        if (FIsStale) {
            cairo_surface_flush(FSurface.get());
            Convert(BitmapBlock(), ImageBlock(), FBitmap.FWidth, FBitmap.FHeight);
            cairo_surface_mark_dirty(FSurface.get());
        }
        FIsStale = false;
        FHasDrawn = true;
        FBitmap.ForgetRow();
        image.Check();
        return image;
    }
    /// A pixel of the bitmap; null outside.
    std::uint8_t* PixelAt(TPoint at) {
        if (!IsIndex(at.X, static_cast<std::size_t>(FBitmap.FWidth)) ||
            !IsIndex(at.Y, static_cast<std::size_t>(FBitmap.FHeight)))
            return nullptr;
        if (FHasDrawn) Release();
        const TBlock block = BitmapBlock();
        return block.Pixels + static_cast<std::size_t>(at.Y) * block.Stride +
               static_cast<std::size_t>(at.X) * BytesOfPixel(block.Format);
    }

    TBitmap& FBitmap;
    TCairoSurface FSurface;
    std::unique_ptr<TCairoTarget> FCairo;
    bool FIsStale = true;    // the pixels of the bitmap may be newer
    bool FHasDrawn = false;  // the image is newer
};

TBitmap::TBitmap() = default;

TBitmap::TBitmap(std::int32_t width, std::int32_t height, TPixelFormat format) {
    if (TBitmap::Holds(format)) FFormat = format;
    SetSize(width, height);
}

TBitmap::~TBitmap() = default;

bool TBitmap::Holds(TPixelFormat format) const noexcept {
    return format == pfDevice || (format >= pf8bit && format <= pf32bit);
}

void TBitmap::TakeDrawing() const {
    if (FTarget != nullptr) FTarget->Release();
}

void TBitmap::Replace(std::int32_t width, std::int32_t height, TPixelFormat format,
                      std::vector<TPixelByte>&& pixels) noexcept {
    if (FTarget != nullptr && (width != FWidth || height != FHeight)) FTarget->Reset();
    FWidth = width;
    FHeight = height;
    FFormat = format;
    FPixels = std::move(pixels);
    ForgetRow();
}

void TBitmap::Assign(const TBitmap& source) {
    source.TakeDrawing();
    TakeDrawing();
    std::vector<TPixelByte> pixels = source.FPixels;
    Replace(source.FWidth, source.FHeight, source.FFormat, std::move(pixels));
}

void TBitmap::SetSize(std::int32_t width, std::int32_t height) {
    if (width == FWidth && height == FHeight) return;
    if (width < 0 || height < 0 || width > kMaxSize || height > kMaxSize)
        throw EArgumentException(
            Format(u"Size %d x %d of a bitmap is not between 0 and 32767", {width, height}));
    TakeDrawing();
    const std::size_t stride = Stride(width, FFormat);
    std::vector<TPixelByte> pixels(stride * static_cast<std::size_t>(height), TPixelByte{0xFF});
    Convert({BytesOf(FPixels), Stride(FWidth, FFormat), FFormat}, {BytesOf(pixels), stride, FFormat},
            std::min(width, FWidth), std::min(height, FHeight));
    Replace(width, height, FFormat, std::move(pixels));
}

void TBitmap::SetPixelFormat(TPixelFormat format) {
    if (format == FFormat || !Holds(format)) return;
    TakeDrawing();
    const std::size_t stride = Stride(FWidth, format);
    std::vector<TPixelByte> pixels(stride * static_cast<std::size_t>(FHeight));
    Convert({BytesOf(FPixels), Stride(FWidth, FFormat), FFormat}, {BytesOf(pixels), stride, format}, FWidth,
            FHeight);
    Replace(FWidth, FHeight, format, std::move(pixels));
}

void TBitmap::FetchRow(std::int32_t row) {
    const std::size_t index = ListIndex(row, static_cast<std::size_t>(FHeight));
    TakeDrawing();
    FRow = {.Bytes = FPixels.data() + index * Stride(FWidth, FFormat),
            .Number = row,
            .WidthOf24 = FFormat == pf24bit ? static_cast<std::uint32_t>(FWidth) : 0};
}

std::span<std::uint8_t> TBitmap::ScanLine(std::int32_t row) {
    FetchRow(row);
    return {reinterpret_cast<std::uint8_t*>(FRow.Bytes), Stride(FWidth, FFormat)};
}

TCanvas& TBitmap::GetCanvas() {
    if (FCanvas == nullptr) {
        FTarget = std::make_unique<TTarget>(*this);
        FCanvas = std::make_unique<TCanvas>(*FTarget);
    }
    return *FCanvas;
}

}  // namespace Varnholt
