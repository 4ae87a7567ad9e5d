#include "VarnholtLib/Data/vrnTableData.h"

#include <gmock/gmock.h>

#include <random>
#include <stdexcept>

#include "Platform/Controls/StringGrid.h"
#include "Platform/Runtime/Files.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"
#include "VarnholtLib/Data/vrnSmartArray.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;
using TRowList = std::vector<const TTableDataRow*>;
using TTypes = std::vector<TVarType>;
using TValues = std::vector<Variant>;

TRowList RowsOf(const TTableDataRows& rows) {
    return {rows.begin(), rows.end()};
}

std::vector<std::string> Texts(const TTableDataRows& rows) {
    std::vector<std::string> texts;
    for (const TTableDataRow* row : rows) texts.push_back(ToUtf8(row->ToString()));
    return texts;
}

std::int32_t ByFirst(const TTableDataRow& a, const TTableDataRow& b) {
    return a.FieldAsInteger(0) - b.FieldAsInteger(0);
}

void AddRows(TTableData& table, const std::vector<TValues>& rows) {
    for (const TValues& row : rows) table.AddRow().Fill(row);
}

TSortOperation Keys(const std::vector<TSortField>& fields) {
    TSortOperation keys;
    for (const TSortField& field : fields) keys.Add(field.ColumnIndex, field.OrderAscending);
    return keys;
}

// The sort step by step, with a smart array for each run.
void PlainStep(std::span<const TTableDataRow*> rows, const TSortOperation& keys, std::int32_t key) {
    if (rows.size() < 2 || key == keys.GetCount()) return;
    const std::int32_t column = keys[key].ColumnIndex;
    TValues values;
    for (const TTableDataRow* row : rows) values.push_back(row->GetField(column));
    TSmartArray array{TVariantArray(values)};
    array.Sort();
    array.SetInverted(!keys[key].OrderAscending);
    const TRowList before(rows.begin(), rows.end());
    std::size_t first = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto k = static_cast<std::int32_t>(i);
        rows[i] = before[static_cast<std::size_t>(array.GetSortMapValue(k))];
        if (i > 0 && array.GetData(k) != array.GetData(k - 1)) {
            PlainStep(rows.subspan(first, i - first), keys, key + 1);
            first = i;
        }
    }
    PlainStep(rows.subspan(first), keys, key + 1);
}

TEST(TableData, SortsAsTheStepsDo) {
    std::mt19937 random(11);
    const auto draw = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    for (int round = 0; round < 60; ++round) {
        TTableData table(TTypes{varInteger, varDouble, varString, varInt64});
        for (int count = round % 3 == 0 ? round % 7 : 700; count > 0; --count) {
            TTableDataRow& row = table.AddRow();
            row.SetField(0, draw(5));
            if (round % 2 == 0 || draw(4) > 0) row.SetField(1, draw(6) == 0 ? std::nan("") : draw(9) / 2.0);
            row.SetField(2, draw(12));
            if (round % 5 != 0) row.SetField(3, draw(1000));
        }
        std::vector<std::int32_t> columns = {0, 1, 2, 3};
        std::ranges::shuffle(columns, random);
        columns.resize(static_cast<std::size_t>(round % 4 + 1));
        TSortOperation keys;
        for (const std::int32_t column : columns) keys.Add(column, draw(2) == 0);
        const TRowList stored = RowsOf(table.GetData());
        TRowList sorted = stored;
        PlainStep(sorted, keys, 0);
        table.ExecuteSort(keys);
        table.ExecuteSort(keys);  // from the stored order again
        EXPECT_EQ(RowsOf(table.GetSorted()), sorted) << "round " << round;
        EXPECT_EQ(RowsOf(table.GetData()), stored);
    }
}

TEST(TableData, SortsBesideTheStoredOrderAndDumpsEither) {
    const TTemporaryFolder folder;
    const String path = folder.GetPath(u"table.txt");
    TTableData table(TTypes{varInteger, varString});
    AddRows(table, {{2, u"b"}, {1, u"\u00E9"}, {2, u"a"}, {1, u"b"}});
    table.ExecuteSort(Keys({{0, true}, {1, false}}));
    table.AddRow();
    table.Dump(path, true);
    EXPECT_EQ(ReadWholeFile(path), "1 \xE9\r\n1 b\r\n2 b\r\n2 a\r\n");
    table.Dump(path, false);
    EXPECT_EQ(ReadWholeFile(path), "2 b\r\n1 \xE9\r\n2 a\r\n1 b\r\n \r\n");
}

