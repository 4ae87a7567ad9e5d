#pragma once

#include <cstdint>
#include <memory>

#include "Platform/Controls/Form.h"
#include "Platform/Controls/Labels.h"
#include "Platform/Drawing/Bitmap.h"
#include "VarnholtLib/UI/vrnBitmapPixels.h"
#include "VarnholtLib/UI/vrnColorConvert.h"

/// Gradients, text at an angle, paths shortened to a width, and pictures of windows.
///
///     GradFill(canvas, clHighlight, clWindow, 640, 480, kGradientVertical);
///     AngleTextOut(canvas, 90, 20, 300, u"Precipitation (mm)");
///     label.SetCaption(EllipsePathString(fileName, label));
///
/// Threads: as the canvas; controls on the main thread only.
namespace Varnholt {

/// The rectangle of that size at a corner; an edge beyond 32 bits becomes the last integer of 32 bits.
[[nodiscard]] VARNHOLT_EXPORT TRect MakeTRect(std::int32_t left, std::int32_t top, std::int32_t width,
                                              std::int32_t height) noexcept;

/// Fills a rectangle with a gradient from `color1` at its left or upper edge to `color2`. A channel of 255 is drawn as
/// 65,025 of 65,535. A mode other than kGradientHorizontal and kGradientVertical draws nothing.
VARNHOLT_EXPORT void GradFill(TCanvas& canvas, TColor color1, TColor color2, std::int32_t left,
                              std::int32_t top, std::int32_t right, std::int32_t bottom, std::uint32_t mode);
VARNHOLT_EXPORT void GradFill(TCanvas& canvas, TColor color1, TColor color2, const TRect& rect,
                              std::uint32_t mode);
/// From (0, 0).
VARNHOLT_EXPORT void GradFill(TCanvas& canvas, TColor color1, TColor color2, std::int32_t right,
                              std::int32_t bottom, std::uint32_t mode);

/// Draws a text turned counterclockwise by an angle in degrees around its upper left corner, which is at (x, y).
VARNHOLT_EXPORT void AngleTextOut(TCanvas& canvas, std::int32_t angle, std::int32_t x, std::int32_t y,
                                  StringView text);

/// The text, with as much of its end replaced by `...` as does not fit into a width in pixels; the text itself if not
/// even `...` fits.
[[nodiscard]] VARNHOLT_EXPORT String ShortenedText(StringView text, TCanvas& canvas, std::int32_t width);

/// The path, shortened to a width in pixels of the font of the canvas. What does not fit is left out of the middle of
/// the folders, `C:\Users\...\rain.csv`; then all folders are left out, and then the end of the file name,
/// `...\ra...`. If not even `...` fits, the path remains as it is. The path may have any length.
[[nodiscard]] VARNHOLT_EXPORT String EllipsePathString(StringView path, TCanvas& canvas, std::int32_t width);
/// The same for the font and the width of a label.
[[nodiscard]] VARNHOLT_EXPORT String EllipsePathString(StringView path, const TLabel& label);

/// Makes a bitmap of the form's size and paints the form on it, one pixel to the right and below its corner. The
/// canvas is locked while the form paints.
VARNHOLT_EXPORT void GetWindowBitmap(TCustomForm& form, std::unique_ptr<TBitmap>& bitmap);

}  // namespace Varnholt
