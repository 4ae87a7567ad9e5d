#include "VarnholtLib/Numerics/vrnClimatePhysics.h"

#include <gtest/gtest.h>

#include <cmath>

#include "Tests/Foundation/Raised.h"

namespace Varnholt {
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
    const int middle[] = {15, 46, 74, 105, 135, 166, 196, 227, 258, 288, 319, 349};
    const double hoursAt40[] = {9.5, 10.5, 11.7, 13.1, 14.2, 14.8, 14.6, 13.6, 12.2, 10.9, 9.7, 9.2};
    const double equator[] = {36.2, 37.5, 37.9, 36.8, 34.8, 33.4, 33.9, 35.7, 37.2, 37.4, 36.3, 35.6};
    for (std::size_t month = 0; month < 12; ++month) {
        EXPECT_NEAR(CalcDayLength(middle[month], 40), hoursAt40[month], 0.1) << month;
        EXPECT_NEAR(SolarDay(0, middle[month]).second, equator[month], 0.03 * equator[month]) << month;
    }
    TMonthlyData sunshine;
    sunshine[moMay] = 220;
    EXPECT_NEAR(GetSolarRadiation(-22.9f, 0.25f, 0.5f, sunshine)[moMay], 14.5, 0.03 * 14.5);
    for (const auto& [temperature, slope] : {std::pair{10.0f, 0.082}, {20.0f, 0.145}, {40.0f, 0.393}}) {
        const double expected = 1.21 * slope / (slope + 0.066) * 0.77 * 20 / 2.454;
        EXPECT_NEAR(CalcDailyPET(temperature, 20), expected, 0.005 * expected) << temperature;
    }
}

void CheckDay(std::int32_t day, float latitude) {
    const float hours = CalcDayLength(day, latitude);
    const auto [solarHours, radiation] = SolarDay(latitude, day);
    ASSERT_TRUE(hours >= 0 && hours <= 24 && solarHours >= 0 && solarHours <= 24 && radiation >= 0);
    ASSERT_TRUE(latitude != 0 || hours == 12);
    ASSERT_NEAR(solarHours, hours, 3e-3);  // apart beside polar day and night alone
    // Light here is night there: to the roundings of two hour angles and two results.
    ASSERT_NEAR(double{hours} + CalcDayLength(day, -latitude), 24, 4e-6);
    ASSERT_EQ(Angstrom(13, latitude, 1, 0, day), radiation);
    if (std::fabs(latitude) > 60 || day > 182) return;
    // Half a year is 182.5 days: the mean of two days leaves the curvature, at most 4e-3 / 8.
    const double before = CalcDayLength(day + 182, -latitude);
    ASSERT_NEAR((before + CalcDayLength(day + 183, -latitude)) / 2, hours, 5e-4);
}

TEST(vrnClimatePhysics, HoldsForAllDaysAndLatitudes) {
    for (std::int32_t day = 1; day <= 366; ++day) {
        for (float latitude = -90; latitude <= 90; latitude += 0.5f) {
            CheckDay(day, latitude);
            ASSERT_FALSE(HasFatalFailure()) << "day " << day << " at " << latitude;
        }
    }
}

TEST(vrnClimatePhysics, KnowsPolarDayAndNight) {
    for (const float north : {67.5f, 80.0f, 89.99999f, 90.0f}) {
        for (const auto& [latitude, winterDay] : {std::pair{north, 355}, {-north, 172}}) {
            EXPECT_TRUE(
                CalcDayLength(winterDay, latitude) == 0 && SolarDay(latitude, winterDay).second == 0 &&
                Angstrom(3, latitude, 0.25f, 0.5f, winterDay) == 0 &&
                CalcDayLength(winterDay, -latitude) == 24 && SolarDay(-latitude, winterDay).second > 40)
                << latitude;
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
        const float daily = CalcDailyPET(temperature[month], dull[month]);
        EXPECT_FLOAT_EQ(year[month], daily * static_cast<float>(MonthLength[month])) << int{month};
    }
    EXPECT_EQ(Raised<ERangeError>([] { (void)CalcMonthlyPET(static_cast<TMonth>(13), 20, 20); }),
              u"Month out of range (13)");
}

TEST(vrnClimatePhysics, TakesOddInputs) {
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
}  // namespace Varnholt
