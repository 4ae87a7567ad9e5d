#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <thread>

#include "Platform/Runtime/FormatSettings.h"
#include "Tests/Support/AllocationCount.h"
#include "Tests/Support/FormatSettingsScope.h"
#include "VarnholtLib/Numerics/vrnMath.h"

namespace Varnholt::Test {
namespace {

using ::testing::ElementsAre;

std::string FailureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Exception& failure) {
        return failure.what();
    }
    return "no failure";
}

TKeywordEvent Constant(Extended value) {
    return [value](TCalc&, const String&, void*) { return value; };
}

String Repeated(StringView text, std::size_t times) {
    String result;
    for (std::size_t i = 0; i < times; ++i) result += text;
    return result;
}

String Nested(StringView open, StringView inner, StringView close, std::size_t depth) {
    return Repeated(open, depth) + String(inner) + Repeated(close, depth);
}

// clang-format off
const struct {
    StringView Expression;
    Extended Value;
} valueCases[] = {
    {u"-5 + 3", -2}, {u"3 * -2", -6}, {u"2 - -3", 5}, {u"(-3)", -3}, {u"-2 ^ 2", 4}, {u"n2.5 + 1", -1.5L},
    {u"1+2*3", 7}, {u"( 1+2 )*3", 9}, {u"(1 + 2) - 3", 0}, {u"((2))", 2}, {u"1.5e3", 1500}, {u"0 / 1", 0},
    {u"  1   +   2  ", 3}, {u"\t1 +\t2\n", 3}, {u"2 ^ 3 ^ 2", 64}, {u"10 - 2 - 3", 5}, {u"8 / 4 * 2", 4},
    {u"2 + 3 * 4 ^ 2 / 8 - 1", 7}, {u"(2)\t+ 1", 3}, {u"0.1 + 0.2 - 0.3", 0.1L + 0.2L - 0.3L},
    {u"@sqrt(16) + 1", 5}, {u"@ sqrt (16)", 4}, {u"@sum(1 2 3)", 6}, {u"@sum(1,2,3)", 6}, {u"@sum((1+2),3)", 6},
    {u"@sum(1,n2.5)", -1.5L}, {u"@sum(1,(-2.5))", -1.5L}, {u"@avg(1 2 6)", 3}, {u"@median(1 2 3)", 2},
    {u"@median(3 1 2 4)", 2.5L}, {u"@median(0.1 0.1 0.1)", 0.1F}, {u"@StDev(2 4)", std::sqrt(2.0L)},
    {u"@max(@min(1 2) 3)", 3}, {u"@min(3 n1 2) - @max(3 n1 2)", -4},
};

const struct {
    const char* Message;
    std::vector<StringView> Expressions;
} parseFailures[] = {
    {"Syntax error", {u"", u" \t ", u"()", u"1 + ()", u"@", u"@sum", u"@sum(", u"@su)m(1 2)", u"@sum(1 2", u"@sum(1, 2)",
                      u"@sum(1,,2)", u"(1))", u"(2)7 + 1", u"@sqrt(4)(1)"}},
    {"A bracket set has not been closed", {u"(1 + 2", u"2 * ((1 + 2)", u"(1 2"}},
    {"Operator \"2\" not supported", {u"1 2"}},
    {"Operator \"(2)\" not supported", {u"1 (2)"}},
    {"'+' is not a valid floating point value", {u"1 ++ 2", u"+", u"@sum(1+2,3)"}},
    {"'-(3)' is not a valid floating point value", {u"-(3)"}},
    {"'-$k' is not a valid floating point value", {u"-$k"}},
    {"'2(3)' is not a valid floating point value", {u"2(3)"}},
    {"'1e' is not a valid floating point value", {u"1e-5"}},
    {"'n' is not a valid floating point value", {u"n"}},
    {"A specified function is not supported or registered", {u"@Sum(1 2)", u"@none()"}},
    {"There is a problem with one (or more) function parameters", {u"@sum(1)", u"@sum()", u"@sqrt(1 2)", u"@median(1 2)"}},
};

