#include "VarnholtLib/Numerics/vrnHypothesisTests.h"

#include <cmath>

#include "Platform/Runtime/Exceptions.h"
#include "VarnholtLib/Numerics/vrnGammaFunctions.h"

namespace Varnholt {
namespace {

/// betai of values that are first rounded to 32 bits.
Extended IncompleteBeta(Extended a, Extended b, Extended x) {
    return betai(static_cast<float>(a), static_cast<float>(b), static_cast<float>(x));
}

}  // namespace

void FT_test(float mean1, float sd1, float mean2, float sd2, std::int32_t count1, std::int32_t count2,
             float& t, float& probT, float& f, float& probF) {
    const float var1 = sd1 * sd1, var2 = sd2 * sd2;
    const Extended n1 = count1, n2 = count2;
    const bool isSecondGreater = var2 >= var1;
    f = isSecondGreater ? var2 / var1 : var1 / var2;
    const Extended d1 = isSecondGreater ? n2 - 1 : n1 - 1;
    const Extended d2 = isSecondGreater ? n1 - 1 : n2 - 1;
    probF = static_cast<float>(1 - IncompleteBeta(d1 / 2, d2 / 2, d1 / (d2 / f + d1)) +
                               IncompleteBeta(d2 / 2, d1 / 2, d2 / (d1 * f + d2)));
    const Extended difference = Extended{mean1} - mean2;
    Extended df = 0;
    if (probF > 0.05F) {  // in 32 bits like probF, so that a probF of 0.05 is not above it
        df = n1 + n2 - 2;
        t = static_cast<float>(difference /
                               std::sqrt((1 / n1 + 1 / n2) * ((n1 - 1) * var1 + (n2 - 1) * var2) / df));
    } else {
        const Extended u = var1 / n1, v = var2 / n2;
        t = static_cast<float>(difference / std::sqrt(u + v));
        df = (u + v) * (u + v) / (u * u / (n1 - 1) + v * v / (n2 - 1));
    }
    probT = static_cast<float>(IncompleteBeta(df / 2, 0.5L, df / (Extended{t} * t + df)));
}

void ChiTest(std::span<const float> bins1, std::span<const float> bins2, std::int32_t binCount, float& df,
             float& chiSquare, float& prob) {
    if (binCount >= std::ssize(bins1) || binCount >= std::ssize(bins2)) {
        throw EArgumentException(u"ChiTest needs arrays of one element more than the bin count");
    }
    std::int64_t freedom = std::int64_t{binCount} - 1;
    float sum = 0;
    for (std::int32_t i = 1; i <= binCount; ++i) {
        const Extended b1 = bins1[static_cast<std::size_t>(i)], b2 = bins2[static_cast<std::size_t>(i)];
        if (b1 == 0 && b2 == 0) {
            --freedom;
        } else {
            sum = static_cast<float>(sum + (b1 - b2) * (b1 - b2) / (b1 + b2));
        }
    }
    df = static_cast<float>(freedom);
    chiSquare = sum;
    prob = gammq(static_cast<float>(0.5L * df), static_cast<float>(0.5L * chiSquare));
}

}  // namespace Varnholt
