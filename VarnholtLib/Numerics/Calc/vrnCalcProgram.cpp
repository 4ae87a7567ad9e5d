#include "VarnholtLib/Numerics/Calc/vrnCalcProgramPrivate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "VarnholtLib/Numerics/Calc/vrnCalcBuiltInsPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcCompilerPrivate.h"

namespace Varnholt {
namespace {

template <TCalcOp Op, TSource Left, TSource Right>
Extended RunBinary(const TCalcProgram& program, Extended* slots, const TCalcStep& step) {
    if constexpr (Left == TSource::Keyword) {
        const Extended left = program.Fetch<Left>(slots, step.Left);
        return Operate(Op, left, program.Fetch<Right>(slots, step.Right));
    } else {  // only the call on the right can be noticed; fetched after it, the left value need not be kept
        const Extended right = program.Fetch<Right>(slots, step.Right);
        return Operate(Op, program.Fetch<Left>(slots, step.Left), right);
    }
}

template <TSource Source>
Extended RunLoad(const TCalcProgram& program, Extended* slots, const TCalcStep& step) {
    return program.Fetch<Source>(slots, step.Left);
}

template <TSource Source>
Extended RunSquare(const TCalcProgram& program, Extended* slots, const TCalcStep& step) {
    const Extended value = program.Fetch<Source>(slots, step.Left);
    return value * value;
}

template <TSource Source>
Extended RunSqrt(const TCalcProgram& program, Extended* slots, const TCalcStep& step) {
    return std::sqrt(program.Fetch<Source>(slots, step.Left));
}

constexpr std::size_t kOpCount = 7;
using TSourceTable = std::array<TCalcStep::TRun, kSourceCount>;
using TBinaryTable = std::array<TCalcStep::TRun, kOpCount * kSourceCount * kSourceCount>;

template <std::size_t... Index>
constexpr TBinaryTable MakeBinaryTable(std::index_sequence<Index...>) {
    return {&RunBinary<static_cast<TCalcOp>(Index / (kSourceCount * kSourceCount)),
                       static_cast<TSource>(Index / kSourceCount % kSourceCount),
                       static_cast<TSource>(Index % kSourceCount)>...};
}

constexpr TBinaryTable kBinarySteps =
    MakeBinaryTable(std::make_index_sequence<kOpCount * kSourceCount * kSourceCount>());
constexpr TSourceTable kLoadSteps{&RunLoad<TSource::Slot>, &RunLoad<TSource::Constant>,
                                  &RunLoad<TSource::Keyword>};
constexpr TSourceTable kSquareSteps{&RunSquare<TSource::Slot>, &RunSquare<TSource::Constant>,
                                    &RunSquare<TSource::Keyword>};
constexpr TSourceTable kSqrtSteps{&RunSqrt<TSource::Slot>, &RunSqrt<TSource::Constant>,
                                  &RunSqrt<TSource::Keyword>};

constexpr std::size_t IndexOf(TSource source) {
    return static_cast<std::size_t>(source);
}

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

TCalcStep::TRun BinaryStep(TCalcOp op, TSource left, TSource right) {
    return kBinarySteps[(static_cast<std::size_t>(op) * kSourceCount + IndexOf(left)) * kSourceCount +
                        IndexOf(right)];
}

TCalcStep::TRun LoadStep(TSource source) {
    return kLoadSteps[IndexOf(source)];
}

TCalcStep::TRun SquareStep(TSource source) {
    return kSquareSteps[IndexOf(source)];
}

TCalcStep::TRun SqrtStep(TSource source) {
    return kSqrtSteps[IndexOf(source)];
}

Extended MedianStep(const TCalcProgram& program, Extended* slots, const TCalcStep& step) {
    const std::span<const Extended> values(slots + step.Left, step.Right);
    float* const singles = program.Singles();
    std::ranges::transform(values, singles, [](Extended value) { return static_cast<float>(value); });
    return MedianOf({singles, values.size()});
}

Extended CallStep(const TCalcProgram& program, Extended*, const TCalcStep& step) {
    return program.CallFunction(step.Left);
}

Extended MissingOperandStep(const TCalcProgram&, Extended*, const TCalcStep& step) {
    throw EListError::IndexOutOfBounds(step.Left);
}

Extended NoItemsStep(const TCalcProgram&, Extended*, const TCalcStep&) {
    throw ECalcException(ceSyntax);
}

TCalcProgram::TCalcProgram(const TCalc& calc, bool isPure, TCalcList& callees)
    : FTree(calc.GetTree()), FStamp(FTree.GetStamp()), FReadyChanges(FTree.GetChanges()), FIsPure(isPure) {
    TCalcCompiler(calc, *this, callees).Run();
    FSingles.resize(FSingleCount);
    if (FSlotCount > kStackSlots) FSlots.resize(FSlotCount);
    if (FIsPure || !FSlots.empty() || FTree.HasParent()) FReadyChanges = kNever;
}

const TKeyword* TCalcProgram::AddUnknown(const TKeywordNum& item) {
    const auto raise = [](TCalc&, const String& name, void*) -> Extended {
        throw ECalcException(ceKeyword, name);
    };
    FUnknown.push_back(std::make_unique<TKeyword>(*item.GetCalc(), item.GetKeyword(), nullptr, raise));
    return FUnknown.back().get();
}

Extended TCalcProgram::CallKeyword(std::uint32_t index) const {
    return IsStale() ? FKeywordItems[index]->Ask() : FKeywords[index]->Ask();
}

Extended TCalcProgram::Run(Extended* slots) {
    if (FKnownValue) return *FKnownValue;
    const Extended value = FSlots.empty() ? Execute(slots) : RunInOwnMemory();
    if (FIsPure) FKnownValue = value;
    return value;
}

Extended TCalcProgram::RunInOwnMemory() {
    if (FInUse) {  // a callback calculates this very evaluator
        std::vector<Extended> slots(FSlotCount);
        return Execute(slots.data());
    }
    const TClaim claim(FInUse);
    return Execute(FSlots.data());
}

}  // namespace Varnholt
