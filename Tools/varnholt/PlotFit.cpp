#include "Tools/varnholt/PlotFit.h"

#include <cmath>

#include "Platform/Runtime/Numbers.h"

namespace Varnholt::Tool {

double TPlotFit::At(double x) const {
    const double t = B * (x - Origin);
    return Kind == TFitKind::Linear ? A + t : A * std::exp(t);
}

std::optional<TPlotFit> FitPoints(TFitKind kind, std::span<const double> x, std::span<const double> y,
                                  double origin) {
    const bool isLinear = kind == TFitKind::Linear;
    bool isPositive = true;
    const auto eachPoint = [&](auto&& use) {
        for (std::size_t i = 0; i < x.size(); ++i) {
            if (!std::isfinite(x[i]) || !std::isfinite(y[i])) continue;
            isPositive = isPositive && y[i] > 0;
            use(Extended{x[i]} - origin, isLinear ? Extended{y[i]} : std::log(Extended{y[i]}));
        }
    };
    Extended count = 0, meanX = 0, meanY = 0;
    eachPoint([&](Extended pointX, Extended pointY) {
        count += 1;
        meanX += pointX;
        meanY += pointY;
    });
    if (!isLinear && !isPositive) return std::nullopt;
    meanX /= count;
    meanY /= count;
    Extended squares = 0, products = 0;
    eachPoint([&](Extended pointX, Extended pointY) {
        squares += (pointX - meanX) * (pointX - meanX);
        products += (pointX - meanX) * (pointY - meanY);
    });
    if (!(squares > 0)) return std::nullopt;
    const Extended slope = products / squares, start = meanY - slope * meanX;
    return TPlotFit{kind, static_cast<double>(isLinear ? start : std::exp(start)), static_cast<double>(slope),
                    origin};
}

String SignificantText(double value) {
    if (value == 0 || !std::isfinite(value)) return FloatToStr(value, TFormatSettings::Invariant());
    const Extended scale = std::pow(Extended{10}, 3 - std::floor(std::log10(std::fabs(Extended{value}))));
    return FloatToStr(std::round(value * scale) / scale, TFormatSettings::Invariant());
}

}  // namespace Varnholt::Tool