const struct {
    StringView Expression;
    const char* Message;
} calculationFailures[] = {
    {u"1 / 0", "Attempt to divide by zero"}, {u"(2 / (1 - 1))", "Attempt to divide by zero"},
    {u"1 / 0 +", "Attempt to divide by zero"}, {u"$none + 1", "Keyword \"none\" is not recognised"},
    {u"$none +", "Keyword \"none\" is not recognised"}, {u"$", "Keyword \"\" is not recognised"},
    {u"1 +", "List index out of bounds (2)"}, {u"1 + 2 * 3 +", "List index out of bounds (2)"},
    {u"1 + 2 *", "List index out of bounds (4)"},
};
// clang-format on

TEST(Calc, Values) {
    for (const auto& [expression, value] : valueCases) {
        TCalc calc(expression);
        EXPECT_EQ(calc.Calculate(), value) << ToUtf8(expression);
        EXPECT_EQ(calc.Calculate(), value) << ToUtf8(expression) << ", again";
    }
}

TEST(Calc, Failures) {
    for (const auto& [message, expressions] : parseFailures) {
        for (const StringView expression : expressions) {
            EXPECT_EQ(FailureOf([&] { TCalc calc(expression); }), message) << ToUtf8(expression);
        }
    }
    for (const auto& [expression, message] : calculationFailures) {
        TCalc calc(expression);
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(FailureOf([&] { static_cast<void>(calc.Calculate()); }), message) << ToUtf8(expression);
        }
    }
    TCalc empty;
    EXPECT_EQ(FailureOf([&] { static_cast<void>(empty.Calculate()); }), "Syntax error");
}

TEST(Calc, KeepsTheItemsBeforeAFailure) {
    TCalc calc(u"1 + 1");
    EXPECT_EQ(FailureOf([&] { calc.Set_Exp(u"  3*(4)  5"); }), "Operator \"5\" not supported");
    EXPECT_EQ(calc.Get_Exp(), u"3 * (4) 5");
    EXPECT_EQ(calc.Get_Count(), 3);
    EXPECT_EQ(calc.Calculate(), 12);
    EXPECT_EQ(FailureOf([&] { calc.Set_Exp(u" "); }), "Syntax error");
    EXPECT_EQ(calc.Get_Count(), 0);
}

TEST(Calc, CleaningPasses) {
    const auto cleaned = [](StringView text, void (TCalc::*pass)()) {
        TCalc one;
        try {
            one.Set_Exp(text);
        } catch (const Exception&) {  // the passes under test work on texts that need not parse
        }
        (one.*pass)();
        return ToUtf8(one.Get_Exp());
    };
    EXPECT_EQ(cleaned(u" ( ( 1 +2 ) ) -3", &TCalc::CleanupExp), "((1 + 2)) - 3");
    EXPECT_EQ(cleaned(u"(-1)*-$a", &TCalc::CleanupExp), "( -1) * -$a");
    EXPECT_EQ(cleaned(u"2--3", &TCalc::CleanupExp), "2 - -3");

    TCalc text(u"1 - 2");
    EXPECT_TRUE(text.CleanupIsLastItemADigit(3));
    EXPECT_FALSE(text.CleanupIsLastItemADigit(5));
    EXPECT_FALSE(text.CleanupIsLastItemADigit(1));
    EXPECT_FALSE(text.CleanupIsLastItemADigit(-7));
    EXPECT_TRUE(text.CleanupIsLastItemADigit(1000));
    text.CleanupMakeSureOneSpaceAround(u'2');
    EXPECT_EQ(text.Get_Exp(), u"1 - 2");
}

