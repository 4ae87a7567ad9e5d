#include "VarnholtLib/Numerics/vrnRegression.h"

#include <cmath>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "Platform/Controls/MessageDialog.h"
#include "Platform/Runtime/Exceptions.h"

namespace Varnholt {
namespace {

/// What a fit keeps between two calls of mrqmin.
struct TFit {
    std::vector<std::int32_t> Fitted;  ///< the parameters with a flag other than 0, ascending; mfit of them
    TFloatArray Atry;                  ///< trial parameters
    TFloatArray Beta;                  ///< gradient vector
    TFloatArray Da;                    ///< step
    TFloatGrid Oneda;                  ///< right-hand side for gaussj, mfit by 1
    float Ochisq;                      ///< the best chi square so far

    [[nodiscard]] std::int32_t Mfit() const noexcept { return static_cast<std::int32_t>(Fitted.size()); }
};

/// The fit between two calls. Each call takes it out and puts it back at its end, so that it is destroyed if
/// the call raises, and a model that calls mrqmin itself cannot destroy it during the call.
constinit std::unique_ptr<TFit> currentFit;

void RequireElements(const TFloatArray& array, std::int32_t count) {
    if (count < 1) return;
    static_cast<void>(array.GetFloat(1));
    static_cast<void>(array.GetFloat(count));
}

void RequireCells(const TFloatGrid& grid, std::int32_t rows, std::int32_t columns) {
    if (rows < 1 || columns < 1) return;
    grid.CheckBounds(1, 1);
    grid.CheckBounds(rows, columns);
}

void RequireModel(const TFuncs& funcs) {
    if (!funcs) throw EArgumentNilException(u"funcs");
}

std::vector<std::int32_t> FittedParameters(const TIntArray& ia, std::int32_t ma) {
    std::vector<std::int32_t> fitted;
    for (std::int32_t l = 1; l <= ma; ++l) {
        if (ia[l] != 0) fitted.push_back(l);
    }
    return fitted;
}

// --- The sums over the data points ---

/// The running sums of mrqcof; of alpha the rows of the lower triangle, one after the other.
struct TSums {
    explicit TSums(std::size_t mfit) : Alpha(mfit * (mfit + 1) / 2), Beta(mfit) {}

    std::vector<float> Alpha;
    std::vector<float> Beta;
    float Chisq = 0;

    /// Adds a data point with the residual dy and the derivatives by the fitted parameters.
    void Add(float dy, std::span<const float> derivatives) {
        auto cell = Alpha.begin();
        for (std::size_t j = 0; j < derivatives.size(); ++j) {
            const Extended wt = derivatives[j];
            for (std::size_t k = 0; k <= j; ++k, ++cell) {
                *cell = static_cast<float>(*cell + wt * derivatives[k]);
            }
            Beta[j] = static_cast<float>(Beta[j] + dy * wt);
        }
        Chisq = static_cast<float>(Chisq + Extended{dy} * dy);
    }

