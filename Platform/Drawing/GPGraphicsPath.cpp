#include "Platform/Drawing/GPGraphicsPath.h"

namespace Varnholt {

void TGPGraphicsPath::AddLine(float x1, float y1, float x2, float y2) {
    if (FFigures.empty() || FFigures.back().IsClosed || FBegins) FFigures.emplace_back();
    FBegins = false;
    std::vector<TFloatPoint>& points = FFigures.back().Points;
    const TFloatPoint from{x1, y1};
    if (points.empty() || points.back() != from) points.push_back(from);
    points.push_back({x2, y2});
}

void TGPGraphicsPath::CloseFigure() noexcept {
    if (!FFigures.empty()) FFigures.back().IsClosed = true;
}

}  // namespace Varnholt
