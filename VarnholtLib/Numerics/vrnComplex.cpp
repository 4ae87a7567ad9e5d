#include "VarnholtLib/Numerics/vrnComplex.h"

#include <cmath>

namespace Varnholt {

TComplex MakeComplex(Extended real, Extended imaginary) {
    return {real, imaginary};
}

TComplex AddComplex(const TComplex& x, const TComplex& y) {
    return {x.RealP + y.RealP, x.ImageP + y.ImageP};
}

TComplex SubtractComplex(const TComplex& x, const TComplex& y) {
    return {x.RealP - y.RealP, x.ImageP - y.ImageP};
}

TComplex MulComplex(const TComplex& x, const TComplex& y) {
    return {x.RealP * y.RealP - x.ImageP * y.ImageP, x.RealP * y.ImageP + x.ImageP * y.RealP};
}

TComplex DivComplex(const TComplex& x, const TComplex& y) {
    const Extended s = std::fabs(y.RealP) + std::fabs(y.ImageP);
    const Extended a = x.RealP / s;
    const Extended b = x.ImageP / s;
    const Extended c = y.RealP / s;
    const Extended d = y.ImageP / s;
    const Extended n = c * c + d * d;
    return {(a * c + b * d) / n, (b * c - a * d) / n};
}

TComplex PowComplex(const TComplex& x, std::uint8_t n) {
    if (n == 0) return {1, 0};
    TComplex power = x;
    for (int factor = 1; factor < n; ++factor) power = MulComplex(power, x);
    return power;
}

}  // namespace Varnholt
