#include <cstdlib>
#include <iostream>

#include "Platform/Controls/Controls.h"
#include "VarnholtLib/Services/vrnSpecialFolders.h"
#include "VarnholtLib/UI/UI.h"

// A dialog of six controls without a window: its state is kept as a bookmark, changed, and restored from the file; a favourite
// is added and renamed in the dialog for favourites. The steps that a person would do are posted.
namespace {

using namespace Varnholt;

/// The settings of a report.
struct TReportDialog : TForm {
    TReportDialog() {
        SetCaption(u"Report");
        cbMethod.GetItems().SetLines({u"mean", u"sum"});
        cbMethod.SetItemIndex(0);
        edStation.SetText(u"Seattle");
        btOk.SetDefault(true);
        btOk.SetModalResult(mrOk);

        const auto adapters = std::make_shared<TUIBookmarkValueAdapters>();
        adapters->Add(std::make_shared<TComboBoxUIBookmarkValueAdapter>());
        Binder->SetAdapters(adapters);
        for (TControl* control :
             std::initializer_list<TControl*>{&edStation, &cbDaily, &rbTable, &rbChart, &cbMethod})
            Binder->Add(control);
    }

    TEdit& edStation = Add<TEdit>(u"edStation");
    TCheckBox& cbDaily = Add<TCheckBox>(u"cbDaily");
    TRadioButton& rbTable = Add<TRadioButton>(u"rbTable");
    TRadioButton& rbChart = Add<TRadioButton>(u"rbChart");
    TComboBox& cbMethod = Add<TComboBox>(u"cbMethod");
    TButton& btOk = Add<TButton>(u"btOk");
    std::shared_ptr<IUIBookmarkBinder> Binder = TUIBookmarkBinderFactory::GetObject();
};

class TStationFavourite : public TBaseFavourite {
public:
    using TBaseFavourite::TBaseFavourite;
    static String GetFilename() { return u"Stations"; }
    static String GetNodeName() { return u"station"; }
};

String Shown(const TReportDialog& dialog) {
    return dialog.edStation.GetText() + (dialog.cbDaily.GetChecked() ? u", daily, " : u", ") +
           (dialog.rbChart.GetChecked() ? u"chart, " : u"table, ") + dialog.cbMethod.GetText();
}

void KeepAndRestore() {
    TReportDialog dialog;
    const auto db = TUIBookmarkXMLDbFactory::GetObject();
    db->Load(TSpecialFolders::GetAppData() + u"Example.bookmarks");
    const auto bookmark = TUIBookmarkFactory::GetObject();
    bookmark->SetName(u"Winter");

    Application().Post([&] {
        dialog.edStation.SelectAll();
        dialog.edStation.TypeByUser(u"Bergen");
        dialog.cbDaily.ClickByUser();
        dialog.rbChart.ClickByUser();
        dialog.cbMethod.SelectByUser(1);
        dialog.KeyByUser(kKeyEnter);
    });
    if (dialog.ShowModal() == mrOk) dialog.Binder->UpdateBookmark(*bookmark);
    db->GetCollection(u"Report")->Add(bookmark);
    db->Save();

    TReportDialog later;
    std::cout << "New: " << ToUtf8(Shown(later)) << '\n';
    db->Load(TSpecialFolders::GetAppData() + u"Example.bookmarks");
    later.Binder->UpdateControls(*db->GetCollection(u"Report")->First());
    std::cout << "Restored: " << ToUtf8(Shown(later)) << '\n';
}

void KeepFavourites() {
    TFavouriteData favourites(TFavouriteClass::Of<TStationFavourite>());
    auto bergen = favourites.CreateNewFavourite();
    bergen->SetName(u"Bergen");
    favourites.Add(std::move(bergen));
    TFavOrg dialog(favourites);
    Application().Post([&] {
        Application().Post([] {
            FavAddDlg()->edName.TypeByUser(u"Old ");
            FavAddDlg()->KeyByUser(kKeyEnter);
        });
        dialog.lvFavs.DoubleClickByUser(0);
        dialog.KeyByUser(kKeyEscape);
    });
    dialog.ShowModal();
    std::cout << "Favourite: " << ToUtf8(favourites[0].GetName()) << '\n';
}

}  // namespace

int main() {
    TAppExceptionHandler handler;
    handler.Register();
    try {
        KeepAndRestore();
        KeepFavourites();
        return EXIT_SUCCESS;
    } catch (const Exception& failure) {
        std::cerr << failure.what() << '\n';
        return EXIT_FAILURE;
    }
}
