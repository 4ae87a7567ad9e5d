#include "VarnholtLib/Numerics/vrnCurveFit.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/FloatMath.h"
#include "Platform/Runtime/Format.h"
#include "VarnholtLib/Foundation/vrnModuleState.h"
#include "VarnholtLib/Numerics/vrnCurveFitLoadPrivate.h"

namespace Varnholt {
namespace {

/// x * x in 32 bits, modulo 2^32.
std::int32_t SquareInt(std::int32_t x) {
    const auto bits = static_cast<std::uint32_t>(x);
    return static_cast<std::int32_t>(bits * bits);
}

/// a * b - c * d
Extended ProductDifference(Extended a, Extended b, Extended c, Extended d) {
    return a * b - c * d;
}

/// Adds to a running sum, rounded to its own width.
template <typename T>
void AddTo(T& sum, Extended term) {
    sum = static_cast<T>(sum + term);
}

struct TLine {
    Extended Intercept;
    Extended Slope;
};

/// The least-squares line through as many points as there are values of y.
TLine FitLine(std::span<const std::int32_t> x, std::span<const float> y) {
    const auto n = static_cast<Extended>(y.size());
    float sx = 0, sy = 0, sxx = 0, sxy = 0;
    for (std::size_t i = 0; i < y.size(); ++i) {
        const Extended xi = x[i], yi = y[i];
        AddTo(sx, xi);
        AddTo(sy, yi);
        AddTo(sxx, SquareInt(x[i]));
        AddTo(sxy, xi * yi);
    }
    const Extended divisor = ProductDifference(n, sxx, sx, sx);
    return {.Intercept = ProductDifference(sxx, sy, sx, sxy) / divisor,
            .Slope = ProductDifference(n, sxy, sx, sy) / divisor};
}

void CheckPoints(const TIntegerArray& x, const TSingleArray& y) {
    if (x.IsEmpty()) throw EArgumentException(u"Not enough X values specified");
    if (y.GetLength() != x.GetLength()) {
        throw EArgumentException(u"Number of Y values does not match the number of X values");
    }
}

template <typename T>
bool AllEqual(std::span<const T> values) {
    return std::ranges::adjacent_find(values, std::not_equal_to<T>()) == values.end();
}

float LogarithmOf(float y) {
    constexpr float kLeast = 0.000001F;
    if (SameValue(y, 0.0F, kLeast)) y = kLeast;
    if (y < 0) throw Exception(u"Dataset does not support Exponential fit");
    return static_cast<float>(std::log(Extended{y}));
}

using TItems = std::vector<std::shared_ptr<IFitFuncs>>;

struct TBuiltIns {
    std::shared_ptr<IFitFuncs> Linear;
    std::shared_ptr<IFitFuncs> Exponential;
};

constinit TModuleState<TItems> items;
constinit TModuleState<TBuiltIns> builtIns;

}  // namespace

// --- The fits ---

void FitLinear(const TIntegerArray& x, const TSingleArray& y, float& a, float& b) {
    CheckPoints(x, y);
    const TLine line = FitLine(x, y);
    a = static_cast<float>(line.Intercept);
    b = static_cast<float>(line.Slope);
}

float FitLinearY(float x, float a, float b) {
    return static_cast<float>(Extended{b} * x + a);
}

String FitLinearFormatEq(float a, float b) {
    return Format(u"Y=%.3f+%.3fX", {a, b});
}

float RSquaredLinear(const TIntegerArray& x, const TSingleArray& y) {
    if (y.GetLength() < x.GetLength()) {
        throw EArgumentException(u"Number of Y values is less than the number of X values");
    }
    const std::span<const std::int32_t> xs = x.GetSpan();
    const std::span<const float> ys = y.GetSpan().first(xs.size());
    if (AllEqual(xs) || AllEqual(ys)) return 0;
    const auto n = static_cast<Extended>(xs.size());
    double sx = 0, sy = 0, sxx = 0, syy = 0, sxy = 0;
    for (std::size_t i = 0; i < xs.size(); ++i) {
        const Extended xi = xs[i], yi = ys[i];
        AddTo(sx, xi);
        AddTo(sy, yi);
        AddTo(sxx, xi * xi);
        AddTo(syy, yi * yi);
        AddTo(sxy, xi * yi);
    }
    const Extended variances = ProductDifference(n, sxx, sx, sx) * ProductDifference(n, syy, sy, sy);
    if (variances <= 0) return 0;  // so small that rounding has lost it
    const Extended r = ProductDifference(n, sxy, sx, sy) / std::sqrt(variances);
    return static_cast<float>(r * r);
}

void FitExp(const TIntegerArray& x, const TSingleArray& y, float& a, float& b) {
    CheckPoints(x, y);
    std::vector<float> logarithms(y.size());
    std::ranges::transform(y, logarithms.begin(), LogarithmOf);
    const TLine line = FitLine(x, logarithms);
    a = static_cast<float>(std::exp(line.Intercept));
    b = static_cast<float>(line.Slope);
}

float FitExpY(float x, float a, float b) {
    return static_cast<float>(std::exp(Extended{b} * x) * a);
}

String FitExpFormatEq(float a, float b) {
    return Format(u"Y=%.3fe^%.3fX", {a, b});
}

// --- The registry ---

TFitFuncs::TFitFuncs(StringView name, TFitFunc fit, TFitYFunc y, TFitFormatEqFunc equation, TR2Func r2)
    : FFitFunc(fit), FFitYFunc(y), FFitFormatEqFunc(equation), FR2Func(r2), FName(name) {}

std::vector<std::shared_ptr<IFitFuncs>> TFitFuncs::Items() {
    const TItems* const loaded = items.Get();
    return loaded == nullptr ? TItems() : *loaded;
}

std::shared_ptr<IFitFuncs> TFitFuncs::Linear() {
    const TBuiltIns* const loaded = builtIns.Get();
    return loaded == nullptr ? nullptr : loaded->Linear;
}

std::shared_ptr<IFitFuncs> TFitFuncs::Exponential() {
    const TBuiltIns* const loaded = builtIns.Get();
    return loaded == nullptr ? nullptr : loaded->Exponential;
}

std::shared_ptr<IFitFuncs> TFitFuncs::RegisterFuncs(StringView name, TFitFunc fit, TFitYFunc y,
                                                    TFitFormatEqFunc equation, TR2Func r2) {
    TItems* const loaded = items.Get();
    if (loaded == nullptr) throw EInvalidOperation(u"The registry of curve fits is not loaded");
    return loaded->emplace_back(std::make_shared<TFitFuncs>(name, fit, y, equation, r2));
}

void CreateFits() noexcept {
    items.Create();
    TBuiltIns& held = builtIns.Create();
    held.Linear =
        TFitFuncs::RegisterFuncs(u"Linear", &FitLinear, &FitLinearY, &FitLinearFormatEq, &RSquaredLinear);
    held.Exponential = TFitFuncs::RegisterFuncs(u"Exponential", &FitExp, &FitExpY, &FitExpFormatEq, nullptr);
}

void FreeFits() noexcept {
    items.Destroy();
}

void ReleaseFits() noexcept {
    builtIns.Destroy();
}

}  // namespace Varnholt
