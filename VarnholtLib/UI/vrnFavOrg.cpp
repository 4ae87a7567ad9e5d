#include "VarnholtLib/UI/vrnFavOrg.h"

#include "VarnholtLib/UI/vrnFavAdd.h"
#include "VarnholtLib/UI/vrnMessageBox.h"

namespace Varnholt {
namespace {

constinit TFavOrg* current = nullptr;

TBaseFavourite& FavouriteOf(const TListItem& row) {
    return *static_cast<TBaseFavourite*>(row.GetData());
}

}  // namespace

TFavOrg* FavOrg() noexcept {
    return current;
}

TFavOrg::TFavOrg(TFavouriteData& favData)
    : Label1(Add<TLabel>(u"Label1")),
      lvFavs(Add<TListView>(u"lvFavs")),
      Button1(Add<TButton>(u"Button1")),
      Button2(Add<TButton>(u"Button2")),
      Button3(Add<TButton>(u"Button3")),
      FFavData(favData) {
    SetName(u"FavOrg");
    SetCaption(u"Organize Favourites");
    SetPosition(poScreenCenter);
    SetClientSize({412, 379});
    TFont bold;
    bold.Style = {fsBold};
    Label1.SetCaption(u"Organize your favourites below:");
    Label1.SetFont(bold);
    Label1.SetBounds(8, 8, 396, 15);
    lvFavs.SetBounds(8, 32, 396, 306);
    lvFavs.SetAnchors({akLeft, akTop, akRight, akBottom});
    lvFavs.AddColumn(u"Favourites", 350, true);
    lvFavs.SetReadOnly(true);
    lvFavs.SetRowSelect(true);
    lvFavs.SetHideSelection(false);
    lvFavs.SetOnDblClick([this](TObject*) { Button2Click(); });
    Button1.SetCaption(u"&Delete");
    Button1.SetBounds(8, 346, 75, 25);
    Button1.SetAnchors({akLeft, akBottom});
    Button1.SetOnClick([this](TObject*) { Button1Click(); });
    Button2.SetCaption(u"&Rename");
    Button2.SetBounds(89, 346, 75, 25);
    Button2.SetAnchors({akLeft, akBottom});
    Button2.SetOnClick([this](TObject*) { Button2Click(); });
    Button3.SetCaption(u"&Close");
    Button3.SetBounds(329, 346, 75, 25);
    Button3.SetAnchors({akRight, akBottom});
    Button3.SetDefault(true);
    Button3.SetCancel(true);
    Button3.SetModalResult(mrOk);
    current = this;
}

TFavOrg::~TFavOrg() {
    if (current == this) current = nullptr;
}

void TFavOrg::DoShow() {
    TForm::DoShow();
    lvFavs.ClearItems();
    for (std::int32_t i = 0; i < FFavData.GetCount(); ++i)
        lvFavs.AddItem(FFavData[i].GetName()).SetData(&FFavData[i]);
}

void TFavOrg::Button1Click() {
    const TListItem* const row = lvFavs.GetSelected();
    if (row == nullptr || !ClickedYes(TMsgBox::YesNo(u"Delete selected favourite?", u"Delete?"))) return;
    FavouriteOf(*row).Delete();
    lvFavs.DeleteItem(row->GetIndex());
    FFavData.Save();
}

void TFavOrg::Button2Click() {
    TListItem* const row = lvFavs.GetSelected();
    if (row == nullptr) return;
    TBaseFavourite& favourite = FavouriteOf(*row);
    TFavAddDlg dialog(FFavData, amRename, &favourite);
    if (dialog.ShowModal() != mrOk) return;
    favourite.SetName(dialog.edName.GetText());
    row->SetCaption(favourite.GetName());
    FFavData.Save();
}

}  // namespace Varnholt
