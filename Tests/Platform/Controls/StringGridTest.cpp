#include "Platform/Controls/StringGrid.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

TEST(StringGrid, TakesOnlyWhatLiesWithin) {
    TStringGrid grid;  // 5 by 5
    // clang-format off
    const std::pair<std::function<void()>, std::string> refused[] = {
        {[&] { (void)grid.GetCell(5, 0); }, "Grid cell out of range (column 5, row 0)"},
        {[&] { (void)grid.GetCell(-1, 4); }, "Grid cell out of range (column -1, row 4)"},
        {[&] { grid.SetCell(0, 5, u""); }, "Grid cell out of range (column 0, row 5)"},
        {[&] { grid.SetColCount(-1); }, "Grid count out of range (-1)"},
        {[&] { grid.SetRowCount(-2'147'483'647); }, "Grid count out of range (-2147483647)"},
        {[&] { grid.SetFixedCols(6); }, "Fixed count out of range (6)"},
        {[&] { grid.SetFixedRows(-1); }, "Fixed count out of range (-1)"},
        {[&] { TStringGrid(0, 1); }, "Fixed count out of range (1)"},
        {[&] { TStringGrid(2'000'000'000, 2'000'000'000).SetCell(0, 1'999'999'999, u"x"); }, "Grid too large"}};
    // clang-format on
    for (const auto& [call, message] : refused) EXPECT_EQ(ToUtf8(Raised<ERangeError>(call)), message);
    grid.SetFixedRows(5);
    grid.SetRowCount(3);
    grid.SetColCount(0);
    EXPECT_EQ(grid.GetFixedRows(), 3);
    EXPECT_EQ(grid.GetFixedCols(), 0);
}

// Random changes against a map of cells; some texts are taken from the grid itself.
TEST(StringGrid, HoldsWhatAMapOfCellsHolds) {
    std::mt19937 random(20120101);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    TStringGrid grid(4, 4, 0, 0);
    std::map<std::pair<int, int>, String> model;
    for (int step = 0; step < 10'000; ++step) {
        if (below(25) == 0) {
            grid.SetRowCount(1 + below(9));
            grid.SetColCount(1 + below(9));
            std::erase_if(model, [&](const auto& cell) {
                return cell.first.first >= grid.GetColCount() || cell.first.second >= grid.GetRowCount();
            });
        }
        const int col = below(grid.GetColCount()), row = below(grid.GetRowCount());
        const StringView own = grid.GetCell(below(grid.GetColCount()), row);
        const String fresh(static_cast<std::size_t>(below(30)), static_cast<Char>(u'a' + below(26)));
        const StringView text = step % 3 == 0 ? own.substr(own.size() / 3) : StringView(fresh);
        model[{col, row}] = text;
        grid.SetCell(col, row, text);
        for (int i = 0; i < grid.GetColCount() * grid.GetRowCount(); ++i) {
            const std::pair at(i % grid.GetColCount(), i / grid.GetColCount());
            ASSERT_EQ(grid.GetCell(at.first, at.second), model[at]) << "step " << step;
        }
    }
}

}  // namespace
}  // namespace Varnholt::Test
