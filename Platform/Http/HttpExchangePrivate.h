#pragma once

#include <curl/curl.h>

#include <chrono>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/Http/IdHTTP.h"

namespace Varnholt {

/// A stretch in which a thread uses libcurl. Below libcurl, the TLS library destroys what it shares at the end of
/// the process, while threads may still run; so at that time exchanges are stopped and waited for, and no further
/// use begins.
class TCurlUse {
public:
    /// Initialises libcurl for the process. `multi` drives an exchange; null if there is none.
    explicit TCurlUse(CURLM* multi) noexcept;
    ~TCurlUse();
    TCurlUse(const TCurlUse&) = delete;
    TCurlUse& operator=(const TCurlUse&) = delete;

    /// False if the process is ending, and then libcurl must not be used.
    [[nodiscard]] bool IsAllowed() const noexcept { return FIsAllowed; }
    /// Whether the process has begun to end.
    [[nodiscard]] static bool IsEnding() noexcept;

private:
    CURLM* FMulti;
    bool FIsAllowed = false;
};

/// The handles of a client: one easy handle, and the one that drives it and keeps the connections.
class TCurlHandles {
public:
    /// Raises EIdException.
    TCurlHandles();
    /// Leaves the handles to the system if the process is ending.
    ~TCurlHandles();
    TCurlHandles(const TCurlHandles&) = delete;
    TCurlHandles& operator=(const TCurlHandles&) = delete;

    CURLM* Multi = nullptr;
    CURL* Easy = nullptr;
};

/// What an exchange needs to know.
struct THttpRequestData {
    std::string Url;
    std::string Method;         // GET, POST, PUT or DELETE
    TStream* Source = nullptr;  // the body to send; null for none
    TStream* Target = nullptr;  // where the body of the response is written
    std::string ContentType;
    std::string UserAgent;
    std::int32_t ReadTimeout = 0;
    std::int32_t ConnectTimeout = 0;
    std::int64_t MaxResponseSize = 0;
    const TIdSSLIOHandlerSocketOpenSSL* Tls = nullptr;
    TIdProxyConnectionInfo* Proxy = nullptr;
    TObject* Sender = nullptr;
    TWorkEvent OnWorkBegin;
    TWorkEvent OnWork;
};

/// One exchange. Its callbacks keep what they raise until libcurl has returned.
class THttpExchange {
public:
    THttpExchange(TCurlHandles& handles, const THttpRequestData& request);
    THttpExchange(const THttpExchange&) = delete;
    THttpExchange& operator=(const THttpExchange&) = delete;

    /// Raises as TIdHTTP says. The response is that of the exchange in any case.
    void Run(std::unique_ptr<TIdHTTPResponse>& response);

private:
    using TTime = std::chrono::steady_clock::time_point;

    void Prepare();
    void PrepareBody();
    void PrepareTls();
    void PrepareProxy();
    CURLcode Transfer();
    [[nodiscard]] std::int32_t WaitLimit() const noexcept;
    [[noreturn]] void Fail(CURLcode code);
    [[nodiscard]] String Where() const;

    void TakeHeader(std::string_view line);
    void TakeBody(std::span<const std::byte> bytes);
    std::size_t GiveBody(std::span<std::byte> buffer);

    template <typename TCall>
    bool Guarded(TCall call) noexcept;
    static std::size_t OnHeader(char* bytes, std::size_t size, std::size_t count, void* self);
    static std::size_t OnBody(char* bytes, std::size_t size, std::size_t count, void* self);
    static std::size_t OnSend(char* buffer, std::size_t size, std::size_t count, void* self);
    static int OnSeek(void* self, curl_off_t offset, int origin);
    static int OnConnected(void* self, char*, char*, int, int);

    TCurlHandles& FHandles;
    const THttpRequestData& FRequest;
    std::vector<char> FErrorText;  // of libcurl
    std::exception_ptr FRaised;    // by a callback
    struct TFreeList {
        void operator()(curl_slist* list) const noexcept { curl_slist_free_all(list); }
    };
    std::unique_ptr<curl_slist, TFreeList> FHeaders;
    TTime FLastData;
    std::string FStatusLine;
    std::string FErrorBody;  // of a status of 400 or more
    std::size_t FHeaderSize = 0;
    std::int64_t FReceived = 0;
    std::int64_t FSent = 0;
    std::int64_t FSourceStart = 0;
    std::int64_t FSourceSize = 0;
    bool FIsCompressed = false;
    bool FIsConnected = false;
    bool FIsLate = false;
};

/// The text of a body, by the charset of its content type, its mark, or its bytes.
[[nodiscard]] String TextOfBody(std::string_view bytes, StringView contentType);

}  // namespace Varnholt
