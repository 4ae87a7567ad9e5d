#include "VarnholtLib/Numerics/vrnCurveFit.h"

#include <gtest/gtest.h>

#include <cmath>

#include "Tests/Support/FormatSettingsScope.h"
#include "Tests/Support/Raised.h"
#include "VarnholtLib/Numerics/vrnTrendline.h"
#include "VarnholtLib/vrnPackage.h"

namespace Varnholt::Test {
namespace {

/// A finite value to a relative 2E-6; a NaN stands for any value that is not finite.
void ExpectValue(float actual, double expected, const std::string& name) {
    const bool isRight = std::isnan(expected)
                             ? !std::isfinite(actual)
                             : std::fabs(actual - expected) <= 2e-6 * std::fabs(expected) + 2e-7;
    EXPECT_TRUE(isRight) << actual << " instead of " << expected << " for " << name;
}

TEST(vrnCurveFit, FitsLinesAndExponentials) {
    const std::tuple<TFitFunc, TIntegerArray, TSingleArray, double, double> cases[] = {
        // clang-format off
        {FitLinear, {1, 2, 3}, {3, 5, 7}, 1, 2},
        // The rounding of the sums to 32 bits shows: -1999 and 1 without it. Computed with exact fractions.
        {FitLinear, {2000, 2001, 2002, 2003, 2004, 2005}, {1, 2, 3, 4, 5, 6}, -1890.7567, 0.94594592},
        // Beyond 46340 the square of x wraps in 32 bits: 65536 * 65536 counts as 0.
        {FitLinear, {65536, 65536}, {1, 1}, 1, 0},          // without the wrap: NaN
        {FitLinear, {-2147483647 - 1, 2147483647}, {1, 1}, 1, 0},
        {FitExp, {0, 1, 2}, {3, 6, 12}, 3, 0.69314718},
        {FitExp, {0, 1}, {-1e-6F, 1}, 1e-6, 13.815511},  // and so does what is as near to 0
        {FitExp, {3}, {2}, NAN, NAN}, {FitExp, {1, 2}, {NAN, 2}, NAN, NAN}};
    // clang-format on
    for (const auto& [fit, x, y, a, b] : cases) {
        float fitA = -77, fitB = -77;
        fit(x, y, fitA, fitB);
        ExpectValue(fitA, a, "A of " + testing::PrintToString(x));
        ExpectValue(fitB, b, "B of " + testing::PrintToString(x));
    }
    ExpectValue(FitExpY(2, 3, 0.5F) + FitLinearY(2, 3, 0.5F), 3 * std::exp(1) + 4, "X = 2");
}

TEST(vrnCurveFit, ExplainedVariance) {
    const std::tuple<TIntegerArray, TSingleArray, double> cases[] = {
        // clang-format off
        {{1, 2, 3}, {7, 5, 3}, 1}, {{1, 2, 3, 4}, {1, 3, 2, 4}, 0.64},
        {{400001, 400002, 400003}, {1, 2, 2}, 0.75},             // squares beyond 32 bits
        {{1, 2, 3}, {3, 5, 7, -1000}, 1}, {{4, 4, 4}, {1, 2, 3}, 0}, {{1, 2, 3}, {0.1F, 0.1F, 0.1F}, 0},
        {{}, {}, 0}, {{1, 2, 3}, {1, NAN, 3}, NAN}};
    // clang-format on
    for (const auto& [x, y, expected] : cases)
        ExpectValue(RSquaredLinear(x, y), expected, testing::PrintToString(y));
}

TEST(vrnCurveFit, RejectsOtherPointsAndFormatsEquations) {
    float a = 8, b = 9;
    const TIntegerArray x = {1, 2};
    const TSingleArray one = {1}, negative = {1, -2};
    const StringView none = u"Not enough X values specified";
    const StringView unequal = u"Number of Y values does not match the number of X values";
    ExpectRaised<EArgumentException>({
        {[&] { FitLinear({}, one, a, b); }, none},
        {[&] { FitExp(x, one, a, b); }, unequal},
        {[&] { return RSquaredLinear(x, one); }, u"Number of Y values is less than the number of X values"},
    });
    ExpectRaised<Exception>(
        {{[&] { FitExp(x, negative, a, b); }, u"Dataset does not support Exponential fit"}});
    EXPECT_TRUE(a == 8 && b == 9);
    const TFormatSettingsScope comma(u',');
    EXPECT_EQ(FitLinearFormatEq(-1.5F, -2) + FitExpFormatEq(0.5F, -2.25F),
              u"Y=-1,500+-2,000XY=0,500e^-2,250X");
}

// Works on the one row of the load table, and leaves it as the loader did.
TEST(vrnCurveFit, RegistryLivesFromLoadToUnload) {
    const auto functions = [](const std::shared_ptr<IFitFuncs>& entry) {
        return std::tuple(entry->FitFunc(), entry->FitYFunc(), entry->FitFormatEqFunc(), entry->R2Func());
    };
    const auto names = [] {
        String all;
        for (const auto& entry : TFitFuncs::Items()) all += entry->Name() + u",";
        return all;
    };
    EXPECT_EQ(TFitFuncs::Items(), (std::vector{TFitFuncs::Linear(), TFitFuncs::Exponential()}));
    EXPECT_EQ(functions(TFitFuncs::Linear()),
              std::tuple(&FitLinear, &FitLinearY, &FitLinearFormatEq, &RSquaredLinear));
    EXPECT_EQ(functions(TFitFuncs::Exponential()), std::tuple(&FitExp, &FitExpY, &FitExpFormatEq, nullptr));

    const std::span<const TPackageInfoRow> rows = GetPackageInfoTable().Rows;
    const auto row = std::ranges::find(rows, StringView(u"vrnCurveFit"), &TPackageInfoRow::Name);
    const std::weak_ptr<IFitFuncs> linear = TFitFuncs::Linear(), exponential = TFitFuncs::Exponential();
    const std::weak_ptr<IFitFuncs> again = TFitFuncs::RegisterFuncs(u"Linear", &FitExp, {}, {}, {});
    row->Initialize();  // a second use
    row->Finalize();
    EXPECT_EQ(names(), u"Linear,Exponential,Linear,");
    EXPECT_EQ(TFitFuncs::Items().back(), again.lock());
    row->Finalize();
    EXPECT_TRUE(linear.expired() && exponential.expired() && again.expired());
    EXPECT_TRUE(TFitFuncs::Items().empty() && !TFitFuncs::Linear() && !TFitFuncs::Exponential());
    EXPECT_EQ(Raised<EInvalidOperation>([] { TFitFuncs::RegisterFuncs(u"x", {}, {}, {}, {}); }),
              u"The registry of curve fits is not loaded");
    row->Initialize();
    EXPECT_EQ(names(), u"Linear,Exponential,");
}

TEST(vrnTrendline, FollowsTheLineThroughThePositions) {
    const std::tuple<TSingleArray, double, double> cases[] = {
        // clang-format off
        {{5, 7, 9, 11}, 3, 9}, {{2.5F, 2.5F, 2.5F}, 2.5, 2.5}, {{1, 2, 2}, 2 / 3.0, 2 / 3.0 + 1.5},
        {{16777216, 1, 1}, 22369618, -2796200},  // S(v) = 16777216, S(i*v) = 16777220 in 32 bits
        {{16777213, -33554426, 16777213}, 1, -0.5},  // i * v is not rounded: -50331640 + 50331639
        {{4}, NAN, NAN}, {{}, NAN, NAN}, {{1, NAN, 3}, NAN, NAN}};
    // clang-format on
    for (const auto& [values, at0, at3] : cases) {
        const auto trend = TTrendlineFactory::GetObject(values);
        ExpectValue(trend->GetY(0), at0, "0 of " + testing::PrintToString(values));
        ExpectValue(trend->GetY(3), at3, "3 of " + testing::PrintToString(values));
    }
}

}  // namespace
}  // namespace Varnholt::Test
