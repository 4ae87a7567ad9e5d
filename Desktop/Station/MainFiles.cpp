#include "Desktop/Station/MainForm.h"
#include "Desktop/Station/Session.h"
#include "Platform/Drawing/Picture.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/Runtime/Text.h"
#include "Platform/Runtime/TextStreams.h"
#include "VarnholtLib/Foundation/vrnString.h"
#include "VarnholtLib/Services/vrnLog.h"
#include "VarnholtLib/UI/vrnBrowseFileDialogs.h"
#include "VarnholtLib/UI/vrnMessageBox.h"
#include "VarnholtLib/UI/vrnUIBookmarkXMLDb.h"

namespace Varnholt::Station {
namespace {

constexpr StringView kTableFilter =
    u"Comma-separated (*.csv)|*.csv|Sessions (*.vrnstation)|*.vrnstation|All files|*.*";
constexpr TSize kPictureSize{1000, 650};

constexpr std::size_t kRecentFiles = 8;

String RecentFileSetting(std::size_t index) {
    return u"recent.file" + IntToStr(static_cast<std::int64_t>(index));
}

bool IsSession(const String& path) {
    return EndsText(kSessionExtension, path);
}

}  // namespace

String ShownPath(StringView path) {
    String reason;
    const std::optional<std::string> native = TryToNativePath(path, reason);
    return native ? FromUtf8(*native) : String(path);
}

// --- Opening ---

void TMainForm::Open() {
    String path = FPath;
    if (MayDropTable() && BrowseForFileOpen(u"Open a station", path, kTableFilter)) OpenFile(path);
}

void TMainForm::OpenFile(const String& path) {
    try {
        IsSession(path) ? OpenSession(path) : Load(path);
    } catch (const Exception& failure) {
        if (const std::shared_ptr<ILog> log = EnabledDefaultLog()) log->Error(failure.GetMessage());
        TMsgBox::Error(StrReplace2(failure.GetMessage(), path, ShownPath(path), false), u"Open");
    }
}

void TMainForm::Load(const String& path) {
    std::unique_ptr<TStationTable> table = TStationTable::Load(path);
    ShowTable(std::move(table), path);
    AddRecentFile(path);
    if (const std::shared_ptr<ILog> log = EnabledDefaultLog()) log->UserSelected(path);
}

void TMainForm::ShowTable(std::unique_ptr<TStationTable> table, const String& path) {
    Grid.SetTable(table.get());
    Filter.Edit.SetText({});
    Filter.SetTable(table.get());
    FTable = std::move(table);
    FPath = path;
    FReport.reset();
    ReportList.ClearItems();
    ReportChart.Repaint();
    SetCaption(path.empty() ? String(u"Station") : ExtractFileName(path) + u" - Station");
    TableChanged();
}

void TMainForm::OpenFromAddress() {
    if (!MayDropTable()) return;
    TAddressDialog dialog;
    if (dialog.ShowModal() != mrOk) return;
    TMemoryStream bytes(std::as_bytes(std::span(dialog.GetBytes())));
    TStreamReader reader(bytes, TEncoding::Utf8(), true, TStreamReader::kBufferSize, ibRefuse);
    ShowTable(TStationTable::FromText(reader.ReadToEnd(), dialog.edAddress.GetText()), {});
}

void TMainForm::AddRecentFile(const String& path) {
    std::vector<String> files = RecentFiles();
    std::erase(files, path);
    files.insert(files.begin(), path);
    files.resize(std::min<std::size_t>(files.size(), kRecentFiles));
    for (std::size_t i = 0; i < files.size(); ++i) FConfig.WriteString(RecentFileSetting(i), files[i]);
    FConfig.Save();
    ListRecentFiles();
}

/// The latest first.
std::vector<String> TMainForm::RecentFiles() {
    std::vector<String> files;
    for (std::size_t i = 0; i < kRecentFiles; ++i)
        if (String path = FConfig.ReadString(RecentFileSetting(i), u""); !path.empty())
            files.push_back(std::move(path));
    return files;
}

// --- Saving ---

bool TMainForm::MayDropTable() {
    if (!FTable || !FTable->IsChanged()) return true;
    const TModalResult answer =
        TMsgBox::YesNoCancel(u"The table has computed columns that are not saved. Save them?", u"Station");
    if (ClickedYes(answer)) SaveTable();
    return ClickedNo(answer) || !FTable->IsChanged();
}

void TMainForm::SaveTable() {
    String path = FPath;
    if (!FTable || !BrowseForFileSave(u"Save the table", path, kTableFilter, u"csv")) return;
    const bool isFiltered = FTable->GetRowCount() < FTable->GetAllRowCount();
    if (isFiltered &&
        !ClickedYes(TMsgBox::YesNo(u"Only %d of %d rows are shown. Save these alone?",
                                   {FTable->GetRowCount(), FTable->GetAllRowCount()}, u"Station")))
        return;
    WriteFileInOneGo(path, ToUtf8(FTable->ToCsv()));
    FTable->SetIsSaved();
    FPath = path;
    SetCaption(ExtractFileName(path) + u" - Station");
    AddRecentFile(path);
}

/// What the active page shows.
void TMainForm::SaveChart() {
    String path;
    const bool isReport = FReport && Pages.GetActivePage() == &ReportPage;
    if (!FTable || !BrowseForFileSave(u"Save the chart", path,
                                      u"SVG (*.svg)|*.svg|PNG (*.png)|*.png|PDF (*.pdf)|*.pdf", u"svg"))
        return;
    DrawToFile(path, kPictureSize, [&](TCanvas& canvas) {
        const TRect area{0, 0, kPictureSize.Width, kPictureSize.Height};
        if (isReport)
            DrawClimateDiagram(canvas, area, FReport->Diagram);
        else
            DrawColumns(canvas, area, *FTable, Selected().Left, Selected().Right);
    });
}

// --- Sessions ---

void TMainForm::SaveSession() {
    String path;
    if (!FTable ||
        !BrowseForFileSave(u"Pack the session", path, u"Sessions (*.vrnstation)|*.vrnstation", u"vrnstation"))
        return;
    KeepSettings();
    FBookmarks->Save();
    PackSession(path, {FTable->ToCsv(), FConfig.GetFilename(), BookmarksPath()});
}

void TMainForm::OpenSession(const String& path) {
    const String folder = path.substr(0, path.size() - kSessionExtension.size());
    if (FileExists(folder) && !ClickedYes(TMsgBox::YesNo(u"Replace the session that is unpacked in \"%s\"?",
                                                         {ShownPath(folder)}, u"Open")))
        return;
    const TSessionFiles files = UnpackSession(path, folder);
    ShowTable(TStationTable::Load(files.Table), files.Table);
    if (!files.Settings.empty()) {
        TVarnConfig settings(files.Settings);
        Filter.Edit.SetText(settings.ReadString(u"table.filter", u""));
    }
    if (files.Bookmarks.empty()) return;
    const std::shared_ptr<IUIBookmarkDb> packed = TUIBookmarkXMLDbFactory::GetObject();
    packed->Load(files.Bookmarks);
    const std::shared_ptr<IUIBookmarkCollection> source = packed->GetCollection(u"Report");
    const std::shared_ptr<IUIBookmarkCollection> target = FBookmarks->GetCollection(u"Report");
    for (const std::shared_ptr<IUIBookmark>& bookmark : *source)
        if (!target->Any([&](const auto& other) { return other->GetName() == bookmark->GetName(); }))
            target->Add(bookmark);
    FBookmarks->Save();
}

void TMainForm::Associate() {
    AssociateSessions();
    TMsgBox::Info(u"Sessions are opened with this program.", u"Station");
}

// --- Settings ---

void TMainForm::ReadSettings() {
    SetBounds(FConfig.ReadInteger(u"window.left", GetLeft()), FConfig.ReadInteger(u"window.top", GetTop()),
              std::max(FConfig.ReadInteger(u"window.width", GetWidth()), 400),
              std::max(FConfig.ReadInteger(u"window.height", GetHeight()), 300));
    SetCaption(u"Station");
}

void TMainForm::KeepSettings() {
    FConfig.WriteInteger(u"window.left", GetLeft());
    FConfig.WriteInteger(u"window.top", GetTop());
    FConfig.WriteInteger(u"window.width", GetWidth());
    FConfig.WriteInteger(u"window.height", GetHeight());
    FConfig.WriteString(u"table.filter", FTable ? FTable->GetFilter() : String());
    FConfig.Save();
}

}  // namespace Varnholt::Station
