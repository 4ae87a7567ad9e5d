#include "VarnholtLib/Numerics/vrnClimatePhysics.h"

#include <gtest/gtest.h>

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

// Reckoned with 60 digits, rounded to 32 bits where the formulas say so. CalcDayLength and Solar_Radiation
// round at different places and so differ in some of the day lengths.
TEST(vrnClimatePhysics, RoundsWhereTheFormulasSay) {
    const std::tuple<std::int32_t, float, float, float, float> cases[] = {
        // clang-format off
        {172, 48.25f, 15.8768053f, 15.8768063f, 42.8657722f},
        {172, 66.5f, 23.4645748f, 23.464571f, 42.701355f},
        {200, -33.5f, 10.0438223f, 10.0438223f, 18.4206028f},
        {355, 66.5f, 0.524131f, 0.52412647f, 0.00156445219f},
        {366, 10, 11.4260235f, 11.4260235f, 31.8854084f}};
    // clang-format on
    for (const auto& [day, latitude, dayLength, solarDayLength, radiation] : cases) {
        const auto [hours, light] = SolarDay(latitude, day);
        EXPECT_EQ(std::tuple(CalcDayLength(day, latitude), hours, light),
                  std::tuple(dayLength, solarDayLength, radiation));
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

// FAO Irrigation and Drainage Paper 56: examples 8, 9 and 10, annex 2, tables 2.4, 2.6 and 2.7. Its solar
// constant is 2.4 % smaller than that of Solar_Radiation, its declination differs slightly.
TEST(vrnClimatePhysics, AgreesWithPublishedValues) {
    EXPECT_NEAR(SolarDay(-20, 246).second, 32.2, 0.03 * 32.2);
    EXPECT_NEAR(CalcDayLength(246, -20), 11.7, 0.1);
    const std::tuple<int, double, double> middles[] = {// clang-format off
        {15, 9.5, 36.2}, {74, 11.7, 37.9}, {135, 14.2, 34.8}, {196, 14.6, 33.9}, {258, 12.2, 37.2}, {319, 9.7, 36.3}};
    // clang-format on
    for (const auto& [day, hoursAt40, equator] : middles) {
        EXPECT_NEAR(CalcDayLength(day, 40), hoursAt40, 0.1) << day;
        EXPECT_NEAR(SolarDay(0, day).second, equator, 0.03 * equator) << day;
    }
    TMonthlyData sunshine;
    sunshine[moMay] = 220;
    EXPECT_NEAR(GetSolarRadiation(-22.9f, 0.25f, 0.5f, sunshine)[moMay], 14.5, 0.03 * 14.5);
    for (const auto& [temperature, slope] : {std::pair{10.0f, 0.082}, {40.0f, 0.393}}) {
        const double expected = 1.21 * slope / (slope + 0.066) * 0.77 * 20 / 2.454;
        EXPECT_NEAR(CalcDailyPET(temperature, 20), expected, 0.005 * expected) << temperature;
    }
}

TEST(vrnClimatePhysics, HoldsForAllDaysAndLatitudes) {
    for (std::int32_t day = 1; day <= 366; ++day) {
        for (float latitude = -90; latitude <= 90; latitude += 2.5f) {
            const float hours = CalcDayLength(day, latitude);
            const auto [solarHours, radiation] = SolarDay(latitude, day);
            // Apart beside polar day and night alone; light here is night there.
            ASSERT_NEAR(solarHours, hours, 3e-3) << day << " at " << latitude;
            ASSERT_NEAR(hours + CalcDayLength(day, -latitude), 24, 4e-6) << day << " at " << latitude;
            ASSERT_TRUE((latitude != 0 || hours == 12) && hours >= 0 && hours <= 24 && radiation >= 0)
                << hours << " and " << radiation << ' ' << day << " at " << latitude;
            ASSERT_EQ(Angstrom(13, latitude, 1, 0, day), radiation) << day << " at " << latitude;
            if (std::fabs(latitude) > 60 || day > 182) continue;
            // Half a year is 182.5 days: the mean of two days leaves the curvature, at most 4e-3 / 8.
            const float opposite = CalcDayLength(day + 182, -latitude) + CalcDayLength(day + 183, -latitude);
            ASSERT_NEAR(opposite / 2, hours, 5e-4) << day << " at " << latitude;
        }
    }
}

TEST(vrnClimatePhysics, MonthlyValuesFollowTheDaysOfTheMonth) {
    const TMonthlyData dull = GetSolarRadiation(52, 0.25f, 0.5f, TMonthlyData());
    const TMonthlyData temperature{{-2, 0, 4, 9, 14, 18, 20, 19, 15, 9, 4, 0}};
    const TMonthlyData year = CalcAnnualPET(temperature, dull);
    for (const TMonth month : kMonths) {
        double sum = 0;
        for (std::int32_t day = 1; day <= MonthLength[month]; ++day) {
            sum += SolarDay(52, MonthAccLength[month] + day).second;
        }
        EXPECT_NEAR(dull[month], sum / 4 / MonthLength[month], 4e-6) << int{month};
        EXPECT_EQ(year[month], CalcMonthlyPET(month, temperature[month], dull[month])) << int{month};
    }
    EXPECT_EQ(Raised<ERangeError>([] { (void)CalcMonthlyPET(static_cast<TMonth>(13), 20, 20); }),
              u"Month out of range (13)");
}

TEST(vrnClimatePhysics, TakesPolesAndOddInputs) {
    for (const float north : {67.5f, 89.99999f, 90.0f}) {
        for (const auto& [night, winterDay] : {std::pair{north, 355}, {-north, 172}}) {
            EXPECT_EQ(SolarDay(night, winterDay), std::pair(0.0f, 0.0f)) << night;
            EXPECT_EQ(CalcDayLength(winterDay, night), 0) << night;
            EXPECT_EQ(Angstrom(3, night, 0.25f, 0.5f, winterDay), 0) << night;
            EXPECT_EQ(SolarDay(-night, winterDay).first, 24) << -night;
        }
    }
    for (const std::int32_t day :
         {std::numeric_limits<std::int32_t>::min(), -365, 0, 367, std::numeric_limits<std::int32_t>::max()}) {
        const auto [hours, radiation] = SolarDay(50, day);
        EXPECT_TRUE(hours > 7 && hours < 17 && radiation > 5 && radiation < 50) << day;
    }
    for (const float odd : {NAN, INFINITY, -INFINITY}) {
        EXPECT_TRUE(std::isnan(CalcDayLength(100, odd)) && std::isnan(SolarDay(odd, 100).second)) << odd;
        EXPECT_TRUE(std::isnan(CalcDailyPET(odd, 20))) << odd;
    }
    for (float degrees = -237; degrees < 1000; degrees += 0.5f) {
        ASSERT_TRUE(std::isfinite(CalcDailyPET(degrees, std::numeric_limits<float>::max()))) << degrees;
        ASSERT_EQ(CalcDailyPET(degrees, 0), 0) << degrees;
    }
}

}  // namespace
}  // namespace Varnholt::Test
