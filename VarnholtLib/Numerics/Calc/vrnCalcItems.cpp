#include "VarnholtLib/Numerics/Calc/vrnCalcItems.h"

#include <algorithm>
#include <limits>

#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Text.h"
#include "VarnholtLib/Numerics/Calc/vrnCalc.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcArithmeticPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcParserPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcTreePrivate.h"

namespace Varnholt {
namespace {

constexpr StringView kOperators = u"+-*/^";

// A leading "n" replaces the minus that the cleaning would take for an operator.
Extended ReadNumber(StringView text) {
    if (text.size() < 2 || text.front() != u'n') return StrToFloat(text);
    String negative(text);
    negative.front() = u'-';
    return StrToFloat(negative);
}

const TFunction& FunctionOf(const TCalc& calc, StringView name) {
    const TFunction* function = calc.FindFunction(name);
    if (function == nullptr) throw ECalcException(ceFunction);
    return *function;
}

}  // namespace

TCalcText TCalcText::Trimmed(std::size_t first, std::size_t end) const {
    const StringView whole = *Whole;
    const StringView text = TrimView(whole.substr(first, end - first));
    return {Whole, static_cast<std::uint32_t>(text.data() - whole.data()),
            static_cast<std::uint32_t>(text.size())};
}

TCalcText TCalcText::Of(String text) {
    if (text.size() >= std::numeric_limits<std::uint32_t>::max()) {
        throw Exception(u"The expression is too long");
    }
    const auto length = static_cast<std::uint32_t>(text.size());
    return {std::make_shared<const String>(std::move(text)), 0, length};
}

TCalcObj::~TCalcObj() = default;

TCalc* TCalcObj::NextToEmpty() noexcept {
    return nullptr;
}

TKeyword::TKeyword(TCalc& calc, StringView keyword, void* param, TKeywordEvent event)
    : TCalcObj(&calc, TCalcKind::Keyword), FKeyword(keyword), FParam(param), FEvent(std::move(event)) {
    if (!FEvent) throw EArgumentNilException(u"A keyword needs a callback: " + FKeyword);
}

Extended TKeyword::Number() const {
    return GetCalc()->GetTree().Run([this] { return Ask(); });
}

TFunction::TFunction(StringView name, int minParams, int maxParams, TFunctionEvent event, TBuiltIn builtIn)
    : FMinParams(minParams), FMaxParams(maxParams), FName(name), FEvent(std::move(event)), FBuiltIn(builtIn) {
    if (!FEvent) throw EArgumentNilException(u"A function needs a callback: " + FName);
}

bool TFunction::Accepts(std::size_t count) const noexcept {
    const auto breaks = [](int bound) { return bound != kNoLimit; };
    const auto number = static_cast<long long>(count);
    return !(breaks(FMinParams) && FMinParams > number) && !(breaks(FMaxParams) && FMaxParams < number);
}

Extended TFunction::Execute(const TCalcList& params) const {
    if (!Accepts(params.size()) || std::ranges::find(params, nullptr) != params.end()) {
        throw ECalcException(ceParam);
    }
    return FEvent(*this, TFunctionParams(params));
}

TCalc& TFunctionParams::Get_Calc(int index) const {
    return *FList[ListIndex(index, FList.size())];
}

TNum::TNum(TCalc& calc, StringView text) : TBaseNum(&calc, TCalcKind::Num), FNum(ReadNumber(text)) {}

TBrackets::TBrackets(TCalc& calc, StringView text)
    : TBrackets(TCalcOwnerKey(), calc, std::make_unique<TCalc>(TCalcOwnerKey(), calc, TCalcText())) {
    FNewCalc->Set_Exp(text);
}

TBrackets::TBrackets(TCalcOwnerKey, TCalc& calc, std::unique_ptr<TCalc> newCalc) noexcept
    : TBaseNum(&calc, TCalcKind::Brackets), FNewCalc(std::move(newCalc)) {}

TBrackets::~TBrackets() = default;

Extended TBrackets::Get_Number() const {
    return FNewCalc->Calculate();
}

TCalc* TBrackets::NextToEmpty() noexcept {
    return FNewCalc->Get_Count() > 0 ? FNewCalc.get() : nullptr;
}

TKeyword* TKeywordNum::GetKeywordObject() const {
    return GetCalc()->FindKeyword(FKeyword);
}

Extended TKeywordNum::Get_Number() const {
    return GetCalc()->GetTree().Run([this] { return Ask(); });
}

Extended TKeywordNum::Ask() const {
    const TKeyword* keyword = GetKeywordObject();
    if (keyword == nullptr) throw ECalcException(ceKeyword, FKeyword);
    return keyword->Ask();
}

TFunctionNum::TFunctionNum(TCalc& calc, StringView functionName, StringView params)
    : TFunctionNum(TCalcOwnerKey(), calc, FunctionOf(calc, functionName), TCalcText::Of(String(params))) {
    Parse();
}

TFunctionNum::TFunctionNum(TCalcOwnerKey, TCalc& calc, const TFunction& function, TCalcText exp) noexcept
    : TBaseNum(&calc, TCalcKind::FunctionNum), FFunction(function), FExp(std::move(exp)) {}

TFunctionNum::~TFunctionNum() = default;

void TFunctionNum::Parse() {
    FExp = FExp.Trimmed(FExp.First, std::size_t{FExp.First} + FExp.Length);
    const StringView text = FExp.View();
    TOwnedCalcs params;
    int level = 0;
    std::size_t first = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'(') ++level;
        if (text[i] == u')') --level;
        const bool separates = level == 0 && TCalcParser::IsSeparator(text[i]);
        if (!separates && i + 1 < text.size()) continue;
        params.push_back(std::make_unique<TCalc>(TCalcOwnerKey(), *GetCalc(), TCalcText()));
        params.back()->Set_Exp(text.substr(first, (separates ? i : i + 1) - first));
        first = i + 1;
    }
    if (!FFunction.Accepts(params.size())) throw ECalcException(ceParam);
    TakeParams(std::move(params));
}

