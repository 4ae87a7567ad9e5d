// The gamma, beta and normal functions beside the float functions of Boost.Math and the functions of GSL, in
// calls over the same 1,024 random arguments. "Small" shapes are those of tests and climate fits (up to 12),
// "Large" ones go up to 60; x is 0.3 to 1.8 times the shape. The incomplete gamma functions of the peers
// change to an expansion of constant cost for large shapes, where ours keep using their series and fractions.
#include <benchmark/benchmark.h>
#include <gsl/gsl_cdf.h>
#include <gsl/gsl_sf_gamma.h>

#include <boost/math/distributions/normal.hpp>
#include <boost/math/special_functions/beta.hpp>
#include <boost/math/special_functions/gamma.hpp>
#include <random>
#include <vector>

#include "VarnholtLib/Numerics/vrnStatistics.h"

namespace Varnholt {
namespace {

struct TArguments {
    float A, B, X, U, Z;
};

std::vector<TArguments> RandomArguments(float largestShape) {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> shapes(0.2F, largestShape), shares(0.01F, 0.99F), scores(-5, 5);
    std::vector<TArguments> arguments(1024);
    for (TArguments& a : arguments) {
        a.A = shapes(random);
        a.B = shapes(random);
        a.X = a.A * (0.3F + 1.5F * shares(random));
        a.U = shares(random);
        a.Z = scores(random);
    }
    return arguments;
}

template <typename TFunction>
void Measure(benchmark::State& state, float largestShape, TFunction function) {
    const std::vector<TArguments> arguments = RandomArguments(largestShape);
    for (auto _ : state) {
        double sum = 0;
        for (const TArguments& a : arguments) sum += static_cast<double>(function(a));
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(arguments.size()));
}

using T = const TArguments&;
namespace bm = boost::math;

[[maybe_unused]] const bool kRegistered = [] {
    const auto add = [](const std::string& name, float largestShape, auto function) {
        benchmark::RegisterBenchmark(
            name.c_str(), [=](benchmark::State& state) { Measure(state, largestShape, function); });
    };
    for (const auto& [size, shape] : {std::pair<std::string, float>{"Small", 12.0F}, {"Large", 60.0F}}) {
        add("gammln/" + size, shape, [](T a) { return gammln(a.A); });
        add("gammln/" + size + "/Boost", shape, [](T a) { return bm::lgamma(a.A); });
        add("gammln/" + size + "/GSL", shape, [](T a) { return gsl_sf_lngamma(a.A); });
        add("gammp/" + size, shape, [](T a) { return gammp(a.A, a.X); });
        add("gammp/" + size + "/Boost", shape, [](T a) { return bm::gamma_p(a.A, a.X); });
        add("gammp/" + size + "/GSL", shape, [](T a) { return gsl_sf_gamma_inc_P(a.A, a.X); });
        add("gammq/" + size, shape, [](T a) { return gammq(a.A, a.X); });
        add("gammq/" + size + "/Boost", shape, [](T a) { return bm::gamma_q(a.A, a.X); });
        add("gammq/" + size + "/GSL", shape, [](T a) { return gsl_sf_gamma_inc_Q(a.A, a.X); });
        add("betai/" + size, shape, [](T a) { return betai(a.A, a.B, a.U); });
        add("betai/" + size + "/Boost", shape, [](T a) { return bm::ibeta(a.A, a.B, a.U); });
        add("betai/" + size + "/GSL", shape, [](T a) { return gsl_sf_beta_inc(a.A, a.B, a.U); });
    }
    const bm::normal_distribution<float> normal;
    add("normp", 1, [](T a) { return normp(a.Z); });
    add("normp/Boost", 1, [=](T a) { return bm::cdf(normal, a.Z); });
    add("normp/GSL", 1, [](T a) { return gsl_cdf_ugaussian_P(a.Z); });
    return true;
}();

}  // namespace
}  // namespace Varnholt
