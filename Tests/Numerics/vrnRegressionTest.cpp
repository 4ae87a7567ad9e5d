#include "VarnholtLib/Numerics/vrnRegression.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "Tests/Data/GridTestSupport.h"
#include "Tests/Support/MessageBoxes.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;
using TCells = std::vector<float>;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr StringView kSingular1 = u"Problem in gaussj - Singular Matrix-1.";
constexpr StringView kSingular2 = u"Problem in gaussj - Singular Matrix-2.";
constexpr StringView kNotStarted = u"mrqmin cannot continue a fit that has not been started";

/// The texts of the boxes, which are informations with an OK button.
std::vector<String> TextsOf(const TRecordedBoxes& boxes) {
    std::vector<String> texts;
    for (const TMessageBox& box : boxes.Boxes) {
        EXPECT_TRUE(box.Icon == miInformation && box.Buttons == std::vector{mrOk} && box.HelpContext == 0);
        texts.push_back(box.Text);
    }
    return texts;
}

/// The square matrix of these cells.
TFloatGrid Matrix(const TCells& cells) {
    const auto n = static_cast<std::int32_t>(std::sqrt(cells.size()));
    TFloatGrid grid(n, n);
    for (std::int32_t k = 1; k <= n; ++k)
        std::copy_n(&cells[std::size_t((k - 1) * n)], n, grid.GetRow(k).begin());
    return grid;
}

TCells CellsOf(const TFloatGrid& grid) {
    TCells cells;
    for (std::int32_t k = 1; k <= grid.GetLastY(); ++k)
        cells.insert(cells.end(), grid.GetRow(k).begin(), grid.GetRow(k).end());
    return cells;
}

// The inverse of the inverse, and the solution inserted again. One element of each row is so large that the
// condition number stays below 20; it is off the diagonal in most rounds, so that rows are exchanged.
TEST(gaussj, UndoesItself) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> unit(-1, 1);
    for (std::int32_t round = 0; round < 200; ++round) {
        const std::int32_t n = 1 + round % 7;
        TCells cells, right;
        for (std::int32_t i = 0; i < n * n; ++i) {
            const bool isLarge = (i / n + round) % n == i % n;
            cells.push_back(unit(random) + (isLarge ? 2.0F * float(n) : 0));
            right.push_back(unit(random));
        }
        TFloatGrid a = Matrix(cells), b = Matrix(right);
        gaussj(a, n, b, n);
        gaussj(a, n, b, n);
        ASSERT_THAT(CellsOf(a), testing::Pointwise(testing::FloatNear(1e-4F), cells)) << round;
        ASSERT_THAT(CellsOf(b), testing::Pointwise(testing::FloatNear(1e-4F), right)) << round;
    }
}

TEST(gaussj, ReportsSingularMatrices) {
    const std::pair<TCells, StringView> cases[] = {// clang-format off
        {{0, 0, 0, 0}, kSingular2}, {{1, 2, 2, 4}, kSingular2}, {{1, 0, 1, 0, 0, 0, 1, 0, 2}, kSingular2},
        {{kNan}, kSingular1}, {{2, kNan, kNan, kNan}, kSingular1}, {TCells(4, INFINITY), kSingular1}};
    // clang-format on
    for (const auto& [cells, message] : cases) {
        TRecordedBoxes messages;
        TFloatGrid a = Matrix(cells), b(a.GetLastX(), 1);
        gaussj(a, a.GetLastX(), b, 1);
        EXPECT_THAT(TextsOf(messages), ElementsAre(message)) << testing::PrintToString(cells);
    }
}

/// y = a1 + a2 * x + a3 * x^2
void Parabola(float x, const TFloatArray& a, float& y, TFloatArray& dyda, std::int32_t) {
    y = a[1] + a[2] * x + a[3] * x * x;
    for (const auto& [index, value] : {std::pair{1, 1.0F}, {2, x}, {3, x * x}}) dyda.WriteFloat(index, value);
}

