#include "Desktop/Station/MainForm.h"

#include "Desktop/Station/ReportDialog.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "VarnholtLib/Services/vrnSpecialFolders.h"
#include "VarnholtLib/UI/vrnClipboardEnvelope.h"
#include "VarnholtLib/UI/vrnFavAdd.h"
#include "VarnholtLib/UI/vrnFavOrg.h"
#include "VarnholtLib/UI/vrnMessageBox.h"
#include "VarnholtLib/UI/vrnUIBookmarkXMLDb.h"

namespace Varnholt::Station {
namespace {

constexpr StringView kRowsType = u"VarnholtStation.Rows";

void ShowLines(TListView& view, const std::vector<std::vector<String>>& lines) {
    view.ClearItems();
    for (const std::vector<String>& line : lines) {
        TListItem& item = view.AddItem(line.front());
        for (std::size_t i = 1; i < line.size(); ++i) item.AddSubItem(line[i]);
    }
}

}  // namespace

void TExpressionFavourite::SaveToNode(const std::shared_ptr<IXMLNode>& node) {
    TBaseFavourite::SaveToNode(node);
    node->SetAttribute(u"text", Text);
}

void TExpressionFavourite::LoadFromNode(const std::shared_ptr<IXMLNode>& node) {
    TBaseFavourite::LoadFromNode(node);
    Text = node->GetAttribute(u"text").ToText();
}

String BookmarksPath() {
    return TSpecialFolders::GetAppData() + u"Varnholt\\Station\\Bookmarks.xml";
}

TMainForm::TMainForm()
    : Top(Add<TPanel>(u"Top")),
      Filter(Top.Add<TExpressionField>(u"Filter")),
      Bottom(Add<TPanel>(u"Bottom")),
      Status(Bottom.Add<TLabel>(u"Status")),
      Pages(Add<TPageControl>(u"Pages")),
      ChartPage(Pages.Add<TTabSheet>(u"ChartPage")),
      Chart(ChartPage.Add<TPaintBox>(u"Chart")),
      StatisticsPage(Pages.Add<TTabSheet>(u"StatisticsPage")),
      Statistics(StatisticsPage.Add<TListView>(u"Statistics")),
      ReportPage(Pages.Add<TTabSheet>(u"ReportPage")),
      ReportList(ReportPage.Add<TListView>(u"ReportList")),
      ReportChart(ReportPage.Add<TPaintBox>(u"ReportChart")),
      Grid(Add<TStationGrid>(u"Grid")),
      FConfig(vPrivate, u"Station", u"Station"),
      FFavourites(TFavouriteClass::Of<TExpressionFavourite>()),
      FBookmarks(TUIBookmarkXMLDbFactory::GetObject()) {
    SetName(u"MainForm");
    FBookmarks->Load(BookmarksPath());
    Arrange();
    BuildMenu();
    Filter.SetOnChecked([this](TObject*) { ApplyFilter(); });
    Grid.SetOnSelect([this](TObject*) { ShowSelection(); });
    Grid.SetOnFixedCellClick([this](TObject*, std::int32_t col, std::int32_t row, bool isShiftDown) {
        if (row == 0 && col > 0) SortByHeading(col - 1, isShiftDown);
    });
    SetOnDropFiles([this](TObject*, const std::vector<String>& files) {
        if (MayDropTable()) OpenFile(files.front());
    });
    SetOnCloseQuery([this](TObject*, bool& mayClose) { mayClose = MayDropTable(); });
    ReadSettings();
    UpdateStatus();
}

TMainForm::~TMainForm() = default;

void TMainForm::Arrange() {
    SetBounds(80, 60, 1100, 700);
    Top.SetAlign(alTop);
    Top.SetHeight(58);
    TLabel& label = Top.Add<TLabel>(u"lbFilter");
    label.SetCaption(u"Rows where:");
    label.SetBounds(10, 12, 84, 17);
    Filter.SetBounds(96, 8, Top.GetWidth() - 106, 46);
    Filter.SetAnchors({akLeft, akTop, akRight});
    Bottom.SetAlign(alBottom);
    Bottom.SetHeight(24);
    Status.SetBounds(10, 4, 900, 17);
    Pages.SetAlign(alRight);
    Pages.SetWidth(480);
    ChartPage.SetCaption(u"Chart");
    StatisticsPage.SetCaption(u"Statistics");
    ReportPage.SetCaption(u"Report");
    Chart.SetAlign(alClient);
    Chart.SetOnPaint([this](TObject*, TCanvas& canvas, const TRect& area) {
        if (FTable) DrawColumns(canvas, area, *FTable, Selected().Left, Selected().Right);
    });
    Statistics.SetAlign(alClient);
    for (const String& heading : StatisticsHeadings()) Statistics.AddColumn(heading, 72);
    Statistics.SetRowSelect(true);
    ReportList.SetAlign(alTop);
    ReportList.SetHeight(300);
    for (const String& heading : ReportHeadings())
        ReportList.AddColumn(heading, heading.size() > 12 ? 114 : 88);
    ReportChart.SetAlign(alClient);
    ReportChart.SetOnPaint([this](TObject*, TCanvas& canvas, const TRect& area) {
        if (FReport) DrawClimateDiagram(canvas, area, FReport->Diagram);
    });
    Grid.SetAlign(alClient);
}

// --- Rows and columns ---

/// The selected cells; without a selection all of them.
TGridRect TMainForm::Selected() const {
    const TGridRect cells = Grid.GetTableSelection();
    if (!cells.IsEmpty() || !FTable) return cells;
    return {0, 0, FTable->GetColumnCount() - 1, FTable->GetRowCount() - 1};
}

void TMainForm::TableChanged() {
    Grid.TableChanged();
    ShowSelection();
    UpdateStatus();
}

void TMainForm::ApplyFilter() {
    const std::optional<String> filter = Filter.GetValid();
    if (!FTable || !filter || *filter == FTable->GetFilter()) return;
    FTable->SetFilter(*filter);
    TableChanged();
}

/// A heading that is a key already changes its direction.
void TMainForm::SortByHeading(std::int32_t column, bool isAdded) {
    if (!FTable) return;
    std::vector<TSortField> keys = FTable->GetSortKeys();
    const auto found = std::ranges::find(keys, column, &TSortField::ColumnIndex);
    const bool isAscending = found == keys.end() || !found->OrderAscending;
    if (!isAdded) {
        keys = {{column, isAscending}};
    } else if (found == keys.end()) {
        keys.push_back({column, true});
    } else {
        found->OrderAscending = isAscending;
    }
    FTable->Sort(std::move(keys));
    TableChanged();
}

void TMainForm::SortBySelected() {
    if (FTable) SortByHeading(Selected().Left, false);
}

void TMainForm::AddSelectedToSort() {
    if (FTable) SortByHeading(Selected().Left, true);
}

void TMainForm::UndoSort() {
    if (!FTable) return;
    FTable->Sort({});
    TableChanged();
}

void TMainForm::AddColumn() {
    if (!FTable) return;
    TColumnDialog dialog(*FTable);
    if (dialog.ShowModal() != mrOk) return;
    FTable->AddComputed(TrimView(dialog.edName.GetText()), *dialog.Expression.GetValid());
    Filter.SetTable(FTable.get());
    const std::int32_t column = FTable->GetColumnCount();
    Grid.SetSelection({column, 1, column, FTable->GetRowCount()});
    TableChanged();
}

void TMainForm::ShowSelection() {
    Chart.Repaint();
    if (!FTable) return ShowLines(Statistics, {});
    ShowLines(Statistics, StatisticsOf(*FTable, Selected().Left, Selected().Right));
}

void TMainForm::UpdateStatus() {
    if (!FTable)
        return Status.SetCaption(u"Open a station's file: a CSV file with a header and a row for each day.");
    String text = FTable->GetRowCount() == FTable->GetAllRowCount()
                      ? Format(u"%d rows", {FTable->GetAllRowCount()})
                      : Format(u"%d of %d rows", {FTable->GetRowCount(), FTable->GetAllRowCount()});
    for (const TSortField& key : FTable->GetSortKeys())
        text += (&key == FTable->GetSortKeys().data() ? u", sorted by " : u", ") +
                FTable->GetName(key.ColumnIndex) + (key.OrderAscending ? u"" : u" from the largest");
    Status.SetCaption(text);
}

// --- Clipboard ---

void TMainForm::Copy() {
    if (FTable) TClipboardEnvelope::SetText(kRowsType, FTable->ToCsv(Selected()));
}

/// Rows of another instance, or any text that is a table.
void TMainForm::Paste() {
    if (!MayDropTable()) return;
    const String text = TClipboardEnvelope::Contains(kRowsType) ? TClipboardEnvelope::GetText(kRowsType)
                                                                : Clipboard().GetAsText();
    if (text.empty()) return TMsgBox::Info(u"The clipboard holds no rows.", u"Paste");
    ShowTable(TStationTable::FromText(text, u"clipboard"), {});
}

// --- Dialogs ---

void TMainForm::EditProxy() {
    TProxyDialog().ShowModal();
}

void TMainForm::Report() {
    if (!FTable) return;
    TReportDialog dialog(*FTable, *FBookmarks);
    if (dialog.ShowModal() != mrOk) return;
    FReport = MakeReport(*FTable, dialog.GetSettings());
    ShowLines(ReportList, ReportLines(*FReport));
    Pages.SetActivePage(&ReportPage);
    ReportChart.Repaint();
}

void TMainForm::AddFavourite() {
    const std::optional<String> expression = Filter.GetValid();
    if (!expression || expression->empty())
        return TMsgBox::Info(u"Enter an expression for the rows first.", u"Favourites", &Filter.Edit);
    TFavAddDlg dialog(FFavourites, amAdd);
    if (dialog.ShowModal() != mrOk) return;
    std::unique_ptr<TBaseFavourite> added = FFavourites.CreateNewFavourite();
    added->SetName(dialog.edName.GetText());
    dynamic_cast<TExpressionFavourite&>(*added).Text = *expression;
    FFavourites.Add(std::move(added));
    FFavourites.Save();
    ListFavourites();
}

void TMainForm::OrganizeFavourites() {
    TFavOrg(FFavourites).ShowModal();
    ListFavourites();
}

void TMainForm::ExitApplication() {
    Close();
}

}  // namespace Varnholt::Station
