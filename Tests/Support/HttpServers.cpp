#include "Tests/Support/HttpServers.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <grp.h>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <list>
#include <stdexcept>
#include <thread>

namespace Varnholt::Test {
namespace {

constexpr uid_t kNobody = 65534;  // the servers do not run as the superuser

/// A socket of the loopback that listens, on a free port.
int Listen(int& port) {
    const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    auto* const any = reinterpret_cast<sockaddr*>(&address);
    if (bind(handle, any, size) != 0 || listen(handle, 128) != 0 || getsockname(handle, any, &size) != 0)
        throw std::runtime_error("cannot listen on the loopback");
    port = ntohs(address.sin_port);
    return handle;
}

int FreePort() {
    int port = 0;
    close(Listen(port));
    return port;
}

bool CanConnect(int port) {
    const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    const bool isOpen = connect(handle, reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0;
    close(handle);
    return isOpen;
}

void AwaitPort(int port, const std::string& program) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!CanConnect(port)) {
        if (std::chrono::steady_clock::now() > end) throw std::runtime_error(program + " does not listen");
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

void Run(const std::string& command) {
    if (std::system((command + " >/dev/null 2>&1").c_str()) != 0)
        throw std::runtime_error("failed: " + command);
}

std::string ProgramPath(const std::string& name, const std::string& package) {
    for (const char* folder : {"/usr/sbin/", "/usr/bin/", "/usr/local/sbin/", "/usr/local/bin/"})
        if (access((folder + name).c_str(), X_OK) == 0) return folder + name;
    throw std::runtime_error(name + " is missing: install " + package);
}

}  // namespace

// --- The server of our own ---

class THttpServers::TOwnServer {
public:
    TOwnServer() : FListener(Listen(FPort)), FThread([this] { Serve(); }) {}
    ~TOwnServer() {
        FIsEnding = true;
        shutdown(FListener, SHUT_RDWR);
        FThread.join();
        for (std::thread& thread : FThreads) thread.join();
        close(FListener);
    }
    [[nodiscard]] int GetPort() const { return FPort; }

private:
    void Serve() {
        for (;;) {
            const int client = accept4(FListener, nullptr, nullptr, SOCK_CLOEXEC);
            if (client < 0) return;
            FThreads.emplace_back([this, client] {
                while (Answer(client)) {
                }
                close(client);
            });
        }
    }

