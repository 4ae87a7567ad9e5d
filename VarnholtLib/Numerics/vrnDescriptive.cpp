#include "VarnholtLib/Numerics/vrnDescriptive.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/FloatMath.h"
#include "Platform/Runtime/Random.h"
#include "VarnholtBaseLib/Extremes.h"
#include "VarnholtLib/Numerics/vrnMissingValues.h"
#include "VarnholtLib/Numerics/vrnRoundingPrivate.h"

namespace Varnholt {
namespace {

float ToFloat(Extended value) {
    return static_cast<float>(value);
}

/// Calls visit with the values that Clean keeps, in order, without a copy; returns their number.
template <typename TVisit>
std::int32_t ForEachKnown(const TFloatArray& array, TVisit visit) {
    std::int32_t count = 0;
    for (const float value : array.GetBuffer()) {
        if (value >= kLowestMissing && value <= kMissing) continue;
        ++count;
        visit(value);
    }
    return count;
}

/// The known value that `take`, TakeMin or TakeMax, leaves; a NaN only if all are NaNs, kMissing without any.
template <typename TTake>
float Extreme(const TFloatArray& array, TTake take) {
    float best = std::numeric_limits<float>::quiet_NaN();
    const std::int32_t count = ForEachKnown(array, [&](float value) { take(best, value); });
    return count == 0 ? kMissing : best;
}

/// (m^0.135 - (1 - m)^0.135) / 0.1975, rounded to 32 bits. No power is above 1, so the error in double is
/// some units of 2^-53 over 0.1975.
float NormalQuantile(float m) {
    constexpr double kError = 0x1p-48;
    return Round32Near((std::pow(double{m}, 0.135) - std::pow(1.0 - m, 0.135)) / 0.1975, kError,
                       [m] { return (Power(m, 0.135L) - Power(1 - Extended{m}, 0.135L)) / 0.1975L; });
}

/// The normal quantiles of the medians of the order statistics of n values.
std::vector<float> OrderQuantiles(std::int32_t n) {
    std::vector<float> quantiles;
    quantiles.reserve(static_cast<std::size_t>(n));
    const Extended last = Power(0.5L, 1 / Extended(n));
    if (n > 1) quantiles.push_back(NormalQuantile(ToFloat(1 - last)));
    for (std::int32_t i = 2; i < n; ++i) {
        quantiles.push_back(NormalQuantile(ToFloat((i - 0.3175L) / (n + 0.365L))));
    }
    quantiles.push_back(NormalQuantile(ToFloat(last)));
    return quantiles;
}

float Mean(std::span<const float> values) {
    double sum = 0;
    for (const float value : values) sum += value;
    return static_cast<float>(sum / static_cast<double>(values.size()));
}

/// Distance between the distribution of the values and the normal distribution with their mean and standard
/// deviation.
double KolmogorovDistance(const TFloatArray& array) {
    const double size = array.GetCount();
    std::optional<TFloatArray> known = array.Clean(kLowestMissing, kMissing);
    if (!known) return kMissing;
    const double sd = StDev2(*known);
    const double mean = Mean2(*known);
    known->Sort();
    double plus = 0, minus = 0;
    for (std::int32_t i = known->GetBase(); i < known->GetLast(); ++i) {
        const std::int32_t k = i + 1;
        const double z = ZScore(known->GetFloat(k), mean, sd);
        double p = (1 - Probability(z / std::sqrt(2.0))) / 2 + 0.5;
        if (p <= 0.00001) p = 0.00001;
        if (p >= 0.99999) p = 0.99999;
        const double a = k / size - p;
        const double b = p - i / size;
        if (a > plus || i == 0) plus = a;
        if (b > minus || i == 0) minus = b;
    }
    return std::max(minus, plus);
}

}  // namespace

double ZScore(double x, double mean, double sd) {
    return sd == 0 ? mean : (x - mean) / sd;
}

float Zp(float p) {
    return p == 0 || p == 1 ? 100 : NormalQuantile(p);
}

double Probability(double x) {
    if (x == 0) return 0.5;
    const double w = std::fabs(x);
    const double tail = 0.5 * std::exp(-((83 * w + 351) * w + 562) / (703 / w + 165));
    return x < 0 ? 1 - tail : tail;
}

float RandN(float mean, float sd) {
    double sum = 0;
    for (int i = 0; i < 12; ++i) sum += Random();
    return ToFloat((Extended{sum} - 6) * sd + mean);
}

float Mean2(const TFloatArray& array) {
    double sum = 0;
    const std::int32_t count = ForEachKnown(array, [&](float value) { sum += value; });
    return count == 0 ? kMissing : static_cast<float>(sum / count);
}

float Min2(const TFloatArray& array) {
    return Extreme(array, TakeMin<float>);
}

float Max2(const TFloatArray& array) {
    return Extreme(array, TakeMax<float>);
}

float StDev2(const TFloatArray& array) {
    double sx = 0, sxx = 0;
    const std::int32_t count = ForEachKnown(array, [&](float value) {
        sx += value;
        sxx += double{value} * value;
    });
    if (count < 2) return kMissing;
    const Extended n = count;
    const Extended radicand = (n * sxx - Extended{sx} * sx) / (n * (n - 1));
    return radicand < 0 ? 0 : ToFloat(std::sqrt(radicand));
}

float PPCC2(const TFloatArray& array) {
    std::optional<TFloatArray> known = array.Clean(kLowestMissing, kMissing);
    if (!known) return kMissing;
    known->Sort();
    const std::span<const float> x = std::as_const(*known).GetBuffer();
    const std::vector<float> z = OrderQuantiles(known->GetCount());
    const Extended mx = Mean(x), mz = Mean(z);
    float sxz = 0, sxx = 0, szz = 0;
    for (std::size_t i = 0; i < z.size(); ++i) {
        const Extended dx = x[i] - mx, dz = z[i] - mz;
        sxz = ToFloat(sxz + dx * dz);
        sxx = ToFloat(sxx + dx * dx);
        szz = ToFloat(szz + dz * dz);
    }
    const Extended d = std::sqrt(Extended{sxx} * szz);
    return d == 0 ? kMissing : ToFloat(sxz / d);
}

double KS2(const TFloatArray& array) {
    constexpr int kMaxTerms = 99;
    const std::span<const float> values = array.GetBuffer();
    const auto isFinite = [](float value) { return std::isfinite(value); };
    if (!std::ranges::all_of(values, isFinite)) return std::numeric_limits<double>::quiet_NaN();
    const auto c = std::count_if(values.begin(), values.end(), [](float value) { return value > kMissing; });
    if (c == 0) return kMissing;
    const double en = std::sqrt(static_cast<double>(c));
    const double lambda = (en + 0.12 + 0.11 / en) * KolmogorovDistance(array);
    double sum = 0, fac = 2, previous = 0;
    for (int j = 1; j <= kMaxTerms; ++j) {
        const double term = fac * std::exp(-2 * lambda * lambda * j * j);
        sum += term;
        if (std::fabs(term) <= 0.001 * previous || std::fabs(term) <= 0.00000001 * sum) return sum;
        fac = -fac;
        previous = std::fabs(term);
    }
    return 1;
}

float Corr(const TFloatArray& array1, const TFloatArray& array2) {
    const std::int32_t count = array1.GetCount();
    float meanX = 0, meanY = 0, sxx = 0, syy = 0, sxy = 0;
    for (std::int32_t i = 0; i < count; ++i) {
        const Extended n = Extended(i) + 1;
        const Extended dx = array1.GetFloat(i + 1) - Extended{meanX};
        const Extended dy = array2.GetFloat(i + 1) - Extended{meanY};
        meanX = ToFloat(meanX + dx / n);
        meanY = ToFloat(meanY + dy / n);
        const Extended w = 1 - 1 / n;
        sxx = ToFloat(sxx + w * dx * dx);
        syy = ToFloat(syy + w * dy * dy);
        sxy = ToFloat(sxy + w * dx * dy);
    }
    if (count < 3 || sxx == 0 || syy == 0) return 0;
    const Extended n = count;
    return ToFloat((sxy / n) / std::sqrt((sxx / n) * (syy / n)));
}

float RMSE(std::span<const float> array1, std::span<const float> array2) {
    if (array1.empty()) throw EArgumentException(u"RMSE needs at least one value");
    if (array2.size() < array1.size()) {
        throw EArgumentException(u"RMSE needs a second array as long as the first");
    }
    float sum = 0;
    for (std::size_t i = 0; i < array1.size(); ++i) {
        const Extended difference = Extended{array2[i]} - array1[i];
        sum = ToFloat(sum + difference * difference);
    }
    return ToFloat(std::sqrt(sum / static_cast<Extended>(array1.size() - 1)));
}

void bsample(const TFloatArray& array, std::int32_t sampleCount, TFloatGrid& grid) {
    Randomize();
    const std::int32_t count = array.GetCount();
    TFloatGrid samples(sampleCount, count);
    for (std::int32_t row = 0; row < count; ++row) {
        for (float& cell : samples.GetRow(row + 1)) cell = array.GetFloat(RandomRange(1, count));
    }
    grid = std::move(samples);
}

}  // namespace Varnholt
