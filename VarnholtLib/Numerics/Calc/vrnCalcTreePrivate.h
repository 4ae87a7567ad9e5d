#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "VarnholtLib/Numerics/Calc/vrnCalc.h"

namespace Varnholt {

/// What the evaluators of one expression share: a top evaluator and those of the groups and parameters below
/// it. The top evaluator owns the tree.
///
/// One rule decides whether a program is stale: it is when the stamp of its tree differs from the stamp that
/// the program was made at. The stamp changes whenever something is parsed in the tree, and whenever
/// something is registered in the tree or in a tree above it. A stale program is not mended but replaced.
class TCalcTree {
public:
    /// Items and a program that a callback replaced while a calculation may still use them.
    struct TRetired {
        TRetired();
        ~TRetired();

        std::vector<std::unique_ptr<TCalcObj>> Items;
        std::unique_ptr<TCalcProgram> Program;
        std::unique_ptr<TRetired> Next;
    };

    /// The tree below a top evaluator, whose parent belongs to another tree or is none.
    explicit TCalcTree(const TCalc& top)
        : FTop(top), FParent(top.GetCalc() == nullptr ? nullptr : &top.GetCalc()->GetTree()) {}
    ~TCalcTree() { static_cast<void>(FreeRetired(0)); }
    TCalcTree(const TCalcTree&) = delete;
    TCalcTree& operator=(const TCalcTree&) = delete;

    [[nodiscard]] std::uint64_t GetChanges() const noexcept { return FChanges; }
    [[nodiscard]] bool HasParent() const noexcept { return FParent != nullptr; }
    // Counts only grow, so equal sums mean that none of them changed.
    [[nodiscard]] std::uint64_t GetStamp() const noexcept {
        std::uint64_t stamp = FChanges;
        for (const TCalcTree* tree = FParent; tree != nullptr; tree = tree->FParent) {
            stamp += tree->FRegistrations;
        }
        return stamp;
    }
    void CountParse() noexcept { ++FChanges; }
    void CountRegistration() noexcept {
        ++FChanges;
        ++FRegistrations;
    }

    [[nodiscard]] const TCalc& GetTop() const noexcept { return FTop; }
    /// The number of evaluators below the top that have registrations of their own. While it is 0, the search
    /// for a name can skip from any of them to the top.
    void CountInnerScope(int difference) noexcept { FInnerScopes += difference; }
    [[nodiscard]] bool HasInnerScopes() const noexcept { return FInnerScopes != 0; }

    [[nodiscard]] bool IsRunning() const noexcept { return FRunDepth != 0; }
    /// What Retire needs while a calculation is under way, else none.
    [[nodiscard]] std::unique_ptr<TRetired> MakeRoomToRetire() const;
    /// Keeps it until the calculations under way have ended.
    void Retire(std::unique_ptr<TRetired> retired) noexcept;

    /// Runs a calculation, which counts as under way meanwhile. Raises Exception "Function calls are nested too deeply".
    template <typename TCalculate>
    Extended Run(TCalculate calculate) {
        const int depth = FRunDepth;
        if (depth >= TCalc::kMaxCallDepth) [[unlikely]]
            RaiseTooDeep();
        FRunDepth = depth + 1;
        try {
            return Leave(depth, calculate());
        } catch (...) {
            static_cast<void>(Leave(depth, 0));
            throw;
        }
    }

private:
    [[noreturn]] static void RaiseTooDeep();
    // The value is passed through, so that it stays in its register.
    Extended Leave(int depth, Extended value) noexcept {
        FRunDepth = depth;
        if (depth == 0 && FRetired) [[unlikely]]
            return FreeRetired(value);
        return value;
    }
    Extended FreeRetired(Extended value) noexcept;

    std::uint64_t FChanges = 0;  // parses and registrations
    std::uint64_t FRegistrations = 0;
    const TCalc& FTop;
    const TCalcTree* FParent;
    int FRunDepth = 0;
    int FInnerScopes = 0;
    std::unique_ptr<TRetired> FRetired;
};

}  // namespace Varnholt
