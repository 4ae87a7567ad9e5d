#include "VarnholtLib/Numerics/Calc/vrnCalcItems.h"

#include <algorithm>

#include "Platform/Runtime/Numbers.h"
#include "VarnholtLib/Numerics/Calc/vrnCalc.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcArithmeticPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcRunScopePrivate.h"

namespace Varnholt {
namespace {

constexpr StringView kOperators = u"+-*/^";

// A leading "n" stands for the minus that the cleaning would take for an operator.
Extended ReadNumber(StringView text) {
    if (text.size() < 2 || text.front() != u'n') return StrToFloat(text);
    String negative(text);
    negative.front() = u'-';
    return StrToFloat(negative);
}

}  // namespace

TCalcObj::~TCalcObj() = default;

void TCalcObj::SurrenderItems(std::vector<std::unique_ptr<TCalcObj>>&) {}

TKeyword::TKeyword(TCalc& calc, StringView keyword, void* param, TKeywordEvent event)
    : TCalcObj(&calc, TCalcKind::Keyword), FKeyword(keyword), FParam(param), FEvent(std::move(event)) {
    if (!FEvent) throw EArgumentNilException(u"A keyword needs a callback: " + FKeyword);
}

// What the callback replaces lives on until it returns.
Extended TKeyword::Number() const {
    TCalc::TRunScope scope(*GetCalc());
    return scope.Leave(Ask());
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
    if (index < 0 || index >= Get_Count()) throw EListError::IndexOutOfBounds(index);
    return *FList[static_cast<std::size_t>(index)];
}

TNum::TNum(TCalc& calc, StringView text) : TBaseNum(&calc, TCalcKind::Num), FNum(ReadNumber(text)) {}

TBrackets::TBrackets(TCalc& calc, std::unique_ptr<TCalc> newCalc) noexcept
    : TBaseNum(&calc, TCalcKind::Brackets), FNewCalc(std::move(newCalc)) {}

TBrackets::~TBrackets() = default;

Extended TBrackets::Get_Number() const {
    return FNewCalc->Calculate();
}

void TBrackets::SurrenderItems(std::vector<std::unique_ptr<TCalcObj>>& heirs) {
    FNewCalc->SurrenderItems(heirs);
}

TKeyword* TKeywordNum::GetKeywordObject() const {
    return GetCalc()->FindKeyword(FKeyword);
}

Extended TKeywordNum::Get_Number() const {
    TCalc::TRunScope scope(*GetCalc());
    return scope.Leave(Ask());
}

Extended TKeywordNum::Ask() const {
    const TKeyword* keyword = GetKeywordObject();
    if (keyword == nullptr) throw ECalcException(ceKeyword, FKeyword);
    return keyword->Ask();
}

TFunctionNum::TFunctionNum(TCalc& calc, const TFunction& function, TCalcText exp) noexcept
    : TBaseNum(&calc, TCalcKind::FunctionNum), FFunction(function), FExp(std::move(exp)) {}

TFunctionNum::~TFunctionNum() = default;

Extended TFunctionNum::Get_Number() const {
    TCalc::TRunScope scope(*GetCalc());
    return scope.Leave(FFunction.Execute(FParams));
}

void TFunctionNum::SurrenderItems(std::vector<std::unique_ptr<TCalcObj>>& heirs) {
    for (const auto& param : FOwnedParams) param->SurrenderItems(heirs);
}

void TFunctionNum::AddParam(std::unique_ptr<TCalc> param) {
    FParams.push_back(param.get());
    FOwnedParams.push_back(std::move(param));
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
