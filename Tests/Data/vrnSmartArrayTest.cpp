#include "VarnholtLib/Data/vrnSmartArray.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <random>
#include <set>
#include <stdexcept>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Tests/Foundation/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt {
namespace {

using testing::ElementsAre;

const double kNaN = std::nan("");

// The sort in the steps that its header tells, on the variants themselves.
void PlainSort(TSortedValueArray& a, int lo, int hi) {
    const auto at = [&](int k) -> TSortedValue& { return a[static_cast<std::size_t>(k)]; };
    int i = lo, j = hi;
    const Variant pivot = at((lo + hi) / 2).Value;
    do {
        while (at(i).Value < pivot) ++i;
        while (at(j).Value > pivot) --j;
        if (i <= j) std::swap(at(i++), at(j--));
    } while (i <= j);
    if (lo < j) PlainSort(a, lo, j);
    if (i < hi) PlainSort(a, i, hi);
}

TSortedValueArray PlainSorted(const std::vector<Variant>& values) {
    TSortedValueArray items;
    for (const Variant& value : values) items.push_back({value, static_cast<std::int32_t>(items.size())});
    if (!items.empty()) PlainSort(items, 0, static_cast<int>(items.size()) - 1);
    return items;
}

// Type and value, so that texts are equal where the values are the same to the bit.
std::string Show(const Variant& value) {
    const bool isFloat = value.GetType() == varDouble || value.GetType() == varSingle;
    const std::string shown =
        isFloat ? std::to_string(std::bit_cast<std::uint64_t>(value.ToDouble())) : ToUtf8(value.ToText());
    return std::to_string(value.GetType()) + ":" + shown;
}

std::vector<std::string> Shown(const TSmartArray& array) {
    std::vector<std::string> shown;
    for (std::int32_t i = 0; i < array.GetCount(); ++i) shown.push_back(Show(array.GetData(i)));
    return shown;
}

std::vector<std::string> Shown(std::initializer_list<Variant> values) {
    return Shown(TSmartArray(TVariantArray(values)));
}

std::vector<std::int32_t> MapOf(const TSmartArray& array) {
    std::vector<std::int32_t> map;
    for (std::int32_t i = 0; i < array.GetCount(); ++i) map.push_back(array.GetSortMapValue(i));
    return map;
}

void CheckSorts(const std::vector<Variant>& values) {
    std::vector<std::string> shown;
    std::vector<std::int32_t> map;
    for (const TSortedValue& item : PlainSorted(values)) {
        shown.push_back(Show(item.Value));
        map.push_back(item.InitialIndex);
    }
    TSmartArray array{TVariantArray(values)};
    array.Sort();
    ASSERT_EQ(MapOf(array), map);
    ASSERT_EQ(Shown(array), shown);
    array.UndoSort();
    ASSERT_EQ(Shown(array), Shown(TSmartArray{TVariantArray(values)}));
    array.SortAndFinalize();
    ASSERT_EQ(Shown(array), shown);
}

const double kInfinity = std::numeric_limits<double>::infinity();
const std::int64_t kBig = std::int64_t{1} << 53;

// Values that a sort has to tell apart, or must not.
const std::vector<std::vector<Variant>> kPools = {
    {1.0, 2.0, 3.0},
    {0.0, -0.0, 1.5, kInfinity, -kInfinity, -1e300},
    {kNaN, 1.0, 2.0, 3.0, -kInfinity},
    {kNaN},
    {7, -3, 0, 12},
    {std::int16_t{3}, 3.0, 3, true, -1, std::uint32_t{4'000'000'000}, 2.5F, std::uint8_t{255}},
    {kBig, kBig + 1, -kBig - 1, 5, false, std::numeric_limits<std::int64_t>::min()},
    {kBig, kBig + 1, static_cast<double>(kBig), TCurrency{25'000}, 2.5, kNaN},
    {u"b", u"a", u"", u"abcd", u"abcde", u"abc", u"abcd\u00E9", u"\uFFFF", u"ABCD", String(4, u'\0')},
    {u"b", 1, kNaN, {}, 2.5, true, u"12", 12, {}, u""},
};

TEST(SmartArray, SortsAsThePlainStepsDo) {
    std::mt19937 random(5);
    std::vector<std::size_t> sizes = {127, 128, 129, 130, 192, 193, 255, 256, 257, 511, 3000};
    for (std::size_t size = 0; size < 40; ++size) sizes.push_back(size);
    for (std::size_t pool = 0; pool <= kPools.size() + 1; ++pool) {
        for (const std::size_t size : sizes) {
            SCOPED_TRACE(testing::Message() << size << " values of pool " << pool);
            std::vector<Variant> values(size);
            for (Variant& value : values) {
                if (pool < kPools.size()) value = kPools[pool][random() % kPools[pool].size()];
                if (pool == kPools.size()) value = static_cast<double>(random());
                if (pool > kPools.size())
                    value = u"Station " + Variant(static_cast<int>(random() % 5000)).ToText();
            }
            ASSERT_NO_FATAL_FAILURE(CheckSorts(values));
        }
    }
}

// Each middle is the greatest value of its range, so that a partition splits off one value (or the few that tie).
std::vector<Variant> WorstCase(std::size_t count, int ties) {
    std::vector<Variant> values(count);
    for (std::size_t i = 0; i < count; ++i) {
        values[i] = static_cast<int>(i) / ties;
        std::swap(values[i], values[i / 2]);
    }
    return values;
}

TEST(SmartArray, BadPivotsChangeNoResult) {
    std::mt19937 random(6);
    for (const int ties : {1, 2, 7, 200}) {
        for (const bool asText : {false, true}) {
            SCOPED_TRACE(testing::Message() << ties << " equal values" << (asText ? ", texts" : ""));
            std::vector<Variant> values = WorstCase(2000, ties);
            if (asText) {
                for (Variant& value : values) value = Format(u"%.6d", {value.ToInt32()});
            }
            ASSERT_NO_FATAL_FAILURE(CheckSorts(values));
            for (int k = 0; k < 40; ++k) values[random() % values.size()] = k % 2 == 0 ? kNaN : 77.0;
            ASSERT_NO_FATAL_FAILURE(CheckSorts(values));
        }
    }
}

TEST(SmartArray, BadPivotsTakeNoQuadraticTime) {  // that would be minutes, and as many frames as values
    for (const int ties : {1, 5}) {
        std::vector<Variant> values = WorstCase(200'000, ties);
        TSmartArray array{TVariantArray(values)};
        array.Sort();
        const std::vector<std::int32_t> map = MapOf(array);
        for (std::int32_t i = 0; i < array.GetCount(); ++i) {
            ASSERT_EQ(array.GetData(i), i / ties);
            ASSERT_EQ(values[static_cast<std::size_t>(map[static_cast<std::size_t>(i)])], i / ties);
        }
        ASSERT_EQ(std::set(map.begin(), map.end()).size(), values.size());
    }
}

TEST(SmartArray, SortedAndBack) {
    TSmartArray array(TVariantArray{3, 1, 2});
    array.Sort();
    EXPECT_EQ(Shown(array), Shown({1, 2, 3}));
    EXPECT_THAT(MapOf(array), ElementsAre(1, 2, 0));
    array.SetInverted(true);
    EXPECT_EQ(Shown(array), Shown({3, 2, 1}));
    EXPECT_THAT(MapOf(array), ElementsAre(0, 2, 1));
    array.Sort();  // the map stands
    EXPECT_THAT(MapOf(array), ElementsAre(0, 2, 1));
    array.UndoSort();
    array.SetData(0, 4);  // counts from the start all the same
    EXPECT_EQ(Shown(array), Shown({2, 1, 4}));
    array.SetInverted(false);
    EXPECT_EQ(array.Median(), 2.0);
    EXPECT_TRUE(array.GetSorted());
    array.FinalizeSort();
    array.SetData(2, 9);
    array.UndoSort();  // nothing left to undo
    EXPECT_EQ(Shown(array), Shown({1, 2, 9}));
    TSmartArray ties(TVariantArray{1, 1, 1});
    ties.Sort();
    EXPECT_THAT(MapOf(ties), ElementsAre(2, 1, 0));
}

TEST(SmartArray, SharesItsStorageUntilItIsRebuilt) {
    TVariantArray data = {3, 1, 2};
    TSmartArray array(data);
    array.Sort();
    EXPECT_EQ(data, (TVariantArray{1, 2, 3}));
    array.FinalizeSort();
    array.SetData(0, 7);
    EXPECT_EQ(data[0], 7);
    array.Sort();
    array.UndoSort();
    array.SetData(0, 8);
    EXPECT_EQ(data, (TVariantArray{2, 3, 7}));
    TSmartArray filtered(data, 0, 100);
    filtered.SetData(0, 9);
    EXPECT_EQ(data[0], 2);
}

TEST(SmartArray, Filters) {
    struct TCase {
        std::vector<Variant> Values;
        Variant Range1, Range2;
        std::vector<std::string> Kept;
    };
    const TCase cases[] = {
        {{1, 2, 5, 6, 3.5}, 5, 2, Shown({2, 5, 3.5})},
        {{5, 2, 2.0, u"2", true}, 2, 2, Shown({2, 2.0, u"2"})},
        {{kNaN, 2, kNaN, -1e9}, 1, kNaN, Shown({2, -1e9})},
        {{kNaN, 2, kInfinity}, -kInfinity, kInfinity, Shown({2, kInfinity})},
        {{1, 2}, 3, 4, {}},
        {{}, u"no number", 4, {}},
    };
    for (const TCase& test : cases) {
        SCOPED_TRACE(testing::Message() << Show(test.Range1) << " to " << Show(test.Range2));
        TSmartArray array{TVariantArray(test.Values)};
        EXPECT_EQ(array.Filter(test.Range1, test.Range2), std::ssize(test.Kept));
        EXPECT_EQ(Shown(array), test.Kept);
        TSmartArray sorted{TVariantArray(test.Values)};
        sorted.Sort();
        sorted.Filter(test.Range1, test.Range2);
        EXPECT_TRUE(sorted.GetSorted());
        sorted.UndoSort();
        EXPECT_EQ(Shown(sorted), test.Kept);
    }
    EXPECT_EQ(Shown(TSmartArray(TVariantArray{4, 1, 4}, 4)), Shown({4, 4}));
}

TEST(SmartArray, FiltersByCallback) {
    for (const bool wasSorted : {false, true}) {
        TSmartArray array(TVariantArray{0.1, 5, 1e300, 2});
        if (wasSorted) array.Sort();
        std::vector<std::int32_t> asked;
        const auto isOdd = [&](std::int32_t index, const Variant& value) {
            asked.push_back(index);
            return value != 5;
        };
        EXPECT_EQ(array.Filter(isOdd, caKeep), 3);
        EXPECT_THAT(asked, ElementsAre(0, 1, 2, 3));
        EXPECT_EQ(array.GetSorted(), wasSorted);
        array.UndoSort();
        EXPECT_EQ(Shown(array), Shown({double{0.1F}, kInfinity, 2.0}));
        EXPECT_EQ(array.Filter([](std::int32_t index, const Variant&) { return index < 2; }, caRemove), 1);
        EXPECT_EQ(Shown(array), Shown({2.0}));
    }
}

TEST(SmartArray, FailingFilterLosesNothing) {
    const auto raise = [](std::int32_t index, const Variant&) {
        if (index == 2) throw std::runtime_error("enough");
        return true;
    };
    const auto keep = [](std::int32_t, const Variant&) { return true; };
    const std::function<void(TSmartArray&)> filters[] = {
        [&](TSmartArray& array) { array.Filter(raise, caKeep); },
        [&](TSmartArray& array) { array.Filter(keep, caKeep); },
        [&](TSmartArray& array) { array.Filter(1, 2); },
        [&](TSmartArray& array) { array.Filter(u"x"); },
    };
    for (const auto& filter : filters) {
        TSmartArray array(TVariantArray{3, u"none", 1, 2});
        array.Sort();
        EXPECT_ANY_THROW(filter(array));
        EXPECT_FALSE(array.GetSorted());
        EXPECT_EQ(Shown(array), Shown({3, u"none", 1, 2}));
    }
    TSmartArray array(TVariantArray{1, 2});  // a callback that works on the array itself
    EXPECT_EQ(array.Filter([&](std::int32_t, const Variant&) { return array.Filter(1) == 1; }, caKeep), 2);
}

TEST(SmartArray, Figures) {
    const std::int32_t most = std::numeric_limits<std::int32_t>::max();
    struct TCase {
        std::vector<Variant> Values;
        double Sum, Min, Max, Median;
    };
    const TCase cases[] = {
        {{4, 1, 3, 2}, 10, 1, 4, 2.5},
        {{7}, 7, 7, 7, 7},
        {{most, most, most}, 3.0 * most, most, most, most},
        {{kBig, 1, 0.5}, static_cast<double>(kBig + 1) + 0.5, 0.5, static_cast<double>(kBig), 1},
        {{u"10", u"9"}, 19, 9, 10, 9.5},
        {{TCurrency{1'000}, TCurrency{2'000}}, 0.3, 0.1, 0.2, 0.15},
        {{2, kNaN}, kNaN, 2, 2, kNaN},
        {{kNaN, 2}, kNaN, kNaN, kNaN, kNaN},
    };
    for (const TCase& test : cases) {
        SCOPED_TRACE(Show(test.Values.front()));
        TSmartArray array{TVariantArray(test.Values)};
        const auto same = [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); };
        EXPECT_PRED2(same, array.Sum(), test.Sum);
        EXPECT_PRED2(same, array.Average(), test.Sum / array.GetCount());
        EXPECT_PRED2(same, array.Min(), test.Min);
        EXPECT_PRED2(same, array.Max(), test.Max);
        EXPECT_PRED2(same, array.Median(), test.Median);
        EXPECT_TRUE(array.GetSorted());
    }
}

TEST(SmartArray, SumAddsAsVariantsDo) {
    std::mt19937 random(8);
    for (int round = 0; round < 200; ++round) {
        std::vector<Variant> values;
        Variant total = 0;
        for (int i = 0; i < 30; ++i) {
            const auto draw = static_cast<std::int32_t>(random());
            const Variant kinds[] = {draw,
                                     draw * 1e-3,
                                     std::int64_t{draw} * 4'000'000'000,
                                     TCurrency{draw},
                                     Variant(draw).ToText(),
                                     u"0.1"};
            values.push_back(kinds[random() % (round % 6 + 1U)]);
            total += values.back();
        }
        const double sum = TSmartArray{TVariantArray(values)}.Sum();
        EXPECT_EQ(std::bit_cast<std::uint64_t>(sum), std::bit_cast<std::uint64_t>(total.ToDouble()));
    }
}

TEST(SmartArray, Messages) {
    TSmartArray empty(0), unsorted(3, 1), sorted(3, 1), texts(2, u"x");
    sorted.Sort();
    const StringView average = u"TSmartArray.Average", index = u"Array index out of bounds (3)";
    const StringView text = u"Cannot convert String 'x' to Double";
    struct TCase {
        String Raised;
        StringView Message;
    };
    const TCase cases[] = {
        {Raised<Exception>([&] { static_cast<void>(empty.Sum()); }), average},
        {Raised<Exception>([&] { static_cast<void>(empty.Average()); }), average},
        {Raised<Exception>([&] { static_cast<void>(empty.Min()); }), average},
        {Raised<Exception>([&] { static_cast<void>(empty.Max()); }), average},
        {Raised<Exception>([&] { static_cast<void>(empty.Median()); }), average},
        {Raised<Exception>([&] { static_cast<void>(unsorted.GetSortMapValue(3)); }),
         u"TSmartArray.GetSortMapValue"},
        {Raised<Exception>([&] { sorted.SetData(3, 1); }), u"TSmartArray.SetData"},
        {Raised<Exception>([&] {
             sorted.Push({1, 2, 3});
         }),
         u"TSmartArray.SetData"},
        {Raised<Exception>([&] {
             unsorted.Push({1, 2});
         }),
         u"Smart Array size much match provided data size"},
        {Raised<ERangeError>([&] { static_cast<void>(sorted.GetData(3)); }), index},
        {Raised<ERangeError>([&] { static_cast<void>(sorted.GetSortMapValue(3)); }), index},
        {Raised<ERangeError>([&] { unsorted.SetData(3, 1); }), index},
        {Raised<ERangeError>([&] { static_cast<void>(sorted.GetData(-1)); }),
         u"Array index out of bounds (-1)"},
        {Raised<ERangeError>([] { TSmartArray array(-1); }), u"Array length out of range (-1)"},
        {Raised<EArgumentNilException>([&] { sorted.Filter(TComparasonCallback(), caKeep); }),
         u"comparasonCallback"},
        {Raised<EVariantError>([&] { static_cast<void>(texts.Sum()); }), text},
        {Raised<EVariantError>([&] { static_cast<void>(texts.Min()); }), text},
        {Raised<EVariantError>([&] { static_cast<void>(texts.Median()); }), text},
        {Raised<EVariantError>([&] { texts.Filter(1); }), text},
        {Raised<EVariantError>([&] { texts.DumpToFile(u"C:\\nowhere"); }), text},
    };
    for (const TCase& test : cases) EXPECT_EQ(ToUtf8(test.Raised), ToUtf8(test.Message));
    EXPECT_EQ(Shown(unsorted), Shown({1, 1, 1}));
    unsorted.Push({1.5F, 0.1F, 2});
    EXPECT_EQ(Shown(unsorted), Shown({1.5, double{0.1F}, 2.0}));
}

TEST(SmartArray, DumpsInTheOrderOfReading) {
    const Tests::TTemporaryFolder folder;
    TSmartArray array(TVariantArray{2, 0.00005, -1.5});
    array.Sort();
    array.SetInverted(true);
    array.DumpToFile(folder.GetPath(u"a.txt"));
    EXPECT_EQ(ReadWholeFile(folder.GetPath(u"a.txt")), "2.0000\r\n0.0001\r\n-1.5000\r\n");
}

}  // namespace
}  // namespace Varnholt
