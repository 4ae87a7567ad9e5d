#pragma once

#include <atomic>

#include "Desktop/Station/ExpressionField.h"
#include "Platform/Controls/Buttons.h"
#include "Platform/Controls/Form.h"

/// The dialogs of the application, apart from the report's.
namespace Varnholt::Station {

/// Fields in rows, each after its label, and OK and Cancel below them.
class TRowsDialog : public TForm {
public:
    ~TRowsDialog() override;

    TButton& Ok;
    TButton& Cancel;

protected:
    TRowsDialog(StringView caption, std::int32_t width);

    /// Puts a field in the next row.
    template <typename T>
    T& AddRow(StringView label, StringView name, std::int32_t height = 25) {
        TLabel& text = Add<TLabel>(u"");
        text.SetCaption(label);
        text.SetBounds(kMargin, FNextTop + 4, kLabelWidth, 17);
        T& field = Add<T>(name);
        field.SetBounds(kMargin + kLabelWidth, FNextTop, GetWidth() - 2 * kMargin - kLabelWidth, height);
        FNextTop += height + 8;
        return field;
    }
    /// Puts the buttons below the rows and gives the form its height.
    void Finish();

    static constexpr std::int32_t kMargin = 12;
    static constexpr std::int32_t kLabelWidth = 170;

private:
    std::int32_t FNextTop = kMargin;
};

/// Name and expression of a computed column.
class TColumnDialog final : public TRowsDialog {
public:
    /// The table must outlive the dialog.
    explicit TColumnDialog(const TStationTable& table);
    ~TColumnDialog() override;

    TEdit& edName;
    TExpressionField& Expression;

private:
    void UpdateOk(const TStationTable& table);
};

/// The proxy of the user, for all applications of the family. OK writes it.
class TProxyDialog final : public TRowsDialog {
public:
    TProxyDialog();
    ~TProxyDialog() override;

    TCheckBox& cbEnabled;
    TEdit& edServer;
    TSpinEdit& edPort;
    TEdit& edUser;
    TEdit& edPassword;

private:
    void Save();
};

/// Fetches a file from an address; Cancel stops that.
class TAddressDialog final : public TRowsDialog {
public:
    TAddressDialog();
    ~TAddressDialog() override;

    /// The bytes that were fetched, after mrOk.
    [[nodiscard]] const std::vector<std::uint8_t>& GetBytes() const noexcept { return FBytes; }

    TEdit& edAddress;
    TProgressBar& Progress;
    TLabel& Status;

private:
    struct TTransfer;

    void Fetch();
    void ShowProgress(std::int64_t done, std::int64_t all);

    std::shared_ptr<TTransfer> FTransfer;  // the one that is running
    std::vector<std::uint8_t> FBytes;
};

}  // namespace Varnholt::Station
