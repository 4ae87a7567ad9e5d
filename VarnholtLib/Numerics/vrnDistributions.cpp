#include "VarnholtLib/Numerics/vrnDistributions.h"

#include <cmath>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/FloatMath.h"
#include "VarnholtLib/Numerics/vrnGammaFunctions.h"
#include "VarnholtLib/Numerics/vrnRoundingPrivate.h"

namespace Varnholt {
namespace {

constexpr Extended kTolerance = 0.001L;  // of the probability that a quantile is searched for

/// gammf, with everything that depends only on the parameters computed once.
class TGammaDensity {
public:
    TGammaDensity(float alpha, float beta)
        : FBeta(beta),
          FAlphaMinus1(Extended{alpha} - 1),
          FLnBeta(std::log(Extended{beta})),
          FLnGamma(gammln(alpha)) {}

    float operator()(float x) const {
        const double u = double{x} / FBeta;
        const auto alphaMinus1 = static_cast<double>(FAlphaMinus1), lnBeta = static_cast<double>(FLnBeta);
        const double lnU = std::log(u);
        const double density = std::exp(lnU * alphaMinus1 - u - lnBeta - FLnGamma);
        const double magnitudes = (std::fabs(lnU) + 1) * std::fabs(alphaMinus1) + std::fabs(u) +
                                  std::fabs(lnBeta) + std::fabs(double{FLnGamma}) + 1;
        return Round32Near(density, density * magnitudes * 0x1p-50, [&] {
            const Extended wideU = Extended{x} / FBeta;
            return std::exp(std::log(wideU) * FAlphaMinus1 - wideU - FLnBeta - FLnGamma);
        });
    }

private:
    float FBeta;
    Extended FAlphaMinus1;
    Extended FLnBeta;
    float FLnGamma;
};

/// Trapezoid integrals of the density from 0.0001 up to a limit, within a budget of evaluations.
class TGammaIntegral {
public:
    TGammaIntegral(float alpha, float beta) : FDensity(alpha, beta) {}

    float operator()(float b) {
        constexpr float kStart = 0.0001F;
        constexpr int kMaxRefinements = 19;
        const Extended width = Extended{b} - kStart;
        Extended s = (Extended{Evaluate(kStart)} + Evaluate(b)) * 0.5L * width;
        Extended olds = -999;
        int n = 1;
        for (int refinement = 1; refinement <= kMaxRefinements; ++refinement) {
            s = (width * SumOfMiddles(kStart, width, n) / n + s) * 0.5L;
            if (std::isnan(s) || std::fabs(s - olds) < 0.0001L * std::fabs(olds)) break;
            olds = s;
            n *= 2;
        }
        return static_cast<float>(s);
    }

    static Exception DidNotConverge() {
        return Exception(u"Problem in gam_ptil: the search for the quantile did not converge.");
    }

private:
    float Evaluate(float x) {
        if (FBudget == 0) throw DidNotConverge();
        --FBudget;
        return FDensity(x);
    }

    /// The sum of the density at the midpoints of n equal intervals, which begin at a and have this total
    /// width.
    float SumOfMiddles(float a, Extended width, int n) {
        const auto del = static_cast<float>(width / n);
        Extended x = a + Extended{del} / 2;
        float sum = 0;
        for (int i = 0; i < n; ++i) {
            sum += Evaluate(static_cast<float>(x));
            x += del;
        }
        return sum;
    }

