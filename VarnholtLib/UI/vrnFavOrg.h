#pragma once

#include "Platform/Controls/Buttons.h"
#include "Platform/Controls/Form.h"
#include "Platform/Controls/Labels.h"
#include "Platform/Controls/ListView.h"
#include "VarnholtLib/UI/vrnFavourites.h"

/// The dialog that deletes and renames favourites.
///
///     TFavOrg(favourites).ShowModal();
///
/// Each change is saved at once. A favourite must not be deleted elsewhere while the dialog is open. What Save
/// raises passes on; the change is then in the list but not in the file.
///
/// Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT TFavOrg : public TForm {
public:
    /// The favourites must outlive the dialog, which is that of FavOrg until it is destroyed.
    explicit TFavOrg(TFavouriteData& favData);
    ~TFavOrg() override;

    TLabel& Label1;
    TListView& lvFavs;
    TButton& Button1;
    TButton& Button2;
    TButton& Button3;

protected:
    /// Fills the list.
    void DoShow() override;
    /// Deletes the selected favourite, if the user agrees.
    void Button1Click();
    /// Asks for another name of the selected favourite.
    void Button2Click();

private:
    TFavouriteData& FFavData;
};

/// The dialog made last, while it exists; otherwise null.
[[nodiscard]] VARNHOLT_EXPORT TFavOrg* FavOrg() noexcept;

}  // namespace Varnholt
