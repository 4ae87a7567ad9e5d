// The HTTP client beside libcurl's easy interface by hand, on the loopback, from an nginx that the program starts.
#include <arpa/inet.h>
#include <benchmark/benchmark.h>
#include <curl/curl.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>

#include "Platform/Http/IdHTTP.h"

namespace Varnholt {
namespace {

constexpr std::int64_t kLarge = std::int64_t{1} << 30;

/// nginx with a page of 100 bytes and one of 1 GiB.
class TServer {
public:
    static const TServer& Instance() {
        static const TServer server;
        return server;
    }
    ~TServer() {
        kill(FProcess, SIGKILL);
        waitpid(FProcess, nullptr, 0);
        std::error_code ignored;
        std::filesystem::remove_all(FFolder, ignored);
    }
    [[nodiscard]] std::string Url(const std::string& page) const {
        return "http://127.0.0.1:" + std::to_string(FPort) + "/" + page;
    }

private:
    TServer() : FFolder(std::filesystem::temp_directory_path() / "varnholt-http-XXXXXX") {
        if (mkdtemp(FFolder.data()) == nullptr) throw std::runtime_error("cannot make " + FFolder);
        std::filesystem::permissions(FFolder, std::filesystem::perms(0755));
        std::ofstream(FFolder + "/small") << std::string(100, 'x');
        std::ofstream(FFolder + "/large");
        std::filesystem::resize_file(FFolder + "/large", kLarge);
        const int listener = Connect(&bind);
        close(listener);
        std::ofstream config(FFolder + "/nginx.conf");
        config << "daemon off; master_process off; pid " << FFolder
               << "/pid; error_log /dev/null; events {} http {\n"
               << "access_log off; sendfile on; keepalive_requests 100000000;\n";
        for (const char* kind : {"client_body", "proxy", "fastcgi", "uwsgi", "scgi"})
            config << kind << "_temp_path " << FFolder << "/" << kind << ";\n";
        config << "server { listen 127.0.0.1:" << FPort << "; root " << FFolder << "; } }\n";
        config.close();
        FProcess = fork();
        if (FProcess == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            execlp("nginx", "nginx", "-p", FFolder.c_str(), "-c", (FFolder + "/nginx.conf").c_str(), nullptr);
            execl("/usr/sbin/nginx", "nginx", "-p", FFolder.c_str(), "-c", (FFolder + "/nginx.conf").c_str(),
                  nullptr);
            _exit(127);
        }
        for (int handle = -1; (handle = Connect(&connect)) < 0;) {
            if (waitpid(FProcess, nullptr, WNOHANG) != 0) throw std::runtime_error("nginx does not run");
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    /// Binds or connects a socket to the port, which bind chooses; -1 if that fails.
    template <typename TCall>
    int Connect(TCall call) {
        const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(static_cast<std::uint16_t>(FPort));
        socklen_t size = sizeof(address);
        auto* const any = reinterpret_cast<sockaddr*>(&address);
        if (call(handle, any, size) != 0) return close(handle), -1;
        if (getsockname(handle, any, &size) == 0 && FPort == 0) FPort = ntohs(address.sin_port);
        return handle;
    }

    std::string FFolder;
    int FPort = 0;
    pid_t FProcess = -1;
};

std::size_t Append(char* bytes, std::size_t size, std::size_t count, void* text) {
    static_cast<std::string*>(text)->append(bytes, size * count);
    return size * count;
}

std::size_t Count(char*, std::size_t size, std::size_t count, void* sum) {
    *static_cast<std::int64_t*>(sum) += static_cast<std::int64_t>(size * count);
    return size * count;
}

/// Counts what it takes.
class TCountingStream final : public TStream {
public:
    std::size_t Read(std::span<std::byte>) override { return 0; }
    std::size_t Write(std::span<const std::byte> bytes) override {
        FSize += static_cast<std::int64_t>(bytes.size());
        return bytes.size();
    }
    std::int64_t Seek(std::int64_t, TSeekOrigin) override { return 0; }
    [[nodiscard]] std::int64_t GetPosition() const override { return FSize; }
    [[nodiscard]] std::int64_t GetSize() const override { return FSize; }
    void SetSize(std::int64_t) override {}

private:
    std::int64_t FSize = 0;
};

void SmallByClient(benchmark::State& state) {
    const String url = FromUtf8(TServer::Instance().Url("small"));
    TIdHTTP client;
    for (auto _ : state)
        if (client.Get(url).size() != 100) state.SkipWithError("wrong body");
}
BENCHMARK(SmallByClient)->Iterations(10000);

void SmallByHand(benchmark::State& state) {
    const std::string url = TServer::Instance().Url("small");
    CURL* const easy = curl_easy_init();
    curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &Append);
    for (auto _ : state) {
        std::string body;
        curl_easy_setopt(easy, CURLOPT_WRITEDATA, &body);
        if (curl_easy_perform(easy) != CURLE_OK || body.size() != 100) state.SkipWithError("wrong body");
    }
    curl_easy_cleanup(easy);
}
BENCHMARK(SmallByHand)->Iterations(10000);

void LargeByClient(benchmark::State& state) {
    const String url = FromUtf8(TServer::Instance().Url("large"));
    TIdHTTP client;
    for (auto _ : state) {
        TCountingStream body;
        client.Get(url, body);
        if (body.GetSize() != kLarge) state.SkipWithError("wrong body");
    }
}
BENCHMARK(LargeByClient)->Unit(benchmark::kMillisecond)->UseRealTime();

void LargeByHand(benchmark::State& state) {
    const std::string url = TServer::Instance().Url("large");
    CURL* const easy = curl_easy_init();
    curl_easy_setopt(easy, CURLOPT_URL, url.c_str());
    curl_easy_setopt(easy, CURLOPT_BUFFERSIZE, 256 * 1024L);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &Count);
    for (auto _ : state) {
        std::int64_t size = 0;
        curl_easy_setopt(easy, CURLOPT_WRITEDATA, &size);
        if (curl_easy_perform(easy) != CURLE_OK || size != kLarge) state.SkipWithError("wrong body");
    }
    curl_easy_cleanup(easy);
}
BENCHMARK(LargeByHand)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace Varnholt
