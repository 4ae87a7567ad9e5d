#include <sys/stat.h>

#include "Tests/Tools/ProgramTest.h"

namespace Varnholt::Test {
namespace {

constexpr const char* kRows = "a,b\n1,2\n4,\n-999.5,3\nx,1\n6,0\n8\n";

// clang-format off
constexpr TProgramCase cases[] = {
    {"'2 ^ 3 ^ 2'", 0, "64\n", ""},
    {"-- '-2 ^ 2'", 0, "4\n", ""},
    {"'$x / $y' --set x=1 --set y=3", 0, "0.333333333333333\n", ""},
    {"'1 2'", 1, "", "varnholt: Operator \"2\" not supported\n"},
    {"'1 a\nb'", 1, "", "varnholt: Operator \"a b\" not supported\n"},
    {"'$x'", 1, "", "varnholt: Keyword \"x\" is not recognised\n"},
    {"1 --csv none.csv", 1, "", "varnholt: Cannot open file \"none.csv\": No such file or directory\n"},
    {"1 --csv ''", 1, "", "varnholt: Cannot open file \"\": No such file or directory\n"},
    {"'$a' --csv rows.csv", 0, "1\n4\n-999\n-999\n6\n8\n", ""},
    {"'$a / $b' --csv rows.csv", 0, "0.5\n-999\n-999\n-999\n-999\n-999\n",
     "varnholt: Attempt to divide by zero; rows: 1\n"},
    {"'$a / $b' --csv rows.csv --summary", 0, "rows: 6\ncalculated: 1\nmissing: 5\nmean: 0.5\nmin: 0.5\nmax: 0.5\n",
     "varnholt: Attempt to divide by zero; rows: 1\n"},
    {"'@sqrt(($a - 2))' --csv rows.csv --summary", 0, "rows: 6\ncalculated: 4\nmissing: 2\nmean: NAN\nmin: NAN\nmax: NAN\n",
     "varnholt: The value is no number; rows: 1\n"},
    {"'@sum($b,$a) + ($b)' --csv rows.csv --keywords", 0, "b\na\n", ""},
    {"'1 / $a + $z' --csv rows.csv", 1, "", "varnholt: Keyword \"z\" is not recognised\n"},
    {"'$z' --csv rows.csv --keywords", 1, "", "varnholt: Keyword \"z\" is not recognised\n"},
    {"1 --csv empty.csv", 1, "", "varnholt: empty.csv is empty\n"},
    {"'$a' --csv /dev/stdin --out pipe <rows.csv & timeout 60 head -3 pipe", 0, "a,b,value\n1,2,1\n4,,4\n", ""},
};
// clang-format on

class CalcTest : public TProgramTest {
protected:
    CalcTest() : TProgramTest("calc") {
        Write(u"rows.csv", kRows);
        Write(u"empty.csv", "");
        mkfifo(Folder.GetNativePath("pipe").c_str(), 0600);
    }
};

TEST_F(CalcTest, PrintsAndFails) {
    ExpectAll(cases, {"", "1 --out x.csv", "1 --summary", "1 --set x", "1 --set x=y", "1 --none"});
}

TEST_F(CalcTest, WritesTheFileWhenAllIsDone) {
    EXPECT_EQ(Run("'$a * 2' --csv rows.csv --out rows.csv"), 0);
    EXPECT_EQ(Content(u"rows.csv"), "a,b,value\n1,2,2\n4,,8\n-999.5,3,-999\nx,1,-999\n6,0,12\n8,,16\n");
    Write(u"long.csv", "a\n1\n2,3\n");
    EXPECT_EQ(Run("'$a' --csv long.csv --out rows.csv"), 1);
    EXPECT_EQ(Content(u"told"), "varnholt: Row 2 has 2 cells, the header has 1\n");
    EXPECT_EQ(Content(u"rows.csv").substr(0, 9), "a,b,value") << "the former file is lost";
    EXPECT_EQ(Run("1 --csv rows.csv --summary && ls *.part"), 2) << "a draft was left behind";
}

}  // namespace
}  // namespace Varnholt::Test
