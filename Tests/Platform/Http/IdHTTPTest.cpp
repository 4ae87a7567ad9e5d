#include "Platform/Http/IdHTTP.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <thread>

#include "Platform/Runtime/Format.h"
#include "Tests/Support/HttpServers.h"
#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

using TServers = THttpServers;

class IdHTTP : public ::testing::Test {
protected:
    IdHTTP() {
        setenv("SSL_CERT_FILE", Servers.CertificateFile().c_str(), 1);
        setenv("http_proxy", "http://127.0.0.1:1", 1);  // must not count
        Client.SetIOHandler(std::make_unique<TIdSSLIOHandlerSocketOpenSSL>());
    }
    ~IdHTTP() override { unsetenv("SSL_CERT_FILE"), unsetenv("http_proxy"); }

    void UseProxy(StringView server, int port, StringView password = {}) {
        TIdProxyConnectionInfo proxy;
        proxy.ProxyServer = server;
        proxy.ProxyPort = port;
        proxy.ProxyUsername = u"ann";
        proxy.ProxyPassword = password;
        proxy.BasicAuthentication = !password.empty();
        Client.GetProxyParams() = std::move(proxy);
    }

    const TServers& Servers = TServers::Instance();
    TIdHTTP Client;
};

TEST_F(IdHTTP, BodiesComeAsTextAndBytes) {
    EXPECT_EQ(Client.GetResponse(), nullptr);
    const std::pair<String, StringView> texts[] = {{Servers.Http(u"/hello"), u"Gru\u00DF"},
                                                   {Servers.Http(u"/latin"), u"Gru\u00DF"},
                                                   {Servers.Https(TServers::Good, u"/hello"), u"Gru\u00DF"},
                                                   {Servers.Own(u"/chunked"), u"abcde"},
                                                   {Servers.Own(u"/slow"), u"ssssssssss"}};
    Client.SetReadTimeout(2000);
    for (const auto& [url, text] : texts) {
        EXPECT_EQ(Client.Get(url), text) << ToUtf8(url);
        EXPECT_EQ(Client.GetResponseCode(), 200);
    }
    EXPECT_EQ(Client.GetResponseText(), u"HTTP/1.1 200 Fine");
    EXPECT_EQ(Client.GetResponse()->ContentLength, 10);
    EXPECT_EQ(Client.Get(Servers.Http(u"/gzip")).size(), 10'000'000U);
    std::vector<std::int64_t> begins;
    std::int64_t last = 0;
    Client.SetOnWorkBegin(
        [&](TObject*, TWorkMode mode, std::int64_t max) { begins.push_back(mode == wmRead ? max : -max); });
    Client.SetOnWork([&](TObject*, TWorkMode, std::int64_t count) { last = count; });
    TMemoryStream big;
    Client.Get(Servers.Http(u"/big"), big);
    EXPECT_TRUE(big.GetSize() == 100'000'000 && last == 100'000'000);
    const std::string sent = "caf\xC3\xA9";
    TMemoryStream source(BytesOf(sent)), target;
    source.SetPosition(1);
    Client.Post(Servers.Own(u"/moved"), source, target);  // sent twice
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(target.GetBytes().data()), target.GetBytes().size()),
              "POST /echo|-|af\xC3\xA9");
    EXPECT_THAT(begins, testing::ElementsAre(100'000'000, -4, -4, 17));
    Client.SetContentType(u"text/csv\r\nX: y");
    TMemoryStream rows(BytesOf("1,2")), answer;
    Client.Put(Servers.Own(u"/echo"), rows, answer);
    EXPECT_EQ(answer.GetSize(), 26);  // "PUT /echo|text/csvX: y|1,2"
    Client.SetContentType(u"");
    const String form[] = {u"a=1+\u00E9=", u"b", u"c d="};
    EXPECT_EQ(Client.Post(Servers.Own(u"/echo"), form),
              u"POST /echo|application/x-www-form-urlencoded|a=1%2B%C3%A9%3D&b&c%20d=");
    EXPECT_EQ(Client.Delete(Servers.Own(u"/echo?x=1")), u"DELETE /echo?x=1|-|");
}

