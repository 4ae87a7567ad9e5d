#pragma once

#include "Platform/Controls/Control.h"
#include "Platform/Controls/Menus.h"
#include "Platform/System/Desktop.h"

/// Windows: forms that are shown beside others or wait for an answer, and forms inside a main form.
///
///     class TNameDialog : public TForm {
///     public:
///         TEdit& Name = Add<TEdit>(u"edName");
///         TButton& Ok = Add<TButton>(u"btOk");
///         TNameDialog() { Ok.SetModalResult(mrOk); Ok.SetDefault(true); }
///     };
///
///     TNameDialog dialog;
///     if (dialog.ShowModal() == mrOk) Use(dialog.Name.GetText());
///
/// Threads: main thread only.
namespace Varnholt {

enum TFormBorderStyle : std::uint8_t { bsNone, bsSingle, bsSizeable, bsDialog, bsToolWindow };
enum TBorderIcon : std::uint8_t { biSystemMenu, biMinimize, biMaximize, biHelp };
using TBorderIcons = TEnumSet<TBorderIcon>;
enum TPosition : std::uint8_t { poDesigned, poScreenCenter, poMainFormCenter };

/// What closing a form does.
enum TCloseAction : std::uint8_t {
    caNone,  ///< nothing: it stays open
    caHide,  ///< it is hidden, and can be shown again
    caFree,  ///< it is hidden; a form inside a main form is destroyed as soon as no event of it runs
};

using TCloseEvent = TEvent<TObject*, TCloseAction&>;
using TCloseQueryEvent = TEvent<TObject*, bool&>;
using TDropFilesEvent = TEvent<TObject*, const std::vector<String>&>;

/// The keys that forms handle, by their virtual key codes.
inline constexpr std::int32_t kKeyTab = 9;
inline constexpr std::int32_t kKeyEnter = 13;
inline constexpr std::int32_t kKeyEscape = 27;

class VARNHOLT_EXPORT TCustomForm : public TWinControl {
public:
    TCustomForm();
    ~TCustomForm() override;

    [[nodiscard]] const String& GetCaption() const noexcept { return FCaption; }
    void SetCaption(StringView caption);
    [[nodiscard]] TFormBorderStyle GetBorderStyle() const noexcept { return FBorderStyle; }
    void SetBorderStyle(TFormBorderStyle style);
    /// At first the system menu, minimize and maximize.
    [[nodiscard]] TBorderIcons GetBorderIcons() const noexcept { return FBorderIcons; }
    void SetBorderIcons(TBorderIcons icons);
    [[nodiscard]] TPosition GetPosition() const noexcept { return FPosition; }
    void SetPosition(TPosition position) noexcept { FPosition = position; }
    /// The size inside the border; the size of the form itself does not include the border either.
    void SetClientSize(TSize size) { SetBounds(GetLeft(), GetTop(), size.Width, size.Height); }

    // --- Showing ---

    /// Shows the form and makes it the active one. The first control that takes input receives the focus, unless another
    /// was chosen by SetActiveControl. Raises OnShow before.
    void Show();
    /// Hides the form. Raises OnHide after it.
    void Hide();
    /// The same as Show or Hide. A form is hidden at first.
    void SetVisible(bool visible) override;
    /// Shows the form, handles messages until its modal result is set, hides it, and returns the result. What the
    /// events raise meanwhile goes to Application().HandleException. EInvalidOperation `Form "%s" is visible
    /// already`; and, after hiding it, `Form "%s" waits for an answer, but nothing can give one` if there is
    /// neither a back end nor a posted step nor a running timer.
    TModalResult ShowModal();
    /// mrNone at first and while the form waits. Setting it ends ShowModal, after OnCloseQuery has agreed.
    [[nodiscard]] TModalResult GetModalResult() const noexcept { return FModalResult; }
    void SetModalResult(TModalResult result);
    [[nodiscard]] bool IsModal() const noexcept { return FIsModal; }
    /// Asks OnCloseQuery, then OnClose what to do: caHide, or caFree inside a main form. A modal form gets mrCancel
    /// instead.
    void Close();
    /// A person closes the window. False if the form has no system menu.
    bool CloseByUser();
    /// Puts the form above the others and makes it the active one.
    void BringToFront();