TEST(Calc, NumbersFollowTheDecimalSeparator) {
    const TFormatSettingsScope comma(u',');
    TCalc calc;
    EXPECT_EQ(FailureOf([&] { calc.Set_Exp(u"1,5 * 2"); }), "no failure");
    EXPECT_EQ(calc.Calculate(), 3);
    EXPECT_EQ(FailureOf([&] { calc.Set_Exp(u"1.5"); }), "'1.5' is not a valid floating point value");
}

TEST(Calc, ItemsShowHowTheExpressionWasCut) {
    TCalc calc(u"$rain * (1 + 2) - @sum((3 + 4),5)");
    ASSERT_EQ(calc.Get_Count(), 5);
    EXPECT_EQ(dynamic_cast<TKeywordNum&>(calc.GetItems(0)).GetKeyword(), u"rain");
    EXPECT_EQ(dynamic_cast<TOperator&>(calc.GetItems(1)).GetStr(), u"*");
    auto& brackets = dynamic_cast<TBrackets&>(calc.GetItems(2));
    EXPECT_EQ(brackets.GetNewCalc().Get_Exp(), u"1 + 2");
    EXPECT_EQ(brackets.GetNewCalc().GetCalc(), &calc);
    EXPECT_EQ(brackets.Get_Number(), 3);
    auto& function = dynamic_cast<TFunctionNum&>(calc.GetItems(4));
    EXPECT_EQ(function.GetExp(), u"(3 + 4),5");
    EXPECT_EQ(function.GetParams().at(0)->Get_Exp(), u"(3 + 4)");
    EXPECT_EQ(function.Get_Number(), 12);
    EXPECT_EQ(FailureOf([&] { static_cast<void>(calc.GetItems(5)); }), "List index out of bounds (5)");

    // An inner expression that is set anew counts from the next calculation on.
    calc.RegisterKeyword(u"rain", Constant(2));
    EXPECT_EQ(calc.Calculate(), -6);
    brackets.GetNewCalc().Set_Exp(u"$rain * 5");
    EXPECT_EQ(calc.Calculate(), 8);
    function.GetParams().at(1)->Set_Exp(u"6");
    EXPECT_EQ(calc.Calculate(), 7);
}

TEST(Calc, CallsKeywordsInTheOrderOfReduction) {
    TCalc calc;
    std::vector<std::string> calls;
    for (const StringView name : {u"a", u"b", u"c", u"d", u"e"}) {
        calc.RegisterKeyword(name, [&](TCalc&, const String& keyword, void*) {
            calls.push_back(ToUtf8(keyword));
            return Extended(2);
        });
    }
    const auto callsOf = [&](StringView expression) {
        calls.clear();
        calc.Set_Exp(expression);
        static_cast<void>(calc.Calculate());
        return calls;
    };
    EXPECT_THAT(callsOf(u"$a + $b * $c ^ $d - $e"), ElementsAre("c", "d", "b", "a", "e"));
    EXPECT_THAT(callsOf(u"$a * ($b + $c) + $d"), ElementsAre("a", "b", "c", "d"));
    EXPECT_THAT(callsOf(u"$a + $b * $c + $d * $e"), ElementsAre("b", "c", "d", "e", "a"));
    EXPECT_THAT(callsOf(u"@min($a,($b*$c)) - $d"), ElementsAre("a", "b", "c", "d"));
    EXPECT_THAT(callsOf(u"@StDev($a,$b) * $c"), ElementsAre("a", "b", "a", "b", "c"));
    EXPECT_THAT(callsOf(u"@median($a,$b,$c)"), ElementsAre("a", "b", "c"));
}

