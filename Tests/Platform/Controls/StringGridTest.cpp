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
    ExpectRaised<ERangeError>({
        {[&] { static_cast<void>(grid.GetCell(5, 0)); }, u"Grid cell out of range (column 5, row 0)"},
        {[&] { static_cast<void>(grid.GetCell(-1, 4)); }, u"Grid cell out of range (column -1, row 4)"},
        {[&] { grid.SetCell(0, 5, u""); }, u"Grid cell out of range (column 0, row 5)"},
        {[&] { grid.SetColCount(-1); }, u"Grid count out of range (-1)"},
        {[&] { grid.SetFixedCols(6); }, u"Fixed count out of range (6)"},
        {[&] { grid.SetFixedRows(-1); }, u"Fixed count out of range (-1)"},
        {[&] { TStringGrid(2'000'000'000, 2'000'000'000).SetCell(0, 1'999'999'999, u"x"); },
         u"Grid too large"}});
    // clang-format on
    grid.SetFixedRows(5);
    grid.SetRowCount(3);
    grid.SetColCount(0);
    EXPECT_TRUE(grid.GetFixedRows() == 3 && grid.GetFixedCols() == 0);
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
