#pragma once

#include <memory>
#include <vector>

#include "VarnholtBaseLib/Arrays.h"

/// Least-squares fits of curves with two parameters A and B, and the registry from which an application lists
/// them, runs one by name, draws its curve and prints its equation.
///
///     for (const auto& entry : TFitFuncs::Items()) menu.Add(entry->Name());
///     const auto fit = TFitFuncs::Linear();
///     float a = 0, b = 0;
///     fit->FitFunc()(x, y, a, b);                    // x = 1, 2, 3 and y = 3, 5, 7
///     Show(fit->FitFormatEqFunc()(a, b));            // Y=1.000+2.000X
///     const float middle = fit->FitYFunc()(2.5F, a, b);
///
/// The registry begins with "Linear" and "Exponential". It lives from the load of the library to its unload.
///
/// Precision: the sums over the points are 32-bit floats, rounded at each addition, and so are A and B; all
/// other values are computed in Extended. The sums of RSquaredLinear have 64 bits. Where the points do not
/// determine the curve, as with a single point or equal X, or are not finite, A and B follow from IEEE 754
/// arithmetic: NaNs or infinities; for a single point both are NaNs.
///
/// Threads: the fits keep no state. The registry has no lock: register entries before other threads read it.
namespace Varnholt {

/// Fits a curve to the points (X[i], Y[i]) and returns its parameters.
using TFitFunc = void (*)(const TIntegerArray& x, const TSingleArray& y, float& a, float& b);
/// The y of a curve at x.
using TFitYFunc = float (*)(float x, float a, float b);
/// The equation of a curve as text, with three decimals and the separator of FormatSettings().
using TFitFormatEqFunc = String (*)(float a, float b);
/// The coefficient of determination of the fit to the points, 0 to 1.
using TR2Func = float (*)(const TIntegerArray& x, const TSingleArray& y);

/// The functions of one family of curves. A missing function is null.
class VARNHOLT_EXPORT IFitFuncs {
public:
    virtual ~IFitFuncs() = default;

    [[nodiscard]] virtual TFitFunc FitFunc() const = 0;
    [[nodiscard]] virtual TFitYFunc FitYFunc() const = 0;
    [[nodiscard]] virtual TFitFormatEqFunc FitFormatEqFunc() const = 0;
    [[nodiscard]] virtual TR2Func R2Func() const = 0;
    [[nodiscard]] virtual String Name() const = 0;
};

/// An entry of the registry; its class-level operations are the registry.
class VARNHOLT_EXPORT TFitFuncs final : public IFitFuncs {
public:
    TFitFuncs(StringView name, TFitFunc fit, TFitYFunc y, TFitFormatEqFunc equation, TR2Func r2);

    [[nodiscard]] TFitFunc FitFunc() const override { return FFitFunc; }
    [[nodiscard]] TFitYFunc FitYFunc() const override { return FFitYFunc; }
    [[nodiscard]] TFitFormatEqFunc FitFormatEqFunc() const override { return FFitFormatEqFunc; }
    [[nodiscard]] TR2Func R2Func() const override { return FR2Func; }
    [[nodiscard]] String Name() const override { return FName; }

    /// The entries registered so far, in the order of their registration; none while the library is not
    /// loaded.
    [[nodiscard]] static std::vector<std::shared_ptr<IFitFuncs>> Items();

    /// The built-in entries; null while the library is not loaded. "Exponential" has no R2Func.
    [[nodiscard]] static std::shared_ptr<IFitFuncs> Linear();
    [[nodiscard]] static std::shared_ptr<IFitFuncs> Exponential();

    /// Appends a new entry to the registry and returns it. A name may occur twice. Raises EInvalidOperation
    /// "The registry of curve fits is not loaded".
    static std::shared_ptr<IFitFuncs> RegisterFuncs(StringView name, TFitFunc fit, TFitYFunc y,
                                                    TFitFormatEqFunc equation, TR2Func r2);

private:
    TFitFunc FFitFunc;
    TFitYFunc FFitYFunc;
    TFitFormatEqFunc FFitFormatEqFunc;
    TR2Func FR2Func;
    String FName;
};

/// The straight line y = A + B * x:
///
///     A = (Sxx * Sy - Sx * Sxy) / (n * Sxx - Sx * Sx)
///     B = (n * Sxy - Sx * Sy) / (n * Sxx - Sx * Sx)
///
/// Each x * x is a 32-bit product modulo 2^32: for |x| above 46340 the result is wrong. Far below that, where
/// X does not start near 0, the formula subtracts large 32-bit sums and loses digits. Subtract a base year
/// from calendar years. Error of the slope in percent, over 1000 series y = 10 + 0.03 i with a normal error
/// of 0.3 (Benchmarks/AccuracyTable.cpp):
///
///     X              median   largest        X              median   largest
///     1 to 30        0.0006   0.004          2000 to 2029   1.2      1.9
///     1 to 100       0.0003   0.002          2000 to 2099   0.04     0.1
///     1900 to 1929   0.9      1.4            40000 to 40029 50       64
///
/// Raises EArgumentException, with A and B unchanged:
/// - "Not enough X values specified": X is empty
/// - "Number of Y values does not match the number of X values"
VARNHOLT_EXPORT void FitLinear(const TIntegerArray& x, const TSingleArray& y, float& a, float& b);
/// B * x + A
[[nodiscard]] VARNHOLT_EXPORT float FitLinearY(float x, float a, float b);
/// "Y=A+BX". A negative B shows its sign after the plus.
[[nodiscard]] VARNHOLT_EXPORT String FitLinearFormatEq(float a, float b);

/// The square of Pearson's correlation of X and Y:
///
///     r = (n * Sxy - Sx * Sy) / sqrt((n * Sxx - Sx * Sx) * (n * Syy - Sy * Sy))
///
/// 0 if X or Y has no variance, and also without points. Y values beyond the length of X are ignored. Raises
/// EArgumentException "Number of Y values is less than the number of X values".
[[nodiscard]] VARNHOLT_EXPORT float RSquaredLinear(const TIntegerArray& x, const TSingleArray& y);

/// The exponential y = A * e^(B * x), as the straight line through ln y, so that relative errors of y have
/// equal weight. With l = ln y as 32-bit floats:
///
///     A = e^((Sxx * Sl - Sx * Sxl) / (n * Sxx - Sx * Sx))
///     B = (n * Sxl - Sx * Sl) / (n * Sxx - Sx * Sx)
///
/// A y within 0.000001 of 0 counts as 0.000001. For x * x, the digits lost and the EArgumentExceptions see
/// FitLinear. Any other negative y raises Exception "Dataset does not support Exponential fit"; with a NaN, A
/// and B are NaNs.
VARNHOLT_EXPORT void FitExp(const TIntegerArray& x, const TSingleArray& y, float& a, float& b);
/// e^(B * x) * A
[[nodiscard]] VARNHOLT_EXPORT float FitExpY(float x, float a, float b);
/// "Y=Ae^BX"
[[nodiscard]] VARNHOLT_EXPORT String FitExpFormatEq(float a, float b);

}  // namespace Varnholt
