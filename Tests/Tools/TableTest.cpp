#include "Tests/Tools/ProgramTest.h"

namespace Varnholt::Test {
namespace {

// Columns whose names hold a comma and ":desc", a column of floats with an integer in it, and a name twice.
constexpr const char* kTowns =
    "town,mm,days,\"mm,days\",mm:desc,mm\n"
    "Graz,12.80,3,x,1,7\n"
    "\"B\xC3\xBCrs \"\"B\"\", V\",5,-10,,2,8\n"
    "\"Li\nnz\",0.5,0,z,3,9\n";

// Cells that a conversion would change, missing values, and no last line end.
constexpr const char* kCells =
    "\xEF\xBB\xBFid,v,w\r\n00501,100,$100\r\n4000123412341234567,NA,0x1F\r\n3,9, \r\n7,-999,12.80\r\n"
    "8,0.30000000000000004,1";

// clang-format off
constexpr TProgramCase cases[] = {
    {"towns.csv", 0,
     "town            mm     days  mm,days  mm:desc       mm\n"
     "text         float  integer  text     integer  integer\n"
     "Graz         12.80        3  x              1        7\n"
     "B\xC3\xBCrs \"B\", V      5      -10                 2        8\n"
     "Li nz          0.5        0  z              3        9\n", ""},
    {"towns.csv --sort days:desc --columns days,town --limit 2", 0, "   days  town\ninteger  text\n      3  Graz\n      0  Li nz\n", ""},
    {"towns.csv --sort mm:desc --columns mm:desc", 0, "mm:desc\ninteger\n      1\n      2\n      3\n", ""},
    {"towns.csv --sort mm:desc:desc --columns mm:desc --limit 1", 0, "mm:desc\ninteger\n      3\n", ""},
    {"towns.csv --sort town,mm,town:desc", 1, "", "varnholt: Unable to sort the same column multiple times\n"},
    {"towns.csv --sort mm,days --columns mm,mm,days,days --rows 1", 0, "   mm  mm,days     days\nfloat  text     integer\n12.80  x              3\n", ""},
    {"towns.csv --rows '3, 1 - 2' --columns mm", 0, "   mm\nfloat\n  0.5\n12.80\n    5\n", ""},
    {"towns.csv --limit 0x1", 2, "", "varnholt: --limit: \"0x1\" is not a whole number of 0 or more\nTry 'varnholt table --help'.\n"},
    {"cells.csv --sort v:desc", 0,
     "                 id                    v  w\n"
     "              float                float  text\n"
     "              00501                  100  $100\n"
     "                  3                    9\n"
     "                  8  0.30000000000000004  1\n"
     "                  7                 -999  12.80\n"
     "4000123412341234567                   NA  0x1F\n", ""},
    {"cells.csv --sort w,id:desc --missing 1 --columns w,id --limit 4", 0,
     "w                       id\ntext                 float\n$100                 00501\n0x1F   4000123412341234567\n"
     "12.80                    7\n1                        8\n", ""},
    {"- --columns v,w --sort v --out - <cells.csv", 0,
     "\xEF\xBB\xBFv,w\r\n0.30000000000000004,1\r\n9, \r\n100,$100\r\nNA,0x1F\r\n-999,12.80\r\n", ""},
    {"cells.csv --rows '2, 4' --columns v", 0, "v\ntext\nNA\n-999\n", ""},
    {"head.csv --sort a", 0, "a     b\ntext  text\n", ""},
    {"towns.csv --sort Town", 1, "", "varnholt: towns.csv: Column \"Town\" not found\n"},
    {"towns.csv --rows ''", 2, "", "varnholt: --rows: No rows are given\nTry 'varnholt table --help'.\n"},
    {"towns.csv --rows 1,1", 2, "",
     "varnholt: --rows: \"1,1\" is not a list of ranges such as 1 - 5, 8 without a row that repeats\nTry 'varnholt table --help'.\n"},
    {"towns.csv --rows '1 - 2000000000'", 1, "", "varnholt: towns.csv: Row 2000000000 not found, the file has 3 rows\n"},
    {"towns.csv --rows '0 - 2'", 1, "", "varnholt: towns.csv: Row 0 not found, the file has 3 rows\n"},
    {"ragged.csv", 1, "", "varnholt: ragged.csv, line 4: Row 2 has 1 cells, the header has 2\n"},
    {"open.csv", 1, "", "varnholt: open.csv: The quote opened in line 2 is never closed\n"},
    {"towns.csv --out ''", 1, "", "varnholt: Cannot create file \"\": No such file or directory\n"},
    {"towns.csv --columns mm --limit 1 --out pipe & timeout 60 cat pipe", 0, "mm\n12.80\n", ""},
};
// clang-format on

class TableTest : public TProgramTest {
protected:
    TableTest() : TProgramTest("table") {
        Write(u"towns.csv", kTowns);
        Write(u"cells.csv", kCells);
        Write(u"head.csv", "a,b\r\n\r\n");
        Write(u"ragged.csv", "a,b\n\"1\n\",2\n3\n");
        Write(u"open.csv", "a,b\n\"1,2\n");
        Run("--help; mkfifo pipe");
    }
};

TEST_F(TableTest, PrintsAndFails) {
    ExpectAll(cases, {"", "towns.csv --limit -1", "towns.csv --limit ''", "towns.csv --none"});
}

TEST_F(TableTest, WritesWhatCanBeReadAgain) {
    EXPECT_EQ(Run("towns.csv --sort mm --out towns.csv"), 0);
    EXPECT_EQ(Content(u"printed"), "");
    const std::string sorted =
        "town,mm,days,\"mm,days\",mm:desc,mm\n\"Li\nnz\",0.5,0,z,3,9\n\"B\xC3\xBCrs \"\"B\"\", "
        "V\",5,-10,,2,8\n"
        "Graz,12.80,3,x,1,7\n";
    EXPECT_EQ(Content(u"towns.csv"), sorted);
    EXPECT_EQ(Run("towns.csv --columns mm,days --out one.csv && '" VARNHOLT_PROGRAM
                  "' table one.csv --sort mm,days:desc --rows '2, 3'"),
              0);
    EXPECT_EQ(Content(u"one.csv"), "\"mm,days\"\nz\n\"\"\nx\n");
    EXPECT_EQ(Content(u"printed"), "mm,days\ntext\nx\n\n");
    EXPECT_EQ(Run("ragged.csv --out towns.csv"), 1);
    EXPECT_EQ(Content(u"towns.csv"), sorted) << "the former file is lost";
    EXPECT_EQ(Names(),
              "cells.csv\nhead.csv\none.csv\nopen.csv\npipe\nprinted\nragged.csv\nreported\ntowns.csv\n")
        << "a draft remains";
}

}  // namespace
}  // namespace Varnholt::Test
