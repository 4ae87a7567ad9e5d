#pragma once

#include "Platform/Controls/Control.h"
#include "Platform/Runtime/StringList.h"

/// Fields for text and numbers.
///
///     TEdit& name = form.Add<TEdit>(u"edName");
///     name.SetText(u"Bergen");                                   // raises OnChange, as a person's typing does
///     name.SetOnExit([&](TObject*) { Check(name.GetText()); });  // when the focus leaves
///
/// Positions in a text count from 0, in UTF-16 code units.
///
/// Threads: main thread only.
namespace Varnholt {

class VARNHOLT_EXPORT TCustomEdit : public TWinControl {
public:
    ~TCustomEdit() override;

    [[nodiscard]] const String& GetText() const noexcept { return FText; }
    /// Replaces the text; another one than before raises OnChange. The selection moves to the start.
    void SetText(StringView text);
    /// The longest text that a person can type; 0, the initial value, for no limit.
    [[nodiscard]] std::int32_t GetMaxLength() const noexcept { return FMaxLength; }
    void SetMaxLength(std::int32_t maxLength);
    [[nodiscard]] bool GetReadOnly() const noexcept { return FReadOnly; }
    void SetReadOnly(bool readOnly);

    /// What is selected; without a selection the place where a person's typing goes. Values outside the text are put
    /// into it.
    [[nodiscard]] std::int32_t GetSelStart() const noexcept { return FSelStart; }
    [[nodiscard]] std::int32_t GetSelLength() const noexcept { return FSelLength; }
    void Select(std::int32_t start, std::int32_t length);
    void SelectAll();

    /// Raised when the text has become another one.
    [[nodiscard]] const TNotifyEvent& GetOnChange() const noexcept { return FOnChange; }
    void SetOnChange(TNotifyEvent onChange) { FOnChange = std::move(onChange); }

    /// A person types: the text replaces the selection, as far as the longest text allows. False if the field is
    /// read-only.
    bool TypeByUser(StringView text);
    /// A person has made the whole text into another one, with the caret behind what was done. False if the field is
    /// read-only, or the text is longer than both the former and the longest one.
    bool EditByUser(StringView text, std::int32_t caret);
    /// A person selects.
    bool SelectByUser(std::int32_t start, std::int32_t length);
    bool ClickByUser() override;

protected:
    TCustomEdit();
    [[nodiscard]] StringView GetPaintedText() const noexcept override { return FText; }
    /// The text as the control keeps it.
    [[nodiscard]] virtual String Kept(StringView text) const;
    virtual void TextChanged();

private:
    void Replace(String text);

    String FText;
    TNotifyEvent FOnChange;
    std::int32_t FMaxLength = 0;
    std::int32_t FSelStart = 0;
    std::int32_t FSelLength = 0;
    bool FReadOnly = false;
};

/// One line. Line ends in a text are left out.
class VARNHOLT_EXPORT TEdit : public TCustomEdit {
public:
    TEdit();
    ~TEdit() override;
    /// Whether the text is shown as dots; false at first.
    [[nodiscard]] bool GetIsPassword() const noexcept { return FIsPassword; }
    void SetIsPassword(bool isPassword);

protected:
    [[nodiscard]] StringView GetPaintedText() const noexcept override;
    [[nodiscard]] String Kept(StringView text) const override;

private:
    bool FIsPassword = false;
};

/// Several lines, with CR LF between them.
class VARNHOLT_EXPORT TMemo : public TCustomEdit {
public:
    TMemo();
    ~TMemo() override;
    /// The lines of the text.
    [[nodiscard]] TStringList GetLines() const;
    void SetLines(const TStringList& lines);

protected:
    /// Enter begins a line.
    bool PressedByUser(std::int32_t virtualKey) override;
};

/// The button with two arrows of a spin edit.
class VARNHOLT_EXPORT TSpinButton : public TControl {
public:
    TSpinButton();
    ~TSpinButton() override;
};

/// A field for an integer, with a button that changes it by one.
class VARNHOLT_EXPORT TSpinEdit : public TCustomEdit {
public:
    TSpinEdit();
    ~TSpinEdit() override;

    /// The number of the text; the nearest limit for a number outside of them, and the lower one for a text that is no
    /// number. Limits count only while the upper one is above the lower one; both are 0 at first.
    [[nodiscard]] std::int32_t GetValue() const;
    void SetValue(std::int32_t value);
    [[nodiscard]] std::int32_t GetMinValue() const noexcept { return FMinValue; }
    [[nodiscard]] std::int32_t GetMaxValue() const noexcept { return FMaxValue; }
    void SetRange(std::int32_t minValue, std::int32_t maxValue);
    /// At the right end inside the field, as high as that.
    [[nodiscard]] TSpinButton& GetButton() noexcept { return *FButton; }
    /// A person clicks an arrow.
    bool SpinByUser(bool isUp);

protected:
    void Resized(TSize former) override;

private:
    [[nodiscard]] std::int32_t Limited(std::int64_t value) const noexcept;

    TSpinButton* FButton = nullptr;
    std::int32_t FMinValue = 0;
    std::int32_t FMaxValue = 0;
};

}  // namespace Varnholt
