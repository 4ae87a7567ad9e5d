#include <algorithm>

#include "Platform/Runtime/Text.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcParserPrivate.h"

namespace Varnholt {
namespace {

bool IsBlankOrControl(Char c) {
    return c <= u' ';
}

}  // namespace

TCalcParser::TCalcParser(TCalc& calc) : FCalc(calc), FText(calc.FExp), FWhole(*FText.Whole) {}

void TCalcParser::Run() {
    MatchBrackets();
    FFrames.reserve(4);
    FFrames.push_back({&FCalc, nullptr, nullptr, FText.First, FText.First + FText.Length, 0});
    while (!FFrames.empty()) {
        TFrame& frame = FFrames.back();
        if (frame.Call) {
            ReadParam(frame);
        } else {
            ReadExpression(frame);
        }
    }
}

// Brackets match by counting only, whatever tokens contain them. While a "(" is open, its entry holds the
// one that was open before it, plus 1.
void TCalcParser::MatchBrackets() {
    FMatch.resize(FWhole.size());
    std::uint32_t open = 0;
    for (std::uint32_t i = 0; i < FWhole.size(); ++i) {
        if (FWhole[i] == u'(') {
            FMatch[i] = open;
            open = i + 1;
        } else if (FWhole[i] == u')' && open != 0) {
            std::uint32_t& match = FMatch[open - 1];
            open = match;
            match = i;
        }
    }
    while (open != 0) {
        std::uint32_t& match = FMatch[open - 1];
        open = match;
        match = 0;
    }
}

// Reads tokens up to the end, or to a group or call, which gets a frame of its own.
void TCalcParser::ReadExpression(TFrame& frame) {
    while (frame.Position < frame.End) {
        const Char c = FWhole[frame.Position];
        if (c == u' ') {
            ++frame.Position;
            continue;
        }
        if (!frame.WantsOperator && c == u'(') return OpenGroup(frame);
        if (!frame.WantsOperator && c == u'@') return OpenCall(frame);
        const StringView rest = FWhole.substr(frame.Position, frame.End - frame.Position);
        const StringView token = rest.substr(0, rest.find(u' '));
        frame.Position += token.size();
        AddToken(frame, token);
    }
    CloseFrame();
}

// Most lists hold at most two operands and an operator.
void TCalcParser::AddItem(TCalc& calc, std::unique_ptr<TCalcObj> item) {
    if (calc.FItems.capacity() == 0) calc.FItems.reserve(3);
    calc.FItems.push_back(std::move(item));
}

void TCalcParser::AddToken(TFrame& frame, StringView token) {
    TCalc& calc = *frame.Calc;
    if (frame.WantsOperator) {
        AddItem(calc, std::make_unique<TOperator>(calc, token));
    } else if (token.front() == u'$') {
        AddItem(calc, std::make_unique<TKeywordNum>(calc, token.substr(1)));
        calc.FPure = false;
    } else {
        AddItem(calc, std::make_unique<TNum>(calc, token));
    }
    frame.WantsOperator = !frame.WantsOperator;
}

void TCalcParser::OpenGroup(const TFrame& frame) {
    const std::size_t bracket = frame.Position;
    if (!IsClosed(bracket)) throw ECalcException(ceBracket);
    OpenExpression(*frame.Calc, FText.Trimmed(bracket + 1, FMatch[bracket]), FMatch[bracket]);
}

void TCalcParser::OpenCall(const TFrame& frame) {
    const std::size_t nameStart = frame.Position + 1;
    const std::size_t bracket = FWhole.find_first_of(u"()", nameStart);
    const bool wellFormed = bracket != StringView::npos && bracket + 1 < frame.End &&
                            FWhole[bracket] == u'(' && IsClosed(bracket);
    if (!wellFormed) throw ECalcException(ceSyntax);

    TCalc& calc = *frame.Calc;
    const TFunction* function = calc.FindFunction(TrimView(FWhole.substr(nameStart, bracket - nameStart)));
    if (function == nullptr) throw ECalcException(ceFunction);
    if (function->GetBuiltIn() == fuNone) calc.FPure = false;

    const std::size_t end = FMatch[bracket];
    TCalcText params = FText.Trimmed(bracket + 1, end);
    const std::size_t first = params.First;
    const std::size_t last = first + params.Length;
    auto call = std::make_unique<TFunctionNum>(TCalcOwnerKey(), calc, *function, std::move(params));
    FFrames.push_back({&calc, nullptr, std::move(call), first, last, end});
}

// Opens the expression of the next parameter, or ends the call. A separator inside brackets belongs to the
// parameter.
void TCalcParser::ReadParam(TFrame& frame) {
    if (frame.Position >= frame.End) {
        if (!frame.Call->GetFunction().Accepts(frame.Call->GetParams().size())) {
            throw ECalcException(ceParam);
        }
        return CloseFrame();
    }
    const std::size_t first = frame.Position;
    std::size_t end = first;
    while (end < frame.End && !IsSeparator(FWhole[end]))
        end = FWhole[end] == u'(' ? FMatch[end] + 1 : end + 1;
    frame.Position = end + 1;
    OpenExpression(*frame.Calc, FText.Trimmed(first, end), 0);
}

void TCalcParser::OpenExpression(TCalc& owner, TCalcText text, std::size_t bracket) {
    if (text.Length == 0) throw ECalcException(ceSyntax);
    const std::size_t first = text.First;
    const std::size_t end = first + text.Length;
    auto calc = std::make_unique<TCalc>(TCalcOwnerKey(), owner, std::move(text));
    TCalc* const taker = calc.get();
    FFrames.push_back({taker, std::move(calc), nullptr, first, end, bracket});
}

// Passes a finished group, parameter or call to the frame that waits for it.
void TCalcParser::CloseFrame() {
    TFrame done = std::move(FFrames.back());
    FFrames.pop_back();
    if (FFrames.empty()) return;
    TFrame& waiting = FFrames.back();
    if (!done.Calc->FPure) waiting.Calc->FPure = false;
    if (done.Call) {
        AddOperand(std::move(done.Call), done.Bracket);
    } else if (waiting.Call) {
        waiting.Call->AddParam(TCalcOwnerKey(), std::move(done.Owned));
    } else {
        TCalc& calc = *waiting.Calc;
        AddOperand(std::make_unique<TBrackets>(TCalcOwnerKey(), calc, std::move(done.Owned)), done.Bracket);
    }
}

// One character after the bracket is skipped; in a cleaned text it is the blank before an operator.
void TCalcParser::AddOperand(std::unique_ptr<TCalcObj> operand, std::size_t bracket) {
    TFrame& frame = FFrames.back();
    AddItem(*frame.Calc, std::move(operand));
    frame.WantsOperator = true;
    frame.Position = bracket + 2;
    if (bracket + 1 < frame.End && !IsBlankOrControl(FWhole[bracket + 1])) throw ECalcException(ceSyntax);
}

}  // namespace Varnholt
