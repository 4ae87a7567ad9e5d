#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>

#include "Platform/Runtime/Files.h"
#include "Tests/Support/TemporaryFolder.h"

/// `varnholt calc` as its users run it: arguments in; exit status, output, messages and files out.
namespace Varnholt::Tests {
namespace {

constexpr const char* kRows = "a,b\n1,2\n4,\n-999.5,3\nx,1\n6,0\n8\n";

// clang-format off
const struct {
    const char* Arguments;
    int Status;
    const char* Out;
    const char* Told;
} cases[] = {
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
    {"'$a' --csv /dev/stdin --out /dev/stdout <rows.csv | head -3", 0, "a,b,value\n1,2,1\n4,,4\n", ""},
};
// clang-format on

class CalcTest : public ::testing::Test {
protected:
    CalcTest() { WriteFileInOneGo(Folder.GetPath(u"rows.csv"), kRows); }

    int Run(const std::string& arguments) {
        const std::string command = "cd '" + Folder.GetNativePath() + "' && { '" VARNHOLT_PROGRAM "' calc " +
                                    arguments + "; } >printed 2>told";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::string Content(StringView name) { return ReadWholeFile(Folder.GetPath(name)); }

    TTemporaryFolder Folder;
};

TEST_F(CalcTest, PrintsAndFails) {
    for (const auto& [arguments, status, out, told] : cases) {
        EXPECT_EQ(Run(arguments), status) << arguments;
        EXPECT_EQ(Content(u"printed"), out) << arguments;
        EXPECT_EQ(Content(u"told"), told) << arguments;
    }
    for (const char* wrong : {"", "1 --out x.csv", "1 --summary", "1 --set x", "1 --set x=y", "1 --none"}) {
        EXPECT_EQ(Run(wrong), 2) << wrong;
    }
}

TEST_F(CalcTest, WritesTheFileWhenAllIsDone) {
    EXPECT_EQ(Run("'$a * 2' --csv rows.csv --out rows.csv"), 0);
    EXPECT_EQ(Content(u"rows.csv"), "a,b,value\n1,2,2\n4,,8\n-999.5,3,-999\nx,1,-999\n6,0,12\n8,,16\n");
    WriteFileInOneGo(Folder.GetPath(u"long.csv"), "a\n1\n2,3\n");
    EXPECT_EQ(Run("'$a' --csv long.csv --out rows.csv"), 1);
    EXPECT_EQ(Content(u"told"), "varnholt: Row 2 has 2 cells, the header has 1\n");
    EXPECT_EQ(Content(u"rows.csv").substr(0, 9), "a,b,value") << "the former file is lost";
    EXPECT_EQ(Run("1 --csv rows.csv --summary && ls *.part"), 2) << "a draft was left behind";
}

}  // namespace
}  // namespace Varnholt::Tests
