#include "Tools/varnholt/GammaQuantile.h"

#include <array>
#include <cmath>

#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

using Tool::GammaQuantile;

// Found by bisection of the incomplete gamma function with 40 digits in another program.
TEST(GammaQuantileTest, ReachesTheAccuracyOfItsHeader) {
    constexpr std::array<Extended, 3> cases[] = {
        {0.01L, 1e-6L, 5.6607381470618810933e-601L},
        {0.01L, 0.999999L, 7.1512534781104374485L},
        {0.5L, 0.05L, 0.0019660700000097613657L},
        {1.371L, 0.1L, 0.23783998933967469509L},
        {50, 1e-6L, 23.250665357946591521L},
        {1000, 0.5L, 999.66668642696518206L},
        {1000, 0.999999L, 1157.5779110089262174L},
        {1e7L, 0.5L, 9999999.6666666686420L},  // shape - 1/3 + 8 / (405 shape)
        {1e-6L, 0.5L, 0},                      // e^-693147
    };
    for (const auto& [shape, p, x] : cases) {
        EXPECT_LE(std::fabs(GammaQuantile(shape, 1, p) - x), 1e-15L * x) << shape << ", " << p;
        EXPECT_LE(std::fabs(GammaQuantile(shape, 70, p) - 70 * x), 1e-15L * 70 * x) << shape << ", " << p;
    }
}

TEST(GammaQuantileTest, RefusesWhatHasNoQuantile) {
    const String message =
        u"A gamma quantile needs a shape from 1E-6 to 1E7, a positive scale and a probability between 0 and "
        u"1";
    // clang-format off
    const std::array<Extended, 3> cases[] = {
        {0, 1, 0.5L}, {1.1e7L, 1, 0.5L}, {1, 0, 0.5L}, {1, INFINITY, .5L}, {1, 1, 0}, {1, 1, 1}, {1, 1, NAN}};
    // clang-format on
    for (const auto& row : cases) {
        const auto call = [&row] { static_cast<void>(GammaQuantile(row[0], row[1], row[2])); };
        EXPECT_EQ(Raised<EArgumentException>(call), message) << testing::PrintToString(row);
    }
}

}  // namespace
}  // namespace Varnholt::Test
