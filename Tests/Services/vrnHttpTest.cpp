#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/MainThread.h"
#include "Platform/Xml/XmlDocument.h"
#include "Tests/Services/ServiceTest.h"
#include "Tests/Support/HttpServers.h"
#include "Tests/Support/Raised.h"
#include "VarnholtLib/Services/vrnHttpRequest.h"
#include "VarnholtLib/Services/vrnProxy.h"
#include "VarnholtLib/Services/vrnSimpleHttpRequest.h"

namespace Varnholt::Test {
namespace {

class ProxySettings : public TServiceTest {
protected:
    ProxySettings() { Known = kfLocalAppData; }
    [[nodiscard]] std::string Saved() const { return ReadWholeFile(File); }
    void Save(std::string_view content) const { WriteFileInOneGo(File, content); }
    [[nodiscard]] unsigned Mode() const {
        struct stat facts {};
        return stat(ToNativePath(File).c_str(), &facts) == 0 ? facts.st_mode & 0777U : 0;
    }

    const String File = u"D:\\Varnholt\\Settings\\Proxy Settings.xml";
};

TEST_F(ProxySettings, AreWrittenWhenTheyChange) {
    const auto file = [](const std::string& enabled, const std::string& children) {
        return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<proxy-settings enabled=\"" + enabled + "\">" +
               children + "</proxy-settings>\n";
    };
    { const TProxySettings untouched; }
    EXPECT_TRUE(DirectoryExists(u"D:\\Varnholt\\Settings") && !FileExists(File));
    {
        TProxySettings settings;
        settings.SetEnabled(false);  // the value it has
    }
    EXPECT_EQ(Saved(), file("0", "<server/><port>0</port><username/><password/>"));
    EXPECT_EQ(Mode(), 0600U);
    chmod(ToNativePath(File).c_str(), 0644);
    TProxySettings settings;
    settings.SetEnabled(true);
    settings.SetServer(u"h<");
    settings.SetPort(3128);
    settings.SetUsername(u"ann");
    settings.SetPassword(u"p&\u00E9");
    settings.Save();
    EXPECT_EQ(Saved(),
              file("-1",
                   "<server>h&lt;</server><port>3128</port><username>ann</username><password>p&amp;\xC3\xA9"
                   "</password>"));
    EXPECT_EQ(Mode(), 0600U);
    TIdHTTP client;
    TIdProxyConnectionInfo& proxy = client.GetProxyParams();
    proxy.Authentication = std::make_unique<TIdAuthentication>(u"a", u"b");
    TProxySettings::ApplyTo(client);
    EXPECT_TRUE(proxy.ProxyServer == u"h<" && proxy.ProxyPort == 3128 && proxy.BasicAuthentication);
    EXPECT_TRUE(proxy.ProxyUsername == u"ann" && proxy.ProxyPassword == u"p&\u00E9" && !proxy.Authentication);
    settings.SetUsername(u"");
    settings.Apply(client);
    EXPECT_TRUE(!proxy.BasicAuthentication && !proxy.ProxyPassword.empty());
    settings.RestoreDefaults();
    settings.Apply(client);
    EXPECT_TRUE(proxy.ProxyServer.empty() && proxy.ProxyPort == 0 && proxy.ProxyPassword.empty());
    settings.SetServer(String(1, u'\x1'));
    EXPECT_EQ(Raised<EXMLDocError>([&] { settings.Save(); }), u"XML cannot hold character U+0001");
    settings.SetServer(u"");
}

TEST_F(ProxySettings, ReadingStopsAtTheFirstBadValue) {
    { const TProxySettings folder; }
    const std::pair<const char*, const char*> cases[] = {
        {"no XML", "0,,0,,"},
        {"<x "
         "enabled='True'><server>s</server><port>80</port><username>u</username><password>p</password></x>",
         "1,s,80,u,p"},
        {"<x enabled='2'><server>s</server><port>65536</port><username>u</username></x>", "1,s,0,,"},
        {"<x enabled='-1'><server>s</server><port>-1</port><username>u</username></x>", "1,s,0,,"},
        {"<x enabled='0'><port>0</port><username>u</username></x>", "0,,0,u,"},
        {"<x enabled='maybe'><server>s</server></x>", "0,,0,,"},
        {"<x enabled='1'><server>s</server><username>u</username></x>", "1,s,0,,"}};
    for (const auto& [content, read] : cases) {
        Save(content);
        const TProxySettings settings;
        const String values =
            Format(u"%d,%s,%d,%s,%s", {settings.GetEnabled() ? 1 : 0, settings.GetServer(),
                                       settings.GetPort(), settings.GetUsername(), settings.GetPassword()});
        EXPECT_EQ(ToUtf8(values), read) << content;
    }
}

TEST_F(ProxySettings, LinksAndPipesAreSafe) {
    { const TProxySettings folder; }
    const std::string link = ToNativePath(File), target = ToNativePath(u"D:\\target.xml");
    ASSERT_EQ(symlink(target.c_str(), link.c_str()), 0);
    TProxySettings().SetPassword(u"p");
    EXPECT_EQ(Mode(), 0600U);
    EXPECT_TRUE(FileExists(u"D:\\target.xml"));
    unlink(link.c_str());
    ASSERT_EQ(mkfifo(link.c_str(), 0600), 0);
    EXPECT_EQ(TProxySettings().GetPassword(), u"");  // does not wait for a writer
}

class Requests : public ProxySettings {
protected:
    Requests() { setenv("SSL_CERT_FILE", Servers.CertificateFile().c_str(), 1); }
    ~Requests() override { unsetenv("SSL_CERT_FILE"); }
    static void Await(const std::atomic<int>& count, int end) {
        while (count < end) CheckSynchronize(10'000);
    }

    const THttpServers& Servers = THttpServers::Instance();
};

TEST_F(Requests, AreSentAgainAndKeepTheLastText) {
    const auto request = THttpRequestFactory::Create();
    const auto response = request->GetResponse();
    EXPECT_TRUE(response->GetStatusCode() == 0 && response->GetResponseText().empty() &&
                response->GetDataString().empty());
    request->GetParams()->Add(u"a", u"x y");
    request->GetParams()->Add(u"a", u"=");
    request->SetUrl(Servers.Own(u"/echo"));
    request->Send();
    EXPECT_EQ(response->GetDataString(), u"GET /echo|-|");
    request->SetMethod(HttpRequestMethodPost);
    request->Send();
    EXPECT_EQ(response->GetDataString(), u"POST /echo|application/x-www-form-urlencoded|a=x%20y&a=%3D");
    request->SetMethod(HttpRequestMethodGet);
    String secure = Servers.Https(THttpServers::Good, u"/hello");
    request->SetUrl(secure.replace(0, 5, u"HTTPS"));
    request->Send();
    request->Send();
    EXPECT_EQ(response->GetDataString(), u"Gru\u00DF");
    request->SetUrl(Servers.Http(u"/missing"));
    EXPECT_EQ(Raised<EIdHTTPProtocolException>([&] { request->Send(); }), u"HTTP/1.1 404 Not Found");
    EXPECT_TRUE(response->GetStatusCode() == 404 && response->GetResponseText() == u"HTTP/1.1 404 Not Found");
    EXPECT_EQ(response->GetDataString(), u"Gru\u00DF");
}

TEST_F(Requests, GoThroughTheProxyOfTheUser) {
    {
        TProxySettings settings;
        settings.SetEnabled(true);
        settings.SetServer(u"127.0.0.1");
        settings.SetPort(Servers.ProxyPort(true));
        settings.SetUsername(u"ann");
        settings.SetPassword(u"pw7");
    }
    const auto request = THttpRequestFactory::GetObject();
    request->SetUrl(Servers.Https(THttpServers::Good, u"/hello"));
    request->Send();
    EXPECT_EQ(request->GetResponse()->GetDataString(), u"Gru\u00DF");
    TProxySettings().SetPassword(u"wrong");
    request->Send();  // has the settings of its beginning
    const String url = Servers.Http(u"/hello");
    EXPECT_EQ(Raised<EIdHTTPProtocolException>([&] { return HttpRequestSync(u"GET", url, {}, {}); }),
              u"HTTP/1.0 401 Unauthorized");
}

TEST_F(Requests, InTheBackgroundLoseNothing) {
    constexpr int kCount = 100;
    std::atomic<int> done = 0, good = 0;
    std::weak_ptr<IHttpRequest> alive;
    for (int i = 0; i < kCount; ++i) {
        const auto request = THttpRequestFactory::GetObject();
        request->SetUrl(i % 2 == 0 ? Servers.Http(u"/hello") : Servers.Http(u"/missing"));
        request->SendAsync([&](bool isDone, const std::shared_ptr<IHttpResponse>& response) {
            good += isDone && response->GetDataString() == u"Gru\u00DF" && IsMainThread();
            if (++done % 3 == 0) throw EConvertError(u"mine");
        });
        if (i == 0) alive = request;
    }
    const auto silent = THttpRequestFactory::GetObject();
    silent->SetUrl(Servers.Http(u"/hello"));
    silent->SendAsync({});
    Await(done, kCount);
    EXPECT_EQ(good, kCount / 2);
    while (!alive.expired()) CheckSynchronize(1);
    while (silent.use_count() > 1) CheckSynchronize(1);
    EXPECT_EQ(silent->GetResponse()->GetStatusCode(), 200);
}

TEST_F(Requests, AreStoppedWhenTheProgramEnds) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto end = [this](int microseconds) {
        for (int i = 0; i < 40; ++i) {
            const auto request = THttpRequestFactory::GetObject();
            request->SetUrl(Servers.Https(THttpServers::Good, u"/big"));
            request->SendAsync({});
            HttpRequest(u"GET", Servers.Https(THttpServers::Good, u"/hello"), {}, {}, {}, {});
        }
        usleep(static_cast<unsigned>(microseconds));
        std::exit(7);
    };
    for (const int time : {0, 5000, 30'000}) EXPECT_EXIT(end(time), testing::ExitedWithCode(7), "") << time;
}

TEST(SimpleHttpRequest, EncodesParameters) {
    const THttpRequestParams params = {{u"b&", u"&=\u00E9\u1234."}, {u"a", u""}};
    EXPECT_EQ(HttpParamEncode(u""), u"");
    EXPECT_EQ(HttpParamEncode(u"a b.c*-_~9Z\xD83C"), u"a%20b%2Ec*-_%7E9Z%3C");
    EXPECT_EQ(FormatUrl(u"u?x", params), u"u?x?a=&b&=%26%3D%E9%34%2E");
    EXPECT_EQ(FormatUrl(u"", params), u"a=&b&=%26%3D%E9%34%2E");
    EXPECT_EQ(FormatUrl(u"u", THttpRequestParams{}), u"u");
    EXPECT_EQ(FormatUrl(u"u", {}), u"u");
}

TEST_F(Requests, InOneCall) {
    const THttpRequestParams params = {{u"q", u"a b"}};
    const String echo = Servers.Own(u"/echo");
    std::vector<std::int64_t> progress;
    const auto send = [&](StringView method, const std::optional<THttpRequestParams>& with) {
        progress.clear();
        const auto bytes = HttpRequestSync(method, echo, with, [&](std::int64_t at, std::int64_t max) {
            progress.insert(progress.end(), {at, max});
        });
        return std::string(bytes.begin(), bytes.end());
    };
    EXPECT_EQ(send(u"GET", params), "GET /echo?q=a%20b|-|");
    EXPECT_THAT(progress, testing::ElementsAre(0, 20, 20, 20));
    EXPECT_EQ(send(u"POST", params), "POST /echo|application/x-www-form-urlencoded|q=a%20b");
    EXPECT_THAT(progress, testing::ElementsAre(0, 7, 7, 7, 0, 52, 52, 52));
    EXPECT_EQ(send(u"PUT", THttpRequestParams{}), "PUT /echo|-|");
    EXPECT_EQ(send(u"DELETE", params), "");
    EXPECT_EQ(Raised<EArgumentException>([&] { send(u"get", params); }), u"Method");
    EXPECT_EQ(Raised<EArgumentException>([&] { HttpRequest(u"HEAD", echo, {}, {}, {}, {}); }), u"Method");
    EXPECT_EQ(Raised<EArgumentNilException>([&] { send(u"POST", {}); }), u"Params");
    std::atomic<int> ended = 0;
    std::vector<String> errors;
    const auto fail = [&](const String& error) {
        EXPECT_TRUE(IsMainThread());
        errors.push_back(error);
        ++ended;
    };
    HttpRequest(u"GET", echo, {}, [&](const auto& data) { ended += static_cast<int>(data.size()); }, fail,
                {});
    Await(ended, 12);
    HttpRequest(u"GET", echo, {}, [](const auto&) { throw EConvertError(u"mine"); }, fail, {});
    HttpRequest(u"GET", u"x:", {}, {}, fail, {});
    Await(ended, 14);
    EXPECT_THAT(errors, testing::UnorderedElementsAre(u"mine", u"Address \"x:\" is not valid"));
}

}  // namespace
}  // namespace Varnholt::Test
