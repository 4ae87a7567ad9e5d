#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <thread>

#include "Platform/Runtime/FormatSettings.h"
#include "Tests/Support/AllocationCount.h"
#include "Tests/Support/FormatSettingsScope.h"
#include "Tests/Support/Raised.h"
#include "VarnholtLib/Numerics/vrnMath.h"

namespace Varnholt::Test {
namespace {

using ::testing::ElementsAre;

TKeywordEvent Constant(Extended value) {
    return [value](TCalc&, const String&, void*) { return value; };
}

Extended Same(const TFunction&, const TFunctionParams& params) {
    return params.Get_Calc(0).Calculate();
}

TCalc& GroupOf(TCalc& calc) {
    return dynamic_cast<TBrackets&>(calc.GetItems(0)).GetNewCalc();
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
const std::pair<StringView, Extended> valueCases[] = {
    {u"-5 + 3", -2}, {u"3 * -2", -6}, {u"2 - -3", 5}, {u"-2 ^ 2", 4}, {u"n2.5 + 1", -1.5L}, {u"1+2*3", 7},
    {u"((2))", 2}, {u"(1 + 2) - 3", 0}, {u"1.5e3", 1500}, {u"\t1 +\t2\n", 3}, {u"2 ^ 3 ^ 2", 64},
    {u"2 + 3 * 4 ^ 2 / 8 - 1", 7}, {u"0.1 + 0.2 - 0.3", 0.1L + 0.2L - 0.3L}, {u"@ sqrt (16)", 4},
    {u"@sum(n2.5,(1-2))", -3.5L}, {u"@avg(1 2 6)", 3}, {u"@median(1 2 3)", 2}, {u"@median(3 1 2 4)", 2.5L},
    {u"@median(0.1 0.1 0.1)", 0.1F}, {u"@StDev(2 4)", std::sqrt(2.0L)}, {u"@min(3 n1 2) - @max(3 n1 2)", -4},
};

const std::pair<StringView, std::vector<StringView>> parseFailures[] = {
    {u"Syntax error", {u" \t ", u"1 + ()", u"@", u"@su)m(1 2)", u"@sum(1 2", u"@sum(1,,2)", u"(1))", u"(2)7 + 1",
                       u"@sqrt(4)(1)"}},
    {u"A bracket set has not been closed", {u"2 * ((1 + 2)", u"(1 2"}},
    {u"Operator \"2\" not supported", {u"1 2"}},
    {u"A specified function is not supported or registered", {u"@Sum(1 2)", u"@none()"}},
    {u"There is a problem with one (or more) function parameters", {u"@sum(1)", u"@sum()", u"@sqrt(1 2)", u"@median(1 2)"}},
};

const std::pair<StringView, StringView> calculationFailures[] = {
    {u"0 / 0 +", u"Attempt to divide by zero"}, {u"$none +", u"Keyword \"none\" is not recognised"},
    {u"$", u"Keyword \"\" is not recognised"},
}, missingOperands[] = {
    {u"1 + 2 * 3 +", u"List index out of bounds (2)"}, {u"1 + 2 *", u"List index out of bounds (4)"}},
   noNumbers[] = {{u"@sum(1+2,3)", u"+"}, {u"-(3)", u"-(3)"}, {u"1e-5", u"1e"}, {u"n", u"n"}};
// clang-format on

void Calculate(TCalc& calc) {
    static_cast<void>(calc.Calculate());
}

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
            EXPECT_EQ(Raised<ECalcException>([&] { TCalc calc(expression); }), message) << ToUtf8(expression);
        }
    }
    for (const auto& [expression, number] : noNumbers) {
        const String message = u"'" + String(number) + u"' is not a valid floating point value";
        EXPECT_EQ(Raised<EConvertError>([&, &expression = expression] { TCalc calc(expression); }), message)
            << ToUtf8(expression);
    }
    for (const auto& [expression, message] : calculationFailures) {
        TCalc calc(expression);
        EXPECT_EQ(Raised<ECalcException>([&] { Calculate(calc); }), message) << ToUtf8(expression);
    }
    for (const auto& [expression, message] : missingOperands) {
        TCalc calc(expression);
        EXPECT_EQ(Raised<EListError>([&] { Calculate(calc); }), message) << ToUtf8(expression);
    }
}