    static bool Send(int client, const std::string& bytes) {
        return send(client, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
    }

    /// Whether nothing comes from the client for so many milliseconds.
    bool Waits(int client, int milliseconds) const {
        const timeval time{milliseconds / 1000, milliseconds % 1000 * 1000};
        setsockopt(client, SOL_SOCKET, SO_RCVTIMEO, &time, sizeof(time));
        char byte;
        return recv(client, &byte, 1, MSG_PEEK) < 0 && !FIsEnding;
    }

    bool Answer(int client) {
        const timeval none{};
        setsockopt(client, SOL_SOCKET, SO_RCVTIMEO, &none, sizeof(none));
        std::string request;
        std::size_t head = std::string::npos;
        std::size_t length = 0;
        while (head == std::string::npos || request.size() < head + 4 + length) {
            char buffer[65536];
            const ssize_t count = recv(client, buffer, sizeof(buffer), 0);
            if (count <= 0) return false;
            request.append(buffer, static_cast<std::size_t>(count));
            head = request.find("\r\n\r\n");
            const std::size_t at = request.find("Content-Length: ");
            if (at < head) length = std::stoul(request.substr(at + 16));
        }
        const std::string target = request.substr(0, request.find(" HTTP/"));
        const std::string path = target.substr(target.find(' ') + 1);
        const std::string ok = "HTTP/1.1 200 Fine\r\n";
        const auto whole = [&](const std::string& body) {
            return Send(client, ok + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
        };
        if (path.starts_with("/echo")) {
            const std::size_t type = request.find("Content-Type: ");
            const std::string typed =
                type > head ? "-" : request.substr(type + 14, request.find('\r', type) - type - 14);
            return whole(target + "|" + typed + "|" + request.substr(head + 4));
        }
        if (path == "/moved")
            return Send(client, "HTTP/1.1 307 Moved\r\nLocation: /echo\r\nContent-Length: 0\r\n\r\n");
        if (path == "/chunked")
            return Send(client, ok + "Transfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n");
        if (path == "/truncated") Send(client, ok + "Content-Length: 10\r\n\r\nabc");
        if (path == "/endless" && Send(client, ok + "\r\n"))
            while (Send(client, std::string(65536, 'x'))) {
            }
        if (path == "/headers" && Send(client, ok))
            while (Send(client, "X: " + std::string(1000, 'y') + "\r\n")) {
            }
        if (path == "/slow" && Send(client, ok + "Content-Length: 10\r\n\r\n"))
            for (int i = 0; i < 10 && Waits(client, 20); ++i) Send(client, "s");
        if (path == "/never") Waits(client, 20'000);
        return false;
    }

    int FPort = 0;
    int FListener;
    std::atomic<bool> FIsEnding = false;
    std::list<std::thread> FThreads;
    std::thread FThread;
};

// --- nginx and tinyproxy ---

THttpServers& THttpServers::Instance() {
    static THttpServers servers;
    return servers;
}

THttpServers::THttpServers() : FFolder(std::filesystem::temp_directory_path() / "varnholt-http-XXXXXX") {
    if (mkdtemp(FFolder.data()) == nullptr) throw std::runtime_error("cannot make " + FFolder);
    FClosedPort = FreePort();
    MakeCertificates();
    StartNginx();
    FProxyPort = StartProxy("");
    FLoginProxyPort = StartProxy("BasicAuth ann pw7\n");
    FOwn = std::make_unique<TOwnServer>();
}

THttpServers::~THttpServers() {
    for (const int process : FProcesses) kill(process, SIGKILL);
    for (const int process : FProcesses) waitpid(process, nullptr, 0);
    std::error_code ignored;
    std::filesystem::remove_all(FFolder, ignored);
}

void THttpServers::Start(std::vector<std::string> command) {
    std::vector<char*> arguments;
    for (std::string& argument : command) arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    const int parent = getpid();
    const int process = fork();
    if (process == 0) {
        if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0))
            _exit(1);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) _exit(1);
        const int none = open("/dev/null", O_RDWR);
        for (const int standard : {0, 1, 2}) dup2(none, standard);
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    FProcesses.push_back(process);
}

void THttpServers::MakeCertificates() const {
    const std::string program = ProgramPath("openssl", "openssl");
    const auto name = [&](const std::string& key) {
        return " -nodes -keyout " + FFolder + "/" + key + ".key ";
    };
    const std::string request = program + " req -newkey ec -pkeyopt ec_paramgen_curve:P-256";
    Run(request + " -x509 -days 2 -subj '/CN=Tests'" + name("ca") + "-out " + CertificateFile());
    Run(request + " -x509 -days 2 -subj /CN=localhost -addext subjectAltName=DNS:localhost" + name("1") +
        "-out " + FFolder + "/1.pem");
    const std::pair<const char*, const char*> issued[] = {
        {"localhost", "2"}, {"elsewhere.invalid", "2"}, {"localhost", "-1"}};
    for (int i = 0; const auto& [host, days] : issued) {
        const std::string key = std::to_string(i == 0 ? 0 : i + 1), file = FFolder + "/" + key;
        std::ofstream(file + ".ext") << "subjectAltName=DNS:" << host << "\n";
        Run(request + " -subj /CN=" + host + name(key) + "-out " + file + ".csr");
        Run(program + " x509 -req -in " + file + ".csr -CA " + CertificateFile() + " -CAkey " + FFolder +
            "/ca.key -days " + days + " -extfile " + file + ".ext -out " + file + ".pem");
        ++i;
    }
}

void THttpServers::StartNginx() {
    std::ofstream(FFolder + "/hello") << "Gru\xC3\x9F";
    std::ofstream(FFolder + "/latin") << "Gru\xDF";
    std::ofstream(FFolder + "/big"), std::ofstream(FFolder + "/gzip");
    std::filesystem::resize_file(FFolder + "/big", 100'000'000);
    std::filesystem::resize_file(FFolder + "/gzip", 10'000'000);
    FHttpPort = FreePort();
    const std::string port = std::to_string(FHttpPort);
    std::ofstream pages(FFolder + "/pages.conf");
    pages << "root " << FFolder << "; default_type text/plain;\n"
          << "location /hello { charset utf-8; }\nlocation /latin { charset iso-8859-1; }\n"
          << "location /gzip { gzip on; gzip_types text/plain; }\n"
          << "location /missing { return 404 'no such station'; }\nlocation /loop { return 302 /loop; }\n"
          << "location /file { return 302 file:///etc/passwd; }\n"
          << "location /away { return 302 http://localhost:" << port << "/auth; }\n"
          << "location /auth { return 200 'auth=$http_authorization'; }\n";
    pages.close();
    std::ofstream config(FFolder + "/nginx.conf");
    config << "daemon off; master_process off; pid " << FFolder
           << "/pid; error_log /dev/null;\nevents {}\nhttp {\n"
           << "access_log off; keepalive_requests 1000000; ssl_session_cache off;\n";
    for (const char* kind : {"client_body", "proxy", "fastcgi", "uwsgi", "scgi"})
        config << kind << "_temp_path " << FFolder << "/" << kind << ";\n";
    const std::string include = "include " + FFolder + "/pages.conf; }\n";
    config << "server { listen 127.0.0.1:" << port << "; " << include;
    for (int i = 0; i < 4; ++i) {
        FHttpsPort[i] = FreePort();
        const std::string file = FFolder + "/" + std::to_string(i);
        config << "server { listen 127.0.0.1:" << FHttpsPort[i] << " ssl; ssl_certificate " << file
               << ".pem; ssl_certificate_key " << file << ".key; " << include;
    }
    config << "}\n";
    config.close();
    if (geteuid() == 0) Run("chown -R " + std::to_string(kNobody) + " " + FFolder);
    Start({ProgramPath("nginx", "nginx-light"), "-p", FFolder, "-c", FFolder + "/nginx.conf"});
    AwaitPort(FHttpPort, "nginx");
    AwaitPort(FHttpsPort[3], "nginx");
}

int THttpServers::StartProxy(const std::string& login) {
    const int port = FreePort();
    const std::string file = FFolder + "/proxy-" + std::to_string(port);
    std::ofstream(file) << "Port " << port << "\nListen 127.0.0.1\nAllow 127.0.0.1\nLogFile \"" << FFolder
                        << "/log\"\nLogLevel Critical\n"
                        << login;
    Start({ProgramPath("tinyproxy", "tinyproxy-bin"), "-d", "-c", file});
    AwaitPort(port, "tinyproxy");
    return port;
}

namespace {

String Address(StringView start, int port, StringView path) {
    return String(start) + FromUtf8(std::to_string(port)) + String(path);
}

}  // namespace

String THttpServers::Http(StringView path) const {
    return Address(u"http://127.0.0.1:", FHttpPort, path);
}

String THttpServers::Https(TCertificate certificate, StringView path) const {
    return Address(u"https://localhost:", FHttpsPort[certificate], path);
}

String THttpServers::Own(StringView path) const {
    return Address(u"http://127.0.0.1:", FOwn->GetPort(), path);
}

}  // namespace Varnholt::Test
