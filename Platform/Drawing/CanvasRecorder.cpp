#include "Platform/Drawing/CanvasRecorder.h"

#include <algorithm>
#include <array>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"

namespace Varnholt {
namespace {

constexpr std::array<StringView, 11> kNames = {u"Line",     u"Polyline", u"Polygon", u"Rectangle",
                                               u"FillRect", u"Ellipse",  u"Text",    u"Gradient",
                                               u"Path",     u"Clip",     u"Pixel"};
constexpr std::array<StringView, 5> kPenStyles = {u"", u" dash", u" dot", u" dash dot", u" clear"};
constexpr std::array<StringView, 8> kBrushStyles = {
    u"", u" clear", u" horizontal", u" vertical", u" fdiagonal", u" bdiagonal", u" cross", u" diagcross"};

String Number(double value) {
    return FloatToStr(value, TFormatSettings::Invariant());
}

String Hex(std::uint32_t color, StringView format) {
    return Format(format, {static_cast<std::int64_t>(color)});
}

String DescribePen(const TPen& pen) {
    if (pen == TPen{}) return {};
    return u" pen " + Hex(pen.Color, u"%.6x ") + IntToStr(pen.Width) +
           String(kPenStyles[std::min<std::size_t>(pen.Style, kPenStyles.size() - 1)]);
}

String DescribeBrush(const TBrush& brush) {
    if (brush == TBrush{}) return {};
    return u" brush " + Hex(brush.Color, u"%.6x") +
           String(kBrushStyles[std::min<std::size_t>(brush.Style, kBrushStyles.size() - 1)]);
}

String DescribeFont(const TFont& font) {
    String text = u" size " + IntToStr(font.Size);
    if (font.Escapement != 0) text += u" turned " + IntToStr(font.Escapement);
    if (!font.Name.empty()) text += u" " + font.Name;
    return text;
}

String DescribeCorner(const TGradientVertex& corner) {
    return Format(u" %d/%d/%d", {corner.Red, corner.Green, corner.Blue});
}

}  // namespace

std::span<const TCanvasRecorder::TPosition> TCanvasRecorder::GetPoints(
    const TDrawnOperation& operation) const {
    return std::span(FPoints).subspan(operation.FirstPoint, operation.PointCount);
}

void TCanvasRecorder::Clear() noexcept {
    FOperations.clear();
    FPoints.clear();
    FDetails.clear();
}

std::vector<String> TCanvasRecorder::Describe() const {
    std::vector<String> lines;
    lines.reserve(FOperations.size());
    for (const TDrawnOperation& operation : FOperations) {
        String line(kNames[operation.Kind]);
        for (const TPosition& point : GetPoints(operation))
            line += u" " + Number(point.X) + u"," + Number(point.Y);
        line += DescribePen(operation.Pen) + DescribeBrush(operation.Brush);
        if (operation.Detail > 0) line += FDetails[operation.Detail - 1];
        lines.push_back(std::move(line));
    }
    return lines;
}

TDrawnOperation& TCanvasRecorder::Add(TDrawnKind kind, std::span<const TPoint> points) {
    TDrawnOperation& added = FOperations.emplace_back();
    added.Kind = kind;
    added.FirstPoint = static_cast<std::uint32_t>(FPoints.size());
    added.PointCount = static_cast<std::uint32_t>(points.size());
    for (const TPoint point : points)
        FPoints.push_back({static_cast<double>(point.X), static_cast<double>(point.Y)});
    return added;
}

TDrawnOperation& TCanvasRecorder::Add(TDrawnKind kind, const TRect& rect) {
    return Add(kind, std::array{TPoint{rect.Left, rect.Top}, TPoint{rect.Right, rect.Bottom}});
}

void TCanvasRecorder::AddDetail(TDrawnOperation& operation, String detail) {
    FDetails.push_back(std::move(detail));
    operation.Detail = static_cast<std::uint32_t>(FDetails.size());
}

void TCanvasRecorder::Line(TPoint from, TPoint to, const TPen& pen) {
    Add(dkLine, std::array{from, to}).Pen = pen;
}

void TCanvasRecorder::Polyline(std::span<const TPoint> points, const TPen& pen) {
    Add(dkPolyline, points).Pen = pen;
}

void TCanvasRecorder::Polygon(std::span<const TPoint> points, const TPen& pen, const TBrush& brush) {
    TDrawnOperation& added = Add(dkPolygon, points);
    added.Pen = pen;
    added.Brush = brush;
}

void TCanvasRecorder::Rectangle(const TRect& rect, const TPen& pen, const TBrush& brush) {
    TDrawnOperation& added = Add(dkRectangle, rect);
    added.Pen = pen;
    added.Brush = brush;
}

void TCanvasRecorder::FillRect(const TRect& rect, const TBrush& brush) {
    Add(dkFillRect, rect).Brush = brush;
}

void TCanvasRecorder::Ellipse(const TRect& rect, const TPen& pen, const TBrush& brush) {
    TDrawnOperation& added = Add(dkEllipse, rect);
    added.Pen = pen;
    added.Brush = brush;
}

void TCanvasRecorder::Text(TPoint at, StringView text, const TFont& font) {
    AddDetail(Add(dkText, std::array{at}), u" \"" + String(text) + u"\"" + DescribeFont(font));
}

void TCanvasRecorder::Gradient(const TGradientVertex& upperLeft, const TGradientVertex& lowerRight,
                               std::uint32_t mode) {
    AddDetail(Add(dkGradient, TRect{upperLeft.X, upperLeft.Y, lowerRight.X, lowerRight.Y}),
              DescribeCorner(upperLeft) + DescribeCorner(lowerRight) +
                  (mode == kGradientVertical ? u" vertical" : u" horizontal"));
}

void TCanvasRecorder::StrokePath(const TGPGraphicsPath& path, const TGPPen& pen) {
    for (const TGPGraphicsPath::TFigure& figure : path.GetFigures()) {
        TDrawnOperation& added = Add(dkPath, std::span<const TPoint>());
        added.PointCount = static_cast<std::uint32_t>(figure.Points.size());
        for (const TFloatPoint point : figure.Points) FPoints.push_back({point.X, point.Y});
        AddDetail(added, (figure.IsClosed ? u" closed pen " : u" pen ") + Hex(pen.Color, u"%.8x ") +
                             Number(pen.Width));
    }
}

void TCanvasRecorder::Clip(const std::optional<TRect>& rect) {
    if (rect)
        Add(dkClip, *rect);
    else
        Add(dkClip, std::span<const TPoint>());
}

void TCanvasRecorder::SetPixel(TPoint at, TColor color) {
    AddDetail(Add(dkPixel, std::array{at}), Hex(color, u" %.6x"));
}

TColor TCanvasRecorder::GetPixel(TPoint) {
    return clWhite;
}

TSize TCanvasRecorder::MeasureText(StringView text, const TFont& font) {
    const std::int64_t size = std::clamp(font.Size, 0, 10'000), length = std::ssize(text);
    return {static_cast<std::int32_t>(std::min<std::int64_t>(length * size, INT32_MAX)),
            static_cast<std::int32_t>(2 * size)};
}

}  // namespace Varnholt
