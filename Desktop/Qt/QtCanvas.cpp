#include <QFontMetrics>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "Desktop/Qt/QtCanvasPrivate.h"
#include "Desktop/Qt/QtPeerPrivate.h"
#include "Desktop/Qt/QtTextPrivate.h"

namespace Varnholt {
namespace {

/// As other targets draw it.
constexpr double kLimit = 4'000'000;

double Limited(double coordinate) noexcept {
    return coordinate > -kLimit ? std::min(coordinate, kLimit) : -kLimit;  // no number counts as -kLimit
}

int PixelWidth(const TPen& pen) noexcept {
    return std::clamp(pen.Width, 1, static_cast<std::int32_t>(kLimit));
}

/// What is added to whole coordinates, so that a line of that width covers whole pixels.
double Offset(const TPen& pen) noexcept {
    return PixelWidth(pen) % 2 == 1 ? 0.5 : 0;
}

QRectF Box(const TRect& rect, double inset = 0) {
    const double left = Limited(rect.Left) + inset, top = Limited(rect.Top) + inset;
    return {left, top, std::max(Limited(rect.Right) - inset - left, 0.0),
            std::max(Limited(rect.Bottom) - inset - top, 0.0)};
}

QPolygonF Points(std::span<const TPoint> points, double offset) {
    QPolygonF polygon;
    polygon.reserve(static_cast<qsizetype>(points.size()));
    for (const TPoint point : points)
        polygon << QPointF(Limited(point.X) + offset, Limited(point.Y) + offset);
    return polygon;
}

QString Shown(StringView text) {
    QString shown = ToQt(text);
    for (QChar& unit : shown)
        if (unit.unicode() < u' ' || unit.unicode() == 0x7F) unit = u' ';
    return shown;
}

}  // namespace

TQtCanvasTarget::TQtCanvasTarget(QPainter& painter) : FPainter(painter) {
    FPainter.setRenderHint(QPainter::Antialiasing);
}

// --- Lines and shapes ---

void TQtCanvasTarget::Use(const TPen& pen, bool isClosed) {
    static const QList<qreal> kDash = {6, 4}, kDot = {1.5, 2.5}, kDashDot = {6, 3, 1.5, 3};
    if (pen.Style == psClear) return FPainter.setPen(Qt::NoPen);
    QPen converted(ToQtColor(pen.Color), PixelWidth(pen));
    converted.setJoinStyle(isClosed ? Qt::MiterJoin : Qt::RoundJoin);
    converted.setCapStyle(pen.Style == psSolid ? Qt::SquareCap : Qt::FlatCap);
    if (pen.Style != psSolid)
        converted.setDashPattern(pen.Style == psDash ? kDash : pen.Style == psDot ? kDot : kDashDot);
    FPainter.setPen(converted);
}

void TQtCanvasTarget::Use(const TBrush& brush) {
    static constexpr Qt::BrushStyle kStyles[] = {Qt::SolidPattern, Qt::NoBrush,         Qt::HorPattern,
                                                 Qt::VerPattern,   Qt::FDiagPattern,    Qt::BDiagPattern,
                                                 Qt::CrossPattern, Qt::DiagCrossPattern};
    FPainter.setBrush(QBrush(ToQtColor(brush.Color), kStyles[brush.Style]));
}

void TQtCanvasTarget::Line(TPoint from, TPoint to, const TPen& pen) {
    Polyline(std::array{from, to}, pen);
}

void TQtCanvasTarget::Polyline(std::span<const TPoint> points, const TPen& pen) {
    Use(pen, false);
    FPainter.setBrush(Qt::NoBrush);
    FPainter.drawPolyline(Points(points, Offset(pen)));
}

void TQtCanvasTarget::Polygon(std::span<const TPoint> points, const TPen& pen, const TBrush& brush) {
    Use(pen, true);
    Use(brush);
    FPainter.drawPolygon(Points(points, Offset(pen)), Qt::WindingFill);
}

void TQtCanvasTarget::Rectangle(const TRect& rect, const TPen& pen, const TBrush& brush) {
    FillRect(rect, brush);
    Use(pen, true);
    FPainter.setBrush(Qt::NoBrush);
    FPainter.drawRect(Box(rect, PixelWidth(pen) / 2.0));
}

void TQtCanvasTarget::FillRect(const TRect& rect, const TBrush& brush) {
    FPainter.setPen(Qt::NoPen);
    Use(brush);
    FPainter.drawRect(Box(rect));
}

void TQtCanvasTarget::Ellipse(const TRect& rect, const TPen& pen, const TBrush& brush) {
    const QRectF box = Box(rect, pen.Style == psClear ? 0 : PixelWidth(pen) / 2.0);
    if (box.isEmpty()) return;
    Use(pen, true);
    Use(brush);
    FPainter.drawEllipse(box);
}

void TQtCanvasTarget::Gradient(const TGradientVertex& upperLeft, const TGradientVertex& lowerRight,
                               std::uint32_t mode) {
    const auto [left, right] = std::minmax(upperLeft.X, lowerRight.X);
    const auto [top, bottom] = std::minmax(upperLeft.Y, lowerRight.Y);
    const bool isVertical = mode == kGradientVertical;
    QLinearGradient gradient(Limited(upperLeft.X), Limited(upperLeft.Y),
                             Limited(isVertical ? upperLeft.X : lowerRight.X),
                             Limited(isVertical ? lowerRight.Y : upperLeft.Y));
    const auto color = [](const TGradientVertex& corner) {
        return QColor::fromRgba64(corner.Red, corner.Green, corner.Blue);
    };
    gradient.setColorAt(0, color(upperLeft));
    gradient.setColorAt(1, color(lowerRight));
    FPainter.fillRect(Box({left, top, right, bottom}), gradient);
}

void TQtCanvasTarget::StrokePath(const TGPGraphicsPath& path, const TGPPen& pen) {
    QPainterPath converted;
    for (const TGPGraphicsPath::TFigure& figure : path.GetFigures()) {
        for (bool isFirst = true; const TFloatPoint point : figure.Points) {
            const QPointF at(Limited(point.X) + 0.5, Limited(point.Y) + 0.5);
            isFirst ? converted.moveTo(at) : converted.lineTo(at);
            isFirst = false;
        }
        if (figure.IsClosed) converted.closeSubpath();
    }
    const QPen converting(QColor::fromRgba(pen.Color), pen.Width > 0 ? Limited(pen.Width) : 1, Qt::SolidLine,
                          Qt::FlatCap, Qt::RoundJoin);
    FPainter.strokePath(converted, converting);
}

void TQtCanvasTarget::Clip(const std::optional<TRect>& rect) {
    if (rect)
        FPainter.setClipRect(Box(*rect));
    else
        FPainter.setClipping(false);
}

void TQtCanvasTarget::SetPixel(TPoint, TColor) {}

TColor TQtCanvasTarget::GetPixel(TPoint) {
    return clWhite;
}

// --- Text ---

void TQtCanvasTarget::Text(TPoint at, StringView text, const TFont& font) {
    const QFont converted = ToQt(font);
    FPainter.save();
    FPainter.translate(Limited(at.X), Limited(at.Y));
    FPainter.rotate(-(font.Escapement % 3600) / 10.0);
    FPainter.setFont(converted);
    FPainter.setPen(ToQtColor(font.Color));
    FPainter.drawText(QPointF(0, QFontMetricsF(converted).ascent()), Shown(text));
    FPainter.restore();
}

TSize TQtCanvasTarget::MeasureText(StringView text, const TFont& font) {
    const QFontMetricsF metrics(ToQt(font));
    return {static_cast<std::int32_t>(std::ceil(metrics.horizontalAdvance(Shown(text)))),
            static_cast<std::int32_t>(std::ceil(metrics.height()))};
}

}  // namespace Varnholt
