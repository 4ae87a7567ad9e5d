#include "Platform/Controls/MessageDialog.h"

#include "Platform/System/Platform.h"

namespace Varnholt {
namespace {

struct TKind {
    StringView Title;
    TMessageIcon Icon;
};

// By TMsgDlgType.
constexpr TKind kKinds[] = {{u"Warning", miWarning},
                            {u"Error", miStop},
                            {u"Information", miInformation},
                            {u"Confirm", miQuestion},
                            {u"", miNone}};

// By TMsgDlgBtn.
constexpr TModalResult kResults[] = {mrYes, mrNo, mrOk, mrCancel, mrAbort, mrRetry, mrIgnore};

}  // namespace

TModalResult MessageDlg(StringView text, TMsgDlgType dialogType, TMsgDlgButtons buttons,
                        std::int32_t helpContext) {
    const TKind& kind = kKinds[dialogType];
    TMessageBox box{.Text = String(text), .Title = String(kind.Title), .Icon = kind.Icon, .Buttons = {}};
    for (const TMsgDlgBtn button : {mbYes, mbNo, mbOK, mbCancel, mbAbort, mbRetry, mbIgnore})
        if (buttons.Contains(button)) box.Buttons.push_back(kResults[button]);
    if (box.Buttons.empty()) box.Buttons = {mrOk};
    box.HelpContext = helpContext;
    box.Owner = Platform().Screen->GetActiveFormHandle();
    return Platform().MessageBoxes->Show(box);
}

}  // namespace Varnholt