TEST(Calc, KeepsTheItemsBeforeAFailure) {
    TCalc calc(u"1 + 1");
    ExpectRaised<ECalcException>({{[&] { calc.Set_Exp(u"  3*(4)  5"); }, u"Operator \"5\" not supported"}});
    EXPECT_EQ(calc.Get_Exp(), u"3 * (4) 5");
    EXPECT_EQ(calc.Calculate(), 12);
    ExpectRaised<ECalcException>(
        {{[&] { calc.Set_Exp(u" "); }, u"Syntax error"}, {[&] { Calculate(calc); }, u"Syntax error"}});
    EXPECT_EQ(calc.Get_Count(), 0);
}

TEST(Calc, NumbersFollowTheDecimalSeparator) {
    const TFormatSettingsScope comma(u',');
    TCalc calc(u"1,5 * 2");
    EXPECT_EQ(calc.Calculate(), 3);
    ExpectRaised<EConvertError>(
        {{[&] { calc.Set_Exp(u"1.5"); }, u"'1.5' is not a valid floating point value"}});
}

TEST(Calc, ItemsShowHowTheExpressionWasCut) {
    TCalc calc(u"$rain * (1 + 2) - @sum((3 + 4),5)");
    EXPECT_EQ(dynamic_cast<TKeywordNum&>(calc.GetItems(0)).GetKeyword(), u"rain");
    EXPECT_EQ(dynamic_cast<TOperator&>(calc.GetItems(1)).GetStr(), u"*");
    auto& brackets = dynamic_cast<TBrackets&>(calc.GetItems(2));
    EXPECT_EQ(brackets.GetNewCalc().Get_Exp(), u"1 + 2");
    auto& function = dynamic_cast<TFunctionNum&>(calc.GetItems(4));
    EXPECT_EQ(function.GetParams().at(0)->Get_Exp(), u"(3 + 4)");
    ExpectRaised<EListError>(
        {{[&] { static_cast<void>(calc.GetItems(-1)); }, u"List index out of bounds (-1)"},
         {[&] { static_cast<void>(calc.Get_Function(7)); }, u"List index out of bounds (7)"},
         {[&] { static_cast<void>(calc.Get_Keyword(0)); }, u"List index out of bounds (0)"}});

    // An inner expression that is set anew, even in part, counts from the next calculation on.
    calc.RegisterKeyword(u"rain", Constant(2));
    EXPECT_EQ(calc.Calculate(), -6);
    EXPECT_THROW(brackets.GetNewCalc().Set_Exp(u"$rain * 5 5"), ECalcException);
    EXPECT_EQ(calc.Calculate(), 8);
}

TEST(Calc, FindsKeywordsUpTheChain) {
    TCalc base;
    TCalc top(&base), calc(&top);
    int parameter = 0;
    const TCalc* calledOn = nullptr;
    void* calledWith = nullptr;
    calc.Set_Exp(u"(($x)) + 1");
    ExpectRaised<ECalcException>({{[&] { Calculate(calc); }, u"Keyword \"x\" is not recognised"}});
    base.RegisterKeyword(u"x", Constant(5));
    EXPECT_EQ(calc.Calculate(), 6);
    top.RegisterKeyword(u"x", &parameter, [&](TCalc& on, const String&, void* param) {
        calledOn = &on;
        calledWith = param;
        return Extended(1);
    });
    EXPECT_EQ(calc.Calculate(), 2);
    EXPECT_TRUE(calledOn == &top && calledWith == &parameter);

    calc.RegisterKeyword(u"x", Constant(10));  // nearer than the parent's
    EXPECT_EQ(calc.Calculate(), 11);
    calc.RegisterKeyword(u"x", Constant(100));  // a second one is never found
    EXPECT_EQ(calc.Calculate(), 11);
    TCalc& group = GroupOf(calc);
    group.RegisterKeyword(u"x", Constant(20));
    EXPECT_EQ(calc.Calculate(), 21);
    EXPECT_EQ(calc.FindKeyword(u"X"), nullptr);
    std::vector<TKeyword*> used;
    calc.GetKeywordsUsed(used, true, true);
    EXPECT_THAT(used, ElementsAre(&group.Get_Keyword(0)));
    ExpectRaised<EArgumentNilException>(
        {{[&] { calc.RegisterKeyword(u"y", nullptr); }, u"A keyword needs a callback: y"},
         {[&] { calc.RegisterFunction(u"y", 0, 0, nullptr); }, u"A function needs a callback: y"},
         {[&] { calc.RegisterVariable(u"y", static_cast<float*>(nullptr)); },
          u"A variable needs an address: y"}});

    // Without the group its registration is gone as well.
    calc.Set_Exp(u"($x)");
    EXPECT_EQ(calc.Calculate(), 10);
}

