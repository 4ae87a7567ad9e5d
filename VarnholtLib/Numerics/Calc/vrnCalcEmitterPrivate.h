#pragma once

#include <limits>
#include <vector>

#include "VarnholtLib/Numerics/Calc/vrnCalcProgramPrivate.h"

namespace Varnholt {

/// A value that a step of a program can take: what another step gives, a constant, or a keyword that the step calls.
struct TCalcValue {
    TSource Source = TSource::Constant;
    std::uint32_t Index = 0;  // of the step, keyword or variable
    Extended Constant = 0;

    [[nodiscard]] bool IsStep() const { return Source == TSource::Step; }
    [[nodiscard]] bool IsKeyword() const { return Source == TSource::Keyword; }
    [[nodiscard]] bool IsConstant() const { return Source == TSource::Constant; }
};

/// Makes the steps of a program, in the order in which they are to run. Each operation consumes its values. Operations on
/// constants only are done at once, except a division by zero.
///
/// A step becomes an operand of the step that takes its value if no other step runs between the two, or if its order does
/// not count; else its value is put into a slot. Ordered steps that are not yet an operand or put into a slot wait.
class TCalcEmitter {
public:
    explicit TCalcEmitter(TCalcProgram& program) : FProgram(program) {}

    /// The keyword that an item names, or none if there is no such keyword: then the step raises ceKeyword.
    [[nodiscard]] TCalcValue Keyword(const TKeywordNum& item, const TKeyword* keyword);
    [[nodiscard]] TCalcValue Combine(TCalcOp op, const TCalcValue& left, const TCalcValue& right);
    [[nodiscard]] TCalcValue Sqrt(const TCalcValue& value);
    /// Calls a keyword now instead of later; other values stay as they are.
    [[nodiscard]] TCalcValue Fetched(const TCalcValue& value);
    [[nodiscard]] TCalcValue Call(const TFunctionNum& function);
    /// Steps that raise when the calculation reaches them.
    [[nodiscard]] TCalcValue MissingOperand(std::size_t index);
    [[nodiscard]] TCalcValue NoItems();

    /// A median gathers its values in neighbouring slots: reserved together, filled one by one, then taken at
    /// once.
    [[nodiscard]] std::uint32_t ReserveSlots(std::size_t count);
    void Gather(const TCalcValue& value, std::uint32_t slot);
    [[nodiscard]] TCalcValue Median(std::uint32_t firstSlot, std::size_t count);

    /// Makes it the value of the program. Nothing may be added afterwards.
    void Finish(const TCalcValue& result);

private:
    /// Steps nest no deeper, so that a calculation takes little stack.
    static constexpr std::uint8_t kMaxDepth = 48;
    static constexpr std::uint32_t kNoSlot = std::numeric_limits<std::uint32_t>::max();

    TCalcValue Emit(TCalcStep step);
    TCalcValue EmitUnary(TStepKind kind, const TCalcValue& value);
    TCalcValue EmitOrdered(TStepKind kind, TOperand left, TOperand right = {});
    [[nodiscard]] bool IsInSlot(const TCalcValue& value) const;
    [[nodiscard]] bool Waits(const TCalcValue& value) const;
    void ArrangeOperands(const TCalcValue& left, const TCalcValue& right);
    void SetOperand(TCalcStep& step, TSource& source, TOperand& operand, const TCalcValue& value);
    void Store(std::uint32_t step);
    void StoreWaiting(std::size_t count);
    void Resolve(TSource source, TOperand& operand) const;

    TCalcProgram& FProgram;
    std::vector<std::uint32_t> FWaiting;  // steps, in their order
    std::vector<std::uint32_t> FSlotOf;   // of each step; kNoSlot if its value is in none
    std::vector<std::uint32_t> FFreeSlots;
    std::vector<std::uint32_t> FReadSlots;  // free once the steps that wait have run
};

}  // namespace Varnholt
