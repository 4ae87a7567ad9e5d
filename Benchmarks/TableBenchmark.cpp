// The sort of a smart array and of a table beside the sorts of the standard library on plain values, the
// loading of a string grid, and the memory of a table.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

#include "Platform/Controls/StringGrid.h"
#include "Platform/Runtime/Numbers.h"
#include "VarnholtLib/Data/vrnSmartArray.h"
#include "VarnholtLib/Data/vrnTableData.h"

namespace Varnholt {
namespace {

constexpr std::int32_t kCount = 1'000'000;

enum TShape { shUniform, shMeasured, shWorst };  // the last one has the greatest value as each middle

std::vector<double> Values(TShape shape) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> unit(0, 1);
    std::vector<double> values(kCount);
    for (double& value : values)
        value = shape == shUniform ? unit(random) : std::round(unit(random) * 1e5) / 10;
    for (std::size_t i = 0; shape == shWorst && i < values.size(); ++i) {
        values[i] = static_cast<double>(i);
        std::swap(values[i], values[i / 2]);
    }
    return values;
}

void SmartSort(benchmark::State& state, TShape shape) {
    const std::vector<double> values = Values(shape);
    for (auto _ : state) {
        state.PauseTiming();
        {
            TSmartArray array(TVariantArray(values.begin(), values.end()));
            state.ResumeTiming();
            array.Sort();
            benchmark::DoNotOptimize(array.GetSortMapValue(0));
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kCount);
}

void StdSortPairs(benchmark::State& state, TShape shape) {
    const std::vector<double> values = Values(shape);
    std::vector<std::pair<double, std::int32_t>> pairs(values.size());
    for (auto _ : state) {
        state.PauseTiming();
        for (std::size_t i = 0; i < pairs.size(); ++i) pairs[i] = {values[i], static_cast<std::int32_t>(i)};
        state.ResumeTiming();
        std::ranges::sort(pairs, [](const auto& a, const auto& b) { return a.first < b.first; });
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kCount);
}

/// The columns of the table, plain: 1000 stations by number and by name, and a measurement.
struct TColumns {
    TColumns() {
        std::mt19937 random(2);
        std::uniform_real_distribution<double> unit(0, 1);
        for (std::int32_t i = 0; i < kCount; ++i) {
            Stations.push_back(static_cast<std::int32_t>(random() % 1000));
            Names.push_back(u"Station " + IntToStr(Stations.back() + 1000));
            Rain.push_back(unit(random));
        }
    }

    [[nodiscard]] static const TColumns& Get() {
        static const TColumns columns;
        return columns;
    }

    std::vector<std::int32_t> Stations;
    std::vector<String> Names;
    std::vector<double> Rain;
};

enum TColumn : std::int32_t { coStation, coName, coRain };

/// The same as a table. A name is one text for all rows of its station.
TTableData& Table() {
    static TTableData table(std::vector<TVarType>{varInteger, varString, varDouble});
    if (table.GetCount() > 0) return table;
    const TColumns& columns = TColumns::Get();
    std::vector<Variant> names(1000);
    for (std::size_t i = 0; i < columns.Rain.size(); ++i) {
        TTableDataRow& row = table.AddRow();
        Variant& name = names[static_cast<std::size_t>(columns.Stations[i])];
        if (name.IsEmpty()) name = columns.Names[i];
        row.SetField(coStation, columns.Stations[i]);
        row.SetField(coName, name);
        row.SetField(coRain, columns.Rain[i]);
    }
    return table;
}

void TableSort(benchmark::State& state, TColumn firstKey) {
    TTableData& table = Table();
    TSortOperation keys;
    keys.Add(firstKey, true);
    keys.Add(coRain, true);
    for (auto _ : state) table.ExecuteSort(keys);
    state.SetItemsProcessed(state.iterations() * kCount);
}

template <typename T>
void StableSortRows(benchmark::State& state, std::vector<T> TColumns::*firstKey) {
    const TColumns& columns = TColumns::Get();
    const std::vector<T>& first = columns.*firstKey;
    std::vector<std::uint32_t> rows(kCount);
    for (auto _ : state) {
        std::iota(rows.begin(), rows.end(), 0U);
        std::ranges::stable_sort(rows, [&](std::uint32_t a, std::uint32_t b) {
            const auto order = first[a] <=> first[b];
            return order != 0 ? order < 0 : columns.Rain[a] < columns.Rain[b];
        });
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kCount);
}

void FromStringGrid(benchmark::State& state) {
    constexpr std::int32_t kRows = 100'000, kColumns = 10;
    std::mt19937 random(3);
    TStringGrid grid(kColumns, kRows + 1, 0, 1);
    for (std::int32_t row = 0; row <= kRows; ++row) {
        for (std::int32_t column = 0; column < kColumns; ++column) {
            const auto number = static_cast<std::int32_t>(random() % 100'000);
            grid.SetCell(column, row, column < 5 ? IntToStr(number) : IntToStr(number) + u".25");
        }
    }
    double bytes = 0;
    for (auto _ : state) {
        const auto before = mallinfo2();
        const std::unique_ptr<TTableData> table = TTableData::FromStringGrid(&grid);
        bytes = static_cast<double>(mallinfo2().uordblks - before.uordblks);
        state.PauseTiming();
        benchmark::DoNotOptimize(table->GetCount());
        state.ResumeTiming();
    }
    state.counters["bytes/cell"] = bytes / (kRows * kColumns);
    state.SetItemsProcessed(state.iterations() * kRows * kColumns);
}

void AddRows(benchmark::State& state) {
    constexpr std::int32_t kRows = 100'000;
    for (auto _ : state) {
        TTableData table(std::vector<TVarType>(10, varDouble));
        for (std::int32_t i = 0; i < kRows; ++i) benchmark::DoNotOptimize(table.AddRow());
    }
    state.SetItemsProcessed(state.iterations() * kRows);
}

BENCHMARK_CAPTURE(SmartSort, Uniform, shUniform)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StdSortPairs, Uniform, shUniform)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SmartSort, Measured, shMeasured)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StdSortPairs, Measured, shMeasured)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SmartSort, WorstPivots, shWorst)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StdSortPairs, WorstPivots, shWorst)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(TableSort, StationThenRain, coStation)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StableSortRows, StationThenRain, &TColumns::Stations)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(TableSort, NameThenRain, coName)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StableSortRows, NameThenRain, &TColumns::Names)->Unit(benchmark::kMillisecond);
BENCHMARK(FromStringGrid)->Unit(benchmark::kMillisecond);
BENCHMARK(AddRows)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace Varnholt