TEST_F(IdHTTP, FailuresSayWhatHappened) {
    const String closed = Format(u"http://127.0.0.1:%d/x", {Servers.ClosedPort()});
    Client.SetReadTimeout(60);
    Client.SetMaxResponseSize(1'000'000);
    const auto secure = [](StringView reason) {
        return u"The connection to \"%s\" is not secure: SSL certificate problem: " + String(reason);
    };
    const std::pair<String, String> cases[] = {
        {u"example.org", u"Address \"%s\" is not valid"},
        {u"http://a b/", u"Address \"%s\" is not valid"},
        {u"ftp://127.0.0.1/x", u"Address \"%s\" is neither http nor https"},
        {u"file:///etc/passwd", u"Address \"%s\" is neither http nor https"},
        {u"http://station.invalid/", u"Cannot find host \"%s\""},
        {closed, u"Cannot connect to \"%s\""},
        {Servers.Https(TServers::SelfSigned, u"/hello"), secure(u"self-signed certificate")},
        {Servers.Https(TServers::Expired, u"/hello"), secure(u"certificate has expired")},
        {Servers.Https(TServers::WrongHost, u"/hello"),
         u"The connection to \"%s\" is not secure: SSL: no alternative certificate subject name matches "
         u"target host name "
         u"'localhost'"},
        {Servers.Http(u"/loop"), u"\"%s\" redirects more than 15 times"},
        {Servers.Http(u"/file"), u"\"%s\" redirects to an address that is neither http nor https"},
        {Servers.Own(u"/never"), u"\"%s\" sent no data for 60 ms"},
        {Servers.Own(u"/truncated"), u"The response of \"%s\" is incomplete"},
        {Servers.Own(u"/endless"), u"The response of \"%s\" is larger than 1000000 bytes"},
        {Servers.Http(u"/gzip"), u"The response of \"%s\" is larger than 1000000 bytes"},
        {Servers.Own(u"/headers"), u"The header of the response of \"%s\" is larger than 262144 bytes"}};
    for (const auto& [url, message] : cases)
        EXPECT_EQ(Raised<EIdException>([&, u = url] { return Client.Get(u); }), Format(message, {url}))
            << ToUtf8(url);
    try {
        TMemoryStream target;
        Client.Get(Servers.Http(u"/missing"), target);
        ADD_FAILURE();
    } catch (const EIdHTTPProtocolException& failure) {
        EXPECT_TRUE(failure.GetErrorCode() == 404 && failure.GetMessage() == u"HTTP/1.1 404 Not Found");
        EXPECT_EQ(failure.GetErrorMessage(), u"no such station");
    }
    EXPECT_EQ(Client.GetResponseCode(), 404);
    Client.SetReadTimeout(15);  // the bytes come at intervals of 20 ms
    EXPECT_EQ(Raised<EIdException>([&] { return Client.Get(Servers.Own(u"/slow")); }),
              Format(u"\"%s\" sent no data for 15 ms", {Servers.Own(u"/slow")}));
    Client.SetReadTimeout(0);
    const auto stop = [](TObject*, TWorkMode, std::int64_t) { throw EConvertError(u"stopped"); };
    Client.SetOnWork(stop);
    EXPECT_EQ(Raised<EConvertError>([&] { return Client.Get(Servers.Http(u"/big")); }), u"stopped");
    Client.SetOnWork({});
    Client.SetIOHandler(nullptr);
    EXPECT_EQ(Raised<EIdException>([&] { return Client.Get(u"HTTPS://ann:pw@h/"); }),
              u"Address \"HTTPS://h/\" requires TLS, and the client has no I/O handler for it");
    EXPECT_EQ(Client.Get(Servers.Http(u"/hello")), u"Gru\u00DF");  // after all of this
}

TEST_F(IdHTTP, CredentialsStayWithTheirHost) {
    const auto withUser = [](String url) { return url.insert(7, u"ann:secret@"); };
    EXPECT_EQ(Client.Get(withUser(Servers.Http(u"/auth"))), u"auth=Basic YW5uOnNlY3JldA==");
    EXPECT_EQ(Client.Get(withUser(Servers.Http(u"/away"))), u"auth=");
}

