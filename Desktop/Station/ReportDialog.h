#pragma once

#include "Desktop/Station/Dialogs.h"
#include "Desktop/Station/Figures.h"
#include "VarnholtLib/UI/vrnUIBookmarkBinder.h"

namespace Varnholt::Station {

/// Asks for the settings of a report. The state of the fields can be kept under names and restored.
class TReportDialog final : public TRowsDialog {
public:
    /// The kept states are the collection "Report" of the database; each change saves it. Table and database must
    /// outlive the dialog.
    TReportDialog(const TStationTable& table, IUIBookmarkDb& bookmarks);
    ~TReportDialog() override;

    /// The settings, after mrOk.
    [[nodiscard]] const TReportSettings& GetSettings() const noexcept { return FSettings; }
    /// The fields as a bookmark, and back.
    [[nodiscard]] IUIBookmarkBinder& GetBinder() noexcept { return *FBinder; }

    TComboBox& cbKept;
    TEdit& edTitle;
    TEdit& edLatitude;
    TEdit& edSunshine;
    TEdit& edAngstromA;
    TEdit& edAngstromB;
    TComboBox& cbMaximum;
    TComboBox& cbMinimum;
    TComboBox& cbPrecipitation;
    TButton& btKeep;
    TButton& btDelete;

private:
    [[nodiscard]] std::shared_ptr<IUIBookmark> FindKept() const;
    void ListKept();
    void Restore();
    void Keep();
    void DeleteKept();
    void ReadSettings();
    [[nodiscard]] float ReadNumber(const TEdit& edit) const;
    [[nodiscard]] std::optional<TMonthlyData> ReadSunshine() const;

    IUIBookmarkDb& FBookmarks;
    const std::shared_ptr<IUIBookmarkCollection> FKept;
    const std::shared_ptr<IUIBookmarkBinder> FBinder;
    TReportSettings FSettings;
};

}  // namespace Varnholt::Station