// Replaced parameters are kept if a calculation under way may use them.
void TFunctionNum::TakeParams(TOwnedCalcs params) {
    TCalcList list(params.size());
    std::ranges::transform(params, list.begin(), [](const auto& param) { return param.get(); });
    TCalcTree& tree = GetCalc()->GetTree();
    if (tree.IsRunning()) {
        FOwnedParams.reserve(FOwnedParams.size() + params.size());
        std::ranges::move(params, std::back_inserter(FOwnedParams));
    } else {
        FOwnedParams = std::move(params);
    }
    FParams = std::move(list);
    tree.CountParse();
}

Extended TFunctionNum::Get_Number() const {
    return GetCalc()->GetTree().Run([this] { return FFunction.Execute(FParams); });
}

TCalc* TFunctionNum::NextToEmpty() noexcept {
    while (!FOwnedParams.empty() && FOwnedParams.back()->Get_Count() == 0) FOwnedParams.pop_back();
    return FOwnedParams.empty() ? nullptr : FOwnedParams.back().get();
}

void TFunctionNum::AddParam(TCalcOwnerKey, std::unique_ptr<TCalc> param) {
    TCalc* const calc = param.get();
    FOwnedParams.push_back(std::move(param));
    FParams.push_back(calc);
}

TOperator::TOperator(TCalc& calc, StringView text)
    : TCalcObj(&calc, TCalcKind::Operator), FChar(text.empty() ? u'\0' : text.front()) {
    if (text.size() != 1 || kOperators.find(FChar) == StringView::npos)
        throw ECalcException(ceOperator, text);
}

Extended TOperator::Execute(Extended left, Extended right) const {
    return Operate(OperationOf(FChar), left, right);
}

}  // namespace Varnholt
