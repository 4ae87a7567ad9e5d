#include "VarnholtLib/UI/vrnWindowSwitchHelper.h"

#include "Platform/System/Platform.h"

namespace Varnholt {
namespace {

constinit TSwitchToHelper* current = nullptr;

}  // namespace

TSwitchToHelper* SwitchToHelper() noexcept {
    return current;
}

TSwitchToHelper::TSwitchToHelper(std::uintptr_t switchToHandle) : FSwitchToHandle(switchToHandle) {
    SetCaption(u"Please wait...");
    SetBorderStyle(bsNone);
    SetPosition(poScreenCenter);
    SetClientSize({343, 50});
    SetColor(clBtnShadow);
    TLabel& label = Add<TLabel>(u"Label1");
    label.SetCaption(u"Please Wait...");
    label.SetAlign(alClient);
    TFont font;
    font.Style = {fsBold};
    label.SetFont(font);
    FSwitchTimer.SetInterval(500);
    FSwitchTimer.SetOnTimer([this](TObject*) { SwitchTimerTimer(); });
    current = this;
}

TSwitchToHelper::~TSwitchToHelper() {
    if (current == this) current = nullptr;
}

bool TSwitchToHelper::Execute(std::uintptr_t switchToHandle) {
    TSwitchToHelper form(switchToHandle);
    form.ShowModal();
    return form.FSwitchResult;
}

void TSwitchToHelper::DoShow() {
    TForm::DoShow();
    FSwitchTimer.SetEnabled(true);
}

void TSwitchToHelper::SwitchTimerTimer() {
    try {
        FSwitchResult = Platform().Screen->BringWindowToTop(FSwitchToHandle);
    } catch (...) {
        FSwitchResult = false;  // the form must not stay open
    }
    FSwitchTimer.SetEnabled(false);
    Close();
}

}  // namespace Varnholt
