#pragma once

#include "Platform/Controls/Buttons.h"
#include "Platform/Controls/Edits.h"
#include "Platform/Controls/Form.h"
#include "Platform/Controls/Labels.h"
#include "VarnholtLib/UI/vrnFavourites.h"

/// The dialog that asks for the name of a favourite.
///
///     TFavAddDlg dialog(favourites, amAdd);
///     if (dialog.ShowModal() == mrOk) {
///         auto added = favourites.CreateNewFavourite();
///         added->SetName(dialog.edName.GetText());
///         favourites.Add(std::move(added));
///         favourites.Save();
///     }
///
/// The dialog changes no favourite. It closes with OK only for a name that is not empty and that no other favourite
/// has; names that differ only in the case of ASCII letters count as equal. A favourite that is renamed may keep
/// its name.
///
/// Threads: main thread only.
namespace Varnholt {

enum TAddMethod : std::uint8_t { amAdd, amRename };

class VARNHOLT_EXPORT TFavAddDlg : public TForm {
public:
    /// The favourites, and `renameItem`, must outlive the dialog. With amRename the field begins with the name of
    /// `renameItem`, if that is not null. The dialog is that of FavAddDlg until it is destroyed.
    TFavAddDlg(TFavouriteData& favData, TAddMethod addMethod, TBaseFavourite* renameItem = nullptr);
    ~TFavAddDlg() override;

    TLabel& Label2;
    TLabel& Label1;
    TEdit& edName;
    TButton& Button1;
    TButton& Button2;

protected:
    void Button1Click();

private:
    /// Shows the message, and returns to the field.
    void Refuse(StringView message, std::uint32_t icon);

    TFavouriteData& FFavData;
    TBaseFavourite* FRenameItem;
    TAddMethod FAddMethod;
};

/// The dialog made last, while it exists; otherwise null.
[[nodiscard]] VARNHOLT_EXPORT TFavAddDlg* FavAddDlg() noexcept;

}  // namespace Varnholt
