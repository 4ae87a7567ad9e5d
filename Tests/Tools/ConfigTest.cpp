#include "Tests/Tools/ProgramTest.h"

namespace Varnholt::Test {
namespace {

class ConfigCommand : public TProgramTest {
protected:
    ConfigCommand() : TProgramTest("config") {}
};

TEST_F(ConfigCommand, GetsSetsAndLists) {
    Write(u"bad.csv", "a,b\n");
    Write(u"odd.VrnConfig", "<VrnConfig><a.b>x</a.b><a><b>1&#10;\\</b></a><a>y</a><c/></VrnConfig>");
    const TProgramCase cases[] = {
        {"a.VrnConfig list", 1, "",
         "varnholt: Cannot open file \"a.VrnConfig\": No such file or directory\n"},
        {"a.VrnConfig set a.b x --type integer", 1, "",
         "varnholt: VARN configuration error: Value data is not the correct type - x\n"},
        {"a.VrnConfig get a.b", 1, "",
         "varnholt: Cannot open file \"a.VrnConfig\": No such file or directory\n"},
        {"a.VrnConfig set a.b -5 --type Integer", 0, "", ""},
        {"a.VrnConfig set a.b 7", 0, "", ""},  // keeps its type
        {"a.VrnConfig set c 'x y'", 0, "", ""},
        {"a.VrnConfig set a.b 2147483648", 1, "", "varnholt: '2147483648' is not a valid integer value\n"},
        {"a.VrnConfig set c 1 --type float", 0, "", ""},
        {"a.VrnConfig list", 0, "a.b\tInteger\t7\nc\tFloat\t1\n", ""},
        {"a.VrnConfig get a.b", 0, "7\n", ""},
        {"a.VrnConfig get a.c", 1, "", "varnholt: VARN configuration error: Value does not exist - a.c\n"},
        {"odd.VrnConfig list", 0, "a.b\tGeneral\t1\\n\\\\\nc\tGeneral\t\n", ""},
        {"bad.csv set a b", 1, "",
         "varnholt: Unable to create or open configuration file - unable to load configuration file "
         "(bad.csv: line 1: Start tag expected, '<' not found)\n"},
    };
    ExpectAll(cases, {"a.VrnConfig", "a.VrnConfig set a.b", "a.VrnConfig set a.b 1 --type int"});
    EXPECT_EQ(Content(u"bad.csv"), "a,b\n");
}

}  // namespace
}  // namespace Varnholt::Test
