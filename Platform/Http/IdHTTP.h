#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "Platform/Runtime/EnumSet.h"
#include "Platform/Runtime/Event.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Streams.h"

/// A client for HTTP/1.1, over TLS and through a proxy.
///
///     TIdHTTP client;
///     client.SetIOHandler(std::make_unique<TIdSSLIOHandlerSocketOpenSSL>());      // for https
///     const String text = client.Get(u"https://example.org/stations.csv");
///
/// One client carries one exchange at a time. Its connections are kept for the next one.
///
/// Addresses begin with "http://" or "https://", in any case, and may hold a user name and password, which are sent
/// to that host only and appear in no message. Redirects are followed, at most 15 of them, and only to http and
/// https; a POST that is redirected by status 301, 302 or 303 becomes a GET.
///
/// TLS: certificates and host names are always verified, against the system's store or the file that $SSL_CERT_FILE
/// names. No other variable of the environment is read, none that names a proxy either. Encryption older than TLS
/// 1.0, or than what the policy of the system demands, is refused.
///
/// Limits: connecting takes at most 30 s; a header 256 KiB; a body 1 GiB, counted as it arrives and after it is
/// decompressed. Bodies compressed by gzip are decompressed.
///
/// Text: a body is decoded by the charset that its content type names, otherwise by its byte order mark, otherwise
/// as UTF-8 if it is valid, otherwise as ISO-8859-1.
///
/// What a failed exchange raises:
/// - EIdHTTPProtocolException for a status of 400 or more; nothing is written to a stream for the response
/// - EIdException in every other case, with one of these messages, in which addresses appear without user and password:
///   - `Address "%s" is not valid`, `Address "%s" is neither http nor https`, `Address "%s" requires TLS, and the client has no
///     I/O handler for it`
///   - `Cannot find host "%s"`, `Cannot find proxy "%s"`, `Proxy "%s" is not a host name`, `Proxy port %d is not between 1 and 65535`
///   - `Cannot connect to "%s"`, `Connecting to "%s" took more than %d ms`, `"%s" sent no data for %d ms`
///   - `The connection to "%s" is not secure: %s` with the reason of the TLS library
///   - `The proxy refused the connection to "%s" with status %d`
///   - `"%s" redirects more than 15 times`, `"%s" redirects to an address that is neither http nor https`
///   - `The header of the response of "%s" is larger than 262144 bytes`, `The response of "%s" is larger than %d bytes`,
///     `The response of "%s" is incomplete`
///   - `The program is ending`: when main() has returned or exit() was called, exchanges of other threads are stopped
///   - `The exchange with "%s" failed: %s` with the reason of the library below
/// - what a stream or a work event raises; it ends the exchange
/// A stream for the response then holds what arrived before.
///
/// Uses libcurl, which it initialises once and never shuts down; an application may use libcurl beside it.
///
/// Threads: a client serves one thread at a time; clients are independent of each other.
namespace Varnholt {

class VARNHOLT_EXPORT EIdException : public Exception {
public:
    using Exception::Exception;
};

/// The server has answered with a status of 400 or more. The message is the status line.
class VARNHOLT_EXPORT EIdHTTPProtocolException : public EIdException {
public:
    EIdHTTPProtocolException(std::int32_t errorCode, StringView statusLine, StringView body);
    ~EIdHTTPProtocolException() override;
    EIdHTTPProtocolException(const EIdHTTPProtocolException&) noexcept = default;
    EIdHTTPProtocolException& operator=(const EIdHTTPProtocolException&) noexcept = default;

    [[nodiscard]] std::int32_t GetErrorCode() const noexcept { return FErrorCode; }
    /// The body of the response as text.
    [[nodiscard]] const String& GetErrorMessage() const noexcept { return *FBody; }

private:
    std::int32_t FErrorCode;
    std::shared_ptr<const String> FBody;  // shared, so that copying an exception cannot fail
};

// --- Encryption ---

enum TIdSSLVersion : std::uint8_t { sslvTLSv1, sslvTLSv1_1, sslvTLSv1_2 };
using TIdSSLVersions = TEnumSet<TIdSSLVersion>;

/// What carries the bytes of a client.
class VARNHOLT_EXPORT TIdIOHandler {
public:
    virtual ~TIdIOHandler();
    TIdIOHandler(const TIdIOHandler&) = delete;
    TIdIOHandler& operator=(const TIdIOHandler&) = delete;

protected:
    TIdIOHandler();
};

/// Carries https over TLS.
class VARNHOLT_EXPORT TIdSSLIOHandlerSocketOpenSSL : public TIdIOHandler {
public:
    TIdSSLIOHandlerSocketOpenSSL();
    ~TIdSSLIOHandlerSocketOpenSSL() override;

    /// The oldest version of the set is the oldest that is used; 1.1 is served as 1.2. Newer versions than those
    /// of the set are used where both sides have them. All three at first; an empty set counts as that.
    [[nodiscard]] TIdSSLVersions GetSSLVersions() const noexcept { return FSSLVersions; }
    void SetSSLVersions(TIdSSLVersions versions) noexcept { FSSLVersions = versions; }

private:
    TIdSSLVersions FSSLVersions = {sslvTLSv1, sslvTLSv1_1, sslvTLSv1_2};
};

// --- The proxy ---

/// The log-in at a proxy. It holds the credentials of the first exchange that used them, which stay in use until it
/// is freed.
class VARNHOLT_EXPORT TIdAuthentication {
public:
    TIdAuthentication(StringView userName, StringView password) : UserName(userName), Password(password) {}

