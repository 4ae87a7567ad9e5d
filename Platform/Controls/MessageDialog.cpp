#include "Platform/Controls/MessageDialog.h"

#include <cstdio>
#include <string>

namespace Varnholt {
namespace {

class TStandardErrorService final : public IMessageDialogService {
public:
    TMsgDlgBtn Show(StringView text, TMsgDlgType, TMsgDlgButtons, std::int32_t) override {
        const std::string line = ToUtf8(text) + '\n';
        std::fwrite(line.data(), 1, line.size(), stderr);
        return mbOK;
    }
};

constinit TStandardErrorService standardErrorService;
constinit IMessageDialogService* currentService = &standardErrorService;

}  // namespace

IMessageDialogService& MessageDialogService() noexcept {
    return *currentService;
}

TMessageDialogServiceScope::TMessageDialogServiceScope(IMessageDialogService& service) noexcept
    : FFormer(*currentService) {
    currentService = &service;
}

TMessageDialogServiceScope::~TMessageDialogServiceScope() {
    currentService = &FFormer;
}

TMsgDlgBtn MessageDlg(StringView text, TMsgDlgType dialogType, TMsgDlgButtons buttons,
                      std::int32_t helpContext) {
    return MessageDialogService().Show(text, dialogType, buttons, helpContext);
}

}  // namespace Varnholt
