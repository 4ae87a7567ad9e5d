#include "VarnholtLib/Numerics/Calc/vrnCalcProgramPrivate.h"

#include <algorithm>

#include "VarnholtLib/Numerics/Calc/vrnCalcCompilerPrivate.h"

namespace Varnholt {
namespace {

// Marks memory as in use for the length of a calculation.
class TClaim {
public:
    explicit TClaim(bool& inUse) : FInUse(inUse) { FInUse = true; }
    ~TClaim() { FInUse = false; }
    TClaim(const TClaim&) = delete;
    TClaim& operator=(const TClaim&) = delete;

private:
    bool& FInUse;
};

}  // namespace

TCalcProgram::TCalcProgram(const TCalc& calc, bool isPure, TCalcList& callees)
    : FTree(calc.GetTree()), FStamp(FTree.GetStamp()), FReadyStamp(FStamp), FIsPure(isPure) {
    TCalcCompiler(calc, *this, callees).Run();
    FEntry = FStores.empty() ? FRoot->Run : &RunOnStack;
    if (FSlotCount > kStackSlots) FSlots.resize(FSlotCount);
    if (FIsPure || !FSlots.empty()) FReadyStamp = kNever;
}

const TKeyword* TCalcProgram::AddUnknown(const TKeywordNum& item) {
    const auto raise = [](TCalc&, const String& name, void*) -> Extended {
        throw ECalcException(ceKeyword, name);
    };
    FUnknown.push_back(std::make_unique<TKeyword>(*item.GetCalc(), item.GetKeyword(), nullptr, raise));
    return FUnknown.back().get();
}

Extended TCalcProgram::Run() {
    if (FKnownValue) return *FKnownValue;
    const Extended value = FSlots.empty() ? Execute() : RunInOwnMemory();
    if (FIsPure) FKnownValue = value;
    return value;
}

Extended TCalcProgram::RunOnStack(const TCalcProgram& program, Extended*, const TCalcStep&) {
    Extended slots[kStackSlots];
    return program.RunWithSlots(slots);
}

Extended TCalcProgram::RunWithSlots(Extended* slots) const {
    for (const TCalcStore& store : FStores) {
        const TCalcStep& step = FSteps[store.Step];
        slots[store.Slot] = step.Run(*this, slots, step);
    }
    return FRoot->Run(*this, slots, *FRoot);
}

Extended TCalcProgram::RunInOwnMemory() {
    if (FInUse) {  // a callback calculates this very evaluator
        std::vector<Extended> slots(FSlotCount);
        return RunWithSlots(slots.data());
    }
    const TClaim claim(FInUse);
    return RunWithSlots(FSlots.data());
}

}  // namespace Varnholt
