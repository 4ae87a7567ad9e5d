#pragma once

#include "VarnholtLib/UI/vrnUIBookmarkBinder.h"

/// The value adapters of five classes of controls. For a class derived from one of these, derive from its adapter and
/// override GetControlTypeName.
///
///     adapters->Add(std::make_shared<TComboBoxUIBookmarkValueAdapter>());
///
/// | control                   | text                                                            |
/// |---------------------------|-----------------------------------------------------------------|
/// | TCheckBox, TRadioButton   | "-1" checked, "0" unchecked                                      |
/// | TEdit                     | the text                                                        |
/// | TComboBox                 | the text of the selected item, "##_INVALID_INDEX_##" without one |
/// | TPageControl              | "page:" and the name of the active page, "page:nil" without one |
///
/// Threads: the thread of the controls.
namespace Varnholt {

/// Reads any text that Variant::ToBoolean does, and raises as that. Sets Checked, then calls OnClick.
class VARNHOLT_EXPORT TCheckBoxUIBookmarkValueAdapter : public IUIBookmarkValueAdapter {
public:
    [[nodiscard]] String GetData(TControl& control) override;
    void UpdateControl(TControl& control, StringView data) override;
    [[nodiscard]] String GetControlTypeName() const override;
};

/// The same.
class VARNHOLT_EXPORT TRadioButtonUIBookmarkValueAdapter : public IUIBookmarkValueAdapter {
public:
    [[nodiscard]] String GetData(TControl& control) override;
    void UpdateControl(TControl& control, StringView data) override;
    [[nodiscard]] String GetControlTypeName() const override;
};

/// Sets the text, then calls OnChange, then OnExit, as if a person had typed it and gone on.
class VARNHOLT_EXPORT TEditUIBookmarkValueAdapter : public IUIBookmarkValueAdapter {
public:
    [[nodiscard]] String GetData(TControl& control) override;
    void UpdateControl(TControl& control, StringView data) override;
    [[nodiscard]] String GetControlTypeName() const override;
};

/// Keeps the item's text, not its position; a text typed into the field is not kept. Selects the first item of
/// exactly that text, or none if it is no longer there, then calls OnChange.
class VARNHOLT_EXPORT TComboBoxUIBookmarkValueAdapter : public IUIBookmarkValueAdapter {
public:
    [[nodiscard]] String GetData(TControl& control) override;
    void UpdateControl(TControl& control, StringView data) override;
    [[nodiscard]] String GetControlTypeName() const override;
};

/// Makes the first page of that name the active one, then calls OnChange with the page control as sender. Does
/// nothing for a text of another form, "page:nil", or a page that does not exist.
class VARNHOLT_EXPORT TPageControlUIBookmarkValueAdapter : public IUIBookmarkValueAdapter {
public:
    [[nodiscard]] String GetData(TControl& control) override;
    void UpdateControl(TControl& control, StringView data) override;
    [[nodiscard]] String GetControlTypeName() const override;
};

}  // namespace Varnholt
