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
    FProgram.FKeywords.push_back(keyword != nullptr ? keyword : FProgram.AddUnknown(item));
    return {TSource::Keyword, AddTo(FProgram.FKeywordItems, &item), 0};
}

TCalcValue TCalcEmitter::Combine(TCalcOp op, const TCalcValue& left, const TCalcValue& right) {
    if (left.IsConstant() && right.IsConstant()) {
        const bool raises = op == TCalcOp::Divide && right.Constant == 0;
        if (!raises) return ConstantValue(Operate(op, left.Constant, right.Constant));
    }
    if (right.IsConstant() && op == TCalcOp::Power && right.Constant == 2) {
        Release(left);  // Power multiplies for small whole exponents: its square is this very product
        return Emit(SquareStep(left.Source), left.Index);
    }
    if (right.IsConstant() && op == TCalcOp::Divide && HasExactReciprocal(right.Constant)) {
        return Combine(TCalcOp::Multiply, left, ConstantValue(1 / right.Constant));
    }
    if (IsLast(left) && !right.IsKeyword()) return EmitOnLast(op, left, right, false);
    if (IsLast(right) && !left.IsKeyword()) return EmitOnLast(op, right, left, true);
    const std::uint32_t leftIndex = IndexOf(left);
    const std::uint32_t rightIndex = IndexOf(right);
    Release(right);
    Release(left);
    return Emit(BinaryStep(op, left.Source, right.Source), leftIndex, rightIndex);
}

TCalcValue TCalcEmitter::Sqrt(const TCalcValue& value) {
    if (value.IsConstant()) return ConstantValue(std::sqrt(value.Constant));
    Release(value);
    return Emit(SqrtStep(value.Source), value.Index);
}

TCalcValue TCalcEmitter::Fetched(const TCalcValue& value) {
    return value.IsKeyword() ? Emit(LoadStep(value.Source), value.Index) : value;
}

TCalcValue TCalcEmitter::Call(const TFunctionNum& function) {
    return Emit(CallStep, AddTo(FProgram.FCalls, &function));
}

TCalcValue TCalcEmitter::MissingOperand(std::size_t index) {
    return Emit(MissingOperandStep, static_cast<std::uint32_t>(index));
}

TCalcValue TCalcEmitter::NoItems() {
    return Emit(NoItemsStep, 0);
}

std::uint32_t TCalcEmitter::ReserveSlots(std::size_t count) {
    const auto first = static_cast<std::uint32_t>(FProgram.FSlotCount);
    FProgram.FSlotCount += count;
    FProgram.FSingleCount = std::max(FProgram.FSingleCount, count);
    return first;
}

void TCalcEmitter::Gather(const TCalcValue& value, std::uint32_t slot) {
    const std::uint32_t index = IndexOf(value);
    Release(value);
    Append({LoadStep(value.Source), index, 0, slot});
}

TCalcValue TCalcEmitter::Median(std::uint32_t firstSlot, std::size_t count) {
    const TCalcValue median = Emit(MedianStep, firstSlot, static_cast<std::uint32_t>(count));
    for (std::size_t i = count; i > 0; --i)
        FFreeSlots.push_back(static_cast<std::uint32_t>(firstSlot + i - 1));
    return median;
}

void TCalcEmitter::Finish(const TCalcValue& result) {
    if (!IsLast(result)) Append({LoadStep(result.Source), IndexOf(result)});
}

TCalcValue TCalcEmitter::Emit(TCalcStep::TRun run, std::uint32_t left, std::uint32_t right) {
    const std::uint32_t slot = NewSlot();
    Append({run, left, right, slot});
    return {TSource::Slot, slot, 0};
}

TCalcValue TCalcEmitter::EmitOnLast(TCalcOp op, const TCalcValue& last, const TCalcValue& other,
                                    bool isReversed) {
    const std::uint32_t index = IndexOf(other);
    Release(other);
    Release(last);
    const std::uint32_t slot = NewSlot();
    FProgram.FSteps.push_back({nullptr, 0, index, slot, op, isReversed, other.IsConstant()});
    return {TSource::Slot, slot, 0};
}

// A step that does not work on the value before it leaves that value to later ones.
void TCalcEmitter::Append(const TCalcStep& step) {
    if (!FProgram.FSteps.empty()) FProgram.FSteps.back().IsStored = true;
    FProgram.FSteps.push_back(step);
}

// The slot that was freed last, often that of an operand: a step reads before its value is stored.
std::uint32_t TCalcEmitter::NewSlot() {
    if (FFreeSlots.empty()) return static_cast<std::uint32_t>(FProgram.FSlotCount++);
    const std::uint32_t slot = FFreeSlots.back();
    FFreeSlots.pop_back();
    return slot;
}

bool TCalcEmitter::IsLast(const TCalcValue& value) const {
    return value.Source == TSource::Slot && value.Index == FProgram.FSteps.back().Target;
}

std::uint32_t TCalcEmitter::IndexOf(const TCalcValue& value) {
    return value.IsConstant() ? AddTo(FProgram.FConstants, value.Constant) : value.Index;
}

void TCalcEmitter::Release(const TCalcValue& value) {
    if (value.Source == TSource::Slot) FFreeSlots.push_back(value.Index);
}

}  // namespace Varnholt
