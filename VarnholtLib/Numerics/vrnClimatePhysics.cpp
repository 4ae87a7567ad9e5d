#include "VarnholtLib/Numerics/vrnClimatePhysics.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace Varnholt {

namespace {

constexpr Extended kPi = std::numbers::pi_v<Extended>;
constexpr Extended kHoursPerRadian = 7.639437268410976L;  // 24 / pi

/// The declination of the sun in radians.
Extended Declination(std::int32_t day) {
    return 0.4093L * std::sin(2 * kPi * day / 365 - 1.405L);
}

Extended ToRadians(float latitude) {
    return kPi * latitude / 180;
}

/// The tangent of the latitude. At the poles, where the rounding of pi / 2 would determine its sign, the
/// largest number.
Extended LatitudeTangent(float latitude) {
    if (std::fabs(latitude) == 90) return std::copysign(std::numeric_limits<Extended>::max(), latitude);
    return std::tan(ToRadians(latitude));
}

/// The sunset hour angle in radians: pi in polar day, 0 in polar night.
Extended SunsetHourAngle(float latitude, Extended declination) {
    const Extended cosine = -LatitudeTangent(latitude) * std::tan(declination);
    if (cosine > 1) return 0;
    if (cosine < -1) return kPi;
    return std::acos(cosine);
}

/// The PET of a day, not yet rounded.
Extended DailyPET(Extended temperature, Extended radiation) {
    const Extended shifted = 237.3L + temperature;
    const auto es = static_cast<float>(6.1078L * std::exp(17.269L * temperature / shifted));
    const auto delta = static_cast<float>(17.269L * es / shifted * (1 - temperature / shifted));
    const auto net = static_cast<float>(0.77L * radiation / 2.454L);
    return Extended{delta} * net * 1.21L / (0.66L + delta);
}

}  // namespace

float CalcDayLength(std::int32_t day, float latitude) {
    const auto declination = static_cast<float>(Declination(day));
    const auto ws = static_cast<float>(SunsetHourAngle(latitude, declination));
    return static_cast<float>(ws * kHoursPerRadian);
}

float Solar_Radiation(float latitude, std::int32_t day, float& dayLength) {
    const Extended declination = Declination(day);
    const Extended lat = ToRadians(latitude);
    dayLength = static_cast<float>(SunsetHourAngle(latitude, declination) * kHoursPerRadian);
    if (dayLength == 0) return 0;
    const Extended ws = kPi * dayLength / 24;
    const Extended dr = 1 + 0.033L * std::cos(day * 0.01721420632103996L);
    return static_cast<float>(
        38.495392L * dr *
        (ws * std::sin(lat) * std::sin(declination) + std::cos(lat) * std::cos(declination) * std::sin(ws)));
}

float Angstrom(float sunshine, float latitude, float a, float b, std::int32_t day) {
    float dayLength = 0;
    const float radiation = Solar_Radiation(latitude, day, dayLength);
    if (dayLength == 0) return 0;
    return static_cast<float>((a + Extended{b} * sunshine / dayLength) * radiation);
}

TMonthlyData GetSolarRadiation(float latitude, float a, float b, const TMonthlyData& sunshine) {
    TMonthlyData result;
    std::int32_t dayOfYear = 1;
    for (const TMonth month : kMonths) {
        const std::int32_t days = MonthLength[month];
        const auto daily = static_cast<float>(Extended{sunshine[month]} / days);
        Extended sum = 0;
        for (std::int32_t day = 0; day < days; ++day) sum += Angstrom(daily, latitude, a, b, dayOfYear++);
        result[month] = static_cast<float>(sum / days);
    }
    return result;
}

float CalcDailyPET(float temperature, float radiation) {
    return static_cast<float>(DailyPET(temperature, radiation));
}

float CalcMonthlyPET(TMonth month, float temperature, float radiation) {
    return static_cast<float>(DailyPET(temperature, radiation) * MonthLength[month]);
}

TMonthlyData CalcAnnualPET(const TMonthlyData& temperature, const TMonthlyData& radiation) {
    TMonthlyData result;
    for (const TMonth month : kMonths) {
        result[month] = CalcMonthlyPET(month, temperature[month], radiation[month]);
    }
    return result;
}

}  // namespace Varnholt
