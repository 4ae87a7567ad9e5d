#include <array>
#include <cmath>

#include "Platform/Runtime/Immortal.h"
#include "VarnholtLib/Data/vrnFloatSort.h"
#include "VarnholtLib/Numerics/Calc/vrnCalc.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcArithmeticPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcBuiltInsPrivate.h"

namespace Varnholt {
namespace {

Extended ParamValue(const TFunctionParams& params, int index) {
    return params.Get_Calc(index).Calculate();
}

Extended SumOf(const TFunctionParams& params) {
    Extended sum = 0;
    for (int i = 0; i < params.Get_Count(); ++i) sum += ParamValue(params, i);
    return sum;
}

void RequireParam(const TFunctionParams& params) {
    if (params.Get_Count() < 1) throw ECalcException(ceParam);
}

Extended Choose(TCalcOp op, const TFunctionParams& params) {
    RequireParam(params);
    Extended chosen = ParamValue(params, 0);
    for (int i = 1; i < params.Get_Count(); ++i) chosen = Operate(op, chosen, ParamValue(params, i));
    return chosen;
}

struct TBuiltIns {
    const std::array<TFunction, 7> Functions{
        TFunction(u"sum", 2, TFunction::kNoLimit, TCalc::FuncSum, fuSum),
        TFunction(u"min", 2, TFunction::kNoLimit, TCalc::FuncMin, fuMin),
        TFunction(u"max", 2, TFunction::kNoLimit, TCalc::FuncMax, fuMax),
        TFunction(u"avg", 2, TFunction::kNoLimit, TCalc::FuncAvg, fuAvg),
        TFunction(u"median", 3, TFunction::kNoLimit, TCalc::FuncMedian, fuMedian),
        TFunction(u"StDev", 2, TFunction::kNoLimit, TCalc::FuncStDev, fuStDev),
        TFunction(u"sqrt", 1, 1, TCalc::FuncSqrt, fuSqrt),
    };
};

}  // namespace

std::span<const TFunction> BuiltInFunctions() {
    static TImmortal<TBuiltIns> builtIns;
    return builtIns->Functions;
}

const TFunction* FindBuiltIn(StringView name) {
    for (const TFunction& function : BuiltInFunctions()) {
        if (function.GetName() == name) return &function;
    }
    return nullptr;
}

Extended MedianOf(std::span<float> values) {
    SortFloats(values);
    const std::size_t middle = values.size() / 2;
    if (values.size() % 2 == 1) return values[middle];
    return (static_cast<Extended>(values[middle - 1]) + values[middle]) * 0.5L;
}

Extended TCalc::FuncSum(const TFunction&, const TFunctionParams& params) {
    return SumOf(params);
}

Extended TCalc::FuncMin(const TFunction&, const TFunctionParams& params) {
    return Choose(TCalcOp::Min, params);
}

Extended TCalc::FuncMax(const TFunction&, const TFunctionParams& params) {
    return Choose(TCalcOp::Max, params);
}

Extended TCalc::FuncAvg(const TFunction&, const TFunctionParams& params) {
    return SumOf(params) / static_cast<Extended>(params.Get_Count());
}

Extended TCalc::FuncMedian(const TFunction&, const TFunctionParams& params) {
    const int count = params.Get_Count();
    if (count < 3) throw ECalcException(ceOperator, u"Not enough variables for calculation.");
    std::vector<float> values(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        values[static_cast<std::size_t>(i)] = static_cast<float>(ParamValue(params, i));
    }
    return MedianOf(values);
}

Extended TCalc::FuncStDev(const TFunction&, const TFunctionParams& params) {
    const auto count = static_cast<Extended>(params.Get_Count());
    const Extended mean = SumOf(params) / count;
    Extended squares = 0;
    for (int i = 0; i < params.Get_Count(); ++i) {
        const Extended difference = ParamValue(params, i) - mean;
        squares += difference * difference;
    }
    return std::sqrt(squares / (count - 1));
}

Extended TCalc::FuncSqrt(const TFunction&, const TFunctionParams& params) {
    RequireParam(params);
    return std::sqrt(ParamValue(params, 0));
}

}  // namespace Varnholt
