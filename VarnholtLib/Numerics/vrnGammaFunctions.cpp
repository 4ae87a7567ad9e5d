#include "VarnholtLib/Numerics/vrnGammaFunctions.h"

#include <cmath>

#include "Platform/Runtime/Exceptions.h"
#include "VarnholtLib/Numerics/vrnRoundingPrivate.h"

// The running values that the methods round to 32 bits are doubles here, and each rounding is a call of
// Round32; floats are rounded by their type. All other values are those of Extended (vrnRoundingPrivate.h).

namespace Varnholt {
namespace {

constexpr int kMaxIterations = 100;
constexpr Extended kEps = 3E-7L;
// Coarser limits: a value that does not meet them in double or float does not meet kEps in Extended either.
constexpr double kRoughEps = 4E-7;
constexpr float kInverseOfRoughEps = 2.5E6F;
constexpr double kUlp = 0x1p-53;

float ToFloat(Extended value) {
    return static_cast<float>(value);
}

bool IsOutsideGammaDomain(float a, float x) {
    return x < 0 || !(a > 0);
}

/// value + 1 + 1 ..., n times, each rounded in Extended.
Extended Counted(Extended value, int n) {
    for (int i = 0; i < n; ++i) value += 1;
    return value;
}

bool IsSettled(double change, double value) {
    return std::fabs(change) < std::fabs(value) * kRoughEps &&
           std::fabs(Extended{change}) < std::fabs(Extended{value}) * kEps;
}

Exception ATooLarge() {
    return Exception(u"Problem in gamma function calculation: coefficient a too large.");
}

/// x^a * e^-x / Gamma(a) times the value of a series or fraction.
float TimesGammaFactor(double value, float a, float x, float gln) {
    const double power = a * std::log(double{x});
    const double product = value * std::exp(power - x - gln);
    const double error = (std::fabs(power) + x + std::fabs(double{gln}) + 1) * (8 * kUlp);
    return Round32Near(product, std::fabs(product) * error,
                       [&] { return value * std::exp(a * std::log(Extended{x}) - x - gln); });
}

/// Continued fraction of the incomplete beta function: two steps of the recurrence for the numerators (am,
/// ap, app) and denominators (bm, bp, bpp) in each pass, scaled so that the last denominator is 1.
double BetaFraction(float a, float b, float x) {
    const float qab = a + b, qap = a + 1, qam = a - 1;
    double am = 1, bm = 1, az = 1, bz = ToFloat(1 - Extended{qab} * x / qap);
    for (int m = 1; m <= kMaxIterations; ++m) {
        const int tem = 2 * m;
        double d = Round32([&]<typename W> { return m * (W{b} - m) * x / ((W{qam} + tem) * (W{a} + tem)); });
        const double ap = Round32([&]<typename W> { return az + W{d} * am; });
        const double bp = Round32([&]<typename W> { return bz + W{d} * bm; });
        d = Round32(
            [&]<typename W> { return -(W{a} + m) * (W{qab} + m) * x / ((W{a} + tem) * (W{qap} + tem)); });
        const double app = Round32([&]<typename W> { return ap + W{d} * az; });
        const double bpp = Round32([&]<typename W> { return bp + W{d} * bz; });
        const double aold = az;
        am = Round32([&]<typename W> { return W{ap} / bpp; });
        bm = Round32([&]<typename W> { return W{bp} / bpp; });
        az = Round32([&]<typename W> { return W{app} / bpp; });
        bz = 1;
        if (IsSettled(az - aold, az)) return az;
    }
    throw Exception(u"Problem in beta function calculation: coefficient a or b too big, or itmex too small.");
}

/// Two successive convergents of the fraction of gcf, (a0, b0) and (a1, b1): denominator and numerator.
struct TConvergents {
    TPair Before, Last;
};

/// The next convergents in Extended, for those that are in doubt in double.
TConvergents NextInExtended(const TConvergents& old, Extended x, Extended ana, Extended anf, Extended fac) {
    TConvergents next;
    for (const int i : {0, 1}) {
        next.Before[i] = ToFloat((old.Last[i] + old.Before[i] * ana) * fac);
        next.Last[i] = ToFloat(x * next.Before[i] + anf * old.Last[i]);
    }
    return next;
}

}  // namespace

float gammln(float x) {
    constexpr float kCoefficients[] = {76.18009173F,  -86.50532033F,  24.01409822F,
                                       -1.231739516F, 0.00120858003F, -0.00000536382F};
    auto y = static_cast<double>(Extended{x} - 1 + 1);
    double ser = 1;
    int n = 0;
    for (const float c : kCoefficients) {
        ++n;  // for x > 0 no term is more than 11 times the sum: double is accurate enough
        ser = Round32(ser + c / y, [&] { return ser + c / Counted(Extended{x} - 1, n); });
        y += 1;
    }
    const double power = (x - 1.0 + 0.5) * std::log(x - 1.0 + 5.5);
    const double scale = std::log(2.50662827465 * ser);
    const double error = (std::fabs(power) + x + 4.5 + std::fabs(scale)) * (8 * kUlp);
    return Round32Near(power - (x - 1.0 + 5.5) + scale, error, [&] {
        const Extended t = Extended{x} - 1 + 5.5L;
        return (Extended{x} - 1 + 0.5L) * std::log(t) - t + std::log(2.50662827465L * ser);
    });
}

// 1 / a + x / (a (a + 1)) + x^2 / (a (a + 1) (a + 2)) + ...
void gser(float a, float x, float& gamser, float& gln) {
    gln = gammln(a);
    if (x == 0) {
        gamser = 0;
        return;
    }
    if (x < 0) throw Exception(u"Problem in gamma function calculation: coefficient x less than 0.");
    double ap = a, del = 1 / a;
    float sum = 1 / a;
    for (int n = 1; n <= kMaxIterations; ++n) {
        ap += 1;
        // In double x / ap is computed first: it does not depend on the last term.
        del = Round32(del * (x / ap), [&] { return Extended{del} * x / Counted(a, n); });
        const auto term = static_cast<float>(del);
        sum += term;
        // The first test, in float, is met wherever the decisive one is, and mostly makes that one
        // unnecessary.
        if (term * kInverseOfRoughEps < std::fabs(sum) && IsSettled(del, sum)) {
            gamser = TimesGammaFactor(sum, a, x, gln);
            return;
        }
    }
    throw ATooLarge();
}

// 1 / (x + (1 - a) / (1 + 1 / (x + (2 - a) / (1 + 2 / (x + ... ))))), by the recurrence for its numerators
// (b) and denominators (a), two steps of it in each pass, which fac scales so that the last denominator is 1.
void gcf(float a, float x, float& gammcf, float& gln) {
    gln = gammln(a);
    float gold = 0, fac = 1;
    TConvergents old = {{1, 0}, {x, 1}};
    for (int n = 1; n <= kMaxIterations; ++n) {
        const float ana = static_cast<float>(n) - a, anf = static_cast<float>(n) * fac;
        TPairRounding round;
        TConvergents next;
        next.Before = round((old.Last + old.Before * double{ana}) * double{fac});
        next.Last = round(double{x} * next.Before + double{anf} * old.Last);
        if (round.IsInDoubt()) [[unlikely]]
            next = NextInExtended(old, x, ana, anf, fac);
        old = next;
        const auto a1 = static_cast<float>(next.Last[0]), b1 = static_cast<float>(next.Last[1]);
        if (a1 == 0) continue;
        fac = 1 / a1;
        const float g = b1 * fac;
        if (std::fabs(g - gold) < std::fabs(g) * kRoughEps && std::fabs((Extended{g} - gold) / g) < kEps) {
            gammcf = TimesGammaFactor(g, a, x, gln);
            return;
        }
        gold = g;
    }
    throw ATooLarge();
}

float gammp(float a, float x) {
    if (IsOutsideGammaDomain(a, x)) throw Exception(u"Problem in GAMMP - Invalide arguments.");
    float result = 0, gln = 0;
    if (x < Extended{a} + 1) {
        gser(a, x, result, gln);
        return result;
    }
    gcf(a, x, result, gln);
    return 1 - result;
}

float gammq(float a, float x) {
    if (IsOutsideGammaDomain(a, x)) {
        throw Exception(u"Problem in gamma function calculation: invalid argument.");
    }
    float result = 0, gln = 0;
    if (x < Extended{a} + 1) {
        gser(a, x, result, gln);
        return 1 - result;
    }
    gcf(a, x, result, gln);
    return result;
}

float betai(float a, float b, float x) {
    if (x < 0 || x > 1) throw Exception(u"Problem in beta function calculation.");
    const Extended wideA = a, wideB = b;
    Extended bt = 0;
    if (x != 0 && x != 1) {
        bt = std::exp(Extended{gammln(a + b)} - gammln(a) - gammln(b) + wideA * std::log(Extended{x}) +
                      wideB * std::log(1 - Extended{x}));
    }
    if (x < (wideA + 1) / (wideA + wideB + 2)) return ToFloat(bt * BetaFraction(a, b, x) / a);
    return ToFloat(1 - bt * BetaFraction(b, a, 1 - x) / b);
}

}  // namespace Varnholt
