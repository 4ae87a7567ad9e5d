#pragma once

#include <vector>

#include "VarnholtLib/Numerics/Calc/vrnCalcEmitterPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcRegistrationsPrivate.h"

namespace Varnholt {

/// Turns the items of an evaluator into the steps of its program, in time that grows with their number.
///
/// The steps have the order in which the items would be reduced one after the other: every "^" from left
/// to right, then every "*" and "/", then every "+" and "-", each operand fetched at its reduction. A
/// keyword is fetched by the very step that takes it, unless something else is fetched in between.
/// Expressions under way are kept on a list, so the depth of nesting is limited by memory only.
class TCalcCompiler {
public:
    /// Functions that calculate their parameters through callbacks have them added to `callees`.
    TCalcCompiler(const TCalc& calc, TCalcProgram& program, TCalcList& callees)
        : FCalc(calc), FEmitter(program), FCallees(callees), FScopes(calc) {}

    void Run();

private:
    /// An operand: an item until it is fetched, then a value; the value of a reduction replaces its left
    /// operand.
    struct TOperand {
        const TCalcObj* Item;
        TCalcValue Value;
    };
    struct TReduction {
        TCalcOp Op;
        bool HasRight;
        std::size_t Left;   // positions in FOperands
        std::size_t Right;  // without a right operand: the index of the item that is missing
    };
    /// An expression or a built-in function under way. An expression's operands and reductions are the last
    /// ones.
    struct TFrame {
        const TFunctionNum* Function;  // none for an expression
        std::size_t Entered;           // what FScopes needs to leave it
        std::size_t FirstOperand;
        std::size_t FirstReduction;
        std::size_t Next;             // reduction or parameter
        std::size_t Awaited = 0;      // the operand whose value is next
        TCalcValue Value{};           // of a function so far
        std::uint32_t FirstSlot = 0;  // where a median gathers its values
    };

    void OpenExpression(const TCalc& calc);
    void OpenFunction(const TFunctionNum& function);
    void PlanReductions(const TCalc& calc);
    bool PlanLevel(int level);
    void ContinueExpression();
    void ContinueFunction();
    bool Fetch(std::size_t position);
    [[nodiscard]] TCalcValue Keyword(const TKeywordNum& item);
    void ReceiveParam(TFrame& frame, const TCalcValue& value);
    void Close(const TCalcValue& value);

    const TCalc& FCalc;
    TCalcEmitter FEmitter;
    TCalcList& FCallees;
    TCalcScopes FScopes;
    std::vector<TFrame> FFrames;
    std::vector<TOperand> FOperands;
    std::vector<TReduction> FReductions;
    std::vector<std::size_t>
        FOrder;  // of one expression: operands at even places, operators' characters between them
};

}  // namespace Varnholt
