#include "VarnholtLib/Numerics/vrnRegression.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "Platform/Controls/MessageDialog.h"
#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;
using TCells = std::vector<float>;
using TPoints = std::vector<std::pair<float, float>>;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr StringView kSingular1 = u"Problem in gaussj - Singular Matrix-1.";
constexpr StringView kSingular2 = u"Problem in gaussj - Singular Matrix-2.";
constexpr StringView kNotStarted = u"mrqmin goes on with a fit that has not been started";

/// Takes down the messages while it lives.
struct TMessages final : IMessageDialogService {
    TMsgDlgBtn Show(StringView text, TMsgDlgType dialogType, TMsgDlgButtons buttons,
                    std::int32_t help) override {
        EXPECT_TRUE(dialogType == mtInformation && buttons == TMsgDlgButtons{mbOK} && help == 0);
        Texts.emplace_back(text);
        return mbOK;
    }
    std::vector<String> Texts;
    TMessageDialogServiceScope Scope{*this};
};

template <typename TArray, typename T>
TArray ArrayOf(const std::vector<T>& values) {
    TArray array(static_cast<std::int32_t>(values.size()));
    std::ranges::copy(values, array.GetBuffer().begin());
    return array;
}

/// The square matrix of that many rows, whose cells come row by row.
TFloatGrid Matrix(std::int32_t n, const TCells& cells) {
    TFloatGrid grid(n, n);
    auto cell = cells.begin();
    for (std::int32_t j = 1; j <= n; ++j) {
        for (std::int32_t k = 1; k <= n; ++k) grid.Put(j, k, *cell++);
    }
    return grid;
}

TCells CellsOf(const TFloatGrid& grid) {
    TCells cells;
    for (std::int32_t j = 1; j <= grid.GetLastX(); ++j) {
        for (std::int32_t k = 1; k <= grid.GetLastY(); ++k) cells.push_back(grid.Get(j, k));
    }
    return cells;
}

// The inverse of the inverse, and the solution put in again. One element of each row is so large that the
// condition number stays below 20; it stands off the diagonal in most rounds, so that rows change places.
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
        TFloatGrid a = Matrix(n, cells), b = Matrix(n, right);
        gaussj(a, n, b, n);
        gaussj(a, n, b, n);
        ASSERT_THAT(CellsOf(a), testing::Pointwise(testing::FloatNear(1e-4F), cells)) << round;
        ASSERT_THAT(CellsOf(b), testing::Pointwise(testing::FloatNear(1e-4F), right)) << round;
    }
}

TEST(gaussj, ReportsSingularMatrices) {
    const std::tuple<std::int32_t, TCells, StringView> cases[] = {
        // clang-format off
        {2, {0, 0, 0, 0}, kSingular2}, {2, {1, 2, 2, 4}, kSingular2},
        {3, {1, 0, 1, 0, 0, 0, 1, 0, 2}, kSingular2}, {1, {kNan}, kSingular1},
        {2, {2, kNan, kNan, kNan}, kSingular1}, {2, TCells(4, INFINITY), kSingular1}};
    // clang-format on
    for (const auto& [n, cells, message] : cases) {
        TMessages messages;
        TFloatGrid a = Matrix(n, cells), b(n, 1);
        gaussj(a, n, b, 1);
        EXPECT_THAT(messages.Texts, ElementsAre(message)) << testing::PrintToString(cells);
    }
}

TEST(covsrt, SpreadsTheFittedParameters) {
    TFloatGrid covar = Matrix(4, {1, 2, 3, 9, 4, 5, 6, 9, 7, 8, 10, 9, 9, 9, 9, 9});
    const TIntArray ia = ArrayOf<TIntArray, int>({1, 0, -2, 7});
    for (const std::int32_t mfit : {-1, 2, 4}) {
        EXPECT_EQ(Raised<EArgumentException>([&] { covsrt(covar, 4, ia, mfit); }),
                  u"mfit is not the number of parameters that are fitted");
    }
    covsrt(covar, 4, ia, 3);
    EXPECT_THAT(CellsOf(covar), ElementsAre(1, 0, 2, 3, 0, 0, 0, 0, 4, 0, 5, 6, 7, 0, 8, 10));
}

// Models: y = a1 + a2 * x + a3 * x^2; y = a1 * (1 - exp(-a2 * x)); y = exp(-a1 * x) / (a2 + a3 * x)