    TGammaDensity FDensity;
    int FBudget = 1 << 25;
};

template <std::size_t N>
double Polynomial(const double (&coefficients)[N], double x) {
    double value = 0;
    for (std::size_t i = N; i-- > 0;) value = value * x + coefficients[i];
    return value;
}

}  // namespace

float gammf(float x, float alpha, float beta) {
    return TGammaDensity(alpha, beta)(x);
}

void Gamma(std::int32_t column, const TFloatGrid& grid, float& alpha, float& beta) {
    grid.CheckBounds(column, grid.GetBaseY());
    Extended s = 0, l = 0;
    for (std::int32_t i = 0; i < grid.GetCountY(); ++i) {
        const Extended value = grid.Get(column, grid.GetBaseY() + i);
        s += value;
        if (value > 0) l += std::log(value);
    }
    const Extended rows = grid.GetCountY();
    const Extended m = s / rows;
    const Extended y = std::log(m) - l / rows;
    alpha = static_cast<float>((8.898919L + 9.05995L * y + 0.9775373L * y * y) /
                               (y * (17.79728L + 11.968477L * y + y * y)));
    beta = static_cast<float>(m / alpha);
}

float gam_ptil(float alpha, float beta, float x0, float p) {
    TGammaIntegral integral(alpha, beta);
    Extended d = 0;
    Extended t = Extended{p} - integral(x0) <= 0 ? Extended{p} + 1 : Extended{p} - 1;
    for (;;) {
        d += (p - t) * 10;
        auto x = static_cast<float>(x0 + d);
        if (x < 0) x = 0.05F;
        t = integral(x);
        if (std::isnan(t)) throw TGammaIntegral::DidNotConverge();  // all following ones would be NaNs
        if (std::fabs(t - p) < kTolerance) return x;
    }
}

float gam_ptil1(float alpha, float beta, float x0, float p) {
    constexpr int kMaxSteps = 1000000;
    const auto probability = [=](float x) { return gammp(alpha, x / beta); };
    float t = probability(x0);
    const Extended step = Extended{p} - t > 0 ? 0.01L : -0.01L;
    Extended d = 0;
    float r = 0;
    for (int steps = 0; std::fabs(Extended{p} - t) >= kTolerance; ++steps) {
        if (steps == kMaxSteps) {
            throw Exception(u"Problem in gam_ptil1: the search for the quantile did not converge.");
        }
        d += step;
        r = static_cast<float>(x0 + d);
        t = probability(r);
    }
    return r;
}

double normp(double x) {
    constexpr double kP[] = {220.2068679123761, 221.2135961699311,  112.07929149787,  33.912866078383,
                             6.37396220353165,  0.7003830644436881, 0.035262496599891};
    constexpr double kQ[] = {440.4137358247522, 793.8265125199484, 637.3336333788311, 296.5642487796737,
                             86.78073220294608, 16.06417757920695, 1.755667163182642, 0.08838834764831845};
    const double w = std::fabs(x);
    if (w > 37) return x < 0 ? 0 : 1;
    const double e = std::exp(-0.5 * w * w);
    const double tail = w < 7.071 ? e * Polynomial(kP, w) / Polynomial(kQ, w)
                                  : e / 2.506628274631 / (w + 1 / (w + 2 / (w + 3 / (w + 4 / (w + 0.65)))));
    return x >= 0 ? 1 - tail : tail;
}

float centil(std::int32_t column, float percent, const TFloatGrid& grid) {
    grid.CheckBounds(column, grid.GetBaseY());
    if (grid.GetCountY() < 3) throw EArgumentException(u"A percentile needs a column of 3 rows or more");
    if (std::isnan(percent)) throw EArgumentException(u"A percentile needs a number of percent");
    const std::int32_t n = grid.GetCountY() - 2;
    TFloatArray sorted(n);
    for (std::int32_t i = 1; i <= n; ++i) sorted.WriteFloat(i, grid.Get(column, grid.GetBaseY() + (i - 1)));
    sorted.Sort();
    const Extended pos = (Extended(n) + 1) * percent / 100;
    if (pos > n) return sorted.GetFloat(n);
    if (pos < 1) return sorted.GetFloat(1);
    const std::int32_t k = RoundToInt(pos);
    if (k >= pos) return sorted.GetFloat(k);
    return static_cast<float>((Extended{sorted.GetFloat(k)} + sorted.GetFloat(k + 1)) / 2);
}

}  // namespace Varnholt
