#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <map>
#include <random>
#include <utility>

#include "Tests/Numerics/ReferenceCalc.h"
#include "Tests/Support/Raised.h"

/// The evaluator compared with a plain one over random and damaged expressions: the same cleaned text, the same
/// callbacks in the same order, and the same value or the same failure, also where some keywords are variables.
namespace Varnholt::Test {
namespace {

struct TOutcome {
    String Exp, Calls, Failure;
    Extended Value = 0;
};

// Values that make zero divisors, negative bases and fractions.
const std::map<StringView, Extended> kValues = {{u"a", 2}, {u"b", -1.5L}, {u"c", 0}, {u"rain", 1 / 3.0L}};

// Those that can be variables.
constexpr double valueOfA = 2, valueOfB = -1.5;
constexpr float valueOfC = 0;

bool SameBits(Extended a, Extended b) {
    constexpr std::size_t kValueBytes = 10;
    return std::memcmp(&a, &b, kValueBytes) == 0 || (std::isnan(a) && std::isnan(b));
}

TOutcome RunReference(const String& expression, bool hasVariables) {
    TOutcome outcome;
    outcome.Exp = Clean(expression);
    outcome.Failure = Raised<Exception>([&] {
        const TPlainCalc calc(expression, [&](StringView name) {
            const auto found = kValues.find(name);
            if (found == kValues.end()) throw ECalcException(ceKeyword, name);
            if (!hasVariables || name == u"rain") outcome.Calls.append(name).append(1, u' ');
            return found->second;
        });
        outcome.Value = calc.Calculate();
    });
    return outcome;
}

TOutcome RunLibrary(const String& expression, bool hasVariables) {
    TCalc calc;
    TOutcome outcome;
    if (hasVariables) {  // they hide the callbacks of their names
        calc.RegisterVariable(u"a", &valueOfA);
        calc.RegisterVariable(u"b", &valueOfB);
        calc.RegisterVariable(u"c", &valueOfC);
    }
    for (const auto& keyword : kValues) {
        calc.RegisterKeyword(keyword.first, [&](TCalc&, const String& name, void*) {
            outcome.Calls.append(name).append(1, u' ');
            return keyword.second;
        });
    }
    outcome.Failure = Raised<Exception>([&] {
        calc.Set_Exp(expression);
        outcome.Value = calc.Calculate();
        const String firstCalls = std::exchange(outcome.Calls, String());
        EXPECT_TRUE(SameBits(calc.Calculate(), outcome.Value)) << ToUtf8(expression) << ", again";
        EXPECT_EQ(outcome.Calls, firstCalls) << ToUtf8(expression) << ", again";
    });
    outcome.Exp = calc.Get_Exp();
    return outcome;
}

void ExpectSame(const String& expression, bool hasVariables) {
    const TOutcome reference = RunReference(expression, hasVariables);
    const TOutcome library = RunLibrary(expression, hasVariables);
    const std::string shown =
        "expression: [" + ToUtf8(expression) + (hasVariables ? "] with variables" : "]");
    EXPECT_EQ(library.Failure, reference.Failure) << shown;
    EXPECT_EQ(library.Exp, reference.Exp) << shown;
    EXPECT_EQ(library.Calls, reference.Calls) << shown;
    EXPECT_TRUE(SameBits(library.Value, reference.Value))
        << shown << ' ' << library.Value << " instead of " << reference.Value;
}

class TExpressionMaker {
public:
    explicit TExpressionMaker(unsigned seed) : FRandom(seed) {}

    String Expression(int depth) {
        String text = u"?";
        for (int more = Below(4); more > 0; --more) {
            text +=
                Pick({u"", u" ", u"  "}) + Pick({u"+", u"-", u"*", u"/", u"^"}) + Pick({u"", u" "}) + u"?";
        }
        return Filled(std::move(text), depth);
    }

    /// The text with a few characters dropped, doubled or replaced.
    String Damaged(String text) {
        for (int times = 1 + Below(3); times > 0 && !text.empty(); --times) {
            const auto at = static_cast<std::size_t>(Below(static_cast<int>(text.size())));
            const Char other = StringView(u" ()@$+-*/^,.n19eax\t\u00e9")[static_cast<std::size_t>(Below(20))];
            const int kind = Below(3);  // drops, inserts or replaces
            text.replace(at, kind == 1 ? 0 : 1, kind == 0 ? 0 : 1, other);
        }
        return text;
    }

    int Below(int bound) { return std::uniform_int_distribution(0, bound - 1)(FRandom); }

private:
    // An operand for each question mark, an expression for each tilde.
    String Filled(String text, int depth) {
        for (std::size_t at = 0; (at = text.find_first_of(u"?~")) != String::npos;) {
            text.replace(at, 1, text[at] == u'~' ? Expression(depth) : Operand(depth));
        }
        return text;
    }

    String Operand(int depth) {
        const int kind = Below(depth > 0 ? 8 : 5);
        if (kind < 3) return Pick({u"1", u"2.5", u"-3", u"n0.5", u"1e3", u"0", u"10", u".25"});
        if (kind < 5) return u"$" + Pick({u"a", u"b", u"c", u"rain", u"a", u"rain", u"none"});
        if (kind < 7) return Filled(Pick({u"(~)", u"( ~)", u"(~ )", u"(  ~ )"}), depth - 1);
        return Filled(
            Pick({u"@sum(?,(~))", u"@ min((~) ?)", u"@max(?  ?,?)", u"@avg(?,(~) (~))", u"@sqrt((~))",
                  u"@median((~),?,?)", u"@median(?,(~),?,?)", u"@StDev(?,(~))", u"@Sum(?,?)"}),
            depth - 1);
    }

    String Pick(std::vector<StringView> choices) {
        return String(choices[static_cast<std::size_t>(Below(static_cast<int>(choices.size())))]);
    }

    std::mt19937 FRandom;
};

TEST(CalcReference, RandomExpressions) {
    TExpressionMaker maker(20120101);
    for (int i = 0; i < 20000 && !HasFailure(); ++i) {
        const String expression = maker.Expression(maker.Below(4));
        ExpectSame(expression, false);
        ExpectSame(expression, true);
        ExpectSame(maker.Damaged(maker.Expression(maker.Below(3))), false);
        ExpectSame(maker.Damaged(maker.Expression(maker.Below(3))), true);
        ExpectSame(maker.Damaged(maker.Damaged(String(static_cast<std::size_t>(1 + maker.Below(12)), u'('))),
                   false);
    }
}

}  // namespace
}  // namespace Varnholt::Test
