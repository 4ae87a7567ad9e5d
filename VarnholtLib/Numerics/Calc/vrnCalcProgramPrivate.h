#pragma once

#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include "VarnholtLib/Numerics/Calc/vrnCalcArithmeticPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcTreePrivate.h"

namespace Varnholt {

/// Where a step finds an operand: another step that is run for it, a slot of the calculation, the program's constants, a
/// keyword that is called, or the address of a variable.
enum class TSource : std::uint8_t { Step, Slot, Constant, Keyword, Variable };
inline constexpr std::size_t kSourceCount = 5;

/// What a step does with its operands; the first ones are the operations of TCalcOp.
enum class TStepKind : std::uint8_t { Operation, Load, Square, Sqrt, Median, Call, MissingOperand, NoItems };

struct TCalcStep;

/// A keyword in an expression, and the item that names it.
struct TKeywordUse {
    const TKeyword* Keyword;
    const TKeywordNum* Item;
};

/// An operand by its index, until the program is finished, and then by its address; a slot by its index always.
union TOperand {
    std::uint64_t Index = 0;
    const TCalcStep* Step;
    const Extended* Constant;
    const TKeywordUse* Keyword;
    const double* Variable;
    const TFunctionNum* Call;
};

/// One step of a program: it gives the value of an operation. Its operands may be steps, so that steps form trees whose
/// values stay in registers from step to step.
struct TCalcStep {
    using TRun = Extended (*)(const TCalcProgram& program, Extended* slots, const TCalcStep& step);

    TRun Run = nullptr;
    TOperand Left{};
    TOperand Right{};
    TStepKind Kind = TStepKind::Operation;
    TCalcOp Op = TCalcOp::Add;
    TSource LeftSource = TSource::Slot;
    TSource RightSource = TSource::Slot;
    bool IsOrdered = false;  // its place among the callbacks and the failures counts
    std::uint8_t Depth = 1;  // how deep its steps nest
};

/// A step whose value is needed later than at once. It is put into a slot.
struct TCalcStore {
    std::uint32_t Step;
    std::uint32_t Slot;
};

/// An expression as steps in the order of the callbacks. Groups and the built-in functions but @StDev are part of them;
/// the other functions are called with their parameters' evaluators.
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
    /// A quick test whether the program is not stale and Execute is enough. It holds for most programs, but never for
    /// pure ones and those with many slots.
    [[nodiscard]] bool IsReady() const noexcept { return FReadyStamp == FTree.GetStamp(); }
    /// Whether it calls nothing: all its keywords are variables.
    [[nodiscard]] bool IsQuiet() const noexcept { return FIsQuiet; }
    /// The value of a program that is ready.
    [[nodiscard]] Extended Execute() const { return FEntry(*this, nullptr, *FRoot); }
    /// The value of any program.
    [[nodiscard]] Extended Run();

    /// The value of an operand.
    template <TSource Source>
    [[nodiscard]] Extended Fetch(Extended* slots, TOperand operand) const {
        if constexpr (Source == TSource::Step) return operand.Step->Run(*this, slots, *operand.Step);
        if constexpr (Source == TSource::Slot) return slots[operand.Index];
        if constexpr (Source == TSource::Constant) return *operand.Constant;
        if constexpr (Source == TSource::Variable) return Extended{*operand.Variable};
        if (!IsStale()) [[likely]]
            return operand.Keyword->Keyword->Ask();
        return operand.Keyword->Item->Ask();
    }
    /// Room for the 32-bit values of the largest median.
    [[nodiscard]] float* Singles() const noexcept { return FSingles.data(); }

private:
    friend class TCalcEmitter;

    static constexpr std::uint64_t kNever = std::numeric_limits<std::uint64_t>::max();

    /// A keyword that raises ceKeyword when it is called.
    const TKeyword* AddUnknown(const TKeywordNum& item);
    static Extended RunOnStack(const TCalcProgram& program, Extended* slots, const TCalcStep& step);
    [[nodiscard]] Extended RunWithSlots(Extended* slots) const;
    [[nodiscard]] Extended RunInOwnMemory();

    const TCalcTree& FTree;
    const std::uint64_t FStamp;
    std::uint64_t FReadyStamp;  // FStamp or kNever
    const TCalcStep* FRoot = nullptr;
    TCalcStep::TRun FEntry = nullptr;  // that of the root, or RunOnStack if there are stores
    const bool FIsPure;                // returns its first value again
    bool FIsQuiet = true;
    bool FInUse = false;  // FSlots serves a calculation under way
    std::uint32_t FSlotCount = 0;
    std::vector<TCalcStep> FSteps;
    std::vector<TCalcStore> FStores;  // run one after the other, then the root
    std::vector<Extended> FConstants;
    std::vector<TKeywordUse> FKeywords;
    std::vector<const double*> FVariables;
    std::vector<std::unique_ptr<TKeyword>> FUnknown;
    std::optional<Extended> FKnownValue;
    std::vector<Extended> FSlots;         // of a program with many
    mutable std::vector<float> FSingles;  // serves one step at a time, which calls nothing back
};

/// The function of a step whose kind, operation and sources are set.
[[nodiscard]] TCalcStep::TRun FunctionOf(const TCalcStep& step);

}  // namespace Varnholt
