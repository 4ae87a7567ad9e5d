#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <utility>

#include "Tests/Numerics/ReferenceCalc.h"

/// The evaluator compared with a plain one over random and damaged expressions: the same cleaned text, the same
/// callbacks in the same order, and the same value or the same failure.
namespace Varnholt::Test {
namespace {

struct TOutcome {
    String Exp;
    String Calls;    // the keywords in the order in which they were called
    String Failure;  // or empty
    Extended Value = 0;
};

// Values that make zero divisors, negative bases and fractions.
Extended ValueOf(StringView name) {
    if (name == u"a") return 2;
    if (name == u"b") return -1.5L;
    if (name == u"c") return 0;
    if (name == u"rain") return 1 / 3.0L;
    throw ECalcException(ceKeyword, name);
}

template <typename TRun>
TOutcome Observe(TRun run) {
    TOutcome outcome;
    try {
        run(outcome);
    } catch (const Exception& failure) {
        outcome.Failure = failure.GetMessage();
    }
    return outcome;
}

bool SameBits(Extended a, Extended b) {
    constexpr std::size_t kValueBytes = 10;
    return std::memcmp(&a, &b, kValueBytes) == 0 || (std::isnan(a) && std::isnan(b));
}

TOutcome RunReference(const String& expression) {
    return Observe([&](TOutcome& outcome) {
        outcome.Exp = Clean(expression);
        const TPlainCalc calc(expression, [&](StringView name) {
            const Extended value = ValueOf(name);
            outcome.Calls.append(name).append(1, u' ');
            return value;
        });
        outcome.Value = calc.Calculate();
    });
}

TOutcome RunLibrary(const String& expression) {
    TCalc calc;
    TOutcome outcome = Observe([&](TOutcome& seen) {
        for (const StringView name : {u"a", u"b", u"c", u"rain"}) {
            calc.RegisterKeyword(name, [&](TCalc&, const String& keyword, void*) {
                seen.Calls.append(keyword).append(1, u' ');
                return ValueOf(keyword);
            });
        }
        calc.Set_Exp(expression);
        seen.Value = calc.Calculate();
        const String firstCalls = std::exchange(seen.Calls, String());
        EXPECT_TRUE(SameBits(calc.Calculate(), seen.Value)) << ToUtf8(expression) << ", again";
        EXPECT_EQ(ToUtf8(seen.Calls), ToUtf8(firstCalls)) << ToUtf8(expression) << ", again";
    });
    outcome.Exp = calc.Get_Exp();
    return outcome;
}

void ExpectSame(const String& expression) {
    const TOutcome reference = RunReference(expression);
    const TOutcome library = RunLibrary(expression);
    const std::string shown = "expression: [" + ToUtf8(expression) + "]";
    EXPECT_EQ(ToUtf8(library.Failure), ToUtf8(reference.Failure)) << shown;
    EXPECT_EQ(ToUtf8(library.Exp), ToUtf8(reference.Exp)) << shown;
    EXPECT_EQ(ToUtf8(library.Calls), ToUtf8(reference.Calls)) << shown;
    EXPECT_TRUE(SameBits(library.Value, reference.Value))
        << shown << ' ' << library.Value << " instead of " << reference.Value;
}

class TExpressionMaker {
public:
    explicit TExpressionMaker(unsigned seed) : FRandom(seed) {}

    String Expression(int depth) {
        String text = Operand(depth);
        for (int more = Below(4); more > 0; --more) {
            text += Blank() + Pick({u"+", u"-", u"*", u"/", u"^"}) + Blank() + Operand(depth);
        }
        return text;
    }

    /// The text with a few characters dropped, doubled or replaced.
    String Damaged(String text) {
        for (int times = 1 + Below(3); times > 0 && !text.empty(); --times) {
            const auto at = static_cast<std::size_t>(Below(static_cast<int>(text.size())));
            const Char other = StringView(u" ()@$+-*/^,.n19eax\t\u00e9")[static_cast<std::size_t>(Below(20))];
            if (Below(3) == 0) {
                text.erase(at, 1);
            } else if (Below(2) == 0) {
                text.insert(at, 1, other);
            } else {
                text[at] = other;
            }
        }
        return text;
    }

    int Below(int bound) { return std::uniform_int_distribution(0, bound - 1)(FRandom); }

private:
    String Operand(int depth) {
        const int kind = Below(depth > 0 ? 8 : 5);
        if (kind < 3) return Pick({u"1", u"2.5", u"-3", u"n0.5", u"1e3", u"0", u"10", u".25"});
        if (kind < 5) return u"$" + Pick({u"a", u"b", u"c", u"rain", u"a", u"rain", u"none"});
        if (kind < 7) return u"(" + Blank() + Expression(depth - 1) + Blank() + u")";
        return Call(depth - 1);
    }

    String Call(int depth) {
        const String name = Pick({u"sum", u"min", u"max", u"avg", u"median", u"StDev", u"sqrt", u"Sum"});
        const int count = name == u"sqrt" ? 1 : 2 + Below(3);
        String text = u"@" + Blank() + name + u"(";
        for (int i = 0; i < count; ++i) {
            if (i > 0) text += Pick({u",", u" ", u",", u"  "});
            text += Below(2) == 0 ? u"(" + Expression(depth) + u")" : Operand(depth);
        }
        return text + u")";
    }

    String Blank() { return Pick({u"", u"", u" ", u"  "}); }

    String Pick(std::vector<StringView> choices) {
        return String(choices[static_cast<std::size_t>(Below(static_cast<int>(choices.size())))]);
    }

    std::mt19937 FRandom;
};

TEST(CalcReference, RandomExpressions) {
    TExpressionMaker maker(20120101);
    for (int i = 0; i < 20000 && !HasFailure(); ++i) {
        ExpectSame(maker.Expression(maker.Below(4)));
        ExpectSame(maker.Damaged(maker.Expression(maker.Below(3))));
        ExpectSame(maker.Damaged(maker.Expression(maker.Below(3))));
        ExpectSame(maker.Damaged(maker.Damaged(String(static_cast<std::size_t>(1 + maker.Below(12)), u'('))));
    }
}

}  // namespace
}  // namespace Varnholt::Test