TEST(Calc, FindsKeywordsUpTheChain) {
    TCalc top;
    TCalc calc(&top);
    int parameter = 0;
    const TCalc* calledOn = nullptr;
    void* calledWith = nullptr;
    calc.Set_Exp(u"(($x)) + 1");
    EXPECT_EQ(FailureOf([&] { static_cast<void>(calc.Calculate()); }), "Keyword \"x\" is not recognised");

    top.RegisterKeyword(u"x", &parameter, [&](TCalc& on, const String&, void* param) {
        calledOn = &on;
        calledWith = param;
        return Extended(1);
    });
    EXPECT_EQ(calc.Calculate(), 2);
    EXPECT_EQ(calledOn, &top);
    EXPECT_EQ(calledWith, &parameter);

    calc.RegisterKeyword(u"x", Constant(10));  // nearer than the parent's
    EXPECT_EQ(calc.Calculate(), 11);
    calc.RegisterKeyword(u"x", Constant(100));  // a second one is never found
    EXPECT_EQ(calc.Calculate(), 11);
    auto& group = dynamic_cast<TBrackets&>(calc.GetItems(0)).GetNewCalc();
    group.RegisterKeyword(u"x", Constant(20));
    EXPECT_EQ(calc.Calculate(), 21);
    EXPECT_EQ(calc.FindKeyword(u"X"), nullptr);
    EXPECT_EQ(FailureOf([&] { calc.RegisterKeyword(u"y", nullptr); }), "A keyword needs a callback: y");
}

TEST(Calc, FunctionsDecideHowOftenTheyCalculate) {
    TCalc top;
    top.RegisterFunction(u"twice", 1, 1, [](const TFunction&, const TFunctionParams& params) {
        static_cast<void>(params.Get_Calc(0).Calculate());
        return params.Get_Calc(0).Calculate() * 2;
    });
    top.RegisterFunction(u"count", -1, -1, [](const TFunction&, const TFunctionParams& params) {
        return Extended(params.Get_Count());
    });
    top.RegisterFunction(u"sum", 0, 0, [](const TFunction&, const TFunctionParams&) { return Extended(0); });
    TCalc calc(&top);
    int calls = 0;
    calc.RegisterKeyword(u"x", [&](TCalc&, const String&, void*) { return Extended(++calls); });
    calc.Set_Exp(u"@twice($x) + @count() + @count(1,2) + @sum(1,1)");
    EXPECT_EQ(calc.Calculate(), 8);
    EXPECT_EQ(calls, 2);

    EXPECT_EQ(FailureOf([&] { calc.Set_Exp(u"@later(1)"); }),
              "A specified function is not supported or registered");
    calc.RegisterFunction(u"later", 1, 1, [](const TFunction&, const TFunctionParams& params) {
        return params.Get_Calc(1).Calculate();
    });
    calc.Set_Exp(u"@later(1)");
    EXPECT_EQ(FailureOf([&] { static_cast<void>(calc.Calculate()); }), "List index out of bounds (1)");
    EXPECT_EQ(calc.Get_FunctionCount(), 8);
    EXPECT_EQ(calc.Get_Function(0).GetName(), u"sum");
    EXPECT_EQ(calc.Get_Function(7).GetName(), u"later");
}

TEST(Calc, BuiltInsCalledDirectly) {
    TCalc one(u"1");
    const TFunction& median = *one.FindFunction(u"median");
    const TCalcList two{&one, &one};
    EXPECT_EQ(FailureOf([&] { static_cast<void>(TCalc::FuncMedian(median, TFunctionParams(two))); }),
              "Operator \"Not enough variables for calculation.\" not supported");
    const TCalcList withNone{&one, &one, nullptr};
    const std::string problem = "There is a problem with one (or more) function parameters";
    EXPECT_EQ(FailureOf([&] { static_cast<void>(median.Execute(withNone)); }), problem);
    EXPECT_EQ(FailureOf([&] { static_cast<void>(median.Execute(two)); }), problem);
    EXPECT_EQ(FailureOf([&] { static_cast<void>(TCalc::FuncMin(median, TFunctionParams({}))); }), problem);
    EXPECT_EQ(ECalcException(static_cast<TCalcError>(99)).GetMessage(), u"Unknown error");
}

