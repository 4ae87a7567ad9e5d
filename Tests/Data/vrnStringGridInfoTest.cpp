#include "VarnholtLib/Data/vrnStringGridInfo.h"

#include <gmock/gmock.h>

#include <map>

#include "Tests/Support/FormatSettingsScope.h"
#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;

/// Shows rows of text as a grid and counts how often each cell is read.
struct TCountingGrid final : TStringGrid {
    explicit TCountingGrid(std::vector<std::vector<String>> rows, int fixedCols = 0, int fixedRows = 0)
        : TStringGrid(static_cast<int>(rows.at(0).size()), static_cast<int>(rows.size()), fixedCols,
                      fixedRows),
          Rows(std::move(rows)) {}

    StringView GetCell(std::int32_t col, std::int32_t row) const override {
        ++Reads[{col, row}];
        return Rows.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(col));
    }

    std::vector<std::vector<String>> Rows;
    mutable std::map<std::pair<int, int>, int> Reads;
};

TEST(StringGridInfo, TypesOfColumns) {
    // Cells, type, and how many cells are read.
    const std::tuple<std::vector<String>, TVarType, std::size_t> cases[] = {
        {{u"1", u"2", u"3"}, varInteger, 3},        {{u"2.5", u"1"}, varDouble, 2},
        {{u"1", u"x", u"2.5"}, varString, 2},       {{u"1", u"", u"3"}, varString, 2},
        {{u" -2147483648 ", u"$F"}, varInteger, 2}, {{u"1", u"2147483648"}, varDouble, 2},
        {{u"1e308", u"1e309", u"1"}, varString, 2}, {{u"1,5"}, varString, 1}};
    for (const auto& [cells, type, read] : cases) {
        std::vector<std::vector<String>> rows;
        for (const String& cell : cells) rows.push_back({cell});
        const TCountingGrid grid(rows);
        EXPECT_EQ(TStringGridInfo(&grid).GetColTypeAtIndex(0), type) << ToUtf8(cells.back());
        EXPECT_EQ(grid.Reads.size(), read) << ToUtf8(cells.back());
    }
    const TFormatSettingsScope comma(u',');
    EXPECT_EQ(TStringGridInfo::GetTypeOfValueString(u"1,5"), varDouble);
    EXPECT_EQ(TStringGridInfo::GetTypeOfValueString(u"1.5"), varString);
}

TEST(StringGridInfo, ReadsEachCellAtMostTwice) {
    const TCountingGrid grid(
        {{u"", u"count", u"mm", u"sky"}, {u"1", u"7", u"$1F", u"dry"}, {u"2", u"-3", u"0.25", u"wet"}}, 1, 1);
    const TStringGridInfo info(&grid);
    EXPECT_TRUE(info.GetNumDataColumns() == 3 && info.GetNumDataRows() == 2);
    std::vector<TVarType> types;
    info.GetColumnTypesAsArray(types);
    EXPECT_THAT(types, ElementsAre(varString, varInteger, varDouble, varString));
    EXPECT_FALSE(grid.Reads.contains({0, 1})) << "a fixed column is read";

    TVariantArray first, second;
    info.GetRowDataAsArray(1, first);
    second = first;
    info.GetRowDataAsArray(2, second);
    EXPECT_EQ(first, (TVariantArray{u"1", 7, 31.0, u"dry"}));
    EXPECT_EQ(second, (TVariantArray{u"2", -3, 0.25, u"wet"}));
    EXPECT_THAT((std::vector{first[1].GetType(), first[2].GetType()}), ElementsAre(varInteger, varDouble));
    for (const auto& [cell, reads] : grid.Reads) EXPECT_LE(reads, 2) << cell.first << ' ' << cell.second;
}

TEST(StringGridInfo, AGridWithoutDataRowsHasOneCellTested) {
    const TStringGrid heading(1, 1, 0, 1);
    EXPECT_EQ(TStringGridInfo(&heading).GetColTypeAtIndex(0), varString) << "no such cell";
    TCountingGrid bottomless({{u"x"}}, 0, 1);
    bottomless.Rows.push_back({u"7"});
    EXPECT_EQ(TStringGridInfo(&bottomless).GetColTypeAtIndex(0), varInteger);
}

TEST(StringGridInfo, RefusesMissingColumnsAndChangedCells) {
    TCountingGrid grid({{u"1", u"2.5"}, {u"3", u"4"}, {u"5", u"6"}});
    TStringGridInfo info(&grid);
    grid.Rows = {{u"one", u"2.5"}, {u"1", u"two"}, {u"1", u"1e309"}};
    TVariantArray data = {7};
    const StringView outside = u"ColumnIndex is out of range";
    ExpectRaised<Exception>({{[] { TStringGridInfo none(nullptr); }, u"Grid object cannot be NULL"},
                             {[&] { info.DiscoverColumnType(-1); }, outside}});
    EXPECT_EQ(Raised<ERangeError>([&] { return info.GetColTypeAtIndex(2); }), outside);
    ExpectRaised<EConvertError>(
        {{[&] { info.GetRowDataAsArray(0, data); }, u"'one' is not a valid integer value"},
         {[&] { info.GetRowDataAsArray(1, data); }, u"'two' is not a valid floating point value"},
         {[&] { info.GetRowDataAsArray(2, data); }, u"'1e309' is not a valid floating point value"}});
    EXPECT_EQ(data, TVariantArray{7});
    info.DiscoverColumnTypes();
    EXPECT_EQ(info.GetColTypeAtIndex(0), varString);
}

}  // namespace
}  // namespace Varnholt::Test
