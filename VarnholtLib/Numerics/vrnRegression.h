#pragma once

#include <cstdint>
#include <functional>

#include "VarnholtLib/Data/vrnGrid.h"

/// Non-linear least squares: fits a model with any number of parameters to data points of equal weight.
///
/// Method: D. W. Marquardt, "An algorithm for least-squares estimation of nonlinear parameters", 1963. A step
/// solves the linearised problem with the diagonal of the curvature matrix raised by the factor 1 + alamda:
/// near 0 this is Newton's step, for a large alamda a short step along the gradient. An improvement makes
/// alamda ten times smaller, a failure ten times larger; 43 improvements in a row would reduce it from 0.001
/// to 0, which ends the fit. The caller drives the steps and decides when to stop:
///
///     const TFuncs decay = [](float x, const TFloatArray& a, float& y, TFloatArray& dyda, std::int32_t) {
///         const float e = std::exp(-a[2] * x);
///         y = a[1] * e;                                          // y = a1 * exp(-a2 * x)
///         dyda.WriteFloat(1, e);
///         dyda.WriteFloat(2, -a[1] * x * e);
///     };
///     TFloatGrid covar(2, 2), alpha(2, 2);
///     float chisq = 0, alamda = -1;                              // below 0: start
///     mrqmin(x, y, n, a, ia, 2, covar, alpha, chisq, decay, alamda);
///     for (int step = 0; step < 30 && alamda < 1e6F; ++step) {
///         mrqmin(x, y, n, a, ia, 2, covar, alpha, chisq, decay, alamda);
///     }
///     alamda = 0;                                                // end: the covariance matrix
///     mrqmin(x, y, n, a, ia, 2, covar, alpha, chisq, decay, alamda);
///     const float sd1 = std::sqrt(covar.Get(1, 1) * chisq / (n - 2));
///
/// Indices: every array is read at the indices 1 to its count, and every matrix at rows and columns 1 and up.
/// The element of a matrix in row j and column k is the cell X = j, Y = k of its grid: Get(j, k). An n by m
/// matrix is a TFloatGrid(n, m). Elements at other indices, of an array or grid that is larger or has another
/// base, are left unchanged. A missing index raises the exception of the array ("Index out of bounds in
/// TFloatArray.GetFloat", ...) or that of TAbstractGrid::CheckBounds.
///
/// Precision: values, sums and products of a matrix are stored in 32 bits after every operation that a
/// formula names; a right-hand side is computed in Extended. A NaN or infinity in data, parameters or model
/// does not end a call early: such a step counts as no improvement.
///
/// Where parameters nearly depend on each other, the covariance matrix can lose all digits in 32 bits,
/// silently: a variance in covar may then be negative, and its root a NaN. This happens with the NIST data
/// set Lanczos3, a sum of three exponentials, from its first start, though chisq comes within 0.1 % of the
/// certified one. A variance that is not positive means that the data do not determine the parameter in 32
/// bits.
///
/// Threads: mrqmin keeps the working state of one fit for the whole process, without a lock: one fit at a
/// time. The other functions keep no state.
namespace Varnholt {

/// The model: fills `y`, its value at x for the parameters a[1] to a[na], and `dyda`, the derivatives of y by
/// each of them at the indices 1 to na. On entry both hold what the last point left, and 0 for the first
/// point.
using TFuncs =
    std::function<void(float x, const TFloatArray& a, float& y, TFloatArray& dyda, std::int32_t na)>;

/// One step of a fit.
///
/// - x, y, ndata: the data points, elements 1 to ndata
/// - a, ia, ma: the parameters 1 to ma, updated at each improvement; the flag of a parameter that is to stay
///   fixed is 0. mfit is the number of the others
/// - covar, alpha: at least ma by ma, two different grids; working memory during the fit. Cells outside the
///   first ma by ma stay
/// - chisq: receives the sum of squared residuals for the parameters in a; it never rises
/// - alamda: below 0 starts a fit, and drops any unfinished fit; the value that the last call left continues
///   it; exactly 0 ends the fit, leaves the covariance matrix (for a variance of the residuals of 1) in covar
///   and the curvature matrix in alpha, both with zeros for fixed parameters, and releases the working state
///
/// A step without improvement leaves a and chisq unchanged. A singular matrix shows by the message of gaussj
/// and by a chisq that does not change; the fit continues.
///
/// Raises, with nothing changed and the fit as it was:
/// - EArgumentNilException "funcs": no model
/// - EInvalidOperation "mrqmin cannot continue a fit that has not been started": start with alamda below 0
/// - EArgumentException "mrqmin cannot continue a fit with other parameters than it was started with":
///   another ma, or other flags
/// - EGridException for a missing index
///
/// Raises, and ends the fit: EGridException where ma is below 1 or every parameter is fixed ("Can't create
/// a float array ..." or "a grid with a dimension less than 1"), and whatever the model raises; alamda, a and
/// chisq are then as before the call.
VARNHOLT_EXPORT void mrqmin(const TFloatArray& x, const TFloatArray& y, std::int32_t ndata, TFloatArray& a,
                            const TIntArray& ia, std::int32_t ma, TFloatGrid& covar, TFloatGrid& alpha,
                            float& chisq, const TFuncs& funcs, float& alamda);

/// For the parameters a, with r the residuals y - model and d its derivatives by the mfit fitted parameters:
///
///     alpha[j, k] = sum of d[j] * d[k]    the curvature matrix, mfit by mfit
///     beta[j]     = sum of r * d[j]       half the downward gradient of chisq, elements 1 to mfit
///     chisq       = sum of r * r
///
/// Calls the model once for each point, in order. Raises what mrqmin raises for `funcs`, missing indices and
/// ma, and what the model raises, with alpha, beta and chisq unchanged.
VARNHOLT_EXPORT void mrqcof(const TFloatArray& x, const TFloatArray& y, std::int32_t ndata,
                            const TFloatArray& a, const TIntArray& ia, std::int32_t ma, TFloatGrid& alpha,
                            TFloatArray& beta, float& chisq, const TFuncs& funcs);

/// Gauss-Jordan elimination with full pivoting: turns the n by n matrix `a` into its inverse and the columns
/// of the n by m matrix `b` into the solutions of a * x = b. Of equally large elements the last one, row by
/// row, becomes the pivot. `a` and `b` are different grids; with n below 1 nothing is done, with m below 1
/// there are no right-hand sides.
///
/// A singular matrix does not raise: it is reported by a MessageDlg of type mtInformation with an OK button
/// and help context 0, and the matrices are left half-processed:
/// - "Problem in gaussj - Singular Matrix-2.": the largest remaining element is 0
/// - "Problem in gaussj - Singular Matrix-1.": no remaining column can give a pivot, as when all remaining
///   elements are NaN
VARNHOLT_EXPORT void gaussj(TFloatGrid& a, std::int32_t n, TFloatGrid& b, std::int32_t m);

/// Spreads the mfit by mfit matrix of the fitted parameters over the ma by ma matrix of all parameters, in
/// place, with zeros in the rows and columns of those whose flag in `ia` is 0. Raises EArgumentException
/// "mfit is not the number of parameters that are fitted", EGridException for a missing index; with nothing
/// changed.
VARNHOLT_EXPORT void covsrt(TFloatGrid& covar, std::int32_t ma, const TIntArray& ia, std::int32_t mfit);

}  // namespace Varnholt
