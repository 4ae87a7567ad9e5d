#include "Platform/Controls/StringGrid.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "Tests/Foundation/Raised.h"

namespace Varnholt {
namespace {

TEST(StringGrid, TakesOnlyWhatLiesWithin) {
    constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    TStringGrid grid;
    EXPECT_EQ(grid.GetColCount() * grid.GetRowCount(), 25);
    EXPECT_EQ(grid.GetFixedCols() + grid.GetFixedRows(), 2);
    const std::pair<std::function<void()>, StringView> refused[] = {
        {[&] { (void)grid.GetCell(5, 0); }, u"Grid cell out of range (column 5, row 0)"},
        {[&] { (void)grid.GetCell(-1, 4); }, u"Grid cell out of range (column -1, row 4)"},
        {[&] { grid.SetCell(0, 5, u""); }, u"Grid cell out of range (column 0, row 5)"},
        {[&] { grid.SetCell(0, lowest, u"x"); }, u"Grid cell out of range (column 0, row -2147483648)"},
        {[&] { grid.SetColCount(-1); }, u"Grid count out of range (-1)"},
        {[&] { grid.SetRowCount(lowest); }, u"Grid count out of range (-2147483648)"},
        {[&] { grid.SetFixedCols(6); }, u"Fixed count out of range (6)"},
        {[&] { grid.SetFixedRows(-1); }, u"Fixed count out of range (-1)"},
        {[&] { TStringGrid(0, 1); }, u"Fixed count out of range (1)"},
        {[&] { TStringGrid(2'000'000'000, 2'000'000'000).SetCell(0, 1'999'999'999, u"x"); },
         u"Grid too large"}};
    for (const auto& [call, message] : refused) EXPECT_EQ(Raised<ERangeError>(call), message);
    grid.SetFixedRows(5);
    grid.SetRowCount(3);
    EXPECT_EQ(grid.GetFixedRows(), 3);
    grid.SetColCount(0);
    EXPECT_EQ(grid.GetFixedCols(), 0);
}

TEST(StringGrid, ACellMayBeCopiedFromAnother) {
    TStringGrid grid(2, 2);
    grid.SetCell(0, 0, u"a text that fills the room of the grid");
    for (int i = 0; i < 100; ++i) grid.SetCell(1, 1, String(grid.GetCell(1, 1)) + u"x");
    grid.SetCell(0, 1, grid.GetCell(0, 0));
    grid.SetCell(0, 0, grid.GetCell(0, 0).substr(2, 4));
    grid.SetCell(1, 0, grid.GetCell(1, 1).substr(1));
    EXPECT_EQ(grid.GetCell(0, 0), u"text");
    EXPECT_EQ(grid.GetCell(0, 1), u"a text that fills the room of the grid");
    EXPECT_EQ(grid.GetCell(1, 0), String(99, u'x'));
}

TEST(StringGrid, HoldsWhatAMapOfCellsHolds) {
    std::mt19937 random(20120101);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int round = 0; round < 20; ++round) {
        TStringGrid grid(4, 4, 0, 0);
        std::map<std::pair<int, int>, String> model;
        for (int step = 0; step < 500; ++step) {
            if (below(25) == 0) {
                const std::int32_t cols = 1 + below(9), rows = 1 + below(9);
                grid.SetRowCount(rows);
                grid.SetColCount(cols);
                std::erase_if(model, [&](const auto& cell) {
                    return cell.first.first >= cols || cell.first.second >= rows;
                });
            }
            const std::pair at(below(grid.GetColCount()), below(grid.GetRowCount()));
            model[at] = String(static_cast<std::size_t>(below(30)), static_cast<Char>(u'a' + below(26)));
            grid.SetCell(at.first, at.second, model[at]);
            for (int i = 0; i < grid.GetColCount() * grid.GetRowCount(); ++i) {
                const std::pair cell(i % grid.GetColCount(), i / grid.GetColCount());
                ASSERT_EQ(grid.GetCell(cell.first, cell.second), model[cell]) << round << ' ' << step;
            }
        }
    }
}

}  // namespace
}  // namespace Varnholt
