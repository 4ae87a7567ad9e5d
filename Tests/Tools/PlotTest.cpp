#include <gmock/gmock.h>

#include <cmath>

#include "Tests/Tools/ProgramTest.h"
#include "Tools/varnholt/PlotFit.h"

namespace Varnholt::Test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class PlotTest : public TProgramTest {
protected:
    PlotTest() : TProgramTest("plot") {
        Write(u"t.csv",
              "day,\"a,b\",y,neg\n2020-01-01T06:00,1,2.5,-1\n20200102,2,,3\n,4,9,1\n2020-01-04 "
              "12:30:00,3,x,5\n");
    }
    std::string Printed() { return Content(u"printed"); }
    std::string Reported() { return Content(u"reported"); }
};

TEST_F(PlotTest, PicturesAreWritten) {
    EXPECT_EQ(Run("t.csv --x day --y a,b --fit linear"), 0);
    EXPECT_EQ(Printed(), "Wrote plot.svg\n");
    EXPECT_THAT(Content(u"plot.svg"), HasSubstr("width=\"800px\" height=\"500px\""));
    EXPECT_EQ(Run("t.csv --x a,b --y y,neg --points --title '' --size 320x240 --out p.PNG"), 0);
    EXPECT_EQ(Printed(), "");
    EXPECT_EQ(Reported(),
              "varnholt: t.csv, line 5: \"x\" in column y is not a number and counts as missing; cells: 1\n");
    EXPECT_THAT(Content(u"p.PNG"),
                StartsWith(std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\1\x40\0\0\0\xF0", 24)));
    EXPECT_EQ(Run("- --x day --y neg --out p.pdf <t.csv"), 0);
    EXPECT_THAT(Content(u"p.pdf"), StartsWith("%PDF"));
}

TEST_F(PlotTest, BadInputIsReported) {
    const std::tuple<const char*, int, const char*> cases[] = {
        {"t.csv --x day --y nothing", 1, "varnholt: t.csv: Column \"nothing\" not found"},
        {"t.csv --x neg --y y --out t.csv", 2, "--out: takes a file name that ends in .svg, .png or .pdf"},
        {"t.csv --x day --y ''", 2, "--y: No column is named"},
        {"t.csv --x day --y y --size 800", 2, "--size: \"800\" is not a size from 100x100 to 10000x10000"},
        {"t.csv --x day --y y --size 99x100", 2, "\"99x100\" is not a size"},
        {"t.csv --x day --y y --fit cubic", 2, "--fit: "},
        {"t.csv --x day --y neg --fit exp", 1,
         "varnholt: Column \"neg\" cannot be fitted: it takes values at two different X at least, all above "
         "0"},
        {"t.csv --x day --y y --fit linear", 1,
         "varnholt: Column \"y\" cannot be fitted: it takes values at two different X at least\n"},
        {"bad.csv --x day --y y", 1, "varnholt: bad.csv, line 3: \"2\" is not a date"},
        {"link.svg --x day --y y --out link.svg", 1,
         "varnholt: Cannot write file \"link.svg\": It is also the input\n"},
    };
    Write(u"bad.csv", "day,y\n2020-01-01,1\n2,2\n");
    Write(u"link.svg", "day,y\n2020-01-01,1\n");
    for (const auto& [arguments, status, message] : cases) {
        EXPECT_EQ(Run(arguments), status) << arguments;
        EXPECT_THAT(Reported(), HasSubstr(message)) << arguments;
    }
    EXPECT_THAT(Names(), testing::Not(HasSubstr("plot.svg")));
}

TEST(PlotFit, CurvesHaveTheirParameters) {
    using enum Tool::TFitKind;
    constexpr double kFar = 43831.25;  // a date, with steps of a thousandth of a day
    std::vector<double> x, line, curve;
    for (int i = 0; i < 50; ++i) {
        x.push_back(kFar + i / 1024.0);
        line.push_back(i % 9 == 4 ? NAN : 7 - 3 * (i / 1024.0));
        curve.push_back(0.5 * std::exp(-2 * (i / 1024.0)));
    }
    const auto linear = Tool::FitPoints(Linear, x, line, kFar),
               exponential = Tool::FitPoints(Exponential, x, curve, kFar);
    ASSERT_TRUE(linear && exponential);
    EXPECT_NEAR(linear->A, 7, 1e-12);
    EXPECT_NEAR(linear->B, -3, 1e-12);
    EXPECT_NEAR(linear->At(kFar + 2), 1, 1e-12);
    EXPECT_NEAR(exponential->A, 0.5, 1e-12);
    EXPECT_NEAR(exponential->At(kFar + 1), 0.5 * std::exp(-2), 1e-12);
    EXPECT_FALSE(Tool::FitPoints(Linear, std::vector{1.0, 1.0}, std::vector{1.0, 2.0}, 0));
    EXPECT_EQ(Tool::SignificantText(-0.000123456) + u" " + Tool::SignificantText(98765.4) + u" " +
                  Tool::SignificantText(0),
              u"-0.0001235 98770 0");
}

}  // namespace
}  // namespace Varnholt::Test
