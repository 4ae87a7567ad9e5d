// Statistics of a century of days and of a million values beside plain loops over std::vector<float> that
// compute the same formulas in float and double, without missing values, bases and roundings of their own.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "VarnholtLib/Numerics/vrnStatistics.h"

namespace Varnholt {
namespace {

std::vector<float> Values(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    std::normal_distribution<float> distribution(100.0F, 10.0F);
    std::vector<float> values(count);
    for (float& value : values) value = distribution(random);
    return values;
}

float PlainMean(const std::vector<float>& x) {
    double sum = 0;
    for (const float value : x) sum += value;
    return static_cast<float>(sum / static_cast<double>(x.size()));
}

float PlainStDev(const std::vector<float>& x) {
    double sx = 0, sxx = 0;
    for (const float value : x) {
        sx += value;
        sxx += double{value} * value;
    }
    const auto n = static_cast<double>(x.size());
    return static_cast<float>(std::sqrt((n * sxx - sx * sx) / (n * (n - 1))));
}

float PlainCorr(const std::vector<float>& x, const std::vector<float>& y) {
    float meanX = 0, meanY = 0, sxx = 0, syy = 0, sxy = 0, n = 0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        ++n;
        const float dx = x[i] - meanX, dy = y[i] - meanY, w = 1 - 1 / n;
        meanX += dx / n;
        meanY += dy / n;
        sxx += w * dx * dx;
        syy += w * dy * dy;
        sxy += w * dx * dy;
    }
    return sxy / std::sqrt(sxx * syy);
}

float PlainPPCC(std::vector<float> x) {
    std::ranges::sort(x);
    const auto n = static_cast<double>(x.size());
    const auto z = [](double m) { return (std::pow(m, 0.135) - std::pow(1 - m, 0.135)) / 0.1975; };
    std::vector<float> quantiles(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        quantiles[i] = static_cast<float>(z((static_cast<double>(i + 1) - 0.3175) / (n + 0.365)));
    }
    const float mx = PlainMean(x), mz = PlainMean(quantiles);
    float sxz = 0, sxx = 0, szz = 0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        const float dx = x[i] - mx, dz = quantiles[i] - mz;
        sxz += dx * dz;
        sxx += dx * dx;
        szz += dz * dz;
    }
    return sxz / std::sqrt(sxx * szz);
}

double PlainKS(std::vector<float> x) {
    const double mean = PlainMean(x), sd = PlainStDev(x), size = static_cast<double>(x.size());
    std::ranges::sort(x);
    double distance = 0;
    for (std::size_t i = 1; i < x.size(); ++i) {
        const double p = (1 - Probability((x[i] - mean) / sd / std::sqrt(2.0))) / 2 + 0.5;
        distance =
            std::max({distance, static_cast<double>(i + 1) / size - p, p - static_cast<double>(i) / size});
    }
    const double lambda = (std::sqrt(size) + 0.12 + 0.11 / std::sqrt(size)) * distance;
    return 2 * std::exp(-2 * lambda * lambda);
}

template <typename TFunction>
void Measure(benchmark::State& state, TFunction function) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::vector<float> x = Values(count, 1), y = Values(count, 2);
    TFloatArray arrayX(static_cast<std::int32_t>(count)), arrayY = arrayX;
    std::ranges::copy(x, arrayX.GetBuffer().begin());
    std::ranges::copy(y, arrayY.GetBuffer().begin());
    for (auto _ : state) benchmark::DoNotOptimize(function(x, y, arrayX, arrayY));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

[[maybe_unused]] const bool kRegistered = [] {
    using TValues = const std::vector<float>&;
    using TArray = const TFloatArray&;
    const auto add = [](const char* name, auto function) {
        benchmark::RegisterBenchmark(name, [=](benchmark::State& state) { Measure(state, function); })
            ->Arg(36500)
            ->Arg(1000000)
            ->Unit(benchmark::kMicrosecond);
    };
    add("Mean2", [](TValues, TValues, TArray x, TArray) { return Mean2(x); });
    add("Mean2/Plain", [](TValues x, TValues, TArray, TArray) { return PlainMean(x); });
    add("StDev2", [](TValues, TValues, TArray x, TArray) { return StDev2(x); });
    add("StDev2/Plain", [](TValues x, TValues, TArray, TArray) { return PlainStDev(x); });
    add("Corr", [](TValues, TValues, TArray x, TArray y) { return Corr(x, y); });
    add("Corr/Plain", [](TValues x, TValues y, TArray, TArray) { return PlainCorr(x, y); });
    add("PPCC2", [](TValues, TValues, TArray x, TArray) { return PPCC2(x); });
    add("PPCC2/Plain", [](TValues x, TValues, TArray, TArray) { return PlainPPCC(x); });
    add("KS2", [](TValues, TValues, TArray x, TArray) { return KS2(x); });
    add("KS2/Plain", [](TValues x, TValues, TArray, TArray) { return PlainKS(x); });
    return true;
}();

}  // namespace
}  // namespace Varnholt
