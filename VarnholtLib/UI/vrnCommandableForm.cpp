#include "VarnholtLib/UI/vrnCommandableForm.h"

namespace Varnholt {

ICommandableForm::~ICommandableForm() = default;

bool GetCommandableForm(TComponent* control, ICommandableForm*& commandableForm) noexcept {
    commandableForm = dynamic_cast<ICommandableForm*>(control);
    return commandableForm != nullptr;
}

bool GetCommandableForm(TComponent* control) noexcept {
    return dynamic_cast<ICommandableForm*>(control) != nullptr;
}

}  // namespace Varnholt
