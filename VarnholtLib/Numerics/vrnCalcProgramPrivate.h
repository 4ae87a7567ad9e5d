#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "VarnholtLib/Numerics/vrnCalc.h"
#include "VarnholtLib/Numerics/vrnCalcArithmeticPrivate.h"

namespace Varnholt {

class TCalcRun;

/// Where a step finds a value: in a slot of the calculation, among the program's constants, or by calling a keyword.
enum class TSource : std::uint8_t { Slot, Constant, Keyword };
inline constexpr std::size_t kSourceCount = 3;

/// One step of a program. Left and Right are indices by the step's kind; the result goes to the slot Target.
struct TCalcStep {
    using TRun = void (*)(TCalcRun& run, const TCalcStep& step);

    TRun Run;
    std::uint32_t Left = 0;
    std::uint32_t Right = 0;
    std::uint32_t Target = 0;
};

/// An expression as a flat list of steps in the order of the callbacks. Groups and the built-in functions but
/// @StDev are part of the list; the other functions are called with their parameters' evaluators.
///
/// It refers to the items of the evaluator that it was made from, and lives no longer than they do.
class TCalcProgram {
public:
    /// Adds the parameters' evaluators of the functions that it calls to `callees`.
    TCalcProgram(const TCalc& calc, std::vector<TCalc*>& callees);

    [[nodiscard]] Extended Run();

    /// Binds the keywords to the registrations of the moment, which the stamp stands for.
    void BindKeywords(std::uint64_t stamp);
    [[nodiscard]] std::uint64_t GetRegistrationStamp() const noexcept { return FRegistrationStamp; }
    /// The parse of the tree that the program was made after.
    [[nodiscard]] std::uint64_t GetParseStamp() const noexcept { return FParseStamp; }

private:
    friend class TCalcEmitter;
    friend class TCalcRun;

    [[nodiscard]] bool FitsOnStack() const;
    void ReserveMemory();

    struct TBinding {
        const TKeywordNum* Item;
        const TKeyword* Keyword;  // none while no such keyword is registered
    };

    const TCalc& FCalc;
    std::vector<TCalcStep> FSteps;
    std::vector<Extended> FConstants;
    std::vector<TBinding> FBindings;
    std::vector<const TFunctionNum*> FCalls;
    TSource FResultSource = TSource::Slot;
    std::uint32_t FResult = 0;
    std::size_t FSlotCount = 0;
    std::size_t FSingleCount = 0;  // 32-bit values that medians gather

    std::uint64_t FParseStamp;
    std::uint64_t FRegistrationStamp = 0;
    std::optional<Extended> FKnownValue;  // of a program without callbacks, once calculated
    std::vector<Extended> FSlots;         // for programs too large for the stack
    std::vector<float> FSingles;
    bool FInUse = false;  // FSlots and FSingles serve a calculation under way
};

/// One calculation of a program.
class TCalcRun {
public:
    TCalcRun(const TCalcProgram& program, Extended* slots, float* singles);

    [[nodiscard]] Extended Execute();

    /// The value that a step takes.
    template <TSource Source>
    [[nodiscard]] Extended Fetch(std::uint32_t index) {
        if constexpr (Source == TSource::Slot) return FSlots[index];
        if constexpr (Source == TSource::Constant) return FConstants[index];
        return CallKeyword(index);
    }
    [[nodiscard]] Extended CallKeyword(std::uint32_t index) const;
    [[nodiscard]] Extended CallFunction(std::uint32_t index) const {
        return FProgram.FCalls[index]->Get_Number();
    }
    [[nodiscard]] Extended& Slot(std::uint32_t index) { return FSlots[index]; }
    [[nodiscard]] float* Single(std::uint32_t index) { return FSingles + index; }

private:
    const TCalcProgram& FProgram;
    Extended* FSlots;
    const Extended* FConstants;
    float* FSingles;
};

/// The kinds of step.
[[nodiscard]] TCalcStep::TRun BinaryStep(TCalcOp op, TSource left, TSource right);
[[nodiscard]] TCalcStep::TRun LoadStep(TSource source);         // Left
[[nodiscard]] TCalcStep::TRun SqrtStep(TSource source);         // Left
[[nodiscard]] TCalcStep::TRun NarrowStep(TSource source);       // Left, to the single Target
void MedianStep(TCalcRun& run, const TCalcStep& step);          // singles from Left, Right of them
void CallStep(TCalcRun& run, const TCalcStep& step);            // the call Left
void MissingOperandStep(TCalcRun& run, const TCalcStep& step);  // raises EListError for item Left
void NoItemsStep(TCalcRun& run, const TCalcStep& step);         // raises ceSyntax

}  // namespace Varnholt