TEST(Calc, ReadsVariables) {
    double day = 3;
    float rain = 0.1F;
    Extended wind = 1 / 3.0L;
    TCalc base, calc(&base);
    base.RegisterVariable(u"day", &day);
    base.RegisterVariable(u"rain", &rain);
    base.RegisterVariable(u"wind", &wind);
    EXPECT_EQ(base.FindKeyword(u"day")->GetVariable(), &day);
    EXPECT_TRUE(base.FindKeyword(u"rain")->GetParam() == &rain &&
                base.FindKeyword(u"rain")->GetVariable() == nullptr);
    calc.Set_Exp(u"$rain + $wind");
    EXPECT_EQ(calc.Calculate(), Extended(0.1F) + 1 / 3.0L);
    calc.Set_Exp(u"$day * $day");
    day = 4;
    EXPECT_EQ(calc.Calculate(), 16);
    calc.RegisterKeyword(u"day", Constant(5));  // nearer than the parent's
    EXPECT_EQ(calc.Calculate(), 25);

    // A list too long to nest, with values that wait for later ones.
    TCalc longer;
    longer.RegisterVariable(u"day", &day);
    longer.RegisterKeyword(u"two", Constant(2));
    String sum = u"0";
    for (int i = 0; i < 300; ++i) sum += i % 2 == 0 ? u" + $day / 8" : u" + $two ^ 3 * $day";
    longer.Set_Exp(sum);
    EXPECT_EQ(longer.Calculate(), 150 * 0.5L + 150 * 32);
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
    EXPECT_EQ(top.Get_Function(0).GetName() + top.Get_Function(7).GetName(), u"sumtwice");
}

TEST(Calc, BuiltInsCalledDirectly) {
    TCalc one(u"1");
    const TFunction& median = *one.FindFunction(u"median");
    const TCalcList two{&one, &one};
    const TCalcList withNone{&one, &one, nullptr};
    ExpectRaised<EListError>(
        {{[&] { static_cast<void>(TFunctionParams(two).Get_Calc(2)); }, u"List index out of bounds (2)"}});
    const StringView problem = u"There is a problem with one (or more) function parameters";
    ExpectRaised<ECalcException>({{[&] { TCalc::FuncMedian(median, TFunctionParams(two)); },
                                   u"Operator \"Not enough variables for calculation.\" not supported"},
                                  {[&] { static_cast<void>(median.Execute(withNone)); }, problem},
                                  {[&] { TCalc::FuncMin(median, TFunctionParams({})); }, problem}});
}

TEST(Calc, ItemsFromTexts) {
    TCalc calc;
    calc.RegisterKeyword(u"x", Constant(4));
    const TBrackets group(calc, u" $x*(2) ");
    EXPECT_EQ(group.Get_Number(), 8);
    TFunctionNum call(calc, u"max", u" (1 + 2),$x 2 ");
    call.GetParams().at(2)->Set_Exp(u"9");
    EXPECT_EQ(call.Get_Number(), 9);
    call.Parse();  // the parameters of the text again
    EXPECT_EQ(call.Get_Number(), 4);
    ExpectRaised<ECalcException>({{[&] { TBrackets(calc, u" "); }, u"Syntax error"},
                                  {[&] { TFunctionNum(calc, u"sum", u""); },
                                   u"There is a problem with one (or more) function parameters"}});
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
    EXPECT_EQ(used(u"$a + ($a + $b) + $c", true, false), "a c ");
    EXPECT_EQ(used(u"@sum(($bare+$a),$b) + (2 * ($c))", false, true), "b c ");
    ExpectRaised<ECalcException>({{[&] { used(u"$a + $z", true, true); }, u"Keyword is not recognised"}});

    const TCalc child(&calc, u"$b");
    calc.Set_Exp(u"$a");
    std::vector<TKeyword*> list;
    child.GetKeywordsUsed(list, true, true);
    child.GetKeywordsUsed(list, true, true, false);
    EXPECT_EQ(list.size(), 3U) << "two with the parent's, one without";
}

