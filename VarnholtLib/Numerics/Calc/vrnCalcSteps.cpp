#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "VarnholtLib/Numerics/Calc/vrnCalcBuiltInsPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcProgramPrivate.h"

// The functions that run the steps of a program.
namespace Varnholt {
namespace {

// Whether the right operand comes first. A step on the right has its place before a keyword on the left, which is called
// when the operation is reached; of two steps one may run at any time; and what calls nothing need not be kept over a call.
constexpr bool IsRightFirst(TSource left, TSource right) {
    return right == TSource::Step || (left != TSource::Step && left != TSource::Keyword);
}

template <TCalcOp Op, TSource Left, TSource Right>
Extended RunBinary(const TCalcProgram& program, Extended* slots, const TCalcStep& step) {
    if constexpr (IsRightFirst(Left, Right)) {
        const Extended right = program.Fetch<Right>(slots, step.Right);
        return Operate(Op, program.Fetch<Left>(slots, step.Left), right);
    } else {
        const Extended left = program.Fetch<Left>(slots, step.Left);
        return Operate(Op, left, program.Fetch<Right>(slots, step.Right));
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

// The median of the slots from Left on, as many as Right says.
Extended RunMedian(const TCalcProgram& program, Extended* slots, const TCalcStep& step) {
    const std::span<const Extended> values(slots + step.Left.Index, step.Right.Index);
    float* const singles = program.Singles();
    std::ranges::transform(values, singles, [](Extended value) { return static_cast<float>(value); });
    return MedianOf({singles, values.size()});
}

Extended RunCall(const TCalcProgram&, Extended*, const TCalcStep& step) {
    return step.Left.Call->GetFunction().Execute(step.Left.Call->GetParams());
}

Extended RaiseMissingOperand(const TCalcProgram&, Extended*, const TCalcStep& step) {
    throw EListError::IndexOutOfBounds(static_cast<std::int64_t>(step.Left.Index));
}

Extended RaiseNoItems(const TCalcProgram&, Extended*, const TCalcStep&) {
    throw ECalcException(ceSyntax);
}

// --- The function of a step ---

constexpr std::size_t kOpCount = 7;
constexpr std::size_t kBinaryCount = kOpCount * kSourceCount * kSourceCount;
using TSourceTable = std::array<TCalcStep::TRun, kSourceCount>;
using TBinaryTable = std::array<TCalcStep::TRun, kBinaryCount>;

template <std::size_t... Index>
constexpr TBinaryTable MakeBinaryTable(std::index_sequence<Index...>) {
    return {&RunBinary<static_cast<TCalcOp>(Index / (kSourceCount * kSourceCount)),
                       static_cast<TSource>(Index / kSourceCount % kSourceCount),
                       static_cast<TSource>(Index % kSourceCount)>...};
}

constexpr TBinaryTable kOperations = MakeBinaryTable(std::make_index_sequence<kBinaryCount>());
constexpr TSourceTable kLoads{&RunLoad<TSource::Step>, &RunLoad<TSource::Slot>, &RunLoad<TSource::Constant>,
                              &RunLoad<TSource::Keyword>, &RunLoad<TSource::Variable>};
constexpr TSourceTable kSquares{&RunSquare<TSource::Step>, &RunSquare<TSource::Slot>,
                                &RunSquare<TSource::Constant>, &RunSquare<TSource::Keyword>,
                                &RunSquare<TSource::Variable>};
constexpr TSourceTable kSqrts{&RunSqrt<TSource::Step>, &RunSqrt<TSource::Slot>, &RunSqrt<TSource::Constant>,
                              &RunSqrt<TSource::Keyword>, &RunSqrt<TSource::Variable>};

}  // namespace

TCalcStep::TRun FunctionOf(const TCalcStep& step) {
    const auto left = static_cast<std::size_t>(step.LeftSource);
    const auto right = static_cast<std::size_t>(step.RightSource);
    switch (step.Kind) {
        case TStepKind::Operation:
            return kOperations[(static_cast<std::size_t>(step.Op) * kSourceCount + left) * kSourceCount +
                               right];
        case TStepKind::Load:
            return kLoads[left];
        case TStepKind::Square:
            return kSquares[left];
        case TStepKind::Sqrt:
            return kSqrts[left];
        case TStepKind::Median:
            return RunMedian;
        case TStepKind::Call:
            return RunCall;
        case TStepKind::MissingOperand:
            return RaiseMissingOperand;
        case TStepKind::NoItems:
            break;
    }
    return RaiseNoItems;
}

}  // namespace Varnholt
