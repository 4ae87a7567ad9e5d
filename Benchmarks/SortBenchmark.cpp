// The float sort of the arrays beside the plain heap sort whose result it keeps, on a million values.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "VarnholtLib/Data/vrnFloatSort.h"
#include "VarnholtLib/Data/vrnGrid.h"

namespace Varnholt {
namespace {

constexpr std::int32_t kCount = 1'000'000;

std::vector<float> UniformValues() {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> unit(0.0F, 1.0F);
    std::vector<float> values(kCount);
    for (float& value : values) value = unit(random);
    return values;
}

// As a climate series has them: rounded to a tenth of a unit, with many ties.
std::vector<float> MeasuredValues() {
    std::mt19937 random(1);
    std::normal_distribution<float> rain(100.0F, 10.0F);
    std::vector<float> values(kCount);
    for (float& value : values) value = std::round(rain(random) * 10.0F) / 10.0F;
    return values;
}

template <typename TSorter>
void Measure(benchmark::State& state, const std::vector<float>& values, TSorter sort) {
    TFloatArray array(kCount);
    for (auto _ : state) {
        state.PauseTiming();
        array.CopyFrom(values, 0, 0, kCount);
        state.ResumeTiming();
        sort(array);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kCount);
}

void HeapSort(TFloatArray& array) {
    HeapSortFloats(array.GetBuffer());
}

void StdSort(TFloatArray& array) {
    std::ranges::sort(array.GetBuffer());
}

void Sort(TFloatArray& array) {
    array.Sort();
}

void IndexSort(TFloatArray& array) {
    benchmark::DoNotOptimize(array.IndexSort());
}

BENCHMARK_CAPTURE(Measure, UniformHeapSort, UniformValues(), HeapSort)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, UniformStdSort, UniformValues(), StdSort)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, UniformSort, UniformValues(), Sort)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, UniformIndexSort, UniformValues(), IndexSort)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, MeasuredHeapSort, MeasuredValues(), HeapSort)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, MeasuredStdSort, MeasuredValues(), StdSort)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, MeasuredSort, MeasuredValues(), Sort)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace Varnholt
