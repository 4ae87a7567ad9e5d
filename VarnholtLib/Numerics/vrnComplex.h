#pragma once

#include "Platform/Runtime/Types.h"

/// Arithmetic on complex numbers.
///
///     const TComplex impedance = DivComplex(MakeComplex(230, 0), MakeComplex(3, 4));   // 27.6 - 36.8i
///     const TComplex cube = PowComplex(impedance, 3);
///
/// Overflow and division by zero give the infinities and NaNs of IEEE 754; nothing is raised.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// The number RealP + ImageP i.
struct TComplex {
    Extended RealP = 0;
    Extended ImageP = 0;

    friend constexpr bool operator==(const TComplex&, const TComplex&) = default;
};

[[nodiscard]] VARNHOLT_EXPORT TComplex MakeComplex(Extended real, Extended imaginary);

[[nodiscard]] VARNHOLT_EXPORT TComplex AddComplex(const TComplex& x, const TComplex& y);

/// x - y
[[nodiscard]] VARNHOLT_EXPORT TComplex SubtractComplex(const TComplex& x, const TComplex& y);

/// (a + bi)(c + di) = (ac - bd) + (ad + bc)i
[[nodiscard]] VARNHOLT_EXPORT TComplex MulComplex(const TComplex& x, const TComplex& y);

/// x / y. All four parts are first divided by |c| + |d|, the size of the divisor c + di, so that the squares
/// in the quotient neither overflow nor underflow. With y = 0, or where |c| + |d| overflows, both parts are
/// NaNs.
[[nodiscard]] VARNHOLT_EXPORT TComplex DivComplex(const TComplex& x, const TComplex& y);

/// x to the power n, by n - 1 multiplications by x. The power 0 is 1, also of zero.
[[nodiscard]] VARNHOLT_EXPORT TComplex PowComplex(const TComplex& x, std::uint8_t n);

}  // namespace Varnholt
