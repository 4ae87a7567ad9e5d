#include "VarnholtLib/Numerics/vrnCalcProgramPrivate.h"

#include <array>
#include <cmath>
#include <utility>

#include "VarnholtLib/Numerics/vrnCalcBuiltInsPrivate.h"

namespace Varnholt {
namespace {

// Calculations with no more values than this work on the stack.
constexpr std::size_t kStackSlots = 32;
constexpr std::size_t kStackSingles = 32;

template <TCalcOp Op, TSource Left, TSource Right>
void RunBinary(TCalcRun& run, const TCalcStep& step) {
    const Extended left = run.Fetch<Left>(step.Left);
    const Extended right = run.Fetch<Right>(step.Right);
    run.Slot(step.Target) = Operate(Op, left, right);
}

template <TSource Source>
void RunLoad(TCalcRun& run, const TCalcStep& step) {
    run.Slot(step.Target) = run.Fetch<Source>(step.Left);
}

template <TSource Source>
void RunSqrt(TCalcRun& run, const TCalcStep& step) {
    run.Slot(step.Target) = std::sqrt(run.Fetch<Source>(step.Left));
}

template <TSource Source>
void RunNarrow(TCalcRun& run, const TCalcStep& step) {
    *run.Single(step.Target) = static_cast<float>(run.Fetch<Source>(step.Left));
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
constexpr TSourceTable kSqrtSteps{&RunSqrt<TSource::Slot>, &RunSqrt<TSource::Constant>,
                                  &RunSqrt<TSource::Keyword>};
constexpr TSourceTable kNarrowSteps{&RunNarrow<TSource::Slot>, &RunNarrow<TSource::Constant>,
                                    &RunNarrow<TSource::Keyword>};

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

TCalcStep::TRun SqrtStep(TSource source) {
    return kSqrtSteps[IndexOf(source)];
}

TCalcStep::TRun NarrowStep(TSource source) {
    return kNarrowSteps[IndexOf(source)];
}

void MedianStep(TCalcRun& run, const TCalcStep& step) {
    run.Slot(step.Target) = MedianOf({run.Single(step.Left), step.Right});
}

void CallStep(TCalcRun& run, const TCalcStep& step) {
    run.Slot(step.Target) = run.CallFunction(step.Left);
}

void MissingOperandStep(TCalcRun&, const TCalcStep& step) {
    throw EListError::IndexOutOfBounds(step.Left);
}

void NoItemsStep(TCalcRun&, const TCalcStep&) {
    throw ECalcException(ceSyntax);
}

void TCalcProgram::BindKeywords(std::uint64_t stamp) {
    for (TBinding& binding : FBindings) binding.Keyword = binding.Item->GetKeywordObject();
    FRegistrationStamp = stamp;
}

bool TCalcProgram::FitsOnStack() const {
    return FSlotCount <= kStackSlots && FSingleCount <= kStackSingles;
}

void TCalcProgram::ReserveMemory() {
    if (FitsOnStack()) return;
    FSlots.resize(FSlotCount);
    FSingles.resize(FSingleCount);
}

Extended TCalcProgram::Run() {
    if (FKnownValue) return *FKnownValue;
    if (FitsOnStack()) {
        Extended slots[kStackSlots];
        float singles[kStackSingles];
        const Extended value = TCalcRun(*this, slots, singles).Execute();
        if (FCalc.FPure) FKnownValue = value;
        return value;
    }
    if (FInUse) {  // a callback calculates this very evaluator
        std::vector<Extended> slots(FSlotCount);
        std::vector<float> singles(FSingleCount);
        return TCalcRun(*this, slots.data(), singles.data()).Execute();
    }
    const TClaim claim(FInUse);
    const Extended value = TCalcRun(*this, FSlots.data(), FSingles.data()).Execute();
    if (FCalc.FPure) FKnownValue = value;
    return value;
}

TCalcRun::TCalcRun(const TCalcProgram& program, Extended* slots, float* singles)
    : FProgram(program), FSlots(slots), FConstants(program.FConstants.data()), FSingles(singles) {}

Extended TCalcRun::Execute() {
    for (const TCalcStep& step : FProgram.FSteps) step.Run(*this, step);
    switch (FProgram.FResultSource) {
        case TSource::Constant:
            return FConstants[FProgram.FResult];
        case TSource::Keyword:
            return CallKeyword(FProgram.FResult);
        case TSource::Slot:
            break;
    }
    return FSlots[FProgram.FResult];
}

// A callback may have registered something since the keywords were bound: then the name is looked up anew.
Extended TCalcRun::CallKeyword(std::uint32_t index) const {
    const TCalcProgram::TBinding& binding = FProgram.FBindings[index];
    if (binding.Keyword != nullptr && FProgram.FCalc.RegistrationStamp() == FProgram.FRegistrationStamp)
        [[likely]] {
        return binding.Keyword->Number();
    }
    return binding.Item->Get_Number();
}

}  // namespace Varnholt
