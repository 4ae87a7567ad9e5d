#pragma once

#include "Platform/Runtime/FloatMath.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcError.h"

namespace Varnholt {

/// What a calculation does with two values: the five operators, and the two choices of @min and @max.
enum class TCalcOp : std::uint8_t { Add, Subtract, Multiply, Divide, Power, Min, Max };

[[noreturn]] inline void RaiseDivideByZero() {
    throw ECalcException(ceDivideByZero);
}

/// The arithmetic of all calculations. Min and Max keep the left value unless the right one is smaller or larger,
/// so a NaN on the right is ignored. Raises ceDivideByZero.
inline Extended Operate(TCalcOp op, Extended left, Extended right) {
    switch (op) {
        case TCalcOp::Add:
            return left + right;
        case TCalcOp::Subtract:
            return left - right;
        case TCalcOp::Multiply:
            return left * right;
        case TCalcOp::Power:
            return Power(left, right);
        case TCalcOp::Min:
            return right < left ? right : left;
        case TCalcOp::Max:
            return right > left ? right : left;
        case TCalcOp::Divide:
            break;
    }
    if (right == 0) [[unlikely]]
        RaiseDivideByZero();
    return left / right;
}

/// The operation of an operator's character.
inline TCalcOp OperationOf(Char op) {
    switch (op) {
        case u'+':
            return TCalcOp::Add;
        case u'-':
            return TCalcOp::Subtract;
        case u'*':
            return TCalcOp::Multiply;
        case u'^':
            return TCalcOp::Power;
        default:
            return TCalcOp::Divide;
    }
}

}  // namespace Varnholt
