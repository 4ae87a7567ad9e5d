// A fit of a Gaussian peak on a base, four parameters and 10,000 points, beside GSL's Levenberg-Marquardt
// solver on the same data from the same start. The label gives the steps and the fitted height. Each solver
// stops by a convergence test of its own, GSL in 64 bits.
#include <benchmark/benchmark.h>
#include <gsl/gsl_multifit_nlinear.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <memory>
#include <random>
#include <vector>

#include "VarnholtLib/Numerics/vrnRegression.h"

namespace Varnholt {
namespace {

constexpr std::int32_t kCount = 10'000;
constexpr std::array kTruth = {8.0, 4.0, 1.5, 2.0};  // height, place, width, base
constexpr std::array kStart = {5.0, 5.0, 2.5, 1.0};

struct TPoints {
    std::vector<double> X, Y;
};

const TPoints& Points() {
    static const TPoints points = [] {
        TPoints made;
        std::mt19937 random(1);
        std::normal_distribution<double> noise(0, 0.2);
        for (std::int32_t i = 0; i < kCount; ++i) {
            const double x = 10.0 * i / kCount, u = (x - kTruth[1]) / kTruth[2];
            made.X.push_back(x);
            made.Y.push_back(kTruth[0] * std::exp(-u * u / 2) + kTruth[3] + noise(random));
        }
        return made;
    }();
    return points;
}

// Value and derivatives of the model, the same arithmetic for both solvers.
struct TPeak {
    TPeak(double x, double height, double place, double width, double base) {
        const double u = (x - place) / width;
        ByHeight = std::exp(-u * u / 2);
        Value = height * ByHeight + base;
        ByPlace = height * ByHeight * u / width;
        ByWidth = ByPlace * u;
    }
    double Value, ByHeight, ByPlace, ByWidth;
};

void Report(benchmark::State& state, int steps, double height) {
    std::array<char, 64> label{};
    std::snprintf(label.data(), label.size(), "%d steps, height %.6f", steps, height);
    state.SetLabel(label.data());
    state.SetItemsProcessed(state.iterations() * steps * kCount);
}

void PeakFunction(float x, const TFloatArray& a, float& y, TFloatArray& dyda, std::int32_t) {
    const TPeak peak(x, a[1], a[2], a[3], a[4]);
    y = static_cast<float>(peak.Value);
    dyda.WriteFloat(1, static_cast<float>(peak.ByHeight));
    dyda.WriteFloat(2, static_cast<float>(peak.ByPlace));
    dyda.WriteFloat(3, static_cast<float>(peak.ByWidth));
    dyda.WriteFloat(4, 1);
}

void FitByMrqmin(benchmark::State& state) {
    TFloatArray x(kCount), y(kCount), a(4);
    TIntArray ia(4);
    TFloatGrid covar(4, 4), alpha(4, 4);
    std::ranges::transform(Points().X, x.GetBuffer().begin(), [](double v) { return static_cast<float>(v); });
    std::ranges::transform(Points().Y, y.GetBuffer().begin(), [](double v) { return static_cast<float>(v); });
    std::ranges::fill(ia.GetBuffer(), 1);
    int steps = 0;
    for (auto _ : state) {
        for (int l = 0; l < 4; ++l)
            a.WriteFloat(l + 1, static_cast<float>(kStart[static_cast<std::size_t>(l)]));
        float chisq = 0, alamda = -1, former = 0;
        steps = 0;
        do {
            former = chisq;
            mrqmin(x, y, kCount, a, ia, 4, covar, alpha, chisq, PeakFunction, alamda);
            ++steps;
        } while (steps == 1 || former - chisq > 1e-6F * chisq);
        alamda = 0;
        mrqmin(x, y, kCount, a, ia, 4, covar, alpha, chisq, PeakFunction, alamda);
    }
    Report(state, steps, a[1]);
}

int PeakResiduals(const gsl_vector* a, void*, gsl_vector* residuals) {
    for (std::size_t i = 0; i < kCount; ++i) {
        const TPeak peak(Points().X[i], a->data[0], a->data[1], a->data[2], a->data[3]);
        gsl_vector_set(residuals, i, peak.Value - Points().Y[i]);
    }
    return GSL_SUCCESS;
}

int PeakJacobian(const gsl_vector* a, void*, gsl_matrix* jacobian) {
    for (std::size_t i = 0; i < kCount; ++i) {
        const TPeak peak(Points().X[i], a->data[0], a->data[1], a->data[2], a->data[3]);
        const std::array row = {peak.ByHeight, peak.ByPlace, peak.ByWidth, 1.0};
        for (std::size_t j = 0; j < row.size(); ++j) gsl_matrix_set(jacobian, i, j, row[j]);
    }
    return GSL_SUCCESS;
}

// The solver argument is GSL's: QR, or the normal equations by Cholesky, which is what mrqmin does.
void FitByGsl(benchmark::State& state, const gsl_multifit_nlinear_solver* solver) {
    gsl_multifit_nlinear_parameters parameters = gsl_multifit_nlinear_default_parameters();
    parameters.solver = solver;
    const std::unique_ptr<gsl_multifit_nlinear_workspace, void (*)(gsl_multifit_nlinear_workspace*)> work(
        gsl_multifit_nlinear_alloc(gsl_multifit_nlinear_trust, &parameters, kCount, 4),
        gsl_multifit_nlinear_free);
    const std::unique_ptr<gsl_matrix, void (*)(gsl_matrix*)> covar(gsl_matrix_alloc(4, 4), gsl_matrix_free);
    gsl_multifit_nlinear_fdf model{};
    model.f = PeakResiduals;
    model.df = PeakJacobian;
    model.n = kCount;
    model.p = 4;
    const gsl_vector_const_view start = gsl_vector_const_view_array(kStart.data(), kStart.size());
    for (auto _ : state) {
        int info = 0;
        gsl_multifit_nlinear_init(&start.vector, &model, work.get());
        gsl_multifit_nlinear_driver(100, 1e-6, 1e-6, 1e-6, nullptr, nullptr, &info, work.get());
        gsl_multifit_nlinear_covar(gsl_multifit_nlinear_jac(work.get()), 0, covar.get());
    }
    Report(state, static_cast<int>(gsl_multifit_nlinear_niter(work.get())), work->x->data[0]);
}

BENCHMARK(FitByMrqmin)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FitByGsl, qr, gsl_multifit_nlinear_solver_qr)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FitByGsl, cholesky, gsl_multifit_nlinear_solver_cholesky)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace Varnholt
