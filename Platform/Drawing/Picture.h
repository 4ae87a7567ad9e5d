#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Platform/Drawing/Canvas.h"

/// Pictures as files: PNG, SVG and PDF.
///
///     DrawToFile(u"C:\\charts\\rain.svg", {800, 600}, [&](TCanvas& canvas) { chart.Draw(canvas); });
///
/// No display is needed. Text in SVG and PDF is the outlines or the embedded font, so it looks the same everywhere.
///
/// Threads: any; each call has a canvas of its own.
namespace Varnholt {

enum TPictureFormat : std::uint8_t { pictPng, pictSvg, pictPdf };

/// The format of a file name by its extension, `.png`, `.svg` or `.pdf` in either case.
[[nodiscard]] VARNHOLT_EXPORT std::optional<TPictureFormat> PictureFormatOf(StringView fileName);

/// The bytes of the picture that the function draws on a white page. A page of a PDF has 96 pixels an inch. Raises
/// EArgumentException `Size %d x %d of a picture is not between 1 and 32767`, EInvalidOperation `Cannot draw: %s`, and what
/// the function raises.
[[nodiscard]] VARNHOLT_EXPORT std::string DrawPicture(TPictureFormat format, TSize size,
                                                      const std::function<void(TCanvas&)>& draw);

/// The same as a file, which is replaced as a whole. Raises also EArgumentException `The format of picture "%s" is not
/// known` and what TDraftFileStream raises.
VARNHOLT_EXPORT void DrawToFile(StringView fileName, TSize size, const std::function<void(TCanvas&)>& draw);

}  // namespace Varnholt
