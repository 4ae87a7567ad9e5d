#include <malloc.h>
#include <muParser.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "VarnholtLib/Numerics/vrnMath.h"

/// The evaluator compared with muParser, in double, and with hand-written C++ in long double that is called
/// through a function pointer. All values come through callbacks: for us and for the hand-written code the
/// keyword callbacks that are registered on the evaluator, for muParser functions without arguments that take
/// user data. A second evaluator has the same values as variables.
///
/// The contestants take turns for many rounds, so that other load on the machine affects all of them alike; the
/// lower decile of each contestant's times counts.
///
/// At the end come the memory that a bracket keeps and the stack that the deepest nesting of calls takes.
namespace {

using Varnholt::Extended;
using Varnholt::String;
using Varnholt::StringView;
using Varnholt::TCalc;
using Varnholt::TKeywordEvent;

int rounds = 200;  // --rounds N
constexpr int kCalculations = 2000;
constexpr int kParses = 200;

/// The application's data: what the keywords stand for.
struct TValue {
    const char* Name;
    double Number;
};
std::array<TValue, 6> values{
    {{"a", 3.25}, {"b", 1.5}, {"c", 7}, {"tmax", 12.8}, {"tmin", 5}, {"rain", 10.9}}};

Extended AskValue(TCalc&, const String&, void* param) {
    return static_cast<Extended>(static_cast<const TValue*>(param)->Number);
}

/// What the hand-written code knows of a keyword: the callback, and what it is called with.
struct TQuestion {
    TKeywordEvent Event = AskValue;
    TCalc* Calc = nullptr;
    String Name;
    void* Param = nullptr;
};
std::array<TQuestion, 6> questions;  // in the order of the values

Extended Ask(std::size_t index) {
    const TQuestion& question = questions[index];
    return question.Event(*question.Calc, question.Name, question.Param);
}
Extended A() {
    return Ask(0);
}
Extended B() {
    return Ask(1);
}
Extended C() {
    return Ask(2);
}
Extended TMax() {
    return Ask(3);
}
Extended TMin() {
    return Ask(4);
}
Extended Rain() {
    return Ask(5);
}
Extended Mean() {
    return (TMax() + TMin()) / 2;
}
Extended Scaled() {
    return 2 * (Rain() + 1.5L);
}
Extended Constants() {
    return 1 + 2 * 3 - 4.0L / 5 + A();
}
Extended Polynomial() {
    const Extended quotient = ((A() + B()) * (A() - B())) / ((C() + 1) * (C() + 2));
    const Extended a = A();
    const Extended b = B();
    return quotient + a * a - b * b;
}
Extended SixSum() {
    return (A() + B() + C() + TMax() + TMin() + Rain()) / 6;
}
Extended Choice() {
    const Extended greatest = std::max(std::min(A(), B()), C());
    const Extended left = A() * A();
    return greatest + std::sqrt(left + B() * B());
}

struct TContest {
    const char* Name;
    StringView Ours;
    const char* MuParser;
    Extended (*HandWritten)();
};

const TContest contests[] = {
    {"(tmax + tmin) / 2", u"($tmax + $tmin) / 2", "(tmax() + tmin()) / 2", Mean},
    {"2 * (rain + 1.5)", u"2 * ($rain + 1.5)", "2 * (rain() + 1.5)", Scaled},
    {"1 + 2 * 3 - 4 / 5 + a", u"1 + 2 * 3 - 4 / 5 + $a", "1 + 2 * 3 - 4 / 5 + a()", Constants},
    {"((a+b)*(a-b))/((c+1)*(c+2)) + a^2 - b^2", u"(($a+$b)*($a-$b))/(($c+1)*($c+2)) + $a^2 - $b^2",
     "((a()+b())*(a()-b()))/((c()+1)*(c()+2)) + a()^2 - b()^2", Polynomial},
    {"sum of six / 6", u"($a + $b + $c + $tmax + $tmin + $rain) / 6",
     "(a() + b() + c() + tmax() + tmin() + rain()) / 6", SixSum},
    {"max(min(a,b),c) + sqrt(a*a + b*b)", u"@max(@min($a,$b),$c) + @sqrt(($a*$a + $b*$b))",
     "max(min(a(),b()),c()) + sqrt(a()*a() + b()*b())", Choice},
};

double AskMuParser(void* param) {
    return static_cast<const TValue*>(param)->Number;
}

void Register(TCalc& calc) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        questions[i].Calc = &calc;
        questions[i].Name = Varnholt::FromUtf8(values[i].Name);
        questions[i].Param = &values[i];
        calc.RegisterKeyword(questions[i].Name, questions[i].Param, questions[i].Event);
    }
}

void Register(mu::Parser& parser) {
    for (TValue& value : values) parser.DefineFunUserData(value.Name, AskMuParser, &value, false);
}

volatile double sink;

/// Nanoseconds for each call.
double Time(int times, const std::function<void(int)>& work) {
    const auto start = std::chrono::steady_clock::now();
    work(times);
    const std::chrono::duration<double, std::nano> elapsed = std::chrono::steady_clock::now() - start;
    return elapsed.count() / times;
}

