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

void TCalcTree::FreeRetired() noexcept {
    while (FRetired) {
        const std::unique_ptr<TRetired> retired = std::move(FRetired);
        FRetired = std::move(retired->Next);
        TCalc::FreeItems(retired->Items);
    }
}

void TCalcRun::RaiseTooDeep() {
    throw Exception(u"Function calls are nested too deeply");
}

Extended TCalcRun::FreeRetired(TCalcTree& tree, Extended value) {
    tree.FreeRetired();
    return value;
}

}  // namespace Varnholt