    /// A person presses a key: Enter clicks the default button (the focused button comes first), Escape the cancel
    /// button, Tab moves the focus. False if that did nothing.
    bool KeyByUser(std::int32_t virtualKey, bool isShiftDown = false);

    /// The control of this form that has the focus, or will have it when the form becomes active; null if none.
    [[nodiscard]] TWinControl* GetActiveControl() const noexcept { return FActiveControl.Get(); }
    void SetActiveControl(TWinControl* control);

    // --- Menu and files ---

    /// The menu bar above the client area; null for none. The form does not own it.
    [[nodiscard]] TMainMenu* GetMenu() const noexcept { return FMenu.Get(); }
    void SetMenu(TMainMenu* menu);
    /// A person chooses an item of the menu bar.
    bool ChooseMenuByUser(TMenuItem& item);
    /// A person drops files, by their full paths. False without OnDropFiles.
    bool DropFilesByUser(const std::vector<String>& files);
    [[nodiscard]] const TDropFilesEvent& GetOnDropFiles() const noexcept { return FOnDropFiles; }
    void SetOnDropFiles(TDropFilesEvent onDropFiles) { FOnDropFiles = std::move(onDropFiles); }

    // --- Forms inside this one ---

    /// Takes the form as the last one inside and shows it. Raises EArgumentNilException `child` for null.
    TCustomForm& AddMDIChild(std::unique_ptr<TCustomForm> child);
    [[nodiscard]] std::int32_t GetMDIChildCount() const noexcept;
    /// By its index from 0. EListError as a list.
    [[nodiscard]] TCustomForm& GetMDIChild(std::int32_t index) const;
    /// The form that this one is inside of; null if none.
    [[nodiscard]] TCustomForm* GetMDIParent() const noexcept { return FMDIParent; }

    // --- Events ---

    [[nodiscard]] const TNotifyEvent& GetOnShow() const noexcept { return FOnShow; }
    void SetOnShow(TNotifyEvent onShow) { FOnShow = std::move(onShow); }
    [[nodiscard]] const TNotifyEvent& GetOnHide() const noexcept { return FOnHide; }
    void SetOnHide(TNotifyEvent onHide) { FOnHide = std::move(onHide); }
    [[nodiscard]] const TCloseEvent& GetOnClose() const noexcept { return FOnClose; }
    void SetOnClose(TCloseEvent onClose) { FOnClose = std::move(onClose); }
    /// Its second argument is true, and false afterwards keeps the form open.
    [[nodiscard]] const TCloseQueryEvent& GetOnCloseQuery() const noexcept { return FOnCloseQuery; }
    void SetOnCloseQuery(TCloseQueryEvent onCloseQuery) { FOnCloseQuery = std::move(onCloseQuery); }

protected:
    /// Called before the form is shown, raises OnShow.
    virtual void DoShow();
    [[nodiscard]] bool TakesInput() const noexcept override { return false; }

private:
    friend class TWinControl;
    friend class TControl;
    friend class TScreen;

    [[nodiscard]] bool MayClose();
    void WaitForAnswer();
    void Place();
    void MoveFocus(TWinControl* to);
    void SettleFocus();
    void LeaveUnusable();
    void ForgetFocusIn(const TControl& control) noexcept;
    [[nodiscard]] std::vector<TWinControl*> TabOrder();
    bool MoveFocusByTab(bool isBackward);
    void DropMDIChild(TCustomForm& child);

    String FCaption;
    TNotifyEvent FOnShow, FOnHide;
    TCloseEvent FOnClose;
    TCloseQueryEvent FOnCloseQuery;
    TDropFilesEvent FOnDropFiles;
    TComponentRef<TMainMenu> FMenu;
    TComponentRef<TWinControl> FActiveControl;
    TComponentRef<TWinControl> FEntered;  // the control that was told last that it has the focus
    std::vector<std::unique_ptr<TCustomForm>> FMDIChildren;
    TCustomForm* FMDIParent = nullptr;
    TModalResult FModalResult = mrNone;
    TBorderIcons FBorderIcons = {biSystemMenu, biMinimize, biMaximize};
    TFormBorderStyle FBorderStyle = bsSizeable;
    TPosition FPosition = poDesigned;
    bool FIsModal = false;
    bool FIsSettling = false;
};

/// The form that applications derive from.
class VARNHOLT_EXPORT TForm : public TCustomForm {
public:
    TForm();
    ~TForm() override;
};

}  // namespace Varnholt
