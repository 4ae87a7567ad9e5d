#pragma once

#include <QPainter>

#include "Platform/Drawing/Canvas.h"

namespace Varnholt {

/// Draws with a painter, which must outlive it. Single pixels are not drawn.
class TQtCanvasTarget final : public ICanvasTarget {
public:
    explicit TQtCanvasTarget(QPainter& painter);

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
    [[nodiscard]] TColor GetPixel(TPoint at) override;
    [[nodiscard]] TSize MeasureText(StringView text, const TFont& font) override;

private:
    void Use(const TPen& pen, bool isClosed);
    void Use(const TBrush& brush);

    QPainter& FPainter;
};

}  // namespace Varnholt
