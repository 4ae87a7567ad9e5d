#pragma once

#include <vector>

#include "VarnholtLib/Numerics/Calc/vrnCalcProgramPrivate.h"

namespace Varnholt {

/// A value that a step of a program can take: a slot, a constant, or a keyword that the step calls.
struct TCalcValue {
    TSource Source = TSource::Constant;
    std::uint32_t Index = 0;  // of the slot or keyword
    Extended Constant = 0;

    [[nodiscard]] bool IsKeyword() const { return Source == TSource::Keyword; }
    [[nodiscard]] bool IsConstant() const { return Source == TSource::Constant; }
};

/// Appends steps to a program and manages its slots. Each operation consumes its values: their slots are free
/// again afterwards. Operations on constants only are done at once, except a division by zero.
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
    TCalcValue Emit(TCalcStep::TRun run, std::uint32_t left, std::uint32_t right = 0);
    TCalcValue EmitOnLast(TCalcOp op, const TCalcValue& last, const TCalcValue& other, bool isReversed);
    void Append(const TCalcStep& step);
    std::uint32_t NewSlot();
    [[nodiscard]] bool IsLast(const TCalcValue& value) const;
    std::uint32_t IndexOf(const TCalcValue& value);
    void Release(const TCalcValue& value);

    TCalcProgram& FProgram;
    std::vector<std::uint32_t> FFreeSlots;
};

}  // namespace Varnholt
