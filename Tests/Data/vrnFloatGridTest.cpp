#include "VarnholtLib/Data/vrnFloatGrid.h"

#include <numeric>

#include "Platform/Runtime/Format.h"
#include "Tests/Data/GridTestSupport.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

const String kOutside = u"Index out of bounds in TAbstractGrid.CheckBounds\r";

std::span<float> CellsOf(TFloatGrid& grid) {
    return {static_cast<float*>(grid.GetBuffer()), std::size_t(grid.GetCountX() * grid.GetCountY())};
}

// Cells 1, 2, 3, ... row by row.
TFloatGrid Numbered(std::int32_t columns, std::int32_t rows, std::int32_t baseX, std::int32_t baseY) {
    TFloatGrid grid(columns, rows);
    grid.SetBaseX(baseX);
    grid.SetBaseY(baseY);
    std::iota(CellsOf(grid).begin(), CellsOf(grid).end(), 1.0F);
    return grid;
}

TEST(AbstractGrid, TakesShapesAndBlocksThat32BitsCount) {
    const String tooSmall = u"Can't create a grid with a dimension less than 1";
    const String tooLarge = u"Can't create a grid of more than 2147483647 cells";
    TAbstractGrid large(kHighest, 1), grid(3, 2), based(4, 3);
    EXPECT_EQ(based.Index(3, 2), 6);
    based.SetBaseX(-1);
    based.SetBaseY(0);
    EXPECT_EQ(based.Index(2, 2), 11);
    // clang-format off
    ExpectRaised<EGridException>({
        {[] { TAbstractGrid(0, 1); }, tooSmall},
        {[] { TAbstractGrid(1, kLowest); }, tooSmall}, {[] { TAbstractGrid(65'536, 32'768); }, tooLarge},
        {[&] { large.AllocateMem(2); }, u"Can't allocate a grid of more than 2147483647 bytes"},
        {[&] { based.CheckBounds(2, 2); }, u"(nothing raised)"},
        {[&] { based.CheckBounds(3, 2); }, kOutside + u"X = 3"},
        {[&] { based.CheckBounds(-2, 9); }, kOutside + u"X = -2"},
        {[&] { based.CheckBounds(0, -1); }, kOutside + u"Y = -1"},
        {[&] { based.CheckBounds(0, 3); }, kOutside + u"Y = 3"},
        {[&] { based.SetBaseX(kHighest - 2); },
         u"Index range of a grid exceeds 32 bits\rBase = 2147483645"}});
    // clang-format on
    based.SetBaseX(kHighest - 3);
    based.SetBaseY(kLowest);
    EXPECT_EQ(based.Index(kHighest, kLowest + 2), 11);
    grid.AllocateMem(8);
    EXPECT_EQ(grid.GetMemReq(), 48);
    EXPECT_THAT(std::span(static_cast<char*>(grid.GetBuffer()), 48), testing::Each(0));
    grid.AllocateMem(&large);
    EXPECT_TRUE(grid.GetMemReq() == 0 && grid.GetBuffer() == &large);
}

TEST(FloatGrid, NoIndexLeavesTheMemory) {
    const std::tuple<std::int32_t, std::int32_t, std::int32_t> cases[] = {// clang-format off
        {1, 0, 1}, {1, 4, 2}, {1, 1, 0}, {1, 1, 3}, {0, kLowest, kHighest},
        {kLowest, kHighest, kHighest}, {kHighest - 2, kLowest, kLowest}};
    // clang-format on
    for (const auto& [base, x, y] : cases) {
        TFloatGrid grid = Numbered(3, 2, base, base);
        const String text = Format(u"Index out of bounds in TFloatGrid.%%s\rX = %d, Y = %d", {x, y});
        ExpectRaised<EGridException>(
            {{[&, x = x, y = y] { static_cast<void>(grid.Get(x, y)); }, Format(text, {u"Get"})},
             {[&, x = x, y = y] { grid.Put(x, y, 9); }, Format(text, {u"Put"})}});
        EXPECT_THAT(CellsOf(grid), ElementsAre(1, 2, 3, 4, 5, 6)) << ToUtf8(text);
    }
    TFloatGrid grid = Numbered(3, 2, 1, 1);
    EXPECT_EQ(grid.Get(4, 1), 4) << "continues in the next row";
    EXPECT_THAT(grid.GetRow(2), ElementsAre(4, 5, 6));
    const StringView noRow = u"Index out of bounds in TFloatGrid.GetRow\rX = 1, Y = %d";
    for (const std::int32_t row : {0, 3, kLowest, kHighest}) {
        EXPECT_EQ(Raised<EGridException>([&] { static_cast<void>(grid.GetRow(row)); }), Format(noRow, {row}));
    }
}

TEST(FloatGrid, FlipsAboutItsMiddle) {
    const std::tuple<int, int, std::vector<float>, std::vector<float>> cases[] = {
        // clang-format off
        {3, 2, {4, 5, 6, 1, 2, 3}, {3, 2, 1, 6, 5, 4}}, {2, 3, {5, 6, 3, 4, 1, 2}, {2, 1, 4, 3, 6, 5}},
        {4, 1, {1, 2, 3, 4}, {4, 3, 2, 1}}, {1, 4, {4, 3, 2, 1}, {1, 2, 3, 4}}};
    // clang-format on
    for (const auto& [columns, rows, vertical, horizontal] : cases) {
        TFloatGrid grid = Numbered(columns, rows, 0, -7), other = grid;
        grid.FlipVert();
        other.FlipHoriz();
        EXPECT_THAT(CellsOf(grid), ElementsAreArray(vertical)) << columns << " x " << rows;
        EXPECT_THAT(CellsOf(other), ElementsAreArray(horizontal)) << columns << " x " << rows;
    }
}

TEST(FloatGrid, HandsOutCellsAsCopies) {
    TFloatGrid grid = Numbered(3, 2, 0, 10), turned = Numbered(2, 3, 0, 0), larger(3, 3);
    EXPECT_THAT(grid.ColToFloatArray(2).GetRange(1, 2), ElementsAre(3, 6));
    EXPECT_THAT(grid.RowToFloatArray(11).GetRange(1, 3), ElementsAre(4, 5, 6));
    ExpectRaised<EGridException>({{[&] { static_cast<void>(grid.ColToFloatArray(3)); }, kOutside + u"X = 3"},
                                  {[&] { static_cast<void>(grid.RowToFloatArray(9)); }, kOutside + u"Y = 9"},
                                  {[&] { grid.Copy(&larger); }, u"Can't copy a grid into a larger one"}});
    turned.Initialise(9);
    grid.Copy(&turned);
    grid.Copy(nullptr);
    EXPECT_THAT(CellsOf(turned), ElementsAre(1, 2, 3, 4, 5, 6));
    TFloatGrid copy = grid;
    copy.Put(0, 10, 9);
    TFloatGrid taken = std::move(grid);
    EXPECT_THAT(CellsOf(taken), ElementsAre(1, 2, 3, 4, 5, 6));
    grid.FlipVert();  // NOLINT(bugprone-use-after-move): a moved-from grid stays harmless
    grid.FlipHoriz();
    EXPECT_THROW(static_cast<void>(grid.Get(0, 10)), EGridException);
    grid = copy;
    EXPECT_THAT(CellsOf(grid), ElementsAre(9, 2, 3, 4, 5, 6));
    EXPECT_EQ(grid.GetBaseY(), 10);
}

}  // namespace
}  // namespace Varnholt::Test
