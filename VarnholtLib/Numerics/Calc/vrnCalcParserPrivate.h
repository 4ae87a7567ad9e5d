#pragma once

#include <array>
#include <cstddef>
#include <memory_resource>
#include <vector>

#include "VarnholtLib/Numerics/Calc/vrnCalc.h"

namespace Varnholt {

/// Cuts the cleaned text of an evaluator into its items, those of groups and parameters included, in time
/// that grows with the text. Open groups and calls are kept on a list, so the depth of nesting is limited by
/// memory only. All positions are 0-based in the whole text that the pieces share.
class TCalcParser {
public:
    /// The evaluator's text is clean and not empty.
    explicit TCalcParser(TCalc& calc);

    void Run();

    /// Whether a character outside brackets separates parameters.
    [[nodiscard]] static bool IsSeparator(Char c) { return c == u' ' || c == u','; }

private:
    /// An expression, or the parameters of a call, under way.
    struct TFrame {
        TCalc* Calc;                         // takes the items; for a call, its owner
        std::unique_ptr<TCalc> Owned;        // Calc itself, if it is of a group or a parameter
        std::unique_ptr<TFunctionNum> Call;  // the call, if parameters are read
        std::size_t Position;                // of the next character
        std::size_t End;                     // after the last character
        std::size_t Bracket;                 // the one that closes the group or call
        bool WantsOperator = false;
    };

    void MatchBrackets();
    [[nodiscard]] bool IsClosed(std::size_t bracket) const { return FMatch[bracket] != 0; }

    void ReadExpression(TFrame& frame);
    void ReadParam(TFrame& frame);
    void OpenGroup(const TFrame& frame);
    void OpenCall(const TFrame& frame);
    void OpenExpression(TCalc& owner, TCalcText text, std::size_t bracket);
    static void AddItem(TCalc& calc, std::unique_ptr<TCalcObj> item);
    void AddToken(TFrame& frame, StringView token);
    void CloseFrame();
    void AddOperand(std::unique_ptr<TCalcObj> operand, std::size_t bracket);

    TCalc& FCalc;
    TCalcText FText;
    StringView FWhole;
    std::array<std::byte, 1024> FBuffer;  // enough for most expressions
    std::pmr::monotonic_buffer_resource FMemory{FBuffer.data(), FBuffer.size()};
    std::pmr::vector<std::uint32_t> FMatch{&FMemory};  // by "(" the position of its ")", or 0
    std::vector<TFrame> FFrames;
};

}  // namespace Varnholt
