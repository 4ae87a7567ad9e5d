#pragma once

#include "Platform/Drawing/Canvas.h"
#include "Tools/varnholt/StationSummary.h"

namespace Varnholt::Tool {

/// Draws the charts of a station from the upper left corner on: the climate diagram, the mean temperatures of the years
/// with their trend, and the precipitation of the full months with the gamma density fitted to it.
void DrawStationChart(TCanvas& canvas, TSize size, StringView title, const TStationSummary& summary);

}  // namespace Varnholt::Tool