TEST(Calc, DepthAndLength) {
    const struct {
        const char* Name;
        String Expression;
        Extended Value;
    } cases[] = {
        {"1000000 brackets", Nested(u"(", u"1", u")", 1000000), 1},
        {"deep sums", Nested(u"(1+", u"1", u")", 200000), 200001},
        {"deep functions", Nested(u"@max(1,", u"7", u")", 200000), 7},
        {"deep pure deviations", Nested(u"@StDev(0,", u"0", u")", 200), 0},
        {"a long sum", u"0" + Repeated(u"+1", 500000), 500000},
        {"a long number", String(1000000, u'0') + u"5", 5},
    };
    for (const auto& [name, expression, value] : cases) {
        TCalc calc(expression);
        EXPECT_EQ(calc.Calculate(), value) << name;
        std::vector<TKeyword*> none;
        calc.GetKeywordsUsed(none, true, true);
    }
    TCalc deep;
    ExpectRaised<ECalcException>(
        {{[&] { deep.Set_Exp(Repeated(u"(", 1000000) + u"1"); }, u"A bracket set has not been closed"}});
}

TEST(Calc, CallsNestToALimit) {
    TCalc calc;
    calc.RegisterFunction(u"same", 1, 1, Same);
    calc.Set_Exp(Nested(u"@same(", u"3", u")", TCalc::kMaxCallDepth - 1));
    EXPECT_EQ(calc.Calculate(), 3);
    calc.Set_Exp(Nested(u"@same(", u"3", u")", 100000));
    ExpectRaised<Exception>({{[&] { Calculate(calc); }, u"Function calls are nested too deeply"}});

    TCalc self;
    self.RegisterKeyword(u"self", [](TCalc& on, const String&, void*) { return on.Calculate(); });
    self.Set_Exp(u"1 + $self");
    ExpectRaised<Exception>({{[&] { Calculate(self); }, u"Function calls are nested too deeply"}});
}

TEST(Calc, CallbacksMayChangeTheEvaluator) {
    TCalc calc;
    int calls = 0;
    calc.RegisterKeyword(u"a", [&](TCalc& on, const String&, void*) {
        if (++calls == 1) {
            on.RegisterKeyword(u"late", Constant(5));
            dynamic_cast<TBrackets&>(on.GetItems(2)).GetNewCalc().RegisterKeyword(u"a", Constant(10));
            on.Set_Exp(u"100");
        }
        return Extended(1);
    });
    calc.Set_Exp(u"$a + ($late + ($a * 2))");
    EXPECT_EQ(calc.Calculate(), 1 + 5 + 10 * 2);
    EXPECT_EQ(calc.Calculate(), 100);
}

TEST(Calc, WhatACallbackParsesTakesEffect) {
    const Extended deviation = 1 + std::sqrt(8.0L);
    const std::tuple<StringView, Extended, Extended> cases[] = {{u"$x + (2)", 3, 6},
                                                                {u"$x + @sum(2,0)", 3, 6},
                                                                {u"$x + @same((2))", 6, 6},
                                                                {u"$x + @StDev(1,1)", deviation, deviation}};
    for (const auto& [expression, now, next] : cases) {
        TCalc calc;
        calc.RegisterFunction(u"same", 1, 1, Same);
        calc.RegisterKeyword(u"x", [](TCalc& on, const String&, void*) {
            TCalcObj& item = on.GetItems(2);
            auto* const call = dynamic_cast<TFunctionNum*>(&item);
            TCalc& inner = call ? *call->GetParams()[0] : dynamic_cast<TBrackets&>(item).GetNewCalc();
            inner.Set_Exp(u"5");
            return Extended(1);
        });
        calc.Set_Exp(expression);
        EXPECT_EQ(calc.Calculate(), now) << ToUtf8(expression);
        EXPECT_EQ(calc.Calculate(), next) << ToUtf8(expression);
    }
}

