
#include "Tests/Tools/ProgramTest.h"

namespace Varnholt::Test {
namespace {

constexpr const char* kRows = "a,b\n1,2\n4,\n-999.5,3\nNA,1\n6,0\n8,\n";
constexpr const char* kOdd = "rain (mm),value\r\n\"3,5\",1\r\nT,2\r\n-9999,3\r\n";

// clang-format off
constexpr TProgramCase cases[] = {
    {"-- '-2 ^ 2'", 0, "4\n", ""},
    {"'$x / $y' --set x=1 --set y=3", 0, "0.333333333333333\n", ""},
    {"'1 a\nb'", 1, "", "varnholt: Operator \"a b\" not supported\n"},
    {"1 --csv none.csv", 1, "", "varnholt: Cannot open file \"none.csv\": No such file or directory\n"},
    {"'$a' --csv rows.csv", 0, "1\n4\n-999\n-999\n6\n8\n", ""},
    {"'$a / $b' --csv rows.csv", 0, "0.5\n-999\n-999\n-999\n-999\n-999\n",
     "varnholt: rows.csv: Attempt to divide by zero; rows: 1\n"},
    {"'$a / $b' --csv rows.csv --summary", 0, "rows: 6\ncalculated: 1\nmissing: 5\nmean: 0.5\nmin: 0.5\nmax: 0.5\n",
     "varnholt: rows.csv: Attempt to divide by zero; rows: 1\n"},
    {"'@sqrt(($a - 2))' --csv rows.csv --summary", 0, "rows: 6\ncalculated: 4\nmissing: 2\nmean: NAN\nmin: NAN\nmax: NAN\n",
     "varnholt: rows.csv: The value is not a number; rows: 1\n"},
    {"'$x - 1000' --csv short.csv --summary --out sums.csv", 0, "rows: 2\ncalculated: 1\nmissing: 1\nmean: -999.5\nmin: -999.5\nmax: -999.5\n",
     "varnholt: short.csv, line 3: The row has fewer cells than the header, and the others count as missing; rows: 1\n"
     "varnholt: short.csv: The value is infinite or from -1000 to -999, and will be read as missing; rows: 1\n"},
    {"'$a' --csv rows.csv --summary --out sums.csv >>sums.csv", 1, "",
     "varnholt: Cannot write both sums.csv and /dev/stdout: They are the same file\n"},
    {"1 --csv '\xff" ".csv'", 2, "", "varnholt: Argument 4 is not valid UTF-8\nTry 'varnholt --help'.\n"},
    {"'@sum($b,$a) + ($b)' --csv rows.csv --keywords", 0, "b\na\n", ""},
    {"'1 / $a + $z' --csv rows.csv", 1, "", "varnholt: Keyword \"z\" is not recognised\n"},
    {"1 --csv empty.csv", 1, "", "varnholt: empty.csv is empty\n"},
    {"'$a' --csv /dev/stdin --out pipe <rows.csv & timeout 60 head -3 pipe", 0, "a,b,value\n1,2,1\n4,,4\n", ""},
    {"'$r + $a' --csv odd.csv --as 'r=rain (mm)' --as a=value", 0, "-999\n-999\n-9996\n",
     "varnholt: odd.csv, line 2: \"3,5\" in column rain (mm) is not a number and counts as missing; cells: 2\n"},
    {"'$r' --csv - --as 'r=rain (mm)' --missing T,3,-9999 --out - --name new <odd.csv", 0,
     "rain (mm),value,new\r\n\"3,5\",1,-999\r\nT,2,-999\r\n-9999,3,-999\r\n",
     "varnholt: standard input, line 2: \"3,5\" in column rain (mm) is not a number and counts as missing; cells: 1\n"},
    {"'$r' --csv odd.csv --as r=rain", 1, "", "varnholt: odd.csv: Column \"rain\" not found\n"},
    {"1 --csv odd.csv --out odd.csv", 1, "",
     "varnholt: odd.csv: Column \"value\" exists already; --name gives the new column another name\n"},
    {"1 --csv rows.csv --set a=1 --as a=b", 2, "",
     "varnholt: --as: \"a\" has a meaning already\nTry 'varnholt calc --help'.\n"},
    {"1 --csv rows.csv --as 'a b=b'", 2, "",
     "varnholt: --as: An expression cannot hold the name of \"a b=b\"\nTry 'varnholt calc --help'.\n"},
    {"1 --csv rows.csv --summary --out -", 2, "",
     "varnholt: --out: - and --summary cannot both write to standard output\nTry 'varnholt calc --help'.\n"},
    {"'$a' --csv long.csv", 1, "1\n", "varnholt: long.csv, line 3: Row 2 has 2 cells, the header has 1\n"},
};
// clang-format on

class CalcTest : public TProgramTest {
protected:
    CalcTest() : TProgramTest("calc") {
        Write(u"rows.csv", kRows);
        Write(u"odd.csv", kOdd);
        Write(u"short.csv", "d,x\n1,0.5\n2\n");
        Write(u"long.csv", "a\n1\n2,3\n");
        Write(u"empty.csv", "");
        Run("--help; mkfifo pipe");
    }
};

TEST_F(CalcTest, PrintsAndFails) {
    ExpectAll(cases, {"", "1 --out x.csv", "1 --summary", "1 --set x", "1 --set x=y", "1 --none",
                      "1 --as a=b", "1 --missing 1", "1 --csv rows.csv --name x"});
}

TEST_F(CalcTest, ReplacesTheFileOnlyWhenAllRowsAreDone) {
    EXPECT_EQ(Run("'$a * 2' --csv rows.csv --out rows.csv"), 0);
    const std::string written = "a,b,value\n1,2,2\n4,,8\n-999.5,3,-999\nNA,1,-999\n6,0,12\n8,,16\n";
    EXPECT_EQ(Content(u"rows.csv"), written);
    EXPECT_EQ(Run("'$d' --csv short.csv --out filled.csv"), 0);
    EXPECT_EQ(Content(u"filled.csv"), "d,x,value\n1,0.5,1\n2,,2\n");
    EXPECT_EQ(Run("'$a' --csv long.csv --out rows.csv"), 1);
    EXPECT_EQ(Content(u"rows.csv"), written) << "the former file is lost";
    EXPECT_EQ(Names(),
              "empty.csv\nfilled.csv\nlong.csv\nodd.csv\npipe\nprinted\nreported\nrows.csv\nshort.csv\n")
        << "a draft remains";
}

}  // namespace
}  // namespace Varnholt::Test
