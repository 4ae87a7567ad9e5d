#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Platform/Runtime/Types.h"

namespace Varnholt::Test {

/// Servers on the loopback for the tests of a program, on ports of the moment. They are started at the first use,
/// end with the program, and need nginx, openssl and tinyproxy; a std::runtime_error names what is missing.
///
/// nginx serves the same pages over http and, with four certificates, over https:
///   /hello  "Gruß" in UTF-8    /latin  the same in ISO-8859-1    /missing  404 and "no such station"    /big  100 MB of zeros
///   /gzip   10 MB of zeros, compressed    /loop, /file, /away  redirects: to itself, to a file, to /auth of the other host
///   /auth   the Authorization that was sent
/// A small server of our own answers whatever is told by the path:
///   /echo   method, address, content type and body of the request    /endless  a body without an end
///   /slow   ten bytes, each 20 ms after the other    /never  nothing    /truncated  less than it announces
///   /headers  a header without an end    /chunked  two chunks    /moved  307 to /echo
class THttpServers {
public:
    static THttpServers& Instance();
    ~THttpServers();

    enum TCertificate { Good, SelfSigned, WrongHost, Expired };

    [[nodiscard]] String Http(StringView path) const;
    [[nodiscard]] String Https(TCertificate certificate, StringView path) const;
    [[nodiscard]] String Own(StringView path) const;
    /// A port of tinyproxy; the one with a log-in wants "ann" with "pw7".
    [[nodiscard]] int ProxyPort(bool hasLogin) const { return hasLogin ? FLoginProxyPort : FProxyPort; }
    /// A port at which nobody listens.
    [[nodiscard]] int ClosedPort() const { return FClosedPort; }
    /// The file for $SSL_CERT_FILE, which knows the certificates but the self-signed one.
    [[nodiscard]] std::string CertificateFile() const { return FFolder + "/ca.pem"; }

private:
    THttpServers();
    void MakeCertificates() const;
    void StartNginx();
    int StartProxy(const std::string& login);
    void Start(std::vector<std::string> command);

    std::string FFolder;
    std::vector<int> FProcesses;
    int FHttpPort = 0;
    int FHttpsPort[4] = {};
    int FProxyPort = 0;
    int FLoginProxyPort = 0;
    int FClosedPort = 0;
    class TOwnServer;
    std::unique_ptr<TOwnServer> FOwn;
};

}  // namespace Varnholt::Test