TEST(Calc, CalculatesWithoutAllocating) {
    TCalc calc;
    calc.RegisterKeyword(u"temperature", Constant(2));
    calc.RegisterFunction(u"same", 1, 1, Same);
    const String expressions[] = {u"($temperature + 1) / @StDev($temperature,1) - @same(($temperature^2))",
                                  u"0" + Repeated(u" + $temperature * 2", 100),
                                  u"@median(" + Repeated(u"$temperature,", 100) + u"1)"};
    for (const String& expression : expressions) {
        calc.Set_Exp(expression);
        const Extended first = calc.Calculate();
        const std::int64_t before = AllocationCount();
        for (int i = 0; i < 3; ++i) EXPECT_EQ(calc.Calculate(), first);
        EXPECT_EQ(AllocationCount() - before, 0) << ToUtf8(expression.substr(0, 60));
    }
}

// Each public operation with its first allocation failing, then its second one, and so on until it succeeds:
// a failure leaves what was there before, and nothing is lost or used after it was freed.
TEST(Calc, FailedAllocations) {
    // clang-format off
    const struct TOperation {
        const char* Name;
        std::function<void(TCalc&)> Run;
        bool ReleasesItems;
        Extended Value;  // of the evaluator after success
    } operations[] = {
        {"TCalc", [](TCalc& calc) { TCalc(&calc, u"($x) + @same(@StDev($x,(1 + $none)))"); }, false, 12},
        {"Set_Exp", [](TCalc& calc) { calc.Set_Exp(u"($x + 1) * @same(@median(1,($x),3)) ^ 2 + 1"); }, true, 13},
        {"Set_Exp of a group", [](TCalc& calc) { GroupOf(calc).Set_Exp(u"@avg(8,($x))"); }, true, 15},
        {"RegisterKeyword", [](TCalc& calc) { calc.RegisterKeyword(u"new", Constant(1)); }, false, 12},
        {"RegisterKeyword on a group", [](TCalc& calc) { GroupOf(calc).RegisterKeyword(u"x", Constant(9)); }, false, 19},
        {"RegisterFunction", [](TCalc& calc) { calc.RegisterFunction(u"new", 0, 0, Same); }, false, 12},
        {"GetKeywordsUsed", [](TCalc& calc) { std::vector<TKeyword*> list; calc.GetKeywordsUsed(list, true, false); }, false, 12},
        {"Calculate", [](TCalc& calc) { Calculate(calc); }, false, 12},
        {"TBrackets", [](TCalc& calc) { TBrackets(calc, u"$x + 1"); }, false, 12},
        {"TFunctionNum", [](TCalc& calc) { TFunctionNum(calc, u"sum", u"1,$x"); }, false, 12},
        {"TFunctionNum::Parse", [](TCalc& calc) { dynamic_cast<TFunctionNum&>(calc.GetItems(2)).Parse(); }, false, 12},
    };
    // clang-format on
    for (const TOperation& row : operations) {
        SCOPED_TRACE(row.Name);
        std::unique_ptr<TCalc> calc;
        int registered = 0;
        bool isDone = false;
        const auto prepare = [&] {
            isDone = false;
            calc = std::make_unique<TCalc>();
            calc->RegisterFunction(u"same", 1, 1, Same);
            calc->Set_Exp(u"($x) + @sum(@same($x),8)");
            calc->RegisterKeyword(u"x", Constant(2));
            registered = calc->Get_KeywordCount() + calc->Get_FunctionCount();
        };
        prepare();
        FailEachAllocation(
            [&] {
                row.Run(*calc);
                isDone = true;
            },
            [&] {
                if (!isDone) {
                    EXPECT_EQ(calc->Get_KeywordCount() + calc->Get_FunctionCount(), registered);
                    if (row.ReleasesItems) calc->Set_Exp(u"($x) + @sum(@same($x),8)");
                    EXPECT_EQ(calc->Calculate(), 12);
                    row.Run(*calc);
                }
                EXPECT_EQ(calc->Calculate(), row.Value);
                prepare();
            });
    }
}

TEST(Calc, IndependentEvaluatorsOnSeveralThreads) {
    TCalc shared;
    shared.RegisterKeyword(u"k", Constant(3));
    std::vector<std::jthread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&shared, t] {
            for (int i = 0; i < 200; ++i) {
                TCalc calc(&shared);
                calc.RegisterKeyword(u"t", Constant(t));
                calc.Set_Exp(u"@max($k,$t) * ($k + @median($t,$t,$k)) + 1.25");
                ASSERT_EQ(calc.Calculate(), Extended(3) * (3 + t) + 1.25L) << t;
            }
        });
    }
}

}  // namespace
}  // namespace Varnholt::Test
