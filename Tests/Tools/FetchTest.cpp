#include "Tests/Support/HttpServers.h"
#include "Tests/Tools/ProgramTest.h"

namespace Varnholt::Test {
namespace {

class NetCommands : public TProgramTest {
protected:
    NetCommands() : TProgramTest("") {
        setenv("XDG_DATA_HOME", Folder.GetNativePath().c_str(), 1);
        setenv("SSL_CERT_FILE", Servers.CertificateFile().c_str(), 1);
    }
    ~NetCommands() override { unsetenv("XDG_DATA_HOME"), unsetenv("SSL_CERT_FILE"); }

    const THttpServers& Servers = THttpServers::Instance();
};

TEST_F(NetCommands, FetchThroughTheProxy) {
    const std::string hello = ToUtf8(Servers.Https(THttpServers::Good, u"/hello")),
                      echo = ToUtf8(Servers.Own(u"/echo")), missing = ToUtf8(Servers.Http(u"/missing")),
                      cut = ToUtf8(Servers.Own(u"/truncated"));
    const std::string calls[] = {"fetch " + hello,
                                 "fetch '" + echo + "?x=1' --param 'a b=\xE2\x82\xAC&' --param a=",
                                 "fetch " + echo + " --method POST --param a=1 --out -",
                                 "fetch " + echo + " --method DELETE",
                                 "fetch " + hello + " --out file",
                                 "fetch " + missing + " --out file",
                                 "fetch " + cut + " --out new"};
    const std::string incomplete = "varnholt: The response of \"" + cut + "\" is incomplete\n";
    const TProgramCase cases[] = {
        {calls[0].c_str(), 0, "Gru\xC3\x9F", ""},
        {calls[1].c_str(), 0, "GET /echo?x=1&a%20b=%E2%82%AC%26&a=|-|", ""},
        {calls[2].c_str(), 0, "POST /echo|application/x-www-form-urlencoded|a=1", ""},
        {calls[3].c_str(), 0, "DELETE /echo|-|", ""},
        {calls[4].c_str(), 0, "", ""},
        {calls[5].c_str(), 1, "", "varnholt: HTTP/1.1 404 Not Found\n"},
        {calls[6].c_str(), 1, "", incomplete.c_str()},
        {"fetch nowhere", 1, "", "varnholt: Address \"nowhere\" is not valid\n"}};
    ExpectAll(cases, {"fetch", "fetch x --method HEAD", "fetch x --param =1", "fetch x --param a",
                      "proxy set h", "proxy set h 0", "proxy set a/b 80", "proxy on"});
    EXPECT_EQ(Content(u"file"), "Gru\xC3\x9F");
    EXPECT_FALSE(FileExists(Folder.GetPath(u"new")));

    const std::string set = "proxy set 127.0.0.1 " + std::to_string(Servers.ProxyPort(true));
    EXPECT_EQ(Run("proxy"), 0);
    EXPECT_EQ(Content(u"printed"), "enabled   no\nserver    \nport      0\nuser      \npassword  not set\n");
    EXPECT_EQ(Run("--help >/dev/null; echo pw7 | '" VARNHOLT_PROGRAM "' " + set + " --user ann"), 0);
    EXPECT_EQ(Run("proxy show"), 0);
    EXPECT_EQ(Content(u"printed"), "enabled   yes\nserver    127.0.0.1\nport      " +
                                       std::to_string(Servers.ProxyPort(true)) +
                                       "\nuser      ann\npassword  set\n");
    EXPECT_EQ(Run(calls[0]), 0);
    EXPECT_EQ(Run(set + " --user ann </dev/null"), 1);
    EXPECT_EQ(Content(u"reported"), "varnholt: No password was given\n");
    EXPECT_EQ(Run(set), 0);
    EXPECT_EQ(Run(calls[0]), 1);  // without a log-in
    EXPECT_EQ(Run("proxy off"), 0);
    EXPECT_EQ(Run(calls[0]), 0);
}

}  // namespace
}  // namespace Varnholt::Test
