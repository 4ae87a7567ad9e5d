#include "Tools/varnholt/GammaQuantile.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Platform/Runtime/Exceptions.h"

namespace Varnholt::Tool {
namespace {

constexpr Extended kEpsilon = std::numeric_limits<Extended>::epsilon();

/// The sum of x^n / ((a + 1) ... (a + n)) from n = 0 on; P = x^a e^-x / Gamma(a + 1) times this. For x below
/// a + 1 the terms decrease.
Extended LowerSeries(Extended a, Extended x) {
    Extended term = 1, sum = 1;
    for (Extended n = 1; term > sum * kEpsilon; ++n) {
        term *= x / (a + n);
        sum += term;
    }
    return sum;
}

/// The fraction 1 / (x + 1 - a - 1 (1 - a) / (x + 3 - a - 2 (2 - a) / (x + 5 - a - ...))); 1 - P is
/// x^a e^-x / Gamma(a) times this. For x from a + 1 on it converges after some multiple of
/// sqrt(a) + 1 / sqrt(x) terms.
Extended UpperFraction(Extended a, Extended x) {
    Extended b = x + 1 - a;
    Extended c = std::numeric_limits<Extended>::max();
    Extended d = 1 / b;
    Extended fraction = d;
    Extended factor = 0;
    for (Extended n = 1; std::fabs(factor - 1) > kEpsilon; ++n) {
        const Extended numerator = n * (a - n);
        b += 2;
        d = 1 / (numerator * d + b);
        c = b + numerator / c;
        factor = c * d;
        fraction *= factor;
    }
    return fraction;
}

/// The logarithm of a tail probability, and its derivative by u = ln x.
struct TLogTail {
    Extended Value;
    Extended Slope;
};

/// The lower or upper tail of the distribution with shape a and scale 1, given ln Gamma(a + 1).
TLogTail LogTail(Extended a, Extended lnGammaA1, Extended u, bool isUpper) {
    const Extended x = std::exp(u);
    const Extended lnDensity = a * u - x - lnGammaA1 + std::log(a);  // of u
    const bool isSeries = x < a + 1;
    const Extended part = isSeries ? LowerSeries(a, x) / a : UpperFraction(a, x);
    const Extended value = lnDensity + std::log(part);
    if (isSeries != isUpper) return {value, isUpper ? -1 / part : 1 / part};
    const Extended other = -std::expm1(value);
    const Extended slope = std::exp(lnDensity) / other;
    return {std::log(other), isUpper ? -slope : slope};
}

}  // namespace

Extended GammaQuantile(Extended shape, Extended scale, Extended p) {
    constexpr Extended kSmallestShape = 1E-6L, kLargestShape = 1E7L;
    const bool isValid = shape >= kSmallestShape && shape <= kLargestShape && scale > 0 &&
                         std::isfinite(scale) && p > 0 && p < 1;
    if (!isValid) {
        throw EArgumentException(
            u"A gamma quantile needs a shape from 1E-6 to 1E7, a positive scale and a probability between 0 "
            u"and 1");
    }
    constexpr Extended kLongestStep = 2;    // to the right, where a tail that is nearly 1 has no slope
    constexpr Extended kLastStep = 1E-10L;  // the error after it is of the order of its square
    const bool isUpper = p > 0.5L;
    const Extended target = isUpper ? std::log1p(-p) : std::log(p);
    const Extended lnGammaA1 = std::lgamma(shape + 1);
    Extended u = (std::log(p) + lnGammaA1) / shape;  // P <= x^a / Gamma(a + 1), so no root is below
    for (Extended step = 1; std::fabs(step) > kLastStep;) {
        const TLogTail tail = LogTail(shape, lnGammaA1, u, isUpper);
        step = std::min((target - tail.Value) / tail.Slope, kLongestStep);
        u += step;
    }
    return scale * std::exp(u);
}

}  // namespace Varnholt::Tool
