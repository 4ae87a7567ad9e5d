#include "VarnholtLib/Data/vrnDoubleArrayUtils.h"

#include <gmock/gmock.h>

#include <cmath>

#include "Tests/Support/Raised.h"
#include "VarnholtLib/Foundation/vrnExceptions.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(DoubleArrayUtils, RangeOfValues) {
    const std::tuple<TDoubleArray, double, double, double, bool> cases[] = {
        {{1, -9999, 3}, -9999, 1, 3, true},    {{1, -9999, 3}, 1, 3, 3, true},
        {{1, -9999, 3}, 3, kNaN, kNaN, false}, {{}, 0, kNaN, kNaN, false},
        {{2, -9999, 1}, kNaN, -9999, 2, true}, {{kNaN, 5, kNaN, 4}, kNaN, 4, 5, true},
        {{kNaN}, kNaN, kNaN, kNaN, true},      {{kNaN, 5, kNaN}, 0, 5, 5, true},
        {{kNaN}, 0, kNaN, kNaN, false},        {{-kInfinity, 1}, -kInfinity, 1, 1, true}};
    const auto same = [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); };
    for (const auto& [values, noData, min, max, found] : cases) {
        SCOPED_TRACE(testing::PrintToString(values));
        double low = 7, high = 7, lowest = 7, highest = 7;
        EXPECT_EQ(DoubleArrayGetMinMax(values, noData, low, high), found);
        EXPECT_EQ(DoubleArrayArrayGetMinMax({{}, values, values}, noData, lowest, highest), found);
        EXPECT_TRUE(same(low, min) && same(lowest, min) && same(high, max) && same(highest, max));
    }
    float low = 0, high = 0;
    EXPECT_TRUE(SingleArrayArrayGetMinMax({{0.25F}, {}, {-1, 8}}, -1, low, high));
    EXPECT_TRUE(low == 0.25F && high == 8) << low << ' ' << high;
}

TEST(DoubleArrayUtils, ReversalAndShape) {
    EXPECT_THAT(SingleArrayReverse({1, 2, 3}), ElementsAre(3, 2, 1));
    EXPECT_THAT(DoubleArrayReverse({1, 2}), ElementsAre(2, 1));
    TDoubleArrayArray field = DoubleArray1DTo2D({1, 2, 3, 4, 5, 6}, 3, 2);
    EXPECT_EQ(field, (TDoubleArrayArray{{1, 2, 3}, {4, 5, 6}}));
    DoubleArrayArrayReverse(field)[0][2] = 7;
    EXPECT_EQ(field, (TDoubleArrayArray{{1, 2, 3}, {4, 5, 7}}));
    EXPECT_EQ(SingleArrayArrayReverse(SingleArray1DTo2D({1, 2}, 1, 2)), (TSingleArrayArray{{2}, {1}}));
    TDoubleArrayArray filled = DoubleArrayCreateJagged(2, 2, 0.5);
    filled[0][0] = 1;
    EXPECT_EQ(filled, (TDoubleArrayArray{{1, 0.5}, {0.5, 0.5}}));
    EXPECT_EQ(DoubleArrayCreateJagged(1, 2), (TDoubleArrayArray{{0}, {0}}));
}

/// What a call raises: method, parameter and text.
String Failure(const std::function<void()>& call) {
    try {
        call();
    } catch (const EExArgumentException& failure) {
        return failure.GetTypeAndMethod() + u"|" + failure.GetArgName() + u"|" + failure.GetInfo();
    } catch (const EExArgumentNilException& failure) {
        return failure.GetTypeAndMethod() + u"|" + failure.GetArgName() + u"|nil";
    } catch (const EExException& failure) {
        return failure.GetTypeAndMethod() + u"||" + failure.GetInfo();
    }
    return u"nothing raised";
}