TEST(Calc, KeywordsUsed) {
    TCalc calc;
    int parameter = 0;
    for (const StringView name : {u"a", u"b", u"c"}) calc.RegisterKeyword(name, &parameter, Constant(1));
    calc.RegisterKeyword(u"bare", Constant(1));
    const auto used = [&](StringView expression, bool withoutParam, bool duplicates) {
        std::vector<TKeyword*> list;
        calc.Set_Exp(expression);
        calc.GetKeywordsUsed(list, withoutParam, duplicates);
        std::string names;
        for (const TKeyword* keyword : list) names += ToUtf8(keyword->GetKeyword()) + ' ';
        return names;
    };
    EXPECT_EQ(used(u"$a + $b + $a + $c", true, true), "a b a c ");
    EXPECT_EQ(used(u"$a + $b + $a + $c", true, false), "a b ");
    EXPECT_EQ(used(u"$a + $bare + $c", false, true), "a ");
    EXPECT_EQ(used(u"$a + ($a + $b) + $c", true, false), "a c ");
    EXPECT_EQ(used(u"@sum(($bare+$a),$b) + (2 * ($c))", false, true), "b c ");
    EXPECT_EQ(FailureOf([&] { used(u"$a + $z", true, true); }), "Keyword is not recognised");

    TCalc child(&calc, u"$b");
    calc.Set_Exp(u"$a");
    std::vector<TKeyword*> list;
    child.GetKeywordsUsed(list, true, true);
    EXPECT_EQ(list.size(), 2U);
    child.GetKeywordsUsed(list, true, true, false);
    EXPECT_EQ(list.size(), 3U);
}

TEST(Calc, DepthAndLength) {
    const struct {
        const char* Name;
        String Expression;
        Extended Value;
    } cases[] = {
        {"10000 brackets", Nested(u"(", u"1 + 1", u")", 10000), 2},
        {"1000000 brackets", Nested(u"(", u"1", u")", 1000000), 1},
        {"deep sums", Nested(u"(1+", u"1", u")", 200000), 200001},
        {"deep functions", Nested(u"@max(1,", u"7", u")", 200000), 7},
        {"deep pure deviations", Nested(u"@StDev(1,", u"3", u")", 200), 0},
        {"a long sum", u"0" + Repeated(u"+1", 500000), 500000},
        {"long products", u"0" + Repeated(u" + 2 * 3", 200000), 1200000},
        {"many parameters", u"@sum(" + Repeated(u"2,", 100000) + u"0)", 200000},
        {"a median of many", u"@median(" + Repeated(u"4,", 9999) + u"4)", 4},
        {"ten million characters", u"1" + String(9999998, u' ') + u"+ 1", 2},
        {"a long number", String(1000000, u'0') + u"5", 5},
    };
    for (const auto& [name, expression, value] : cases) {
        TCalc calc(expression);
        if (value != 0) {
            EXPECT_EQ(calc.Calculate(), value) << name;
        } else {
            EXPECT_TRUE(std::isfinite(calc.Calculate())) << name;
        }
        std::vector<TKeyword*> none;
        calc.GetKeywordsUsed(none, true, true);
    }
    TCalc deep;
    EXPECT_EQ(FailureOf([&] { deep.Set_Exp(Repeated(u"(", 1000000) + u"1"); }),
              "A bracket set has not been closed");
    EXPECT_EQ(FailureOf([&] { deep.Set_Exp(Repeated(u"(", 100000) + u"x" + Repeated(u")", 100000)); }),
              "'x' is not a valid floating point value");
}

TEST(Calc, CallsNestToALimit) {
    TCalc calc;
    calc.RegisterFunction(u"same", 1, 1, [](const TFunction&, const TFunctionParams& params) {
        return params.Get_Calc(0).Calculate();
    });
    calc.Set_Exp(Nested(u"@same(", u"3", u")", TCalc::kMaxCallDepth - 1));
    EXPECT_EQ(calc.Calculate(), 3);
    calc.Set_Exp(Nested(u"@same(", u"3", u")", 100000));
    EXPECT_EQ(FailureOf([&] { static_cast<void>(calc.Calculate()); }),
              "Function calls are nested too deeply");

    TCalc self;
    self.RegisterKeyword(u"self", [](TCalc& on, const String&, void*) { return on.Calculate(); });
    self.Set_Exp(u"1 + $self");
    EXPECT_EQ(FailureOf([&] { static_cast<void>(self.Calculate()); }),
              "Function calls are nested too deeply");
}