TEST(TableData, CellsTakeTheTypeOfTheirColumn) {
    TTableData table(TTypes{varInteger, varDouble, varString, varInt64});
    TTableDataRow& row = table.AddRow();
    EXPECT_EQ(ToUtf8(row.ToString()), "   ");
    row.Fill(TValues{u"12", 2, 1.5, 3'000'000'000LL, u"one too many"});
    EXPECT_EQ(ToUtf8(row.ToString()), "12 2.000 1.5 3000000000");
    row.SetField(1, 16777217);
    EXPECT_EQ(ToUtf8(row.FieldAsString(1)), "16777216.000");  // as a 32-bit float
    row.SetFloat(1, 0.1F);
    EXPECT_EQ(row.FieldAsFloat(1), double{0.1F});
    EXPECT_EQ(row.GetFloat(2), 1.5F);
    EXPECT_EQ(row.FieldAsInteger(2), 2);  // to the even neighbour
    EXPECT_EQ(row.FloatRange(0, 3), (TSingleArray{12, 0.1F, 1.5F}));
    EXPECT_EQ(row.FieldRange(2, 2), (TVariantArray{u"1.5", 3'000'000'000LL}));
    EXPECT_EQ(row.ToList()->Count(), 4);
    EXPECT_THROW(row.Fill(TValues{5, u"x", 6, 7}), EVariantError);
    EXPECT_EQ(ToUtf8(row.ToString()), "5 0.100 1.5 3000000000");
}

TEST(TableData, RefusalsChangeNothing) {
    const TTypes types = {varInteger, varDouble}, oneType = {varInteger};
    const std::vector<String> names = {u"a"};
    TTableData table(types), narrow(oneType);
    TTableDataRow& row = table.AddRow();
    row.Fill(TValues{1, 2});
    table.ExecuteSort(Keys({{9, true}}));  // with one row there is nothing to sort
    AddRows(table, {{0, 0}});
    TSortOperation wide = Keys({{0, true}, {2, true}}), negative = Keys({{-1, true}});
    ExpectRaised<Exception>(
        {{[&] { TTableData made(types, names); },
          u"Array length of column types does not match array length of column names in TableData()"},
         {[] { TTableData::FromStringGrid(nullptr)->AddRow(); }, u"Grid object cannot be NULL"},
         {[&] { wide.Add(2, false); }, u"Unable to sort the same column multiple times"},
         {[&] { static_cast<void>(table.GetColumnValues(2)); }, u"Invalid column index"}});
    ExpectRaised<EArgumentException>(
        {{[] { TTableData made(nullptr); }, u"Source cannot be null"},
         {[&] { row.Fill(TValues{9}); }, u"Fill needs one value for each column"},
         {[&] { TTableDataRow copy(&narrow, row); },
          u"Source row has another number of values than the table has columns"}});
    ExpectRaised<ERangeError>(
        {{[&] { static_cast<void>(table.GetColName(-1)); }, u"Array index out of bounds (-1)"},
         {[&] { static_cast<void>(table.GetColType(2)); }, u"Array index out of bounds (2)"},
         {[&] { static_cast<void>(row.GetField(2)); }, u"Array index out of bounds (2)"},
         {[&] { row.SetField(2, 5); }, u"Array index out of bounds (2)"},
         {[&] { static_cast<void>(row.FieldAsString(-1)); }, u"Array index out of bounds (-1)"},
         {[&] { static_cast<void>(row.FieldAsInteger(2)); }, u"Array index out of bounds (2)"},
         {[&] { static_cast<void>(row.FieldAsFloat(2)); }, u"Array index out of bounds (2)"},
         {[&] { static_cast<void>(row.GetFields(-1, 2)); }, u"Array index out of bounds (-1)"},
         {[&] { static_cast<void>(row.GetFields(1, 2)); }, u"Array index out of bounds (2)"},
         {[&] { static_cast<void>(row.GetFields(1, -1)); }, u"Array length out of range (-1)"},
         {[&] { table.ExecuteSort(wide); }, u"Column index out of range (2)"},
         {[&] { table.ExecuteSort(negative); }, u"Column index out of range (-1)"}});
    ExpectRaised<EListError>({{[&] { table.ExecuteSort({}); }, u"List index out of bounds (0)"},
                              {[&] { return &table.GetItem(2); }, u"List index out of bounds (2)"},
                              {[&] { return &table.GetSorted()[2]; }, u"List index out of bounds (2)"}});
    ExpectRaised<EArgumentNilException>({{[] { TTableDataRow made(nullptr); }, u"tableData"},
                                         {[&] { table.Sort(nullptr); }, u"sortCallback"}});
    EXPECT_EQ(Raised<EVariantError>([&] { row.SetField(0, u"x"); }), u"Cannot convert String 'x' to Integer");
    EXPECT_THAT(Texts(table.GetData()), ElementsAre("1 2.000", "0 0.000"));
    EXPECT_EQ(RowsOf(table.GetSorted()), RowsOf(table.GetData()));
}

TEST(TableData, ColumnsAndCopies) {
    TTableData table(TTypes{varInteger, varDouble});
    EXPECT_THAT(table.GetColumnNames()->ToArray(), ElementsAre(u"Col0", u"Col1"));
    AddRows(table, {{1, 2}, {3, 4}});
    EXPECT_EQ(table.GetColumnValues(1), (TVariantArray{2.0, 4.0}));
    table.ExecuteSort(Keys({{0, false}}));
    const TTableData copy(&table);
    EXPECT_EQ(copy.GetSorted().GetCount(), 0);
    EXPECT_EQ(copy.GetItem(1).GetRowID(), table.GetItem(1).GetRowID());
    EXPECT_NE(table.GetItem(0).GetRowID(), table.GetItem(1).GetRowID());
    table.GetSorted()[0].SetField(0, 9);
    EXPECT_THAT(Texts(copy.GetData()), ElementsAre("1 2.000", "3 4.000"));
    EXPECT_THAT(Texts(table.GetData()), ElementsAre("1 2.000", "9 4.000"));
}

TEST(TableData, LoadsAStringGrid) {
    TStringGrid grid(3, 3, 1, 1);
    const StringView cells[] = {u"", u"Year", u"Rain", u"1", u"2001", u"3", u"2", u"2002", u"4.5"};
    for (std::int32_t i = 0; i < 9; ++i) grid.SetCell(i % 3, i / 3, cells[i]);
    const std::unique_ptr<TTableData> table = TTableData::FromStringGrid(&grid);
    EXPECT_THAT(Texts(table->GetData()), ElementsAre("1 2001 3.000", "2 2002 4.500"));
    EXPECT_EQ(table->GetColType(0), varString);
    EXPECT_EQ(ToUtf8(table->GetColName(2)), "Col2");
}

TEST(TableData, SortsByAnyCallback) {
    std::mt19937 random(12);
    TTableData table(TTypes{varInteger});
    for (int i = 0; i < 500; ++i) table.AddRow().SetField(0, static_cast<int>(random() % 100));
    const TRowList stored = RowsOf(table.GetData());
    table.Sort([&](const auto&, const auto&) { return static_cast<std::int32_t>(random() % 3) - 1; });
    EXPECT_TRUE(std::ranges::is_permutation(RowsOf(table.GetData()), stored));
    table.Sort(ByFirst);
    const TRowList sorted = RowsOf(table.GetData());
    EXPECT_TRUE(std::ranges::is_permutation(sorted, stored));
    EXPECT_TRUE(std::ranges::is_sorted(sorted, {}, [](const auto* row) { return row->FieldAsInteger(0); }));
    EXPECT_EQ(table.GetSorted().GetCount(), 0);
    int calls = 0;
    const auto raise = [&](auto&, auto&) { return ++calls < 100 ? -1 : throw std::runtime_error(""); };
    EXPECT_THROW(table.Sort(raise), std::runtime_error);
    EXPECT_EQ(RowsOf(table.GetData()), sorted);
    const auto addRow = [&](const auto&, const auto&) { return table.AddRow().GetFieldCount(); };
    EXPECT_EQ(Raised<EInvalidOperation>([&] { table.Sort(addRow); }),
              u"The table changed while it was sorted");
}

TEST(TableData, RowsSurviveTheirTable) {
    auto table = std::make_unique<TTableData>(TTypes{varInteger});
    AddRows(*table, {{2}, {1}});
    table->Sort(ByFirst);
    const auto rows = table->RelinquishOwnership();  // in stored order
    rows[1]->SetField(0, u"3");
    AddRows(*table, {{2}});
    table->ExecuteSort(Keys({{0, true}}));
    EXPECT_THAT(Texts(table->GetSorted()), ElementsAre("1", "2", "3"));
    EXPECT_EQ(table->RelinquishOwnership().size(), 1U) << "only the new row";
    table.reset();
    EXPECT_TRUE(rows[0]->FieldAsInteger(0) == 1 && rows[1]->FieldAsInteger(0) == 3);
}

}  // namespace
}  // namespace Varnholt::Test
