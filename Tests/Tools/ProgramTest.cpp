#include "Tests/Tools/ProgramTest.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <regex>

namespace Varnholt::Test {
namespace {

using ::testing::HasSubstr;

constexpr const char* kRows = "a,b\n1,2\n3,4\n";

// What all commands have in common. Links lead to file.csv; other.csv is a hard link of hard.csv.
// clang-format off
constexpr TProgramCase cases[] = {
    {"", 2, "", "varnholt: A command is required: calc, config, fetch, folders, pack, plot, proxy, report, table, unpack, list or version\nTry 'varnholt --help'.\n"},
    {"tabel x.csv", 2, "", "varnholt: \"tabel\" is not a command; the nearest is table\nTry 'varnholt --help'.\n"},
    {"table file.csv --colums a", 2, "",
     "varnholt: The following arguments were not expected: a --colums; the nearest is --columns\nTry 'varnholt table --help'.\n"},
    {"--help >/dev/full", 1, "", "varnholt: Cannot write standard output: No space left on device\n"},
    {"table - <&-", 1, "", "varnholt: Cannot read standard input: Bad file descriptor\n"},
    {"calc 1 --csv - --summary --out out.csv >&- <hard.csv", 1, "", "varnholt: Cannot write standard output: Bad file descriptor\n"},
    {"table latin.csv", 1, "", "varnholt: latin.csv, line 3: Byte E9 is not valid in UTF-8; --encoding names another encoding\n"},
    {"table latin.csv --encoding latin1 --out -", 0, "a\n1\n\xC3\xA9\n", ""},
    {"table wide.csv --encoding latin1 --out -", 0, "\xEF\xBB\xBF" "a\n\xC3\xA9\n", ""},
    {"calc 1 --csv file.csv --encoding zzz", 2, "", "varnholt: --encoding: No encoding is named \"zzz\"\nTry 'varnholt calc --help'.\n"},
    {"table file.csv --columns b --out link.csv && cat file.csv", 0, "b\n2\n4\n", ""},
    {"table - --out other.csv <hard.csv", 1, "", "varnholt: Cannot write file \"other.csv\": It is also the input, and cannot be replaced as a whole\n"},
    {"calc 1 --csv hard.csv >>other.csv", 1, "", "varnholt: Cannot write standard output: It is also the input, and cannot be replaced as a whole\n"},
    {"folders | grep -v /", 0, "Windows          36\n", ""},
    {"--log=n table %.csv; grep -Eo '\\[[ME].*|Exit.*' Documents/Varnholt/Logs/n*", 0,
     "[METHOD]: varnholt(--log=n, table, %.csv)\r\n[ERROR]: Cannot open file \"%.csv\": No such file or directory\r\nExit status: 1\r\n",
     "varnholt: Cannot open file \"%.csv\": No such file or directory\n"},
    {"--log n calc '$a + 1' --csv bad.csv; grep -o '.WARN.*' Documents/Varnholt/Logs/n*", 0,
     "-999\n[WARNING]: bad.csv, line 2: \"x\" in column a is not a number and counts as missing; cells: 1\r\n",
     "varnholt: bad.csv, line 2: \"x\" in column a is not a number and counts as missing; cells: 1\n"},
    {"--log=n tabel; grep -c . Documents/Varnholt/Logs/n*; HOME=/none '" VARNHOLT_PROGRAM "' --log n calc 1", 0, "7\n1\n",
     "varnholt: \"tabel\" is not a command; the nearest is table\nTry 'varnholt --help'.\n"
     "varnholt: Cannot create the log \"Varnholt\\Logs\\n (varnholt).log\"\n"},
    {"table hard.csv --out - && cat hard.csv", 0, "a,b\n1,2\n3,4\na,b\n1,2\n3,4\n", ""},
};
// clang-format on

class ProgramTest : public TProgramTest {
protected:
    ProgramTest() : TProgramTest("") {
        setenv("HOME", Folder.GetNativePath().c_str(), 1);
        unsetenv("XDG_CONFIG_HOME");
        setenv("VARNHOLT_COMMON_DATA", Folder.GetNativePath("common").c_str(), 1);
        Write(u"file.csv", kRows);
        Write(u"hard.csv", kRows);
        Write(u"bad.csv", "a\nx\n");
        Write(u"latin.csv", "a\n1\n\xE9\n");
        Write(u"wide.csv", std::string_view("\xFF\xFE\x61\0\n\0\xE9\0\n\0", 10));
        Run("--help; ln -s file.csv link.csv; ln hard.csv other.csv");
    }
};

TEST_F(ProgramTest, CommandsShareTheirRules) {
    ExpectAll(cases, {"--log '' calc 1", "--log a/b calc 1", "--log", "calc 1 --log n", "--none", "table",
                      "--", "table file.csv --limit 1 --limit 2"});
}

TEST_F(ProgramTest, ClosedPipesEndItSilentlyAndFullFilesWithAMessage) {
    std::string rows = "a\n";
    for (int i = 0; i < 50000; ++i) rows += "1\n";
    Write(u"long.csv", rows);
    const std::string programs[] = {"table long.csv", "calc '$a' --csv long.csv", "table long.csv --out -"};
    for (const std::string& program : programs) {
        Run(program + "; echo $? >status; } | head -n 1 >/dev/null; { true");
        EXPECT_EQ(Content(u"status"), "141\n") << program;
        EXPECT_EQ(Content(u"reported"), "") << program;
    }
    Run("--version; ulimit -f 8; '" VARNHOLT_PROGRAM "' table long.csv --out copy.csv");
    EXPECT_EQ(Content(u"reported"), "varnholt: Cannot write file \"copy.csv\": File too large\n");
}

TEST_F(ProgramTest, SignalsAndExhaustedMemoryLeaveNoFile) {
    const std::string names = Names();
    // When the last line fits into the pipe, the draft has been written to for long.
    const std::string whileWriting = "--version; mkfifo pipe; '" VARNHOLT_PROGRAM
                                     "' calc 1 --csv pipe --out out.csv & exec 3>pipe; rm pipe; echo a >&3; "
                                     "yes 1 | head -n 200000 >&3; kill -TERM $!; wait $!";
    EXPECT_EQ(Run(whileWriting), 128 + SIGTERM);
    EXPECT_EQ(Names(), names);
    if (*VARNHOLT_SANITIZERS != '\0') GTEST_SKIP() << "sanitizers need more address space than the limit";
    EXPECT_EQ(Run("--version; ulimit -v 100000; yes | '" VARNHOLT_PROGRAM "' table - --out out.csv"), 1);
    EXPECT_EQ(Content(u"reported"), "varnholt: Out of memory\n");
    EXPECT_EQ(Names(), names);
}

TEST_F(ProgramTest, ManPageAndCompletionKnowAllOptions) {
    const std::string sources = VARNHOLT_SOURCE_DIR "/Tools/varnholt/";
    std::string page = ReadWholeFile(FromNativePath(sources + "varnholt.1.in"));
    std::erase(page, '\\');
    static const std::regex option("--[a-z]+");
    for (const std::string command : {"", "calc", "folders", "report", "table", "--log x calc"}) {
        Write(u"complete.bash", ". '" + sources + "varnholt.bash'\nCOMP_WORDS=('" VARNHOLT_PROGRAM "' " +
                                    command +
                                    " --)\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_varnholt\n"
                                    "echo \"${COMPREPLY[@]} \"\n");
        ASSERT_EQ(Run("--version >/dev/null; bash complete.bash"), 0);
        const std::string completions = Content(u"printed");
        ASSERT_EQ(Run(command + " --help"), 0);
        const std::string help = Content(u"printed");
        for (std::sregex_iterator next(help.begin(), help.end(), option), end; next != end; ++next) {
            EXPECT_THAT(page, HasSubstr(next->str())) << "the page lacks an option of " << command;
            EXPECT_THAT(completions, HasSubstr(next->str() + " ")) << "not completed after " << command;
        }
    }
}

}  // namespace
}  // namespace Varnholt::Test
