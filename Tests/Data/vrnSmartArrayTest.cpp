#include "VarnholtLib/Data/vrnSmartArray.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>
#include <stdexcept>
#include <utility>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {
namespace {

using TValues = std::vector<Variant>;

const double kNaN = std::nan(""), kInfinity = std::numeric_limits<double>::infinity();
const std::int64_t kBig = std::int64_t{1} << 53;

// The sort in the steps that its header describes, on the variants themselves.
void PlainSort(TSortedValueArray& a, std::ptrdiff_t lo, std::ptrdiff_t hi) {
    const auto at = [&](std::ptrdiff_t k) -> TSortedValue& { return a[static_cast<std::size_t>(k)]; };
    std::ptrdiff_t i = lo, j = hi;
    const Variant pivot = at((lo + hi) / 2).Value;
    do {
        while (at(i).Value < pivot) ++i;
        while (at(j).Value > pivot) --j;
        if (i <= j) std::swap(at(i++), at(j--));
    } while (i <= j);
    if (lo < j) PlainSort(a, lo, j);
    if (i < hi) PlainSort(a, i, hi);
}

// Type and value, so that texts are equal where the values are the same to the bit.
std::string Show(const Variant& value) {
    const bool isFloat = value.GetType() == varDouble || value.GetType() == varSingle;
    return std::to_string(value.GetType()) + ":" +
           (isFloat ? std::to_string(std::bit_cast<std::uint64_t>(value.ToDouble()))
                    : ToUtf8(value.ToText()));
}

// What the array is to be: its values in their initial order, and whether it shows them sorted.
struct TModel {
    TValues Values;
    bool IsSorted = false;

    void FinalizeSort() {
        std::ranges::transform(Sorted(), Values.begin(), &TSortedValue::Value);
        IsSorted = false;
    }

    [[nodiscard]] TSortedValueArray Sorted() const {
        TSortedValueArray items;
        for (const Variant& value : Values) items.push_back({value, static_cast<std::int32_t>(items.size())});
        if (IsSorted && !items.empty()) PlainSort(items, 0, std::ssize(items) - 1);
        return items;
    }

