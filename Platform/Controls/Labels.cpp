#include "Platform/Controls/Labels.h"

#include <algorithm>

namespace Varnholt {

TLabel::TLabel() {
    SetColor(clBtnFace);
    SetBounds(0, 0, 34, 15);
}

TLabel::~TLabel() = default;

void TLabel::SetCaption(StringView caption) {
    FCaption = caption;
    Changed(caText);
}

TPanel::TPanel() {
    SetColor(clBtnFace);
    SetBounds(0, 0, 185, 41);
    SetTabStop(false);
}

TPanel::~TPanel() = default;

void TPanel::SetCaption(StringView caption) {
    FCaption = caption;
    Changed(caText);
}

TProgressBar::TProgressBar() {
    SetColor(clBtnFace);
    SetBounds(0, 0, 150, 17);
}

TProgressBar::~TProgressBar() = default;

void TProgressBar::SetPercent(std::int32_t percent) {
    FPercent = std::clamp(percent, -1, 100);
    Changed(caText);
}

TPaintBox::TPaintBox() {
    SetBounds(0, 0, 105, 105);
}

TPaintBox::~TPaintBox() = default;

void TPaintBox::SetOnPaint(TPaintEvent onPaint) {
    FOnPaint = std::move(onPaint);
    Repaint();
}

void TPaintBox::Paint(TCanvas& canvas, std::int32_t x, std::int32_t y) {
    TControl::Paint(canvas, x, y);
    const TPaintEvent onPaint = FOnPaint;
    onPaint(this, canvas, AreaAt(x, y));
}

}  // namespace Varnholt
