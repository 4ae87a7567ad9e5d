#include "Desktop/Station/ReportDialog.h"

#include <cmath>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Text.h"
#include "VarnholtLib/Foundation/vrnString.h"
#include "VarnholtLib/Numerics/vrnCoordinates.h"
#include "VarnholtLib/UI/vrnCommonUIBookmarkValueAdapters.h"
#include "VarnholtLib/UI/vrnMessageBox.h"

namespace Varnholt::Station {
namespace {

/// Offers the columns of numbers, and chooses the first whose name holds one of the words.
void OfferColumns(TComboBox& comboBox, const TStationTable& table, std::initializer_list<StringView> words) {
    for (std::int32_t column = 0; column < table.GetColumnCount(); ++column)
        if (table.GetType(column) == ctNumber) comboBox.GetItems().Add(table.GetName(column));
    for (const StringView word : words)
        for (std::int32_t i = 0; i < comboBox.GetItems().GetCount() && comboBox.GetItemIndex() < 0; ++i)
            if (LowerCase(comboBox.GetItems()[i]).find(word) != String::npos) comboBox.SetItemIndex(i);
}

}  // namespace

TReportDialog::TReportDialog(const TStationTable& table, IUIBookmarkDb& bookmarks)
    : TRowsDialog(u"Report", 600),
      cbKept(AddRow<TComboBox>(u"Kept settings:", u"cbKept")),
      edTitle(AddRow<TEdit>(u"Title:", u"edTitle")),
      edLatitude(AddRow<TEdit>(u"Latitude:", u"edLatitude")),
      edSunshine(AddRow<TEdit>(u"Sunshine (h a month):", u"edSunshine")),
      edAngstromA(AddRow<TEdit>(u"Angstrom a:", u"edAngstromA")),
      edAngstromB(AddRow<TEdit>(u"Angstrom b:", u"edAngstromB")),
      cbMaximum(AddRow<TComboBox>(u"Maximum temperature:", u"cbMaximum")),
      cbMinimum(AddRow<TComboBox>(u"Minimum temperature:", u"cbMinimum")),
      cbPrecipitation(AddRow<TComboBox>(u"Precipitation:", u"cbPrecipitation")),
      btKeep(Add<TButton>(u"btKeep")),
      btDelete(Add<TButton>(u"btDelete")),
      FBookmarks(bookmarks),
      FKept(bookmarks.GetCollection(u"Report")),
      FBinder(TUIBookmarkBinderFactory::GetObject()) {
    Finish();
    const std::int32_t right = GetWidth() - kMargin;
    cbKept.SetWidth(cbKept.GetWidth() - 2 * 78);
    btKeep.SetBounds(right - 2 * 74, cbKept.GetTop() - 1, 70, 27);
    btKeep.SetCaption(u"&Keep");
    btKeep.SetOnClick([this](TObject*) { Keep(); });
    btDelete.SetBounds(right - 70, cbKept.GetTop() - 1, 70, 27);
    btDelete.SetCaption(u"&Delete");
    btDelete.SetOnClick([this](TObject*) { DeleteKept(); });
    cbKept.SetHint(u"A name to keep the settings under, or one to bring them back");
    cbKept.SetOnChange([this](TObject*) { Restore(); });
    edSunshine.SetHint(u"Twelve numbers with commas between, from January; empty for no evapotranspiration");
    edAngstromA.SetText(u"0.25");
    edAngstromB.SetText(u"0.5");
    OfferColumns(cbMaximum, table, {u"tmax", u"temp_max", u"max"});
    OfferColumns(cbMinimum, table, {u"tmin", u"temp_min", u"min"});
    OfferColumns(cbPrecipitation, table, {u"precip", u"rain", u"prcp"});

    const auto adapters = std::make_shared<TUIBookmarkValueAdapters>();
    adapters->Add(std::make_shared<TComboBoxUIBookmarkValueAdapter>());
    FBinder->SetAdapters(adapters);
    for (TControl* const control :
         std::initializer_list<TControl*>{&edTitle, &edLatitude, &edSunshine, &edAngstromA, &edAngstromB,
                                          &cbMaximum, &cbMinimum, &cbPrecipitation})
        FBinder->Add(control);
    Ok.SetOnClick([this](TObject*) { ReadSettings(); });
    ListKept();
    SetActiveControl(&edTitle);
}

TReportDialog::~TReportDialog() = default;

// --- Kept settings ---

std::shared_ptr<IUIBookmark> TReportDialog::FindKept() const {
    for (std::int32_t i = 0; i < FKept->Count(); ++i)
        if (FKept->GetItem(i)->GetName() == cbKept.GetText()) return FKept->GetItem(i);
    return nullptr;
}

void TReportDialog::ListKept() {
    std::vector<String> names;
    names.reserve(static_cast<std::size_t>(FKept->Count()));
    for (std::int32_t i = 0; i < FKept->Count(); ++i) names.push_back(FKept->GetItem(i)->GetName());
    cbKept.GetItems().SetLines(std::move(names));
    btDelete.SetEnabled(FindKept() != nullptr);
}

void TReportDialog::Restore() {
    const std::shared_ptr<IUIBookmark> kept = FindKept();
    btDelete.SetEnabled(kept != nullptr);
    if (kept != nullptr) FBinder->UpdateControls(*kept);
}

void TReportDialog::Keep() {
    const String name = cbKept.GetText();
    if (TrimView(name).empty())
        return TMsgBox::Error(u"Enter a name to keep the settings under.", u"Report", &cbKept);
    std::shared_ptr<IUIBookmark> kept = FindKept();
    if (kept == nullptr) {
        kept = TUIBookmarkFactory::GetObject();
        kept->SetName(name);
        FKept->Add(kept);
    }
    FBinder->UpdateBookmark(*kept);
    FBookmarks.Save();
    ListKept();
    cbKept.SetText(name);
}

void TReportDialog::DeleteKept() {
    const std::shared_ptr<IUIBookmark> kept = FindKept();
    if (kept == nullptr ||
        !ClickedYes(TMsgBox::YesNo(u"Delete the settings \"%s\"?", {kept->GetName()}, u"Report")))
        return;
    FKept->Delete(FKept->IndexOf(kept));
    FBookmarks.Save();
    cbKept.SetText({});
    ListKept();
}

// --- Settings ---

/// A wrong field keeps the dialog open.
void TReportDialog::ReadSettings() {
    TWinControl* field = &edLatitude;
    try {
        FSettings.Title = edTitle.GetText();
        FSettings.Latitude = GetLatitudeValue(edLatitude.GetText());
        field = &edSunshine;
        FSettings.Sunshine = ReadSunshine();
        field = &edAngstromA;
        FSettings.AngstromA = ReadNumber(edAngstromA);
        field = &edAngstromB;
        FSettings.AngstromB = ReadNumber(edAngstromB);
        FSettings.MaximumColumn = cbMaximum.GetText();
        FSettings.MinimumColumn = cbMinimum.GetText();
        FSettings.PrecipitationColumn = cbPrecipitation.GetText();
    } catch (const Exception& failure) {
        SetModalResult(mrNone);
        TMsgBox::Error(failure.GetMessage(), u"Report", field);
    }
}

float TReportDialog::ReadNumber(const TEdit& edit) const {
    return static_cast<float>(StrToFloat(edit.GetText(), TFormatSettings::Invariant()));
}

std::optional<TMonthlyData> TReportDialog::ReadSunshine() const {
    const String text(TrimView(edSunshine.GetText()));
    if (text.empty()) return std::nullopt;
    TMonthlyData sunshine;
    std::int32_t month = 0;
    for (std::size_t at = 0; at <= text.size(); ++month) {
        const std::size_t comma = std::min(text.find(u',', at), text.size());
        if (month < 12)
            sunshine[month + 1] = static_cast<float>(
                StrToFloat(StringView(text).substr(at, comma - at), TFormatSettings::Invariant()));
        at = comma + 1;
    }
    if (month != 12) throw EConvertError(Format(u"The sunshine has %d numbers instead of 12", {month}));
    return sunshine;
}

}  // namespace Varnholt::Station