    void WriteTo(TFloatGrid& alpha, TFloatArray& beta, float& chisq) const {
        auto cell = Alpha.begin();
        const auto mfit = static_cast<std::int32_t>(Beta.size());
        for (std::int32_t j = 1; j <= mfit; ++j) {
            for (std::int32_t k = 1; k <= j; ++k, ++cell) {
                alpha.Put(j, k, *cell);
                alpha.Put(k, j, *cell);
            }
            beta.WriteFloat(j, Beta[static_cast<std::size_t>(j - 1)]);
        }
        chisq = Chisq;
    }
};

// --- Gauss-Jordan elimination ---

struct TCell {
    std::int32_t Row;
    std::int32_t Column;
};

void SwapCells(TFloatGrid& grid, TCell one, TCell other) {
    const float value = grid.Get(one.Row, one.Column);
    grid.Put(one.Row, one.Column, grid.Get(other.Row, other.Column));
    grid.Put(other.Row, other.Column, value);
}

void SwapRows(TFloatGrid& grid, std::int32_t row1, std::int32_t row2, std::int32_t columns) {
    for (std::int32_t k = 1; k <= columns; ++k) SwapCells(grid, {row1, k}, {row2, k});
}

void SwapColumns(TFloatGrid& grid, std::int32_t column1, std::int32_t column2, std::int32_t rows) {
    for (std::int32_t j = 1; j <= rows; ++j) SwapCells(grid, {j, column1}, {j, column2});
}

void ScaleRow(TFloatGrid& grid, std::int32_t row, std::int32_t columns, float factor) {
    for (std::int32_t k = 1; k <= columns; ++k) {
        grid.Put(row, k, static_cast<float>(Extended{grid.Get(row, k)} * factor));
    }
}

void SubtractRow(TFloatGrid& grid, std::int32_t from, std::int32_t row, std::int32_t columns, float factor) {
    for (std::int32_t k = 1; k <= columns; ++k) {
        grid.Put(from, k, static_cast<float>(grid.Get(from, k) - Extended{grid.Get(row, k)} * factor));
    }
}

/// The largest element whose row and column have had no pivot yet. A pivot moves to the diagonal, so one mark
/// covers its row and its column. None if all of them are NaN.
std::optional<TCell> FindPivot(const TFloatGrid& a, const std::vector<bool>& ipiv) {
    std::optional<TCell> pivot;
    const auto n = static_cast<std::int32_t>(ipiv.size());
    float big = 0;
    for (std::int32_t j = 1; j <= n; ++j) {
        if (ipiv[static_cast<std::size_t>(j - 1)]) continue;
        for (std::int32_t k = 1; k <= n; ++k) {
            if (ipiv[static_cast<std::size_t>(k - 1)]) continue;
            const float size = std::fabs(a.Get(j, k));
            if (size >= big) {
                big = size;
                pivot = TCell{j, k};
            }
        }
    }
    return pivot;
}

/// Makes column icol of `a` a unit vector, and replaces it by the column of the growing inverse.
void Eliminate(TFloatGrid& a, std::int32_t n, TFloatGrid& b, std::int32_t m, std::int32_t icol) {
    const float pivinv = 1 / a.Get(icol, icol);
    a.Put(icol, icol, 1);
    ScaleRow(a, icol, n, pivinv);
    ScaleRow(b, icol, m, pivinv);
    for (std::int32_t ll = 1; ll <= n; ++ll) {
        if (ll == icol) continue;
        const float dum = a.Get(ll, icol);
        a.Put(ll, icol, 0);
        SubtractRow(a, ll, icol, n, dum);
        SubtractRow(b, ll, icol, m, dum);
    }
}

void ReportSingular(StringView text) {
    MessageDlg(text, mtInformation, {mbOK}, 0);
}

// --- The steps of a fit ---

void CheckArguments(const TFloatArray& x, const TFloatArray& y, std::int32_t ndata, const TFloatArray& a,
                    const TIntArray& ia, std::int32_t ma, const TFloatGrid& covar, const TFloatGrid& alpha,
                    const TFuncs& funcs) {
    RequireModel(funcs);
    RequireElements(x, ndata);
    RequireElements(y, ndata);
    RequireElements(a, ma);
    static_cast<void>(FittedParameters(ia, ma));
    RequireCells(covar, ma, ma);
    RequireCells(alpha, ma, ma);
}

std::unique_ptr<TFit> StartFit(const TFloatArray& a, const TIntArray& ia, std::int32_t ma) {
    currentFit.reset();
    std::vector<std::int32_t> fitted = FittedParameters(ia, ma);
    const auto mfit = static_cast<std::int32_t>(fitted.size());
    TFit fit{.Fitted = std::move(fitted),
             .Atry = TFloatArray(ma),
             .Beta = TFloatArray(ma),
             .Da = TFloatArray(ma),
             .Oneda = TFloatGrid(mfit, 1),
             .Ochisq = 0};
    for (std::int32_t l = 1; l <= ma; ++l) fit.Atry.WriteFloat(l, a[l]);
    return std::make_unique<TFit>(std::move(fit));
}

std::unique_ptr<TFit> TakeFit(const TIntArray& ia, std::int32_t ma) {
    if (!currentFit) throw EInvalidOperation(u"mrqmin cannot continue a fit that has not been started");
    if (currentFit->Atry.GetCount() != ma || currentFit->Fitted != FittedParameters(ia, ma)) {
        throw EArgumentException(
            u"mrqmin cannot continue a fit with other parameters than it was started with");
    }
    return std::move(currentFit);
}

/// The step Da of the damped problem; leaves its inverse matrix in covar.
void Solve(TFit& fit, TFloatGrid& covar, const TFloatGrid& alpha, float alamda) {
    const std::int32_t mfit = fit.Mfit();
    for (std::int32_t j = 1; j <= mfit; ++j) {
        for (std::int32_t k = 1; k <= mfit; ++k) covar.Put(j, k, alpha.Get(j, k));
        covar.Put(j, j, static_cast<float>(alpha.Get(j, j) * (1 + Extended{alamda})));
        fit.Oneda.Put(j, 1, fit.Beta[j]);
    }
    gaussj(covar, mfit, fit.Oneda, 1);
    for (std::int32_t j = 1; j <= mfit; ++j) fit.Da.WriteFloat(j, fit.Oneda.Get(j, 1));
}

/// Makes the trial parameters, with their sums in covar and Da, the parameters of the fit.
void Accept(TFit& fit, TFloatArray& a, std::int32_t ma, const TFloatGrid& covar, TFloatGrid& alpha) {
    for (std::int32_t j = 1; j <= fit.Mfit(); ++j) {
        for (std::int32_t k = 1; k <= fit.Mfit(); ++k) alpha.Put(j, k, covar.Get(j, k));
        fit.Beta.WriteFloat(j, fit.Da[j]);
    }
    for (std::int32_t l = 1; l <= ma; ++l) a.WriteFloat(l, fit.Atry[l]);
}

}  // namespace

void mrqmin(const TFloatArray& x, const TFloatArray& y, std::int32_t ndata, TFloatArray& a,
            const TIntArray& ia, std::int32_t ma, TFloatGrid& covar, TFloatGrid& alpha, float& chisq,
            const TFuncs& funcs, float& alamda) {
    CheckArguments(x, y, ndata, a, ia, ma, covar, alpha, funcs);
    std::unique_ptr<TFit> fit;
    float damping = alamda;
    if (alamda < 0) {
        fit = StartFit(a, ia, ma);
        damping = 0.001F;
        mrqcof(x, y, ndata, a, ia, ma, alpha, fit->Beta, fit->Ochisq, funcs);
    } else {
        fit = TakeFit(ia, ma);
    }
    Solve(*fit, covar, alpha, damping);
    if (damping == 0) {
        covsrt(covar, ma, ia, fit->Mfit());
        covsrt(alpha, ma, ia, fit->Mfit());
        return;
    }
    std::int32_t j = 0;
    for (const std::int32_t l : fit->Fitted) {
        ++j;
        fit->Atry.WriteFloat(l, a[l] + fit->Da[j]);
    }
    float trialChisq = 0;
    mrqcof(x, y, ndata, fit->Atry, ia, ma, covar, fit->Da, trialChisq, funcs);
    if (trialChisq < fit->Ochisq) {
        Accept(*fit, a, ma, covar, alpha);
        fit->Ochisq = trialChisq;
        alamda = static_cast<float>(damping * 0.1L);
    } else {
        alamda = damping * 10;
    }
    chisq = fit->Ochisq;
    currentFit = std::move(fit);
}

void mrqcof(const TFloatArray& x, const TFloatArray& y, std::int32_t ndata, const TFloatArray& a,
            const TIntArray& ia, std::int32_t ma, TFloatGrid& alpha, TFloatArray& beta, float& chisq,
            const TFuncs& funcs) {
    RequireModel(funcs);
    RequireElements(x, ndata);
    RequireElements(y, ndata);
    const std::vector<std::int32_t> fitted = FittedParameters(ia, ma);
    const auto mfit = static_cast<std::int32_t>(fitted.size());
    RequireCells(alpha, mfit, mfit);
    RequireElements(beta, mfit);

    TFloatArray dyda(ma);
    float ymod = 0;
    std::vector<float> derivatives(fitted.size());
    TSums sums(fitted.size());
    for (std::int32_t i = 1; i <= ndata; ++i) {
        funcs(x[i], a, ymod, dyda, ma);
        const float dy = y[i] - ymod;
        for (std::size_t j = 0; j < fitted.size(); ++j) derivatives[j] = dyda[fitted[j]];
        sums.Add(dy, derivatives);
    }
    sums.WriteTo(alpha, beta, chisq);
}

void gaussj(TFloatGrid& a, std::int32_t n, TFloatGrid& b, std::int32_t m) {
    if (n < 1) return;
    RequireCells(a, n, n);
    RequireCells(b, n, m);
    std::vector<bool> ipiv(static_cast<std::size_t>(n));
    std::vector<TCell> pivots;  // indxr and indxc
    for (std::int32_t i = 1; i <= n; ++i) {
        const std::optional<TCell> pivot = FindPivot(a, ipiv);
        if (!pivot) return ReportSingular(u"Problem in gaussj - Singular Matrix-1.");
        const auto [irow, icol] = *pivot;
        ipiv[static_cast<std::size_t>(icol - 1)] = true;
        if (irow != icol) {
            SwapRows(a, irow, icol, n);
            SwapRows(b, irow, icol, m);
        }
        pivots.push_back(*pivot);
        if (a.Get(icol, icol) == 0) return ReportSingular(u"Problem in gaussj - Singular Matrix-2.");
        Eliminate(a, n, b, m, icol);
    }
    while (!pivots.empty()) {
        const auto [indxr, indxc] = pivots.back();
        if (indxr != indxc) SwapColumns(a, indxr, indxc, n);
        pivots.pop_back();
    }
}

void covsrt(TFloatGrid& covar, std::int32_t ma, const TIntArray& ia, std::int32_t mfit) {
    const std::vector<std::int32_t> fitted = FittedParameters(ia, ma);
    if (static_cast<std::int32_t>(fitted.size()) != mfit) {
        throw EArgumentException(u"mfit is not the number of parameters that are fitted");
    }
    RequireCells(covar, ma, ma);
    for (std::int32_t i = mfit + 1; i <= ma; ++i) {
        for (std::int32_t j = 1; j <= i; ++j) {
            covar.Put(i, j, 0);
            covar.Put(j, i, 0);
        }
    }
    for (std::int32_t k = mfit; k >= 1; --k) {
        const std::int32_t j = fitted[static_cast<std::size_t>(k - 1)];
        if (j == k) continue;
        SwapColumns(covar, k, j, ma);
        SwapRows(covar, k, j, ma);
    }
}

}  // namespace Varnholt
