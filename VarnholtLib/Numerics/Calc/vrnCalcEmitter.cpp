#include <algorithm>
#include <cmath>

#include "VarnholtLib/Numerics/Calc/vrnCalcEmitterPrivate.h"

namespace Varnholt {
namespace {

TCalcValue ConstantValue(Extended value) {
    return {TSource::Constant, 0, value};
}

// Whether a division by the value gives the same as a multiplication by its reciprocal, bit for bit: both are
// exact for a power of two, before the one rounding of the result.
bool HasExactReciprocal(Extended value) {
    int exponent = 0;
    return std::isnormal(value) && std::fabs(std::frexp(value, &exponent)) == 0.5L &&
           std::isnormal(1 / value);
}

template <typename T>
std::uint32_t AddTo(std::vector<T>& list, T item) {
    list.push_back(std::move(item));
    return static_cast<std::uint32_t>(list.size() - 1);
}

}  // namespace

TCalcValue TCalcEmitter::Keyword(const TKeywordNum& item, const TKeyword* keyword) {
    if (keyword == nullptr) keyword = FProgram.AddUnknown(item);
    if (keyword->GetVariable() != nullptr)
        return {TSource::Variable, AddTo(FProgram.FVariables, keyword->GetVariable()), 0};
    FProgram.FIsQuiet = false;
    return {TSource::Keyword, AddTo(FProgram.FKeywords, {keyword, &item}), 0};
}

TCalcValue TCalcEmitter::Combine(TCalcOp op, const TCalcValue& left, const TCalcValue& right) {
    if (left.IsConstant() && right.IsConstant()) {
        const bool raises = op == TCalcOp::Divide && right.Constant == 0;
        if (!raises) return ConstantValue(Operate(op, left.Constant, right.Constant));
    }
    // Power multiplies for small whole exponents: its square is this very product
    if (right.IsConstant() && op == TCalcOp::Power && right.Constant == 2)
        return EmitUnary(TStepKind::Square, left);
    if (right.IsConstant() && op == TCalcOp::Divide && HasExactReciprocal(right.Constant))
        return Combine(TCalcOp::Multiply, left, ConstantValue(1 / right.Constant));
    ArrangeOperands(left, right);
    TCalcStep step{.Op = op};
    step.IsOrdered = op == TCalcOp::Divide && !(right.IsConstant() && right.Constant != 0);
    SetOperand(step, step.RightSource, step.Right, right);
    SetOperand(step, step.LeftSource, step.Left, left);
    return Emit(step);
}

TCalcValue TCalcEmitter::Sqrt(const TCalcValue& value) {
    if (value.IsConstant()) return ConstantValue(std::sqrt(value.Constant));
    return EmitUnary(TStepKind::Sqrt, value);
}

TCalcValue TCalcEmitter::Fetched(const TCalcValue& value) {
    return value.IsKeyword() ? EmitUnary(TStepKind::Load, value) : value;
}

TCalcValue TCalcEmitter::Call(const TFunctionNum& function) {
    FProgram.FIsQuiet = false;
    return EmitOrdered(TStepKind::Call, {.Call = &function});
}

TCalcValue TCalcEmitter::MissingOperand(std::size_t index) {
    StoreWaiting(FWaiting.size());
    return EmitOrdered(TStepKind::MissingOperand, {.Index = index});
}

TCalcValue TCalcEmitter::NoItems() {
    StoreWaiting(FWaiting.size());
    return EmitOrdered(TStepKind::NoItems, {});
}

std::uint32_t TCalcEmitter::ReserveSlots(std::size_t count) {
    const std::uint32_t first = FProgram.FSlotCount;
    FProgram.FSlotCount += static_cast<std::uint32_t>(count);
    if (FProgram.FSingles.size() < count) FProgram.FSingles.resize(count);
    return first;
}

void TCalcEmitter::Gather(const TCalcValue& value, std::uint32_t slot) {
    const bool isLast = Waits(value) && FWaiting.back() == value.Index;
    const TCalcValue step = isLast ? value : EmitUnary(TStepKind::Load, value);
    if (Waits(step)) FWaiting.pop_back();
    StoreWaiting(FWaiting.size());
    FProgram.FStores.push_back({step.Index, slot});
}

TCalcValue TCalcEmitter::Median(std::uint32_t firstSlot, std::size_t count) {
    const TCalcValue median = EmitOrdered(TStepKind::Median, {.Index = firstSlot}, {.Index = count});
    for (std::size_t i = count; i > 0; --i)
        FReadSlots.push_back(static_cast<std::uint32_t>(firstSlot + i - 1));
    return median;
}

void TCalcEmitter::Finish(const TCalcValue& result) {
    const TCalcValue root = result.IsStep() ? result : EmitUnary(TStepKind::Load, result);
    if (Waits(root) && FWaiting.back() == root.Index) FWaiting.pop_back();
    StoreWaiting(FWaiting.size());
    const std::uint32_t last = IsInSlot(root) ? EmitUnary(TStepKind::Load, root).Index : root.Index;
    for (TCalcStep& step : FProgram.FSteps) {
        Resolve(step.LeftSource, step.Left);
        Resolve(step.RightSource, step.Right);
        step.Run = FunctionOf(step);
    }
    FProgram.FRoot = &FProgram.FSteps[last];
}

TCalcValue TCalcEmitter::Emit(TCalcStep step) {
    const std::uint32_t index = AddTo(FProgram.FSteps, step);
    FSlotOf.push_back(kNoSlot);
    if (step.IsOrdered) FWaiting.push_back(index);
    return {TSource::Step, index, 0};
}

TCalcValue TCalcEmitter::EmitUnary(TStepKind kind, const TCalcValue& value) {
    ArrangeOperands(value, {});
    TCalcStep step{.Kind = kind};
    SetOperand(step, step.LeftSource, step.Left, value);
    return Emit(step);
}

// The operands are those of the kind itself.
TCalcValue TCalcEmitter::EmitOrdered(TStepKind kind, TOperand left, TOperand right) {
    TCalcStep step{.Left = left, .Right = right, .Kind = kind};
    step.IsOrdered = true;
    return Emit(step);
}

bool TCalcEmitter::IsInSlot(const TCalcValue& value) const {
    return value.IsStep() && FSlotOf[value.Index] != kNoSlot;
}

bool TCalcEmitter::Waits(const TCalcValue& value) const {
    return value.IsStep() && FSlotOf[value.Index] == kNoSlot && FProgram.FSteps[value.Index].IsOrdered;
}

// A step takes the last of the waiting steps as it is, and others out of slots, as what would nest too deep.
void TCalcEmitter::ArrangeOperands(const TCalcValue& left, const TCalcValue& right) {
    for (const TCalcValue& value : {left, right}) {
        if (!value.IsStep() || IsInSlot(value)) continue;
        const bool isTooDeep = FProgram.FSteps[value.Index].Depth == kMaxDepth;
        if (!Waits(value)) {
            if (isTooDeep) Store(value.Index);
        } else if (FWaiting.back() != value.Index) {
            const bool isLastTaken = right.IsStep() && FWaiting.back() == right.Index;
            StoreWaiting(FWaiting.size() - (isLastTaken ? 1 : 0));
        } else if (isTooDeep) {
            StoreWaiting(FWaiting.size());
        }
    }
}

void TCalcEmitter::SetOperand(TCalcStep& step, TSource& source, TOperand& operand, const TCalcValue& value) {
    source = value.Source;
    operand.Index = value.IsConstant() ? AddTo(FProgram.FConstants, value.Constant) : value.Index;
    step.IsOrdered = step.IsOrdered || value.IsKeyword() || IsInSlot(value) || Waits(value);
    if (IsInSlot(value)) {
        source = TSource::Slot;
        operand.Index = FSlotOf[value.Index];
        FReadSlots.push_back(FSlotOf[value.Index]);
    } else if (value.IsStep()) {
        std::erase(FWaiting, value.Index);
        step.Depth = std::max<std::uint8_t>(step.Depth, FProgram.FSteps[value.Index].Depth + 1);
    }
}

void TCalcEmitter::Store(std::uint32_t step) {
    if (FFreeSlots.empty()) {
        FSlotOf[step] = FProgram.FSlotCount++;
    } else {
        FSlotOf[step] = FFreeSlots.back();
        FFreeSlots.pop_back();
    }
    FProgram.FStores.push_back({step, FSlotOf[step]});
}

// Puts the values of the first waiting steps into slots, in their order. Once all have run, the slots that they read are
// free.
void TCalcEmitter::StoreWaiting(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) Store(FWaiting[i]);
    FWaiting.erase(FWaiting.begin(), FWaiting.begin() + static_cast<std::ptrdiff_t>(count));
    if (!FWaiting.empty()) return;
    FFreeSlots.insert(FFreeSlots.end(), FReadSlots.begin(), FReadSlots.end());
    FReadSlots.clear();
}

// Replaces the index of an operand by its address.
void TCalcEmitter::Resolve(TSource source, TOperand& operand) const {
    switch (source) {
        case TSource::Step:
            operand.Step = &FProgram.FSteps[operand.Index];
            break;
        case TSource::Constant:
            operand.Constant = &FProgram.FConstants[operand.Index];
            break;
        case TSource::Keyword:
            operand.Keyword = &FProgram.FKeywords[operand.Index];
            break;
        case TSource::Variable:
            operand.Variable = FProgram.FVariables[operand.Index];
            break;
        case TSource::Slot:
            break;
    }
}

}  // namespace Varnholt