    void Check(const TSmartArray& array) const {
        ASSERT_EQ(array.GetSorted(), IsSorted);
        ASSERT_EQ(array.GetCount(), std::ssize(Values));
        const TSortedValueArray items = Sorted();
        for (std::int32_t i = 0; i < array.GetCount(); ++i) {
            const auto k = static_cast<std::size_t>(array.GetInverted() ? array.GetCount() - 1 - i : i);
            ASSERT_EQ(Show(array.GetData(i)), Show(items[k].Value));
            ASSERT_TRUE(!IsSorted || array.GetSortMapValue(i) == items[k].InitialIndex) << "map at " << i;
        }
    }
};

void CheckSorts(const TValues& values) {
    TSmartArray array{TVariantArray(values)};
    array.Sort();
    TModel{values, true}.Check(array);
}

// Values that a sort has to distinguish, or must not.
const std::vector<TValues> kPools = {
    {0.0, -0.0, 1.5, kInfinity, -kInfinity, -1e300},
    {kNaN, 1.0, 2.0, 3.0, -kInfinity},
    {7, -3, 0, 12},
    {std::int16_t{3}, 3.0, 3, true, -1, std::uint32_t{4'000'000'000}, 2.5F, std::uint8_t{255}},
    {kBig, kBig + 1, -kBig - 1, 5, false, std::numeric_limits<std::int64_t>::min()},
    {kBig, kBig + 1, static_cast<double>(kBig), TCurrency{25'000}, 2.5, kNaN},
    {u"b", u"a", u"", u"abcd", u"abcde", u"abc", u"abcd\u00E9", u"\uFFFF", u"ABCD", String(4, u'\0')},
    {u"b", 1, kNaN, {}, 2.5, true, u"12", 12, {}, u""},
    {},  // any double
};

TEST(SmartArray, SortsAsThePlainStepsDo) {
    std::mt19937 random(5);
    std::vector<std::size_t> sizes = {127, 128, 129, 130, 192, 193, 255, 256, 257, 511, 3000};
    for (std::size_t size = 0; size < 40; ++size) sizes.push_back(size);
    for (const TValues& pool : kPools) {
        for (const std::size_t size : sizes) {
            SCOPED_TRACE(testing::Message() << size << " values of pool " << &pool - kPools.data());
            TValues values(size);
            for (Variant& value : values) {
                value = pool.empty() ? Variant(static_cast<double>(random())) : pool[random() % pool.size()];
            }
            ASSERT_NO_FATAL_FAILURE(CheckSorts(values));
        }
    }
}

// Each middle is the greatest value of its range: a partition splits off one value, or the few that tie.
TValues WorstCase(std::size_t count, int ties) {
    TValues values(count);
    for (std::size_t i = 0; i < count; ++i) {
        values[i] = static_cast<int>(i) / ties;
        std::swap(values[i], values[i / 2]);
    }
    return values;
}

TEST(SmartArray, BadPivotsChangeNoResultAndTakeNoQuadraticTime) {
    std::mt19937 random(6);
    for (const int ties : {1, 2, 7, 200}) {
        SCOPED_TRACE(ties);
        TValues values = WorstCase(2000, ties), texts;
        for (const Variant& value : values) texts.emplace_back(Format(u"%.6d", {value.ToInt32()}));
        ASSERT_NO_FATAL_FAILURE(CheckSorts(values));
        ASSERT_NO_FATAL_FAILURE(CheckSorts(texts));
        for (int k = 0; k < 40; ++k) values[random() % values.size()] = k % 2 == 0 ? kNaN : 77.0;
        ASSERT_NO_FATAL_FAILURE(CheckSorts(values));
    }
    TSmartArray array{TVariantArray(WorstCase(200'000, 5))};
    array.Sort();  // in quadratic time minutes, and as many frames as values
    for (std::int32_t i = 0; i < array.GetCount(); ++i) ASSERT_EQ(array.GetData(i), i / 5);
}

TEST(SmartArray, RandomOperationsAsInTheModel) {
    std::mt19937 random(7);
    const auto draw = [&] { return static_cast<std::int32_t>(random() % 30); };
    TSmartArray array(0);
    TModel model;
    for (int round = 0; round < 4000; ++round) {
        const int operation = draw() % 10;
        if (model.Values.size() < 5) {
            model = {};
            for (int i = 0; i < 40; ++i) model.Values.push_back(draw() < 2 ? kNaN : draw() / 2.0);
            array = TSmartArray{TVariantArray(model.Values)};
        } else if (operation < 3) {
            array.Sort();
            model.IsSorted = true;
        } else if (operation == 3) {
            array.UndoSort();
            model.IsSorted = false;
        } else if (operation == 4) {
            array.FinalizeSort();
            model.FinalizeSort();
        } else if (operation == 5) {
            array.SortAndFinalize();
            model.FinalizeSort();
            model.IsSorted = true;
            model.FinalizeSort();
        } else if (operation == 6) {
            const double low = draw() / 9.0, high = 15 - draw() / 9.0;
            std::erase_if(model.Values, [&](const auto& value) { return !(value >= low && value <= high); });
            ASSERT_EQ(array.Filter(high, low), std::ssize(model.Values));
        } else if (operation == 7) {
            std::erase(model.Values, 7.5);
            array.Filter([](std::int32_t, const Variant& value) { return value == 7.5; }, caRemove);
        } else if (!model.IsSorted) {
            const std::int32_t at = draw() % array.GetCount();
            model.Values[static_cast<std::size_t>(at)] = draw() / 2.0;
            array.SetData(at, model.Values[static_cast<std::size_t>(at)]);
        }
        if (operation == 9) array.SetInverted(!array.GetInverted());
        ASSERT_NO_FATAL_FAILURE(model.Check(array)) << "round " << round << ", operation " << operation;
    }
}

TEST(SmartArray, SharesItsStorageUntilItIsRebuilt) {
    TVariantArray data = {3, 1, 2};
    TSmartArray array(data);
    array.Sort();
    array.FinalizeSort();
    array.SetData(0, 7);
    EXPECT_EQ(data, (TVariantArray{7, 2, 3}));
    array.Sort();
    array.UndoSort();
    array.SetData(0, 8);
    TSmartArray filtered(data, 0, 100);
    filtered.SetData(0, 9);
    EXPECT_EQ(data, (TVariantArray{2, 3, 7}));
}

TEST(SmartArray, FailingFilterLosesNothing) {
    std::int32_t asked = 0;
    const auto raise = [&](std::int32_t index, const Variant&) {
        return index == asked++ && index < 2 ? true : throw std::runtime_error("enough");
    };
    const auto keep = [](std::int32_t, const Variant&) { return true; };
    const auto check = [](const char* filter, const auto&... arguments) {
        SCOPED_TRACE(filter);
        TSmartArray array(TVariantArray{3, u"none", 1, 2});
        array.Sort();
        EXPECT_ANY_THROW(array.Filter(arguments...));
        TModel{{3, u"none", 1, 2}}.Check(array);
    };
    check("callback raises", raise, caRemove);
    check("text is kept", keep, caKeep);
    check("text is compared", 1, 2);
    check("text is a bound", u"x");
    EXPECT_EQ(asked, 3);
    // Narrowed, also by a callback that works on the array itself.
    TSmartArray array(TVariantArray{0.1, 1e300});
    EXPECT_EQ(array.Filter([&](std::int32_t, const Variant&) { return array.Filter(0.1) >= 0; }, caKeep), 2);
    TModel{{double{0.1F}, kInfinity}}.Check(array);
}

TEST(SmartArray, Figures) {
    const std::int32_t most = std::numeric_limits<std::int32_t>::max();
    struct TCase {
        TValues Values;
        double Sum, Min, Max, Median;
    };
    // clang-format off
    const TCase cases[] = {
        {{most, most, most}, 3.0 * most, most, most, most},
        {{kBig, 1, 0.5}, static_cast<double>(kBig + 1) + 0.5, 0.5, static_cast<double>(kBig), 1},
        {{u"10", u"9"}, 19, 9, 10, 9.5},
        {{TCurrency{1'000}, TCurrency{2'000}}, 0.3, 0.1, 0.2, 0.15},
        {{7, u"-3", true, TCurrency{5'000}, u"$10", {}, 0.25, u"$10", u"0.5", 2.5F, kBig >> 51, true},
         41.75, -3, 16, 3.25},
        {{2, kNaN}, kNaN, 2, 2, kNaN},
        {{kNaN, 2}, kNaN, kNaN, kNaN, kNaN}};
    // clang-format on
    for (const TCase& test : cases) {
        TSmartArray array{TVariantArray(test.Values)};
        const double figures[] = {array.Sum(), array.Average(), array.Min(), array.Max(), array.Median()};
        const double expected[] = {test.Sum, test.Sum / array.GetCount(), test.Min, test.Max, test.Median};
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(FloatToStr(figures[i]), FloatToStr(expected[i]))
                << "figure " << i << " of case " << &test - cases;
        }
        EXPECT_TRUE(array.GetSorted());
    }
}

TEST(SmartArray, Messages) {
    TSmartArray empty(0), plain(3, 1), sorted(3, 1), texts(2, u"x");
    const TSingleArray two = {1, 2}, three = {1.5F, 0.1F, 2};
    sorted.Sort();
    for (const auto figure :
         {&TSmartArray::Sum, &TSmartArray::Average, &TSmartArray::Min, &TSmartArray::Max}) {
        EXPECT_EQ(Raised<Exception>([&] { (empty.*figure)(); }), u"TSmartArray.Average");
        EXPECT_EQ(Raised<EVariantError>([&] { (texts.*figure)(); }), u"Cannot convert String 'x' to Double");
    }
    ExpectRaised<Exception>(
        {{[&] { static_cast<void>(empty.Median()); }, u"TSmartArray.Average"},
         {[&] { static_cast<void>(plain.GetSortMapValue(3)); }, u"TSmartArray.GetSortMapValue"},
         {[&] { sorted.SetData(3, 1); }, u"TSmartArray.SetData"},
         {[&] { sorted.Push(three); }, u"TSmartArray.SetData"},
         {[&] { plain.Push(two); }, u"Smart Array size much match provided data size"}});
    ExpectRaised<ERangeError>(
        {{[&] { static_cast<void>(sorted.GetData(3)); }, u"Array index out of bounds (3)"},
         {[&] { static_cast<void>(sorted.GetSortMapValue(-1)); }, u"Array index out of bounds (-1)"}});
    EXPECT_EQ(Raised<EArgumentNilException>([&] { sorted.Filter(nullptr, caKeep); }), u"comparasonCallback");
    TModel{{1, 1, 1}}.Check(plain);
    plain.Push(three);
    TModel{{1.5, double{0.1F}, 2.0}}.Check(plain);
}

TEST(SmartArray, DumpsInTheOrderOfReading) {
    const TTemporaryFolder folder;
    TSmartArray array(TVariantArray{2, 0.00005, -1.5});
    array.Sort();
    array.SetInverted(true);
    array.DumpToFile(folder.GetPath(u"a.txt"));
    EXPECT_EQ(ReadWholeFile(folder.GetPath(u"a.txt")), "2.0000\r\n0.0001\r\n-1.5000\r\n");
}

}  // namespace
}  // namespace Varnholt::Test
