#pragma once

#include "Desktop/Station/Dialogs.h"
#include "Desktop/Station/Figures.h"
#include "Desktop/Station/StationGrid.h"
#include "Platform/Controls/Controls.h"
#include "VarnholtLib/Services/vrnConfig.h"
#include "VarnholtLib/UI/vrnFavourites.h"
#include "VarnholtLib/UI/vrnUIBookmark.h"

namespace Varnholt::Station {

/// An expression that the user keeps.
class TExpressionFavourite final : public TBaseFavourite {
public:
    using TBaseFavourite::TBaseFavourite;
    [[nodiscard]] static String GetFilename() { return u"Station Expressions"; }
    [[nodiscard]] static String GetNodeName() { return u"expression"; }
    void SaveToNode(const std::shared_ptr<IXMLNode>& node) override;
    void LoadFromNode(const std::shared_ptr<IXMLNode>& node) override;

    String Text;
};

/// The window of the application: the table with its filter on the left; chart, statistics and report of the selected
/// columns on the right.
class TMainForm final : public TForm {
public:
    TMainForm();
    ~TMainForm() override;

    /// Opens a station's file, or a session by its extension. What fails is shown in a box.
    void OpenFile(const String& path);
    /// Writes the settings. Called at the end of the application.
    void KeepSettings();

    TMainMenu Menu;
    TPanel& Top;
    TExpressionField& Filter;
    TPanel& Bottom;
    TLabel& Status;
    TPageControl& Pages;
    TTabSheet& ChartPage;
    TPaintBox& Chart;
    TTabSheet& StatisticsPage;
    TListView& Statistics;
    TTabSheet& ReportPage;
    TListView& ReportList;
    TPaintBox& ReportChart;
    TStationGrid& Grid;

private:
    // --- MainMenu.cpp ---
    void BuildMenu();
    TMenuItem& AddMenu(StringView caption);
    TMenuItem& AddItem(TMenuItem& menu, StringView caption, StringView shortCut, void (TMainForm::*action)());
    void ListRecentFiles();
    void ListFavourites();

    // --- MainFiles.cpp ---
    void Open();
    void OpenFromAddress();
    void Load(const String& path);
    void ShowTable(std::unique_ptr<TStationTable> table, const String& path);
    void AddRecentFile(const String& path);
    [[nodiscard]] std::vector<String> RecentFiles();
    void SaveTable();
    void SaveChart();
    void SaveSession();
    void OpenSession(const String& path);
    void Associate();
    /// Whether the table may be given up, as the user decides.
    [[nodiscard]] bool MayDropTable();
    void ReadSettings();

    // --- MainForm.cpp ---
    void Arrange();
    void ApplyFilter();
    void SortByHeading(std::int32_t column, bool isAdded);
    void SortBySelected();
    void AddSelectedToSort();
    void UndoSort();
    void AddColumn();
    void ShowSelection();
    void UpdateStatus();
    void Copy();
    void Paste();
    void EditProxy();
    void Report();
    void AddFavourite();
    void OrganizeFavourites();
    void ExitApplication();
    [[nodiscard]] TGridRect Selected() const;
    void TableChanged();

    std::unique_ptr<TStationTable> FTable;
    String FPath;  // of the table; empty for one that is in no file
    std::optional<TReport> FReport;
    TVarnConfig FConfig;
    TFavouriteData FFavourites;
    const std::shared_ptr<IUIBookmarkDb> FBookmarks;
    TMenuItem* FRecentMenu = nullptr;
    TMenuItem* FFavouritesMenu = nullptr;
};

/// A path as the user's system writes it, if it can.
[[nodiscard]] String ShownPath(StringView path);
/// Where the application keeps the states of its dialogs.
[[nodiscard]] String BookmarksPath();

}  // namespace Varnholt::Station