void Parabola(float x, const TFloatArray& a, float& y, TFloatArray& dyda, std::int32_t) {
    y = a[1] + a[2] * x + a[3] * x * x;
    for (const auto& [index, value] : {std::pair{1, 1.0F}, {2, x}, {3, x * x}}) dyda.WriteFloat(index, value);
}

void Saturation(float x, const TFloatArray& a, float& y, TFloatArray& dyda, std::int32_t) {
    const double e = std::exp(-double{a[2]} * x);
    y = static_cast<float>(a[1] * (1 - e));
    dyda.WriteFloat(1, static_cast<float>(1 - e));
    dyda.WriteFloat(2, static_cast<float>(a[1] * x * e));
}

void DecayOverLine(float x, const TFloatArray& a, float& y, TFloatArray& dyda, std::int32_t) {
    const double divisor = a[2] + double{a[3]} * x, value = std::exp(-double{a[1]} * x) / divisor;
    y = static_cast<float>(value);
    dyda.WriteFloat(1, static_cast<float>(-x * value));
    dyda.WriteFloat(2, static_cast<float>(-value / divisor));
    dyda.WriteFloat(3, static_cast<float>(-x * value / divisor));
}

// clang-format off
const TPoints kParabola = {{1, 7}, {2, 16}, {3, 36}, {-1, 1}, {-2, 8}};
const TPoints kMisra1a = {
    {77.6F, 10.07F}, {114.9F, 14.73F}, {141.1F, 17.94F}, {190.8F, 23.93F}, {239.9F, 29.61F},
    {289, 35.18F}, {332.8F, 40.02F}, {378.4F, 44.82F}, {434.8F, 50.76F}, {477.3F, 55.05F},
    {536.8F, 61.01F}, {593.1F, 66.4F}, {689.1F, 75.47F}, {760, 81.78F}};
const TPoints kChwirut2 = {
    {0.5F, 92.9F}, {1, 57.1F}, {1.75F, 31.05F}, {3.75F, 11.5875F}, {5.75F, 8.025F}, {0.875F, 63.6F},
    {2.25F, 21.4F}, {3.25F, 14.25F}, {5.25F, 8.475F}, {0.75F, 63.8F}, {1.75F, 26.8F}, {2.75F, 16.4625F},
    {4.75F, 7.125F}, {0.625F, 67.3F}, {1.25F, 41}, {2.25F, 21.15F}, {4.25F, 8.175F}, {0.5F, 81.5F},
    {3, 13.12F}, {0.75F, 59.9F}, {3, 14.62F}, {1.5F, 32.9F}, {6, 5.44F}, {3, 12.56F}, {6, 5.44F},
    {1.5F, 32}, {3, 13.95F}, {0.5F, 75.8F}, {2, 20}, {4, 10.42F}, {0.75F, 59.5F}, {2, 21.67F}, {5, 8.55F},
    {0.75F, 62}, {2.25F, 20.2F}, {3.75F, 7.76F}, {5.75F, 3.75F}, {3, 11.81F}, {0.75F, 54.7F},
    {2.5F, 23.7F}, {4, 11.55F}, {0.75F, 61.3F}, {2.5F, 17.7F}, {4, 8.74F}, {0.75F, 59.2F}, {2.5F, 16.3F},
    {4, 8.62F}, {0.5F, 81}, {6, 4.87F}, {3, 14.62F}, {0.5F, 81.7F}, {2.75F, 17.17F}, {0.5F, 81.3F},
    {1.75F, 28.9F}};
// clang-format on

/// A fit with all that it needs.
struct TProblem {
    TProblem(const TPoints& points, TFuncs model, const std::vector<float>& start,
             const std::vector<int>& flags)
        : X(std::int32_t(points.size())),
          Y(X),
          Model(std::move(model)),
          A(ArrayOf<TFloatArray>(start)),
          Ia(ArrayOf<TIntArray>(flags)) {
        std::ranges::transform(points, X.GetBuffer().begin(), &std::pair<float, float>::first);
        std::ranges::transform(points, Y.GetBuffer().begin(), &std::pair<float, float>::second);
    }

