#pragma once

#include <cstdint>
#include <span>

#include "Platform/Drawing/Canvas.h"
#include "Platform/Drawing/GPGraphics.h"

/// Clipping lines to a window, tests of rectangles, and curves drawn as chords.
///
///     ClipLine(canvas, x1, y1, x2, y2, {0, 0, 640, 480});
///     BSpline(canvas, points, 10);
///
/// A point on an edge of a window is inside it. Roundings are to the nearest integer, ties to the even one; results
/// beyond 32 bits become the nearest integer of 32 bits, and those that are no number 0.
///
/// Threads: as the canvas.
namespace Varnholt {

/// The sum of 1 if the point is left of the window, or 2 if it is right of it, and 4 if it is below, or 8 if it is
/// above. 0 for a point inside.
[[nodiscard]] VARNHOLT_EXPORT std::uint8_t OutCode(std::int32_t x, std::int32_t y,
                                                   const TRect& rect) noexcept;
[[nodiscard]] VARNHOLT_EXPORT std::uint8_t OutCode(float x, float y, const TRect& rect) noexcept;

/// Draws the part of a line that is inside the window, and returns whether it did (Cohen and Sutherland, in Foley and van
/// Dam 1982). The slope is that of the whole line at each cut. Nothing is drawn, and the result is false, if what
/// remains spans more than 98 % of the width or the height of the window, if the window has no width or no height, if a
/// coordinate is no finite number, and if an end is still outside after eight cuts, as it may be of a window with
/// swapped edges.
VARNHOLT_EXPORT bool ClipLine(TCanvas& canvas, std::int32_t x1, std::int32_t y1, std::int32_t x2,
                              std::int32_t y2, const TRect& rect);
VARNHOLT_EXPORT bool ClipLine(TGPGraphics& graphics, const TGPPen& pen, std::int32_t x1, std::int32_t y1,
                              std::int32_t x2, std::int32_t y2, const TRect& rect);
/// The same, with the line as a closed figure of the path. A new Y at the left or right edge is not rounded, and a new X
/// is a whole distance from X1.
VARNHOLT_EXPORT bool ClipLine(TGPGraphicsPath& path, float x1, float y1, float x2, float y2,
                              const TRect& rect);

[[nodiscard]] VARNHOLT_EXPORT bool InWindow(std::int32_t x, std::int32_t y, const TRect& rect) noexcept;
/// Whether the first rectangle is inside the second, common edges included.
[[nodiscard]] VARNHOLT_EXPORT bool RectInRect(const TRect& r1, const TRect& r2) noexcept;
/// The rectangle with left and right, and top and bottom, in rising order.
[[nodiscard]] VARNHOLT_EXPORT TRect OrderRect(const TRect& rect) noexcept;

/// Draws a uniform cubic B-spline in chords, `steps` for each four points in turn: from parameter 1 / steps to
/// 1 + 1 / steps, in 32-bit steps. Nothing for fewer than four points or one step.
VARNHOLT_EXPORT void BSpline(TCanvas& canvas, std::span<const TPoint> points, std::int32_t steps);
/// Draws the one Bézier curve through the first and last point that the others attract, in so many chords. Each term
/// is truncated into the sum. Nothing for no points or fewer than one step. The time for a chord grows with the square
/// of the number of points.
VARNHOLT_EXPORT void Bezier(TCanvas& canvas, std::span<const TPoint> points, std::int32_t steps);

[[nodiscard]] VARNHOLT_EXPORT TFloatPoint FloatPoint(float x, float y) noexcept;

}  // namespace Varnholt
