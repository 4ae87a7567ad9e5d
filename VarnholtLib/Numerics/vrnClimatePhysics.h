#pragma once

#include <cstdint>

#include "VarnholtLib/Numerics/vrnMonthlyData.h"

/// Day length, solar radiation and potential evapotranspiration (PET) from simple climate inputs.
///
///     float hours = CalcDayLength(172, 48.2f);                            // midsummer in Vienna
///     float outside = Solar_Radiation(48.2f, 172, hours);                 // MJ m-2, and the hours again
///     TMonthlyData radiation = GetSolarRadiation(48.2f, 0.25f, 0.5f, sunshineHours);
///     TMonthlyData pet = CalcAnnualPET(temperature, radiation);           // mm a month
///
/// Units: latitude in degrees, south negative; day the day of the year from 1 to 366 in a year of 365 days
/// (day 366 equals day 1); day length and sunshine in hours; temperature in degrees Celsius; radiation as a
/// daily total in MJ m-2; PET in mm.
///
/// Inputs are not checked and nothing is raised unless stated. A day outside the year is a day of the years
/// before or after. A latitude beyond -90 to 90 has no meaning, although its results are numbers and a day
/// length stays within 0 to 24. A NaN gives a NaN, and so does an infinite latitude or temperature; an
/// infinite coefficient or radiation gives an infinity or a NaN.
///
/// Uses the monthly values of vrnMonthlyData.h. All arithmetic is that of Extended, rounded to 32 bits in the
/// results and where a formula says so.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// Day length in hours (Shuttleworth 1993, in Maidment, Handbook of Hydrology):
///
///     decl = 0.4093 sin(2 pi day / 365 - 1.405)      declination in radians, here rounded to 32 bits
///     lat  = pi latitude / 180
///     ws   = arccos(-tan lat tan decl)               sunset hour angle in radians, here rounded to 32 bits
///     N    = ws 24 / pi
///
/// In polar day it is 24, in polar night 0: the argument of the arc cosine is limited to -1 to 1.
[[nodiscard]] VARNHOLT_EXPORT float CalcDayLength(std::int32_t day, float latitude);

/// Radiation that a horizontal square metre at the top of the atmosphere receives in that day, in MJ, and the
/// day's length N in hours (Shuttleworth 1993, 15.392 mm a day at 2.501 MJ a millimetre). Its solar constant,
/// and with it R, is 2.4 % above that of FAO Irrigation and Drainage Paper 56 (0.0820 MJ a square metre and
/// minute):
///
///     dr = 1 + 0.033 cos(2 pi day / 365)             distance of the sun
///     R  = 38.495392 dr (ws sin lat sin decl + cos lat cos decl sin ws)
///
/// with decl, lat and N as above, and ws = pi N / 24. Here only N is rounded to 32 bits, so it may differ
/// from CalcDayLength in the last digits of a float, and by more close to polar day and night, where the day
/// length changes steeply with the declination. In polar night R is 0.
[[nodiscard]] VARNHOLT_EXPORT float Solar_Radiation(float latitude, std::int32_t day, float& dayLength);

/// Radiation at the surface in a day with that many hours of sunshine (Angstrom 1924, Prescott 1940): (a + b
/// sunshine / N) R, with R and N of Solar_Radiation. The coefficients are those of the site: a for an
/// overcast sky, a + b for a clear one. Those of FAO-56 are meant for an R that is 2.4 % smaller. More
/// sunshine than the day has hours is not limited. In polar night the result is 0, whatever a, b and the
/// sunshine.
[[nodiscard]] VARNHOLT_EXPORT float Angstrom(float sunshine, float latitude, float a, float b,
                                             std::int32_t day);

/// Mean daily radiation at the surface, for each month, from the month's total hours of sunshine: the mean of
/// Angstrom over the days of the month, each with the month's mean daily sunshine, rounded to 32 bits.
[[nodiscard]] VARNHOLT_EXPORT TMonthlyData GetSolarRadiation(float latitude, float a, float b,
                                                             const TMonthlyData& sunshine);

/// PET of a day in mm (Priestley and Taylor 1972, with the coefficient 1.21; saturation vapour pressure after
/// Tetens 1930), from the day's mean temperature T and the radiation R at the surface:
///
///     es    = 6.1078 exp(17.269 T / (237.3 + T))                 hPa, rounded to 32 bits
///     delta = 17.269 es / (237.3 + T) (1 - T / (237.3 + T))      its slope in hPa a degree, likewise
///     net   = 0.77 R / 2.454                                     mm, likewise; albedo 0.23
///     PET   = delta net 1.21 / (0.66 + delta)
///
/// It is a finite number for every finite radiation and temperature above -237.3 degrees. Below, the formula
/// has no meaning and may give a NaN.
[[nodiscard]] VARNHOLT_EXPORT float CalcDailyPET(float temperature, float radiation);

/// PET of a whole month in mm, from its mean temperature and mean daily radiation: the PET of the mean day
/// times the days of the month. A month outside 1 to 12 raises ERangeError "Month out of range (MONTH)".
[[nodiscard]] VARNHOLT_EXPORT float CalcMonthlyPET(TMonth month, float temperature, float radiation);

/// CalcMonthlyPET for each month of a year.
[[nodiscard]] VARNHOLT_EXPORT TMonthlyData CalcAnnualPET(const TMonthlyData& temperature,
                                                         const TMonthlyData& radiation);

}  // namespace Varnholt
