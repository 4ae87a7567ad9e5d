#include "VarnholtLib/Numerics/vrnCurveFit.h"

#include <gtest/gtest.h>

#include <cmath>

#include "Platform/Runtime/FormatSettings.h"
#include "Tests/Support/FormatSettingsScope.h"
#include "Tests/Support/Raised.h"
#include "VarnholtLib/vrnPackage.h"

namespace Varnholt::Test {
namespace {

// clang-format off
// The 36 points of the NIST reference data set Norris, x in tenths.
const TIntegerArray kNorrisX = {
    2, 3374, 1182, 8846, 101, 2265, 6663, 9963, 4486, 7770, 5582, 4, 6, 7755, 6669, 3380, 4475, 116, 5560,
    2281, 9958, 8876, 1202, 3, 3, 5568, 3391, 8872, 9990, 7790, 111, 1183, 2292, 6691, 4489, 5};
const TSingleArray kNorrisY = {
    0.1F, 338.8F, 118.1F, 888.0F, 9.2F, 228.1F, 668.5F, 998.5F, 449.1F, 778.9F, 559.2F, 0.3F, 0.1F, 778.1F,
    668.8F, 339.3F, 448.9F, 10.8F, 557.7F, 228.3F, 998.0F, 888.8F, 119.6F, 0.3F, 0.6F, 557.6F, 339.3F, 888.0F,
    998.5F, 778.9F, 10.2F, 117.6F, 228.9F, 668.4F, 449.2F, 0.2F};
// clang-format on

// 32-bit sums keep 7 digits; the subtractions of the formulas cost one of them for the slope, and all but
// three for the intercept, which is a 1700th of the mean of y.
TEST(vrnCurveFit, NorrisReferenceData) {
    float a = 0, b = 0;
    FitLinear(kNorrisX, kNorrisY, a, b);
    EXPECT_NEAR(a, -0.262323073774029, 0.262323e-3);
    EXPECT_NEAR(b, 0.100211681802045, 0.100212e-6);
    EXPECT_NEAR(RSquaredLinear(kNorrisX, kNorrisY), 0.999993745883712, 6e-8);
}

TEST(vrnCurveFit, FitsLinesAndExponentials) {
    const std::tuple<TFitFunc, TIntegerArray, TSingleArray, float, float, float> cases[] = {
        // clang-format off
        {FitLinear, {1, 2, 3}, {3, 5, 7}, 1, 2, 2e-6F},
        // Beyond 46340 the square of x wraps in 32 bits: 65536 * 65536 counts as 0.
        {FitLinear, {65536, 65536}, {1, 1}, 1, 0, 2e-6F},          // without the wrap: NaN
        {FitLinear, {0, 65536}, {0, 1}, 1, -1.0F / 65536, 2e-6F},  // without: 0 and 1 / 65536
        {FitLinear, {-2147483647 - 1, 2147483647}, {1, 1}, 1, 0, 2e-6F},
        {FitExp, {0, 1, 2}, {3, 6, 12}, 3, 0.69314718F, 2e-6F},
        {FitExp, {1, 2}, {2.718F, 7.389F}, 1, 1, 1e-3F},
        {FitExp, {0, 1}, {0, 1}, 1e-6F, 13.815511F, 2e-6F},       // 0 counts as 0.000001
        {FitExp, {0, 1}, {-1e-6F, 1}, 1e-6F, 13.815511F, 2e-6F},  // and so does what is as near to 0
        {FitExp, {3}, {2}, NAN, NAN, 0}, {FitExp, {1, 2}, {NAN, 2}, NAN, NAN, 0}};
    // clang-format on
    for (const auto& [fit, x, y, a, b, tolerance] : cases) {
        float fitA = -77, fitB = -77;
        fit(x, y, fitA, fitB);
        for (const auto& [value, expected] : {std::pair{fitA, a}, {fitB, b}}) {
            EXPECT_TRUE(std::isnan(expected) ? !std::isfinite(value)
                                             : std::abs(value - expected) <= tolerance)
                << value << " for " << testing::PrintToString(x) << ' ' << testing::PrintToString(y);
        }
    }
    EXPECT_FLOAT_EQ(FitExpY(2, 3, 0.5F), 3 * 2.71828183F);
}

TEST(vrnCurveFit, ExplainedVariance) {
    const std::tuple<TIntegerArray, TSingleArray, double> cases[] = {
        // clang-format off
        {{1, 2, 3}, {3, 5, 7}, 1}, {{1, 2, 3}, {7, 5, 3}, 1}, {{1, 2, 3, 4}, {1, 3, 2, 4}, 0.64},
        {{100000, 200000, 300000}, {1, 2, 2}, 0.75},  // squares beyond 32 bits
        {{1, 2, 3}, {3, 5, 7, -1000}, 1}, {{4, 4, 4}, {1, 2, 3}, 0}, {{1, 2, 3}, {0.1F, 0.1F, 0.1F}, 0},
        {{1}, {1}, 0}, {{}, {}, 0}};
    // clang-format on
    for (const auto& [x, y, expected] : cases)
        EXPECT_NEAR(RSquaredLinear(x, y), expected, 1e-7) << testing::PrintToString(y);
    EXPECT_TRUE(std::isnan(RSquaredLinear({1, 2, 3}, {1, NAN, 3})));
}

TEST(vrnCurveFit, RejectsOtherPointsAndFormatsEquations) {
    const StringView none = u"Not enough X values specified";
    const StringView unequal = u"Number of Y values does not match the number of X values";
    const std::tuple<TIntegerArray, TSingleArray, StringView> cases[] = {
        {{}, {}, none}, {{}, {1}, none}, {{1, 2}, {1}, unequal}, {{1}, {1, -2}, unequal}};
    float a = 8, b = 9;
    for (const auto& [x, y, message] : cases) {
        for (const TFitFunc fit : {&FitLinear, &FitExp})
            EXPECT_EQ(Raised<EArgumentException>([&, &x = x, &y = y] { fit(x, y, a, b); }), message);
    }
    const TIntegerArray three = {1, 2, 3};
    const TSingleArray negative = {1, -2, 3};
    EXPECT_EQ(Raised<Exception>([&] { FitExp(three, negative, a, b); }),
              u"Dataset does not support Exponential fit");
    EXPECT_EQ(Raised<EArgumentException>([&] { (void)RSquaredLinear(three, TSingleArray{1}); }),
              u"Number of Y values is less than the number of X values");
    EXPECT_TRUE(a == 8 && b == 9);
    EXPECT_EQ(FitLinearFormatEq(1, 2) + FitExpFormatEq(0.5F, -2.25F), u"Y=1.000+2.000XY=0.500e^-2.250X");
    const TFormatSettingsScope comma(u',');
    EXPECT_EQ(FitLinearFormatEq(-1.5F, -2), u"Y=-1,500+-2,000X");
}

// Works on the one row of the load table, and leaves it as the loader did.
TEST(vrnCurveFit, RegistryLivesFromLoadToUnload) {
    const auto functions = [](const std::shared_ptr<IFitFuncs>& entry) {
        return std::tuple(entry->FitFunc(), entry->FitYFunc(), entry->FitFormatEqFunc(), entry->R2Func());
    };
    EXPECT_EQ(TFitFuncs::Items(), (std::vector{TFitFuncs::Linear(), TFitFuncs::Exponential()}));
    EXPECT_EQ(functions(TFitFuncs::Linear()),
              std::tuple(&FitLinear, &FitLinearY, &FitLinearFormatEq, &RSquaredLinear));
    EXPECT_EQ(functions(TFitFuncs::Exponential()), std::tuple(&FitExp, &FitExpY, &FitExpFormatEq, nullptr));

    const auto names = [] {
        String all;
        for (const auto& entry : TFitFuncs::Items()) all += entry->Name() + u",";
        return all;
    };
    const std::span<const TPackageInfoRow> rows = GetPackageInfoTable().Rows;
    const auto row = std::ranges::find(rows, StringView(u"vrnCurveFit"), &TPackageInfoRow::Name);
    ASSERT_NE(row, rows.end());
    const std::weak_ptr<IFitFuncs> linear = TFitFuncs::Linear(), exponential = TFitFuncs::Exponential();
    const std::weak_ptr<IFitFuncs> cubic = TFitFuncs::RegisterFuncs(u"Cubic", &FitLinear, {}, {}, {});
    TFitFuncs::RegisterFuncs(u"Linear", {}, {}, {}, {});
    row->Initialize();  // a second use
    EXPECT_EQ(names(), u"Linear,Exponential,Cubic,Linear,");
    EXPECT_EQ(TFitFuncs::Items()[2], cubic.lock());
    row->Finalize();
    EXPECT_FALSE(cubic.expired());
    row->Finalize();
    EXPECT_TRUE(linear.expired() && exponential.expired() && cubic.expired());
    EXPECT_TRUE(TFitFuncs::Items().empty() && !TFitFuncs::Linear() && !TFitFuncs::Exponential());
    EXPECT_EQ(Raised<EInvalidOperation>([] { TFitFuncs::RegisterFuncs(u"x", {}, {}, {}, {}); }),
              u"The registry of curve fits is not loaded");
    row->Initialize();
    EXPECT_EQ(names(), u"Linear,Exponential,");
}

}  // namespace
}  // namespace Varnholt::Test
