#pragma once

#include <array>
#include <optional>

#include "Platform/Drawing/Canvas.h"

/// The climate diagram of a station after Walter and Lieth (1967, Klimadiagramm-Weltatlas).
///
///     DrawClimateDiagram(canvas, {0, 0, 500, 400}, diagram);
///
/// Threads: as the canvas.
namespace Varnholt {

/// What a diagram shows. A missing month is a gap.
struct TClimateDiagram {
    String Title = {};
    String Period = {};
    double Latitude = 0;  ///< degrees, south negative
    std::array<std::optional<double>, 12> Temperature =
        {};  ///< monthly means in degrees Celsius, from January
    std::array<std::optional<double>, 12> Precipitation = {};  ///< monthly totals in mm, from January
    std::optional<double> AnnualTemperature = {};
    std::optional<double> AnnualPrecipitation = {};
};

/// Draws a diagram inside a rectangle, at best of 300 by 250 pixels or more; one of less than 150 by 120 stays as it is.
///
/// The scales are linked: 10 degrees are as high as 20 mm, and above 100 mm, filled blue, as 200 mm. Months in which the
/// precipitation is above the temperature are humid, with vertical lines; others are dry, dotted. South of the
/// equator the year begins in July. Above the diagram are the title, the latitude, the period, the annual mean and
/// the annual total. A value that is no finite number counts as missing, and one beyond 100,000 as that. Clipping, pen,
/// brush and font of the canvas are changed.
VARNHOLT_EXPORT void DrawClimateDiagram(TCanvas& canvas, const TRect& rect, const TClimateDiagram& diagram);

}  // namespace Varnholt