using TWork = std::function<void(int)>;

/// The lower decile of each contestant's times, round by round in turn.
std::vector<double> Compare(int times, const std::vector<TWork>& contestants) {
    std::vector<std::vector<double>> all(contestants.size());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < contestants.size(); ++i) all[i].push_back(Time(times, contestants[i]));
    }
    std::vector<double> deciles;
    for (std::vector<double>& samples : all) {
        std::ranges::sort(samples);
        deciles.push_back(samples[samples.size() / 10]);
    }
    return deciles;
}

void CompareCalculation(const TContest& contest) {
    TCalc calc;
    Register(calc);
    calc.Set_Exp(contest.Ours);
    mu::Parser parser;
    Register(parser);
    parser.SetExpr(contest.MuParser);

    TCalc reader;
    for (const TValue& value : values) reader.RegisterVariable(Varnholt::FromUtf8(value.Name), &value.Number);
    reader.Set_Exp(contest.Ours);

    const auto expected = static_cast<double>(contest.HandWritten());
    const auto agrees = [&](double value) {
        return std::abs(value - expected) <= 1e-12 * std::abs(expected);
    };
    if (!agrees(static_cast<double>(calc.Calculate())) || !agrees(parser.Eval()) ||
        reader.Calculate() != calc.Calculate()) {
        std::printf("%s: the contestants disagree\n", contest.Name);
        std::exit(1);
    }
    Extended (*volatile handWritten)() = contest.HandWritten;
    const std::vector<double> times =
        Compare(kCalculations, {[&](int n) {
                                    while (n-- > 0) sink = static_cast<double>(calc.Calculate());
                                },
                                [&](int n) {
                                    while (n-- > 0) sink = parser.Eval();
                                },
                                [&](int n) {
                                    while (n-- > 0) sink = static_cast<double>(handWritten());
                                },
                                [&](int n) {
                                    while (n-- > 0) sink = static_cast<double>(reader.Calculate());
                                }});
    std::printf("| `%s` | %.1f | %.1f | %.1f | %.2f | %.2f | %.1f |\n", contest.Name, times[0], times[1],
                times[2], times[0] / times[1], times[0] / times[2], times[3]);
}

void CompareParsing(const TContest& contest) {
    TCalc calc;
    Register(calc);
    mu::Parser parser;
    Register(parser);
    const std::string muExpression = contest.MuParser;
    const std::vector<double> times = Compare(kParses, {[&](int n) {
                                                            while (n-- > 0) calc.Set_Exp(contest.Ours);
                                                        },
                                                        [&](int n) {
                                                            while (n-- > 0) {
                                                                parser.SetExpr(muExpression);
                                                                sink = parser.Eval();
                                                            }
                                                        }});
    std::printf("| `%s` | %.0f | %.0f | %.1f |\n", contest.Name, times[0], times[1], times[1] / times[0]);
}

/// An expression nested so deep.
String Nested(StringView open, StringView inner, std::size_t depth) {
    String text;
    for (std::size_t i = 0; i < depth; ++i) text += open;
    return text.append(inner).append(depth, u')');
}

void MeasureMemory() {
    constexpr std::size_t kDepth = 100000;
    const String text = Nested(u"(1+", u"1", kDepth);
    const std::size_t before = mallinfo2().uordblks;
    const TCalc calc(text);
    const auto kept = static_cast<double>(mallinfo2().uordblks - before - text.size() * sizeof(text[0]));
    std::printf("\nMemory: an evaluator is %zu bytes; each bracket of (1+(1+... keeps %.0f bytes\n",
                sizeof(TCalc), kept / kDepth);
}

void MeasureStack() {
    const char* deepest = nullptr;
    TCalc calc;
    calc.RegisterFunction(u"same", 1, 1,
                          [&](const Varnholt::TFunction&, const Varnholt::TFunctionParams& params) {
                              const char here = 0;
                              deepest = &here;
                              return params.Get_Calc(0).Calculate();
                          });
    calc.Set_Exp(Nested(u"@same(", u"1", TCalc::kMaxCallDepth - 1));
    const char here = 0;
    const char* const start = &here;
    sink = static_cast<double>(calc.Calculate());
    std::printf("\nStack: %td KiB for %d nested calls\n", (start - deepest) / 1024, TCalc::kMaxCallDepth);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::string(argv[1]) == "--rounds") rounds = std::max(1, std::atoi(argv[2]));
    std::printf("Calculation, ns each\n\n");
    std::printf(
        "| expression | VarnholtLib | muParser | hand-written | to muParser | to hand-written | variables "
        "|\n");
    std::printf("|---|---|---|---|---|---|---|\n");
    for (const TContest& contest : contests) CompareCalculation(contest);
    std::printf(
        "\nParsing, ns each (muParser: with the first evaluation, which does most of its parsing)\n\n");
    std::printf("| expression | VarnholtLib | muParser | times faster |\n|---|---|---|---|\n");
    for (const TContest& contest : contests) CompareParsing(contest);
    MeasureMemory();
    MeasureStack();
    return 0;
}
