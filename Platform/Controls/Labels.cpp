#include "Platform/Controls/Labels.h"

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

}  // namespace Varnholt
