#pragma once

#include "Platform/Controls/Control.h"
#include "Platform/System/Desktop.h"

/// Buttons, check boxes and radio buttons.
///
///     TButton& ok = form.Add<TButton>(u"btOk");
///     ok.SetCaption(u"&OK");
///     ok.SetDefault(true);
///     ok.SetModalResult(mrOk);
///
/// A letter after "&" in a caption is underlined, and Alt with it clicks the button.
///
/// Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT TButtonControl : public TWinControl {
public:
    ~TButtonControl() override;
    [[nodiscard]] const String& GetCaption() const noexcept { return FCaption; }
    void SetCaption(StringView caption);
    /// Gives the button the focus, then clicks it.
    bool ClickByUser() override;

protected:
    TButtonControl();
    [[nodiscard]] StringView GetPaintedText() const noexcept override { return FCaption; }
    /// The space bar clicks.
    bool PressedByUser(std::int32_t virtualKey) override;

private:
    String FCaption;
};

class VARNHOLT_EXPORT TButton : public TButtonControl {
public:
    TButton();
    ~TButton() override;

    /// The default button of a form is clicked by Enter, the cancel button by Escape, wherever the focus is.
    [[nodiscard]] bool GetDefault() const noexcept { return FDefault; }
    void SetDefault(bool isDefault);
    [[nodiscard]] bool GetCancel() const noexcept { return FCancel; }
    void SetCancel(bool isCancel);
    /// The result that a click gives the form, before OnClick; mrNone, the initial one, for none.
    [[nodiscard]] TModalResult GetModalResult() const noexcept { return FModalResult; }
    void SetModalResult(TModalResult result) noexcept { FModalResult = result; }
    void Click() override;

protected:
    bool PressedByUser(std::int32_t virtualKey) override;
    [[nodiscard]] bool AnswersKey(std::int32_t virtualKey) const noexcept override;

private:
    TModalResult FModalResult = mrNone;
    bool FDefault = false;
    bool FCancel = false;
};

/// A button that is checked or not. OnClick is raised when that changes, by a person or by SetChecked.
class VARNHOLT_EXPORT TCheckBox : public TButtonControl {
public:
    TCheckBox();
    ~TCheckBox() override;
    [[nodiscard]] bool GetChecked() const noexcept { return FChecked; }
    void SetChecked(bool checked);
    bool ClickByUser() override;

private:
    bool FChecked = false;
};

/// One of several choices: that one of the radio buttons of a parent that is checked last is the only one checked.
/// OnClick is raised when the button becomes checked or unchecked by SetChecked, or checked by a person, but not
/// when another button unchecks it.
class VARNHOLT_EXPORT TRadioButton : public TButtonControl {
public:
    TRadioButton();
    ~TRadioButton() override;
    [[nodiscard]] bool GetChecked() const noexcept { return FChecked; }
    void SetChecked(bool checked);
    bool ClickByUser() override;

private:
    void UncheckOthers();

    bool FChecked = false;
};

}  // namespace Varnholt
