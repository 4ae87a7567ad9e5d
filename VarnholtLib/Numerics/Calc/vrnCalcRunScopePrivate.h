#pragma once

#include <utility>
#include <vector>

#include "VarnholtLib/Numerics/Calc/vrnCalc.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcProgramPrivate.h"

namespace Varnholt {

struct TCalc::TRetired {
    TItemList Items;
    std::vector<std::unique_ptr<TCalcProgram>> Programs;
};

/// Counts a calculation as under way in its tree; what callbacks replaced is freed when the last one ends.
class TCalc::TRunScope {
public:
    explicit TRunScope(TCalc& calc) : FScopeTop(calc.FTop) {
        TCalc& top = *FScopeTop;
        if (top.FRunDepth >= kMaxCallDepth) throw Exception(u"Function calls are nested too deeply");
        ++top.FRunDepth;
    }
    ~TRunScope() {
        if (FScopeTop != nullptr) Leave(0);
    }
    /// Ends the calculation and hands its value on, which so stays in its register.
    Extended Leave(Extended value) {
        TCalc& top = *std::exchange(FScopeTop, nullptr);
        if (--top.FRunDepth == 0 && top.FRetired) [[unlikely]]
            return FreeRetired(top, value);
        return value;
    }
    TRunScope(const TRunScope&) = delete;
    TRunScope& operator=(const TRunScope&) = delete;

    /// Frees items level by level: an item first hands over the items of the evaluators that it owns.
    static void FreeItems(TItemList& items) {
        while (!items.empty()) {
            const std::unique_ptr<TCalcObj> item = std::move(items.back());
            items.pop_back();
            item->SurrenderItems(items);
        }
    }

private:
    [[gnu::noinline]] static Extended FreeRetired(TCalc& top, Extended value) {
        FreeItems(top.FRetired->Items);
        top.FRetired.reset();
        return value;
    }

    TCalc* FScopeTop;
};

}  // namespace Varnholt