    void Step(float alamda) {
        Alamda = alamda;
        mrqmin(X, Y, Ndata, A, Ia, Ma, Covar, Alpha, Chisq, Model, Alamda);
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

    TFloatArray X, Y;
    std::int32_t Ndata = X.GetCount();
    TFuncs Model;
    TFloatArray A;
    TIntArray Ia;
    std::int32_t Ma = A.GetCount();
    TFloatGrid Covar{Ma, Ma}, Alpha{Covar};
    float Chisq = 0, Alamda = 0;
};

void CheckCertified(TProblem fit, double chisq, const std::vector<std::pair<double, double>>& parameters) {
    SCOPED_TRACE(fit.A[1]);
    ASSERT_NO_FATAL_FAILURE(fit.Run());
    EXPECT_NEAR(fit.Chisq, chisq, 5e-5 * chisq);
    const double variance = fit.Chisq / double(fit.Ndata - fit.Ma);
    for (std::int32_t l = 1; l <= fit.Ma; ++l) {
        const auto& [value, deviation] = parameters[std::size_t(l - 1)];
        EXPECT_NEAR(fit.A[l], value, 1e-5 * value);
        EXPECT_NEAR(std::sqrt(fit.Covar.Get(l, l) * variance), deviation, 5e-5 * deviation);
    }
}

// Certified to 11 digits by the NIST. Reached here: parameters 5 digits, chi square and standard deviations
// 4, because of 32-bit floats: a residual keeps 4 to 5 digits of the 7 of y, and the sums of the matrix, each
// rounded at every point, are inverted with a loss of another one or two.
TEST(mrqmin, NistReferenceData) {
    for (const TCells& start : {TCells{500, 0.0001F}, {250, 0.0005F}}) {
        CheckCertified({kMisra1a, Saturation, start, {1, 1}}, 0.12455138894,
                       {{238.94212918, 2.7070075241}, {5.5015643181E-04, 7.2668688436E-06}});
    }
    for (const TCells& start : {TCells{0.1F, 0.01F, 0.02F}, {0.15F, 0.008F, 0.010F}}) {
        CheckCertified({kChwirut2, DecayOverLine, start, {1, 1, 1}}, 513.04802941,
                       {{0.16657666537, 3.8303286810E-02},
                        {5.1653291286E-03, 6.6621605126E-04},
                        {1.2150007096E-02, 1.5304234767E-03}});
    }
}

TEST(mrqcof, SumsOverThePointsAndTheFittedParameters) {
    TProblem fit(kParabola, Parabola, {1, 2, 3}, {1, 0, 1});
    fit.Alpha.Initialise(9);
    TFloatArray beta = ArrayOf<TFloatArray, float>({9, 9, 9});
    mrqcof(fit.X, fit.Y, 3, fit.A, fit.Ia, 3, fit.Alpha, beta, fit.Chisq, fit.Model);
    EXPECT_THAT(CellsOf(fit.Alpha), ElementsAre(3, 14, 9, 14, 98, 9, 9, 9, 9));  // d = (1, x^2)
    EXPECT_THAT(beta.GetBuffer(), ElementsAre(2, 15, 9));                        // residuals 1, -1, 2
    EXPECT_EQ(fit.Chisq, 6);
    fit = TProblem({{0, 4096}, {0, 1}, {0, 1}}, Parabola, {0, 0, 0}, {1, 1, 1});
    mrqcof(fit.X, fit.Y, 3, fit.A, fit.Ia, 3, fit.Alpha, beta, fit.Chisq, fit.Model);
    EXPECT_EQ(fit.Chisq, 16777216);  // and 1 twice, each lost in 32 bits
}

TEST(mrqmin, KeepsFixedParametersAndEndsWithTheCovariance) {
    using testing::FloatNear;
    TProblem fit(kParabola, Parabola, {5, 2, 0}, {1, 0, 1});
    ASSERT_NO_FATAL_FAILURE(fit.Run());
    EXPECT_EQ(Raised<EInvalidOperation>([&] { fit.Step(0); }), kNotStarted);
    EXPECT_THAT(fit.A.GetBuffer(),
                ElementsAre(FloatNear(24 / 214.0F, 1e-5F), 2, FloatNear(692 / 214.0F, 1e-5F)));
    EXPECT_THAT(CellsOf(fit.Alpha), ElementsAre(5, 0, 19, 0, 0, 0, 19, 0, 115));
    const TCells inverse = {115 / 214.0F, 0, -19 / 214.0F, 0, 0, 0, -19 / 214.0F, 0, 5 / 214.0F};
    EXPECT_THAT(CellsOf(fit.Covar), testing::Pointwise(testing::FloatEq(), inverse));
}

TEST(mrqmin, NansAndSingularMatricesMakeNoProgress) {
    for (const auto& [value, message] : {std::pair{kNan, kSingular1}, {0.0F, kSingular2}}) {
        TMessages messages;
        const auto model = [value = value](float, const TFloatArray&, float& y, TFloatArray& dyda,
                                           std::int32_t) {
            y = value;
            std::ranges::fill(dyda.GetBuffer(), value);
        };
        TProblem fit(kParabola, model, {1, 2, 3}, {1, 1, 1});
        fit.Step(-1);
        fit.Step(fit.Alamda);
        EXPECT_FLOAT_EQ(fit.Alamda, 0.1F);
        fit.Step(0);
        EXPECT_THAT(messages.Texts, ElementsAre(message, message, message));
        EXPECT_THAT(fit.A.GetBuffer(), ElementsAre(1, 2, 3));
    }
}

TEST(mrqmin, RejectsArgumentsAndKeepsTheFit) {
    const String others = u"mrqmin goes on with other parameters than the fit was started with";
    const String outside = u"Index out of bounds in ";
    const std::pair<void (*)(TProblem&), String> cases[] = {
        // clang-format off
        {[](auto& fit) { fit.Ia.WriteInt(3, 1); }, others},
        {[](auto& fit) { fit.Ia = ArrayOf<TIntArray, int>({1, 0, 1}); }, others},
        {[](auto& fit) { fit.Ma = 2; }, others},
        {[](auto& fit) { fit.Model = nullptr; }, u"funcs"},
        {[](auto& fit) { fit.X.SetBase(0); }, outside + u"TFloatArray.GetFloat\rIndex = 5"},
        {[](auto& fit) { fit.A.SetBase(2); }, outside + u"TFloatArray.GetFloat\rIndex = 1"},
        {[](auto& fit) { fit.Ia.SetBase(0); }, outside + u"TIntArray.GetInt\rIndex = 3"},
        {[](auto& fit) { fit.Covar = TFloatGrid(3, 2); }, outside + u"TAbstractGrid.CheckBounds\rY = 3"},
        {[](auto& fit) { fit.Alpha.SetBaseX(0); }, outside + u"TAbstractGrid.CheckBounds\rX = 3"}};
    // clang-format on
    TProblem fit(kParabola, Parabola, {1, 1, 1}, {1, 1, 0});
    for (const float alamda : {0.0F, 0.001F, kNan}) {
        EXPECT_EQ(Raised<EInvalidOperation>([&] { fit.Step(alamda); }), kNotStarted) << alamda;
    }
    fit.Step(-1);
    for (const auto& [spoil, message] : cases) {
        TProblem other = fit;
        spoil(other);
        try {
            other.Step(fit.Alamda);
            ADD_FAILURE() << ToUtf8(message);
        } catch (const Exception& failure) {
            EXPECT_EQ(failure.GetMessage(), message);
        }
        fit.Step(fit.Alamda);
    }
    TProblem none(kParabola, Parabola, {1, 1, 1}, {0, 0, 0});
    EXPECT_EQ(Raised<EGridException>([&] { none.Step(-1); }),
              u"Can't create a grid with a dimension less than 1");
}

TEST(mrqmin, AFailingModelEndsTheFit) {
    TProblem fit(kParabola, Parabola, {1, 1, 1}, {1, 1, 1});
    for (const int failingCall : {1, 10, 15}) {  // 5 at the start, 5 at each of two steps
        int call = 0;
        fit.Model = [&](float x, const TFloatArray& a, float& y, TFloatArray& dyda, std::int32_t na) {
            Parabola(x, a, y, dyda, na);
            if (++call == failingCall) dyda.SetSize(1, 2, true);
        };
        EXPECT_THROW((fit.Step(-1), fit.Step(fit.Alamda)), EGridException) << failingCall;
        EXPECT_EQ(Raised<EInvalidOperation>([&] { fit.Step(1); }), kNotStarted) << failingCall;
    }
}

}  // namespace
}  // namespace Varnholt::Test
