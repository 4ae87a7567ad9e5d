#pragma once

#include "Platform/Drawing/Canvas.h"

/// Drawing with pens that let the background through and between the pixels.
///
///     TGPGraphics graphics(picture.GetCanvas());
///     graphics.DrawLine({.Color = 0x800000FF, .Width = 2.5F}, 10, 10, 90, 40);
///
/// Threads: as the canvas.
namespace Varnholt {

class VARNHOLT_EXPORT TGPGraphics {
public:
    /// Draws on the target of the canvas, which must outlive this object.
    explicit TGPGraphics(TCanvas& canvas) noexcept : FTarget(canvas.GetTarget()) {}

    void DrawLine(const TGPPen& pen, std::int32_t x1, std::int32_t y1, std::int32_t x2, std::int32_t y2);
    void DrawLine(const TGPPen& pen, float x1, float y1, float x2, float y2);
    void DrawPath(const TGPPen& pen, const TGPGraphicsPath& path);

private:
    ICanvasTarget& FTarget;
};

}  // namespace Varnholt
