#include "VarnholtLib/Foundation/vrnUseCount.h"

namespace Varnholt {

void TUseCount::Initialize(TWorkStep step) noexcept {
    const bool isFirst = FCount-- == 0;
    if (isFirst && step != nullptr) step();
}

void TUseCount::Finalize(TWorkStep step) noexcept {
    const bool isLast = ++FCount == 0;
    if (isLast && step != nullptr) step();
}

void TModuleUse::Initialize(const TModuleWork& work) noexcept {
    FClass.Initialize(work.ConstructClass);
    FModule.Initialize(work.Initialize);
}

void TModuleUse::Finalize(const TModuleWork& work) noexcept {
    FModule.Finalize(work.Finalize);
    FClass.Finalize(work.DestructClass);
}

}  // namespace Varnholt
