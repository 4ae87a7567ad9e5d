#pragma once

#include <vector>

#include "Platform/Drawing/Canvas.h"

/// A target that lists what was drawn.
///
///     TCanvasRecorder recorder;
///     TCanvas canvas(recorder);
///     canvas.MoveTo(0, 0);
///     canvas.LineTo(3, 4);
///     recorder.Describe();                             // {"Line 0,0 3,4"}
///
/// Threads: as the canvas.
namespace Varnholt {

enum TDrawnKind : std::uint8_t {
    dkLine,
    dkPolyline,
    dkPolygon,
    dkRectangle,
    dkFillRect,
    dkEllipse,
    dkText,
    dkGradient,
    dkPath,
    dkClip,
    dkPixel,
};

/// An operation. Rectangles have two points, the upper left corner and the lower right one.
struct TDrawnOperation {
    TDrawnKind Kind = dkLine;
    TPen Pen;
    TBrush Brush;
    std::uint32_t FirstPoint = 0;
    std::uint32_t PointCount = 0;
    std::uint32_t Detail = 0;  ///< from 1: which detail the recorder keeps; 0 for none
};

class VARNHOLT_EXPORT TCanvasRecorder final : public ICanvasTarget {
public:
    struct TPosition {
        double X = 0;
        double Y = 0;
    };

    [[nodiscard]] const std::vector<TDrawnOperation>& GetOperations() const noexcept { return FOperations; }
    /// The points of one of the operations.
    [[nodiscard]] std::span<const TPosition> GetPoints(const TDrawnOperation& operation) const;
    void Clear() noexcept;

    /// One line an operation: its name, points, what pen and brush have that is not the default, and the rest:
    /// `Polyline 0,0 3,4 pen 0000FF 2`, `Text 5,5 "Rain" size 9`, `Path 0.5,0 2,2 closed pen FF000000 1`.
    [[nodiscard]] std::vector<String> Describe() const;

    void Line(TPoint from, TPoint to, const TPen& pen) override;
    void Polyline(std::span<const TPoint> points, const TPen& pen) override;
    void Polygon(std::span<const TPoint> points, const TPen& pen, const TBrush& brush) override;
    void Rectangle(const TRect& rect, const TPen& pen, const TBrush& brush) override;
    void FillRect(const TRect& rect, const TBrush& brush) override;
    void Ellipse(const TRect& rect, const TPen& pen, const TBrush& brush) override;
    void Text(TPoint at, StringView text, const TFont& font) override;
    void Gradient(const TGradientVertex& upperLeft, const TGradientVertex& lowerRight,
                  std::uint32_t mode) override;
    void StrokePath(const TGPGraphicsPath& path, const TGPPen& pen) override;
    void Clip(const std::optional<TRect>& rect) override;
    void SetPixel(TPoint at, TColor color) override;
    /// White.
    [[nodiscard]] TColor GetPixel(TPoint at) override;
    /// Each unit of the text is as wide as the size of the font and twice as high.
    [[nodiscard]] TSize MeasureText(StringView text, const TFont& font) override;

private:
    TDrawnOperation& Add(TDrawnKind kind, std::span<const TPoint> points);
    TDrawnOperation& Add(TDrawnKind kind, const TRect& rect);
    void AddDetail(TDrawnOperation& operation, String detail);

    std::vector<TDrawnOperation> FOperations;
    std::vector<TPosition> FPoints;
    std::vector<String> FDetails;
};

}  // namespace Varnholt
