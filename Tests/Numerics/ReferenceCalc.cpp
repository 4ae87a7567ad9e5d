#include "Tests/Numerics/ReferenceCalc.h"

#include <algorithm>
#include <cmath>

#include "Platform/Runtime/FloatMath.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Text.h"
#include "VarnholtLib/Data/vrnGrid.h"
#include "VarnholtLib/Foundation/vrnString.h"

namespace Varnholt::Test {
namespace {

String DropBlanks(const String& text, const std::function<bool(std::size_t)>& drop) {
    String kept;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u' ' || !drop(i)) kept += text[i];
    }
    return kept;
}

String SpaceAround(const String& text, Char op) {
    String spaced;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isOp = text[i] == op;
        if (isOp && i > 0 && spaced.back() != u' ') spaced += u' ';
        spaced += text[i];
        if (isOp && i + 1 < text.size() && text[i + 1] != u' ') spaced += u' ';
    }
    return spaced;
}

bool EndsOperand(const String& text, std::size_t at) {
    while (at > 0 && text[at - 1] == u' ') --at;
    return at > 0 && (IsNumberChar(text[at - 1]) || IsAlpha(text[at - 1]) || text[at - 1] == u')');
}

// A blank that stands next to a bracket, other blanks in between passed over.
bool FollowsBracket(const String& text, std::size_t at) {
    while (at > 0 && text[at - 1] == u' ') --at;
    return at > 0 && text[at - 1] == u'(';
}

bool PrecedesBracket(const String& text, std::size_t at) {
    while (at + 1 < text.size() && text[at + 1] == u' ') ++at;
    return at + 1 < text.size() && text[at + 1] == u')';
}

// The position of the bracket that closes the one at `open`, or npos.
std::size_t Closing(const String& text, std::size_t open) {
    int level = 0;
    for (std::size_t i = open; i < text.size(); ++i) {
        if (text[i] == u'(') ++level;
        if (text[i] == u')' && --level == 0) return i;
    }
    return String::npos;
}

Extended ReadNumber(String text) {
    if (text.size() > 1 && text[0] == u'n') text[0] = u'-';
    return StrToFloat(text);
}

struct TSignature {
    StringView Name;
    std::size_t Min;
    std::size_t Max;
};
constexpr TSignature kFunctions[] = {{u"sum", 2, 99},    {u"min", 2, 99},   {u"max", 2, 99}, {u"avg", 2, 99},
                                     {u"median", 3, 99}, {u"StDev", 2, 99}, {u"sqrt", 1, 1}};

Extended Execute(Char op, Extended left, Extended right) {
    if (op == u'+') return left + right;
    if (op == u'-') return left - right;
    if (op == u'*') return left * right;
    if (op == u'^') return Power(left, right);
    if (right == 0) throw ECalcException(ceDivideByZero);
    return left / right;
}

}  // namespace

TReferenceCalc::TReferenceCalc(String expression, TKeywordValue keywords)
    : FExp(Clean(std::move(expression))), FKeywords(std::move(keywords)) {
    if (FExp.empty()) throw ECalcException(ceSyntax);
    Parse();
}

String TReferenceCalc::Clean(String text) {
    text = Trim(text);
    text = DropBlanks(text, [&](std::size_t i) { return i + 1 < text.size() && text[i + 1] == u' '; });
    text = DropBlanks(text, [&](std::size_t i) { return FollowsBracket(text, i); });
    text = DropBlanks(text, [&](std::size_t i) { return PrecedesBracket(text, i); });
    for (const Char op : StringView(u"+-*/^")) text = SpaceAround(text, op);
    return DropBlanks(
        text, [&](std::size_t i) { return i > 0 && text[i - 1] == u'-' && !EndsOperand(text, i - 1); });
}

void TReferenceCalc::Parse() {
    bool wantsOperand = true;
    String token;
    for (std::size_t i = 0; i < FExp.size();) {
        const Char c = FExp[i];
        if (c != u' ') token += c;
        if (wantsOperand && (token == u"@" || token == u"(")) {
            i = token == u"@" ? ParseCall(i) : ParseGroup(i);
            token.clear();
            wantsOperand = false;
            continue;
        }
        const bool isLast = i + 1 == FExp.size();
        ++i;
        if ((c != u' ' && !isLast) || token.empty()) continue;
        if (!wantsOperand) {
            if (token.size() != 1 || StringView(u"+-*/^").find(token[0]) == StringView::npos) {
                throw ECalcException(ceOperator, token);
            }
            FItems.push_back({TItem::Operator, token, 0, {}});
        } else if (token[0] == u'$') {
            FItems.push_back({TItem::Keyword, token.substr(1), 0, {}});
        } else {
            FItems.push_back({TItem::Num, token, ReadNumber(token), {}});
        }
        wantsOperand = !wantsOperand;
        token.clear();
    }
}

