// Where and Select of the number grid beside hand-written loops that build the same result from plain
// vectors: one vector for each row, and one vector for the whole table. A million rows of five values.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <stdexcept>
#include <vector>

#include "VarnholtLib/Data/vrnNumberGrid.h"

namespace Varnholt {
namespace {

constexpr std::int32_t kRows = 1'000'000;
constexpr std::size_t kColumns = 5;
constexpr Extended kLimit = 50.0L;

struct TPlainTable {
    std::vector<Extended> Values;  // row by row
};

std::vector<Extended> Row(std::mt19937& random) {
    std::uniform_real_distribution<double> percent(0.0, 100.0);
    std::vector<Extended> row(kColumns);
    for (Extended& value : row) value = percent(random);
    return row;
}

const std::shared_ptr<INumberGrid>& Grid() {
    static const std::shared_ptr<INumberGrid> grid = [] {
        auto made = TNumberGridFactory::GetObject();
        made->GetColumns().AddFloatColumns(TStringArray{u"a", u"b", u"c", u"d", u"e"});
        std::mt19937 random(1);
        for (std::int32_t i = 0; i < kRows; ++i) made->AddRow(Row(random));
        return made;
    }();
    return grid;
}

const std::vector<std::vector<Extended>>& Rows() {
    static const std::vector<std::vector<Extended>> rows = [] {
        std::vector<std::vector<Extended>> made;
        std::mt19937 random(1);
        for (std::int32_t i = 0; i < kRows; ++i) made.push_back(Row(random));
        return made;
    }();
    return rows;
}

const TPlainTable& Table() {
    static const TPlainTable table = [] {
        TPlainTable made;
        std::mt19937 random(1);
        for (std::int32_t i = 0; i < kRows; ++i)
            std::ranges::copy(Row(random), std::back_inserter(made.Values));
        return made;
    }();
    return table;
}

std::shared_ptr<INumberGrid> GridWhere() {
    return Grid()->Where([](const auto&, const TRow& row, std::int32_t) { return row.GetValue(1) < kLimit; });
}

std::vector<std::vector<Extended>> RowsWhere() {
    std::vector<std::vector<Extended>> found;
    for (const auto& row : Rows()) {
        if (row[1] < kLimit) found.push_back(row);
    }
    return found;
}

TPlainTable TableWhere() {
    TPlainTable found;
    const std::span<const Extended> values = Table().Values;
    for (std::size_t i = 0; i < values.size(); i += kColumns) {
        const auto row = values.subspan(i, kColumns);
        if (row[1] < kLimit) found.Values.insert(found.Values.end(), row.begin(), row.end());
    }
    return found;
}

std::shared_ptr<INumberGrid> GridSelect() {
    return Grid()->Select([](const auto&, const auto&, const TRow& row, TRow& newRow, std::int32_t) {
        newRow.SetValue(4, row.GetValue(0) + row.GetValue(1));
    });
}

std::vector<std::vector<Extended>> RowsSelect() {
    std::vector<std::vector<Extended>> made;
    made.reserve(Rows().size());
    for (const auto& row : Rows()) made.push_back(row), made.back()[4] = row[0] + row[1];
    return made;
}

TPlainTable TableSelect() {
    TPlainTable made;
    const std::span<const Extended> values = Table().Values;
    made.Values.reserve(values.size());
    for (std::size_t i = 0; i < values.size(); i += kColumns) {
        const auto row = values.subspan(i, kColumns);
        made.Values.insert(made.Values.end(), row.begin(), row.end());
        made.Values.back() = row[0] + row[1];
    }
    return made;
}

Extended Checksum(const std::shared_ptr<INumberGrid>& grid) {
    Extended sum = grid->GetCount();
    for (std::int32_t i = 0; i < grid->GetCount(); ++i) sum += grid->GetRow(i).GetValue(4);
    return sum;
}

Extended Checksum(const std::vector<std::vector<Extended>>& rows) {
    auto sum = static_cast<Extended>(rows.size());
    for (const auto& row : rows) sum += row[4];
    return sum;
}

Extended Checksum(const TPlainTable& table) {
    auto sum = static_cast<Extended>(table.Values.size() / kColumns);
    for (std::size_t i = 4; i < table.Values.size(); i += kColumns) sum += table.Values[i];
    return sum;
}

template <typename TBuild, typename TPeer>
void Measure(benchmark::State& state, TBuild build, TPeer peer) {
    if (Checksum(build()) != Checksum(peer())) throw std::runtime_error("the results differ");
    for (auto _ : state) benchmark::DoNotOptimize(build());
    state.SetItemsProcessed(state.iterations() * kRows);
}

BENCHMARK_CAPTURE(Measure, WhereGrid, GridWhere, TableWhere)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, WhereVectorsOfRows, RowsWhere, TableWhere)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, WhereOneVector, TableWhere, GridWhere)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, SelectGrid, GridSelect, TableSelect)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, SelectVectorsOfRows, RowsSelect, TableSelect)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Measure, SelectOneVector, TableSelect, GridSelect)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace Varnholt
