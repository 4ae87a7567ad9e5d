#include "Platform/Drawing/GPGraphics.h"
#include "VarnholtLib/UI/vrnChartLookPrivate.h"
#include "VarnholtLib/UI/vrnColorConvert.h"
#include "VarnholtLib/UI/vrnGraphics.h"

namespace Varnholt {

void TLines::Add(TPoint from, TPoint to) {
    const auto coordinate = [](std::int32_t value) { return static_cast<float>(value); };
    FPath.BeginFigure();
    FPath.AddLine(coordinate(from.X), coordinate(from.Y), coordinate(to.X), coordinate(to.Y));
}

void TLines::Draw(TCanvas& canvas, TColor color) {
    TGPGraphics(canvas).DrawPath({.Color = TColorConvert::ToARGB(color)}, FPath);
    FPath.Reset();
}

void TextCentred(TCanvas& canvas, const TFont& font, std::int32_t left, std::int32_t right, std::int32_t top,
                 StringView text) {
    canvas.SetFont(font);
    const String shown = ShortenedText(text, canvas, right - left);
    canvas.TextOut(left + (right - left - canvas.TextWidth(shown)) / 2, top, shown);
}

}  // namespace Varnholt
