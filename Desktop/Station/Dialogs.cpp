#include "Desktop/Station/Dialogs.h"

#include "Platform/Controls/Application.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Text.h"
#include "VarnholtLib/Services/vrnProxy.h"
#include "VarnholtLib/Services/vrnSimpleHttpRequest.h"
#include "VarnholtLib/UI/vrnMessageBox.h"

namespace Varnholt::Station {

// --- TRowsDialog ---

TRowsDialog::TRowsDialog(StringView caption, std::int32_t width)
    : Ok(Add<TButton>(u"btOk")), Cancel(Add<TButton>(u"btCancel")) {
    SetCaption(caption);
    SetBorderStyle(bsDialog);
    SetPosition(poMainFormCenter);
    SetWidth(width);
    Ok.SetCaption(u"OK");
    Ok.SetDefault(true);
    Ok.SetModalResult(mrOk);
    Cancel.SetCaption(u"Cancel");
    Cancel.SetCancel(true);
    Cancel.SetModalResult(mrCancel);
}

TRowsDialog::~TRowsDialog() = default;

void TRowsDialog::Finish() {
    const std::int32_t right = GetWidth() - kMargin;
    Cancel.SetBounds(right - 97, FNextTop + 4, 97, 27);
    Ok.SetBounds(right - 97 - 8 - 97, FNextTop + 4, 97, 27);
    SetHeight(FNextTop + 4 + 27 + kMargin);
    // Tab reaches the buttons after the fields.
    for (TButton* const button : {&Ok, &Cancel}) Insert(Remove(*button));
    SetActiveControl(nullptr);
}

// --- TColumnDialog ---

TColumnDialog::TColumnDialog(const TStationTable& table)
    : TRowsDialog(u"Computed column", 600),
      edName(AddRow<TEdit>(u"Name:", u"edName")),
      Expression(AddRow<TExpressionField>(u"Expression:", u"Expression", 46)) {
    Finish();
    Expression.SetTable(&table);
    edName.SetOnChange([this, &table](TObject*) { UpdateOk(table); });
    Expression.SetOnChecked([this, &table](TObject*) { UpdateOk(table); });
    UpdateOk(table);
}

TColumnDialog::~TColumnDialog() = default;

void TColumnDialog::UpdateOk(const TStationTable& table) {
    const std::optional<String> expression = Expression.GetValid();
    const StringView name = TrimView(edName.GetText());
    Ok.SetEnabled(expression && !expression->empty() && !name.empty() && table.FindColumn(name) < 0);
}

// --- TProxyDialog ---

TProxyDialog::TProxyDialog()
    : TRowsDialog(u"Proxy", 460),
      cbEnabled(AddRow<TCheckBox>(u"", u"cbEnabled")),
      edServer(AddRow<TEdit>(u"Server:", u"edServer")),
      edPort(AddRow<TSpinEdit>(u"Port:", u"edPort")),
      edUser(AddRow<TEdit>(u"User name:", u"edUser")),
      edPassword(AddRow<TEdit>(u"Password:", u"edPassword")) {
    Finish();
    cbEnabled.SetCaption(u"&Use a proxy");
    edPort.SetRange(0, 65535);
    edPort.SetWidth(90);
    edPassword.SetIsPassword(true);
    const TProxySettings settings;
    cbEnabled.SetChecked(settings.GetEnabled());
    edServer.SetText(settings.GetServer());
    edPort.SetValue(settings.GetPort());
    edUser.SetText(settings.GetUsername());
    edPassword.SetText(settings.GetPassword());
    Ok.SetOnClick([this](TObject*) { Save(); });
}

TProxyDialog::~TProxyDialog() = default;

void TProxyDialog::Save() {
    if (cbEnabled.GetChecked() && edServer.GetText().empty()) {
        SetModalResult(mrNone);
        TMsgBox::Error(u"Enter the name of the server, or do not use a proxy.", u"Proxy", &edServer);
        return;
    }
    TProxySettings settings;
    settings.SetEnabled(cbEnabled.GetChecked());
    settings.SetServer(edServer.GetText());
    settings.SetPort(edPort.GetValue());
    settings.SetUsername(edUser.GetText());
    settings.SetPassword(edPassword.GetText());
    settings.Save();
}

// --- TAddressDialog ---

/// What the thread of a transfer and the dialog share. The dialog may be gone before the thread.
struct TAddressDialog::TTransfer {
    TComponentRef<TAddressDialog> Dialog;  // main thread only
    std::atomic<bool> IsCancelled = false;
    std::atomic<std::int64_t> Reported = 0;  // bytes
};

TAddressDialog::TAddressDialog()
    : TRowsDialog(u"Open from address", 560),
      edAddress(AddRow<TEdit>(u"Address:", u"edAddress")),
      Progress(AddRow<TProgressBar>(u"", u"Progress", 17)),
      Status(AddRow<TLabel>(u"", u"Status", 17)) {
    Finish();
    edAddress.SetText(u"https://");
    Ok.SetCaption(u"&Fetch");
    Ok.SetModalResult(mrNone);
    Ok.SetOnClick([this](TObject*) { Fetch(); });
}

TAddressDialog::~TAddressDialog() {
    if (FTransfer) FTransfer->IsCancelled = true;
}

void TAddressDialog::Fetch() {
    const auto transfer = std::make_shared<TTransfer>();
    transfer->Dialog = this;
    FTransfer = transfer;
    Ok.SetEnabled(false);
    Status.SetCaption(u"Connecting");
    const auto onSuccess = [transfer](const std::vector<std::uint8_t>& bytes) {
        TAddressDialog* const dialog = transfer->Dialog.Get();
        if (dialog == nullptr || transfer->IsCancelled) return;
        dialog->FBytes = bytes;
        dialog->SetModalResult(mrOk);
    };
    const auto onError = [transfer](const String& error) {
        TAddressDialog* const dialog = transfer->Dialog.Get();
        if (dialog == nullptr || transfer->IsCancelled) return;
        dialog->Ok.SetEnabled(true);
        dialog->Status.SetCaption(error);
        dialog->Progress.SetPercent(0);
    };
    // On the thread of the transfer; what it raises ends the exchange.
    const auto onProgress = [transfer](std::int64_t done, std::int64_t all) {
        if (transfer->IsCancelled) throw Exception(u"Cancelled");
        if (done - transfer->Reported < 65536 && done != all) return;
        transfer->Reported = done;
        Application().Post([transfer, done, all] {
            if (TAddressDialog* const dialog = transfer->Dialog.Get()) dialog->ShowProgress(done, all);
        });
    };
    HttpRequest(u"GET", TrimView(edAddress.GetText()), {}, onSuccess, onError, onProgress);
}

void TAddressDialog::ShowProgress(std::int64_t done, std::int64_t all) {
    Progress.SetPercent(all > 0 ? static_cast<std::int32_t>(done * 100 / all) : -1);
    Status.SetCaption(Format(u"%d KiB", {done / 1024}));
}

}  // namespace Varnholt::Station