TEST(Calc, CallbacksMayChangeTheEvaluator) {
    TCalc calc;
    int calls = 0;
    calc.RegisterKeyword(u"a", [&](TCalc& on, const String&, void*) {
        if (++calls == 1) {
            on.RegisterKeyword(u"late", Constant(5));
            on.Set_Exp(u"100");
        }
        return Extended(1);
    });
    calc.Set_Exp(u"$a + ($late + ($a * 2))");
    EXPECT_EQ(calc.Calculate(), 8);
    EXPECT_EQ(calc.Calculate(), 100);

    // The same when an item is asked by itself: what is replaced lives on until the callbacks return.
    TCalc asked;
    asked.RegisterKeyword(u"x", [](TCalc& on, const String&, void*) {
        on.Set_Exp(u"7");
        return Extended(2);
    });
    asked.Set_Exp(u"@sum($x,$x,$x)");
    EXPECT_EQ(dynamic_cast<TFunctionNum&>(asked.GetItems(0)).Get_Number(), 6);
    EXPECT_EQ(asked.Calculate(), 7);
}

TEST(Calc, AGroupThatBecomesImpureIsCalculatedAgain) {
    TCalc calc(u"(1) + 2");
    Extended x = 1;
    calc.RegisterKeyword(u"x", [&](TCalc&, const String&, void*) { return x; });
    EXPECT_EQ(calc.Calculate(), 3);
    TCalc& group = dynamic_cast<TBrackets&>(calc.GetItems(0)).GetNewCalc();
    EXPECT_EQ(FailureOf([&] { group.Set_Exp(u"$x 5"); }), "Operator \"5\" not supported");
    EXPECT_EQ(calc.Calculate(), 3);
    x = 10;
    EXPECT_EQ(calc.Calculate(), 12);
}

TEST(Calc, CalculatesWithoutAllocating) {
    TCalc calc;
    double value = 2;
    calc.RegisterKeyword(u"temperature_of_day", &value, [](TCalc&, const String&, void* param) {
        return Extended(*static_cast<double*>(param));
    });
    calc.RegisterFunction(u"same", 1, 1, [](const TFunction&, const TFunctionParams& params) {
        return params.Get_Calc(0).Calculate();
    });
    const String wide = u"0" + Repeated(u" + $temperature_of_day * 2", 100);
    const String median = u"@median(" + Repeated(u"$temperature_of_day,", 100) + u"1)";
    for (const String& expression :
         {String(
              u"($temperature_of_day + 1) / @StDev($temperature_of_day,1) - @same(($temperature_of_day^2))"),
          wide, median}) {
        calc.Set_Exp(expression);
        const Extended first = calc.Calculate();
        const std::int64_t before = AllocationCount();
        for (int i = 0; i < 3; ++i) EXPECT_EQ(calc.Calculate(), first);
        EXPECT_EQ(AllocationCount() - before, 0) << ToUtf8(expression.substr(0, 60));
    }
}

TEST(Calc, IndependentEvaluatorsOnSeveralThreads) {
    TCalc shared;
    shared.RegisterKeyword(u"k", Constant(3));
    std::atomic<int> right{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < 200; ++i) {
                TCalc calc(&shared);
                calc.RegisterKeyword(u"t", Constant(t));
                calc.Set_Exp(u"@max($k,$t) * ($k + @median($t,$t,$k)) + 1.25");
                if (calc.Calculate() == Extended(3) * (3 + t) + 1.25L) ++right;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(right, 4 * 200);
}

}  // namespace
}  // namespace Varnholt::Test
