#include "VarnholtLib/Data/vrnNumberGrid.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <span>

#include "Platform/Runtime/Files.h"
#include "Tests/Support/AllocationCount.h"
#include "Tests/Support/FormatSettingsScope.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;
using TValues = std::vector<Extended>;

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
constexpr Extended kNaN = std::numeric_limits<Extended>::quiet_NaN();

std::vector<TValues> ValuesOf(INumberGrid& grid) {
    std::vector<TValues> rows;
    for (std::int32_t i = 0; i < grid.GetCount(); ++i) {
        TValues& values = rows.emplace_back();
        for (std::int32_t c = 0; c < grid.GetRow(i).GetCount(); ++c) values.push_back(grid.GetRow(i)[c]);
    }
    return rows;
}

std::shared_ptr<INumberGrid> GridOf(const std::vector<TValues>& rows) {
    auto grid = TNumberGridFactory::GetObject();
    grid->GetColumns().AddIntColumns(TStringArray{u"a"});
    grid->GetColumns().AddFloatColumns(TStringArray{u"b", u"B"});
    for (const TValues& row : rows) grid->AddRow(row);
    return grid;
}

TEST(NumberGrid, BehavesAsVectorsOfRowsDo) {
    const auto grid = GridOf({});
    grid->GetColumns().Add(TColumn(u"c", ctFloat, 7));
    const TRow& first = grid->GetRow(0);
    grid->AddArrayToRow(TValues{1, 2}, 2, 1);
    grid->AddArrayToRow({}, 3, 9);
    grid->AddRow().SetValue(0, 5);
    grid->AddRow({6, 70, 8, 9});
    grid->GetRow(3).SetValues(TValues{3, 60, 5, 6});
    grid->GetColumns().Add(TColumn(u"later", ctFloat, 4));  // the rows have no place for it
    grid->GetRow(2).SetValue(4, 40);
    for (int i = 0; i < 5000; ++i) grid->AddRow();
    const std::vector<TValues> model = {{0, 0, 0, 7, 4},  {0, 0, 0, 7, 4}, {0, 1, 2, 7, 40},
                                        {3, 60, 5, 6, 4}, {5, 0, 0, 7, 4}, {6, 70, 8, 9, 4}};
    const auto isModel = [&](INumberGrid& shown) {
        const std::vector<TValues> rows = ValuesOf(shown);
        return rows.size() == 5006 && std::ranges::equal(std::span(rows).first(model.size()), model);
    };
    EXPECT_TRUE(isModel(*grid) && &first == &grid->GetRow(0));
    EXPECT_TRUE(isModel(*TNumberGridFactory::GetObject(grid, true)));
    EXPECT_EQ(TNumberGridFactory::GetObject(grid, false)->GetCount(), 0);
    const auto where = grid->Where([&](const auto& source, const TRow& row, std::int32_t index) {
        EXPECT_TRUE(source == grid && &row == &grid->GetRow(index));
        return row.GetValueByColName(u"b") >= 50;
    });
    EXPECT_EQ(ValuesOf(*where), (std::vector<TValues>{model[3], model[5]}));
    const auto select =
        where->Select([](const auto&, const auto& target, auto& row, auto& newRow, auto index) {
            EXPECT_EQ(target->GetCount(), index);
            newRow.SetValueByColName(u"a", row[0] + row[1]);
        });
    EXPECT_EQ(ValuesOf(*select), (std::vector<TValues>{{63, 60, 5, 6, 4}, {76, 70, 8, 9, 4}}));
    EXPECT_EQ(ValuesOf(*where->RemoveColumns(TStringArray{u"b", u"none", u"a"})),
              (std::vector<TValues>{{5, 6, 4}, {8, 9, 4}}));
    EXPECT_TRUE(isModel(*grid));
}

