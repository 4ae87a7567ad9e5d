#include "VarnholtLib/Numerics/vrnRegression.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>

#include "Platform/Controls/MessageDialog.h"
#include "Tests/Foundation/Raised.h"

namespace Varnholt {
namespace {

using testing::ElementsAre;
using TFloats = std::vector<float>;
using TPoints = std::vector<std::pair<float, float>>;

constexpr StringView kSingular1 = u"Problem in gaussj - Singular Matrix-1.";
constexpr StringView kSingular2 = u"Problem in gaussj - Singular Matrix-2.";
constexpr StringView kNotStarted = u"mrqmin goes on with a fit that has not been started";

/// Takes down the messages while it lives.
struct TMessages final : IMessageDialogService {
    TMsgDlgBtn Show(StringView text, TMsgDlgType type, TMsgDlgButtons buttons, std::int32_t help) override {
        EXPECT_TRUE(type == mtInformation && buttons == TMsgDlgButtons{mbOK} && help == 0);
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

// Square matrices, row by row.
TFloatGrid Matrix(std::int32_t n, const TFloats& cells) {
    TFloatGrid grid(n, n);
    for (std::int32_t i = 0; i < n * n; ++i) grid.Put(i / n + 1, i % n + 1, cells[std::size_t(i)]);
    return grid;
}

TFloats CellsOf(const TFloatGrid& grid) {
    TFloats cells;
    for (std::int32_t j = 1; j <= grid.GetLastX(); ++j) {
        for (std::int32_t k = 1; k <= grid.GetLastY(); ++k) cells.push_back(grid.Get(j, k));
    }
    return cells;
}

double Product(const TFloatGrid& a, const TFloatGrid& b, std::int32_t j, std::int32_t k) {
    double sum = 0;
    for (std::int32_t i = 1; i <= a.GetLastY(); ++i) sum += double{a.Get(j, i)} * b.Get(i, k);
    return sum;
}

// One element of each row is so large that the condition number stays below 20: 32-bit elements are right to
// 1e-5. It stands off the diagonal in most rounds, so that rows have to change places.
TEST(gaussj, InvertsAndSolves) {
    TMessages messages;
    std::mt19937 random(7);
    std::uniform_real_distribution<float> unit(-1, 1);
    for (std::int32_t round = 0; round < 200; ++round) {
        const std::int32_t n = 1 + round % 7, m = 1 + round % 4;
        TFloatGrid a(n, n), b(n, m);
        for (std::int32_t j = 1; j <= n; ++j) {
            const std::int32_t large = (j + round) % n + 1;
            for (std::int32_t k = 1; k <= n; ++k)
                a.Put(j, k, unit(random) + (k == large ? 2.0F * float(n) : 0));
            for (std::int32_t k = 1; k <= m; ++k) b.Put(j, k, unit(random));
        }
        TFloatGrid inverse = a, solution = b;
        gaussj(inverse, n, solution, m);
        for (std::int32_t j = 1; j <= n; ++j) {
            for (std::int32_t k = 1; k <= n; ++k)
                ASSERT_NEAR(Product(a, inverse, j, k), j == k, 1e-5) << round;
            for (std::int32_t k = 1; k <= m; ++k)
                ASSERT_NEAR(Product(a, solution, j, k), b.Get(j, k), 1e-5) << round;
        }
    }
    EXPECT_THAT(messages.Texts, ElementsAre());
}

TEST(gaussj, ReportsSingularMatrices) {
    const std::tuple<std::int32_t, TFloats, StringView> cases[] = {
        // clang-format off
        {2, {0, 0, 0, 0}, kSingular2}, {2, {1, 2, 2, 4}, kSingular2},
        {3, {1, 0, 1, 0, 0, 0, 1, 0, 2}, kSingular2}, {1, {NAN}, kSingular1},
        {2, {2, NAN, NAN, NAN}, kSingular1}, {2, {INFINITY, INFINITY, INFINITY, INFINITY}, kSingular1}};
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

// Models: y = a1 + a2 * x + a3 * x^2; y = a1 * (1 - exp(-a2 * x))

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

const TPoints kParabola = {{1, 7}, {2, 16}, {3, 36}, {-1, 1}, {-2, 8}};

/// A fit with all that it needs.
struct TProblem {
    TProblem(const TPoints& points, TFuncs model, const TFloats& start, const std::vector<int>& flags)
        : X(std::int32_t(points.size())),
          Y(X),
          Model(std::move(model)),
          A(ArrayOf<TFloatArray>(start)),
          Ia(ArrayOf<TIntArray>(flags)) {
        std::ranges::transform(points, X.GetBuffer().begin(), &TPoints::value_type::first);
        std::ranges::transform(points, Y.GetBuffer().begin(), &TPoints::value_type::second);
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
            ASSERT_TRUE(Alamda > alamda ? Alamda == alamda * 10 && Chisq == chisq && A.ToArray() == a
                                        : Alamda == static_cast<float>(alamda * 0.1L) && Chisq < chisq);
        }
        Step(0);
    }

    TFloatArray X, Y;
    std::int32_t Ndata = X.GetCount();
    TFuncs Model;
    TFloatArray A;
    TIntArray Ia;
    std::int32_t Ma = A.GetCount();
    TFloatGrid Covar{std::max(Ma, 1), std::max(Ma, 1)}, Alpha{Covar};
    float Chisq = 0, Alamda = 0;
};

// The set Misra1a, certified to 11 digits by the NIST. Reached here: parameters 5 digits, chi square and
// standard deviations 4, because of 32-bit floats: a residual keeps 4 to 5 digits of the 7 of y, and the sums
// of the matrix, each rounded at every point, are inverted with a loss of another one or two.
TEST(mrqmin, NistReferenceData) {
    // clang-format off
    const TPoints points = {
        {77.6F, 10.07F}, {114.9F, 14.73F}, {141.1F, 17.94F}, {190.8F, 23.93F}, {239.9F, 29.61F},
        {289, 35.18F}, {332.8F, 40.02F}, {378.4F, 44.82F}, {434.8F, 50.76F}, {477.3F, 55.05F},
        {536.8F, 61.01F}, {593.1F, 66.4F}, {689.1F, 75.47F}, {760, 81.78F}};
    // clang-format on
    const double parameters[] = {238.94212918, 5.5015643181E-04};
    const double deviations[] = {2.7070075241, 7.2668688436E-06};
    for (const TFloats& start : {TFloats{500, 0.0001F}, {250, 0.0005F}}) {
        TProblem fit(points, Saturation, start, {1, 1});
        ASSERT_NO_FATAL_FAILURE(fit.Run());
        EXPECT_NEAR(fit.Chisq, 0.12455138894, 5e-5 * 0.12455138894) << "from " << start[0];
        for (const std::int32_t l : {1, 2}) {
            const double deviation = std::sqrt(fit.Covar.Get(l, l) * fit.Chisq / 12);
            EXPECT_NEAR(fit.A[l], parameters[l - 1], 1e-5 * parameters[l - 1]) << "from " << start[0];
            EXPECT_NEAR(deviation, deviations[l - 1], 5e-5 * deviations[l - 1]) << "from " << start[0];
        }
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

TEST(mrqmin, KeepsFixedParametersAndNeverGetsWorse) {
    TProblem fit(kParabola, Parabola, {5, 2, 0}, {1, 0, 1});
    ASSERT_NO_FATAL_FAILURE(fit.Run());
    EXPECT_THAT(fit.A.GetBuffer(),
                testing::Pointwise(testing::FloatNear(1e-5F), {24 / 214.0F, 2.0F, 692 / 214.0F}));
    EXPECT_THAT(CellsOf(fit.Alpha), ElementsAre(5, 0, 19, 0, 0, 0, 19, 0, 115));
    const TFloats inverse = {115 / 214.0F, 0, -19 / 214.0F, 0, 0, 0, -19 / 214.0F, 0, 5 / 214.0F};
    EXPECT_THAT(CellsOf(fit.Covar), testing::Pointwise(testing::FloatEq(), inverse));
    std::mt19937 random(3);
    std::uniform_real_distribution<float> unit(0, 1);
    for (int round = 0; round < 60; ++round) {
        TPoints points;
        for (float x = 0; x < 6; x += 0.2F)
            points.emplace_back(x, 5 - 5 * std::exp(-0.5F * x) + unit(random));
        TProblem noisy(points, Saturation, {unit(random), 0.05F + unit(random)}, {1, round % 2});
        ASSERT_NO_FATAL_FAILURE(noisy.Run()) << round;
    }
}

TEST(mrqmin, NansAndSingularMatricesMakeNoProgress) {
    for (const auto& [value, message] : {std::pair{NAN, kSingular1}, {0.0F, kSingular2}}) {
        TMessages messages;
        const auto model = [v = value](float, const TFloatArray&, float& y, TFloatArray& dyda, std::int32_t) {
            y = v;
            std::ranges::fill(dyda.GetBuffer(), v);
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
    const std::pair<std::function<void(TProblem&)>, String> cases[] = {
        // clang-format off
        {[](auto& fit) { fit.Ia.WriteInt(3, 1); }, others},
        {[](auto& fit) { fit.Ia = ArrayOf<TIntArray, int>({1, 0, 1}); }, others},
        {[](auto& fit) { fit.Ma = 2; }, others},
        {[](auto& fit) { fit.Model = nullptr; }, u"funcs"},
        {[](auto& fit) { fit.X.SetBase(0); }, outside + u"TFloatArray.GetFloat\rIndex = 5"},
        {[](auto& fit) { fit.Ndata = 6; }, outside + u"TFloatArray.GetFloat\rIndex = 6"},
        {[](auto& fit) { fit.A.SetBase(2); }, outside + u"TFloatArray.GetFloat\rIndex = 1"},
        {[](auto& fit) { fit.Ia.SetBase(0); }, outside + u"TIntArray.GetInt\rIndex = 3"},
        {[](auto& fit) { fit.Covar = TFloatGrid(3, 2); }, outside + u"TAbstractGrid.CheckBounds\rY = 3"},
        {[](auto& fit) { fit.Alpha.SetBaseX(0); }, outside + u"TAbstractGrid.CheckBounds\rX = 3"}};
    // clang-format on
    TProblem fit(kParabola, Parabola, {1, 1, 1}, {1, 1, 0}), none = fit;
    for (const float alamda : {0.0F, 0.001F, NAN})
        EXPECT_EQ(Raised<EInvalidOperation>([&] { fit.Step(alamda); }), kNotStarted) << alamda;
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
    fit.Step(0);
    EXPECT_EQ(Raised<EInvalidOperation>([&] { fit.Step(0); }), kNotStarted);
    none.Ia = TIntArray(3);
    EXPECT_EQ(Raised<EGridException>([&] { none.Step(-1); }),
              u"Can't create a grid with a dimension less than 1");
}

TEST(mrqmin, AFailingModelEndsTheFit) {
    int call = 0, failingCall = 1;
    TProblem plain(kParabola, Parabola, {1, 1, 1}, {1, 1, 1}), fit = plain, outer = plain;
    fit.Model = [&](float x, const TFloatArray& a, float& y, TFloatArray& dyda, std::int32_t na) {
        Parabola(x, a, y, dyda, na);
        if (++call == failingCall) dyda.SetSize(1, 2, true);
    };
    for (; failingCall <= 15; ++failingCall) {  // 5 at the start, 5 at each of two steps
        call = 0;
        EXPECT_THROW((fit.Step(-1), fit.Step(fit.Alamda)), EGridException) << failingCall;
        EXPECT_EQ(Raised<EInvalidOperation>([&] { fit.Step(1); }), kNotStarted) << failingCall;
    }
    // A model that runs a whole fit of its own does not disturb the outer one.
    outer.Model = [](float x, const TFloatArray& a, float& y, TFloatArray& dyda, std::int32_t na) {
        TProblem(kParabola, Parabola, {0, 0, 0}, {1, 1, 0}).Run();
        Parabola(x, a, y, dyda, na);
    };
    for (TProblem* each : {&plain, &outer}) each->Run();
    EXPECT_EQ(CellsOf(outer.Covar), CellsOf(plain.Covar));
    EXPECT_EQ(outer.A.ToArray(), plain.A.ToArray());
}

}  // namespace
}  // namespace Varnholt