/// A fit with all that it needs, of a parabola through five points unless told otherwise.
struct TProblem {
    TFloatArray X = ArrayOf({1, 2, 3, -1, -2}), Y = ArrayOf({7, 16, 36, 1, 8});
    TFuncs Model = Parabola;
    TFloatArray A = ArrayOf({1, 2, 3});
    TIntArray Ia = ArrayOf<TIntArray>({1, 1, 1});
    std::int32_t Ma = A.GetCount();
    TFloatGrid Covar{Ma, Ma}, Alpha{Covar};
    float Chisq = 0, Alamda = 0;

    void Step(float alamda) {
        Alamda = alamda;
        mrqmin(X, Y, X.GetCount(), A, Ia, Ma, Covar, Alpha, Chisq, Model, Alamda);
    }

    /// Runs to the end, and checks at every step what must hold.
    void Run() {
        for (Step(-1); Alamda < 1e10F;) {
            const auto [a, chisq, alamda] = std::tuple(A.ToArray(), Chisq, Alamda);
            Step(alamda);
            if (Alamda > alamda) {
                ASSERT_TRUE(Alamda == alamda * 10 && Chisq == chisq && A.ToArray() == a);
            } else {
                ASSERT_TRUE(Alamda == static_cast<float>(alamda * 0.1L) && Chisq < chisq);
            }
        }
        Step(0);
    }
};

TEST(mrqcof, SumsIn32Bits) {
    TProblem fit = {.X = ArrayOf({0, 0, 0}), .Y = ArrayOf({4096, 1, 1}), .A = ArrayOf({0, 0, 0})};
    TFloatArray beta = ArrayOf({9, 9, 9});
    mrqcof(fit.X, fit.Y, 3, fit.A, fit.Ia, 3, fit.Alpha, beta, fit.Chisq, fit.Model);
    EXPECT_EQ(fit.Chisq, 16777216);  // and 1 twice, each lost in 32 bits
}

/// y = a1 * (1 - exp(-a2 * x))
void Saturation(float x, const TFloatArray& a, float& y, TFloatArray& dyda, std::int32_t) {
    const double e = std::exp(-double{a[2]} * x);
    y = static_cast<float>(a[1] * (1 - e));
    dyda.WriteFloat(1, static_cast<float>(1 - e));
    dyda.WriteFloat(2, static_cast<float>(a[1] * x * e));
}

// Misra1a of the NIST. With residuals in 32-bit floats, which keep 4 to 5 of the 7 digits of y, the parameters
// are reached to 5 digits, chi square and the standard deviations to 4.
TEST(mrqmin, FitsANonlinearModelAsCertified) {
    for (const auto& start : {std::pair{500.0F, 0.0001F}, {250.0F, 0.0005F}}) {
        SCOPED_TRACE(start.first);
        TProblem fit{.X = ArrayOf({77.6F, 114.9F, 141.1F, 190.8F, 239.9F, 289, 332.8F, 378.4F, 434.8F, 477.3F,
                                   536.8F, 593.1F, 689.1F, 760}),
                     .Y = ArrayOf({10.07F, 14.73F, 17.94F, 23.93F, 29.61F, 35.18F, 40.02F, 44.82F, 50.76F,
                                   55.05F, 61.01F, 66.4F, 75.47F, 81.78F}),
                     .Model = Saturation,
                     .A = ArrayOf({start.first, start.second}),
                     .Ia = ArrayOf<TIntArray>({1, 1})};
        ASSERT_NO_FATAL_FAILURE(fit.Run());
        EXPECT_NEAR(fit.A[1], 238.94212918, 1e-5 * 238.9);
        EXPECT_NEAR(fit.A[2], 5.5015643181E-04, 1e-5 * 5.5e-4);
        EXPECT_NEAR(fit.Chisq, 0.12455138894, 5e-5 * 0.1246);
        const double variance = fit.Chisq / 12.0;  // of 14 points and 2 parameters
        EXPECT_NEAR(std::sqrt(fit.Covar.Get(1, 1) * variance), 2.7070075241, 5e-5 * 2.7);
        EXPECT_NEAR(std::sqrt(fit.Covar.Get(2, 2) * variance), 7.2668688436E-06, 5e-5 * 7.3e-6);
    }
}

