#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "Platform/Http/IdHTTP.h"

/// HTTP exchanges through the user's proxy, in one call.
///
///     const std::vector<std::uint8_t> bytes =
///         HttpRequestSync(u"GET", u"https://example.org/rain", THttpRequestParams{{u"station", u"Bergen"}}, {});
///
///     HttpRequest(u"GET", u"https://example.org/rain", {},
///                 [](const auto& data) { Show(data); },               // on the main thread
///                 [](const String& error) { Report(error); }, {});
///
/// A GET or DELETE carries the parameters in its address, a POST or PUT in its body, in the order of their names'
/// code units. Names are sent as they are; values are encoded by HttpParamEncode, which loses characters above
/// U+00FF. What is sent names itself "Mozilla/5.0 (Varnholt)"; the wait for data is limited to 30 s. IdHTTP.h has
/// all other limits, and what an exchange raises.
///
/// Threads: the functions may be called on any thread. The main thread must serve steps (MainThread.h) for the
/// callbacks of HttpRequest.
namespace Varnholt {

/// The parameters: values by their names.
using THttpRequestParams = std::map<String, String, std::less<>>;

using THttpRequestSuccessEvent = std::function<void(const std::vector<std::uint8_t>& data)>;
using THttpRequestErrorEvent = std::function<void(const String& error)>;
/// The number of bytes so far, and of all, which is 0 if it is not known. A POST or PUT reports what it sends, then
/// what it receives, each from 0.
using THttpRequestProgressEvent = std::function<void(std::int64_t progPos, std::int64_t progMax)>;

/// Passes the work events of a client on to a progress event.
class VARNHOLT_EXPORT TSimpleHttpRequestEventHandler {
public:
    THttpRequestProgressEvent OnProgressEvent;

    void HandleWorkBegin(TObject* sender, TWorkMode workMode, std::int64_t workCountMax);
    void HandleWork(TObject* sender, TWorkMode workMode, std::int64_t workCount);
    /// Does nothing, and is connected to nothing.
    void HandleWorkEnd(TObject* sender, TWorkMode workMode);

private:
    std::int64_t FWorkMax = 0;
    std::int64_t FWorkPos = 0;
};

/// ASCII letters and digits, "*", "-" and "_" as they are; any other code unit as "%" and its low 8 bits in two
/// hexadecimal digits: a blank becomes "%20", and U+1234 becomes "%34".
[[nodiscard]] VARNHOLT_EXPORT String HttpParamEncode(StringView text);

/// The address with "?" and the parameters NAME=VALUE, joined by "&". An empty address gives the parameters only; without
/// parameters the address is returned as it is. A "?" that the address holds already is not looked for.
[[nodiscard]] VARNHOLT_EXPORT String FormatUrl(StringView url,
                                               const std::optional<THttpRequestParams>& params);

/// Sends a request and returns the body of the response, which is empty for a DELETE. The method is "GET", "POST",
/// "PUT" or "DELETE", in this case, otherwise EArgumentException `Method`. A POST or PUT without parameters, as
/// opposed to no entries among them, raises EArgumentNilException `Params`. The progress event runs on the calling
/// thread; what it raises ends the exchange. Raises as TIdHTTP.
[[nodiscard]] VARNHOLT_EXPORT std::vector<std::uint8_t> HttpRequestSync(
    StringView method, StringView url, const std::optional<THttpRequestParams>& params,
    const THttpRequestProgressEvent& onProgress);

/// Does the same on a thread of its own, and returns at once. On the main thread, while the background thread
/// waits, `onSuccess` is called with the body, or `onError` with the message of whatever failed, `onSuccess`
/// included. The progress event runs on the background thread. The method is checked at once. Raises Exception
/// `Cannot start a thread` if the system refuses one. What `onError` raises is written to the default log.
VARNHOLT_EXPORT void HttpRequest(StringView method, StringView url,
                                 const std::optional<THttpRequestParams>& params,
                                 const THttpRequestSuccessEvent& onSuccess,
                                 const THttpRequestErrorEvent& onError,
                                 const THttpRequestProgressEvent& onProgress);

}  // namespace Varnholt