TEST(NumberGrid, ColumnsAreFoundByExactName) {
    const auto grid = GridOf({{1, 2, 3}});
    EXPECT_EQ(grid->RemoveColumns({}), grid);
    EXPECT_EQ(grid->RemoveColumns(TStringArray{u"A", u""}), grid);
    const auto none = grid->RemoveColumns(grid->GetColumns().ToColumnNameArray());
    EXPECT_TRUE(none != grid && none->GetCount() == 0 && none->GetColumns().GetCount() == 0);
    const auto copy = grid->Where([](const auto&, const TRow&, std::int32_t) { return false; });
    copy->GetColumns().AddColumn(u"b", ctInt);
    EXPECT_THAT(copy->GetColumns().ToColumnNameArray(), ElementsAre(u"a", u"b", u"B", u"b"));
    EXPECT_TRUE(grid->GetColumns().GetCount() == 3 && copy->GetCount() == 0);
    EXPECT_TRUE(copy->GetColumns().IndexOf(u"b") == 1 && !copy->GetColumns().Contains(u"A"));

    const TFloatArray b = grid->GetColumnAsFloatArray(u"b").value();
    EXPECT_TRUE(b.GetBase() == 0 && b.GetLast() == 0 && b[0] == 2.0F);
    grid->GetRow(0).SetValue(2, 16'777'217);
    EXPECT_EQ(grid->GetColumnAsFloatArray(2)[0], 16'777'216.0F);
    EXPECT_FALSE(grid->GetColumnAsFloatArray(u"c").has_value());
}

TEST(NumberGrid, RowsAreCopiedByPosition) {
    TColumns narrow, wide;
    narrow.AddColumn(u"a", ctFloat);
    wide.AddColumn(u"b", ctFloat);
    wide.Add(TColumn(u"c", ctInt, 7));
    TRows source(wide);
    source.AddRow().SetValues(TValues{1, 2});
    const TRows cut(narrow, source);
    const TRow filled(wide, cut.GetItem(0));
    EXPECT_TRUE(cut.GetCount() == 1 && cut.GetItem(0).GetCount() == 1 && filled[0] == 1 && filled[1] == 7);
    const TRow* const rows[] = {&source.GetItem(0), nullptr};
    source.AddRowsViaCopy(std::span(rows, 1));  // a row of the list itself
    EXPECT_TRUE(source.GetCount() == 2 && source.GetItem(1)[1] == 2);
    EXPECT_EQ(Raised<EArgumentNilException>([&] { source.AddRowsViaCopy(rows); }), u"rows");
    EXPECT_EQ(source.GetCount(), 2);
}

TEST(NumberGrid, RefusalsChangeNothing) {
    const auto grid = GridOf({{2.5L, kNaN, 3e9L}, {3.5L, -0.5L, 1}});
    grid->GetColumns().AddIntColumns(TStringArray{u"d"});  // the rows have no place for it
    TRow& row = grid->GetRow(0);
    const TValues four(4, 9);
    ExpectRaised<ERangeError>(
        {{[&] { static_cast<void>(row[4]); }, u"Array index out of bounds (4)"},
         {[&] { row.SetValue(-1, 9); }, u"Array index out of bounds (-1)"},
         {[&] { grid->AddArrayToRow(four, 7, 1); }, u"Array index out of bounds (4)"},
         {[&] { grid->AddArrayToRow(four, 7, kMax); }, u"Array index out of bounds (2147483647)"},
         {[&] { grid->AddArrayToRow(four, 0, -1); }, u"Array index out of bounds (-1)"},
         {[&] { grid->GetColumnAsFloatArray(4).Sort(); }, u"Array index out of bounds (4)"},
         {[&] { static_cast<void>(row.GetValueAsInt(1)); }, u"NAN does not fit in a 32-bit integer"},
         {[&] { static_cast<void>(row.GetValueAsInt(2)); }, u"3000000000 does not fit in a 32-bit integer"},
         {[] { TNumberGridFactory::GetObject()->GetRow(kMax); }, u"Array length out of range (2147483648)"}});
    ExpectRaised<Exception>(
        {{[&] { row.SetValueByColName(u"A", 1); }, u"The column \"A\" is not present in the data set"},
         {[&] { row.SetValues(TValues(3)); }, u"Number of values does not match number of columns"},
         {[&] { grid->AddRow({1}); }, u"Number of values does not match number of columns"}});
    ExpectRaised<EListError>(
        {{[&] { grid->GetRow(-1); }, u"List index out of bounds (-1)"},
         {[&] { static_cast<void>(row.GetColumnType(4)); }, u"List index out of bounds (4)"}});
    ExpectRaised<EArgumentNilException>(
        {{[&] { static_cast<void>(grid->Where(nullptr)); }, u"func"},
         {[&] { static_cast<void>(grid->Select(nullptr)); }, u"func"},
         {[] { static_cast<void>(TNumberGridFactory::GetObject(nullptr, true)); }, u"source"}});
    EXPECT_EQ(Raised<EGridException>([&] { GridOf({})->GetColumnAsFloatArray(u"a")->Sort(); }),
              u"Can't create a float array with a dimension less than 1");
    EXPECT_TRUE(row[0] == 2.5L && std::isnan(row[1]) && row[2] == 3e9L && row[3] == 0);
    EXPECT_TRUE(row.GetValueAsInt(0) == 2 && grid->GetRow(1).GetValueAsInt(0) == 4);
    EXPECT_EQ(grid->GetCount(), 3) << "the row of a refused AddRow stays, and no other";
    EXPECT_THAT(ValuesOf(*grid).back(), ElementsAre(0, 0, 0, 0));
}

