#pragma once

#include "Platform/Drawing/Canvas.h"

/// What the charts have in common.
namespace Varnholt {

inline const TFont kTitleFont{.Size = 12, .Color = clBlack, .Style = {fsBold}};
inline const TFont kLabelFont{.Size = 9, .Color = 0x303030};
inline constexpr TColor kFrameColor = 0x606060;
inline constexpr TColor kGridColor = 0xE4E4E4;

/// Thin lines of one colour that are drawn together, which keeps pictures small.
class TLines {
public:
    void Add(TPoint from, TPoint to);
    void Draw(TCanvas& canvas, TColor color);

private:
    TGPGraphicsPath FPath;
};

/// Draws the text in the middle between two columns, shortened to fit.
void TextCentred(TCanvas& canvas, const TFont& font, std::int32_t left, std::int32_t right, std::int32_t top,
                 StringView text);

}  // namespace Varnholt
