#include "Platform/Drawing/GPGraphics.h"

namespace Varnholt {

void TGPGraphics::DrawLine(const TGPPen& pen, std::int32_t x1, std::int32_t y1, std::int32_t x2,
                           std::int32_t y2) {
    DrawLine(pen, static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2),
             static_cast<float>(y2));
}

void TGPGraphics::DrawLine(const TGPPen& pen, float x1, float y1, float x2, float y2) {
    TGPGraphicsPath line;
    line.AddLine(x1, y1, x2, y2);
    DrawPath(pen, line);
}

void TGPGraphics::DrawPath(const TGPPen& pen, const TGPGraphicsPath& path) {
    FTarget.StrokePath(path, pen);
}

}  // namespace Varnholt