TEST(Addresses, AreShownWithoutUser) {
    const std::pair<StringView, StringView> cases[] = {
        {u"http://h/a?b#c", u"http://h/a?b#c"},   {u"HTTPS://ann:pw@h:1/a@b", u"HTTPS://h:1/a@b"},
        {u"http://a@b@h/", u"http://h/"},         {u"https:/ann:pw@h/x", u"https:/h/x"},
        {u"http://ann:p/w@h/x", u"http://h/x"},   {u"http://ann:p#w@h", u"http://h"},
        {u"http:\\\\ann:pw@h", u"http:\\\\h"},    {u"ann:pw@h", u"h"},
        {u"http://h/~ann@b", u"http://h/~ann@b"}, {u"", u""}};
    for (const auto& [address, shown] : cases)
        EXPECT_EQ(AddressWithoutUser(address), shown) << ToUtf8(address);
}

TEST_F(IdHTTP, ProgramsEndWhileRequestsRun) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto end = [this] {
        std::atomic<int> begun = 0;
        for (int t = 0; t < 20; ++t)
            std::thread([&] {
                try {
                    for (;;) {
                        TIdHTTP own;
                        own.SetIOHandler(std::make_unique<TIdSSLIOHandlerSocketOpenSSL>());
                        ++begun;
                        static_cast<void>(own.Get(Servers.Https(TServers::Good, u"/hello")));
                    }
                } catch (const EIdException&) {
                    for (;;)
                        pause();  // the program ends; a thread that ends by itself at that time is not ours
                }
            }).detach();
        while (begun < 40) std::this_thread::yield();
        std::exit(7);
    };
    for (int i = 0; i < 3; ++i) EXPECT_EXIT(end(), testing::ExitedWithCode(7), "");
}

TEST_F(IdHTTP, ProxiesAreUsedAsTheyAreSet) {
    UseProxy(u"127.0.0.1", Servers.ProxyPort(false));
    EXPECT_EQ(Client.Get(Servers.Http(u"/hello")), u"Gru\u00DF");
    EXPECT_EQ(Client.Get(Servers.Https(TServers::Good, u"/hello")), u"Gru\u00DF");
    UseProxy(u"127.0.0.1", Servers.ProxyPort(true), u"pw7");
    EXPECT_EQ(Client.Get(Servers.Https(TServers::Good, u"/hello")), u"Gru\u00DF");
    Client.GetProxyParams().ProxyPassword = u"changed";  // the log-in of the first exchange stays
    EXPECT_EQ(Client.Get(Servers.Http(u"/hello")), u"Gru\u00DF");
    Client.GetProxyParams().Authentication.reset();
    EXPECT_THAT(ToUtf8(Raised<EIdHTTPProtocolException>([&] { return Client.Get(Servers.Http(u"/hello")); })),
                testing::StartsWith("HTTP/1.0 401"));
    UseProxy(u"127.0.0.1", Servers.ProxyPort(true));
    const String secure = Servers.Https(TServers::Good, u"/hello");
    EXPECT_EQ(Raised<EIdException>([&] { return Client.Get(secure); }),
              Format(u"The proxy refused the connection to \"%s\" with status 407", {secure}));
    const auto get = [&] { return Client.Get(Servers.Http(u"/hello")); };
    Client.GetProxyParams().ProxyPort = 0;
    EXPECT_EQ(Raised<EIdException>(get), u"Proxy port 0 is not between 1 and 65535");
    UseProxy(u"ann:pw@proxy", 80);
    EXPECT_EQ(Raised<EIdException>(get), u"Proxy \"proxy\" is not a host name");
    UseProxy(u"proxy.invalid", 80);
    EXPECT_EQ(Raised<EIdException>(get), u"Cannot find proxy \"proxy.invalid\"");
    Client.GetProxyParams() = {};
    EXPECT_EQ(get(), u"Gru\u00DF");
}

TEST_F(IdHTTP, ClientsOfThreadsAreIndependent) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t)
        threads.emplace_back([this] {
            TIdHTTP own;
            for (int i = 0; i < 50; ++i) EXPECT_EQ(own.Get(Servers.Http(u"/hello")), u"Gru\u00DF");
        });
    for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace Varnholt::Test
