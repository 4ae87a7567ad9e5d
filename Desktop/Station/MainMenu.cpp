#include "Desktop/Station/MainForm.h"

namespace Varnholt::Station {
namespace {

/// A text of the user's as a caption, where `&` marks a letter.
String CaptionOf(StringView text) {
    String caption;
    for (const Char unit : text) caption.append(unit == u'&' ? 2 : 1, unit);
    return caption;
}

}  // namespace

TMenuItem& TMainForm::AddMenu(StringView caption) {
    TMenuItem& menu = Menu.GetItems().Add(std::make_unique<TMenuItem>());
    menu.SetCaption(caption);
    return menu;
}

TMenuItem& TMainForm::AddItem(TMenuItem& menu, StringView caption, StringView shortCut,
                              void (TMainForm::*action)()) {
    TMenuItem& item = menu.Add(std::make_unique<TMenuItem>());
    item.SetCaption(caption);
    item.SetShortCut(shortCut);
    if (action != nullptr) item.SetOnClick([this, action](TObject*) { (this->*action)(); });
    return item;
}

void TMainForm::BuildMenu() {
    TMenuItem& file = AddMenu(u"&File");
    AddItem(file, u"&Open...", u"Ctrl+O", &TMainForm::Open);
    AddItem(file, u"Open from &address...", u"", &TMainForm::OpenFromAddress);
    FRecentMenu = &AddItem(file, u"&Recent files", u"", nullptr);
    AddItem(file, u"-", u"", nullptr);
    AddItem(file, u"&Save table as...", u"Ctrl+S", &TMainForm::SaveTable);
    AddItem(file, u"Save &chart as...", u"Ctrl+Shift+S", &TMainForm::SaveChart);
    AddItem(file, u"&Pack session...", u"", &TMainForm::SaveSession);
    AddItem(file, u"Open sessions with this pro&gram", u"", &TMainForm::Associate);
    AddItem(file, u"-", u"", nullptr);
    AddItem(file, u"E&xit", u"Ctrl+Q", &TMainForm::ExitApplication);

    TMenuItem& edit = AddMenu(u"&Edit");
    AddItem(edit, u"&Copy rows", u"Ctrl+C", &TMainForm::Copy);
    AddItem(edit, u"&Paste rows", u"Ctrl+V", &TMainForm::Paste);

    TMenuItem& table = AddMenu(u"&Table");
    AddItem(table, u"&Sort by selected column", u"F6", &TMainForm::SortBySelected);
    AddItem(table, u"&Then by selected column", u"Shift+F6", &TMainForm::AddSelectedToSort);
    AddItem(table, u"&Undo sort", u"Ctrl+Z", &TMainForm::UndoSort);
    AddItem(table, u"-", u"", nullptr);
    AddItem(table, u"&Computed column...", u"F7", &TMainForm::AddColumn);
    AddItem(table, u"&Report...", u"F8", &TMainForm::Report);

    FFavouritesMenu = &AddMenu(u"F&avourites");
    ListFavourites();

    AddItem(AddMenu(u"&Options"), u"&Proxy...", u"", &TMainForm::EditProxy);
    ListRecentFiles();
    SetMenu(&Menu);
}

void TMainForm::ListFavourites() {
    FFavouritesMenu->Clear();
    AddItem(*FFavouritesMenu, u"&Add expression...", u"Ctrl+D", &TMainForm::AddFavourite);
    AddItem(*FFavouritesMenu, u"&Organize...", u"", &TMainForm::OrganizeFavourites);
    AddItem(*FFavouritesMenu, u"-", u"", nullptr);
    for (std::int32_t i = 0; i < FFavourites.GetCount(); ++i) {
        const auto& favourite = dynamic_cast<const TExpressionFavourite&>(FFavourites[i]);
        TMenuItem& item = AddItem(*FFavouritesMenu, CaptionOf(favourite.GetName()), u"", nullptr);
        item.SetOnClick([this, text = favourite.Text](TObject*) { Filter.Edit.SetText(text); });
    }
}

void TMainForm::ListRecentFiles() {
    FRecentMenu->Clear();
    for (const String& path : RecentFiles()) {
        TMenuItem& item = AddItem(*FRecentMenu, CaptionOf(ShownPath(path)), u"", nullptr);
        item.SetOnClick([this, path](TObject*) {
            if (MayDropTable()) OpenFile(path);
        });
    }
    FRecentMenu->SetEnabled(FRecentMenu->GetCount() > 0);
}

}  // namespace Varnholt::Station
