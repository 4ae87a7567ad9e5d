#include <algorithm>
#include <array>
#include <cmath>
#include <new>
#include <numbers>

#include "Platform/Drawing/CairoTargetPrivate.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/System/Platform.h"

namespace Varnholt {
namespace {

/// Cairo computes with 24 bits before the binary point.
constexpr double kLimit = 4'000'000;
constexpr double kHatchStep = 8;
constexpr double kPixelsPerPoint = 96.0 / 72;

double Limited(double coordinate) noexcept {
    return coordinate > -kLimit ? std::min(coordinate, kLimit) : -kLimit;  // no number counts as -kLimit
}

double Channel(TColor plain, int index) noexcept {
    return (plain >> (8 * index) & 0xFF) / 255.0;
}

double PixelWidth(const TPen& pen) noexcept {
    return std::clamp<double>(pen.Width, 1, kLimit);
}

/// What is added to whole coordinates, so that a line of that width covers whole pixels.
double Offset(const TPen& pen) noexcept {
    return std::max(pen.Width, 1) % 2 == 1 ? 0.5 : 0;
}

struct TBox {
    explicit TBox(const TRect& rect, double inset = 0) noexcept
        : X(Limited(rect.Left) + inset),
          Y(Limited(rect.Top) + inset),
          Width(std::max(Limited(rect.Right) - inset - X, 0.0)),
          Height(std::max(Limited(rect.Bottom) - inset - Y, 0.0)) {}
    double X, Y, Width, Height;
};

void SetDashes(cairo_t* cairo, TPenStyle style, double width) {
    static constexpr std::array<double, 4> kDash = {6, 4}, kDot = {1.5, 2.5}, kDashDot = {6, 3, 1.5, 3};
    const std::array<double, 4>& units = style == psDash ? kDash : style == psDot ? kDot : kDashDot;
    std::array<double, 4> dashes{};
    std::ranges::transform(units, dashes.begin(), [&](double unit) { return unit * width; });
    cairo_set_dash(cairo, dashes.data(), style == psSolid ? 0 : style == psDashDot ? 4 : 2, 0);
}

void TraceEllipse(cairo_t* cairo, const TBox& box) {
    if (box.Width <= 0 || box.Height <= 0) return;
    cairo_save(cairo);
    cairo_translate(cairo, box.X + box.Width / 2, box.Y + box.Height / 2);
    cairo_scale(cairo, box.Width / 2, box.Height / 2);
    cairo_new_sub_path(cairo);
    cairo_arc(cairo, 0, 0, 1, 0, 2 * std::numbers::pi);
    cairo_close_path(cairo);
    cairo_restore(cairo);
}

/// The pixel library of Cairo allocates when it is loaded and frees nothing. Cairo stays loaded when this library is
/// closed, so that loading this one again does not repeat that.
[[maybe_unused]] const bool kIsCairoKept =
    (KeepLibraryLoaded(reinterpret_cast<const void*>(&cairo_create)), true);

}  // namespace

void CheckCairo(cairo_status_t status) {
    if (status == CAIRO_STATUS_NO_MEMORY) throw std::bad_alloc();
    if (status != CAIRO_STATUS_SUCCESS)
        throw EInvalidOperation(Format(u"Cannot draw: %s", {FromUtf8(cairo_status_to_string(status))}));
}

TCairoTarget::TCairoTarget(cairo_surface_t& surface) : FCairo(cairo_create(&surface)) {
    Check();
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    FLayout.reset(pango_cairo_create_layout(FCairo.get()));
    PangoContext* const context = pango_layout_get_context(FLayout.get());
    pango_cairo_context_set_font_options(context, options);
    pango_cairo_context_set_resolution(context, 96);
    cairo_font_options_destroy(options);
    pango_layout_set_single_paragraph_mode(FLayout.get(), TRUE);
}

// --- Lines and shapes ---

void TCairoTarget::SetColor(TColor color) {
    const TColor plain = ColorToRGB(color);
    cairo_set_source_rgb(FCairo.get(), Channel(plain, 0), Channel(plain, 1), Channel(plain, 2));
}

void TCairoTarget::Trace(std::span<const TPoint> points, double offset) {
    for (const TPoint point : points)
        cairo_line_to(FCairo.get(), Limited(point.X) + offset, Limited(point.Y) + offset);
}

/// Draws the edge of the path and forgets it.
void TCairoTarget::Stroke(const TPen& pen, bool isClosed) {
    cairo_t* const cairo = FCairo.get();
    if (pen.Style == psClear) return cairo_new_path(cairo);
    SetColor(pen.Color);
    cairo_set_line_width(cairo, PixelWidth(pen));
    cairo_set_line_join(cairo, isClosed ? CAIRO_LINE_JOIN_MITER : CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_cap(cairo, pen.Style == psSolid ? CAIRO_LINE_CAP_SQUARE : CAIRO_LINE_CAP_BUTT);
    SetDashes(cairo, pen.Style, PixelWidth(pen));
    cairo_stroke(cairo);
}

/// Fills the path and keeps it.
void TCairoTarget::Fill(const TBrush& brush) {
    cairo_t* const cairo = FCairo.get();
    if (brush.Style == bsClear) return;
    SetColor(brush.Color);
    cairo_set_fill_rule(cairo, CAIRO_FILL_RULE_WINDING);
    if (brush.Style == bsSolid) return cairo_fill_preserve(cairo);
    cairo_path_t* const path = cairo_copy_path(cairo);
    cairo_save(cairo);
    cairo_clip(cairo);
    Hatch(brush.Style);
    cairo_restore(cairo);
    cairo_new_path(cairo);
    cairo_append_path(cairo, path);
    cairo_path_destroy(path);
}

/// Draws the lines of a hatch on the clipped area. They are at the same places for all shapes.
void TCairoTarget::Hatch(TBrushStyle style) {
    cairo_t* const cairo = FCairo.get();
    double left = 0, top = 0, right = 0, bottom = 0;
    cairo_clip_extents(cairo, &left, &top, &right, &bottom);
    const double height = bottom - top;
    const auto lines = [&](double from, double to, auto&& line) {
        for (auto number = static_cast<int>(std::floor(from / kHatchStep)); number * kHatchStep <= to;
             ++number)
            line(number * kHatchStep + 0.5);
    };
    const auto segment = [&](double x1, double y1, double x2, double y2) {
        cairo_move_to(cairo, x1, y1);
        cairo_line_to(cairo, x2, y2);
    };
    if (style == bsHorizontal || style == bsCross)
        lines(top, bottom, [&](double y) { segment(left, y, right, y); });
    if (style == bsVertical || style == bsCross)
        lines(left, right, [&](double x) { segment(x, top, x, bottom); });
    // A diagonal is named by where it meets the row 0.
    if (style == bsFDiagonal || style == bsDiagCross)
        lines(left - top - height, right - top, [&](double x) { segment(x + top, top, x + bottom, bottom); });
    if (style == bsBDiagonal || style == bsDiagCross)
        lines(left + top, right + top + height, [&](double x) { segment(x - top, top, x - bottom, bottom); });
    cairo_set_dash(cairo, nullptr, 0, 0);
    cairo_set_line_width(cairo, 1);
    cairo_stroke(cairo);
}

void TCairoTarget::Line(TPoint from, TPoint to, const TPen& pen) {
    Polyline(std::array{from, to}, pen);
}

void TCairoTarget::Polyline(std::span<const TPoint> points, const TPen& pen) {
    Trace(points, Offset(pen));
    Stroke(pen, false);
}

void TCairoTarget::Polygon(std::span<const TPoint> points, const TPen& pen, const TBrush& brush) {
    Trace(points, Offset(pen));
    cairo_close_path(FCairo.get());
    Fill(brush);
    Stroke(pen, true);
}

void TCairoTarget::Rectangle(const TRect& rect, const TPen& pen, const TBrush& brush) {
    FillRect(rect, brush);
    const TBox edge(rect, PixelWidth(pen) / 2);
    cairo_rectangle(FCairo.get(), edge.X, edge.Y, edge.Width, edge.Height);
    Stroke(pen, true);
}

void TCairoTarget::FillRect(const TRect& rect, const TBrush& brush) {
    const TBox box(rect);
    cairo_rectangle(FCairo.get(), box.X, box.Y, box.Width, box.Height);
    Fill(brush);
    cairo_new_path(FCairo.get());
}

void TCairoTarget::Ellipse(const TRect& rect, const TPen& pen, const TBrush& brush) {
    TraceEllipse(FCairo.get(), TBox(rect, pen.Style == psClear ? 0 : PixelWidth(pen) / 2));
    Fill(brush);
    Stroke(pen, true);
}

void TCairoTarget::Gradient(const TGradientVertex& upperLeft, const TGradientVertex& lowerRight,
                            std::uint32_t mode) {
    const auto [left, right] = std::minmax(upperLeft.X, lowerRight.X);
    const auto [top, bottom] = std::minmax(upperLeft.Y, lowerRight.Y);
    const TBox box(TRect{left, top, right, bottom});
    const bool isVertical = mode == kGradientVertical;
    const std::unique_ptr<cairo_pattern_t, TCairoFree> pattern(cairo_pattern_create_linear(
        Limited(upperLeft.X), Limited(upperLeft.Y), isVertical ? Limited(upperLeft.X) : Limited(lowerRight.X),
        isVertical ? Limited(lowerRight.Y) : Limited(upperLeft.Y)));
    const auto add = [&](double at, const TGradientVertex& corner) {
        cairo_pattern_add_color_stop_rgb(pattern.get(), at, corner.Red / 65535.0, corner.Green / 65535.0,
                                         corner.Blue / 65535.0);
    };
    add(0, upperLeft);
    add(1, lowerRight);
    cairo_set_source(FCairo.get(), pattern.get());
    cairo_rectangle(FCairo.get(), box.X, box.Y, box.Width, box.Height);
    cairo_fill(FCairo.get());
}

void TCairoTarget::StrokePath(const TGPGraphicsPath& path, const TGPPen& pen) {
    cairo_t* const cairo = FCairo.get();
    for (const TGPGraphicsPath::TFigure& figure : path.GetFigures()) {
        cairo_new_sub_path(cairo);
        for (const TFloatPoint point : figure.Points)
            cairo_line_to(cairo, Limited(point.X) + 0.5, Limited(point.Y) + 0.5);
        if (figure.IsClosed) cairo_close_path(cairo);
    }
    const TColor color = pen.Color;
    cairo_set_source_rgba(cairo, Channel(color, 2), Channel(color, 1), Channel(color, 0), Channel(color, 3));
    cairo_set_line_width(cairo, pen.Width > 0 ? Limited(pen.Width) : 1);
    cairo_set_line_join(cairo, CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_cap(cairo, CAIRO_LINE_CAP_BUTT);
    cairo_set_dash(cairo, nullptr, 0, 0);
    cairo_stroke(cairo);
}

void TCairoTarget::Clip(const std::optional<TRect>& rect) {
    cairo_reset_clip(FCairo.get());
    if (!rect) return;
    const TBox box(*rect);
    cairo_rectangle(FCairo.get(), box.X, box.Y, box.Width, box.Height);
    cairo_clip(FCairo.get());
}

void TCairoTarget::SetPixel(TPoint, TColor) {}

TColor TCairoTarget::GetPixel(TPoint) {
    return clWhite;
}

// --- Text ---

void TCairoTarget::Layout(StringView text, const TFont& font) {
    if (!FLayoutFont || *FLayoutFont != font) {
        const std::unique_ptr<PangoFontDescription, TCairoFree> description(pango_font_description_new());
        pango_font_description_set_family(description.get(),
                                          font.Name.empty() ? "DejaVu Sans" : ToUtf8(font.Name).c_str());
        pango_font_description_set_absolute_size(
            description.get(), std::clamp(font.Size, 1, 10000) * kPixelsPerPoint * PANGO_SCALE);
        if (font.Style.Contains(fsBold))
            pango_font_description_set_weight(description.get(), PANGO_WEIGHT_BOLD);
        if (font.Style.Contains(fsItalic))
            pango_font_description_set_style(description.get(), PANGO_STYLE_ITALIC);
        pango_layout_set_font_description(FLayout.get(), description.get());
        PangoAttrList* const attributes = pango_attr_list_new();
        if (font.Style.Contains(fsUnderline))
            pango_attr_list_insert(attributes, pango_attr_underline_new(PANGO_UNDERLINE_SINGLE));
        if (font.Style.Contains(fsStrikeOut))
            pango_attr_list_insert(attributes, pango_attr_strikethrough_new(TRUE));
        pango_layout_set_attributes(FLayout.get(), attributes);
        pango_attr_list_unref(attributes);
        FLayoutFont = font;
    }
    std::string bytes = ToUtf8(text);
    std::ranges::replace_if(
        bytes, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, ' ');
    pango_layout_set_text(FLayout.get(), bytes.data(), static_cast<int>(bytes.size()));
}

void TCairoTarget::Text(TPoint at, StringView text, const TFont& font) {
    cairo_t* const cairo = FCairo.get();
    Layout(text, font);
    cairo_save(cairo);
    cairo_translate(cairo, Limited(at.X), Limited(at.Y));
    cairo_rotate(cairo, -(font.Escapement % 3600) * std::numbers::pi / 1800);
    SetColor(font.Color);
    cairo_move_to(cairo, 0, 0);
    pango_cairo_show_layout(cairo, FLayout.get());
    cairo_new_path(cairo);
    cairo_restore(cairo);
}

TSize TCairoTarget::MeasureText(StringView text, const TFont& font) {
    Layout(text, font);
    TSize size;
    pango_layout_get_pixel_size(FLayout.get(), &size.Width, &size.Height);
    return size;
}

}  // namespace Varnholt
