#include <algorithm>
#include <utility>

#include "Fuzz/FuzzInput.h"
#include "Tests/Numerics/ReferenceCalc.h"

/// Setting and calculating an expression, beside the plain evaluator of the tests: the same cleaned text, the
/// same keywords in the same order, and the same value or failure.
namespace Varnholt::Fuzz {
namespace {

constexpr std::size_t kMaxInput = 512;
constexpr int kMaxStDevs = 5;  // each level of nesting doubles the work

struct TOutcome {
    String Exp;
    String Calls;
    String Failure;
    Extended Value = 0;
};

Extended ValueOf(StringView name) {
    if (name == u"a") return 2;
    if (name == u"b") return -1.5L;
    if (name == u"c") return 0;
    throw ECalcException(ceKeyword, name);
}

TOutcome RunReference(const String& expression) {
    TOutcome outcome;
    outcome.Exp = Test::Clean(expression);
    outcome.Failure = FailureOf([&] {
        const Test::TPlainCalc calc(expression, [&](StringView name) {
            const Extended value = ValueOf(name);
            outcome.Calls.append(name).append(1, u' ');
            return value;
        });
        outcome.Value = calc.Calculate();
    });
    return outcome;
}

void RequireKeywords(const TCalc& calc) {
    std::vector<TKeyword*> all, unique;
    if (!FailureOf([&] { calc.GetKeywordsUsed(all, true, true); }).empty()) return;
    calc.GetKeywordsUsed(unique, true, false);
    for (std::size_t i = 0; i < unique.size(); ++i) {
        Require(std::ranges::count(unique, unique[i]) == 1, "no keyword is listed twice");
        Require(std::ranges::count(all, unique[i]) > 0, "each keyword listed is used");
    }
}

TOutcome RunLibrary(const String& expression) {
    TCalc calc;
    TOutcome outcome;
    for (const StringView name : {u"a", u"b", u"c"}) {
        calc.RegisterKeyword(name, [&outcome](TCalc&, const String& keyword, void*) {
            outcome.Calls.append(keyword).append(1, u' ');
            return ValueOf(keyword);
        });
    }
    outcome.Failure = FailureOf([&] {
        calc.Set_Exp(expression);
        outcome.Value = calc.Calculate();
        const String firstCalls = std::exchange(outcome.Calls, String());
        Require(SameValue(calc.Calculate(), outcome.Value), "calculating again gives the same value");
        RequireSame(outcome.Calls, firstCalls, "calculating again uses the same keywords");
    });
    outcome.Exp = calc.Get_Exp();
    RequireKeywords(calc);
    calc.Set_Exp(u"1 + 2");
    Require(calc.Calculate() == 3, "another expression takes the place of any former one");
    return outcome;
}

int CountOf(StringView text, StringView part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != StringView::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

}  // namespace

void RunInput(TInput input) {
    const String expression = TextOf(input);
    if (input.size() > kMaxInput || CountOf(expression, u"StDev") > kMaxStDevs) return;
    const TOutcome reference = RunReference(expression);
    const TOutcome library = RunLibrary(expression);
    RequireSame(library.Failure, reference.Failure, "the same failure as the plain evaluator");
    RequireSame(library.Exp, reference.Exp, "the same cleaned text as the plain evaluator");
    RequireSame(library.Calls, reference.Calls, "the same keywords as the plain evaluator");
    Require(SameValue(library.Value, reference.Value), "the same value as the plain evaluator");
}

}  // namespace Varnholt::Fuzz