    const String UserName;
    const String Password;
};

/// The proxy of a client. A change takes effect on the next exchange.
struct TIdProxyConnectionInfo {
    String ProxyServer;  ///< a host name or address; empty for no proxy
    std::int32_t ProxyPort = 0;
    String ProxyUsername;
    String ProxyPassword;
    bool BasicAuthentication = false;                   ///< logs in with the user name and password
    std::unique_ptr<TIdAuthentication> Authentication;  ///< made by an exchange that logs in
};

/// Stops the exchanges of all other threads for good, and waits for them, at most 10 s. Called when the program ends.
VARNHOLT_EXPORT void EndHttpExchanges() noexcept;

/// Whether a text can be the name or address of a host: it is not empty and has no blanks, control characters, or any of
/// / @ ? # \ " < >.
[[nodiscard]] VARNHOLT_EXPORT bool IsHostName(StringView text) noexcept;

/// The address for messages: without user name and password. Of a text that is no proper address, everything up to
/// the last "@" is left out, if a colon is before that.
[[nodiscard]] VARNHOLT_EXPORT String AddressWithoutUser(StringView url);

// --- The client ---

/// The response of the last exchange, as far as it came.
struct TIdHTTPResponse {
    std::int32_t ResponseCode = 0;    ///< the status, as 200; 0 if there is none
    String ResponseText;              ///< the status line, as "HTTP/1.1 200 OK"
    String ContentType;               ///< as "text/csv; charset=utf-8"; empty if the response names none
    std::int64_t ContentLength = -1;  ///< in bytes as sent; -1 if the response does not say it
};

/// What an exchange is doing.
enum TWorkMode : std::uint8_t {
    wmRead,   ///< receiving a body
    wmWrite,  ///< sending a body
};

/// The client, the mode, and a number of bytes: at the beginning how many there will be, 0 if that is not known;
/// then how many have been transferred. Raised on the thread of the exchange.
using TWorkEvent = TEvent<TObject*, TWorkMode, std::int64_t>;

class VARNHOLT_EXPORT TIdHTTP : public TObject {
public:
    /// EIdException `Cannot start an HTTP client` if the system refuses what it needs.
    TIdHTTP();
    ~TIdHTTP() override;
    TIdHTTP(const TIdHTTP&) = delete;
    TIdHTTP& operator=(const TIdHTTP&) = delete;

    // --- Settings ---

    /// Characters that a header cannot hold, below U+0020, are left out. Empty sends no such header.
    [[nodiscard]] const String& GetUserAgent() const noexcept;
    void SetUserAgent(StringView userAgent);
    /// The content type of the next bodies that are sent. Empty at first, and then none is named, except that a
    /// form is sent as one.
    [[nodiscard]] const String& GetContentType() const noexcept;
    void SetContentType(StringView contentType);
    /// The longest wait for data in milliseconds, 300000 at first; 0 or less for no limit. Data that keeps coming
    /// may take any time.
    [[nodiscard]] std::int32_t GetReadTimeout() const noexcept;
    void SetReadTimeout(std::int32_t milliseconds) noexcept;
    /// For connecting, with TLS, in milliseconds; 30000 at first. 0 or less stands for that.
    void SetConnectTimeout(std::int32_t milliseconds) noexcept;
    /// The largest body that is accepted, in bytes.
    void SetMaxResponseSize(std::int64_t bytes) noexcept;
    /// Null at first, for plain TCP.
    [[nodiscard]] TIdIOHandler* GetIOHandler() const noexcept;
    void SetIOHandler(std::unique_ptr<TIdIOHandler> handler) noexcept;
    [[nodiscard]] TIdProxyConnectionInfo& GetProxyParams() noexcept;

    void SetOnWorkBegin(TWorkEvent onWorkBegin);
    void SetOnWork(TWorkEvent onWork);

    // --- Exchanges ---

    [[nodiscard]] String Get(StringView url);
    void Get(StringView url, TStream& response);
    /// Sends entries of the form name=value as a form. Names and values are encoded as forms are: in UTF-8, with
    /// percent signs for all but the ASCII letters and digits, "*", "-", "." and "_". The first "=" separates; an
    /// entry without one is a name without a value.
    [[nodiscard]] String Post(StringView url, std::span<const String> form);
    /// Sends the bytes from the position of the source to its end. A redirect may have to send them anew, and then
    /// the source must have positions.
    void Post(StringView url, TStream& source, TStream& response);
    void Put(StringView url, TStream& source, TStream& response);
    [[nodiscard]] String Delete(StringView url);
    void Delete(StringView url, TStream& response);

    /// The response of the last exchange; null before the first, and after one that got none.
    [[nodiscard]] const TIdHTTPResponse* GetResponse() const noexcept;
    /// Its status, or 0.
    [[nodiscard]] std::int32_t GetResponseCode() const noexcept;
    /// Its status line, or an empty text.
    [[nodiscard]] String GetResponseText() const;

private:
    struct TImpl;
    std::unique_ptr<TImpl> FImpl;
};

}  // namespace Varnholt
