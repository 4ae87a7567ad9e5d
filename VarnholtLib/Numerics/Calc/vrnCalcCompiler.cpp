#include "VarnholtLib/Numerics/Calc/vrnCalcCompilerPrivate.h"

namespace Varnholt {
namespace {

// Operators of the first level are reduced first.
constexpr int kLevelCount = 3;

int LevelOf(TCalcOp op) {
    switch (op) {
        case TCalcOp::Power:
            return 0;
        case TCalcOp::Multiply:
        case TCalcOp::Divide:
            return 1;
        default:
            return 2;
    }
}

// Whether a value is fetched without a step of its own.
bool IsSimple(const TCalcObj& item) {
    return item.GetKind() == TCalcKind::Num || item.GetKind() == TCalcKind::KeywordNum;
}

bool IsSimple(const TCalc& calc) {
    return calc.Get_Count() == 1 && IsSimple(calc.GetItems(0));
}

// @StDev calculates its parameters twice and is therefore called like an application's function.
bool IsInlined(TBuiltIn function) {
    return function != fuNone && function != fuStDev;
}

}  // namespace

void TCalcCompiler::Run() {
    OpenExpression(FCalc);
    while (!FFrames.empty()) {
        if (FFrames.back().Function != nullptr) {
            ContinueFunction();
        } else {
            ContinueExpression();
        }
    }
}

void TCalcCompiler::OpenExpression(const TCalc& calc) {
    FFrames.push_back(
        {nullptr, FScopes.Enter(calc), FOperands.size(), FReductions.size(), FReductions.size()});
    PlanReductions(calc);
}

void TCalcCompiler::OpenFunction(const TFunctionNum& function) {
    TFrame frame{&function, FScopes.GetDepth(), FOperands.size(), FReductions.size(), 0};
    if (function.GetFunction().GetBuiltIn() == fuMedian) {
        frame.FirstSlot = FEmitter.ReserveSlots(function.GetParams().size());
    }
    FFrames.push_back(frame);
}

// Lists the reductions of an expression in their order.
void TCalcCompiler::PlanReductions(const TCalc& calc) {
    FOrder.clear();
    for (int i = 0; i < calc.Get_Count(); ++i) {
        const TCalcObj& item = calc.GetItems(i);
        if (i % 2 == 1) {
            FOrder.push_back(static_cast<const TOperator&>(item).GetChar());
        } else {
            FOrder.push_back(FOperands.size());
            FOperands.push_back({&item, {}});
        }
    }
    for (int level = 0; level < kLevelCount; ++level) {
        if (!PlanLevel(level)) return;
    }
}

// One scan from left to right. Returns false at an operator without a right operand: there the calculation
// raises.
bool TCalcCompiler::PlanLevel(int level) {
    std::size_t kept = 1;
    for (std::size_t i = 1; i < FOrder.size(); i += 2) {
        const TCalcOp op = OperationOf(static_cast<Char>(FOrder[i]));
        const bool hasRight = i + 1 < FOrder.size();
        if (LevelOf(op) == level) {
            FReductions.push_back({op, hasRight, FOrder[kept - 1], hasRight ? FOrder[i + 1] : kept + 1});
            if (!hasRight) return false;
            continue;
        }
        FOrder[kept++] = FOrder[i];
        if (hasRight) FOrder[kept++] = FOrder[i + 1];
    }
    if (!FOrder.empty()) FOrder.resize(kept);
    return true;
}

// Emits reductions until an operand needs steps of its own.
void TCalcCompiler::ContinueExpression() {
    TFrame& frame = FFrames.back();
    if (frame.FirstOperand == FOperands.size()) return Close(FEmitter.NoItems());
    for (; frame.Next < FReductions.size(); ++frame.Next) {
        const TReduction reduction = FReductions[frame.Next];
        if (!Fetch(reduction.Left)) return;
        TCalcValue& left = FOperands[reduction.Left].Value;
        if (!reduction.HasRight) {
            static_cast<void>(FEmitter.Fetched(left));
            return Close(FEmitter.MissingOperand(reduction.Right));
        }
        const TOperand& right = FOperands[reduction.Right];
        if (right.Item != nullptr && !IsSimple(*right.Item)) left = FEmitter.Fetched(left);
        if (!Fetch(reduction.Right)) return;
        left = FEmitter.Combine(reduction.Op, left, FOperands[reduction.Right].Value);
    }
    if (Fetch(frame.FirstOperand)) Close(FOperands[frame.FirstOperand].Value);
}

// Makes a value of an operand. Returns false if a frame was opened for it: then the value follows when that
// frame closes.
bool TCalcCompiler::Fetch(std::size_t position) {
    TOperand& operand = FOperands[position];
    if (operand.Item == nullptr) return true;
    const TCalcObj& item = *operand.Item;
    operand.Item = nullptr;
    FFrames.back().Awaited = position;
    switch (item.GetKind()) {
        case TCalcKind::Num:
            operand.Value = {TSource::Constant, 0, static_cast<const TNum&>(item).Get_Number()};
            return true;
        case TCalcKind::KeywordNum:
            operand.Value = Keyword(static_cast<const TKeywordNum&>(item));
            return true;
        case TCalcKind::Brackets:
            OpenExpression(static_cast<const TBrackets&>(item).GetNewCalc());
            return false;
        default:
            break;
    }
    const auto& call = static_cast<const TFunctionNum&>(item);
    if (IsInlined(call.GetFunction().GetBuiltIn())) {
        OpenFunction(call);
        return false;
    }
    FCallees.insert(FCallees.end(), call.GetParams().begin(), call.GetParams().end());
    operand.Value = FEmitter.Call(call);
    return true;
}

TCalcValue TCalcCompiler::Keyword(const TKeywordNum& item) {
    return FEmitter.Keyword(item, FScopes.FindKeyword(item.GetKeyword()));
}

// Opens the next parameter, or ends the function.
void TCalcCompiler::ContinueFunction() {
    TFrame& frame = FFrames.back();
    const TCalcList& params = frame.Function->GetParams();
    if (frame.Next < params.size()) {
        const TCalc& param = *params[frame.Next];
        if (!IsSimple(param)) frame.Value = FEmitter.Fetched(frame.Value);
        return OpenExpression(param);
    }
    const auto count = static_cast<Extended>(params.size());
    switch (frame.Function->GetFunction().GetBuiltIn()) {
        case fuAvg:
            return Close(FEmitter.Combine(TCalcOp::Divide, frame.Value, {TSource::Constant, 0, count}));
        case fuMedian:
            return Close(FEmitter.Median(frame.FirstSlot, params.size()));
        default:
            return Close(frame.Value);
    }
}

void TCalcCompiler::ReceiveParam(TFrame& frame, const TCalcValue& value) {
    const std::size_t index = frame.Next++;
    switch (frame.Function->GetFunction().GetBuiltIn()) {
        case fuMin:
            frame.Value = index == 0 ? value : FEmitter.Combine(TCalcOp::Min, frame.Value, value);
            break;
        case fuMax:
            frame.Value = index == 0 ? value : FEmitter.Combine(TCalcOp::Max, frame.Value, value);
            break;
        case fuMedian:
            FEmitter.Gather(value, frame.FirstSlot + static_cast<std::uint32_t>(index));
            break;
        case fuSqrt:
            frame.Value = FEmitter.Sqrt(value);
            break;
        default:
            frame.Value = FEmitter.Combine(TCalcOp::Add, frame.Value, value);
            break;  // sum and avg start at 0
    }
}

void TCalcCompiler::Close(const TCalcValue& value) {
    const TCalcValue closed = value;  // the argument may be part of a list that shrinks
    FScopes.Leave(FFrames.back().Entered);
    FOperands.resize(FFrames.back().FirstOperand);
    FReductions.resize(FFrames.back().FirstReduction);
    FFrames.pop_back();
    if (FFrames.empty()) return FEmitter.Finish(closed);
    TFrame& waiting = FFrames.back();
    if (waiting.Function != nullptr) {
        ReceiveParam(waiting, closed);
    } else {
        FOperands[waiting.Awaited].Value = closed;
    }
}

}  // namespace Varnholt
