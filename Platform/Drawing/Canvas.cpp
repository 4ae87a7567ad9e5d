#include "Platform/Drawing/Canvas.h"

namespace Varnholt {
namespace {

constexpr std::size_t kMaxText = 32767;

StringView Drawn(StringView text) noexcept {
    return text.substr(0, kMaxText);
}

bool IsEmpty(const TRect& rect) noexcept {
    return rect.Left >= rect.Right || rect.Top >= rect.Bottom;
}

}  // namespace

void TCanvas::LineTo(std::int32_t x, std::int32_t y) {
    const TPoint from = FPenPos;
    FPenPos = {x, y};
    FTarget.Line(from, FPenPos, FPen);
}

void TCanvas::Polyline(std::span<const TPoint> points) {
    if (points.size() > 1) FTarget.Polyline(points, FPen);
}

void TCanvas::Polygon(std::span<const TPoint> points) {
    if (points.size() > 1) FTarget.Polygon(points, FPen, FBrush);
}

void TCanvas::Rectangle(const TRect& rect) {
    if (!IsEmpty(rect)) FTarget.Rectangle(rect, FPen, FBrush);
}

void TCanvas::FillRect(const TRect& rect) {
    if (!IsEmpty(rect)) FTarget.FillRect(rect, FBrush);
}

void TCanvas::Ellipse(const TRect& rect) {
    if (!IsEmpty(rect)) FTarget.Ellipse(rect, FPen, FBrush);
}

void TCanvas::Gradient(const TGradientVertex& upperLeft, const TGradientVertex& lowerRight,
                       std::uint32_t mode) {
    if (mode == kGradientHorizontal || mode == kGradientVertical)
        FTarget.Gradient(upperLeft, lowerRight, mode);
}

void TCanvas::TextOut(std::int32_t x, std::int32_t y, StringView text) {
    if (!text.empty()) FTarget.Text({x, y}, Drawn(text), FFont);
}

TSize TCanvas::TextExtent(StringView text) {
    return FTarget.MeasureText(Drawn(text), FFont);
}

}  // namespace Varnholt