TEST(NumberGrid, CallbacksMayAddRows) {
    const auto grid = GridOf({{1, 0, 0}, {2, 0, 0}});
    const auto all = grid->Where([](const auto& source, const TRow&, std::int32_t) {
        source->GetRow(source->GetCount() + 5000);
        return true;
    });
    EXPECT_EQ(ValuesOf(*all), (std::vector<TValues>{{1, 0, 0}, {2, 0, 0}}));
    TRow* previous = nullptr;
    const auto made = all->Select([&](const auto& source, const auto& target, auto&, TRow& newRow, auto) {
        source->AddRow({8, 8, 8});
        target->AddRow({9, 9, 9});
        if (previous != nullptr) previous->SetValue(2, newRow[0]);  // still the row that is in the grid
        previous = &newRow;
    });
    EXPECT_EQ(ValuesOf(*made), (std::vector<TValues>{{9, 9, 9}, {1, 0, 2}, {9, 9, 9}, {2, 0, 0}}));
}

TEST(NumberGrid, SaveCsvWritesTheseBytes) {
    const TTemporaryFolder folder;
    const auto grid = GridOf({{2.5L, 2.5L, -1e20L}, {-3.5L, 0.1L, 7}});
    grid->GetColumns().AddFloatColumns(TStringArray{u"\u00e4,\""});
    const String path = folder.GetPath(u"a.csv");
    grid->SaveCsv(path);
    EXPECT_EQ(ReadWholeFile(path), "a,b,B,\xc3\xa4,\",\r\n2,2.5,-1E20,0,\r\n-4,0.1,7,0,\r\n");
    const TFormatSettingsScope comma(u',');
    grid->SaveCsv(path);
    EXPECT_EQ(ReadWholeFile(path), "a,b,B,\xc3\xa4,\",\r\n2,2,5,-1E20,0,\r\n-4,0,1,7,0,\r\n");
    EXPECT_THROW(grid->SaveCsv(folder.GetPath(u"none\\a.csv")), EFCreateError);
    grid->GetRow(1).SetValue(0, kNaN);
    EXPECT_THROW(grid->SaveCsv(path), ERangeError);
    EXPECT_EQ(ReadWholeFile(path).size(), 42U);
}

TEST(NumberGrid, RowsWithoutMemoryAreRefusedWhole) {
    const auto grid = GridOf({{1, 2, 3}});
    const auto addRows = [&] {
        try {
            grid->GetRow(99);
        } catch (const ERangeError& failure) {
            EXPECT_EQ(failure.GetMessage(), u"Out of memory for 100 rows");
            throw;
        }
    };
    bool isDone = false;
    const auto check = [&] {
        const std::int32_t count = grid->GetCount();
        EXPECT_TRUE(!isDone && (count == 1 || count == 100)) << count;
        isDone = count == 100;
    };
    EXPECT_GT(FailEachAllocation(addRows, check), 1);
    EXPECT_EQ(grid->GetRow(99)[2], 0);
}

}  // namespace
}  // namespace Varnholt::Test
