#pragma once

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "Platform/Runtime/FloatMath.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Text.h"
#include "VarnholtLib/Data/vrnFloatSort.h"
#include "VarnholtLib/Foundation/vrnString.h"
#include "VarnholtLib/Numerics/vrnMath.h"

/// A plain evaluator, with which tests and fuzz targets compare the one of the library.
namespace Varnholt::Test {

constexpr StringView kOperators = u"+-*/^";

inline bool IsOperator(Char c) {
    return kOperators.find(c) != StringView::npos;
}

inline String DropBlanks(const String& text, const std::function<bool(std::size_t)>& drop) {
    String kept;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u' ' || !drop(i)) kept += text[i];
    }
    return kept;
}

inline bool EndsOperand(const String& text, std::size_t at) {
    while (at > 0 && text[at - 1] == u' ') --at;
    return at > 0 && (IsNumberChar(text[at - 1]) || IsAlpha(text[at - 1]) || text[at - 1] == u')');
}

// After the trim a blank is neither the first nor the last character.
inline String Clean(const String& expression) {
    String text = Trim(expression);
    text = DropBlanks(text, [&](std::size_t i) { return text[i + 1] == u' '; });
    text = DropBlanks(text, [&](std::size_t i) { return text[i - 1] == u'(' || text[i + 1] == u')'; });
    String spaced;
    for (const Char c : text) {
        const bool isBetween = !spaced.empty() && spaced.back() != u' ' && c != u' ';
        if (isBetween && (IsOperator(c) || IsOperator(spaced.back()))) spaced += u' ';
        spaced += c;
    }
    return DropBlanks(spaced,
                      [&](std::size_t i) { return spaced[i - 1] == u'-' && !EndsOperand(spaced, i - 1); });
}

inline Extended Operate(Char op, Extended left, Extended right) {
    if (op == u'+') return left + right;
    if (op == u'-') return left - right;
    if (op == u'*') return left * right;
    if (op == u'^') return Power(left, right);
    if (right == 0) throw ECalcException(ceDivideByZero);
    return left / right;
}

inline Extended MedianOf(const std::vector<Extended>& values) {
    std::vector<float> sorted(values.size());
    std::ranges::transform(values, sorted.begin(), [](Extended value) { return static_cast<float>(value); });
    SortFloats(sorted);  // which also gives a NaN its place
    const std::size_t middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted[middle] : (Extended(sorted[middle - 1]) + sorted[middle]) * 0.5L;
}

/// A second evaluator, written as plainly as possible: it cleans character by character, copies texts, and reduces
/// lists of values by the rules of vrnCalc.h. It is slow and recursive, and shares no code with the parser and the
/// programs of the library.
class TPlainCalc {
public:
    using TKeywordValue = std::function<Extended(StringView name)>;

    TPlainCalc(const String& expression, TKeywordValue keywords)
        : FExp(Clean(expression)), FKeywords(std::move(keywords)) {
        if (FExp.empty()) throw ECalcException(ceSyntax);
        Parse();
    }

    [[nodiscard]] Extended Calculate() const {
        std::vector<TItem> work = FItems;
        for (const StringView level : {u"^", u"*/", u"+-"}) {
            for (std::size_t i = 1; i < work.size();) {
                if (level.find(work[i].Op) == StringView::npos) {
                    i += 2;
                    continue;
                }
                const Extended left = work[i - 1].Number();
                if (i + 1 >= work.size())
                    throw EListError::IndexOutOfBounds(static_cast<std::int64_t>(i) + 1);
                const Extended result = Operate(work[i].Op, left, work[i + 1].Number());
                work[i - 1].Number = [result] { return result; };
                work.erase(work.begin() + static_cast<std::ptrdiff_t>(i),
                           work.begin() + static_cast<std::ptrdiff_t>(i) + 2);
            }
        }
        return work[0].Number();
    }

private:
    using TParams = std::vector<std::shared_ptr<TPlainCalc>>;
    struct TItem {
        Char Op;  // at odd places
        std::function<Extended()> Number;
    };

