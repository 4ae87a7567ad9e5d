#pragma once

#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include "VarnholtLib/Numerics/Calc/vrnCalcArithmeticPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcTreePrivate.h"

namespace Varnholt {

/// Where a step finds a value: in a slot of the calculation, among the program's constants, or by calling a
/// keyword.
enum class TSource : std::uint8_t { Slot, Constant, Keyword };
inline constexpr std::size_t kSourceCount = 3;

/// One step of a program; it gives a value. A step with a function takes its operands by the indices Left and
/// Right. A step without one does Op with the value of the step before it and an operand that is no keyword,
/// whose index is Right; IsReversed puts that operand on the left.
struct TCalcStep {
    using TRun = Extended (*)(const TCalcProgram& program, Extended* slots, const TCalcStep& step);

    TRun Run;
    std::uint32_t Left = 0;
    std::uint32_t Right = 0;
    std::uint32_t Target = 0;  // the slot of the value
    TCalcOp Op = TCalcOp::Add;
    bool IsReversed = false;
    bool IsConstant = false;  // the operand Right, of a step without a function
    bool IsStored = false;    // the value is put into its slot, for a step after the next one
};

/// An expression as a flat list of steps in the order of the callbacks. Groups and the built-in functions but
/// @StDev are part of the list; the other functions are called with their parameters' evaluators.
///
/// It refers to the items of the evaluator that it was made from, and must not outlive them.
class TCalcProgram {
public:
    /// Programs with no more slots work on the stack.
    static constexpr std::size_t kStackSlots = 32;

    /// Adds the parameters' evaluators of the functions that it calls to `callees`. `isPure` means that no
    /// calculation calls the application.
    TCalcProgram(const TCalc& calc, bool isPure, TCalcList& callees);

    /// Whether something was parsed or registered since the program was made. A calculation under way continues
    /// with a stale program and looks its keywords up anew.
    [[nodiscard]] bool IsStale() const noexcept { return FStamp != FTree.GetStamp(); }
    /// A quick test whether the program is not stale and Execute is enough. It holds for most programs; it never
    /// holds for pure and for large ones, nor in a tree with a parent, whose registrations count too.
    [[nodiscard]] bool IsReady() const noexcept { return FReadyChanges == FTree.GetChanges(); }
    /// The value of a program that is ready. `slots` has room for kStackSlots values.
    [[nodiscard]] Extended Execute(Extended* slots) const;
    /// The value of any program.
    [[nodiscard]] Extended Run(Extended* slots);

    /// The value that a step takes.
    template <TSource Source>
    [[nodiscard]] Extended Fetch(const Extended* slots, std::uint32_t index) const {
        if constexpr (Source == TSource::Slot) return slots[index];
        if constexpr (Source == TSource::Constant) return FConstants[index];
        if (IsReady()) [[likely]]
            return FKeywords[index]->Ask();
        return CallKeyword(index);
    }
    [[nodiscard]] Extended CallFunction(std::uint32_t index) const {
        return FCalls[index]->GetFunction().Execute(FCalls[index]->GetParams());
    }
    /// Room for the 32-bit values of the largest median.
    [[nodiscard]] float* Singles() const noexcept { return FSingles.data(); }

private:
    friend class TCalcEmitter;

    static constexpr std::uint64_t kNever = std::numeric_limits<std::uint64_t>::max();

    /// A keyword that raises ceKeyword when it is called.
    const TKeyword* AddUnknown(const TKeywordNum& item);
    [[nodiscard]] Extended CallKeyword(std::uint32_t index) const;
    [[nodiscard]] Extended RunInOwnMemory();

    const TCalcTree& FTree;
    const std::uint64_t FStamp;
    std::uint64_t FReadyChanges;  // the changes of the tree when the program was made, or kNever
    std::vector<TCalcStep> FSteps;
    std::vector<Extended> FConstants;
    std::vector<const TKeyword*> FKeywords;
    std::vector<const TKeywordNum*> FKeywordItems;  // the items that name them
    std::vector<const TFunctionNum*> FCalls;
    std::vector<std::unique_ptr<TKeyword>> FUnknown;
    std::size_t FSlotCount = 0;
    std::size_t FSingleCount = 0;

    // Pure programs return their first value again; large programs work in memory of their own.
    const bool FIsPure;
    bool FInUse = false;  // FSlots serves a calculation under way
    std::optional<Extended> FKnownValue;
    std::vector<Extended> FSlots;
    mutable std::vector<float> FSingles;  // serves one step at a time, which calls nothing back
};

// The value is passed from step to step in a register; the functions of steps return it there.
inline Extended TCalcProgram::Execute(Extended* slots) const {
    Extended value = 0;
    for (const TCalcStep& step : FSteps) {
        if (step.Run != nullptr) {
            value = step.Run(*this, slots, step);
        } else {
            const Extended other = (step.IsConstant ? FConstants.data() : slots)[step.Right];
            value = step.IsReversed ? Operate(step.Op, other, value) : Operate(step.Op, value, other);
        }
        if (step.IsStored) slots[step.Target] = value;
    }
    return value;
}

/// The kinds of step with a function. Left is the operand, the right one of two is Right.
[[nodiscard]] TCalcStep::TRun BinaryStep(TCalcOp op, TSource left, TSource right);
[[nodiscard]] TCalcStep::TRun LoadStep(TSource source);
[[nodiscard]] TCalcStep::TRun SquareStep(TSource source);
[[nodiscard]] TCalcStep::TRun SqrtStep(TSource source);
/// The median of Right slots from Left on.
Extended MedianStep(const TCalcProgram& program, Extended* slots, const TCalcStep& step);
/// Calls the function Left.
Extended CallStep(const TCalcProgram& program, Extended* slots, const TCalcStep& step);
/// Raises EListError for the item Left.
Extended MissingOperandStep(const TCalcProgram& program, Extended* slots, const TCalcStep& step);
/// Raises ceSyntax.
Extended NoItemsStep(const TCalcProgram& program, Extended* slots, const TCalcStep& step);

}  // namespace Varnholt
