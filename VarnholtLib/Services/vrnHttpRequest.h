#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "Platform/Runtime/Guid.h"

/// HTTP requests through the user's proxy, one object for each.
///
///     const std::shared_ptr<IHttpRequest> request = THttpRequestFactory::GetObject();
///     request->SetUrl(u"https://example.org/stations");
///     request->Send();
///     Use(request->GetResponse()->GetDataString());
///
///     request->SendAsync([](bool isDone, const std::shared_ptr<IHttpResponse>& response) {
///         if (isDone) Show(response->GetDataString());               // on the main thread
///     });
///
/// The proxy is that of the moment when the request is made (vrnProxy.h). What is sent names itself "Mozilla/5.0
/// (Varnholt)". An address that begins with "https://" is fetched over TLS from version 1.0 on, and then the wait
/// for data is limited to 30 s. IdHTTP.h has all other limits, and what Send raises.
///
/// A request may be sent again; the parameters stay. Its connections are kept from one Send to the next.
///
/// Threads: a request serves one thread; from SendAsync until the callback has returned it is that of the
/// background. The main thread must serve steps (MainThread.h), or the background thread waits until the end of the
/// program. At the end of the program requests in the background are stopped. After the first of them dlclose() no
/// longer unloads the library.
namespace Varnholt {

enum THttpRequestMethod : std::uint8_t { HttpRequestMethodGet, HttpRequestMethodPost };

class VARNHOLT_EXPORT IHttpParams {
public:
    static constexpr TGuid kGuid = TGuid::FromText(u"{618738B0-A523-47FB-8ECB-3058E2E3F02E}");
    virtual ~IHttpParams() = default;
    /// Appends NAME=VALUE. A name may occur twice. Entries are sent only by a POST, encoded as TIdHTTP::Post does.
    virtual void Add(StringView name, StringView value) = 0;
};

class VARNHOLT_EXPORT IHttpResponse {
public:
    static constexpr TGuid kGuid = TGuid::FromText(u"{10B70B83-C3A9-4871-B0F9-E8A2AD39D19E}");
    virtual ~IHttpResponse() = default;
    /// The body of the last Send that did not fail; empty at first.
    [[nodiscard]] virtual String GetDataString() const = 0;
    /// The status of the last Send, also of a failed one; 0 at first, and if there was no response.
    [[nodiscard]] virtual std::int32_t GetStatusCode() const = 0;
    /// The status line likewise, as "HTTP/1.1 404 Not Found"; empty at first.
    [[nodiscard]] virtual String GetResponseText() const = 0;
};

/// Called with whether Send succeeded, and with the response. The reason of a failure is not given.
using THttpRequestAsyncCompleteProcedure = std::function<void(bool, const std::shared_ptr<IHttpResponse>&)>;

class VARNHOLT_EXPORT IHttpRequest {
public:
    static constexpr TGuid kGuid = TGuid::FromText(u"{598C9BFC-B59F-4961-9D14-ED30BD93B2AC}");
    virtual ~IHttpRequest() = default;
    [[nodiscard]] virtual String GetUrl() const = 0;
    virtual void SetUrl(StringView value) = 0;
    /// The parameters and the response are the request itself: whoever keeps one keeps the request.
    [[nodiscard]] virtual std::shared_ptr<IHttpParams> GetParams() = 0;
    [[nodiscard]] virtual std::shared_ptr<IHttpResponse> GetResponse() = 0;
    /// HttpRequestMethodGet at first.
    [[nodiscard]] virtual THttpRequestMethod GetMethod() const = 0;
    virtual void SetMethod(THttpRequestMethod value) = 0;
    /// Sends the request and waits for the response. Raises as TIdHTTP; the text of an earlier response stays then.
    virtual void Send() = 0;
    /// Does the same on a thread of its own and returns at once. Then `onComplete`, if there is one, runs on the
    /// main thread while the background thread waits. The request lives at least until then, whoever else holds it.
    /// What `onComplete` raises is written to the default log, if there is one and it is enabled, and otherwise
    /// lost. Raises Exception `Cannot start a thread` if the system refuses one.
    virtual void SendAsync(THttpRequestAsyncCompleteProcedure onComplete) = 0;
};

class VARNHOLT_EXPORT THttpRequestFactory {
public:
    THttpRequestFactory() = delete;
    /// A new request. Raises as TIdHTTP.
    [[nodiscard]] static std::shared_ptr<IHttpRequest> GetObject();
    /// The same.
    [[nodiscard]] static std::shared_ptr<IHttpRequest> Create();
};

}  // namespace Varnholt
