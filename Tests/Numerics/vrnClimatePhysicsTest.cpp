#include "VarnholtLib/Numerics/vrnClimatePhysics.h"

#include <gmock/gmock.h>

#include <cmath>

#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

/// Hours and radiation of the day.
std::pair<float, float> SolarDay(float latitude, std::int32_t day) {
    float hours = 0;
    const float radiation = Solar_Radiation(latitude, day, hours);
    return {hours, radiation};
}

// Computed with 60 digits, rounded to 32 bits where the formulas say so. CalcDayLength and Solar_Radiation
// round at different places and so differ in some of the day lengths.
TEST(vrnClimatePhysics, RoundsWhereTheFormulasSay) {
    const std::tuple<std::int32_t, float, float, float, float> cases[] = {
        // clang-format off
        {172, 48.25f, 15.8768053f, 15.8768063f, 42.8657722f},
        {172, 66.5f, 23.4645748f, 23.464571f, 42.701355f},
        {366, 10, 11.4260235f, 11.4260235f, 31.8854084f},
        {355, 66.5f, 0.524131f, 0.52412647f, 0.00156445219f}};
    // clang-format on
    for (const auto& [day, latitude, dayLength, solarDayLength, radiation] : cases) {
        EXPECT_EQ(CalcDayLength(day, latitude), dayLength) << day << " at " << latitude;
        EXPECT_EQ(SolarDay(latitude, day), std::pair(solarDayLength, radiation)) << day << " at " << latitude;
        EXPECT_EQ(Angstrom(13, latitude, 1, 0, day), radiation) << day << " at " << latitude;
    }
    const std::tuple<float, float, float, float> evaporations[] = {// clang-format off
        {-17.5f, 12, 0.754535913f, 23.3906116f}, {-1, 12, 1.76314163f, 54.6573906f},
        {20, 22.25f, 5.80171108f, 179.853043f}, {41.5f, 30, 9.84620762f, 305.232422f}};
    // clang-format on
    for (const auto& [temperature, radiation, daily, thirtyOneDays] : evaporations) {
        EXPECT_EQ(CalcDailyPET(temperature, radiation), daily) << temperature;
        EXPECT_EQ(CalcMonthlyPET(moJuly, temperature, radiation), thirtyOneDays) << temperature;
    }
}

// Example 10 of FAO Irrigation and Drainage Paper 56, whose solar constant is 2.4 % smaller. Each month is
// the mean of its own days.
TEST(vrnClimatePhysics, MonthlyValuesFollowTheDaysOfTheMonth) {
    TMonthlyData sunshine;
    sunshine[moMay] = 220;
    EXPECT_NEAR(GetSolarRadiation(-22.9f, 0.25f, 0.5f, sunshine)[moMay], 14.5, 0.03 * 14.5);
    const TMonthlyData dull = GetSolarRadiation(52, 0.25f, 0.5f, TMonthlyData());
    const TMonthlyData temperature{{-2, 0, 4, 9, 14, 18, 20, 19, 15, 9, 4, 0}};
    const TMonthlyData year = CalcAnnualPET(temperature, dull);
    for (const TMonth month : kMonths) {
        double sum = 0;
        for (std::int32_t day = 1; day <= MonthLength[month]; ++day)
            sum += SolarDay(52, MonthAccLength[month] + day).second;
        EXPECT_NEAR(dull[month], sum / 4 / MonthLength[month], 4e-6) << int{month};
        EXPECT_EQ(year[month], CalcMonthlyPET(month, temperature[month], dull[month])) << int{month};
    }
    EXPECT_EQ(Raised<ERangeError>([] { return CalcMonthlyPET(static_cast<TMonth>(13), 20, 20); }),
              u"Month out of range (13)");
}

TEST(vrnClimatePhysics, TakesPolesAndOddInputs) {
    for (const float north : {67.5f, 89.99999f, 90.0f}) {
        for (const auto& [night, winterDay] : {std::pair{north, 355}, {-north, 172}}) {
            EXPECT_EQ(SolarDay(night, winterDay), std::pair(0.0f, 0.0f)) << night;
            EXPECT_EQ(CalcDayLength(winterDay, night) + Angstrom(3, night, 0.25f, 0.5f, winterDay), 0)
                << night;
            EXPECT_EQ(SolarDay(-night, winterDay).first, 24) << -night;
        }
    }
    for (const std::int32_t day : {-2147483647 - 1, -365, 0, 2147483647}) {
        const auto [hours, radiation] = SolarDay(50, day);
        EXPECT_TRUE(hours > 7 && hours < 17 && radiation > 5 && radiation < 50) << day;
    }
    for (const float odd : {NAN, INFINITY, -INFINITY}) {
        EXPECT_TRUE(std::isnan(CalcDayLength(100, odd)) && std::isnan(SolarDay(odd, 100).second)) << odd;
    }
    for (float degrees = -237; degrees < 1000; degrees += 0.5f)
        ASSERT_TRUE(std::isfinite(CalcDailyPET(degrees, std::numeric_limits<float>::max()))) << degrees;
}

TEST(vrnMonthlyData, WorksOnTheYearAndOnSelections) {
    using THelper = TMonthlyDataHelper;
    // 2^24 + 1 has no place in 32 bits and is rounded back, each time.
    const TMonthlyData steep{{1, 16777216, 0.5f, 1, 1, 1, 1, 1, 1, 1, 1, -3}};
    const TMonthSet winter = MonthSetOf({moDecember, moJanuary, moMarch});
    EXPECT_THAT(THelper::Extract(steep, winter), testing::ElementsAre(1, 0.5f, -3));
    const std::tuple<const char*, float, float> cases[] = {
        // clang-format off
        {"sum", THelper::Sum(steep), 16777213}, {"average", THelper::Average(steep), 16777213.0f / 12},
        {"min", THelper::Min(steep), -3}, {"max", THelper::Max(steep), 16777216},
        {"min of winter", THelper::Min(steep, winter), -3}, {"max of winter", THelper::Max(steep, winter), 1},
        {"average of winter", THelper::Average(steep, winter), -0.5f},
        {"sum of none", THelper::Sum(steep, {}), 0}};
    // clang-format on
    for (const auto& [name, actual, expected] : cases) EXPECT_EQ(actual, expected) << name;
    EXPECT_TRUE(std::isnan(THelper::Average(steep, {})) && std::isnan(THelper::Min(steep, {})));
}

}  // namespace
}  // namespace Varnholt::Test
