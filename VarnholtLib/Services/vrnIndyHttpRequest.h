#pragma once

#include <vector>

#include "Platform/Http/IdHTTP.h"
#include "VarnholtLib/Services/vrnHttpRequest.h"

/// The request behind THttpRequestFactory, and what it shares with the one-call requests of vrnSimpleHttpRequest.h.
///
/// Uses IdHTTP.h, vrnProxy.h and MainThread.h. Threads: as for IHttpRequest.
namespace Varnholt {

/// The name by which the library's requests present themselves.
inline constexpr StringView kHttpUserAgent = u"Mozilla/5.0 (Varnholt)";
/// The longest wait for data in milliseconds.
inline constexpr std::int32_t kHttpReadTimeout = 30'000;

/// Whether the address is one for TLS.
[[nodiscard]] VARNHOLT_EXPORT bool IsHttpsUrl(StringView url) noexcept;

/// A handler that allows TLS 1.0, 1.1 and 1.2, and what is newer.
[[nodiscard]] VARNHOLT_EXPORT std::unique_ptr<TIdSSLIOHandlerSocketOpenSSL> NewHttpTlsHandler();

/// Runs the work on a thread of its own, which ends by itself. The end of the program waits for it, unless it waits
/// for the main thread. From then on the library stays loaded until the process ends. What it raises goes to the
/// default log, if there is one and it is enabled. Raises Exception `Cannot start a thread`.
VARNHOLT_EXPORT void RunHttpThread(std::function<void()> work);

/// Synchronize of MainThread.h for such a thread.
VARNHOLT_EXPORT void SynchronizeHttpThread(const std::function<void()>& step);

/// Is made by the factory, which puts it behind a shared pointer.
class VARNHOLT_EXPORT TIndyHttpRequest final : public IHttpRequest,
                                               public IHttpParams,
                                               public IHttpResponse,
                                               public std::enable_shared_from_this<TIndyHttpRequest> {
public:
    TIndyHttpRequest();
    ~TIndyHttpRequest() override;

    void Add(StringView name, StringView value) override;

    [[nodiscard]] String GetDataString() const override { return FResponseString; }
    [[nodiscard]] std::int32_t GetStatusCode() const override { return FIdHTTP.GetResponseCode(); }
    [[nodiscard]] String GetResponseText() const override { return FIdHTTP.GetResponseText(); }

    [[nodiscard]] String GetUrl() const override { return FUrl; }
    void SetUrl(StringView value) override { FUrl = value; }
    [[nodiscard]] std::shared_ptr<IHttpParams> GetParams() override { return shared_from_this(); }
    [[nodiscard]] std::shared_ptr<IHttpResponse> GetResponse() override { return shared_from_this(); }
    [[nodiscard]] THttpRequestMethod GetMethod() const override { return FMethod; }
    void SetMethod(THttpRequestMethod value) override { FMethod = value; }
    void Send() override;
    void SendAsync(THttpRequestAsyncCompleteProcedure onComplete) override;

private:
    void SetupSSL();

    TIdHTTP FIdHTTP;
    String FUrl;
    THttpRequestMethod FMethod = HttpRequestMethodGet;
    String FResponseString;
    std::vector<String> FParams;
};

}  // namespace Varnholt