    void Parse() {
        String token;
        for (std::size_t i = 0; i < FExp.size();) {
            const bool wantsOperand = FItems.size() % 2 == 0;
            const Char c = FExp[i];
            if (c != u' ') token += c;
            if (wantsOperand && (token == u"@" || token == u"(")) {
                i = token == u"@" ? ParseCall(i) : ParseGroup(i);
                token.clear();
                continue;
            }
            const bool isLast = ++i == FExp.size();
            if ((c != u' ' && !isLast) || token.empty()) continue;
            if (!wantsOperand) {
                if (token.size() != 1 || !IsOperator(token[0])) throw ECalcException(ceOperator, token);
                FItems.push_back({token[0], {}});
            } else if (token[0] == u'$') {
                FItems.push_back({0, [this, name = token.substr(1)] { return FKeywords(name); }});
            } else {
                if (token.size() > 1 && token[0] == u'n') token[0] = u'-';
                FItems.push_back({0, [value = StrToFloat(token)] { return value; }});
            }
            token.clear();
        }
    }

    // The position of the bracket that closes the one at `open`.
    [[nodiscard]] std::size_t Closing(std::size_t open, TCalcError failure) const {
        int level = 0;
        for (std::size_t i = open; i < FExp.size(); ++i) {
            if (FExp[i] == u'(') ++level;
            if (FExp[i] == u')' && --level == 0) return i;
        }
        throw ECalcException(failure);
    }

    std::size_t AddOperand(std::function<Extended()> number, std::size_t close) {
        FItems.push_back({0, std::move(number)});
        if (close + 1 < FExp.size() && FExp[close + 1] > u' ') throw ECalcException(ceSyntax);
        return close + 2;
    }

    std::size_t ParseGroup(std::size_t at) {
        const std::size_t close = Closing(at, ceBracket);
        const auto group = std::make_shared<TPlainCalc>(FExp.substr(at + 1, close - at - 1), FKeywords);
        return AddOperand([group] { return group->Calculate(); }, close);
    }

    std::size_t ParseCall(std::size_t at) {
        const std::size_t open = FExp.find_first_of(u"()", at + 1);
        if (open == String::npos || FExp[open] == u')' || open + 1 >= FExp.size())
            throw ECalcException(ceSyntax);
        const std::size_t close = Closing(open, ceSyntax);
        const String name = Trim(FExp.substr(at + 1, open - at - 1));
        if (name.find(u' ') != String::npos ||
            StringView(u" sum min max avg median StDev sqrt ").find(u" " + name + u" ") == StringView::npos)
            throw ECalcException(ceFunction);
        const TParams params = Params(Trim(FExp.substr(open + 1, close - open - 1)));
        const std::size_t least = name == u"sqrt" ? 1 : name == u"median" ? 3 : 2;
        if (params.size() < least || (name == u"sqrt" && params.size() > 1)) throw ECalcException(ceParam);
        return AddOperand([name, params] { return Call(name, params); }, close);
    }

    [[nodiscard]] TParams Params(const String& text) const {
        TParams params;
        int level = 0;
        String param;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const Char c = text[i];
            if (c == u'(') ++level;
            if (c == u')') --level;
            const bool separates = level == 0 && (c == u' ' || c == u',');
            if (!separates) param += c;
            if (!separates && i + 1 < text.size()) continue;
            params.push_back(std::make_shared<TPlainCalc>(std::exchange(param, String()), FKeywords));
        }
        return params;
    }

    static Extended Call(const String& name, const TParams& params) {
        std::vector<Extended> values;
        Extended sum = 0;
        for (const auto& param : params) {
            values.push_back(param->Calculate());
            sum += values.back();
        }
        const auto count = static_cast<Extended>(values.size());
        if (name == u"sum") return sum;
        if (name == u"avg") return sum / count;
        if (name == u"sqrt") return std::sqrt(values[0]);
        if (name == u"median") return MedianOf(values);
        if (name == u"StDev") {
            Extended squares = 0;
            for (const auto& param : params) {
                const Extended difference = param->Calculate() - sum / count;
                squares += difference * difference;
            }
            return std::sqrt(squares / (count - 1));
        }
        Extended chosen = values[0];
        for (const Extended value : values) {
            if (name == u"min" ? value < chosen : value > chosen) chosen = value;
        }
        return chosen;
    }

    String FExp;
    TKeywordValue FKeywords;
    std::vector<TItem> FItems;
};

}  // namespace Varnholt::Test