TEST(DoubleArrayUtils, Refused) {
    const TDoubleArrayArray field = {{1, 2, 3}, {4, 5, 6}, {7}};
    TDataRect rect{1, 2, 3, 4};
    const auto extract = [](const TDoubleArrayArray& from, TDataRect part) {
        return [from, part] { static_cast<void>(DoubleArrayExtractRect(from, part)); };
    };
    // clang-format off
    const std::pair<std::function<void()>, String> cases[] = {
        {[] { static_cast<void>(DoubleArray1DTo2D({}, 0, 0)); }, u"DoubleArray1DTo2DArray|Source|nil"},
        {[] { static_cast<void>(SingleArray1DTo2D({1, 2}, 2'000'000'000, 3)); }, u"DoubleArray1DTo2DArray|Source|The specified array is 2 in length, but is expected to be 6000000000 in length"},
        {[] { static_cast<void>(DoubleArray1DTo2D({1, 2}, -2, -1)); }, u"DoubleArray1DTo2DArray|Width|Width must be >= 1"},
        {[&] { DoubleArrayGetDataRect({}, 0, rect); }, u"DoubleArrayGetDataRect|Source|nil"},
        {[&] { DoubleArrayGetDataRect({{}, {1}}, 0, rect); }, u"DoubleArrayGetDataRect||The length of the first row in the specified jagged array is 0"},
        {[&] { DoubleArrayGetDataRect(field, 0, rect); }, u"DoubleArrayGetDataRect||A rectangular jagged array is expected. Row 2 is 1 in length, expected 3"},
        {[] { static_cast<void>(DoubleArrayCreateJagged(0, 0)); }, u"DoubleArrayCreateJagged|Width|Width must be >= 1"},
        {[] { static_cast<void>(DoubleArrayCreateJagged(1, -1, 5)); }, u"DoubleArrayCreateJagged|Height|Height must be >= 1"},
        {extract({}, {}), u"DoubleArrayExtractRect|Source|nil"},
        {extract(field, {-1, 0, 0, 9}), u"DoubleArrayExtractRect|DataRect|DataRect contains one or more invalid values (Left=-1, Top=0, Right=0, Bottom=9)"},
        {extract(field, {0, -1, 0, 0}), u"DoubleArrayExtractRect|DataRect|DataRect contains one or more invalid values (Left=0, Top=-1, Right=0, Bottom=0)"},
        {extract(field, {2, 0, 1, 0}), u"DoubleArrayExtractRect|DataRect|DataRect contains one or more invalid values (Left=2, Top=0, Right=1, Bottom=0)"},
        {extract(field, {0, 1, 9, 0}), u"DoubleArrayExtractRect|DataRect|DataRect contains one or more invalid values (Left=0, Top=1, Right=9, Bottom=0)"},
        {extract(field, {0, 0, 9, 3}), u"DoubleArrayExtractRect|DataRect|DataRect.Bottom (3) exceeds the height of the specified array (3)"},
        {extract({{}, {1}}, {0, 1, 0, 1}), u"DoubleArrayExtractRect|DataRect|The specified array width is 0"},
        {extract(field, {0, 0, 3, 2}), u"DoubleArrayExtractRect|DataRect|DataRect.Right (3) exceeds the width of the specified array (3)"},
        {extract(field, {0, 1, 0, 2}), u"DoubleArrayExtractRect|Source|Source array is expected to be rectangular"},
    };
    // clang-format on
    for (const auto& [call, failure] : cases) EXPECT_EQ(ToUtf8(Failure(call)), ToUtf8(failure));
    EXPECT_EQ(rect, TDataRect());
    EXPECT_EQ(DoubleArrayExtractRect(field, {1, 0, 2, 1}), (TDoubleArrayArray{{2, 3}, {5, 6}}));
}

TEST(DoubleArrayUtils, BoundsOfTheData) {
    constexpr double x = 5;
    for (const double none : {kNaN, -999 * (1 + 1e-15)}) {
        const std::pair<TDoubleArrayArray, TDataRect> cases[] = {
            {{{none}, {none}}, TDataRect()},
            {{{none, none, none}, {none, -999.00001, none}, {none, none, none}}, {1, 1, 1, 1}},
            {{{none, none, x, none}, {none, x, none, none}, {none, none, none, x}}, {1, 0, 3, 2}},
            {{{none, x}, {none, none}, {x, none}, {none, none}}, {0, 0, 1, 2}}};
        for (const auto& [field, expected] : cases) {
            SCOPED_TRACE(testing::PrintToString(field));
            TDataRect rect{7, 7, 7, 7};
            EXPECT_EQ(DoubleArrayGetDataRect(field, none, rect), expected.Top >= 0);
            EXPECT_EQ(rect, expected);
        }
    }
}

TEST(DoubleArrayUtils, Equality) {
    const TDoubleArray withNaN = {1, kNaN};
    const std::tuple<TDoubleArray, TDoubleArray, bool> cases[] = {// clang-format off
        {{}, {}, true}, {{1, 1e-13}, {1 + 1e-13, 0}, true}, {{kInfinity}, {kInfinity}, true},
        {{}, {0}, false}, {{1}, {1, 1}, false}, {{1}, {1 + 1e-11}, false},
        {withNaN, withNaN, true}, {withNaN, withNaN.Copy(), false}};
    // clang-format on
    for (const auto& [a, b, equal] : cases) {
        EXPECT_EQ(DoubleArraysEqual(a, b), equal) << testing::PrintToString(a);
        EXPECT_EQ(DoubleArraysEqual(TDoubleArrayArray{{3}, a}, TDoubleArrayArray{{3}, b}), equal);
    }
    EXPECT_FALSE(DoubleArraysEqual(TDoubleArrayArray{{}}, TDoubleArrayArray{}));
}

TEST(DoubleArrayUtils, Packing) {
    EXPECT_THAT(DoubleArrayToScaledIntArray({1.25, -999, 0.5, 1.5, -2.5, kNaN}, 1, kNaN),
                ElementsAre(1, -999, 0, 2, -2, -9999));
    EXPECT_THAT(DoubleArrayToScaledIntArray({1.25, -999 + 1e-11, -99.99}, 100, -999),
                ElementsAre(125, -9999, -9999));
    EXPECT_THAT(DoubleArrayFromScaledIntArray({125, -9999, 7}, 100, -999), ElementsAre(1.25, -999, 0.07));
    EXPECT_THAT(SingleArrayFromScaledIntArray({125, -9999, 7}, 100, 0.1), ElementsAre(1.25F, 0.1F, 0.07F));
    EXPECT_EQ(DoubleArrayFromScaledIntArray({1}, 0, 0)[0], kInfinity);
    const auto pack = [](double value) { static_cast<void>(DoubleArrayToScaledIntArray({value}, 100, 0)); };
    ExpectRaised<ERangeError>({{[&] { pack(21'474'837); }, u"2147483700 does not fit in a 32-bit integer"},
                               {[&] { pack(kNaN); }, u"NAN does not fit in a 32-bit integer"}});
}

}  // namespace
}  // namespace Varnholt::Test
