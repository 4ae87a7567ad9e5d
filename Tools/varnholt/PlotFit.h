#pragma once

#include <optional>
#include <span>

#include "Platform/Runtime/Types.h"

/// Curves through the points of a plot.
namespace Varnholt::Tool {

enum class TFitKind { Linear, Exponential };

/// y = A + B * (x - Origin), or y = A * e^(B * (x - Origin)).
struct TPlotFit {
    TFitKind Kind = TFitKind::Linear;
    double A = 0;
    double B = 0;
    double Origin = 0;

    [[nodiscard]] double At(double x) const;
};

/// Fits the curve by least squares, the exponential as the line through ln y. Points without a finite X or Y are left
/// out. The sums are taken from the means, so that X far from 0, such as dates, costs no digits; FitLinear of the
/// library, with whole X and sums of 32 bits, would lose most of them. None for fewer than two different X, and
/// for an exponential through a Y of 0 or less.
[[nodiscard]] std::optional<TPlotFit> FitPoints(TFitKind kind, std::span<const double> x,
                                                std::span<const double> y, double origin);

/// The number with four significant digits.
[[nodiscard]] String SignificantText(double value);

}  // namespace Varnholt::Tool
