#include "VarnholtBaseLib/Arrays.h"

#include <gmock/gmock.h>

#include <list>

#include "Tests/Support/AllocationCount.h"
#include "Tests/Support/Raised.h"

namespace Varnholt::Test {

using testing::ElementsAre;

TEST(ArraysTest, HoldersShareElementsUntilALengthChanges) {
    TStringArray first = {u"a", u"b", u"c"};
    TStringArray second = first;
    second[1] = u"B";
    EXPECT_THAT(first, ElementsAre(u"a", u"B", u"c"));

    second.SetLength(3);  // no change of length
    EXPECT_TRUE(second.SharesWith(first));
    second.SetLength(4);
    second[0] = u"A";
    EXPECT_THAT(second, ElementsAre(u"A", u"B", u"c", u""));
    TStringArray third = first, none = first;
    third.SetLength(1);
    none.SetLength(0);
    EXPECT_THAT(third, ElementsAre(u"a"));
    EXPECT_THAT(first, ElementsAre(u"a", u"B", u"c"));
    EXPECT_TRUE(none == TStringArray() && !none.SharesWith(TStringArray()));
}

TEST(ArraysTest, GrowsInPlaceUnlessShared) {
    TIntegerArray numbers;
    const std::int64_t before = AllocationCount();
    for (std::int32_t i = 0; i < 10000; ++i) {
        numbers.SetLength(i + 1);
        ASSERT_TRUE(numbers[i] == 0 && (i == 0 || numbers[i - 1] == i - 1)) << i;
        numbers[i] = i;
    }
    EXPECT_LT(AllocationCount() - before, 100);
}

TEST(ArraysTest, ACopyIsOneLevelDeep) {
    TDoubleArrayArray rows = {{1.0, 2.0}, {3.0}};
    TDoubleArrayArray copy = rows.Copy();
    copy[0][0] = 10.0;
    copy[1] = {4.0};
    EXPECT_EQ(rows, (TDoubleArrayArray{{10.0, 2.0}, {3.0}}));
}

TEST(ArraysTest, ConvertsFromAndToTheStandardTypes) {
    const std::list<int> list = {1, 2, 3};
    const TVariantArray variants(list.begin(), list.end());
    EXPECT_THAT(variants, ElementsAre(Variant(1), Variant(2), Variant(3)));

    std::vector<std::uint16_t> words = {7, 8};
    const std::uint16_t* place = words.data();
    const TWordArray array(std::move(words));
    EXPECT_EQ(array.data(), place);  // taken over without a copy
    EXPECT_EQ(TWordArray(array.GetSpan().subspan(1)), TWordArray{8});
    EXPECT_EQ(TSingleArray::WithLength(2, 1.5F), (TSingleArray{1.5F, 1.5F}));
}

TEST(ArraysTest, RefusesPlacesAndLengthsOutOfRange) {
    TDoubleArray two = {1.0, 2.0};
    const std::int64_t huge = std::int64_t{1} << 32;
    ExpectRaised<ERangeError>(
        {{[&] { two[2] = 1; }, u"Array index out of bounds (2)"},
         {[&] { two[-1] = 1; }, u"Array index out of bounds (-1)"},
         {[&] { static_cast<void>(std::as_const(two)[huge]); }, u"Array index out of bounds (4294967296)"},
         {[&] { two.SetLength(-1); }, u"Array length out of range (-1)"},
         {[&] { two.SetLength(huge); }, u"Array length out of range (4294967296)"},
         {[&] { static_cast<void>(TDoubleArray::WithLength(-5)); }, u"Array length out of range (-5)"}});
    EXPECT_THAT(two, ElementsAre(1.0, 2.0));
}

TEST(ArraysTest, FindsTheExtremesAndNarrowsVariants) {
    // clang-format off
    const std::tuple<TSingleArray, float, float> cases[] = {
        {{3, -1.5F, 2}, -1.5F, 3}, {{NAN, 2, NAN, 1}, 1, 2}, {{INFINITY}, INFINITY, INFINITY},
        {{}, NAN, NAN}, {{NAN, NAN}, NAN, NAN}};
    // clang-format on
    for (const auto& [values, min, max] : cases) {
        EXPECT_THAT(MinOf(values), testing::NanSensitiveFloatEq(min)) << testing::PrintToString(values);
        EXPECT_THAT(MaxOf(values), testing::NanSensitiveFloatEq(max)) << testing::PrintToString(values);
    }
    EXPECT_EQ(ToSingleArray({0.1, u"2.5", true, Variant(), 16777217}),
              (TSingleArray{0.1F, 2.5F, -1, 0, 16777216}));
    EXPECT_THROW(static_cast<void>(ToSingleArray({1, u"x"})), EVariantError);
}

}  // namespace Varnholt::Test
