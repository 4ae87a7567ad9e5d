#include "Desktop/Station/RowExpression.h"

#include <algorithm>
#include <cmath>

#include "Desktop/Station/StationTable.h"

namespace Varnholt::Station {
namespace {

/// A comparison of two values, by its name.
struct TComparison {
    StringView Name;
    bool (*Holds)(Extended a, Extended b);
};

constexpr TComparison kComparisons[] = {{u"lt", [](Extended a, Extended b) { return a < b; }},
                                        {u"le", [](Extended a, Extended b) { return a <= b; }},
                                        {u"gt", [](Extended a, Extended b) { return a > b; }},
                                        {u"ge", [](Extended a, Extended b) { return a >= b; }},
                                        {u"eq", [](Extended a, Extended b) { return a == b; }},
                                        {u"ne", [](Extended a, Extended b) { return a != b; }}};

/// Whether one of the parameters is `value`: 0 or not 0. The ones after it are not calculated.
bool IsAny(const TFunctionParams& params, bool value) {
    for (int i = 0; i < params.Get_Count(); ++i)
        if ((params.Get_Calc(i).Calculate() != 0) == value) return true;
    return false;
}

}  // namespace

TRowExpression::TRowExpression(const TStationTable& table, StringView text) : FTable(table) {
    RegisterColumns();
    RegisterFunctions();
    FCalc.Set_Exp(text);
    if (FTable.GetAllRowCount() > 0) static_cast<void>(At(0));  // finds unknown keywords
}

void TRowExpression::RegisterColumns() {
    for (std::int32_t column = 0; column < FTable.GetColumnCount(); ++column) {
        if (FTable.GetType(column) == ctText) continue;
        FCalc.RegisterKeyword(FTable.GetName(column), [this, column](TCalc&, const String&, void*) {
            const std::optional<double> value = FTable.GetFileNumber(column, FRow);
            FIsMissing = FIsMissing || !value;
            return Extended{value.value_or(0)};
        });
    }
}

void TRowExpression::RegisterFunctions() {
    for (const TComparison& comparison : kComparisons)
        FCalc.RegisterFunction(comparison.Name, 2, 2, [&](const TFunction&, const TFunctionParams& params) {
            const Extended first = params.Get_Calc(0).Calculate();
            return Extended(comparison.Holds(first, params.Get_Calc(1).Calculate()) ? 1 : 0);
        });
    FCalc.RegisterFunction(u"and", 2, -1, [](const TFunction&, const TFunctionParams& params) {
        return Extended(IsAny(params, false) ? 0 : 1);
    });
    FCalc.RegisterFunction(u"or", 2, -1, [](const TFunction&, const TFunctionParams& params) {
        return Extended(IsAny(params, true) ? 1 : 0);
    });
    FCalc.RegisterFunction(u"not", 1, 1, [](const TFunction&, const TFunctionParams& params) {
        return Extended(IsAny(params, true) ? 0 : 1);
    });
    FCalc.RegisterFunction(u"if", 3, 3, [](const TFunction&, const TFunctionParams& params) {
        return params.Get_Calc(params.Get_Calc(0).Calculate() != 0 ? 1 : 2).Calculate();
    });
}

std::optional<double> TRowExpression::At(std::int32_t fileRow) {
    FRow = fileRow;
    FIsMissing = false;
    try {
        const auto value = static_cast<double>(FCalc.Calculate());
        return FIsMissing || !std::isfinite(value) ? std::nullopt : std::optional(value);
    } catch (const ECalcException& failure) {
        if (failure.GetMessage() != ECalcException::CDivideByZero) throw;
        return std::nullopt;
    }
}

bool IsKeyword(StringView columnName) noexcept {
    return !columnName.empty() && std::ranges::none_of(columnName, [](Char unit) {
        return unit <= u' ' || StringView(u"()+-*/^,@$").find(unit) != StringView::npos;
    });
}

std::vector<String> Vocabulary(const TStationTable& table) {
    std::vector<String> words;
    for (std::int32_t column = 0; column < table.GetColumnCount(); ++column)
        if (table.GetType(column) != ctText && IsKeyword(table.GetName(column)))
            words.push_back(u"$" + table.GetName(column));
    for (const TComparison& comparison : kComparisons)
        words.push_back(u"@" + String(comparison.Name) + u"(,)");
    for (const StringView function : {u"@and(,)", u"@or(,)", u"@not()", u"@if(,,)", u"@sum(,)", u"@min(,)",
                                      u"@max(,)", u"@avg(,)", u"@median(,,)", u"@StDev(,)", u"@sqrt()"})
        words.emplace_back(function);
    return words;
}

}  // namespace Varnholt::Station
