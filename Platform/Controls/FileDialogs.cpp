#include "Platform/Controls/FileDialogs.h"

#include "Platform/System/Platform.h"

namespace Varnholt {

TFileDialog::TFileDialog(bool isSave) {
    FRequest.IsSave = isSave;
}

TFileDialog::~TFileDialog() = default;

bool TFileDialog::Execute() {
    TFileDialogRequest request = FRequest;
    request.Owner = Platform().Screen->GetActiveFormHandle();
    if (!Platform().FileDialogs->ChooseFile(request)) return false;
    FRequest.FileName = request.FileName;
    FRequest.FilterIndex = request.FilterIndex;
    return true;
}

TOpenDialog::TOpenDialog() : TFileDialog(false) {}

TOpenDialog::~TOpenDialog() = default;

TSaveDialog::TSaveDialog() : TFileDialog(true) {}

TSaveDialog::~TSaveDialog() = default;

}  // namespace Varnholt
