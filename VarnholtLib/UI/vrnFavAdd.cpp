#include "VarnholtLib/UI/vrnFavAdd.h"

#include "VarnholtLib/UI/vrnMessageBox.h"

namespace Varnholt {
namespace {

constexpr std::uint32_t kStopIcon = 16, kInformationIcon = 64;

constinit TFavAddDlg* current = nullptr;

}  // namespace

TFavAddDlg* FavAddDlg() noexcept {
    return current;
}

TFavAddDlg::TFavAddDlg(TFavouriteData& favData, TAddMethod addMethod, TBaseFavourite* renameItem)
    : Label2(Add<TLabel>(u"Label2")),
      Label1(Add<TLabel>(u"Label1")),
      edName(Add<TEdit>(u"edName")),
      Button1(Add<TButton>(u"Button1")),
      Button2(Add<TButton>(u"Button2")),
      FFavData(favData),
      FRenameItem(renameItem),
      FAddMethod(addMethod) {
    SetName(u"FavAddDlg");
    SetCaption(u"Add Favourite");
    SetBorderStyle(bsDialog);
    SetPosition(poScreenCenter);
    SetClientSize({397, 114});
    TFont bold;
    bold.Style = {fsBold};
    Label2.SetCaption(u"Add a favourite");
    Label2.SetFont(bold);
    Label2.SetBounds(8, 8, 381, 15);
    Label1.SetCaption(u"Name: ");
    Label1.SetBounds(8, 43, 50, 15);
    edName.SetBounds(64, 40, 325, 23);
    Button1.SetCaption(u"&OK");
    Button1.SetBounds(233, 81, 75, 25);
    Button1.SetDefault(true);
    Button1.SetOnClick([this](TObject*) { Button1Click(); });
    Button2.SetCaption(u"&Cancel");
    Button2.SetBounds(314, 81, 75, 25);
    Button2.SetCancel(true);
    Button2.SetModalResult(mrCancel);
    if (addMethod == amRename && renameItem != nullptr) edName.SetText(renameItem->GetName());
    current = this;
}

TFavAddDlg::~TFavAddDlg() {
    if (current == this) current = nullptr;
}

void TFavAddDlg::Refuse(StringView message, std::uint32_t icon) {
    TMsgBox::Show(message, u"Name", icon, &edName);
}

void TFavAddDlg::Button1Click() {
    if (edName.GetText().empty()) return Refuse(u"Please enter a name.", kInformationIcon);
    std::vector<TBaseFavourite*> found = FFavData.FindItems(edName.GetText());
    if (FAddMethod == amRename) std::erase(found, FRenameItem);
    if (!found.empty())
        return Refuse(u"An item with this name already exists.",
                      FAddMethod == amRename ? kStopIcon : kInformationIcon);
    SetModalResult(mrOk);
}

}  // namespace Varnholt