std::size_t TReferenceCalc::StepBehind(std::size_t close) const {
    if (close + 1 < FExp.size() && FExp[close + 1] > u' ') throw ECalcException(ceSyntax);
    return close + 2;
}

std::size_t TReferenceCalc::ParseGroup(std::size_t at) {
    const std::size_t close = Closing(FExp, at);
    if (close == String::npos) throw ECalcException(ceBracket);
    TItem group{TItem::Group, {}, 0, {}};
    group.Inner.push_back(std::make_shared<TReferenceCalc>(FExp.substr(at + 1, close - at - 1), FKeywords));
    FItems.push_back(group);
    return StepBehind(close);
}

std::size_t TReferenceCalc::ParseCall(std::size_t at) {
    std::size_t open = at + 1;
    while (open < FExp.size() && FExp[open] != u'(') {
        if (FExp[open] == u')') throw ECalcException(ceSyntax);
        ++open;
    }
    if (open + 1 >= FExp.size()) throw ECalcException(ceSyntax);
    const std::size_t close = Closing(FExp, open);
    if (close == String::npos) throw ECalcException(ceSyntax);
    TItem call{TItem::Function, Trim(FExp.substr(at + 1, open - at - 1)), 0, {}};
    ParseParams(call, Trim(FExp.substr(open + 1, close - open - 1)));
    FItems.push_back(call);
    return StepBehind(close);
}

void TReferenceCalc::ParseParams(TItem& call, String text) {
    const auto* signature = std::ranges::find(kFunctions, StringView(call.Text), &TSignature::Name);
    if (signature == std::end(kFunctions)) throw ECalcException(ceFunction);
    int level = 0;
    String param;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const Char c = text[i];
        if (c == u'(') ++level;
        if (c == u')') --level;
        const bool separates = level == 0 && (c == u' ' || c == u',');
        if (!separates) param += c;
        if (separates || i + 1 == text.size()) {
            call.Inner.push_back(std::make_shared<TReferenceCalc>(param, FKeywords));
            param.clear();
        }
    }
    if (call.Inner.size() < signature->Min || call.Inner.size() > signature->Max)
        throw ECalcException(ceParam);
}

Extended TReferenceCalc::Number(const TItem& item) const {
    switch (item.Kind) {
        case TItem::Keyword:
            return FKeywords(item.Text);
        case TItem::Group:
            return item.Inner[0]->Calculate();
        case TItem::Function:
            return CallFunction(item);
        default:
            return item.Value;
    }
}

Extended TReferenceCalc::CallFunction(const TItem& item) const {
    std::vector<Extended> values;
    Extended sum = 0;
    for (const auto& param : item.Inner) {
        values.push_back(param->Calculate());
        sum += values.back();
    }
    const auto count = static_cast<Extended>(values.size());
    if (item.Text == u"sum") return sum;
    if (item.Text == u"avg") return sum / count;
    if (item.Text == u"sqrt") return std::sqrt(values[0]);
    if (item.Text == u"median") {
        TFloatArray sorted(static_cast<int>(values.size()));
        for (int i = 1; i <= sorted.GetCount(); ++i) {
            sorted.WriteFloat(i, static_cast<float>(values[static_cast<std::size_t>(i - 1)]));
        }
        sorted.Sort();
        const int middle = sorted.GetCount() / 2 + 1;
        if (sorted.GetCount() % 2 == 1) return sorted.GetFloat(middle);
        return (Extended(sorted.GetFloat(middle - 1)) + sorted.GetFloat(middle)) * 0.5L;
    }
    if (item.Text == u"StDev") {
        Extended squares = 0;
        for (const auto& param : item.Inner) {
            const Extended difference = param->Calculate() - sum / count;
            squares += difference * difference;
        }
        return std::sqrt(squares / (count - 1));
    }
    Extended chosen = values[0];
    for (const Extended value : values) {
        if (item.Text == u"min" ? value < chosen : value > chosen) chosen = value;
    }
    return chosen;
}

Extended TReferenceCalc::Calculate() const {
    if (FItems.empty()) throw ECalcException(ceSyntax);
    std::vector<TItem> work = FItems;
    for (const StringView level : {u"^", u"*/", u"+-"}) {
        for (std::size_t i = 0; i < work.size();) {
            if (i % 2 == 0 || level.find(work[i].Text[0]) == StringView::npos) {
                ++i;
                continue;
            }
            const Extended left = Number(work[i - 1]);
            if (i + 1 >= work.size()) throw EListError::IndexOutOfBounds(static_cast<std::int64_t>(i) + 1);
            const Extended right = Number(work[i + 1]);
            const TItem result{TItem::Num, {}, Execute(work[i].Text[0], left, right), {}};
            const auto place = work.begin() + static_cast<std::ptrdiff_t>(i);
            work.insert(work.erase(place - 1, place + 2), result);
        }
    }
    return Number(work[0]);
}

}  // namespace Varnholt::Test
