#pragma once

#include <cairo.h>
#include <pango/pangocairo.h>

#include <memory>

#include "Platform/Drawing/Canvas.h"

namespace Varnholt {

struct TCairoFree {
    void operator()(cairo_t* cairo) const noexcept { cairo_destroy(cairo); }
    void operator()(cairo_surface_t* surface) const noexcept { cairo_surface_destroy(surface); }
    void operator()(cairo_pattern_t* pattern) const noexcept { cairo_pattern_destroy(pattern); }
    void operator()(PangoLayout* layout) const noexcept { g_object_unref(layout); }
    void operator()(PangoFontDescription* font) const noexcept { pango_font_description_free(font); }
};
using TCairo = std::unique_ptr<cairo_t, TCairoFree>;
using TCairoSurface = std::unique_ptr<cairo_surface_t, TCairoFree>;

/// Raises std::bad_alloc or EInvalidOperation `Cannot draw: %s` if the status is an error.
void CheckCairo(cairo_status_t status);

/// Draws on a surface of Cairo, with text set by Pango. Fonts are measured without hinting, so that a text is as wide on
/// a page as in a bitmap.
class TCairoTarget final : public ICanvasTarget {
public:
    explicit TCairoTarget(cairo_surface_t& surface);

    /// Raises what has gone wrong since the beginning; drawing itself raises nothing.
    void Check() const { CheckCairo(cairo_status(FCairo.get())); }

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
    void SetColor(TColor color);
    void Trace(std::span<const TPoint> points, double offset);
    void Stroke(const TPen& pen, bool isClosed);
    void Fill(const TBrush& brush);
    void Hatch(TBrushStyle style);
    void Layout(StringView text, const TFont& font);

    TCairo FCairo;
    std::unique_ptr<PangoLayout, TCairoFree> FLayout;
    std::optional<TFont> FLayoutFont;
};

}  // namespace Varnholt
