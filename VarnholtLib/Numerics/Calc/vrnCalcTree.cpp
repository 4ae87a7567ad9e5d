#include "VarnholtLib/Numerics/Calc/vrnCalcTreePrivate.h"

#include "VarnholtLib/Numerics/Calc/vrnCalcProgramPrivate.h"

namespace Varnholt {

TCalcTree::TRetired::TRetired() = default;

TCalcTree::TRetired::~TRetired() = default;

std::unique_ptr<TCalcTree::TRetired> TCalcTree::MakeRoomToRetire() const {
    return IsRunning() ? std::make_unique<TRetired>() : nullptr;
}

void TCalcTree::Retire(std::unique_ptr<TRetired> retired) noexcept {
    retired->Next = std::move(FRetired);
    FRetired = std::move(retired);
}

Extended TCalcTree::FreeRetired(Extended value) noexcept {
    while (FRetired) {
        const std::unique_ptr<TRetired> retired = std::move(FRetired);
        FRetired = std::move(retired->Next);
        TCalc::FreeItems(retired->Items);
    }
    return value;
}

void TCalcTree::RaiseTooDeep() {
    throw Exception(u"Function calls are nested too deeply");
}

}  // namespace Varnholt
