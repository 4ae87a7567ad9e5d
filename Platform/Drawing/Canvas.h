#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>

#include "Platform/Drawing/Font.h"
#include "Platform/Drawing/GPGraphicsPath.h"
#include "Platform/Drawing/Geometry.h"

/// Drawing lines, shapes and text.
///
///     TBitmap picture(200, 100);
///     TCanvas& canvas = picture.GetCanvas();
///     canvas.SetPen({.Color = clRed, .Width = 2});
///     canvas.MoveTo(10, 90);
///     canvas.LineTo(190, 10);
///     canvas.TextOut(10, 10, u"Rain");
///
/// A canvas draws on a target: a bitmap, the page of a picture file, or a recorder that lists what was drawn. All targets
/// get the same operations. Coordinates beyond 4,000,000 pixels from the origin are drawn as if they were that far.
///
/// Threads: a canvas and its target belong to one thread at a time; Lock and Unlock hand them over.
namespace Varnholt {

enum TPenStyle : std::uint8_t { psSolid, psDash, psDot, psDashDot, psClear };

/// What lines and the edges of shapes are drawn with.
struct TPen {
    TColor Color = clBlack;
    std::int32_t Width = 1;  ///< in pixels; below 1 counts as 1
    TPenStyle Style = psSolid;
    bool operator==(const TPen&) const = default;
};

/// The hatches: horizontal, vertical, downwards to the right, upwards to the right, and two crossed.
enum TBrushStyle : std::uint8_t {
    bsSolid,
    bsClear,
    bsHorizontal,
    bsVertical,
    bsFDiagonal,
    bsBDiagonal,
    bsCross,
    bsDiagCross,
};

/// What shapes are filled with. Hatches leave the background between their lines.
struct TBrush {
    TColor Color = clWhite;
    TBrushStyle Style = bsSolid;
    bool operator==(const TBrush&) const = default;
};

/// A corner of a gradient. The channels are from 0 to 65,535.
struct TGradientVertex {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::uint16_t Red = 0;
    std::uint16_t Green = 0;
    std::uint16_t Blue = 0;
    std::uint16_t Alpha = 0;  ///< not used
    bool operator==(const TGradientVertex&) const = default;
};

/// The direction in which a gradient changes: from left to right, or from top to bottom.
inline constexpr std::uint32_t kGradientHorizontal = 0;
inline constexpr std::uint32_t kGradientVertical = 1;

/// What a canvas draws on. Colours may be system colours.
class VARNHOLT_EXPORT ICanvasTarget {
public:
    virtual ~ICanvasTarget() = default;

    virtual void Line(TPoint from, TPoint to, const TPen& pen) = 0;
    virtual void Polyline(std::span<const TPoint> points, const TPen& pen) = 0;
    virtual void Polygon(std::span<const TPoint> points, const TPen& pen, const TBrush& brush) = 0;
    virtual void Rectangle(const TRect& rect, const TPen& pen, const TBrush& brush) = 0;
    virtual void FillRect(const TRect& rect, const TBrush& brush) = 0;
    virtual void Ellipse(const TRect& rect, const TPen& pen, const TBrush& brush) = 0;
    virtual void Text(TPoint at, StringView text, const TFont& font) = 0;
    virtual void Gradient(const TGradientVertex& upperLeft, const TGradientVertex& lowerRight,
                          std::uint32_t mode) = 0;
    virtual void StrokePath(const TGPGraphicsPath& path, const TGPPen& pen) = 0;
    virtual void Clip(const std::optional<TRect>& rect) = 0;
    virtual void SetPixel(TPoint at, TColor color) = 0;
    /// The colour of a pixel, and white where the target cannot tell.
    [[nodiscard]] virtual TColor GetPixel(TPoint at) = 0;
    /// The size of a text without its direction.
    [[nodiscard]] virtual TSize MeasureText(StringView text, const TFont& font) = 0;
};

class VARNHOLT_EXPORT TCanvas {
public:
    /// Draws on the target, which must outlive the canvas.
    explicit TCanvas(ICanvasTarget& target) noexcept : FTarget(target) {}
    TCanvas(const TCanvas&) = delete;
    TCanvas& operator=(const TCanvas&) = delete;

    [[nodiscard]] const TPen& GetPen() const noexcept { return FPen; }
    void SetPen(const TPen& pen) noexcept { FPen = pen; }
    [[nodiscard]] const TBrush& GetBrush() const noexcept { return FBrush; }
    void SetBrush(const TBrush& brush) noexcept { FBrush = brush; }
    [[nodiscard]] const TFont& GetFont() const noexcept { return FFont; }
    void SetFont(const TFont& font) { FFont = font; }

    // --- Lines and shapes ---

    /// The point at which LineTo begins; at first (0, 0).
    [[nodiscard]] TPoint GetPenPos() const noexcept { return FPenPos; }
    void MoveTo(std::int32_t x, std::int32_t y) noexcept { FPenPos = {x, y}; }
    void LineTo(std::int32_t x, std::int32_t y);
    /// Lines through the points in turn; nothing for fewer than two points.
    void Polyline(std::span<const TPoint> points);
    /// The closed shape of the points, filled with the brush, where it overlaps itself too; nothing for fewer than
    /// two points.
    void Polygon(std::span<const TPoint> points);
    /// The edge lies on the pixels inside the rectangle. Nothing for an empty one.
    void Rectangle(const TRect& rect);
    void FillRect(const TRect& rect);
    /// The ellipse that touches the edges of the rectangle from inside.
    void Ellipse(const TRect& rect);
    /// Fills the rectangle between two corners with colours in between. A mode other than kGradientHorizontal and
    /// kGradientVertical draws nothing.
    void Gradient(const TGradientVertex& upperLeft, const TGradientVertex& lowerRight, std::uint32_t mode);

    // --- Text ---

    /// Draws a line of text with its upper left corner at the point, around which the escapement of the font turns it.
    /// The background stays. Of a text only the first 32,767 units are drawn and measured, and control characters are
    /// not shown.
    void TextOut(std::int32_t x, std::int32_t y, StringView text);
    [[nodiscard]] TSize TextExtent(StringView text);
    [[nodiscard]] std::int32_t TextWidth(StringView text) { return TextExtent(text).Width; }
    [[nodiscard]] std::int32_t TextHeight(StringView text) { return TextExtent(text).Height; }

    // --- Pixels and clipping ---

    /// Drawing outside the target does nothing, and a pixel there is white. Only bitmaps and recorders take single
    /// pixels, and only bitmaps return them.
    [[nodiscard]] TColor GetPixel(std::int32_t x, std::int32_t y) { return FTarget.GetPixel({x, y}); }
    void SetPixel(std::int32_t x, std::int32_t y, TColor color) { FTarget.SetPixel({x, y}, color); }
    /// Limits drawing to a rectangle, or lifts the limit. Single pixels are not limited.
    void SetClipRect(const std::optional<TRect>& rect) { FTarget.Clip(rect); }

    /// Waits until no other thread has the canvas locked. Calls of one thread nest.
    void Lock() { FLock.lock(); }
    void Unlock() { FLock.unlock(); }

    [[nodiscard]] ICanvasTarget& GetTarget() noexcept { return FTarget; }

private:
    ICanvasTarget& FTarget;
    TPen FPen;
    TBrush FBrush;
    TFont FFont;
    TPoint FPenPos;
    std::recursive_mutex FLock;
};

}  // namespace Varnholt