TEST(mrqmin, KeepsFixedParametersAndEndsWithTheCovariance) {
    TProblem fit{.A = ArrayOf({5, 2, 0}), .Ia = ArrayOf<TIntArray>({1, 0, 1})};
    fit.Covar.Initialise(9);
    ASSERT_NO_FATAL_FAILURE(fit.Run());
    EXPECT_EQ(Raised<EInvalidOperation>([&] { fit.Step(0); }), kNotStarted);
    EXPECT_THAT(fit.A.GetBuffer(),
                testing::Pointwise(testing::FloatNear(1e-5F), TCells{24 / 214.0F, 2, 692 / 214.0F}));
    EXPECT_THAT(CellsOf(fit.Alpha), ElementsAre(5, 0, 19, 0, 0, 0, 19, 0, 115));
    const TCells inverse = {115 / 214.0F, 0, -19 / 214.0F, 0, 0, 0, -19 / 214.0F, 0, 5 / 214.0F};
    EXPECT_THAT(CellsOf(fit.Covar), testing::Pointwise(testing::FloatEq(), inverse));
}

TEST(mrqmin, DampsAStepAndContinuesAfterASingularMatrix) {
    TProblem fit{.A = ArrayOf({0, 2, 3}), .Ia = ArrayOf<TIntArray>({-1, 0, 0})};
    fit.Step(-1);
    EXPECT_FLOAT_EQ(fit.A[1], 5 / (5 * 1.001F));  // beta / (alpha * (1 + alamda))
    TRecordedBoxes messages;
    fit.Model = [](float, const TFloatArray&, float& y, TFloatArray&, std::int32_t) { y = kNan; };
    fit.Step(-1);
    fit.Step(fit.Alamda);
    EXPECT_FLOAT_EQ(fit.Alamda, 0.1F);
    fit.Step(0);
    EXPECT_THAT(TextsOf(messages), ElementsAre(kSingular2, kSingular2, kSingular2));  // no derivatives
    EXPECT_FLOAT_EQ(fit.A[1], 5 / (5 * 1.001F));
}

TEST(mrqmin, RejectsArgumentsAndKeepsTheFit) {
    TProblem fit{.Ia = ArrayOf<TIntArray>({1, 1, 0})};
    EXPECT_EQ(Raised<EInvalidOperation>([&] { fit.Step(0); }), kNotStarted);
    fit.Step(-1);
    const auto with = [&](auto spoil) {
        return [&fit, spoil] {
            TProblem other = fit;
            spoil(other);
            fit.Step(fit.Alamda);
            other.Step(fit.Alamda);
        };
    };
    const StringView others = u"mrqmin cannot continue a fit with other parameters than it was started with";
    ExpectRaised<EArgumentException>({
        {with([](TProblem& p) { p.Ia.WriteInt(3, 1); }), others},
        {with([](TProblem& p) { p.Ma = 2; }), others},
        {[&] { covsrt(fit.Covar, 3, fit.Ia, 3); }, u"mfit is not the number of parameters that are fitted"},
    });
    EXPECT_EQ(Raised<EArgumentNilException>(with([](TProblem& p) { p.Model = nullptr; })), u"funcs");
    const String outside = u"Index out of bounds in ";
    ExpectRaised<EGridException>({
        {with([](TProblem& p) { p.X.SetBase(0); }), outside + u"TFloatArray.GetFloat\rIndex = 5"},
        {with([](TProblem& p) { p.Covar.SetBaseY(0); }), outside + u"TAbstractGrid.CheckBounds\rY = 3"},
        {[] { TProblem{.Ia = TIntArray(3)}.Step(-1); }, u"Can't create a grid with a dimension less than 1"},
    });
}

TEST(mrqmin, AFailingModelEndsTheFit) {
    TProblem fit;
    int calls = 0;
    fit.Model = [&](float, const TFloatArray&, float&, TFloatArray& dyda, std::int32_t) {
        if (++calls == 13) dyda.SetSize(1, 2, true);  // in the second step
    };
    const TRecordedBoxes messages;
    fit.Step(-1);
    EXPECT_THROW(fit.Step(fit.Alamda), EGridException);
    EXPECT_EQ(Raised<EInvalidOperation>([&] { fit.Step(1); }), kNotStarted);
}

}  // namespace
}  // namespace Varnholt::Test
