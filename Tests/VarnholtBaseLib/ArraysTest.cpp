#include "VarnholtBaseLib/Arrays.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <list>

#include "Tests/Support/Raised.h"

namespace Varnholt {
namespace {

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
    EXPECT_THAT(first, ElementsAre(u"a", u"B", u"c"));
    EXPECT_THAT(second, ElementsAre(u"A", u"B", u"c", u""));

    TStringArray third = first;
    third.SetLength(1);
    EXPECT_THAT(third, ElementsAre(u"a"));
    third = first;
    third.SetLength(0);
    EXPECT_EQ(first.GetLength(), 3);
    EXPECT_EQ(third, TStringArray());
    EXPECT_FALSE(third.SharesWith(TStringArray()));
}

TEST(ArraysTest, AloneAnArrayGrowsInPlace) {
    TIntegerArray numbers;
    const std::int32_t* place = nullptr;
    int moves = 0;
    for (std::int32_t i = 0; i < 10000; ++i) {
        numbers.SetLength(i + 1);
        EXPECT_EQ(numbers[i], 0);
        numbers[i] = i;
        if (std::as_const(numbers).data() != place) ++moves;
        place = std::as_const(numbers).data();
    }
    EXPECT_LT(moves, 100);
    for (std::int32_t i = 0; i < 10000; ++i) ASSERT_EQ(numbers[i], i);
}

TEST(ArraysTest, ACopyIsOneLevelDeep) {
    TDoubleArrayArray rows = {{1.0, 2.0}, {3.0}};
    TDoubleArrayArray copy = rows.Copy();
    copy[0][0] = 10.0;
    copy[1] = {4.0};
    EXPECT_EQ(rows, (TDoubleArrayArray{{10.0, 2.0}, {3.0}}));
    EXPECT_EQ(copy, (TDoubleArrayArray{{10.0, 2.0}, {4.0}}));
    EXPECT_NE(rows, copy);
}

TEST(ArraysTest, ConvertsFromAndToTheStandardTypes) {
    const std::list<int> list = {1, 2, 3};
    const TVariantArray variants(list.begin(), list.end());
    EXPECT_THAT(variants, ElementsAre(Variant(1), Variant(2), Variant(3)));

    std::vector<std::uint16_t> words = {7, 8};
    const std::uint16_t* place = words.data();
    TWordArray array(std::move(words));
    EXPECT_EQ(std::as_const(array).data(), place);  // taken over without a copy
    EXPECT_EQ(TWordArray(array.GetSpan().subspan(1)), TWordArray{8});

    const TWordArray moved = std::move(array);
    const std::span<const std::uint16_t> span = moved;
    EXPECT_THAT(span, ElementsAre(7, 8));
    EXPECT_TRUE(array.IsEmpty());  // NOLINT(bugprone-use-after-move): a moved-from array is empty
    EXPECT_EQ(TSingleArray::WithLength(2, 1.5F), (TSingleArray{1.5F, 1.5F}));
}

TEST(ArraysTest, RefusesPlacesAndLengthsOutOfRange) {
    TDoubleArray empty;
    TDoubleArray two = {1.0, 2.0};
    const std::int64_t huge = std::int64_t{1} << 32;
    const std::pair<std::function<void()>, StringView> cases[] = {
        {[&] { (void)empty[0]; }, u"Array index out of bounds (0)"},
        {[&] { two[2] = 1; }, u"Array index out of bounds (2)"},
        {[&] { two[-1] = 1; }, u"Array index out of bounds (-1)"},
        {[&] { (void)std::as_const(two)[huge]; }, u"Array index out of bounds (4294967296)"},
        {[&] { two.SetLength(-1); }, u"Array length out of range (-1)"},
        {[&] { two.SetLength(huge); }, u"Array length out of range (4294967296)"},
        {[&] { (void)TDoubleArray::WithLength(-5); }, u"Array length out of range (-5)"},
    };
    for (const auto& [action, message] : cases) EXPECT_EQ(Raised<ERangeError>(action), message);
    EXPECT_THAT(two, ElementsAre(1.0, 2.0));
}

TEST(ArraysTest, FindsTheExtremesAndNarrowsVariants) {
    constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    // clang-format off
    const struct { TSingleArray values; float min, max; } cases[] = {
        {{3, -1.5F, 2}, -1.5F, 3}, {{kNaN, 2, kNaN, 1}, 1, 2}, {{kInfinity}, kInfinity, kInfinity},
        {{}, kNaN, kNaN}, {{kNaN, kNaN}, kNaN, kNaN},
    };
    // clang-format on
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.values));
        EXPECT_THAT(MinOf(c.values), testing::NanSensitiveFloatEq(c.min));
        EXPECT_THAT(MaxOf(c.values), testing::NanSensitiveFloatEq(c.max));
    }
    EXPECT_EQ(ToSingleArray({0.1, u"2.5", true, Variant(), 16777217}),
              (TSingleArray{0.1F, 2.5F, -1, 0, 16777216}));
    EXPECT_THROW((void)ToSingleArray({1, u"x"}), EVariantError);
}

}  // namespace
}  // namespace Varnholt
