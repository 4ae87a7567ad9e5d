#include <algorithm>
#include <cmath>

#include "VarnholtLib/Numerics/vrnCalcEmitterPrivate.h"

namespace Varnholt {
namespace {

TCalcValue ConstantValue(Extended value) {
    return {TSource::Constant, 0, value};
}

template <typename T>
std::uint32_t Append(std::vector<T>& list, T item) {
    list.push_back(std::move(item));
    return static_cast<std::uint32_t>(list.size() - 1);
}

}  // namespace

TCalcValue TCalcEmitter::Keyword(const TKeywordNum& item) {
    return {TSource::Keyword, Append(FProgram.FBindings, {&item, nullptr}), 0};
}

TCalcValue TCalcEmitter::Combine(TCalcOp op, const TCalcValue& left, const TCalcValue& right) {
    if (left.IsConstant() && right.IsConstant()) {
        const bool raises = op == TCalcOp::Divide && right.Constant == 0;
        if (!raises) return ConstantValue(Operate(op, left.Constant, right.Constant));
    }
    const std::uint32_t leftIndex = IndexOf(left);
    const std::uint32_t rightIndex = IndexOf(right);
    Release(left);
    Release(right);
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
    return Emit(CallStep, Append(FProgram.FCalls, &function));
}

TCalcValue TCalcEmitter::MissingOperand(std::size_t index) {
    return Emit(MissingOperandStep, static_cast<std::uint32_t>(index));
}

TCalcValue TCalcEmitter::NoItems() {
    return Emit(NoItemsStep, 0);
}

std::uint32_t TCalcEmitter::ReserveSingles(std::size_t count) {
    const auto first = static_cast<std::uint32_t>(FSinglesInUse);
    FSinglesInUse += count;
    FProgram.FSingleCount = std::max(FProgram.FSingleCount, FSinglesInUse);
    return first;
}

void TCalcEmitter::Narrow(const TCalcValue& value, std::uint32_t single) {
    const std::uint32_t index = IndexOf(value);
    Release(value);
    FProgram.FSteps.push_back({NarrowStep(value.Source), index, 0, single});
}

TCalcValue TCalcEmitter::Median(std::uint32_t firstSingle, std::size_t count) {
    FSinglesInUse -= count;
    return Emit(MedianStep, firstSingle, static_cast<std::uint32_t>(count));
}

void TCalcEmitter::Finish(const TCalcValue& result) {
    FProgram.FResult = IndexOf(result);
    FProgram.FResultSource = result.Source;
}

// The result takes the slot that was freed last, often that of an operand: a step reads before it writes.
TCalcValue TCalcEmitter::Emit(TCalcStep::TRun run, std::uint32_t left, std::uint32_t right) {
    if (FFreeSlots.empty()) FFreeSlots.push_back(static_cast<std::uint32_t>(FProgram.FSlotCount++));
    const std::uint32_t slot = FFreeSlots.back();
    FFreeSlots.pop_back();
    FProgram.FSteps.push_back({run, left, right, slot});
    return {TSource::Slot, slot, 0};
}

std::uint32_t TCalcEmitter::IndexOf(const TCalcValue& value) {
    return value.IsConstant() ? Append(FProgram.FConstants, value.Constant) : value.Index;
}

void TCalcEmitter::Release(const TCalcValue& value) {
    if (value.Source == TSource::Slot) FFreeSlots.push_back(value.Index);
}

}  // namespace Varnholt
